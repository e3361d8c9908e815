#pragma once

#include <string>
#include <utility>
#include <vector>

#include "classic/DecodingList.h"
#include "dictionary/FunctionDictionary.h"
#include "model/MacroCommand.h"
#include "panelsim/CurrentValues.h"

namespace tessaly {

// Carries out the commands of macros on the values of a simulated panel, by the rules of docs/effect.md. One
// thread at a time; all that it is given outlives it.
class CommandRun {
 public:
  struct Result {
    std::vector<std::pair<std::string, std::string>> values = {};  // names, and what they are now
    std::string note = {};  // "acts"; what was not carried out, and why
  };

  CommandRun(const FunctionDictionary& dictionary, DecodingLists& lists, CurrentValues& values)
      : dictionary_(dictionary), lists_(lists), values_(values) {}

  Result carryOut(const MacroCommand& command);

 private:
  [[nodiscard]] Result panelStyle(const MacroCommand& command) const;
  [[nodiscard]] Result step(const FunctionTemplate& function, const std::string& name,
                            const MacroParameter& parameter) const;
  [[nodiscard]] Result classic(const MacroCommand& command) const;
  [[nodiscard]] std::string steppedName(const FunctionRecord& function) const;

  const FunctionDictionary& dictionary_;
  DecodingLists& lists_;
  CurrentValues& values_;
};

}  // namespace tessaly
