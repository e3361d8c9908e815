#pragma once

#include <string_view>

#include "platform/Outcome.h"

namespace tessaly {

// What the system's error number says; `doing` ("written") completes the sentence for people.
[[nodiscard]] Failure systemFailure(int error, std::string_view doing);

// The user has ended it.
[[nodiscard]] inline Failure cancelledFailure() { return {Failure::Kind::kCancelled, "was cancelled"}; }

}  // namespace tessaly
