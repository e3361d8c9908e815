#pragma once

#include <string>
#include <string_view>

#include "model/MacroCommand.h"

namespace tessaly {

// Which value of a panel belongs to a command, for whoever fills macros with the panel's current values.
struct ValueQuestion {
  enum class Kind {
    kAsked,
    kClassic,        // such commands are never asked for
    kNoDestination,  // the identifier has no part before a "."
    kNoValue         // the dictionary knows no current value of the function
  };

  Kind kind = Kind::kNoValue;
  std::string name;  // of the panel's value; empty but for kAsked
};

[[nodiscard]] ValueQuestion valueQuestion(const MacroCommand& command, const FunctionDictionary& dictionary);

// The identifier of the commands that a value of the panel is meant for; of functions that share a value the
// first one has it. Empty when there is none.
[[nodiscard]] std::string fidOfValue(std::string_view name, const FunctionDictionary& dictionary);

}  // namespace tessaly
