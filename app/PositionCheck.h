#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

using MacroNameTable = std::vector<std::string>;  // by macro number, 0 to 999; empty where there is no macro

// What "To Position:" and "At Position:" make of the number typed. Shared by copying and creating.
struct PositionCheck {
  bool unchanged = false;  // a number outside 0..999: nothing changes
  int number = -1;         // -1 for an empty box
  std::string existing;    // name of the macro that would be overwritten, empty for none
  std::string label;       // text beside the box
};

[[nodiscard]] PositionCheck checkPosition(std::string_view typed, const MacroNameTable& names);

}  // namespace tessaly
