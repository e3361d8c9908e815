#include "dictionary/DictionaryStore.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tessaly {
namespace {

static_assert(kMostFunctions <= IndexTable::kLargestIndex);

// The fifth and sixth key of the half mix effect are deliberately never offered, whatever the files say. A
// plain search in the whole name, so "ME40.KEY50" goes too.
bool neverOffered(std::string_view name) {
  return name.find("ME4") != std::string_view::npos &&
         (name.find("KEY5") != std::string_view::npos || name.find("KEY6") != std::string_view::npos);
}

// The concrete names of a template one after the other. Only the part behind the first changed segment is
// built anew for each.
class NameWalk {
 public:
  NameWalk(std::string_view text, const NamePattern& pattern) : text_(text), segments_(pattern.segments()) {
    buildFrom(0, true);
  }

  [[nodiscard]] const std::string& name() const { return name_; }

  // To the next combination; false after the last.
  bool advance() {
    for (std::size_t place = segments_.size(); place-- > 0;) {
      if (++choices_[place] < segments_[place].count) {
        name_.resize(kept_[place]);
        buildFrom(place, false);
        return true;
      }
      choices_[place] = 0;
    }
    return false;
  }

 private:
  void buildFrom(std::size_t first, bool withLiteral) {
    std::size_t literal = 0;
    for (std::size_t place = first; place < segments_.size(); ++place) {
      const FamilySegment& segment = segments_[place];
      if (withLiteral) name_.append(text_, literal, segment.begin - literal);
      withLiteral = true;
      kept_[place] = name_.size();
      segment.appendFidText(choices_[place], name_);
      literal = segment.begin + segment.length;
    }
    name_.append(text_, literal);
  }

  std::string_view text_;
  const std::vector<FamilySegment>& segments_;
  std::string name_;
  Choices choices_{};
  std::array<std::size_t, kMostFamilySegments> kept_{};  // length of the name before each chosen text
};

}  // namespace

std::string FunctionDictionary::Store::Chosen::sid() const {
  return increment() ? std::string() : substitute(from.definition.sid, NamePattern::Text::kFid);
}

const FunctionDictionary::Store::Run& FunctionDictionary::Store::runOf(std::uint32_t index) const {
  const auto startsBehind = [](std::uint32_t function, const Run& run) {
    return function < run.firstFunction;
  };
  return *std::prev(std::upper_bound(runs.begin(), runs.end(), index, startsBehind));
}

FunctionDictionary::Store::Chosen FunctionDictionary::Store::chosenIn(std::uint32_t index) const {
  const Run& run = runOf(index);
  const ExpandedTemplate& from = templates[run.expanded];
  return {from, from.pattern.choicesOf(run.firstCombination + (index - run.firstFunction))};
}

std::optional<std::uint32_t> FunctionDictionary::Store::find(std::string_view name) const {
  return nameTable().find(hashOf(name), [&](std::uint32_t index) { return nameOf(index) == name; });
}

std::optional<std::uint32_t> FunctionDictionary::Store::findBySid(std::string_view sid) const {
  std::call_once(bySid->built, [this] { fillWithSids(bySid->indices); });
  return bySid->indices.find(hashOf(sid), [&](std::uint32_t index) { return chosenIn(index).sid() == sid; });
}

const IndexTable& FunctionDictionary::Store::nameTable() const {
  std::call_once(byName->built, [this] { fillWithNames(byName->indices); });
  return byName->indices;
}

void FunctionDictionary::Store::fillWithNames(IndexTable& table) const {
  const auto count = static_cast<std::uint32_t>(functionCount());
  table.makeRoom(count);
  for (std::uint32_t index = 0; index < count; ++index) {
    const std::string_view name = nameOf(index);
    table.insertFirst(hashOf(name), index, [&](std::uint32_t other) { return nameOf(other) == name; });
  }
}

void FunctionDictionary::Store::fillWithSids(IndexTable& table) const {
  const auto count = static_cast<std::uint32_t>(functionCount());
  table.makeRoom(count, true);
  // Kept while the table is filled, so that a comparison puts a sid together only when it is likely the same.
  std::vector<std::uint64_t> hashes(count);
  for (std::uint32_t index = 0; index < count; ++index) {
    const Chosen chosen = chosenIn(index);
    if (chosen.from.definition.sid.size() > kLongestSid) continue;
    const std::string sid = chosen.sid();
    if (sid.empty()) continue;
    hashes[index] = hashOf(sid);
    table.insertFirst(hashes[index], index, [&](std::uint32_t other) {
      return hashes[other] == hashes[index] && chosenIn(other).sid() == sid;
    });
  }
}

void FunctionDictionary::Store::expand(ExpandedTemplate added) {
  const std::size_t before = functionCount();
  const auto expanded = static_cast<std::uint32_t>(templates.size());
  NameWalk walk(added.definition.name, added.pattern);
  std::uint32_t combination = 0;
  bool runGoesOn = false;
  do {
    if (neverOffered(walk.name())) {
      runGoesOn = false;
    } else {
      if (!runGoesOn) runs.push_back({static_cast<std::uint32_t>(functionCount()), combination, expanded});
      runGoesOn = true;
      names.append(walk.name()).push_back('\n');
      offsets.push_back(static_cast<std::uint32_t>(names.size()));
    }
    ++combination;
  } while (walk.advance());
  if (functionCount() > before) templates.push_back(std::move(added));
  byName = std::make_unique<LookUp>();
  bySid = std::make_unique<LookUp>();
}

}  // namespace tessaly
