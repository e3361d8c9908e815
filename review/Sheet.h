#pragma once

#include <array>
#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Outcome.h"
#include "review/CheckRules.h"
#include "review/MacroEffect.h"

// Macros on paper: what stands there, before it becomes pages (SheetPages.h) or a file (docs/sheet.md). Texts
// are UTF-8; commands count from 1, as in the window.
namespace tessaly {

struct SheetCommand {
  std::string destination;  // "Mainframe1", "Panel/Workplace2"; empty where the command has none
  std::string line;         // as a list shows it
  Findings findings = {};
};

struct SheetValue {
  std::string name, shown;
};

// What the values of one destination are after the macro.
struct SheetGroup {
  std::string destination;
  std::vector<SheetValue> values;
};

struct SheetMacro {
  std::string place;   // the folder or workplace that it lies in
  std::string number;  // "007"; may be empty
  std::string name;    // may be empty
  std::vector<SheetCommand> commands = {};
  std::vector<SheetGroup> after = {};
  std::vector<int> untold = {};  // commands, from 0, of whose effect something cannot be told
  Findings findings = {};        // about the macro as a whole
  std::string unread = {};       // why it could not be read; nothing else is told then
  bool unsaved = false;          // as a pane shows it, and not as it is stored

  // "007 - Name", or whatever there is of it.
  [[nodiscard]] std::string title() const;
};

struct SheetWords;
// What stands at the head of a macro: its title, and that it has unsaved changes.
[[nodiscard]] std::string headOf(const SheetMacro& macro, const SheetWords& words);

struct Sheet {
  std::string title;    // of the whole
  bool ofMany = false;  // begins with a table of its macros
  std::vector<SheetMacro> macros;
};

// What a sheet says of its own, in the reader's language; "%1" and "%2" stand for numbers and names.
struct SheetWords {
  std::string language = "en";  // of HTML
  std::string macros = "Macros", number = "Number", name = "Name", pageColumn = "Page";
  std::string command = "Command", value = "Value";
  std::string empty = "empty macro", none = "no macros";
  std::string unread = "cannot be read (%1)", unsaved = "%1 (unsaved changes)";
  std::string findings = "Findings", after = "After this macro", notes = "Notes";
  std::string nothing = "no value that could be told is changed";
  std::string unknown = "unknown", changed = kChangedBy;
  std::string untold = "What these commands do, or a part of it, cannot be told: %1";
  std::string continued = "%1 (continued)";
  std::string page = "page %1 of %2";
  // "error: what is wrong; right: what would be right"
  std::function<std::string(const Finding& finding)> finding;

  SheetWords();
};

enum class Paper { kA4, kA5, kLetter };

struct SheetOptions {
  Paper paper = Paper::kA4;
  bool after = true, findings = true, notes = true;
  std::chrono::year_month_day date = {};
};

[[nodiscard]] std::string dateText(std::chrono::year_month_day date);  // "2026-11-25"
// Of a day that there is.
[[nodiscard]] std::optional<std::chrono::year_month_day> dateNamed(std::string_view text);

enum class SheetFormat { kPdf, kHtml, kCsv };
inline constexpr std::array kSheetFormats{SheetFormat::kPdf, SheetFormat::kHtml, SheetFormat::kCsv};
inline constexpr std::array kPapers{Paper::kA4, Paper::kA5, Paper::kLetter};

[[nodiscard]] std::string_view nameOf(SheetFormat format);  // "pdf": the end of a file's name, too
[[nodiscard]] std::string_view nameOf(Paper paper);         // "a4"
[[nodiscard]] std::optional<SheetFormat> sheetFormatNamed(std::string_view name);  // in any case
[[nodiscard]] std::optional<Paper> paperNamed(std::string_view name);

// The whole file. The same sheet, options and words are the same bytes. PDF fails without its library
// (kMissing) and beyond its bounds. Any thread.
[[nodiscard]] Expected<std::string> writeSheet(const Sheet& sheet, const SheetOptions& options,
                                               const SheetWords& words, SheetFormat format);

// The pattern with its "%1" and "%2" replaced, each once, whatever stands in the texts.
[[nodiscard]] std::string filled(std::string_view pattern, std::string_view first,
                                 std::string_view second = {});
// "3, 4, 9", for numbers from 0, counted from 1.
[[nodiscard]] std::string countedFromOne(const std::vector<int>& numbers);

}  // namespace tessaly
