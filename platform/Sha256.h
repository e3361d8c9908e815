#pragma once

#include <span>
#include <string>
#include <string_view>

#include "platform/Outcome.h"

namespace tessaly {

inline constexpr std::size_t kSha256Digits = 64;

// The SHA-256 of bytes as 64 hexadecimal digits, small letters. Fails only where the library
// (libcrypto) is missing, which is loaded by the first use. Thread-safe.
[[nodiscard]] Expected<std::string> sha256Text(std::string_view bytes);

// Two small hexadecimal digits a byte.
[[nodiscard]] inline std::string hexText(std::span<const unsigned char> bytes) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string text;
  for (const unsigned char byte : bytes) {
    text += kDigits[byte >> 4];
    text += kDigits[byte & 0xF];
  }
  return text;
}

}  // namespace tessaly
