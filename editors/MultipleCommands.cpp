#include "editors/MultipleCommands.h"

#include <algorithm>
#include <utility>

#include "editors/DraftParameters.h"
#include "platform/Text.h"

namespace tessaly {

namespace {

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

using Parameters = std::vector<CommandDraft::Parameter>;

// Which parameter the panel's value is for. All mandatory ones are filled by hand where neither rule finds
// one: asked for all the same, the value replaces the first.
std::size_t placeOfValue(const Parameters& parameters) {
  const auto first = [&parameters](auto fits) {
    return std::find_if(parameters.begin(), parameters.end(), fits);
  };
  auto found = first([](const auto& parameter) { return !parameter.optional && parameter.value.empty(); });
  if (found == parameters.end()) found = first([](const auto& parameter) { return parameter.optional; });
  return found == parameters.end() ? 0 : static_cast<std::size_t>(found - parameters.begin());
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

std::vector<FunctionRecord> MultipleCommands::functionsOf(const DestinationNames& destination) const {
  std::vector<FunctionRecord> functions;
  for (std::size_t i = 0; i < dictionary_.functionCount(); ++i) {
    const FunctionRecord function = dictionary_.function(i);
    if (destination.owns(function.group())) functions.push_back(function);
  }
  return functions;
}

void MultipleCommands::append(const std::vector<FunctionRecord>& functions) {
  for (const FunctionRecord& function : functions) {
    const bool panels = function.source() == FunctionSource::kPanel;
    const Destination destination = panels ? Destination::panel() : destination_;
    const FunctionRecord first = dictionary_.find(function.name()).value_or(function);
    commands_.push_back(
        {nextId_++, first, panels, destination, workplace_, draftFor(destination.prefix(), first)});
  }
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
      std::find_if(commands_.begin(), commands_.end(), [id](const auto& listed) { return listed.id == id; });
  if (command == commands_.end() || !command->answerable()) return false;
  Parameters& parameters = command->draft.parameters;
  const std::size_t place = command->fetched.value_or(placeOfValue(parameters));
  if (!holds(parameters[place].kind, value)) return false;
  parameters[place].value = value;
  command->fetched = place;
  return true;
}

void MultipleCommands::setDestination(Destination destination) {
  destination_ = destination;
  for (ListedCommand& command : commands_) {
    const Destination now = command.panels ? Destination::panel() : destination;
    if (now == command.destination) continue;
    command.destination = now;
    command.draft.fid = std::string(now.prefix()).append(command.function.name());
    if (!command.fetched) continue;
    command.draft.parameters[*command.fetched].value.clear();
    command.fetched.reset();
    command.completed = false;
  }
}

void MultipleCommands::complete(int row, CommandDraft draft, int workplace) {
  const auto destination = Destination::ofFid(draft.fid);
  if (!destination) return;
  const auto function = dictionary_.find(std::string_view(draft.fid).substr(destination->prefix().size()));
  if (!function) return;
  ListedCommand& command = commands_[static_cast<std::size_t>(row)];
  // What the user left as it was fetched still is the panel's.
  std::optional<std::size_t> fetched = command.fetched;
  const bool kept = fetched && function->index() == command.function.index() &&
                    *destination == command.destination &&
                    draft.parameters[*fetched].value == command.draft.parameters[*fetched].value;
  if (!kept) fetched.reset();
  const bool panels = function->source() == FunctionSource::kPanel;
  command = {nextId_++, *function, panels, *destination, workplace, std::move(draft), fetched, true};
}

bool ListedCommand::answerable() const { return !function.sid().empty() && !draft.parameters.empty(); }

bool ListedCommand::missing() const {
  if (answerable() && !fetched && !completed) return true;
  return std::any_of(draft.parameters.begin(), draft.parameters.end(), tessaly::missing);
}

std::string ListedCommand::valueName() const { return std::string(destination.prefix()) + function.sid(); }

std::string statusText(const Chosen& chosen) {
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
