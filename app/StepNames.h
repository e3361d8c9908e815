#pragma once

#include <string>

#include "model/MacroEdit.h"

namespace tessaly {

// What a step is called in the menu and in the list of steps; in the program's language, UTF-8.
[[nodiscard]] std::string stepName(const MacroEdit& edit);
[[nodiscard]] std::string updateStepName(int values);
[[nodiscard]] std::string rewriteStepName();
[[nodiscard]] std::string discardStepName();

}  // namespace tessaly
