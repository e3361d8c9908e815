#include <algorithm>
#include <optional>

#include "cli/CommandJson.h"
#include "cli/Commands.h"
#include "cli/MacroWords.h"
#include "cli/PrintJson.h"
#include "model/KeyFile.h"
#include "model/MacroFile.h"
#include "model/SiteBrowser.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

constexpr std::string_view kEmptyMacroLine = "empty macro";

std::vector<std::string> keyFileLines(CommandSession& session, const KeyFile& key,
                                      const LineOptions& options) {
  const FunctionDictionary none;  // classic commands name no function
  const LineContext context{none, session.decodingLists()};
  std::vector<std::string> lines;
  for (const ClassicCommand& command : key.commands())
    lines.push_back(keyCommandLine(command, options, context));
  return lines;
}

std::optional<std::vector<std::string>> macroLines(CommandSession& session, const std::string& path,
                                                   const LineOptions& options) {
  const auto macro = loadMacro(session.site(), path);
  if (!macro || !macro->hasData()) return std::nullopt;
  const MacroCommands& commands = macro->commands();
  const bool described = std::any_of(commands.begin(), commands.end(),
                                     [](const MacroCommand& command) { return !command.classic(); });
  const FunctionDictionary none;
  const LineContext context{options.raw || !described ? none : session.dictionary(), session.decodingLists()};
  std::vector<std::string> lines;
  for (const MacroCommand& command : commands) lines.push_back(commandLine(command, options, context));
  return lines;
}

}  // namespace

LineOptions lineOptions(const Arguments& arguments) {
  LineOptions options;
  options.showDestination = arguments.flag("--destination");
  options.raw = arguments.flag("--raw");
  options.tabs = arguments.flag("--tabs");
  return options;
}

int runShow(CommandSession& session, Arguments& arguments) {
  if (!arguments.complete(1, 1)) return session.wrongUsage(arguments.problem());
  return session.readFrom(arguments[0], [&](const FileOperand& file) {
    return showLines(session, file.path(), lineOptions(arguments), arguments.flag("--json"));
  });
}

int showLines(CommandSession& session, const std::string& path, const LineOptions& options, bool json) {
  if (json) {
    const auto macro = macroAt(session, path, path);
    if (!macro) return session.failed(macro.failure().text);
    auto data = commandsJson(session, *macro, options);
    if (std::string name; isKeyFile(path) && readNameLine(session.root(), path, name))
      data["name"] = displayUtf8(name);
    return printJson(session, data);
  }
  std::optional<std::vector<std::string>> lines;
  if (isKeyFile(path)) {
    const auto key = keyAt(session.root(), path, path);
    if (!key) return session.failed(key.failure().text);
    lines = keyFileLines(session, *key, options);
  } else {
    lines = macroLines(session, path, options);
  }
  if (!lines) return session.failed("No macro in the file: " + path);
  for (const std::string& line : *lines) session.line(line);
  if (lines->empty()) session.line(kEmptyMacroLine);
  return kExitDone;
}

}  // namespace tessaly
