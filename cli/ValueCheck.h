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

// The parameter of that name, or null.
template <typename Parameter>
const Parameter* parameterNamed(const std::vector<Parameter>& parameters, std::string_view name) {
  for (const Parameter& parameter : parameters) {
    if (parameter.name == name) return &parameter;
  }
  return nullptr;
}

// The inputs that an input parameter can hold, by their stored numbers, with their display names.
[[nodiscard]] std::vector<EnumValue> inputChoices(const FunctionDictionary& dictionary);

}  // namespace tessaly
