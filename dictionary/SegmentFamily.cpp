#include "dictionary/SegmentFamily.h"

#include <charconv>

namespace tessaly {
namespace {

void appendNumber(std::int64_t number, std::string& out) {
  char digits[24];
  const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
  out.append(digits, static_cast<std::size_t>(end - digits));
}

}  // namespace

std::int64_t sizeOf(const IndexedFamily& family) {
  return family.min > family.max ? 0 : std::int64_t{family.max} - family.min + 1;
}

void appendFidText(const IndexedFamily& family, std::uint32_t place, std::string& out) {
  out += family.fidseg;
  appendNumber(std::int64_t{family.min} + place, out);
}

void appendDisplayText(const IndexedFamily& family, std::uint32_t place, std::string& out) {
  out += family.displayname;
  appendNumber(std::int64_t{family.min} + family.offset + place, out);
}

std::vector<SegmentAlternative> alternativesOf(const IndexedFamily& family) {
  const std::int64_t size = sizeOf(family);
  if (size > kLargestFamily) return {};
  std::vector<SegmentAlternative> alternatives(static_cast<std::size_t>(size));
  std::uint32_t place = 0;
  for (auto& [fidText, displayText] : alternatives) {
    appendFidText(family, place, fidText);
    appendDisplayText(family, place, displayText);
    ++place;
  }
  return alternatives;
}

}  // namespace tessaly
