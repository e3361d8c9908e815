#pragma once

#include <optional>
#include <string>

#include "cli/CommandSession.h"
#include "platform/Outcome.h"
#include "values/ParameterValue.h"

namespace tessaly {

// What is asked about one parameter: exactly one of the two texts is given.
struct AskedValues {
  std::optional<std::string> shown, stored;
  ValueMode mode = ValueMode::kDisplay;
};

struct ValueAnswer {
  std::string shown, stored, range;  // shown: after the entry filter; range: empty without one
  int beeps = 0;                     // how often the filter would have sounded
};

// What the value field of the editors makes of a typed text, or shows for a stored value. kNothingTaken for
// an unknown parameter, and for a text or value that is not in its list.
[[nodiscard]] Expected<ValueAnswer> answerValue(CommandSession& session, const FunctionRecord& function,
                                                const std::string& parameter, const AskedValues& question);

}  // namespace tessaly
