#include "app/PositionCheck.h"

#include "platform/MacroNumber.h"
#include "platform/Text.h"

namespace tessaly {

namespace {
constexpr const char* kNoPosition = "no postion selected...";
constexpr const char* kFree = "position is empty";
}  // namespace

PositionCheck checkPosition(std::string_view typed, const MacroNameTable& names) {
  PositionCheck check;
  if (typed.empty()) {
    check.label = kNoPosition;
    return check;
  }
  const int number = parseInt(typed);
  if (!MacroNumber::of(number)) {
    check.unchanged = true;
    return check;
  }
  check.number = number;
  const auto index = static_cast<std::size_t>(number);
  if (index < names.size()) check.existing = names[index];
  check.label = check.existing.empty() ? kFree : check.existing;
  return check;
}

}  // namespace tessaly
