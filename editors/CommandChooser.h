#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "model/FunctionFinder.h"
#include "model/FunctionSearch.h"
#include "model/SegmentSearch.h"
#include "values/Destination.h"

namespace tessaly {

// What a new command's destination, category, subgroups and searches come to: the rows of their lists and the
// functions that are left. Every change brings all of it up to date.
class CommandChooser {
 public:
  static constexpr std::size_t kSubgroups = 3;
  static constexpr std::size_t kSearches = 5;
  static constexpr int kCategories = 7;

  struct Row {
    std::string text;     // as shown
    std::string segment;  // of function names
  };
  struct List {
    std::vector<Row> rows;
    int selected = -1;
  };

  // Made when it is first needed, and kept by who opens one dialog after another.
  using Words = std::shared_ptr<std::optional<FunctionSearch>>;

  // Observes a dictionary that is complete. Nothing is found before a destination is chosen.
  explicit CommandChooser(const FunctionDictionary& dictionary, Words words = {});

  // Forgets category, subgroups and searches, also when it is the same destination again.
  void chooseDestination(Destination destination);
  void chooseCategory(int category);  // the one that is chosen already changes nothing
  void chooseSubgroup(std::size_t level, int row);
  void setSearchText(std::size_t search, const std::string& text);  // selects the likeliest row
  void chooseSearchRow(std::size_t search, int row);
  void setIncrements(bool increments);
  // Words of what the functions are called: they narrow what is chosen, or, with nothing chosen, all that the
  // destination has. They stay when another destination is chosen.
  void setWords(const std::string& text);

  [[nodiscard]] bool onPanel() const { return destination_.isPanel(); }
  [[nodiscard]] std::string destinationPrefix() const { return std::string(destination_.prefix()); }
  [[nodiscard]] int category() const { return category_; }  // -1 for none
  [[nodiscard]] const List& subgroup(std::size_t level) const { return subgroups_[level]; }
  [[nodiscard]] const List& search(std::size_t search) const { return searches_[search]; }
  [[nodiscard]] const std::string& searchText(std::size_t search) const { return texts_[search]; }

  // Places in registration order, rising, or, with words, the best first. Valid until the next change.
  [[nodiscard]] const FunctionFinder::Functions& found() const { return *found_; }

 private:
  void fillSubgroupsFrom(std::size_t level);
  [[nodiscard]] std::string likeliestOf(const std::vector<std::string>& segments, const std::string& text);
  [[nodiscard]] FinderFilters filters() const;
  void find();

  FunctionFinder finder_;
  SegmentSearch segments_;
  Destination destination_;
  int category_ = -1;
  bool increments_ = false;
  std::array<List, kSubgroups> subgroups_;
  std::array<List, kSearches> searches_;
  std::array<std::string, kSearches> texts_;
  const FunctionDictionary& dictionary_;
  Words search_;
  std::string words_;
  FunctionFinder::Functions foundByWords_;
  const FunctionFinder::Functions* found_ = &foundByWords_;
};

}  // namespace tessaly
