#pragma once

#include <memory>
#include <string>

#include "review/Snapshot.h"

namespace tessaly {

// A snapshot that a pane shows in place of what lies under a path of the disk: to be viewed and copied from.
struct ShownSnapshot {
  std::shared_ptr<const Snapshot> snapshot;
  std::string file;  // site path, UTF-8, as it stands in the pane's path
};

}  // namespace tessaly
