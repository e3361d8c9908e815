#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tessaly {

// Members of an indexed family; a larger one has no alternatives, so that a damaged range cannot exhaust
// memory.
inline constexpr std::int64_t kLargestFamily = 1'000'000;

// One value of a name segment: as it stands in the function's name, and as it is shown.
struct SegmentAlternative {
  std::string fidText;
  std::string displayText;
};

// "fidsegment_indexed": fidseg and displayname are stems; index i gives fidseg + i and displayname + (offset
// + i).
struct IndexedFamily {
  std::string name, fidseg, displayname;
  std::int32_t min = 0, max = 0, offset = 0;
};

// "fidsegment_enum": members in document order.
struct EnumFamily {
  std::string name;
  std::vector<SegmentAlternative> members;
};

// One entry of an "alias" element, keyed by the segment value that it describes.
struct AliasEntry {
  std::string segment, description, upperDescription, search2;
};

// Number of indices from min to max, 0 when min > max; may exceed kLargestFamily.
[[nodiscard]] std::int64_t sizeOf(const IndexedFamily& family);

// Append one alternative's text; `place` counts from 0 (index min).
void appendFidText(const IndexedFamily& family, std::uint32_t place, std::string& out);
void appendDisplayText(const IndexedFamily& family, std::uint32_t place, std::string& out);

// The alternatives of an indexed family in rising order; none when min > max or above kLargestFamily members.
[[nodiscard]] std::vector<SegmentAlternative> alternativesOf(const IndexedFamily& family);

}  // namespace tessaly
