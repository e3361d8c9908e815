#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "classic/ClassicCommand.h"
#include "model/KeyFile.h"
#include "model/MacroEdit.h"
#include "platform/SiteAccess.h"
#include "values/Destination.h"

// Macro files (".mac", docs/macro-format.md). Each operation reads the file, applies an edit to what it holds
// and writes the whole file back. Paths are site paths. A file that does not parse is reported with "Cannot
// parse Macro: %s", one that cannot be read with its reason, and both are left alone. Blocking; not for two
// threads on one file.
namespace tessaly {

// Stands for the name of a macro that has none or cannot be read.
inline constexpr const char* kUnknownName = "???";

inline constexpr std::string_view kEmptyMacro = "c:\\Programme\\RV48\\bin\\MacroFid\\emptyMacro.mac";

// Reads without a report.
[[nodiscard]] Expected<Macro> readMacro(const SiteRoot& root, std::string_view path);

// The same macro, or kNoMacro when it takes no commands.
[[nodiscard]] Expected<Macro> takingCommands(Expected<Macro> macro);

// Whether bytes, wherever they came from, are a macro that takes commands.
Outcome readsAsMacro(std::string_view bytes);

// Reads, and reports what does not parse or cannot be read.
[[nodiscard]] Expected<Macro> loadMacro(const SiteAccess& site, std::string_view path);

// Writes whole or not at all.
Outcome saveMacro(const SiteRoot& root, std::string_view path, const Macro& macro);

// Load, change, save. What is the same as before is not written.
using MacroChanger = std::function<Expected<Macro>(const Macro& macro)>;
Outcome changeMacroFile(const SiteAccess& site, std::string_view path, const MacroChanger& change);
Outcome editMacroFile(const SiteAccess& site, std::string_view path, const MacroEdit& edit);

// The name as UTF-8. False and kUnknownName when there is none or the file does not parse.
[[nodiscard]] bool readMacroName(const SiteAccess& site, std::string_view path, std::string& name);

// The name is UTF-8; it becomes kUnknownName when the file does not parse.
Outcome renameMacro(const SiteAccess& site, std::string_view path, std::string& name);

// The empty macro under a new name. An empty macro that cannot be read is reported with "Cannot create Macro:
// %s".
Outcome createMacro(const SiteAccess& site, const std::string& name, std::string_view targetPath);

Outcome insertCommand(const SiteAccess& site, std::string_view path, int position, const CommandDraft& draft,
                      int workplace, InsertMode mode);

// A classic command as it is stored in a macro, for a mainframe.
[[nodiscard]] CommandDraft classicDraft(const ClassicCommand& command, Destination destination);
inline constexpr int kClassicWorkplace = 1;  // of every classic command

Outcome appendClassicCommand(const SiteAccess& site, std::string_view path, int position,
                             const ClassicCommand& command, InsertMode mode, Destination destination);

// The commands of a key file as a macro without a name, to be copied from.
[[nodiscard]] Expected<Macro> keyFileMacro(const KeyFile& key);

Outcome convertKeyFile(const SiteAccess& site, const std::string& name, std::string_view targetPath,
                       std::string_view keyPath);

Outcome removeCommand(const SiteAccess& site, std::string_view path, int number);

// Writes into the first parameter that has a value, of the first command at or after `number` that has one.
// When none has, the unchanged macro is saved and the outcome is kNothingTaken.
Outcome setCommandValue(const SiteAccess& site, std::string_view path, int number, const std::string& value);

}  // namespace tessaly
