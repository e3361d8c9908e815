#pragma once

#include <string>

#include "fuzz/soak/Desk.h"

namespace tessaly {

// What is wrong with the enabled and shown states of the window's controls, judged by what its lists show;
// empty when nothing is. Between two actions no dialog may be open and no pane may be stuck.
[[nodiscard]] std::string controlProblems(const Desk& desk);

}  // namespace tessaly
