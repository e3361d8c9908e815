#pragma once

#include <string>

#include "app/RecoveryFile.h"

namespace tessaly {

// How the bytes of a record's changes are found at a start. A program may have died between two writes of its
// own: behind a save, when the place on the disk holds the bytes already, or between the working file and its
// record, when the steps lead to what is there.
enum class RecoveredBytes { kUnsaved, kSaved, kForeign };

[[nodiscard]] RecoveredBytes judgeRecovered(const SiteRoot& root, const RecoveryFile& file,
                                            const RecoveryRecord& record, const std::string& bytes);

}  // namespace tessaly
