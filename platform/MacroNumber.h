#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tessaly {

inline constexpr std::string_view kMacroFileStart = "macro", kMacroFileEnd = ".mac";

// "macro007.mac"; the number's text may be any, as lists take it from the names of files.
[[nodiscard]] inline std::string macroFileName(std::string_view numberText) {
  return std::string(kMacroFileStart).append(numberText).append(kMacroFileEnd);
}

// A macro's number in its folder or workplace: 0 to 999, written with three digits.
class MacroNumber {
 public:
  static constexpr int kCount = 1000;
  static constexpr std::size_t kDigits = 3;

  // Nothing for a number out of bounds.
  [[nodiscard]] static constexpr std::optional<MacroNumber> of(int number) {
    return number >= 0 && number < kCount ? std::optional(MacroNumber(number)) : std::nullopt;
  }
  // Nothing for anything but three digits.
  [[nodiscard]] static constexpr std::optional<MacroNumber> parse(std::string_view text) {
    if (text.size() != kDigits || text.find_first_not_of("0123456789") != text.npos) return std::nullopt;
    return MacroNumber((text[0] - '0') * 100 + (text[1] - '0') * 10 + (text[2] - '0'));
  }
  // Of a file called "macro007" with an ending of that length; nothing for any other name.
  [[nodiscard]] static constexpr std::optional<MacroNumber> ofFile(std::string_view name) {
    constexpr std::size_t kLength = kMacroFileStart.size() + kDigits + kMacroFileEnd.size();
    if (name.size() != kLength || !name.starts_with(kMacroFileStart)) return std::nullopt;
    return parse(name.substr(kMacroFileStart.size(), kDigits));
  }
  // "007"; empty for a number out of bounds.
  [[nodiscard]] static std::string textOf(int number) {
    const auto known = of(number);
    return known ? known->text() : std::string();
  }

  [[nodiscard]] constexpr int value() const { return value_; }
  [[nodiscard]] constexpr std::size_t index() const { return static_cast<std::size_t>(value_); }
  [[nodiscard]] std::string text() const { return std::to_string(kCount + value_).substr(1); }

 private:
  explicit constexpr MacroNumber(int value) : value_(value) {}

  int value_;
};

}  // namespace tessaly
