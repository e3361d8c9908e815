#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace tessaly {

struct Alignment {
  // For each member of the first row the number of the equal one in the second that stands beside it, or -1;
  // the numbers rise.
  std::vector<int> partners;
  bool longest = true;  // no alignment has more pairs
};

// Aligns two rows of numbers below about the sum of their lengths, equal ones to equal ones.
//
// A longest common subsequence, by rows of bits: at most n × m / 32 steps of a few instructions, whatever
// stands in the rows, so 10,000 beside 10,000 take some 10 ms at the worst and 100,000 beside 100,000 half a
// second; what only one row holds, and a common start or end, cost nothing. Memory is linear: about 40 bytes
// a member. Beyond kMostCells both rows are cut into as many parts of equal share, and part is aligned with
// part: what the result pairs is equal all the same, but there may be longer ones. Any thread.
[[nodiscard]] Alignment align(std::span<const std::uint32_t> first, std::span<const std::uint32_t> second);

inline constexpr std::uint64_t kMostCells = 40'000'000'000;  // n × m that is aligned in one piece

}  // namespace tessaly
