#include "platform/FixedPoint.h"

#include <array>
#include <charconv>

#include "platform/Text.h"

namespace tessaly {

std::string fixedPoint(double number, int decimals) {
  std::array<char, 64> buffer;
  const auto [stop, error] =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, std::chars_format::fixed, decimals);
  return error == std::errc() ? std::string(buffer.data(), stop) : format("%.*f", decimals, number);
}

}  // namespace tessaly
