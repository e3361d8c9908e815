#pragma once

#include <string>
#include <string_view>

#include "dictionary/FunctionDictionary.h"
#include "platform/Outcome.h"

namespace tessaly {

// Whether a function can hold a value, as it is stored, in a parameter: a number within the limits that the
// value field has in raw mode, one of the listed values, an input of the site, or a timecode of a clock. The
// empty value stands for none and is always held; so is what the function has no parameter for. kNothingTaken
// with a line that says what could be held.
Outcome canHold(const FunctionDictionary& dictionary, const FunctionRecord& function,
                std::string_view parameter, const std::string& value);

// The inputs that an input parameter can hold, by their stored numbers, with their display names.
[[nodiscard]] std::vector<EnumValue> inputChoices(const FunctionDictionary& dictionary);

}  // namespace tessaly
