#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "model/MacroEdit.h"

// Edits that change one thing of a command and leave everything else as it is; nothing where no edit can, as
// when the command holds what the program does not know of.
namespace tessaly {

[[nodiscard]] std::optional<MacroEdit> withFid(const MacroCommand& command, int number, std::string fid);
[[nodiscard]] std::optional<MacroEdit> withParameterName(const MacroCommand& command, int number,
                                                         std::size_t place, std::string name);
[[nodiscard]] std::optional<MacroEdit> withValue(const MacroCommand& command, int number, std::size_t place,
                                                 std::string value);

}  // namespace tessaly
