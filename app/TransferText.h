#pragma once

#include <QString>

#include "link/PanelMacros.h"

namespace tessaly {

// What TransferOutcome::describe says, in the user's language.
[[nodiscard]] QString transferText(const TransferOutcome& outcome);

}  // namespace tessaly
