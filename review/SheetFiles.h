#pragma once

#include "review/Sheet.h"
#include "review/SheetPages.h"

// A sheet as a file; writeSheet is the way in.
namespace tessaly {

[[nodiscard]] Expected<std::string> sheetPdf(const SheetPages& pages, std::chrono::year_month_day date);

// One document that needs no other file, UTF-8.
[[nodiscard]] std::string sheetHtml(const Sheet& sheet, const SheetOptions& options, const SheetWords& words);

// UTF-8 in the form of RFC 4180, with a row of names in front. A field that a spreadsheet would take for a
// formula gets a "'" in front.
[[nodiscard]] std::string sheetCsv(const Sheet& sheet, const SheetWords& words);

}  // namespace tessaly
