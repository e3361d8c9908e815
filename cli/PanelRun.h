#pragma once

#include "cli/CommandSession.h"
#include "cli/PanelLine.h"

namespace tessaly {

// Has a panel carry out a macro and waits until it has; prints when it begins and ends. Fails without such a
// macro, and when the panel does not say in time that it runs.
int runOnPanel(CommandSession& session, const PanelPlace& place, int workplace, int number);

}  // namespace tessaly
