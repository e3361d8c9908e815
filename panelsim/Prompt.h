#pragma once

#include <string>

#include "panelsim/PanelSimulator.h"

namespace tessaly {

struct PromptAnswer {
  std::string text;  // lines to print, without the last end of line; may be empty
  bool quit = false;
  bool known = true;  // false when the command was wrong; `text` says why
};

// Carries out one line typed at the prompt or read from a script ("help" lists them). Empty lines and lines
// that begin with "#" do nothing. Names hold no blanks; a value is the rest of the line.
[[nodiscard]] PromptAnswer runPromptLine(PanelSimulator& panel, const std::string& line);

}  // namespace tessaly
