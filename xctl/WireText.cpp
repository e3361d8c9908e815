#include "xctl/WireText.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace tessaly {
namespace {

// Code points of the bytes 0x80 to 0x9f; the five bytes without a character keep their number.
constexpr std::array<std::uint16_t, 32> kWindows1252 = {
    0x20ac, 0x0081, 0x201a, 0x0192, 0x201e, 0x2026, 0x2020, 0x2021, 0x02c6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008d, 0x017d, 0x008f, 0x0090, 0x2018, 0x2019, 0x201c, 0x201d, 0x2022,
    0x2013, 0x2014, 0x02dc, 0x2122, 0x0161, 0x203a, 0x0153, 0x009d, 0x017e, 0x0178};

unsigned byteAt(std::string_view bytes, std::size_t at) {
  return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0U;
}

// Length of the character at `at`, 0 when it is malformed, overlong, a surrogate or beyond the last code
// point.
std::size_t characterLength(std::string_view bytes, std::size_t at) {
  const unsigned lead = byteAt(bytes, at);
  if (lead < 0x80) return 1;
  const std::size_t length = lead < 0xc2 ? 0 : lead < 0xe0 ? 2 : lead < 0xf0 ? 3 : lead < 0xf5 ? 4 : 0;
  const unsigned second = byteAt(bytes, at + 1);
  if ((lead == 0xe0 && second < 0xa0) || (lead == 0xed && second > 0x9f) || (lead == 0xf0 && second < 0x90) ||
      (lead == 0xf4 && second > 0x8f)) {
    return 0;
  }
  for (std::size_t i = 1; i < length; ++i) {
    if ((byteAt(bytes, at + i) & 0xc0) != 0x80) return 0;
  }
  return length;
}

bool isUtf8(std::string_view bytes) {
  for (std::size_t at = 0; at < bytes.size();) {
    const std::size_t length = characterLength(bytes, at);
    if (length == 0) return false;
    at += length;
  }
  return true;
}

void appendCharacter(std::string& text, unsigned code) {
  if (code < 0x80) {
    text += static_cast<char>(code);
  } else if (code < 0x800) {
    text += static_cast<char>(0xc0 | (code >> 6));
    text += static_cast<char>(0x80 | (code & 0x3f));
  } else {
    text += static_cast<char>(0xe0 | (code >> 12));
    text += static_cast<char>(0x80 | ((code >> 6) & 0x3f));
    text += static_cast<char>(0x80 | (code & 0x3f));
  }
}

}  // namespace

std::string wireText(std::string_view bytes) {
  if (isUtf8(bytes)) return std::string(bytes);
  std::string text;
  for (const char byte : bytes) {
    const unsigned code = static_cast<unsigned char>(byte);
    appendCharacter(text, code >= 0x80 && code < 0xa0 ? kWindows1252[code - 0x80] : code);
  }
  return text;
}

}  // namespace tessaly
