#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/CommandSession.h"
#include "cli/PanelLine.h"

// The commands that store a panel's macros in one file and put them back. Each returns an exit code.
namespace tessaly {

// All workplaces of the panel into a snapshot, over an old file. With `force` also what is no macro.
int takePanelSnapshot(CommandSession& session, const PanelPlace& place, const std::string& file, bool force);

struct RestoreHow {
  bool dryRun = false;
  bool force = false;  // what is no macro is sent, too
};

// What is put back of a snapshot: `words` are the workplace, with 1 to 8 in it, and numbers, as they were
// typed. Wrong ones are told.
int restoreToPanel(CommandSession& session, const PanelPlace& place, const std::string& file,
                   const std::vector<std::string>& words, RestoreHow how);

}  // namespace tessaly
