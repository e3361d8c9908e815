#pragma once

#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "model/MacroCommand.h"
#include "review/MacroEffect.h"

namespace tessaly {

// A row of a list of what a macro does.
struct RehearsalRow {
  enum class Kind { kHeading, kValue, kCommand };
  Kind kind = Kind::kHeading;
  int index = -1;            // of a value or a command
  std::string heading = {};  // "Mainframe1 - ME1"
};

// A macro that has been replayed, and how its values are listed. Immutable once made, and then for any
// thread; the dictionary and the lists of the lines outlive it.
class Rehearsal {
 public:
  using Start = std::unordered_map<std::string, std::string>;  // values before the first command, as stored

  Rehearsal(std::shared_ptr<const MacroCommands> commands, const LineContext& lines, const Start& start);

  [[nodiscard]] const std::shared_ptr<const MacroCommands>& commands() const { return commands_; }
  [[nodiscard]] const MacroEffect& effect() const { return effect_; }
  // The values under headings: the mix effects and other units of one destination after each other, in the
  // order in which the macro comes upon them.
  [[nodiscard]] const std::vector<RehearsalRow>& rows() const { return rows_; }
  // Commands that change no value: what acts, and what cannot be told.
  [[nodiscard]] const std::vector<int>& acting() const { return acting_; }
  [[nodiscard]] const std::vector<int>& untold() const { return untold_; }

  // The next command behind `step` commands, or the last one of those before (`by` 1 or -1), that makes a
  // value something else, as the step that it ends in; -1 where there is none.
  [[nodiscard]] int changingStep(int step, int by) const;
  // The change of a value by a command; null where it leaves it alone.
  [[nodiscard]] const ValueChange* change(int value, int command) const;
  // Names that a panel can be asked for.
  [[nodiscard]] std::vector<std::string> publishedNames() const;

 private:
  void listValues();

  std::shared_ptr<const MacroCommands> commands_;
  MacroEffect effect_;
  std::vector<RehearsalRow> rows_;
  std::vector<int> acting_, untold_;
};

// The step of a macro that has been changed at which one stands after the same command as before; where that
// command has gone itself, the one of the same number.
[[nodiscard]] int keptStep(const MacroCommands& before, const MacroCommands& after, int step);

}  // namespace tessaly
