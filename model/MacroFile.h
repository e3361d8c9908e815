#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "classic/ClassicCommand.h"
#include "model/MacroCommand.h"
#include "platform/ContentCheck.h"
#include "platform/SiteAccess.h"
#include "platform/XmlFile.h"

// Macro files (".mac", docs/macro-format.md). Each operation opens the file anew, works on the loaded tree
// and saves the whole tree back if it changed something. Paths are site paths. All return true when done (and
// saved). A file that does not parse is reported with "Cannot parse Macro: %s" and left alone; so is, without
// a report, one that saving would change elsewhere, or whose encoding cannot hold a text. Names and values
// are UTF-8, whatever the file's own encoding. Blocking; not for two threads on one file.
namespace tessaly {

inline constexpr std::string_view kEmptyMacro = "c:\\Programme\\RV48\\bin\\MacroFid\\emptyMacro.mac";

// What a file holds once an operation has changed and saved it.
struct SavedMacro {
  // As a fresh load would give them; nothing when only a load can tell.
  std::optional<MacroCommands> commands;
  ContentCheck check;  // of the bytes that were written
};

enum class InsertMode { kAtStart = 0, kAtPosition = 1, kAppend = 2 };

// Once the file has parsed, clears `commands` and fills it; false for a parse failure (list left alone) and
// for a file without `macro` or `data` (list left empty). `check`, when given, is that of the bytes that were
// read.
[[nodiscard]] bool loadCommands(const SiteAccess& site, std::string_view path, bool fresh,
                                MacroCommands& commands, ContentCheck* check = nullptr);

// False and "???" when there is no name or the file does not parse.
[[nodiscard]] bool readMacroName(const SiteAccess& site, std::string_view path, std::string& name);

// False, nothing saved, without a `macro` that has a name. On a parse failure `name` becomes "???".
[[nodiscard]] bool renameMacro(const SiteAccess& site, std::string_view path, std::string& name);

[[nodiscard]] bool createMacro(const SiteAccess& site, const std::string& name, std::string_view targetPath);

[[nodiscard]] bool insertCommand(const SiteAccess& site, std::string_view path, int position,
                                 const CommandDraft& draft, int workplace, InsertMode mode,
                                 SavedMacro* saved = nullptr);

[[nodiscard]] bool appendClassicCommand(const SiteAccess& site, std::string_view path, int position,
                                        const ClassicCommand& command, InsertMode mode, int mainframe,
                                        SavedMacro* saved = nullptr);

// Puts the new command in the place of the one with that number, with one save: the file always holds one of
// the two. False, nothing saved, when there is no such command.
[[nodiscard]] bool replaceCommand(const SiteAccess& site, std::string_view path, int number,
                                  const CommandDraft& draft, int workplace, SavedMacro* saved = nullptr);

[[nodiscard]] bool replaceClassicCommand(const SiteAccess& site, std::string_view path, int number,
                                         const ClassicCommand& command, int mainframe,
                                         SavedMacro* saved = nullptr);

[[nodiscard]] bool convertKeyFile(const SiteAccess& site, const std::string& name,
                                  std::string_view targetPath, std::string_view keyPath);

[[nodiscard]] bool removeCommand(const SiteAccess& site, std::string_view path, int number,
                                 SavedMacro* saved = nullptr);

// Writes into the first parameter that has a value, of the first command at or after `number` that has one.
// When none has, the unchanged tree is saved and the result is false.
[[nodiscard]] bool setCommandValue(const SiteAccess& site, std::string_view path, int number,
                                   const std::string& value);

// One document held open across many value changes, each of which costs the same wherever its command stands.
class HeldMacro {
 public:
  // Discards the previous document. On failure (reported) an empty one is held.
  [[nodiscard]] bool open(const SiteAccess& site, std::string_view path);
  [[nodiscard]] bool setCommandValue(int number, const std::string& value);
  // False, nothing written, when the held document is empty. Once it is written nothing is held any more.
  [[nodiscard]] bool save(const SiteAccess& site, std::string_view path, SavedMacro* saved = nullptr);

 private:
  XmlDocument document_;
  std::vector<TiXmlElement*> commands_;  // of the document
  bool empty_ = true;
};

}  // namespace tessaly
