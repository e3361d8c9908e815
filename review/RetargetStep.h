#pragma once

#include <memory>
#include <optional>
#include <string>

#include "model/CommandLine.h"
#include "model/MacroCommand.h"
#include "platform/Outcome.h"
#include "review/RetargetRule.h"

// What each kind of rule does to one command (see MacroRetarget.h).
namespace tessaly {

struct RetargetedCommand {
  MacroCommand after;  // with another fid, workplace or values
  std::string reason;  // why it cannot be done, `after` counting for nothing; else empty
};

class RetargetStep {
 public:
  virtual ~RetargetStep() = default;
  // Nothing for a command that the rule is not about.
  [[nodiscard]] virtual std::optional<RetargetedCommand> change(const MacroCommand& command) = 0;

  // The step of a rule, or what is wrong with it.
  [[nodiscard]] static Expected<std::unique_ptr<RetargetStep>> make(const RetargetRule& rule,
                                                                    const LineContext& context);
};

// One for each kind; `from` and `to` are not empty and not the same.
[[nodiscard]] Expected<std::unique_ptr<RetargetStep>> destinationStep(const RetargetRule& rule);
[[nodiscard]] Expected<std::unique_ptr<RetargetStep>> segmentStep(const RetargetRule& rule,
                                                                  const LineContext& context);
[[nodiscard]] Expected<std::unique_ptr<RetargetStep>> sourceStep(const RetargetRule& rule,
                                                                 const LineContext& context);
[[nodiscard]] std::unique_ptr<RetargetStep> valueStep(const RetargetRule& rule, const LineContext& context);

}  // namespace tessaly
