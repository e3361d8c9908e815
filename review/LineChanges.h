#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace tessaly {

// A part of a line, in bytes; it cuts no character.
struct LinePart {
  std::size_t begin = 0, end = 0;

  friend bool operator==(const LinePart&, const LinePart&) = default;
};

struct LineChanges {
  std::vector<LinePart> a, b;  // rising, apart from each other; empty for equal lines
};

// What is not the same in two lines that are shown beside each other: words and numbers are compared whole,
// every other character alone, and as few of them as can be are marked. UTF-8. Any thread.
[[nodiscard]] LineChanges changesInside(std::string_view a, std::string_view b);

}  // namespace tessaly
