#include "platform/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <limits>
#include <utility>

#include "platform/PlainLocale.h"

namespace tessaly {
namespace {

constexpr std::string_view kWhiteSpace = " \t\n\v\f\r";

// The bytes 0x80 to 0x9F of the code page. The five unused ones stand for the control characters of the same
// number, so that any bytes survive the way to UTF-8 and back.
constexpr std::array<std::uint16_t, 32> kUpperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

struct CodePoint {
  char32_t value;
  std::size_t length;  // bytes; 0 for a malformed sequence
};

// Decodes the sequence at the start of `bytes` (not empty).
CodePoint decode(std::string_view bytes) {
  const auto lead = static_cast<unsigned char>(bytes[0]);
  if (lead < 0x80) return {lead, 1};
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || bytes.size() < length) return {0, 0};
  char32_t value = lead & (0xFFu >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) {
    const auto next = static_cast<unsigned char>(bytes[i]);
    if ((next & 0xC0) != 0x80) return {0, 0};
    value = (value << 6) | (next & 0x3Fu);
  }
  const bool overlong = (length == 3 && value < 0x800) || (length == 4 && value < 0x10000);
  const bool surrogate = value >= 0xD800 && value <= 0xDFFF;
  if (overlong || surrogate || value > 0x10FFFF) return {0, 0};
  return {value, length};
}

// How many bytes at the start are ASCII, in whole words: most files hold nothing else.
std::size_t asciiStart(std::string_view bytes) {
  std::uint64_t word = 0;
  std::size_t at = 0;
  for (; at + sizeof word <= bytes.size(); at += sizeof word) {
    std::memcpy(&word, bytes.data() + at, sizeof word);
    if ((word & 0x8080808080808080U) != 0) break;
  }
  return at;
}

// The ranges that visibleUtf8 replaces, rising.
constexpr std::pair<char32_t, char32_t> kUnseen[] = {{0x0000, 0x001F}, {0x007F, 0x009F}, {0x061C, 0x061C},
                                                     {0x200B, 0x200B}, {0x200E, 0x200F}, {0x2028, 0x202E},
                                                     {0x2060, 0x206F}, {0xFEFF, 0xFEFF}, {0xFFF9, 0xFFFB}};

bool unseen(char32_t value) {
  return std::any_of(std::begin(kUnseen), std::end(kUnseen),
                     [value](const auto& range) { return value >= range.first && value <= range.second; });
}

std::optional<char> toCodePage(char32_t value) {
  if (value < 0x80 || (value >= 0xA0 && value <= 0xFF)) return static_cast<char>(value);
  const auto* const found = std::find(kUpperControls.begin(), kUpperControls.end(), value);
  if (found == kUpperControls.end()) return std::nullopt;
  return static_cast<char>(0x80 + (found - kUpperControls.begin()));
}

}  // namespace

std::int32_t parseInt(std::string_view text) {
  using Limits = std::numeric_limits<std::int32_t>;
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(parseLong(text), Limits::min(), Limits::max()));
}

std::int64_t parseLong(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(kWhiteSpace), text.size()));
  // A plus sign counts only before a digit: "+-1" holds no number.
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  std::int64_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc::result_out_of_range) return value;
  return text[0] == '-' ? std::numeric_limits<std::int64_t>::min() : std::numeric_limits<std::int64_t>::max();
}

std::optional<int> wholeNumber(std::string_view text, int least, int most) {
  const auto number = exactNumber<int>(text);
  return number && *number >= least && *number <= most ? number : std::nullopt;
}

double parseDouble(std::string_view text) {
  // A plain number needs none of the C library's rules.
  if (const auto plain = exactNumber<double>(text)) return *plain;
  const std::string terminated(text);
  const PlainLocale plain;
  return std::strtod(terminated.c_str(), nullptr);
}

std::string format(const char* pattern, ...) {
  const PlainLocale plain;
  std::array<char, 256> buffer;
  va_list arguments;
  va_list again;
  va_start(arguments, pattern);
  va_copy(again, arguments);
  const int length = std::vsnprintf(buffer.data(), buffer.size(), pattern, arguments);
  va_end(arguments);
  std::string text;
  if (length >= 0 && static_cast<std::size_t>(length) < buffer.size()) {
    text.assign(buffer.data(), static_cast<std::size_t>(length));
  } else if (length >= 0) {
    text.resize(static_cast<std::size_t>(length));
    std::vsnprintf(text.data(), text.size() + 1, pattern, again);
  }
  va_end(again);
  return text;
}

std::string replaceAll(std::string text, std::string_view from, std::string_view to) {
  if (from.empty() || text.find(from) == std::string::npos) return text;
  std::string result;
  result.reserve(text.size());
  std::size_t start = 0;
  for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, start)) {
    result.append(text, start, at - start).append(to);
    start = at + from.size();
  }
  return result.append(text, start);
}

std::string_view fileNameOf(std::string_view path) { return path.substr(path.find_last_of("\\/") + 1); }

std::string toUpperAscii(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(), upper);
  return result;
}

bool equalNoCase(std::string_view first, std::string_view second) {
  return std::equal(first.begin(), first.end(), second.begin(), second.end(),
                    [](char a, char b) { return upper(a) == upper(b); });
}

bool endsWithNoCase(std::string_view text, std::string_view suffix) {
  return text.size() >= suffix.size() && equalNoCase(text.substr(text.size() - suffix.size()), suffix);
}

bool isAscii(std::string_view bytes) {
  bytes.remove_prefix(asciiStart(bytes));
  return std::all_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

bool isValidUtf8(std::string_view bytes) {
  for (bytes.remove_prefix(asciiStart(bytes)); !bytes.empty(); bytes.remove_prefix(asciiStart(bytes))) {
    const CodePoint point = decode(bytes);
    if (point.length == 0) return false;
    bytes.remove_prefix(point.length);
  }
  return true;
}

void appendUtf8(std::string& text, char32_t character) {
  const auto follows = [character](int shift) {
    return static_cast<char>(0x80 | ((character >> shift) & 0x3F));
  };
  if (character < 0x80) {
    text += static_cast<char>(character);
  } else if (character < 0x800) {
    text += static_cast<char>(0xC0 | (character >> 6));
    text += follows(0);
  } else if (character < 0x10000) {
    text += static_cast<char>(0xE0 | (character >> 12));
    text += follows(6);
    text += follows(0);
  } else {
    text += static_cast<char>(0xF0 | (character >> 18));
    text += follows(12);
    text += follows(6);
    text += follows(0);
  }
}

std::string beginningOf(std::string_view utf8, std::size_t bytes) {
  if (bytes >= utf8.size()) return std::string(utf8);
  while (bytes > 0 && (static_cast<unsigned char>(utf8[bytes]) & 0xC0) == 0x80) --bytes;
  return std::string(utf8.substr(0, bytes));
}

char32_t windows1252Character(char byte) {
  const auto value = static_cast<unsigned char>(byte);
  return value >= 0x80 && value < 0xA0 ? kUpperControls[value - 0x80u] : value;
}

std::string windows1252ToUtf8(std::string_view bytes) {
  std::string result;
  result.reserve(bytes.size());
  for (const char c : bytes) appendUtf8(result, windows1252Character(c));
  return result;
}

std::string utf8ToWindows1252(std::string_view utf8) {
  std::string result;
  result.reserve(utf8.size());
  while (!utf8.empty()) {
    const CodePoint point = decode(utf8);
    result += point.length == 0 ? '?' : toCodePage(point.value).value_or('?');
    utf8.remove_prefix(std::max<std::size_t>(point.length, 1));
  }
  return result;
}

std::optional<std::string> exactWindows1252(std::string_view utf8) {
  std::string result;
  result.reserve(utf8.size());
  while (!utf8.empty()) {
    const CodePoint point = decode(utf8);
    const auto byte = point.length == 0 ? std::nullopt : toCodePage(point.value);
    if (!byte) return std::nullopt;
    result += *byte;
    utf8.remove_prefix(point.length);
  }
  return result;
}

std::string displayUtf8(std::string_view bytes) {
  return isValidUtf8(bytes) ? std::string(bytes) : windows1252ToUtf8(bytes);
}

std::string spelledByNumber(char32_t character) {
  return format("[U+%04X]", static_cast<unsigned>(character));
}

std::string visibleUtf8(std::string_view bytes, std::string_view kept, std::string (*spelling)(char32_t)) {
  std::string text = displayUtf8(bytes);
  const auto plain = [kept](char c) { return (c >= ' ' && c <= '~') || kept.find(c) != kept.npos; };
  if (std::all_of(text.begin(), text.end(), plain)) return text;
  std::string result;
  for (std::size_t at = 0; at < text.size();) {
    const CodePoint point = decode(std::string_view(text).substr(at));
    const std::string_view character = std::string_view(text).substr(at, point.length);
    if (unseen(point.value) && !plain(character[0]))
      result += spelling(point.value);
    else
      result += character;
    at += point.length;
  }
  return result;
}

}  // namespace tessaly
