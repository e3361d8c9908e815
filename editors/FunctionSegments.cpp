#include "editors/FunctionSegments.h"

#include <algorithm>

namespace tessaly {
namespace {

std::vector<std::string> split(std::string_view name) {
  std::vector<std::string> segments;
  std::size_t begin = 0;
  while (true) {
    const std::size_t end = std::min(name.find('.', begin), name.size());
    segments.emplace_back(name.substr(begin, end - begin));
    if (end == name.size()) return segments;
    begin = end + 1;
  }
}

// False when the template's segment names a family that is not there.
bool alternativesOf(const FunctionDictionary& dictionary, const std::string& segment,
                    std::vector<SegmentAlternative>& alternatives) {
  if (!segment.starts_with('$')) {
    alternatives = {{segment, segment}};
    return true;
  }
  const std::string family = segment.substr(1);
  if (const IndexedFamily* indexed = dictionary.indexedFamily(family)) {
    alternatives = alternativesOf(*indexed);
    // Shown as in the name: the display texts of numbered families may count from elsewhere.
    for (SegmentAlternative& alternative : alternatives) alternative.displayText = alternative.fidText;
    return true;
  }
  const EnumFamily* enumerated = dictionary.enumFamily(family);
  if (enumerated == nullptr) return false;
  alternatives = enumerated->members;
  return true;
}

}  // namespace

FunctionSegments::FunctionSegments(const FunctionDictionary& dictionary, std::string_view functionName)
    : own_(split(functionName)), levels_(kLevels) {
  const auto function = dictionary.find(functionName);
  if (!function) return;
  const std::vector<std::string> templates = split(function->definition().name);
  const std::size_t count = std::min({kLevels, templates.size(), own_.size()});
  for (std::size_t i = 0; i < count; ++i) {
    Level& level = levels_[i];
    if (!alternativesOf(dictionary, templates[i], level.alternatives)) return;
    const auto isOwn = [&](const auto& alternative) { return alternative.fidText == own_[i]; };
    const auto found = std::find_if(level.alternatives.begin(), level.alternatives.end(), isOwn);
    if (found != level.alternatives.end())
      level.selected = static_cast<int>(found - level.alternatives.begin());
  }
}

void FunctionSegments::choose(std::size_t level, int row) {
  const bool offered = row >= 0 && static_cast<std::size_t>(row) < levels_[level].alternatives.size();
  if (offered) levels_[level].selected = row;
}

std::string FunctionSegments::name() const {
  std::string name;
  for (std::size_t i = 0; i < own_.size(); ++i) {
    if (i > 0) name += '.';
    const bool chosen = i < kLevels && levels_[i].selected >= 0;
    name += chosen ? levels_[i].alternatives[static_cast<std::size_t>(levels_[i].selected)].fidText : own_[i];
  }
  return name;
}

}  // namespace tessaly
