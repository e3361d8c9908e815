#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dictionary/FunctionDictionary.h"
#include "dictionary/IndexTable.h"
#include "dictionary/NamePattern.h"
#include "dictionary/RisingOffsets.h"

namespace tessaly {

// What the dictionary holds. A function costs its name, a line feed, the name's offset and a slot of the name
// table; its template and combination follow from its place.
struct FunctionDictionary::Store {
  struct ExpandedTemplate {
    FunctionTemplate definition;
    NamePattern pattern;
  };

  // Functions of one template with consecutive combinations; a function that was left out starts a new run.
  struct Run {
    std::uint32_t firstFunction, firstCombination, expanded;
  };

  // One function as its template and the alternatives chosen in it.
  struct Chosen {
    const ExpandedTemplate& from;
    Choices choices;

    [[nodiscard]] std::string substitute(std::string_view text, NamePattern::Text kind) const {
      return from.pattern.substitute(from.definition.name, text, choices, kind);
    }
    [[nodiscard]] bool increment() const { return from.pattern.choosesIncrement(choices); }
    [[nodiscard]] std::string sid() const;
  };

  // Built by the first search, whatever its thread; more templates put a new one in its place.
  struct LookUp {
    std::once_flag built;
    IndexTable indices;
  };

  Store() { offsets.push_back(0); }

  static std::uint64_t hashOf(std::string_view text) { return std::hash<std::string_view>{}(text); }

  [[nodiscard]] std::size_t functionCount() const { return offsets.size() - 1; }
  [[nodiscard]] std::string_view nameOf(std::uint32_t index) const {
    return std::string_view(names).substr(offsets[index], offsets[index + 1] - offsets[index] - 1);
  }
  [[nodiscard]] const Run& runOf(std::uint32_t index) const;
  [[nodiscard]] Chosen chosenIn(std::uint32_t index) const;
  [[nodiscard]] std::optional<std::uint32_t> find(std::string_view name) const;
  [[nodiscard]] std::optional<std::uint32_t> findBySid(std::string_view sid) const;

  // Lists every function of the template; the number of combinations is in bounds.
  void expand(ExpandedTemplate added);
  [[nodiscard]] const IndexTable& nameTable() const;
  void fillWithNames(IndexTable& table) const;
  void fillWithSids(IndexTable& table) const;

  FamilyTables families;
  std::map<std::string, AliasEntry, std::less<>> aliases;
  std::deque<ExpandedTemplate> templates;  // those that gave a function
  std::vector<Run> runs;
  std::string names;      // each followed by a line feed
  RisingOffsets offsets;  // of each name, and of the end
  std::unique_ptr<LookUp> byName = std::make_unique<LookUp>();
  std::unique_ptr<LookUp> bySid = std::make_unique<LookUp>();
  std::size_t templateCount = 0;
  std::size_t combinations = 0;  // visited over all templates
  std::size_t leftOutCount = 0;  // templates beyond the bounds
};

}  // namespace tessaly
