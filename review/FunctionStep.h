#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "dictionary/FunctionDictionary.h"
#include "model/MacroCommand.h"

// What an incremental function does to the value that it steps.
namespace tessaly {

// A segment of its name is "INC".
[[nodiscard]] bool isStep(const FunctionRecord& function);

struct SteppedValue {
  FunctionRecord setter;
  std::string sid;  // its value
};

// What an incremental function steps is set by the function of the same template that has another member of
// the family that "INC" was taken from. Nothing for a step that no function sets, which the panel tells no
// value of.
[[nodiscard]] std::optional<SteppedValue> steppedBy(const FunctionDictionary& dictionary,
                                                    const FunctionRecord& step);

// What a parameter of an incremental function adds, in the unit of the stored value; nothing when that is no
// number.
[[nodiscard]] std::optional<double> stepOf(const FunctionTemplate& function, const MacroParameter& parameter);

// A stored number a step further, as it is stored, within the limits of the parameter (equal ones bind
// nothing); nothing when it is no number.
[[nodiscard]] std::optional<std::string> stepped(const FunctionTemplate& function, std::string_view parameter,
                                                 std::string_view stored, double step);

// "+25.0%"
[[nodiscard]] std::string shownStep(const FunctionTemplate& function, std::string_view parameter,
                                    double step);

}  // namespace tessaly
