#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "dictionary/FunctionDictionary.h"

namespace tessaly {

struct MacroParameter {
  std::string name;
  std::string value;
  bool hasValue = true;  // there is a value, be it an empty one

  friend bool operator==(const MacroParameter&, const MacroParameter&) = default;
};

// One `cmd` of a macro file. All texts are UTF-8, whatever the encoding of the file.
struct MacroCommand {
  std::string fid, workplace, group, module, widget;
  std::vector<MacroParameter> parameters;
  // What else stands in the element: unknown attributes, other children, comments (Unread.h).
  std::string unread = {};

  // The part before the first "." of the fid; empty without a ".".
  [[nodiscard]] std::string_view destination() const;
  // The part after the first "."; the whole fid without a ".".
  [[nodiscard]] std::string_view functionName() const;
  // True when the part after the first "." contains "NCSCOMMAND".
  [[nodiscard]] bool classic() const;

  friend bool operator==(const MacroCommand&, const MacroCommand&) = default;
};

using MacroCommands = std::vector<MacroCommand>;

enum class ParameterKind { kEnum, kInteger, kFloat, kInput, kTimecode };  // the order of writing

// A command to be written: what an editor returns.
struct CommandDraft {
  struct Parameter {
    ParameterKind kind;
    std::string name;
    std::string value;  // panel value
    bool optional = false;
  };
  std::string fid;
  std::vector<Parameter> parameters;  // kind by kind in writing order
};

// A draft for a function: every parameter of the record, kind by kind, with an empty value.
[[nodiscard]] CommandDraft draftFor(std::string_view destinationPrefix, const FunctionRecord& function);

}  // namespace tessaly
