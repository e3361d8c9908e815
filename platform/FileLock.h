#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>

#include "platform/Descriptor.h"
#include "platform/Outcome.h"

namespace tessaly {

// One of very many locks that a file stands for, each known by a number. One holder has it at a time, of all
// programs on this computer, and when a program dies its locks are free. The file is made on first use and
// never removed; it may hold a short text that belongs to the holder of some agreed number.
class FileLock {
 public:
  // Waits for the lock, at most `patience`; `kInUse` when somebody else still holds it then. Any other
  // failure says that there can be no lock: no folder, or the file is another user's or no file of ours.
  static Expected<FileLock> take(const std::filesystem::path& file, std::uint64_t number,
                                 std::chrono::milliseconds patience);

  // Empty when it cannot be read.
  [[nodiscard]] std::string text() const;
  Outcome setText(const std::string& text) const;

 private:
  Descriptor file_;  // the lock is this opening's, and goes with it
};

}  // namespace tessaly
