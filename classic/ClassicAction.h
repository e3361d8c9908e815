#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "classic/ClassicCommand.h"
#include "classic/DecodingList.h"

namespace tessaly {

// The seven rows of the editor's list "Action Type". A row keeps its place whether it is offered or not.
enum class ActionRow : std::uint8_t {
  kSetByValue = 0,
  kSetToMinimum = 1,
  kSetToMaximum = 2,
  kSetToNeutral = 3,
  kIncrement = 4,  // "toggle up" with an enumerated last parameter
  kToggleDown = 5,
  kTrigger = 6
};
inline constexpr std::size_t kActionRows = 7;

// The text of each row for this entry; empty for an action that it does not know.
[[nodiscard]] std::array<std::string, kActionRows> actionRows(const KeywordEntry& entry);

// The action byte that a row stands for.
[[nodiscard]] std::uint8_t actionCode(ActionRow row);

// "set by value", "toggle down", "ac: 60 - ": the editor's word for the action of a command, with the entry
// as the look-up returned it, or null.
[[nodiscard]] std::string editorActionText(const ClassicCommand& command, const KeywordEntry* entry);

// The row that shows the command's action; none when no row has its text.
[[nodiscard]] std::optional<ActionRow> actionRowOf(const ClassicCommand& command, const KeywordEntry& entry);

// True when the parameter holds the step of a toggling command rather than a value.
[[nodiscard]] bool holdsStep(const ClassicCommand& command, const KeywordEntry& entry, std::size_t parameter);

}  // namespace tessaly
