#include "platform/ContentCheck.h"

#define XXH_INLINE_ALL
#include <xxhash.h>

namespace tessaly {

ContentCheck contentCheck(std::string_view bytes) {
  return {bytes.size(), XXH3_64bits(bytes.data(), bytes.size())};
}

std::uint64_t textSum(std::string_view text) {
  constexpr std::uint64_t kStart = 0xCBF29CE484222325;
  constexpr std::uint64_t kPrime = 0x100000001B3;
  std::uint64_t sum = kStart;
  for (const char c : text) sum = (sum ^ static_cast<unsigned char>(c)) * kPrime;
  return sum;
}

}  // namespace tessaly
