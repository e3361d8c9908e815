#pragma once

namespace tessaly {

// Random actions of a user against two flaky panels, each followed by a comparison of the window and all
// files with a plain model. The same seed gives the same actions. At the first difference it prints the seed,
// the last actions and the difference, and returns false.
[[nodiscard]] bool runSoak(int actions, unsigned seed);

}  // namespace tessaly
