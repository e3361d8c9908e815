#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <optional>

#include "cli/Commands.h"
#include "model/CommandLine.h"
#include "model/KeyFile.h"
#include "model/MacroFile.h"
#include "model/SiteBrowser.h"
#include "platform/Files.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

constexpr int kMostWorkplaces = 8;
constexpr int kMainframes = 4;
constexpr int kMostCommandNumber = 1'000'000'000;
constexpr std::string_view kEmptyMacroLine = "empty macro";
constexpr std::string_view kNotSaved =
    "The macro cannot be changed: it has no commands element or cannot be written.";
constexpr std::array<std::string_view, 5> kDestinations = {"QMF1.", "QMF2.", "QMF3.", "QMF4.", "PANEL."};

bool isKeyFile(std::string_view path) { return endsWithNoCase(path, ".upk"); }

std::string noSuchFile(const std::string& file) { return "No such file: " + file; }

std::optional<std::vector<std::string>> keyFileLines(CommandSession& session, const std::string& path,
                                                     const LineOptions& options) {
  // The model takes a missing file for a key without commands; here it is a mistyped name.
  if (!isRegularFile(session.root(), path)) return std::nullopt;
  KeyFile key;
  key.load(session.root(), path, keyFileIndex(path));
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

struct InsertPlace {
  InsertMode mode = InsertMode::kAppend;
  int position = 0;
};

std::optional<InsertPlace> insertPlace(const std::optional<std::string>& at) {
  if (!at || *at == "end") return InsertPlace{};
  if (*at == "start") return InsertPlace{InsertMode::kAtStart, 0};
  const std::optional<int> position = wholeNumber(*at, 0, kMostCommandNumber);
  if (!position) return std::nullopt;
  return InsertPlace{InsertMode::kAtPosition, *position};
}

// Puts a "PARAM=VALUE" word into the draft; the reason when it cannot be.
std::optional<std::string> assign(CommandDraft& draft, const std::string& word) {
  const std::size_t equals = word.find('=');
  const std::string name = word.substr(0, equals);
  const auto parameter =
      std::find_if(draft.parameters.begin(), draft.parameters.end(),
                   [&](const CommandDraft::Parameter& candidate) { return candidate.name == name; });
  if (parameter == draft.parameters.end()) return "Unknown parameter: " + name;
  parameter->value = word.substr(equals + 1);
  return std::nullopt;
}

// The draft of a function named with its destination prefix; `reason` when there is none.
std::optional<CommandDraft> draftOf(CommandSession& session, const std::string& fid, std::string& reason) {
  const auto prefix = std::find_if(kDestinations.begin(), kDestinations.end(),
                                   [&](std::string_view candidate) { return fid.starts_with(candidate); });
  if (prefix == kDestinations.end()) {
    reason = "Unknown destination: " + fid + " (QMF1. to QMF4. or PANEL. in front of the function)";
    return std::nullopt;
  }
  const std::string name = fid.substr(prefix->size());
  const std::optional<FunctionRecord> function = session.dictionary().find(name);
  if (!function) {
    reason = "Unknown function: " + name;
    return std::nullopt;
  }
  return draftFor(*prefix, *function);
}

}  // namespace

LineOptions lineOptions(Arguments& arguments) {
  LineOptions options;
  options.showDestination = arguments.flag("--destination");
  options.raw = arguments.flag("--raw");
  options.tabs = arguments.flag("--tabs");
  return options;
}

int runShow(CommandSession& session, Arguments& arguments) {
  const LineOptions options = lineOptions(arguments);
  const bool json = arguments.flag("--json");
  if (!arguments.complete(1, 1)) return session.wrongUsage(arguments.problem());
  return showLines(session, sitePathOf(arguments[0]), options, json);
}

int showLines(CommandSession& session, const std::string& path, const LineOptions& options, bool json) {
  const auto lines =
      isKeyFile(path) ? keyFileLines(session, path, options) : macroLines(session, path, options);
  if (!lines) return session.failed(isKeyFile(path) ? noSuchFile(path) : "No macro in the file: " + path);
  if (json) {
    auto rows = nlohmann::json::array();
    for (const std::string& line : *lines) rows.push_back(outputText(line));
    session.out() << rows.dump(2) << '\n';
    return kExitDone;
  }
  for (const std::string& line : *lines) session.line(line);
  if (lines->empty()) session.line(kEmptyMacroLine);
  return kExitDone;
}

int runName(CommandSession& session, Arguments& arguments) {
  if (!arguments.complete(1, 1)) return session.wrongUsage(arguments.problem());
  const std::string path = sitePathOf(arguments[0]);
  std::string name;
  const bool read =
      isKeyFile(path) ? readNameLine(session.root(), path, name) : readMacroName(session.site(), path, name);
  if (!read) return session.failed("No name in the file: " + path);
  session.line(name);
  return kExitDone;
}

int runRename(CommandSession& session, Arguments& arguments) {
  if (!arguments.complete(2, 2)) return session.wrongUsage(arguments.problem());
  std::string name = arguments[1];
  if (renameMacro(session.site(), session.target(arguments[0], MacroChange::kRename), name)) return kExitDone;
  return session.failed("The macro cannot be renamed: it has no name or cannot be written.");
}

int runCreate(CommandSession& session, Arguments& arguments) {
  if (!arguments.complete(2, 2)) return session.wrongUsage(arguments.problem());
  if (createMacro(session.site(), arguments[1], session.target(arguments[0], MacroChange::kCreate)))
    return kExitDone;
  return session.failed(
      "The macro cannot be created: the empty macro has no name or the file cannot be written.");
}

int runInsert(CommandSession& session, Arguments& arguments) {
  const std::optional<InsertPlace> place = insertPlace(arguments.option("--at"));
  const std::optional<int> workplace =
      wholeNumber(arguments.option("--workplace").value_or("1"), 1, kMostWorkplaces);
  if (!arguments.complete(2, SIZE_MAX)) return session.wrongUsage(arguments.problem());
  if (!place) return session.wrongUsage("--at takes start, end or the number of a command");
  if (!workplace) return session.wrongUsage("--workplace takes 1 to 8");
  for (std::size_t i = 2; i < arguments.size(); ++i) {
    if (arguments[i].find('=') == std::string::npos) return session.wrongUsage("no = in " + arguments[i]);
  }

  std::string reason;
  std::optional<CommandDraft> draft = draftOf(session, arguments[1], reason);
  if (!draft) return session.failed(reason);
  for (std::size_t i = 2; i < arguments.size(); ++i) {
    if (const auto refused = assign(*draft, arguments[i])) return session.failed(*refused);
  }
  const std::string path = session.target(arguments[0], MacroChange::kEdit);
  if (insertCommand(session.site(), path, place->position, *draft, *workplace, place->mode)) return kExitDone;
  return session.failed(std::string(kNotSaved));
}

int runInsertClassic(CommandSession& session, Arguments& arguments) {
  const std::optional<InsertPlace> place = insertPlace(arguments.option("--at"));
  const std::optional<int> mainframe =
      wholeNumber(arguments.option("--mainframe").value_or("1"), 1, kMainframes);
  if (!arguments.complete(2, 2)) return session.wrongUsage(arguments.problem());
  if (!place) return session.wrongUsage("--at takes start, end or the number of a command");
  if (!mainframe) return session.wrongUsage("--mainframe takes 1 to 4");

  ClassicCommand command;
  if (!command.decodeText(arguments[1])) {
    return session.failed("No classic command: " + arguments[1] +
                          " (each byte is two hexadecimal digits and a blank, the last one too)");
  }
  const std::string path = session.target(arguments[0], MacroChange::kEdit);
  if (appendClassicCommand(session.site(), path, place->position, command, place->mode, *mainframe))
    return kExitDone;
  return session.failed(std::string(kNotSaved));
}

int runRemove(CommandSession& session, Arguments& arguments) {
  if (!arguments.complete(2, 2)) return session.wrongUsage(arguments.problem());
  const std::optional<int> number = wholeNumber(arguments[1], 0, kMostCommandNumber);
  if (!number) return session.wrongUsage("N is the number of a command");
  if (removeCommand(session.site(), session.target(arguments[0], MacroChange::kEdit), *number))
    return kExitDone;
  return session.failed("No command " + arguments[1] + ", or the file cannot be written.");
}

int runSet(CommandSession& session, Arguments& arguments) {
  if (!arguments.complete(3, 3)) return session.wrongUsage(arguments.problem());
  const std::optional<int> number = wholeNumber(arguments[1], 0, kMostCommandNumber);
  if (!number) return session.wrongUsage("N is the number of a command");
  if (setCommandValue(session.site(), session.target(arguments[0], MacroChange::kEdit), *number,
                      arguments[2]))
    return kExitDone;
  return session.failed("No command from " + arguments[1] +
                        " on has a parameter with a value, or the file cannot be written.");
}

int runConvert(CommandSession& session, Arguments& arguments) {
  if (!arguments.complete(3, 3)) return session.wrongUsage(arguments.problem());
  const std::string key = sitePathOf(arguments[0]);
  if (!isRegularFile(session.root(), key)) return session.failed(noSuchFile(key));
  if (convertKeyFile(session.site(), arguments[2], session.target(arguments[1], MacroChange::kConvert), key))
    return kExitDone;
  return session.failed(
      "The key file cannot be converted: the empty macro is unfit or the file cannot be written.");
}

}  // namespace tessaly
