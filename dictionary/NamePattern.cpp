#include "dictionary/NamePattern.h"

#include <algorithm>
#include <bitset>
#include <limits>

namespace tessaly {
namespace {

constexpr std::string_view kIncrement = "INC";
constexpr std::uint64_t kTooMany = std::numeric_limits<std::uint64_t>::max();
constexpr std::size_t kLongestNumber = 11;  // "-2147483648"

bool continuesReference(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

}  // namespace

std::size_t FamilySegment::longestFidText() const {
  if (indexed != nullptr) return indexed->fidseg.size() + kLongestNumber;
  std::size_t longest = 0;
  for (const SegmentAlternative& member : enumerated->members)
    longest = std::max(longest, member.fidText.size());
  return longest;
}

void FamilySegment::appendFidText(std::uint32_t choice, std::string& out) const {
  if (indexed != nullptr) {
    tessaly::appendFidText(*indexed, choice, out);
  } else {
    out += enumerated->members[choice].fidText;
  }
}

void FamilySegment::appendDisplayText(std::uint32_t choice, std::string& out) const {
  if (indexed != nullptr) {
    tessaly::appendDisplayText(*indexed, choice, out);
  } else {
    out += enumerated->members[choice].displayText;
  }
}

std::optional<NamePattern> NamePattern::parse(std::string_view name, const FamilyTables& families) {
  NamePattern pattern;
  for (std::size_t begin = 0; begin <= name.size();) {
    const std::size_t end = std::min(name.find('.', begin), name.size());
    const std::string_view segment = name.substr(begin, end - begin);
    if (segment.starts_with('$')) {
      if (!pattern.addSegment(segment, begin, families)) return std::nullopt;
    } else if (segment == kIncrement) {
      pattern.literalIncrement_ = true;
    }
    begin = end + 1;
  }
  const auto empty = [](const FamilySegment& segment) { return segment.count == 0; };
  if (std::any_of(pattern.segments_.begin(), pattern.segments_.end(), empty)) pattern.combinations_ = 0;
  return pattern;
}

bool NamePattern::addSegment(std::string_view segment, std::size_t begin, const FamilyTables& families) {
  FamilySegment added;
  std::uint64_t count = 0;
  const std::string_view family = segment.substr(1);
  if (const auto indexed = families.indexed.find(family); indexed != families.indexed.end()) {
    added.indexed = &indexed->second;
    count = static_cast<std::uint64_t>(sizeOf(indexed->second));
  } else if (const auto listed = families.enumerated.find(family); listed != families.enumerated.end()) {
    added.enumerated = &listed->second;
    count = listed->second.members.size();
  } else {
    return false;
  }
  if (segments_.size() == kMostFamilySegments || count > static_cast<std::uint64_t>(kLargestFamily)) {
    combinations_ = kTooMany;
    return true;
  }
  added.begin = static_cast<std::uint32_t>(begin);
  added.length = static_cast<std::uint32_t>(segment.size());
  added.count = static_cast<std::uint32_t>(count);
  segments_.push_back(added);
  if (count > 0) combinations_ = combinations_ > kTooMany / count ? kTooMany : combinations_ * count;
  return true;
}

std::size_t NamePattern::longestName(std::string_view name) const {
  std::size_t longest = name.size();
  for (const FamilySegment& segment : segments_) longest += segment.longestFidText();
  return longest;
}

Choices NamePattern::choicesOf(std::uint32_t combination) const {
  Choices choices;
  for (std::size_t place = segments_.size(); place-- > 0;) {
    choices[place] = combination % segments_[place].count;
    combination /= segments_[place].count;
  }
  return choices;
}

bool NamePattern::choosesIncrement(const Choices& choices) const {
  if (literalIncrement_) return true;
  for (std::size_t place = 0; place < segments_.size(); ++place) {
    // A text of an indexed family ends in a digit.
    const EnumFamily* family = segments_[place].enumerated;
    if (family != nullptr && family->members[choices[place]].fidText == kIncrement) return true;
  }
  return false;
}

std::string NamePattern::substitute(std::string_view name, std::string_view text, const Choices& choices,
                                    Text kind) const {
  std::string result;
  result.reserve(text.size() + 16);
  std::bitset<kMostFamilySegments> used;
  std::size_t at = 0;
  while (result.size() < kLongestSubstitution) {
    const std::size_t next = text.find('$', at);
    if (next == std::string_view::npos) break;
    result.append(text, at, next - at);
    const std::string_view rest = text.substr(next);
    std::optional<std::size_t> best;
    for (std::size_t place = 0; place < segments_.size(); ++place) {
      const FamilySegment& segment = segments_[place];
      if (!rest.starts_with(name.substr(segment.begin, segment.length))) continue;
      if (rest.size() > segment.length && continuesReference(rest[segment.length])) continue;
      const std::size_t length = best ? segments_[*best].length : 0;
      if (segment.length > length || (segment.length == length && used[*best])) best = place;
    }
    if (!best) {
      result += '$';
      at = next + 1;
      continue;
    }
    used.set(*best);
    if (kind == Text::kFid) {
      segments_[*best].appendFidText(choices[*best], result);
    } else {
      segments_[*best].appendDisplayText(choices[*best], result);
    }
    at = next + segments_[*best].length;
  }
  return result.append(text, at);
}

}  // namespace tessaly
