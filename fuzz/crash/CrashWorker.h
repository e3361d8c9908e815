#pragma once

#include <cstdint>
#include <filesystem>

#include "fuzz/crash/CrashRecord.h"

namespace tessaly {

// Writes to the site in steps of a random kind, noting each in the record, until `steps` are done or somebody
// kills the process. False when a step failed.
[[nodiscard]] bool runCrashWorker(const std::filesystem::path& folder, CrashRecord& record,
                                  std::uint16_t ftpPort, unsigned seed, int steps);

// One step in this process, with its traces in the record.
bool runCrashStep(const std::filesystem::path& folder, CrashRecord& record, std::uint16_t ftpPort,
                  CrashStep step);

}  // namespace tessaly
