#pragma once

#include <memory>
#include <optional>
#include <string>

#include "model/KeyFile.h"
#include "model/Macro.h"
#include "review/CheckRules.h"

namespace tessaly {

class CheckKnowledge;

// A macro that is to go to a panel and has errors.
struct FaultyMacro {
  std::string title;  // "007 - Name"; UTF-8
  Findings errors;
};

// Looks at macros by the rules of CheckRules.h, those of a workplace aside (FolderCheck.h). What it has
// learnt of a function or a classic command serves the next macro, so one object is to see them all. One
// thread at a time.
class MacroCheck {
 public:
  explicit MacroCheck(const CheckContext& context);
  ~MacroCheck();
  MacroCheck(const MacroCheck&) = delete;
  MacroCheck& operator=(const MacroCheck&) = delete;

  // First what concerns the macro as a whole, then command by command.
  [[nodiscard]] Findings check(const Macro& macro);
  // Of a key file only its commands are looked at; nothing of it has a fix.
  [[nodiscard]] Findings check(const KeyFile& keys);

  // Of a macro, those that are errors.
  [[nodiscard]] Findings errors(const Macro& macro);
  // The same of what is to be sent; nothing for one without errors, and for what is no macro.
  [[nodiscard]] std::optional<FaultyMacro> faults(const std::string& number, const std::string& bytes);
  [[nodiscard]] const RulesOff& off() const;

 private:
  std::unique_ptr<CheckKnowledge> knowledge_;
};

}  // namespace tessaly
