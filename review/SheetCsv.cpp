#include <string>

#include "platform/Text.h"
#include "review/SheetFiles.h"

namespace tessaly {
namespace {

constexpr std::string_view kEnd = "\r\n";
constexpr std::string_view kColumns[] = {"place",       "number", "name",    "step",
                                         "destination", "line",   "findings"};
constexpr std::string_view kBetweenFindings = " | ";
// A spreadsheet calculates what begins so, whatever the quotes.
constexpr std::string_view kFormulaStarts = "=+-@";

std::string field(const std::string& bytes) {
  std::string text = visibleUtf8(bytes);
  if (!text.empty() && kFormulaStarts.find(text.front()) != kFormulaStarts.npos) text.insert(0, 1, '\'');
  if (text.find_first_of("\",") == text.npos) return text;
  return '"' + replaceAll(text, "\"", "\"\"") + '"';
}

class Rows {
 public:
  explicit Rows(const SheetWords& words) : words_(words) {}

  void add(const SheetMacro& macro, const std::string& step, const std::string& destination,
           const std::string& line, const std::string& findings) {
    text_ += field(macro.place) + ',' + field(macro.number) + ',' + field(macro.name) + ',' + step + ',' +
             field(destination) + ',' + field(line) + ',' + field(findings);
    text_ += kEnd;
  }
  void add(const SheetMacro& macro) {
    std::string of = told(macro.findings);
    if (!macro.unread.empty())
      of = filled(words_.unread, macro.unread) + (of.empty() ? of : std::string(kBetweenFindings) + of);
    if (!of.empty() || macro.commands.empty()) add(macro, {}, {}, {}, of);
    for (std::size_t i = 0; i < macro.commands.size(); ++i) {
      const SheetCommand& command = macro.commands[i];
      add(macro, std::to_string(i + 1), command.destination, command.line, told(command.findings));
    }
  }
  void addColumns() {
    for (const std::string_view column : kColumns) text_.append(text_.empty() ? "" : ",").append(column);
    text_ += kEnd;
  }
  [[nodiscard]] std::string take() { return std::move(text_); }

 private:
  [[nodiscard]] std::string told(const Findings& findings) const {
    std::string text;
    for (const Finding& finding : findings) {
      if (!text.empty()) text += kBetweenFindings;
      text += words_.finding(finding);
    }
    return text;
  }

  const SheetWords& words_;
  std::string text_;
};

}  // namespace

std::string sheetCsv(const Sheet& sheet, const SheetWords& words) {
  Rows rows(words);
  rows.addColumns();
  for (const SheetMacro& macro : sheet.macros) rows.add(macro);
  return rows.take();
}

}  // namespace tessaly
