#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/MacroCommand.h"

// What a command means, and in what two of them differ. Values are compared in the unit of their parameter
// where the dictionary gives one: "0.50" of a float is "0.5", "007" of an integer "7", "1:2:3:4" of a
// timecode what its packed number is. A text that is no such number stays a text, so do enumerations, inputs,
// classic commands, and whatever the dictionary does not know; without a dictionary (null) everything does.
// Any thread.
namespace tessaly {

// Appends what is equal for two values exactly when they are equal in their unit. `function` may be null.
void appendComparedValue(std::string& text, const FunctionTemplate* function, std::string_view parameter,
                         std::string_view value);

[[nodiscard]] bool equalInUnit(const FunctionTemplate& function, std::string_view parameter,
                               std::string_view a, std::string_view b);

// What is equal for two commands exactly when identifier, workplace, group, module, widget and parameters,
// in their order, are. What records leave out (MacroCommand::unread) is not looked at.
[[nodiscard]] std::string meaningOf(const MacroCommand& command, const FunctionDictionary* dictionary);

// One thing that differs between two commands.
struct CommandChange {
  enum class What {
    kDestination,
    kFunction,
    kWorkplace,
    kGroup,
    kModule,
    kWidget,
    kParameter,
    kOrder,   // of parameters that are otherwise the same
    kUnread,  // what the program does not know of: attributes, comments, elements
  };
  What what = What::kParameter;
  std::string name = {};  // of a parameter
  std::optional<std::string> a = {},
                             b = {};  // as stored; nothing where the parameter, or its value, is not there
  bool sameInUnit = false;            // only spelt differently
  int placeInA = -1, placeInB = -1;   // of a parameter, from 0; -1 where it is not there
};

// Nothing exactly when the commands are equal, byte order of attributes and layout aside. The first parameter
// of a name is set beside the first one of that name, and so on.
[[nodiscard]] std::vector<CommandChange> changesBetween(const MacroCommand& a, const MacroCommand& b,
                                                        const FunctionDictionary* dictionary);

}  // namespace tessaly
