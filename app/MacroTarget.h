#pragma once

#include <string>

#include "link/PaneStates.h"
#include "platform/MacroKeeper.h"

namespace tessaly {

// Where an opened macro came from and where saving puts it. Noted when the macro is opened, so that a list
// that changes under an open macro never redirects its save.
struct MacroTarget {
  PaneSource source = PaneSource::kHarddisk;
  std::string folder;      // site path of the macro folder, harddisk
  std::string address;     // panel
  int workplace = 0;       // 1-based
  std::string numberText;  // "007"
  std::string name;

  [[nodiscard]] std::string file() const { return folder + "macro" + numberText + ".mac"; }
  friend bool operator==(const MacroTarget&, const MacroTarget&) = default;
};

// As the history knows it.
[[nodiscard]] inline MacroPlace placeOf(const MacroTarget& target) {
  if (target.source == PaneSource::kHarddisk) return {target.file(), {}, 0, {}};
  return {{}, target.address, target.workplace, target.numberText};
}

}  // namespace tessaly
