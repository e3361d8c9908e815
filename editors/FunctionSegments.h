#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "dictionary/FunctionDictionary.h"

namespace tessaly {

// The alternatives of a function's name, segment by segment, as its template offers them.
class FunctionSegments {
 public:
  static constexpr std::size_t kLevels = 5;

  struct Level {
    std::vector<SegmentAlternative> alternatives;  // displayText is what a list shows
    int selected = -1;
  };

  // Levels behind one whose family is missing, and all levels of an unknown function, have no alternatives.
  FunctionSegments(const FunctionDictionary& dictionary, std::string_view functionName);

  // kLevels of them.
  [[nodiscard]] const std::vector<Level>& levels() const { return levels_; }
  // A segment is never without its text: a row that is no alternative chooses nothing.
  void choose(std::size_t level, int row);

  // The chosen segments; a level without a chosen one, and every level behind the fifth, keeps its own.
  [[nodiscard]] std::string name() const;

 private:
  std::vector<std::string> own_;  // segments of the function at the beginning
  std::vector<Level> levels_;
};

}  // namespace tessaly
