#pragma once

#include "app/PaneState.h"
#include "link/PanelConnection.h"

namespace tessaly {

// Lets each list of a pane that has nothing to choose from say what is to be done next.
void showNextSteps(PaneState& pane, const PanelConnection& connection);

}  // namespace tessaly
