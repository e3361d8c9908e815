#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/MacroNumber.h"
#include "platform/Outcome.h"
#include "platform/SiteRoot.h"

namespace tessaly {

// The macros that a panel, or a folder of the disk, held at a time: one archive (docs/snapshot.md).
// A plain value.
struct Snapshot {
  static constexpr int kFolder = 0;  // in place of a workplace, for a folder's macros

  struct Origin {
    std::string address;  // of the panel, UTF-8; empty for a folder
    std::string folder;   // site path, UTF-8; empty for a panel
  };
  struct Macro {
    int workplace;  // 1-based, or kFolder
    MacroNumber number;
    std::string name;   // UTF-8, as the panel told it; may be empty
    std::string bytes;  // as they are stored, whether or not they are a macro
  };

  Origin origin;
  std::chrono::sys_seconds time{};
  std::vector<int> workplaces;  // that were read, empty ones too, in order; kFolder alone for a folder
  std::vector<Macro> macros;    // in the order of workplaces and numbers, each at most once

  // Those of one workplace.
  [[nodiscard]] std::span<const Macro> of(int workplace) const;
};

// Where a macro lies in the archive: "workplace2/macro007.mac", or "folder/macro007.mac".
[[nodiscard]] std::string snapshotFolderOf(int workplace);  // with the separator at its end
[[nodiscard]] std::string snapshotFileOf(int workplace, MacroNumber number);

inline constexpr std::size_t kLongestSnapshotName = 250;  // bytes of a macro's name; a longer one is cut

// "2026-11-25T13:40:00Z".
[[nodiscard]] std::string utcText(std::chrono::sys_seconds time);

// One archive, the same bytes for the same snapshot. kTooLarge beyond the bounds of a file (kLargestFile).
[[nodiscard]] Expected<std::string> packSnapshot(const Snapshot& snapshot);

// Takes nothing but a whole one: each file that the list names, with the size and the sum that stand there,
// and no other file. kNoSnapshot otherwise, with what is wrong as what follows the file's name. `wanted` is
// asked macro by macro; kCancelled once it says no.
[[nodiscard]] Expected<Snapshot> unpackSnapshot(std::string_view archive,
                                                const std::function<bool()>& wanted = {});

// Writes it whole or not at all, and reads it again before it is said to be done.
Outcome saveSnapshot(const SiteRoot& root, std::string_view path, const Snapshot& snapshot);

[[nodiscard]] Expected<Snapshot> openSnapshot(const SiteRoot& root, std::string_view path,
                                              const std::function<bool()>& wanted = {});

}  // namespace tessaly
