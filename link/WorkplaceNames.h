#pragma once

#include <atomic>
#include <chrono>
#include <map>
#include <string>

#include "link/PanelClient.h"
#include "platform/Outcome.h"

namespace tessaly {

inline constexpr std::chrono::milliseconds kNamesPatience{3000};

// The names of the macros of a workplace, 1 to 8, by their numbers, as the panel publishes them; without
// those that are empty, where there is no macro. Asks for them and waits until all have come, or so long for
// a further one. Where none has come, as when the line is dead by then, nobody knows whether there is a
// macro: it stands there with an empty name. kPanel without a line or any answer, kCancelled. Blocking; any
// thread but the library's.
[[nodiscard]] Expected<std::map<int, std::string>> readWorkplaceNames(
    PanelClient& client, int workplace, const std::atomic<bool>& cancelled,
    std::chrono::milliseconds patience = kNamesPatience);

}  // namespace tessaly
