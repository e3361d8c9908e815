#pragma once

#include <cstdint>
#include <string_view>

namespace tessaly {

// Tells whether a file still holds what it held: its size and a checksum (XXH3, 64 bits), which costs less
// than reading it. Against chance and other programs, not against a forger.
struct ContentCheck {
  std::uint64_t size = 0;
  std::uint64_t sum = 0;

  friend bool operator==(const ContentCheck&, const ContentCheck&) = default;
};

[[nodiscard]] ContentCheck contentCheck(std::string_view bytes);

// The sum of short texts: of a record's lines, of a name (FNV-1a, 64 bits).
[[nodiscard]] std::uint64_t textSum(std::string_view text);

}  // namespace tessaly
