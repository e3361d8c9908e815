#pragma once

#include <QString>

#include "platform/Outcome.h"

namespace tessaly {

// Why something failed, in the language of the window.
[[nodiscard]] QString failureText(const Failure& failure);
// The same behind a text: " (...)". Nothing behind what is done.
[[nodiscard]] QString inBrackets(const Outcome& outcome);

}  // namespace tessaly
