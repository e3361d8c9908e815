#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Outcome.h"
#include "review/Snapshot.h"

// The list in a snapshot: what its files are, and what they have to hold.
namespace tessaly {

struct SnapshotManifest {
  struct Row {
    int workplace;
    MacroNumber number;
    std::string name;
    std::uint64_t size;  // bytes
    std::string sum;     // SHA-256
  };

  Snapshot::Origin origin;
  std::chrono::sys_seconds time{};
  std::vector<int> workplaces;
  std::vector<Row> rows;  // in the order of a snapshot's macros

  [[nodiscard]] std::string text() const;
  // kNoSnapshot, with what is wrong as what follows the snapshot's name.
  [[nodiscard]] static Expected<SnapshotManifest> read(std::string_view text);
};

}  // namespace tessaly
