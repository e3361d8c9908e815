#include "classic/ClassicAction.h"

#include <algorithm>

#include "classic/ClassicValue.h"
#include "platform/Text.h"

namespace tessaly {

namespace {

constexpr const char* kSetByValueText = "set by value";
constexpr const char* kSetToMinimumText = "set to minimum";
constexpr const char* kSetToMaximumText = "set to maximum";
constexpr const char* kSetToNeutralText = "set to neutral";
constexpr const char* kIncrementText = "increment";
constexpr const char* kToggleUpText = "toggle up";
constexpr const char* kToggleDownText = "toggle down";
constexpr const char* kTriggerText = "trigger";

constexpr std::uint8_t kSetBit = 1, kIncrementBit = 2, kTriggerBit = 4;  // of the sub-code

}  // namespace

std::array<std::string, kActionRows> actionRows(const KeywordEntry& entry) {
  std::array<std::string, kActionRows> rows;
  const auto offer = [&rows](ActionRow row, bool known, const char* text) {
    if (known) rows[static_cast<std::size_t>(row)] = text;
  };
  ParameterDescriptor last;
  last.type = ParameterType::kByte;
  if (!entry.parameters.empty()) last = entry.parameters.back();
  const bool sets = (entry.subCode & kSetBit) != 0;
  const bool steps = (entry.subCode & kIncrementBit) != 0;
  const bool toggles = isEnumerated(last.type);
  const bool limited = sets && isAnalog(last.type);

  offer(ActionRow::kSetByValue, sets, kSetByValueText);
  offer(ActionRow::kSetToMinimum, limited && last.minimum.known, kSetToMinimumText);
  offer(ActionRow::kSetToMaximum, limited && last.maximum.known, kSetToMaximumText);
  offer(ActionRow::kSetToNeutral, limited && last.type == ParameterType::kAnalogBi && last.neutral.known,
        kSetToNeutralText);
  offer(ActionRow::kIncrement, steps, toggles ? kToggleUpText : kIncrementText);
  offer(ActionRow::kToggleDown, steps && toggles, kToggleDownText);
  offer(ActionRow::kTrigger, (entry.subCode & kTriggerBit) != 0, kTriggerText);
  return rows;
}

std::uint8_t actionCode(ActionRow row) {
  ClassicAction action = ClassicAction::kSet;
  switch (row) {
    case ActionRow::kSetByValue:
    case ActionRow::kSetToMinimum:
    case ActionRow::kSetToMaximum:
    case ActionRow::kSetToNeutral:
      break;
    case ActionRow::kIncrement:
    case ActionRow::kToggleDown:
      action = ClassicAction::kIncrement;
      break;
    case ActionRow::kTrigger:
      action = ClassicAction::kTrigger;
      break;
  }
  return static_cast<std::uint8_t>(action);
}

std::string editorActionText(const ClassicCommand& command, const KeywordEntry* entry) {
  switch (static_cast<ClassicAction>(command.action())) {
    case ClassicAction::kSet:
    case ClassicAction::kSetAlso:
      return kSetByValueText;
    case ClassicAction::kIncrement:
    case ClassicAction::kIncrementAlso:
      if (entry == nullptr || !entry->toggle) return kIncrementText;
      return entry->step >= 0 ? kToggleUpText : kToggleDownText;
    case ClassicAction::kTrigger:
      return kTriggerText;
    case ClassicAction::kRead:
      break;
  }
  return format("ac: %02x - ", command.action());
}

std::optional<ActionRow> actionRowOf(const ClassicCommand& command, const KeywordEntry& entry) {
  const auto rows = actionRows(entry);
  const auto found = std::find(rows.begin(), rows.end(), editorActionText(command, &entry));
  if (found == rows.end()) return std::nullopt;
  return static_cast<ActionRow>(found - rows.begin());
}

bool holdsStep(const ClassicCommand& command, const KeywordEntry& entry, std::size_t parameter) {
  return command.increments() && parameter + 1 == entry.parameters.size() &&
         isEnumerated(entry.parameters[parameter].type);
}

}  // namespace tessaly
