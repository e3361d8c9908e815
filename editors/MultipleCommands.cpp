#include "editors/MultipleCommands.h"

#include <algorithm>

#include "platform/Text.h"

namespace tessaly {

namespace {

constexpr std::string_view kPanelPrefix = "PANEL.";
constexpr std::string_view kDigits = "0123456789";

// The grammar of these texts and the dots are meant to be as they are: operators know the lines by heart.
constexpr const char* kReady = "%d COMMANDS READY FOR INSERTION. . .. . .";
constexpr const char* kSelectedReady = "%d SELECTED COMMANDS READY FOR INSERTION. . .. . .";
constexpr const char* kTheSelectedMissing =
    "The parameters of the selected command is not yet updated. . .  ( ----> )";
constexpr const char* kOneSelectedMissing =
    "The parameters of one selected command are not yet updated. . .  ( ----> )";
constexpr const char* kSelectedMissing =
    "The parameters of %d selected commands are not yet updated. . .  ( ----> )";
constexpr const char* kOneMissing = "The parameters of one command is not yet updated. . .  ( ----> )";
constexpr const char* kMissing = "The parameters of %d commands are not yet updated. . .  ( ----> )";
constexpr const char* kTotal = "Total commands: %d";
constexpr const char* kInserting = "Inserting No. %d of %d...";
// No point after "No", so that the two kinds of progress can be told apart.
constexpr const char* kUpdating = "Updating No %d of %d...";

constexpr InsertCaptions kAllCaptions{"insert all at start", "insert all at current selection",
                                      "insert all at end"};
constexpr InsertCaptions kSelectedCaptions{"insert selected at start", "insert selected at current selection",
                                           "insert selected at end"};

bool takesValue(const FunctionRecord& function) {
  return !function.sid().empty() && !draftFor({}, function).parameters.empty();
}

// Words for a number would end up in the macro and never reach a picture.
bool holds(ParameterKind kind, const std::string& value) {
  switch (kind) {
    case ParameterKind::kInteger:
    case ParameterKind::kFloat:
    case ParameterKind::kTimecode:
      return value.find_first_of(kDigits) != std::string::npos;
    case ParameterKind::kEnum:
    case ParameterKind::kInput:
      return !value.empty();
  }
  return false;
}

}  // namespace

std::vector<FunctionRecord> MultipleCommands::functionsOf(const Destination& destination) const {
  std::vector<FunctionRecord> functions;
  for (std::size_t i = 0; i < dictionary_.functionCount(); ++i) {
    const FunctionRecord function = dictionary_.function(i);
    if (destination.owns(function.group())) functions.push_back(function);
  }
  return functions;
}

void MultipleCommands::append(const std::vector<FunctionRecord>& functions) {
  for (const FunctionRecord& function : functions)
    commands_.push_back({nextId_++, function, takesValue(function), {}});
}

void MultipleCommands::remove(const std::vector<int>& rows) {
  auto next = rows.begin();
  int row = 0;
  std::erase_if(commands_, [&](const ListedCommand&) {
    const bool gone = next != rows.end() && *next == row;
    if (gone) ++next;
    ++row;
    return gone;
  });
}

int MultipleCommands::missing(const std::vector<int>& rows) const {
  return static_cast<int>(
      std::count_if(rows.begin(), rows.end(), [this](int row) { return at(row).missing(); }));
}

bool MultipleCommands::takeAnswer(std::size_t id, const std::string& value) {
  const auto command =
      std::lower_bound(commands_.begin(), commands_.end(), id,
                       [](const auto& listed, std::size_t wanted) { return listed.id < wanted; });
  if (command == commands_.end() || command->id != id || !command->takesValue) return false;
  if (!holds(draftFor({}, command->function).parameters.front().kind, value)) return false;
  command->value = value;
  return true;
}

std::string_view prefixFor(const FunctionRecord& function, std::string_view chosenPrefix) {
  switch (function.source()) {
    case FunctionSource::kPanel:
      return kPanelPrefix;
    case FunctionSource::kOlderFamily:
      return chosenPrefix;
  }
  return chosenPrefix;
}

std::string valueName(const FunctionRecord& function, std::string_view prefix) {
  return std::string(prefix) + function.sid();
}

CommandDraft draftOf(const ListedCommand& command, std::string_view prefix) {
  CommandDraft draft = draftFor(prefix, command.function);
  if (!draft.parameters.empty()) draft.parameters.front().value = command.value;
  return draft;
}

std::string statusText(const Chosen& chosen) {
  if (chosen.count == 0) return {};
  if (chosen.missing == 0) return format(chosen.selection ? kSelectedReady : kReady, chosen.count);
  if (!chosen.selection) return chosen.missing == 1 ? kOneMissing : format(kMissing, chosen.missing);
  if (chosen.count == 1) return kTheSelectedMissing;
  return chosen.missing == 1 ? kOneSelectedMissing : format(kSelectedMissing, chosen.missing);
}

std::string totalText(int commands) { return format(kTotal, commands); }

std::string insertingText(int number, int count) { return format(kInserting, number, count); }

std::string updatingText(int number, int count) { return format(kUpdating, number, count); }

const InsertCaptions& insertCaptions(bool selection) { return selection ? kSelectedCaptions : kAllCaptions; }

}  // namespace tessaly
