#pragma once

#include <vector>

#include "review/MacroBatch.h"
#include "review/MacroRetarget.h"

namespace tessaly {

// A macro that a rule is about, and which of the changes are to be made.
struct RetargetedMacro {
  RetargetedMacro(MacroPlace at, Macro read, RetargetProposals proposed);

  MacroPlace place;
  Macro macro;  // as it was read
  RetargetProposals proposals;
  std::vector<bool> ticked;  // for each proposal; at first those that are possible

  [[nodiscard]] std::size_t tickedCount() const;
  // What is to stand there: written only when the place still holds what was read. As `apply` fails.
  [[nodiscard]] Expected<BatchItem> item() const;
};

}  // namespace tessaly
