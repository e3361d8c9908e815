#include "review/RetargetedMacro.h"

#include <algorithm>
#include <utility>

namespace tessaly {

RetargetedMacro::RetargetedMacro(MacroPlace at, Macro read, RetargetProposals proposed)
    : place(std::move(at)), macro(std::move(read)), proposals(std::move(proposed)) {
  for (const RetargetProposal& proposal : proposals) ticked.push_back(proposal.possible());
}

std::size_t RetargetedMacro::tickedCount() const {
  return static_cast<std::size_t>(std::count(ticked.begin(), ticked.end(), true));
}

Expected<BatchItem> RetargetedMacro::item() const {
  const auto changed = apply(macro, MacroRetarget::editOf(proposals, ticked));
  if (!changed) return changed.failure();
  return BatchItem{place, changed->bytes(), HeldContent::of(macro.bytes())};
}

Expected<ReplacedBatch> replacedBy(MacroBatch& batch) {
  std::optional<std::size_t> failed;
  const Outcome ran = batch.run([&failed](std::size_t index, const MacroBatch::Row& row) {
    if (!failed && !row.done()) failed = index;
  });
  if (!ran) return ran.failure();
  return ReplacedBatch{batch.rows(), tracesOf(batch), failed};
}

}  // namespace tessaly
