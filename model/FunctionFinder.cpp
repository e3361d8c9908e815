#include "model/FunctionFinder.h"

#include <algorithm>

namespace tessaly {
namespace {

constexpr std::string_view kIncrement = "INC";

bool isSegment(std::string_view name, std::size_t place, std::size_t length) {
  if (place > 0 && name[place - 1] != '.') return false;
  const std::size_t end = place + length;
  return end == name.size() || name[end] == '.' || name.find('.', end) == std::string_view::npos;
}

// Calls `take(function, name, place)` for every function whose name holds the text, with its first place.
// Names end in a line feed, so a text without one cannot stand across two.
template <typename Take>
void forEachNameWith(const FunctionDictionary& dictionary, std::string_view text, Take take) {
  constexpr std::size_t kNear = 8;  // functions looked at one by one before the offsets are searched
  const std::string_view names = dictionary.allNames();
  std::size_t function = 0, begin = 0;
  std::size_t end = dictionary.functionCount() == 0 ? 0 : dictionary.nameOffset(1);
  for (std::size_t hit = names.find(text); hit < names.size(); hit = names.find(text, end)) {
    for (std::size_t step = 0; end <= hit; ++step) {
      function = step < kNear ? function + 1 : dictionary.functionAtOffset(hit);
      begin = step < kNear ? end : dictionary.nameOffset(function);
      end = dictionary.nameOffset(function + 1);
    }
    take(static_cast<std::uint32_t>(function), names.substr(begin, end - begin - 1), hit - begin);
  }
}

}  // namespace

std::size_t segmentPosition(std::string_view name, std::string_view text) {
  const std::size_t place = name.find(text);
  return place != std::string_view::npos && isSegment(name, place, text.size()) ? place
                                                                                : std::string_view::npos;
}

FunctionFinder::FunctionFinder(const FunctionDictionary& dictionary)
    : dictionary_(dictionary), increment_(dictionary.functionCount()) {
  // A first "INC" elsewhere than at the end does not make an increment function: deliberate, as the panel
  // sees it.
  forEachNameWith(dictionary_, kIncrement,
                  [this](std::uint32_t function, std::string_view name, std::size_t place) {
                    increment_[function] = place + kIncrement.size() == name.size();
                  });
}

const FunctionFinder::Functions& FunctionFinder::panelFunctions() {
  if (!panel_) {
    panel_.emplace();
    for (std::uint32_t i = 0; i < dictionary_.functionCount(); ++i) {
      if (dictionary_.function(i).source() == FunctionSource::kPanel) panel_->push_back(i);
    }
  }
  return *panel_;
}

const FunctionFinder::Functions& FunctionFinder::otherFunctions(bool increments) {
  std::optional<Functions>& others = others_[increments ? 1 : 0];
  if (!others) {
    others.emplace();
    for (std::uint32_t i = 0; i < dictionary_.functionCount(); ++i) {
      if (increment_[i] == increments && dictionary_.function(i).source() != FunctionSource::kPanel)
        others->push_back(i);
    }
  }
  return *others;
}

const FunctionFinder::Functions& FunctionFinder::find(const FinderFilters& filters, bool increments) {
  static const Functions kNone;
  if (stagesForIncrements_ != increments) stages_.clear();
  stagesForIncrements_ = increments;
  std::size_t stage = 0;
  for (const std::optional<std::string>& text : filters) {
    if (!text) continue;
    if (stage < stages_.size() && stages_[stage].text != *text) stages_.resize(stage);
    if (stage == stages_.size()) addStage(*text);
    ++stage;
  }
  stages_.resize(stage);
  return stages_.empty() ? kNone : stages_.back().passed;
}

void FunctionFinder::addStage(const std::string& text) {
  Functions passed = passing(text);
  stages_.push_back({text, std::move(passed)});
}

FunctionFinder::Functions FunctionFinder::passing(const std::string& text) const {
  Functions passed;
  if (!stages_.empty()) {
    for (const std::uint32_t function : stages_.back().passed) {
      if (segmentPosition(dictionary_.name(function), text) != std::string_view::npos)
        passed.push_back(function);
    }
  } else if (text.empty() || text.find('\n') != std::string::npos) {
    for (std::uint32_t i = 0; i < dictionary_.functionCount(); ++i) {
      if (increment_[i] != stagesForIncrements_) continue;
      if (segmentPosition(dictionary_.name(i), text) != std::string_view::npos) passed.push_back(i);
    }
  } else {
    forEachNameWith(dictionary_, text, [&](std::uint32_t function, std::string_view name, std::size_t place) {
      if (isSegment(name, place, text.size()) && increment_[function] == stagesForIncrements_)
        passed.push_back(function);
    });
  }
  return passed;
}

std::vector<std::string> FunctionFinder::segmentsBehind(std::size_t last, const FinderFilters& filters,
                                                        bool increments) {
  std::vector<std::string> segments;
  if (!filters[last]) return segments;
  FinderFilters soFar;
  std::copy_n(filters.begin(), last + 1, soFar.begin());
  std::unordered_set<std::string_view> seen;
  std::string_view before;
  for (const std::uint32_t function : find(soFar, increments)) {
    const std::string_view name = dictionary_.name(function);
    const std::size_t end = segmentPosition(name, *filters[last]) + filters[last]->size();
    if (end >= name.size() || name[end] != '.') continue;
    const std::string_view segment = name.substr(end + 1, name.find('.', end + 1) - end - 1);
    if (segment.empty() || segment == before) continue;
    before = segment;
    if (seen.insert(segment).second) segments.emplace_back(segment);
  }
  return segments;
}

std::unordered_set<std::string_view> FunctionFinder::segmentsOf(const FinderFilters& filters,
                                                                bool increments) {
  std::unordered_set<std::string_view> segments;
  std::string_view before;
  for (const std::uint32_t function : find(filters, increments)) {
    // Neighbours share the beginnings of their names.
    const std::string_view name = dictionary_.name(function);
    std::size_t begin = 0;
    while (begin <= name.size()) {
      const std::size_t end = std::min(name.find('.', begin), name.size());
      if (name.substr(0, end + 1) != before.substr(0, end + 1))
        segments.insert(name.substr(begin, end - begin));
      begin = end + 1;
    }
    before = name;
  }
  return segments;
}

}  // namespace tessaly
