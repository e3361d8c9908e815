#pragma once

#include <memory>
#include <string>
#include <vector>

#include "model/Macro.h"
#include "model/MacroEdit.h"
#include "review/CheckRules.h"
#include "review/RetargetRule.h"

namespace tessaly {

// What a rule makes of one command.
struct RetargetProposal {
  int command = 0;     // from 0
  SetTexts edit = {};  // empty where it cannot be done
  std::string before = {},
              after = {};   // lines as they are shown, with the destination; no `after` without edit
  std::string reason = {};  // why it cannot be done
  // What the change makes wrong, and what it mends. What it does to commands that are not changed themselves
  // is told by the last one that is changed before them, else by the first.
  Findings made = {}, mended = {};

  [[nodiscard]] bool possible() const { return !edit.texts.empty(); }
};
using RetargetProposals = std::vector<RetargetProposal>;  // in the order of the commands

// Turns a rule into changes of macro after macro; nothing is written. What it has learnt of a function or a
// classic command serves the next one. One thread at a time; what the context refers to outlives it.
class MacroRetarget {
 public:
  // kNothingTaken with what is wrong with the rule: also for one that was put together field by field.
  [[nodiscard]] static Expected<MacroRetarget> make(const RetargetRule& rule, const CheckContext& context);
  ~MacroRetarget();
  MacroRetarget(MacroRetarget&&) noexcept;
  MacroRetarget& operator=(MacroRetarget&&) = delete;

  // Each command that the rule is about, those that cannot be changed with the reason. The findings are those
  // of all changes made together.
  [[nodiscard]] RetargetProposals propose(const Macro& macro);
  // The findings anew when only some are made; `ticked` has an element for each proposal.
  void judge(const Macro& macro, RetargetProposals& proposals, const std::vector<bool>& ticked);

  // One edit of those that are ticked and possible.
  [[nodiscard]] static SetTexts editOf(const RetargetProposals& proposals, const std::vector<bool>& ticked);

 private:
  class Work;
  explicit MacroRetarget(std::unique_ptr<Work> work);

  std::unique_ptr<Work> work_;
};

}  // namespace tessaly
