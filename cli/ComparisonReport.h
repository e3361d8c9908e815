#pragma once

#include "cli/CommandSession.h"
#include "review/WorkplaceComparison.h"

namespace tessaly {

// What the two sides of a comparison are called in what is printed.
struct ComparedSides {
  const char* left;  // "panel"
  const char* right;
};

// Prints what is not the same in two workplaces, row by row, and the counts; the exit code of a comparison.
[[nodiscard]] int printComparison(CommandSession& session, MacroShelf& left, MacroShelf& right,
                                  ComparedSides sides, bool json);

}  // namespace tessaly
