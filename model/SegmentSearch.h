#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "dictionary/FunctionDictionary.h"

namespace tessaly {

// Finds the segments of function names by a few letters of the segment, of its description or of its second
// search text. Observes a dictionary that is complete; any number of threads.
class SegmentSearch {
 public:
  explicit SegmentSearch(const FunctionDictionary& dictionary);

  // Segments as they come in the dictionary; none for an empty text. Case does not matter.
  [[nodiscard]] std::vector<std::string> find(std::string_view text) const;

  // The row that the text most likely means: the segment itself, else one that begins with it, else the
  // first; -1 when there is none.
  [[nodiscard]] static int likeliest(const std::vector<std::string>& segments, std::string_view text);

 private:
  struct Entry {
    std::string_view segment;
    std::size_t searchedEnd;  // in searched_; the one before tells the beginning
  };

  void add(const FunctionDictionary& dictionary, std::string_view segment);

  std::vector<Entry> entries_;
  std::string searched_;  // upper-case texts of all entries
};

}  // namespace tessaly
