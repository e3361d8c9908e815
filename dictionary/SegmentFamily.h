#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tessaly {

// One value of a name segment: as it stands in the function's name, and as it is shown.
struct SegmentAlternative {
  std::string fidText;
  std::string displayText;
};

// "fidsegment_indexed": fidseg and displayname are stems; index i gives fidseg + i and displayname + (offset + i).
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

// The alternatives of an indexed family in rising order; none when min > max.
[[nodiscard]] std::vector<SegmentAlternative> alternativesOf(const IndexedFamily& family);

}  // namespace tessaly
