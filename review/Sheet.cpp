#include "review/Sheet.h"

#include "platform/Text.h"
#include "review/SheetFiles.h"
#include "review/SheetPages.h"

namespace tessaly {
namespace {

std::string englishOf(const Finding& finding) {
  std::string text(severityName(finding.severity));
  text += ": ";
  if (!finding.parameter.empty()) text += finding.parameter + ": ";
  text += inEnglish(wrongOf(finding, 1));
  const std::string right = rightText(finding);
  return right.empty() ? text : text + "; right: " + right;
}

template <class Values>
auto named(const Values& values, std::string_view name) -> std::optional<typename Values::value_type> {
  for (const auto value : values)
    if (equalNoCase(nameOf(value), name)) return value;
  return std::nullopt;
}

}  // namespace

std::string SheetMacro::title() const {
  if (number.empty() || name.empty()) return number + name;
  return number + " - " + name;
}

std::string headOf(const SheetMacro& macro, const SheetWords& words) {
  return macro.unsaved ? filled(words.unsaved, macro.title()) : macro.title();
}

SheetWords::SheetWords() : finding(&englishOf) {}

std::string dateText(std::chrono::year_month_day date) {
  return format("%04d-%02u-%02u", static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                static_cast<unsigned>(date.day()));
}

std::optional<std::chrono::year_month_day> dateNamed(std::string_view text) {
  constexpr std::size_t kSize = 10, kMonth = 5, kDay = 8, kYearDigits = 4, kDigits = 2;
  if (text.size() != kSize) return std::nullopt;
  const auto number = [&](std::size_t at, std::size_t digits) {
    return exactNumber<unsigned>(text.substr(at, digits)).value_or(0);
  };
  const std::chrono::year_month_day date{std::chrono::year(static_cast<int>(number(0, kYearDigits))),
                                         std::chrono::month(number(kMonth, kDigits)),
                                         std::chrono::day(number(kDay, kDigits))};
  return date.ok() && dateText(date) == text ? std::optional(date) : std::nullopt;
}

std::string_view nameOf(SheetFormat format) {
  switch (format) {
    case SheetFormat::kPdf:
      return "pdf";
    case SheetFormat::kHtml:
      return "html";
    case SheetFormat::kCsv:
      return "csv";
  }
  return {};
}

std::string_view nameOf(Paper paper) {
  switch (paper) {
    case Paper::kA4:
      return "a4";
    case Paper::kA5:
      return "a5";
    case Paper::kLetter:
      return "letter";
  }
  return {};
}

std::optional<SheetFormat> sheetFormatNamed(std::string_view name) { return named(kSheetFormats, name); }
std::optional<Paper> paperNamed(std::string_view name) { return named(kPapers, name); }

Expected<std::string> writeSheet(const Sheet& sheet, const SheetOptions& options, const SheetWords& words,
                                 SheetFormat format) {
  switch (format) {
    case SheetFormat::kPdf: {
      const auto pages = layOut(sheet, options, words);
      if (!pages) return pages.failure();
      return sheetPdf(*pages, options.date);
    }
    case SheetFormat::kHtml:
      return sheetHtml(sheet, options, words);
    case SheetFormat::kCsv:
      return sheetCsv(sheet, words);
  }
  return std::string();
}

std::string filled(std::string_view pattern, std::string_view first, std::string_view second) {
  constexpr std::size_t kMark = 2;  // bytes of "%1"
  std::string text;
  while (!pattern.empty()) {
    const bool isFirst = pattern.starts_with("%1");
    if (isFirst || pattern.starts_with("%2")) {
      text += isFirst ? first : second;
      pattern.remove_prefix(kMark);
    } else {
      text += pattern.front();
      pattern.remove_prefix(1);
    }
  }
  return text;
}

std::string countedFromOne(const std::vector<int>& numbers) {
  std::string text;
  for (const int number : numbers) {
    if (!text.empty()) text += ", ";
    text += std::to_string(number + 1);
  }
  return text;
}

}  // namespace tessaly
