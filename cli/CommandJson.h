#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "cli/CommandSession.h"
#include "cli/MacroWords.h"
#include "model/CommandLine.h"
#include "model/Macro.h"

// The commands of a macro as data: what `show --json` prints, and `insert`, `paste` and `create` read
// (docs/json.md).
namespace tessaly {

[[nodiscard]] nlohmann::ordered_json commandsJson(CommandSession& session, const Macro& macro,
                                                  const LineOptions& options);

// What was read of such a text.
struct CommandsRead {
  std::optional<std::string> name = {};  // of the macro
  MacroCommands commands = {};
};

// Whether a text can only be meant so.
[[nodiscard]] bool looksLikeJson(std::string_view text);

// Members that only tell are passed over. kNoFragment with the place and what is wrong with it.
[[nodiscard]] Expected<CommandsRead> readCommands(CommandSession& session, const std::string& text);

// Whether the site's functions can hold every value. kNothingTaken with the first that they cannot, an
// unknown function or parameter.
Outcome canHold(CommandSession& session, const MacroCommands& commands);

// Inserts the commands as one block and saves the file once; done without any.
Outcome insertCommands(CommandSession& session, const std::string& path, const MacroCommands& commands,
                       InsertPlace place);

// The commands on standard input, for a FILE that is none. The text of a failure is a sentence.
[[nodiscard]] Expected<CommandsRead> commandsOnInput(CommandSession& session, const std::string& file);
// Inserts those into FILE, which the site's functions can hold unless `force`; the exit code.
int insertData(CommandSession& session, const std::string& file, InsertPlace place, bool force);

}  // namespace tessaly
