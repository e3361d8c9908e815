#include "editors/CommandChooser.h"

#include <algorithm>
#include <iterator>

#include "values/SourceNames.h"

namespace tessaly {

CommandChooser::CommandChooser(const FunctionDictionary& dictionary, Words words)
    : finder_(dictionary),
      segments_(dictionary),
      dictionary_(dictionary),
      search_(words ? std::move(words) : std::make_shared<std::optional<FunctionSearch>>()) {}

void CommandChooser::chooseDestination(Destination destination) {
  destination_ = destination;
  category_ = -1;
  subgroups_ = {};
  searches_ = {};
  texts_ = {};
  find();
}

void CommandChooser::chooseCategory(int category) {
  if (category == category_) return;
  category_ = category;
  subgroups_ = {};
  if (category >= 0 && category < kCategories) {
    for (const PanelSource& source : panelSources(category))
      subgroups_[0].rows.push_back({source.displayName, source.panelName});
  }
  find();
}

void CommandChooser::chooseSubgroup(std::size_t level, int row) {
  subgroups_[level].selected = row;
  for (std::size_t below = level + 1; below < kSubgroups; ++below) subgroups_[below] = {};
  fillSubgroupsFrom(level + 1);
  find();
}

void CommandChooser::setSearchText(std::size_t search, const std::string& text) {
  texts_[search] = text;
  searches_[search] = {};
  const std::vector<std::string> segments = segments_.find(text);
  const std::string likeliest = likeliestOf(segments, text);
  List& list = searches_[search];
  for (const std::string& segment : segments) {
    if (segment == likeliest) list.selected = static_cast<int>(list.rows.size());
    list.rows.push_back({segment, segment});
  }
  find();
}

// Rather one that leaves a function with what is chosen elsewhere.
std::string CommandChooser::likeliestOf(const std::vector<std::string>& segments, const std::string& text) {
  std::vector<std::string> leaving;
  const FinderFilters others = filters();
  if (std::any_of(others.begin(), others.end(), [](const auto& filter) { return filter.has_value(); })) {
    const auto left = finder_.segmentsOf(others, increments_);
    std::copy_if(segments.begin(), segments.end(), std::back_inserter(leaving),
                 [&](const std::string& segment) { return left.contains(segment); });
  }
  const std::vector<std::string>& candidates = leaving.empty() ? segments : leaving;
  const int row = SegmentSearch::likeliest(candidates, text);
  return row < 0 ? std::string() : candidates[static_cast<std::size_t>(row)];
}

void CommandChooser::chooseSearchRow(std::size_t search, int row) {
  searches_[search].selected = row;
  find();
}

void CommandChooser::setWords(const std::string& text) {
  words_ = text;
  find();
}

void CommandChooser::setIncrements(bool increments) {
  increments_ = increments;
  fillSubgroupsFrom(1);
  find();
}

// The second and third lists follow from the selection before them; a row that is still there stays selected.
void CommandChooser::fillSubgroupsFrom(std::size_t level) {
  for (; level < kSubgroups; ++level) {
    List& list = subgroups_[level];
    const std::string before =
        list.selected < 0 ? std::string() : list.rows[static_cast<std::size_t>(list.selected)].segment;
    list = {};
    for (const std::string& segment : finder_.segmentsBehind(level - 1, filters(), increments_)) {
      if (!before.empty() && segment == before) list.selected = static_cast<int>(list.rows.size());
      list.rows.push_back({segment, segment});
    }
  }
}

FinderFilters CommandChooser::filters() const {
  FinderFilters active;
  std::size_t place = 0;
  const auto add = [&](const List& list) {
    if (list.selected >= 0) active[place] = list.rows[static_cast<std::size_t>(list.selected)].segment;
    ++place;
  };
  for (const List& list : subgroups_) add(list);
  for (const List& list : searches_) add(list);
  return active;
}

void CommandChooser::find() {
  const FinderFilters chosen = filters();
  found_ = onPanel() ? &finder_.panelFunctions() : &finder_.find(chosen, increments_);
  if (!FunctionSearch::hasWords(words_)) return;
  const bool all = !onPanel() && std::none_of(chosen.begin(), chosen.end(),
                                              [](const auto& filter) { return filter.has_value(); });
  if (!*search_) search_->emplace(dictionary_);
  foundByWords_ = (*search_)->find(words_, all ? finder_.otherFunctions(increments_) : *found_);
  found_ = &foundByWords_;
}

}  // namespace tessaly
