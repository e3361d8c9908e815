#pragma once

#include <QString>

#include "platform/Outcome.h"

namespace tessaly {

// Why something failed, in the language of the window.
[[nodiscard]] QString failureText(const Failure& failure);

}  // namespace tessaly
