#pragma once

#include <vector>

#include "model/MacroCommand.h"

namespace tessaly {

// What one command of a macro goes with in another one.
struct Mate {
  enum class How { kAlone, kSame, kChanged, kMoved };
  How how = How::kAlone;
  int other = -1;  // the number of the command there
  int block = -1;  // of moved ones

  // Their numbers rise together.
  [[nodiscard]] bool inOrder() const { return how == How::kSame || how == How::kChanged; }
};

struct Pairing {
  std::vector<Mate> a, b;  // one a command
  bool minimal = true;     // no pairing has more of kSame
};

// By the rules of MacroDiff. Each command is looked at a bounded number of times beside the alignment.
[[nodiscard]] Pairing pairCommands(const MacroCommands& a, const MacroCommands& b,
                                   const FunctionDictionary* dictionary);

}  // namespace tessaly
