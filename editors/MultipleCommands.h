#pragma once

#include <optional>
#include <string>
#include <vector>

#include "dictionary/FunctionDictionary.h"
#include "editors/DestinationTable.h"
#include "model/MacroCommand.h"
#include "values/Destination.h"

// The commands of "Create multiple commands" and the texts about them; no widgets here.
namespace tessaly {

// A command that is to be inserted.
struct ListedCommand {
  std::size_t id;           // another one once the command was completed by hand
  FunctionRecord function;  // of its name the first, whose parameters and value count
  bool panels;              // listed as one of the panel's own file: goes there, whatever is chosen
  Destination destination;
  int workplace;
  CommandDraft draft;
  std::optional<std::size_t> fetched = {};  // which parameter holds the panel's value
  bool completed = false;                   // by hand

  // The panel knows a current value, and a parameter can hold it.
  [[nodiscard]] bool answerable() const;
  // Without its values a command is not ready: neither fetched nor completed, or a parameter is missing.
  [[nodiscard]] bool missing() const;
  // Without parameters there is nothing to look at before the command acts.
  [[nodiscard]] bool actsAtOnce() const { return draft.parameters.empty(); }
  // The name under which the panel tells the function's current value.
  [[nodiscard]] std::string valueName() const;
};

// In order of adding; a function that was added twice stands there twice.
class MultipleCommands {
 public:
  // The dictionary outlives the list. `workplace` is that of commands to the panel.
  MultipleCommands(const FunctionDictionary& dictionary, int workplace)
      : dictionary_(dictionary), workplace_(workplace) {}

  // The functions that a destination owns, in the dictionary's order.
  [[nodiscard]] std::vector<FunctionRecord> functionsOf(const DestinationNames& destination) const;
  void append(const std::vector<FunctionRecord>& functions);
  // `rows` rise.
  void remove(const std::vector<int>& rows);

  // Where the mixer's functions go, those that are listed and those to come; functions of the panel's own
  // file always go to the panel. What was fetched from another destination is taken away.
  void setDestination(Destination destination);

  [[nodiscard]] int size() const { return static_cast<int>(commands_.size()); }
  [[nodiscard]] const ListedCommand& at(int row) const { return commands_[static_cast<std::size_t>(row)]; }
  // How many of these rows are not ready.
  [[nodiscard]] int missing(const std::vector<int>& rows) const;

  // The panel's answer goes to the first mandatory parameter without a value, else to the first optional one;
  // later answers replace it there. False, nothing changed, for a command that is no longer listed or takes
  // no value, and for an answer that its parameter cannot hold.
  [[nodiscard]] bool takeAnswer(std::size_t id, const std::string& value);

  // Puts what the user made of the command in a row in its place. Answers to questions from before are for it
  // no more.
  void complete(int row, CommandDraft draft, int workplace);

 private:
  const FunctionDictionary& dictionary_;
  int workplace_;
  Destination destination_;
  std::vector<ListedCommand> commands_;
  std::size_t nextId_ = 0;
};

// What the user has in front: all commands, or the selected ones of them.
struct Chosen {
  bool selection = false;
  int count = 0;
  int missing = 0;

  [[nodiscard]] bool ready() const { return count > 0 && missing == 0; }
};

[[nodiscard]] std::string statusText(const Chosen& chosen);
[[nodiscard]] std::string totalText(int commands);
[[nodiscard]] std::string insertingText(int number, int count);
[[nodiscard]] std::string updatingText(int number, int count);

// Captions of the three insert buttons.
struct InsertCaptions {
  const char *start, *position, *end;
};
[[nodiscard]] const InsertCaptions& insertCaptions(bool selection);

}  // namespace tessaly
