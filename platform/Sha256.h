#pragma once

#include <string>
#include <string_view>

#include "platform/Outcome.h"

namespace tessaly {

inline constexpr std::size_t kSha256Digits = 64;

// The SHA-256 of bytes as 64 hexadecimal digits, small letters. Fails only where the library (libcrypto) is
// missing, which is loaded by the first use. Thread-safe.
[[nodiscard]] Expected<std::string> sha256Text(std::string_view bytes);

}  // namespace tessaly
