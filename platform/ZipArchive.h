#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Outcome.h"

// Archives (ZIP) of plain files, in memory. The files stand in them as they are, not compressed: the same
// files and time are the same bytes whichever library packs them, and no archive can hold more than its own
// size. No function throws; failures are kNoSnapshot, with the reason as what follows the archive's name ("is
// no archive ..."), kTooLarge and kNoMemory. Thread-safe.
namespace tessaly {

struct ZipFile {
  std::string name;  // UTF-8, "/" between folders
  std::string bytes;
};

// In the order of the files, each marked with the time.
[[nodiscard]] Expected<std::string> packZip(const std::vector<ZipFile>& files, std::chrono::sys_seconds time);

// At most so many files. Names are as they stand in the archive and may be anything but twice there. Refused:
// what is damaged or contradicts itself, links, folders, and files that are encrypted or compressed.
[[nodiscard]] Expected<std::vector<ZipFile>> unpackZip(std::string_view archive, std::size_t mostFiles);

}  // namespace tessaly
