#pragma once

#include <set>
#include <string>

#include "cli/CommandSession.h"
#include "cli/PanelLine.h"

namespace tessaly {

struct PanelReplacement {
  std::string rule;
  std::set<int> numbers;  // of the macros; all that are there when empty
  bool dryRun = false, json = false;
};

// Replaces by a rule (docs/replace.md) in the macros of a workplace, each kept, sent and verified for itself.
// An exit code.
int replaceOnPanel(CommandSession& session, const PanelPlace& place, int workplace,
                   const PanelReplacement& how);

}  // namespace tessaly
