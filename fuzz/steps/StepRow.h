#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tessaly {

// A macro by chance and what is done to it, a number for each. The same numbers do the same again, and any of
// them but the first may be left out, so that a row which breaks a rule can be made shorter.
using StepRow = std::vector<std::uint32_t>;

struct StepRowResult {
  std::string broken;             // the rule; empty when all hold
  std::size_t steps = 0;          // that were made
  std::vector<std::string> done;  // what was done, in words
};

// Does it to a row of steps, to its file in memory, and to a model that keeps every content whole.
[[nodiscard]] StepRowResult runStepRow(const StepRow& row);

// The shortest row that still breaks a rule and comes of this one by leaving out.
[[nodiscard]] StepRow shrunk(StepRow row);

}  // namespace tessaly
