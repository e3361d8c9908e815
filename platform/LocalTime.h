#pragma once

#include <cstdint>
#include <string>

namespace tessaly {

// Milliseconds since 1970 as "2026-11-24 18:56:44" in local time; empty when there is no such time. Any
// thread.
[[nodiscard]] std::string localTimeText(std::int64_t milliseconds);

}  // namespace tessaly
