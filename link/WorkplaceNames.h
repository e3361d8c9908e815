#pragma once

#include <atomic>
#include <map>
#include <string>

#include "link/PanelClient.h"
#include "platform/Outcome.h"

namespace tessaly {

// The names of the macros of a workplace, 1 to 8, by their numbers, as the panel publishes them; without
// those that are empty, where there is no macro. Asks for them and waits until all have come, or 3 s for a
// further one. kPanel without a line or an answer, kCancelled. Blocking; any
// thread but the library's.
[[nodiscard]] Expected<std::map<int, std::string>> readWorkplaceNames(PanelClient& client, int workplace,
                                                                      const std::atomic<bool>& cancelled);

}  // namespace tessaly
