#include "model/SegmentSearch.h"

#include <algorithm>
#include <unordered_set>

#include "platform/Text.h"

namespace tessaly {
namespace {

constexpr char kBetween = '\n';  // texts of one entry; a typed text has none

std::string_view takeSegment(std::string_view& rest) {
  const std::string_view segment = rest.substr(0, rest.find('.'));
  rest.remove_prefix(std::min(segment.size() + 1, rest.size()));
  return segment;
}

}  // namespace

SegmentSearch::SegmentSearch(const FunctionDictionary& dictionary) {
  std::unordered_set<std::string_view> seen;
  std::string_view before;
  for (std::size_t i = 0; i < dictionary.functionCount(); ++i) {
    // Neighbours share most of their segments, which need not be looked up again.
    const std::string_view name = dictionary.name(i);
    std::string_view rest = name;
    while (!rest.empty()) {
      const std::string_view segment = takeSegment(rest);
      if (segment.empty() || segment == takeSegment(before)) continue;
      if (seen.insert(segment).second) add(dictionary, segment);
    }
    before = name;
  }
}

void SegmentSearch::add(const FunctionDictionary& dictionary, std::string_view segment) {
  searched_.append(toUpperAscii(segment)).push_back(kBetween);
  if (const AliasEntry* alias = dictionary.alias(segment)) {
    searched_.append(alias->upperDescription).push_back(kBetween);
    searched_.append(toUpperAscii(alias->search2)).push_back(kBetween);
  }
  entries_.push_back({segment, searched_.size()});
}

std::vector<std::string> SegmentSearch::find(std::string_view text) const {
  std::vector<std::string> segments;
  if (text.empty()) return segments;
  const std::string wanted = toUpperAscii(text);
  const std::string_view searched = searched_;
  std::size_t hit = searched.find(wanted);
  for (const Entry& entry : entries_) {
    if (hit == std::string_view::npos) break;
    if (hit < entry.searchedEnd) {
      segments.emplace_back(entry.segment);
      hit = searched.find(wanted, entry.searchedEnd);
    }
  }
  return segments;
}

int SegmentSearch::likeliest(const std::vector<std::string>& segments, std::string_view text) {
  if (segments.empty()) return -1;
  const auto place = [&](auto fits) {
    return static_cast<int>(std::find_if(segments.begin(), segments.end(), fits) - segments.begin());
  };
  const int none = static_cast<int>(segments.size());
  if (const int row = place([&](const auto& segment) { return equalNoCase(segment, text); }); row < none)
    return row;
  const std::string wanted = toUpperAscii(text);
  const int row = place([&](const auto& segment) { return toUpperAscii(segment).starts_with(wanted); });
  return row < none ? row : 0;
}

}  // namespace tessaly
