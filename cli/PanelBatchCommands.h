#pragma once

#include <string>
#include <vector>

#include "cli/CommandSession.h"
#include "cli/PanelLine.h"

// The commands that look at, or send, the macros of a folder as one. Each returns an exit code.
namespace tessaly {

// What differs between a workplace of the panel and a folder; a comparison's exit code.
int comparePanel(CommandSession& session, const PanelPlace& place, int workplace, const std::string& folder,
                 bool json);

// The macros of the folder, of `words` those with these numbers, as they were typed. With `force` also what
// is no macro.
int sendFolder(CommandSession& session, const PanelPlace& place, int workplace, const std::string& folder,
               const std::vector<std::string>& words, bool force);

// Ends or undoes what was cut short on this panel, if the session knows of anything.
void recoverOnPanel(CommandSession& session, const PanelPlace& place);

}  // namespace tessaly
