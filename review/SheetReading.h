#pragma once

#include <memory>
#include <optional>
#include <string>
#include <variant>

#include "model/CommandLine.h"
#include "model/KeyFile.h"
#include "model/Macro.h"
#include "platform/MacroKeeper.h"
#include "review/FolderCheck.h"
#include "review/Sheet.h"

namespace tessaly {

// Makes what a sheet tells of macros and key files, with the rules of a check. One thread at a time; what the
// context names outlives it.
class SheetReading {
 public:
  SheetReading(const CheckContext& context, SheetWords words);

  // Where a macro lies, by the path of its file or on its panel; UTF-8.
  [[nodiscard]] static std::string placeText(const MacroPlace& place);
  // "007", or the two digits of a key file; empty for a file that is called otherwise.
  [[nodiscard]] static std::string numberOf(std::string_view file);

  // As it is open somewhere. `at` has place, number and, for where the content tells none, name.
  [[nodiscard]] SheetMacro read(SheetMacro at, const Macro& macro);
  [[nodiscard]] SheetMacro read(SheetMacro at, const KeyFile& keys);

  // Another folder or workplace begins: names are looked at folder by folder.
  void beginFolder();
  // As it is stored; `file` ends in the name that its file has or would have.
  [[nodiscard]] SheetMacro read(SheetMacro at, const std::string& file, Expected<std::string> bytes);

 private:
  [[nodiscard]] SheetMacro withCommands(SheetMacro at, const Macro& macro);
  [[nodiscard]] SheetMacro withCommands(SheetMacro at, const KeyFile& keys);
  void addEffect(SheetMacro& to, const MacroCommands& commands) const;

  const LineContext lines_;
  const SheetWords words_;
  MacroCheck check_;
  std::optional<FolderCheck> folder_;
};

}  // namespace tessaly
