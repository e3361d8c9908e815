#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "model/Macro.h"
#include "model/MacroEdit.h"
#include "review/ValueQuestion.h"

namespace tessaly {

// The panel's values beside those of a macro's commands, before any of them is taken over: a row a command.
// The first value that comes for a command stays, so that what is taken over is what was looked at. One
// thread at a time; the dictionary outlives it.
class Capture {
 public:
  enum class State {
    kWaiting,  // asked for
    kMissing,  // given up; may still come
    kSame,
    kDiffers,  // can be taken over
    kChanged,  // the macro has another command there by now: nothing is written to it
    kCannot    // there is nothing to ask for
  };
  enum class Obstacle {
    kNone,
    kClassic,
    kNoDestination,
    kNoValue,        // the panel has none for the function
    kOtherFunction,  // the value is meant for the commands of another function
    kNothingToFill   // the command has no value
  };
  struct Row {
    int command = 0;     // number in the macro, from 0
    int parameter = -1;  // that takes the value, from 0; -1 for none
    Obstacle obstacle = Obstacle::kNone;
    State state = State::kCannot;
    bool ticked = true;                   // counts while it differs
    std::string name = {};                // of the panel's value
    std::string old = {};                 // stored, as the macro has it now
    std::optional<std::string> now = {};  // stored, as it came from the panel
    bool givenUp = false;                 // waiting for it
  };
  struct Counts {
    std::size_t asked = 0, waiting = 0, missing = 0, came = 0, differ = 0, ticked = 0, changed = 0;
  };

  Capture() = default;
  // Of all commands, or of those that are given.
  Capture(const Macro& macro, const std::vector<int>& commands, const FunctionDictionary& dictionary);

  [[nodiscard]] const std::vector<Row>& rows() const { return rows_; }
  // As it was asked for.
  [[nodiscard]] const MacroCommand& command(std::size_t row) const {
    return (*commands_)[static_cast<std::size_t>(rows_[row].command)];
  }
  [[nodiscard]] Counts counts() const;

  // The names that are to be asked for, each as often as rows wait for it: those without a value, which are
  // waited for from now on.
  [[nodiscard]] std::vector<std::string> ask();
  // What has not come is missing.
  void giveUp();
  // True when a row was waiting for it.
  bool answer(const std::string& name, const std::string& value);
  // Every value that can be asked for has come.
  [[nodiscard]] bool complete() const;
  // False for a row that cannot be taken over.
  bool tick(std::size_t row, bool on);
  void tickAll(bool on);
  // As in one of the same commands.
  void tickAs(const Capture& other);
  // The macro as it stands now; none when another one is in its place. True when a row has changed.
  bool follow(const std::optional<Macro>& now);
  // What is ticked.
  [[nodiscard]] SetValues edit() const;

 private:
  [[nodiscard]] Row rowOf(int command, const FunctionDictionary& dictionary) const;
  static void settle(Row& row);

  std::shared_ptr<const MacroCommands> commands_;  // as they were asked for
  std::vector<Row> rows_;
  std::unordered_map<std::string, std::vector<std::size_t>> rowsByName_;
};

}  // namespace tessaly
