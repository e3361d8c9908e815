#pragma once

#include <cstdint>
#include <string_view>

namespace tessaly {

// Tells whether a file still holds what it held: its size and a checksum (FNV-1a, 64 bits). Against chance
// and other programs, not against a forger.
struct ContentCheck {
  std::uint64_t size = 0;
  std::uint64_t sum = 0;

  friend bool operator==(const ContentCheck&, const ContentCheck&) = default;
};

[[nodiscard]] inline ContentCheck contentCheck(std::string_view bytes) {
  constexpr std::uint64_t kStart = 0xCBF29CE484222325;
  constexpr std::uint64_t kPrime = 0x100000001B3;
  std::uint64_t sum = kStart;
  for (const char c : bytes) sum = (sum ^ static_cast<unsigned char>(c)) * kPrime;
  return {bytes.size(), sum};
}

}  // namespace tessaly
