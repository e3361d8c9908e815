#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "model/MacroFile.h"
#include "platform/Outcome.h"

// The changes that the commands make to macro files: those of the model, each with the one cause when it
// cannot be done, and with texts given in UTF-8. What does not parse is reported by the model.
namespace tessaly {

struct InsertPlace {
  InsertMode mode = InsertMode::kAppend;
  int position = 0;
};

// Done when the file can be read as a macro: one with a name and a place for commands.
Outcome readsAsMacro(const SiteAccess& site, const std::string& path);

Outcome renameIn(const SiteAccess& site, const std::string& path, const std::string& name);
Outcome createAt(const SiteAccess& site, const std::string& path, const std::string& name);
Outcome insertInto(const SiteAccess& site, const std::string& path, const InsertPlace& place,
                   CommandDraft draft, int workplace);
Outcome insertInto(const SiteAccess& site, const std::string& path, const InsertPlace& place,
                   const ClassicCommand& command, int mainframe);
Outcome removeFrom(const SiteAccess& site, const std::string& path, int number);
Outcome setIn(const SiteAccess& site, const std::string& path, int number, const std::string& value);
Outcome convertTo(const SiteAccess& site, const std::string& path, const std::string& keyPath,
                  const std::string& name);

// The parameter that a value set from command `number` on goes to; nothing when there is none, or no macro.
struct ValueTaker {
  MacroCommand command;
  std::string parameter;  // its name
};
[[nodiscard]] std::optional<ValueTaker> takerOf(const SiteAccess& site, const std::string& path, int number);

}  // namespace tessaly
