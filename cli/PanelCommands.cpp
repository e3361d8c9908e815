#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdint>
#include <functional>
#include <map>
#include <nlohmann/json.hpp>
#include <set>

#include "cli/Commands.h"
#include "cli/PanelBatchCommands.h"
#include "cli/PanelLine.h"
#include "cli/PanelRun.h"
#include "cli/PanelUpdate.h"
#include "cli/PrintJson.h"
#include "cli/ReplaceCommand.h"
#include "cli/SnapshotCommands.h"
#include "cli/ValueWatch.h"
#include "link/MacroNames.h"
#include "link/PanelAddress.h"
#include "model/MacroFile.h"
#include "platform/Files.h"
#include "platform/MacroNumber.h"
#include "platform/Text.h"
#include "platform/Workplace.h"

namespace tessaly {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kAnswer{3000};  // a panel that has not answered by then does not answer
constexpr milliseconds kQuiet{500};    // without a further value, this was the last one
constexpr int kUsualFtpPort = 21;
constexpr int kHighestPort = 65535;
constexpr const char* kNoNumber = "a macro number is 0 to 999";
constexpr const char* kLost = "the connection to the panel was lost";

// One run of a panel command: its words, and the panel.
struct PanelTask {
  CommandSession& session;
  Arguments& arguments;
  PanelPlace place{};
  bool json = false;
  bool force = false;
  bool dryRun = false;
  int count = 0;                           // of values to watch; 0: no end
  std::optional<milliseconds> patience{};  // how long to watch; nothing: no end
  int workplace = 0;
  int number = 0;

  [[nodiscard]] const std::string& word(std::size_t i) const { return arguments[i]; }
};

int unreachable(const PanelTask& task) {
  return task.session.failed("cannot connect to the panel at " + task.place.control());
}

// Waits for a value of the macro's name that meets the condition, among those that are on their way.
std::optional<std::string> awaitText(PanelLine& line, const std::function<bool(const std::string&)>& wanted) {
  const auto deadline = std::chrono::steady_clock::now() + kAnswer;
  while (true) {
    const auto left = std::chrono::ceil<milliseconds>(deadline - std::chrono::steady_clock::now());
    const auto value = line.next(left);
    if (!value) return std::nullopt;
    if (wanted(value->text)) return value->text;
  }
}

bool anyText(const std::string&) { return true; }
bool isEmpty(const std::string& text) { return text.empty(); }
bool isNotEmpty(const std::string& text) { return !text.empty(); }

int unconfirmed(const PanelTask& task, const PanelLine& line) {
  return task.session.failed(line.connected() ? "the panel did not confirm" : kLost);
}

// Those whose count of keys is not 0.
int listWorkplaces(PanelTask& task) {
  PanelLine line(task.session.root(), task.session.history(), task.place);
  if (!line.open()) return unreachable(task);
  std::map<std::string, int> counts;
  std::vector<std::string> names;
  for (int number = 1; number <= Workplace::kCount; ++number) {
    names.push_back(format("PANEL.WP%d.MFDCOUNT", number));
    line.subscribe(names.back());
  }
  while (counts.size() < names.size()) {
    const auto value = line.next(counts.empty() ? kAnswer : kQuiet);
    if (!value) break;
    counts[value->name] = parseInt(value->text);
  }
  if (!line.connected()) return task.session.failed(kLost);
  if (counts.empty()) return task.session.failed("the panel did not say which workplaces it has");
  auto rows = nlohmann::ordered_json::array();
  for (int number = 1; number <= Workplace::kCount; ++number) {
    if (counts[names[static_cast<std::size_t>(number - 1)]] == 0) continue;
    rows.push_back(number);
    if (!task.json) task.session.line(std::to_string(number));
  }
  return task.json ? printJson(task.session, rows) : kExitDone;
}

int runList(PanelTask& task) {
  if (task.workplace == 0) return listWorkplaces(task);
  PanelLine line(task.session.root(), task.session.history(), task.place);
  if (!line.open()) return unreachable(task);
  for (int number = 0; number < MacroNumber::kCount; ++number) {
    line.subscribe(macroNameValue(task.workplace, number));
  }
  std::map<int, std::string> names;
  while (names.size() < static_cast<std::size_t>(MacroNumber::kCount)) {
    const auto value = line.next(names.empty() ? kAnswer : kQuiet);
    if (!value) break;
    names[macroNumberOf(value->name)] = value->text;
  }
  if (!line.connected()) return task.session.failed(kLost);
  if (names.empty()) return task.session.failed("the panel sent no macro names");
  std::erase_if(names, [](const auto& entry) { return entry.second.empty(); });
  if (task.json) {
    auto rows = nlohmann::ordered_json::array();
    for (const auto& [number, name] : names) {
      rows.push_back({{"number", number}, {"name", displayUtf8(name)}});
    }
    return printJson(task.session, rows);
  }
  for (const auto& [number, name] : names)
    task.session.line(MacroNumber::textOf(number) + " - " + outputName(name));
  return kExitDone;
}

int runGet(PanelTask& task) {
  const auto get = [&](const std::string& path) -> Outcome {
    PanelLine line(task.session.root(), task.session.history(), task.place);
    std::string reason = line.get(task.workplace, task.number, path);
    if (reason.empty()) return {};
    return Failure{Failure::Kind::kDiskError, std::move(reason)};
  };
  return task.session.writeTo(task.word(4), FileUse::kWrite, MacroChange::kCopy, get);
}

// A macro with a name and a place for commands.
Outcome isMacro(CommandSession& session, const std::string& path) {
  const auto macro = readMacro(session.root(), path);
  if (!macro) return macro.failure();
  if (!macro->hasData()) return Failure{Failure::Kind::kNoMacro, "has no place for commands"};
  if (!macro->name()) return Failure{Failure::Kind::kNoMacro, "has no name"};
  return {};
}

// Sends a file that nobody else can change any more.
int send(PanelTask& task, const std::string& path) {
  PanelLine line(task.session.root(), task.session.history(), task.place);
  // First, so that no macro is sent that the panel could not be told of.
  if (!line.open()) return unreachable(task);
  const TransferOutcome sent = line.put(task.workplace, task.number, path);
  if (!sent.done()) {
    const int code = task.session.failed(sent.describe());
    return sent.holds == PanelHolds::kUnknown ? kExitUnknown : code;
  }
  if (sent.holds != PanelHolds::kNew) task.session.warn(sent.describe());
  line.subscribe(macroNameValue(task.workplace, task.number));
  const auto name = awaitText(line, isNotEmpty);
  if (!name) return unconfirmed(task, line);
  task.session.line(MacroNumber::textOf(task.number) + " - " + outputName(*name));
  return kExitDone;
}

int runPut(PanelTask& task) {
  return task.session.readFrom(task.word(4), [&](const FileOperand& file) {
    CommandSession& session = task.session;
    const auto copy = ScratchFile::make();
    if (!copy) return session.failed("What is to be sent " + copy.failure().text);
    const std::string path = copy->path("macro.mac");
    session.call(path, file.shown());
    if (const Outcome copied = copyFile(session.root(), file.path(), path); !copied)
      return session.failed(file.shown() + ' ' + copied.failure().text);
    if (!task.force) {
      if (const Outcome read = isMacro(session, path); !read)
        return session.failed(file.shown() + " is no macro: it " + read.failure().text);
    }
    return send(task, path);
  });
}

// Subscribes the macro's name and asks for a change once it is known that there is such a macro; the name
// that the panel publishes then is its only answer.
int change(PanelTask& task, const std::function<bool(PanelLine&)>& ask,
           const std::function<bool(const std::string&)>& changed) {
  PanelLine line(task.session.root(), task.session.history(), task.place);
  if (!line.open()) return unreachable(task);
  line.subscribe(macroNameValue(task.workplace, task.number));
  const auto before = awaitText(line, anyText);
  if (!before) return unconfirmed(task, line);
  if (before->empty()) {
    return task.session.failed("workplace " + task.word(2) + " has no macro " +
                               MacroNumber::textOf(task.number));
  }
  if (changed(*before)) return kExitDone;
  if (!ask(line)) return task.session.failed(kLost);
  return awaitText(line, changed) ? kExitDone : unconfirmed(task, line);
}

int runDelete(PanelTask& task) {
  return change(
      task, [&](PanelLine& line) { return line.remove(task.workplace, task.number); }, isEmpty);
}

int runRenameOnPanel(PanelTask& task) {
  const std::string& name = task.word(4);
  if (name.empty()) return task.session.wrongUsage("a macro needs a name");
  if (!isValidUtf8(name)) return task.session.failed("this is no UTF-8: " + name);
  return change(
      task, [&](PanelLine& line) { return line.rename(task.workplace, task.number, name); },
      [&](const std::string& text) { return text == name; });
}

int runWatch(PanelTask& task) {
  PanelLine line(task.session.root(), task.session.history(), task.place);
  if (!line.open()) return unreachable(task);
  std::set<std::string> names;
  for (std::size_t i = 2; i < task.arguments.size(); ++i) names.insert(task.word(i));
  ValueWatch watch(std::move(names), task.count, task.patience);
  for (std::size_t i = 2; i < task.arguments.size(); ++i) line.subscribe(task.word(i));
  while (!watch.over()) {
    const auto value = line.next(watch.timeLeft(kAnswer));
    if (!value && !line.connected()) return task.session.failed(kLost);
    if (!value) continue;
    task.session.field(outputName(value->name), outputName(value->text));
    if (!task.session.out().flush()) return kExitFailed;
    watch.count(value->name);
  }
  const std::string shortfall = watch.shortfall();
  return shortfall.empty() ? kExitDone : task.session.failed(shortfall);
}

int runUpdate(PanelTask& task) {
  std::vector<CommandRange> ranges;
  for (std::size_t i = 3; i < task.arguments.size(); ++i) {
    const auto range = commandRange(task.word(i));
    if (!range) return task.session.wrongUsage(kNoRange);
    ranges.push_back(*range);
  }
  return updateFromPanel(task.session, task.place, task.word(2), ranges);
}

int runSnapshotOfPanel(PanelTask& task) {
  return takePanelSnapshot(task.session, task.place, task.word(2), task.force);
}

int runRestoreOnPanel(PanelTask& task) {
  std::vector<std::string> words;
  for (std::size_t i = 3; i < task.arguments.size(); ++i) words.push_back(task.word(i));
  return restoreToPanel(task.session, task.place, task.word(2), words, {task.dryRun, task.force});
}

int runCompare(PanelTask& task) {
  return comparePanel(task.session, task.place, task.workplace, task.word(3), task.json);
}

int runSend(PanelTask& task) {
  std::vector<std::string> words;
  for (std::size_t i = 4; i < task.arguments.size(); ++i) words.push_back(task.word(i));
  return sendFolder(task.session, task.place, task.workplace, task.word(3), words, task.force);
}

int runReplaceOnPanel(PanelTask& task) {
  PanelReplacement how{task.word(3), {}, task.dryRun, task.json};
  for (std::size_t i = 4; i < task.arguments.size(); ++i) {
    const auto number = wholeNumber(task.word(i), 0, MacroNumber::kCount - 1);
    if (!number) return task.session.wrongUsage(kNoNumber);
    how.numbers.insert(*number);
  }
  return replaceOnPanel(task.session, task.place, task.workplace, how);
}

enum class Words {
  kPerhapsWorkplace,
  kWorkplaceAndOne,
  kWorkplaceOneAndMore,
  kMacro,
  kMacroAndOne,
  kOne,
  kOneAndMore
};

struct PanelVerb {
  std::string_view name;
  Words words;  // after the name
  int (*run)(PanelTask& task);
};

constexpr PanelVerb kVerbs[] = {
    {"list", Words::kPerhapsWorkplace, runList},
    {"get", Words::kMacroAndOne, runGet},
    {"put", Words::kMacroAndOne, runPut},
    {"delete", Words::kMacro, runDelete},
    {"rename", Words::kMacroAndOne, runRenameOnPanel},
    {"update", Words::kOneAndMore, runUpdate},
    {"watch", Words::kOneAndMore, runWatch},
    {"run", Words::kMacro,
     [](PanelTask& task) { return runOnPanel(task.session, task.place, task.workplace, task.number); }},
    {"compare", Words::kWorkplaceAndOne, runCompare},
    {"send", Words::kWorkplaceOneAndMore, runSend},
    {"replace", Words::kWorkplaceOneAndMore, runReplaceOnPanel},
    {"snapshot", Words::kOne, runSnapshotOfPanel},
    {"restore", Words::kOneAndMore, runRestoreOnPanel},
};

// How many words stand with the address and the verb: the least, and the most that are read.
std::pair<std::size_t, std::size_t> wordCount(Words words) {
  switch (words) {
    case Words::kPerhapsWorkplace:
      return {2, 3};
    case Words::kWorkplaceAndOne:
    case Words::kMacro:
      return {4, 4};
    case Words::kWorkplaceOneAndMore:
      return {4, SIZE_MAX};
    case Words::kMacroAndOne:
      return {5, 5};
    case Words::kOne:
      return {3, 3};
    case Words::kOneAndMore:
      return {3, SIZE_MAX};
  }
  return {0, 0};
}

// Reads workplace and number; the problem, or an empty text.
std::string readMacroWords(PanelTask& task, Words words) {
  if (words == Words::kOne || words == Words::kOneAndMore || task.arguments.size() < 3) return {};
  const auto workplace = wholeNumber(task.word(2), 1, Workplace::kCount);
  if (!workplace) return "a workplace is 1 to 8";
  task.workplace = *workplace;
  if (words != Words::kMacro && words != Words::kMacroAndOne) return {};
  const auto number = wholeNumber(task.word(3), 0, MacroNumber::kCount - 1);
  if (!number) return kNoNumber;
  task.number = *number;
  return {};
}

// Seconds with or without a fraction, up to a day; nothing otherwise.
std::optional<milliseconds> secondsOf(std::string_view text) {
  constexpr double kMostSeconds = 86'400;
  constexpr double kMillisecondsInOne = 1000;
  const auto seconds = exactNumber<double>(text, std::chars_format::fixed);
  if (!seconds || !(*seconds > 0) || *seconds > kMostSeconds) return std::nullopt;
  return milliseconds(static_cast<std::int64_t>(std::ceil(*seconds * kMillisecondsInOne)));
}

// A number given with an option, or `fallback`; nothing, when it is none.
std::optional<int> numberOption(const std::optional<std::string>& text, int most, int fallback) {
  return text ? wholeNumber(*text, 1, most) : fallback;
}

}  // namespace

int runPanel(CommandSession& session, Arguments& arguments) {
  PanelTask task{session, arguments};
  task.json = arguments.flag("--json");
  task.force = arguments.flag("--force");
  task.dryRun = arguments.flag("--dry-run");
  const auto ftpPort = numberOption(arguments.option("--ftp-port"), kHighestPort, kUsualFtpPort);
  const auto controlPort = numberOption(arguments.option("--control-port"), kHighestPort, kPanelPort);
  const auto count = numberOption(arguments.option("--count"), INT_MAX, 0);
  const auto seconds = arguments.option("--for");
  task.patience = seconds ? secondsOf(*seconds) : std::nullopt;
  if (!arguments.complete(2, SIZE_MAX)) return session.wrongUsage(arguments.problem());
  if (seconds && !task.patience) return session.wrongUsage("--for needs a number of seconds");
  if (!ftpPort || !controlPort) return session.wrongUsage("a port is 1 to 65535");
  if (!count) return session.wrongUsage("--count needs a number from 1");
  const auto verb = std::find_if(std::begin(kVerbs), std::end(kVerbs),
                                 [&](const PanelVerb& candidate) { return candidate.name == task.word(1); });
  if (verb == std::end(kVerbs)) return session.wrongUsage("unknown panel command " + task.word(1));
  const auto [least, most] = wordCount(verb->words);
  if (!arguments.complete(least, most)) return session.wrongUsage(arguments.problem());
  const std::string problem = readMacroWords(task, verb->words);
  if (!problem.empty()) return session.wrongUsage(problem);
  task.place = {task.word(0), static_cast<std::uint16_t>(*controlPort), static_cast<std::uint16_t>(*ftpPort)};
  task.count = *count;
  recoverOnPanel(session, task.place);
  return verb->run(task);
}

int runAddress(CommandSession& session, Arguments& arguments) {
  if (!arguments.complete(1, 1)) return session.wrongUsage(arguments.problem());
  const bool accepted = addressAccepted(arguments[0]);
  session.line(accepted ? "accepted" : "refused");
  return accepted ? kExitDone : kExitFailed;
}

}  // namespace tessaly
