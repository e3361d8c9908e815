#pragma once

#include <vector>

#include "cli/MacroWords.h"
#include "cli/PanelLine.h"

namespace tessaly {

class CommandSession;

// Writes the panel's present values into the commands of a macro FILE, those in the ranges or all, as one
// change; the exit code. Classic commands, steps and functions that the site does not know have no such
// value and stay.
int updateFromPanel(CommandSession& session, const PanelPlace& place, const std::string& file,
                    const std::vector<CommandRange>& ranges);

}  // namespace tessaly
