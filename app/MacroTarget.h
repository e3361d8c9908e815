#pragma once

#include <string>

#include "link/PaneStates.h"
#include "platform/MacroKeeper.h"
#include "platform/MacroNumber.h"
#include "platform/SiteRoot.h"

namespace tessaly {

// Where an opened macro came from and where saving puts it. Noted when the macro is opened, so that a list
// that changes under an open macro never redirects its save.
struct MacroTarget {
  PaneSource source = PaneSource::kHarddisk;
  std::string folder;      // site path of the macro folder, harddisk
  HostAddress address;     // panel
  int workplace = 0;       // 1-based
  std::string numberText;  // "007"
  std::string name;

  // There is a place to go to and a number in it.
  [[nodiscard]] bool complete() const {
    return !numberText.empty() && (source == PaneSource::kPanel ? workplace > 0 : !folder.empty());
  }
  [[nodiscard]] std::string file() const { return folder + macroFileName(numberText); }
  friend bool operator==(const MacroTarget&, const MacroTarget&) = default;
};

// As the history knows it.
[[nodiscard]] inline MacroPlace placeOf(const MacroTarget& target) {
  if (target.source == PaneSource::kHarddisk) return {target.file(), {}, 0, {}};
  return {{}, target.address, target.workplace, target.numberText};
}

// A text that the target of no other place has, whatever name the macro has there.
[[nodiscard]] inline std::string keyOf(const MacroTarget& target) {
  const MacroPlace at = placeOf(target);
  return at.file + '\n' + at.address.key() + '\n' + std::to_string(at.workplace) + '\n' + at.number;
}

// Whether both are one place, whatever name the macro has there.
[[nodiscard]] inline bool samePlace(const SiteRoot& root, const MacroTarget& a, const MacroTarget& b) {
  return samePlace(root, placeOf(a), placeOf(b));
}

}  // namespace tessaly
