#pragma once

#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

// Number and text conversions of the C library's rules, free of the locale.
namespace tessaly {

// As atoi: leading white space, a sign, decimal digits; 0 without digits; clamped to 32 and 64 bits.
[[nodiscard]] std::int32_t parseInt(std::string_view text);
[[nodiscard]] std::int64_t parseLong(std::string_view text);

// As atof, but always with "." as the decimal point; 0 when no number stands at the start.
[[nodiscard]] double parseDouble(std::string_view text);

// The number that is the whole text, digits with at most a "-" before them, where the type holds it.
template <typename Number, typename... Base>
[[nodiscard]] std::optional<Number> exactNumber(std::string_view text, Base... base) {
  Number number{};
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number, base...);
  return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}
// The same within bounds.
[[nodiscard]] std::optional<int> wholeNumber(std::string_view text, int least, int most);

// printf into a string; "." is the decimal point whatever the locale. The format is always a literal of ours.
[[nodiscard]] std::string format(const char* pattern, ...) __attribute__((format(printf, 1, 2)));

// `text` with every occurrence of `from` (not empty) replaced.
[[nodiscard]] std::string replaceAll(std::string text, std::string_view from, std::string_view to);

// The part of a path behind its last separator, "/" or "\\".
[[nodiscard]] std::string_view fileNameOf(std::string_view path);

[[nodiscard]] std::string toUpperAscii(std::string_view text);
[[nodiscard]] bool equalNoCase(std::string_view first, std::string_view second);  // ASCII letters only
[[nodiscard]] bool endsWithNoCase(std::string_view text, std::string_view suffix);

[[nodiscard]] bool isAscii(std::string_view bytes);
[[nodiscard]] bool isValidUtf8(std::string_view bytes);
void appendUtf8(std::string& text, char32_t character);
// At most so many bytes of a text, none of its characters cut.
[[nodiscard]] std::string beginningOf(std::string_view utf8, std::size_t bytes);
[[nodiscard]] char32_t windows1252Character(char byte);
[[nodiscard]] std::string windows1252ToUtf8(std::string_view bytes);
// Characters without a place in the code page become "?".
[[nodiscard]] std::string utf8ToWindows1252(std::string_view utf8);
// Nothing when a character has no place in the code page.
[[nodiscard]] std::optional<std::string> exactWindows1252(std::string_view utf8);
// What to show for bytes of unknown origin: as they are when valid UTF-8, else read as Windows-1252.
[[nodiscard]] std::string displayUtf8(std::string_view bytes);
// "[U+202E]".
[[nodiscard]] std::string spelledByNumber(char32_t character);
// The same to be read by a person who must not be deceived by it: each character that shows nothing of its
// own but hides, breaks or turns round what stands beside it (control characters, line ends, marks of
// direction, spaces without width) is spelled out, by its number as in "[U+202E]" unless told otherwise.
// Those in `kept`, ASCII all, stay.
[[nodiscard]] std::string visibleUtf8(std::string_view bytes, std::string_view kept = {},
                                      std::string (*spelling)(char32_t character) = &spelledByNumber);

}  // namespace tessaly
