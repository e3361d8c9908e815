#pragma once

#include <QString>

#include "app/MacroTarget.h"

namespace tessaly {

struct PaneState;

// Where a macro lies, as people say it, without its number: "workplace 2 on 10.0.0.5",
// "Evening News/CP1, workplace 1". A folder that is none of a site's stands with its path.
[[nodiscard]] QString placeInWindow(const MacroPlace& place);
[[nodiscard]] inline QString placeInWindow(const MacroTarget& target) {
  return placeInWindow(placeOf(target));
}

// What is done to the commands of a pane is done there: "pane A, 007 of workplace 2 on 10.0.0.5".
[[nodiscard]] QString placeInWindow(const PaneState& pane);

}  // namespace tessaly
