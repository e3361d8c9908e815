#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/SiteLock.h"

// What stands in the lock of a site.
namespace tessaly {

inline constexpr std::size_t kLongestLockRecord = 1024;  // bytes; what is longer is none of ours

[[nodiscard]] std::string lockRecord(const LockHolder& holder);
// Nobody for bytes that are no record. `changed`: when the file was, in seconds since 1970.
[[nodiscard]] LockHolder lockHolder(std::string_view record, std::int64_t changed);

}  // namespace tessaly
