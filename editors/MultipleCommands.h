#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "dictionary/FunctionDictionary.h"
#include "editors/DestinationTable.h"
#include "model/MacroCommand.h"

// The commands of "Create multiple commands" and the texts about them; no widgets here.
namespace tessaly {

// A function that is to become a command.
struct ListedCommand {
  std::size_t id;  // rises along the list and stays when others are removed
  FunctionRecord function;
  bool takesValue;    // the panel knows a current value and a parameter holds it
  std::string value;  // of the first parameter, as the panel gave it; empty until then

  // Without its value a command is not ready.
  [[nodiscard]] bool missing() const { return takesValue && value.empty(); }
};

// In order of adding; a function that was added twice stands there twice.
class MultipleCommands {
 public:
  // The dictionary outlives the list.
  explicit MultipleCommands(const FunctionDictionary& dictionary) : dictionary_(dictionary) {}

  // The functions that a destination owns, in the dictionary's order.
  [[nodiscard]] std::vector<FunctionRecord> functionsOf(const Destination& destination) const;
  void append(const std::vector<FunctionRecord>& functions);
  // `rows` rise.
  void remove(const std::vector<int>& rows);

  [[nodiscard]] int size() const { return static_cast<int>(commands_.size()); }
  [[nodiscard]] const ListedCommand& at(int row) const { return commands_[static_cast<std::size_t>(row)]; }
  // How many of these rows still lack their value.
  [[nodiscard]] int missing(const std::vector<int>& rows) const;

  // The panel's answer becomes the value of the command's first parameter, later answers replacing it. False,
  // nothing changed, for a command that is no longer listed or takes no value, and for an answer that its
  // parameter cannot hold.
  [[nodiscard]] bool takeAnswer(std::size_t id, const std::string& value);

 private:
  const FunctionDictionary& dictionary_;
  std::vector<ListedCommand> commands_;
  std::size_t nextId_ = 0;
};

// "QMF1." to "QMF4." or "PANEL.": functions of the panel's own file always go to the panel, the others to the
// chosen destination.
[[nodiscard]] std::string_view prefixFor(const FunctionRecord& function, std::string_view chosenPrefix);

// The name under which the panel tells the function's current value.
[[nodiscard]] std::string valueName(const FunctionRecord& function, std::string_view prefix);

// With every parameter of the function, the first one filled.
[[nodiscard]] CommandDraft draftOf(const ListedCommand& command, std::string_view prefix);

// What the user has in front: all commands, or the selected ones of them.
struct Chosen {
  bool selection = false;
  int count = 0;
  int missing = 0;

  [[nodiscard]] bool ready() const { return count > 0 && missing == 0; }
};

[[nodiscard]] std::string statusText(const Chosen& chosen);  // empty without commands
[[nodiscard]] std::string totalText(int commands);
[[nodiscard]] std::string insertingText(int number, int count);
[[nodiscard]] std::string updatingText(int number, int count);

// Captions of the three insert buttons.
struct InsertCaptions {
  const char *start, *position, *end;
};
[[nodiscard]] const InsertCaptions& insertCaptions(bool selection);

}  // namespace tessaly
