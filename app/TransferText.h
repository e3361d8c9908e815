#pragma once

#include <string_view>

#include <QString>

#include "link/PanelMacros.h"

namespace tessaly {

// What TransferOutcome::describe says, in the user's language.
[[nodiscard]] QString transferText(const TransferOutcome& outcome);
// What FtpClient::describe has said; empty for anything else.
[[nodiscard]] QString transferText(std::string_view english);

}  // namespace tessaly
