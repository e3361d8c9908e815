#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "model/EditHistory.h"
#include "platform/MacroKeeper.h"

// The text of a steps file (docs/history-format.md): a head and one record behind the other, each with its
// length and checksum.
namespace tessaly {

struct StepsMove {
  int by = 0;  // positions; negative where steps are undone
};

// The macro's place holds these bytes now; none while it is being written.
struct StepsSaved {
  std::optional<ContentCheck> check;
};

// What can happen to a row of steps.
using StepsChange = std::variant<EditStep, StepsMove, StepsSaved>;

// Whether it can happen to this row.
[[nodiscard]] bool fits(const EditHistory& row, const StepsChange& change);
// For one that fits.
void make(EditHistory& row, StepsChange change);

[[nodiscard]] std::string stepsRecord(const StepsChange& change);
// The whole row; a record may be put behind it.
[[nodiscard]] std::string stepsText(const MacroPlace& place, const EditHistory& row);

// Why steps cannot be used.
enum class StepsFault { kUnreadable, kTooLarge, kDamaged, kOtherVersion, kOtherBytes };

struct StepsHead {
  MacroPlace place;
  EditHistory row;  // before the first record
  std::size_t end;  // of the head in the text
};

[[nodiscard]] std::variant<StepsHead, StepsFault> readStepsHead(std::string_view text);

// A row and where its last record ends in the text.
struct StepsRead {
  EditHistory row;
  std::size_t end;
};

// The row that the whole records give, when it leads to `held`. The last record may have been on its way:
// without it the row counts, too. Otherwise the steps belong to other bytes, and there is none.
[[nodiscard]] std::optional<StepsRead> readSteps(StepsHead head, std::string_view text,
                                                 const ContentCheck& held);

}  // namespace tessaly
