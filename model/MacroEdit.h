#pragma once

#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "model/CommandFragment.h"
#include "model/Macro.h"

namespace tessaly {

enum class InsertMode { kAtStart = 0, kAtPosition = 1, kAppend = 2 };

// What can be done to a macro. Commands are numbered from 0. Texts of drafts and values, and names, are
// UTF-8.

// The drafts in their order as one block: at the start, before the command `position` (behind the last one
// when there is none), or behind the last one.
struct InsertCommands {
  std::vector<CommandDraft> drafts;
  int workplace = 1;
  int position = -1;
  InsertMode mode = InsertMode::kAppend;
};

// The commands of a fragment as one block at such a place. Unknown parts travel along; a text that the
// macro's encoding cannot hold is kTextNotHeld.
struct InsertFragment {
  CommandFragment fragment;
  int position = -1;
  InsertMode mode = InsertMode::kAppend;
};

struct RemoveCommands {
  std::vector<int> numbers;
};

// The commands, in their order, before the command `before`, or behind the last one when there is none.
struct MoveCommands {
  std::vector<int> numbers;
  int before = 0;
};

struct ReplaceCommand {
  int number = 0;
  CommandDraft draft;
  int workplace = 1;
};

// Each value goes into the first parameter that has a value of the first command from its number on that has
// one. A value that nothing takes is passed over; an edit of which nothing was taken fails.
struct SetValues {
  std::vector<std::pair<int, std::string>> values;
};

// Other texts for attributes that are there, each put where the old one stands: every byte beside them stays
// as it is, layout included.
struct SetTexts {
  enum class Part { kFid, kWorkplace, kValue };
  struct Text {
    int command = 0;
    Part part = Part::kFid;
    int parameter = -1;  // of a value, from 0
    std::string text = {};
  };
  std::vector<Text> texts;
};

// Commands of another macro, with all that stands in them, in the place of some. The edit fails when the
// encoding of the macro lacks one of their characters.
struct TakeCommands {
  struct Piece {
    int at = 0;              // the place in the macro as it was: before this command, or behind the last one
    int removed = 0;         // so many commands from there on give way
    std::vector<int> taken;  // numbers in `from`
  };
  Macro from;
  std::vector<Piece> pieces;  // apart from each other, in the order of the macro
};

struct SetMacroName {
  std::string name;
};

using MacroEdit = std::variant<InsertCommands, InsertFragment, RemoveCommands, MoveCommands, ReplaceCommand,
                               SetValues, SetTexts, TakeCommands, SetMacroName>;

// The macro as the edit leaves it, printed whole but for SetTexts, or the very same one when that is what the
// edit leaves, so that its layout stays, too; or why it cannot be done: kNotKept (saving would change what
// the edit does not touch), kNoMacro, kNoCommand, kTextNotHeld, kNothingTaken, kNoMemory. Parses the bytes
// once.
[[nodiscard]] Expected<Macro> apply(const Macro& macro, const MacroEdit& edit);

// The number that the first command gets which is inserted so; those behind it follow.
[[nodiscard]] int insertedAt(const Macro& macro, int position, InsertMode mode);

// The macro printed as after an edit, without one.
[[nodiscard]] Expected<Macro> reprint(const Macro& macro);

}  // namespace tessaly
