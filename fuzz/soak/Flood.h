#pragma once

namespace tessaly {

// A panel that sends 10,000 values a second for so long, to registered functions and macro names, with both
// panes connected and value updates running at times. Every value has to arrive and the memory to stay flat;
// unless `patient`, the window also has to stay alive: the longest gap between two turns of its event loop is
// bounded. Prints what was measured.
[[nodiscard]] bool runFlood(int seconds, bool patient);

}  // namespace tessaly
