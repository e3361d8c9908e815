#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dictionary/SegmentFamily.h"

namespace tessaly {

struct FamilyTables {
  std::map<std::string, IndexedFamily, std::less<>> indexed;
  std::map<std::string, EnumFamily, std::less<>> enumerated;
};

// "$" segments that one name template may have.
inline constexpr std::size_t kMostFamilySegments = 64;

// Bytes from which on a text takes no further substitution, so that a damaged file cannot make it grow
// without end.
inline constexpr std::size_t kLongestSubstitution = std::size_t{1} << 20;

// A "$" segment of a name template and the family that it stands for (exactly one of the two; owned by the
// tables).
struct FamilySegment {
  const IndexedFamily* indexed = nullptr;
  const EnumFamily* enumerated = nullptr;
  std::uint32_t begin = 0, length = 0;  // of the segment with its "$" in the name template
  std::uint32_t count = 0;              // alternatives

  [[nodiscard]] std::size_t longestFidText() const;
  void appendFidText(std::uint32_t choice, std::string& out) const;
  void appendDisplayText(std::uint32_t choice, std::string& out) const;
};

// The chosen alternative of every "$" segment.
using Choices = std::array<std::uint32_t, kMostFamilySegments>;

// A name template cut at its "$" segments. Literal segments are no level of their own: they have one
// alternative, themselves. A combination of alternatives is numbered in mixed radix, the first segment being
// the most significant digit. The template's name is passed in by the owner, who keeps it unchanged.
class NamePattern {
 public:
  enum class Text { kFid, kDisplay };

  // Nothing when a segment names an unknown family.
  [[nodiscard]] static std::optional<NamePattern> parse(std::string_view name, const FamilyTables& families);

  // Saturates at the largest value; also for a family or a number of segments above the bounds.
  [[nodiscard]] std::uint64_t combinations() const { return combinations_; }
  [[nodiscard]] const std::vector<FamilySegment>& segments() const { return segments_; }

  // An upper bound for the bytes of one concrete name.
  [[nodiscard]] std::size_t longestName(std::string_view name) const;

  [[nodiscard]] Choices choicesOf(std::uint32_t combination) const;

  // True when a chosen FID text, that of a literal segment included, equals "INC".
  [[nodiscard]] bool choosesIncrement(const Choices& choices) const;

  // `text` with the references to segments replaced by the chosen texts, in one pass: at each "$" the longest
  // segment that stands there and is not followed by a letter, a digit or "_". What was put in is not looked
  // at again. When several segments have the same text, the k-th reference takes the k-th one's choice, any
  // further reference the last one's. Ends at kLongestSubstitution bytes; what follows then stands as it is.
  [[nodiscard]] std::string substitute(std::string_view name, std::string_view text, const Choices& choices,
                                       Text kind) const;

 private:
  [[nodiscard]] bool addSegment(std::string_view segment, std::size_t begin, const FamilyTables& families);

  std::vector<FamilySegment> segments_;
  std::uint64_t combinations_ = 1;
  bool literalIncrement_ = false;
};

}  // namespace tessaly
