#pragma once

#include <memory>

#include "model/KeyFile.h"
#include "model/Macro.h"
#include "review/CheckRules.h"

namespace tessaly {

class CheckKnowledge;

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

  [[nodiscard]] const RulesOff& off() const;

 private:
  std::unique_ptr<CheckKnowledge> knowledge_;
};

}  // namespace tessaly
