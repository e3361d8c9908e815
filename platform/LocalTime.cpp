#include "platform/LocalTime.h"

#include <array>
#include <ctime>

namespace tessaly {

std::string localTimeText(std::int64_t milliseconds) {
  const auto seconds = static_cast<std::time_t>(milliseconds / 1000);
  std::tm local{};
  std::array<char, 32> text{};
  if (::localtime_r(&seconds, &local) == nullptr ||
      std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S", &local) == 0)
    return {};
  return text.data();
}

}  // namespace tessaly
