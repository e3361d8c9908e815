#pragma once

#include <memory>
#include <stop_token>

#include "review/Sheet.h"
#include "review/SheetPages.h"
#include "windows/ReviewScope.h"
#include "windows/ReviewWork.h"

namespace tessaly {

// What a sheet says of its own, in the language of the window.
[[nodiscard]] SheetWords sheetWords();

// A sheet, and the pages that it takes.
struct MadeSheet {
  std::shared_ptr<const Sheet> sheet;
  std::shared_ptr<const SheetPages> pages;
  SheetOptions options;  // of the pages
};

// Reads what the scope has, on the worker's thread, and lays it out; reports it whole or not at all.
Outcome readSheet(const SiteRoot& root, const ReviewScope& scope, const CheckContext& context,
                  const SheetOptions& options, ReviewWork<MadeSheet>::Report& report);
// Lays it out anew.
Outcome layOutSheet(std::shared_ptr<const Sheet> sheet, const SheetOptions& options,
                    ReviewWork<MadeSheet>::Report& report);

}  // namespace tessaly
