#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

// One command of a macro file as a checker sees it: its fid and its first parameter that has a value.
struct SeenCommand {
  std::string fid, value;
  bool valued = false;  // it has such a parameter

  friend bool operator==(const SeenCommand&, const SeenCommand&) = default;
};

// What a whole macro file says, read with other means than the program's: nothing when the bytes are no whole
// file.
struct SeenMacro {
  std::string name;
  std::vector<SeenCommand> commands;
};
[[nodiscard]] std::optional<SeenMacro> seeMacro(std::string_view bytes);

}  // namespace tessaly
