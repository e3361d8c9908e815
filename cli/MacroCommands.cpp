#include <algorithm>
#include <optional>

#include "cli/CommandJson.h"
#include "cli/Commands.h"
#include "cli/MacroWords.h"
#include "cli/ValueCheck.h"
#include "dictionary/InterfaceFile.h"
#include "model/KeyFile.h"
#include "model/MacroFile.h"
#include "model/SiteBrowser.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "platform/Workplace.h"
#include "values/Destination.h"

namespace tessaly {
namespace {

// What is stored, wherever it comes from, is UTF-8.
Outcome isText(const std::string& word) {
  if (isValidUtf8(word)) return {};
  return Failure{Failure::Kind::kTextNotHeld, "this is no UTF-8: " + word};
}

// A failure of the empty macro that a new one is made from, rather than of the new one.
Outcome ofEmpty(Outcome outcome) {
  if (outcome.written() || outcome.failure().kind != Failure::Kind::kNoMacro) return outcome;
  return Failure{Failure::Kind::kNoMacro, "the empty macro: " + outcome.failure().text};
}

// A command to be inserted, and its function.
struct NamedDraft {
  CommandDraft draft;
  FunctionRecord function;
};

// The draft of a function named with its destination prefix.
Expected<NamedDraft> draftOf(CommandSession& session, const std::string& fid) {
  const auto destination = Destination::ofFid(fid);
  if (!destination) {
    return Failure{Failure::Kind::kNothingTaken,
                   "Unknown destination: " + fid + " (QMF1. to QMF4. or PANEL. in front of the function)"};
  }
  const std::string name = fid.substr(destination->prefix().size());
  const std::optional<FunctionRecord> function = session.dictionary().find(name);
  if (!function) return Failure{Failure::Kind::kNothingTaken, "Unknown function: " + name};
  return NamedDraft{draftFor(destination->prefix(), *function), *function};
}

// Puts a "PARAM=VALUE" word into the draft.
Outcome assign(CommandSession& session, NamedDraft& named, const std::string& word, bool force) {
  const std::size_t equals = word.find('=');
  const std::string name = word.substr(0, equals);
  auto& parameters = named.draft.parameters;
  const auto parameter =
      std::find_if(parameters.begin(), parameters.end(),
                   [&](const CommandDraft::Parameter& candidate) { return candidate.name == name; });
  if (parameter == parameters.end())
    return Failure{Failure::Kind::kNothingTaken, "Unknown parameter: " + name};
  parameter->value = word.substr(equals + 1);
  if (force) return told(kNotChanged, isText(parameter->value));
  return canHold(session.dictionary(), named.function, parameter->name, parameter->value);
}

bool hasDictionary(const CommandSession& session) {
  return isRegularFile(session.root(), kOlderFamilyInterface) ||
         isRegularFile(session.root(), kPanelInterface);
}

// Whether the parameter that takes a value can hold it. What no function is known for is not judged.
Outcome canTake(CommandSession& session, const std::string& path, int number, const std::string& value) {
  const auto macro = readMacro(session.root(), path);
  const int taker = macro ? macro->takerOfValue(number) : -1;
  if (taker < 0 || value.empty()) return {};
  const MacroCommand& command = macro->commands()[static_cast<std::size_t>(taker)];
  const auto parameter = std::find_if(command.parameters.begin(), command.parameters.end(),
                                      [](const MacroParameter& candidate) { return candidate.hasValue; });
  if (command.classic()) {
    if (ClassicCommand().decodeText(value)) return {};
    return Failure{Failure::Kind::kNothingTaken, "No classic command: " + value + "; --force stores it"};
  }
  if (!hasDictionary(session)) return {};
  const auto function = session.dictionary().find(command.functionName());
  return function ? canHold(session.dictionary(), *function, parameter->name, value) : Outcome();
}

}  // namespace

bool warnOfUnreadable(CommandSession& session, const FileOperand& file, const std::vector<int>* taken) {
  const auto key = keyAt(session.root(), file.path(), file.shown());
  if (!key) {
    session.warn("which commands cannot be read in the macro is not known: " + key.failure().text);
    return true;
  }
  std::vector<int> lost = key->unreadable();
  const auto isLeft = [taken](int number) {
    return taken && std::find(taken->begin(), taken->end(), number) == taken->end();
  };
  std::erase_if(lost, isLeft);
  if (lost.empty()) return false;
  std::string text = std::to_string(lost.size()) + " of " +
                     std::to_string(taken ? taken->size() : key->commands().size()) +
                     " commands cannot be read in the macro: " + (lost.size() == 1 ? "line" : "lines");
  for (std::size_t i = 0; i < lost.size(); ++i)
    text += (i == 0 ? " " : ", ") + std::to_string(key->lines()[static_cast<std::size_t>(lost[i])].number);
  session.warn(text + " of " + file.shown());
  return true;
}

int runName(CommandSession& session, Arguments& arguments) {
  if (!arguments.complete(1, 1)) return session.wrongUsage(arguments.problem());
  return session.readFrom(arguments[0], [&](const FileOperand& file) {
    std::string name;
    const bool isKey = isKeyFile(file.path());
    if (isKey) {
      if (const auto key = keyAt(session.root(), file.path(), file.shown()); !key)
        return session.failed(key.failure().text);
    }
    const bool read = isKey ? readNameLine(session.root(), file.path(), name)
                            : readMacroName(session.site(), file.path(), name);
    if (!read) return session.failed("No name in the file: " + file.shown());
    session.line(outputName(name));
    return kExitDone;
  });
}

int runRename(CommandSession& session, Arguments& arguments) {
  if (!arguments.complete(2, 2)) return session.wrongUsage(arguments.problem());
  return session.writeTo(arguments[0], FileUse::kChange, MacroChange::kRename, [&](const std::string& path) {
    std::string name = arguments[1];
    const Outcome text = isText(name);
    return told("The macro cannot be renamed: ", text ? renameMacro(session.site(), path, name) : text);
  });
}

int runCreate(CommandSession& session, Arguments& arguments) {
  const bool json = arguments.flag("--json");
  if (!arguments.complete(json ? 1 : 2, 2)) return session.wrongUsage(arguments.problem());
  CommandsRead read;
  if (json) {
    auto given = commandsOnInput(session, arguments[0]);
    if (!given) return session.failed(given.failure().text);
    read = *std::move(given);
  }
  if (arguments.size() == 2) read.name = arguments[1];
  if (!read.name) return session.failed("Standard input gives the macro no name, nor does the command");
  return session.writeTo(arguments[0], FileUse::kWrite, MacroChange::kCreate, [&](const std::string& path) {
    Outcome text = isText(*read.name);
    if (text) text = ofEmpty(createMacro(session.site(), *read.name, path));
    if (text && !read.commands.empty()) text = insertCommands(session, path, read.commands, {});
    return told("The macro cannot be created: ", text);
  });
}

int runInsert(CommandSession& session, Arguments& arguments) {
  const std::optional<InsertPlace> place = insertPlace(arguments.option("--at"));
  const std::optional<int> workplace =
      wholeNumber(arguments.option("--workplace").value_or("1"), 1, Workplace::kCount);
  const bool json = arguments.flag("--json");
  if (!(json ? arguments.complete(1, 1) : arguments.complete(2, SIZE_MAX)))
    return session.wrongUsage(arguments.problem());
  if (!place) return session.wrongUsage(kNoPlace);
  if (json) return insertData(session, arguments[0], *place, arguments.flag("--force"));
  if (!workplace) return session.wrongUsage("--workplace takes 1 to 8");
  for (std::size_t i = 2; i < arguments.size(); ++i) {
    if (arguments[i].find('=') == std::string::npos) return session.wrongUsage("no = in " + arguments[i]);
  }

  auto named = draftOf(session, arguments[1]);
  if (!named) return session.failed(named.failure().text);
  for (std::size_t i = 2; i < arguments.size(); ++i) {
    if (const Outcome held = assign(session, *named, arguments[i], arguments.flag("--force")); !held)
      return session.failed(held.failure().text);
  }
  return session.writeTo(arguments[0], FileUse::kChange, MacroChange::kEdit, [&](const std::string& path) {
    return told(kNotChanged,
                insertCommand(session.site(), path, place->position, named->draft, *workplace, place->mode));
  });
}

int runInsertClassic(CommandSession& session, Arguments& arguments) {
  const std::optional<InsertPlace> place = insertPlace(arguments.option("--at"));
  const std::optional<int> mainframe =
      wholeNumber(arguments.option("--mainframe").value_or("1"), 1, Destination::kMainframes);
  if (!arguments.complete(2, 2)) return session.wrongUsage(arguments.problem());
  if (!place) return session.wrongUsage(kNoPlace);
  if (!mainframe) return session.wrongUsage("--mainframe takes 1 to 4");

  ClassicCommand command;
  if (!command.decodeText(arguments[1])) {
    return session.failed("No classic command: " + arguments[1] +
                          " (each byte is two hexadecimal digits and a blank, the last one too)");
  }
  return session.writeTo(arguments[0], FileUse::kChange, MacroChange::kEdit, [&](const std::string& path) {
    Outcome done = told(kNotChanged, appendClassicCommand(session.site(), path, place->position, command,
                                                          place->mode, Destination::mainframe(*mainframe)));
    if (done.written() && !command.readsBack()) {
      session.warn("1 of 1 commands cannot be read in the macro: it has " +
                   std::to_string(command.parameters().size()) + " parameter bytes");
    }
    return done;
  });
}

int runSet(CommandSession& session, Arguments& arguments) {
  if (!arguments.complete(3, 3)) return session.wrongUsage(arguments.problem());
  const std::optional<int> number = wholeNumber(arguments[1], 0, kMostCommandNumber);
  if (!number) return session.wrongUsage("N is the number of a command");
  const auto set = [&](const std::string& path) {
    Outcome done = setCommandValue(session.site(), path, *number, arguments[2]);
    if (!done && done.failure().kind == Failure::Kind::kNothingTaken)
      return Outcome(Failure{Failure::Kind::kNothingTaken,
                             "No command from " + arguments[1] + " on has a parameter with a value"});
    return told(kNotChanged, std::move(done));
  };
  const auto check = [&](const std::string& path) {
    Outcome text = told(kNotChanged, isText(arguments[2]));
    if (!text || arguments.flag("--force")) return text;
    return canTake(session, path, *number, arguments[2]);
  };
  return session.writeTo(arguments[0], FileUse::kChange, MacroChange::kEdit, set, check);
}

int runConvert(CommandSession& session, Arguments& arguments) {
  if (!arguments.complete(3, 3)) return session.wrongUsage(arguments.problem());
  return session.readFrom(arguments[0], [&](const FileOperand& key) {
    if (const auto reads = keyAt(session.root(), key.path(), key.shown()); !reads)
      return session.failed(reads.failure().text);
    const auto convert = [&](const std::string& path) {
      const Outcome text = isText(arguments[2]);
      Outcome done =
          told("The key file cannot be converted: ",
               text ? ofEmpty(convertKeyFile(session.site(), arguments[2], path, key.path())) : text);
      if (done.written()) warnOfUnreadable(session, key, nullptr);
      return done;
    };
    return session.writeTo(arguments[1], FileUse::kWrite, MacroChange::kConvert, convert);
  });
}

}  // namespace tessaly
