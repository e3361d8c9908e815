#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "model/FunctionFinder.h"
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

  // Observes a dictionary that is complete.
  explicit CommandChooser(const FunctionDictionary& dictionary);

  // Forgets category, subgroups and searches, also when it is the same destination again.
  void chooseDestination(Destination destination);
  void chooseCategory(int category);  // the one that is chosen already changes nothing
  void chooseSubgroup(std::size_t level, int row);
  void setSearchText(std::size_t search, const std::string& text);  // selects the likeliest row
  void chooseSearchRow(std::size_t search, int row);
  void setIncrements(bool increments);

  [[nodiscard]] bool onPanel() const { return destination_.isPanel(); }
  [[nodiscard]] std::string destinationPrefix() const { return std::string(destination_.prefix()); }
  [[nodiscard]] int category() const { return category_; }  // -1 for none
  [[nodiscard]] const List& subgroup(std::size_t level) const { return subgroups_[level]; }
  [[nodiscard]] const List& search(std::size_t search) const { return searches_[search]; }
  [[nodiscard]] const std::string& searchText(std::size_t search) const { return texts_[search]; }

  // Places in registration order, rising. Valid until the next change.
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
  const FunctionFinder::Functions* found_ = nullptr;
};

}  // namespace tessaly
