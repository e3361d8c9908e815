#pragma once

#include <optional>
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

// What became of a batch of replacements.
struct ReplacedBatch {
  std::vector<MacroBatch::Row> rows;  // in the order of its items
  std::vector<BatchTrace> traces;     // of what was written
  std::optional<std::size_t> failed;  // the row that was not written first; those before it may be put back
};

// Runs the batch, and gives what became of it; as the batch when nothing was tried at all.
[[nodiscard]] Expected<ReplacedBatch> replacedBy(MacroBatch& batch);

}  // namespace tessaly
