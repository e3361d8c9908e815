#include "panelsim/Prompt.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <optional>
#include <string_view>
#include <thread>
#include <vector>

#include "panelsim/Options.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

using std::chrono::milliseconds;

constexpr int kLongestWaitMs = 24 * 60 * 60 * 1000;
constexpr const char* kWhichMacro = "W is 1 to 8 and N 0 to 999";
constexpr const char* kWhichWorkplace = "a workplace is 1 to 8";

// The words of a line, taken one after the other.
class Words {
 public:
  explicit Words(std::string_view line) : rest_(line) {}

  // Empty at the end.
  std::string next() {
    while (!rest_.empty() && blank(rest_.front())) rest_.remove_prefix(1);
    std::string word;
    while (!rest_.empty() && !blank(rest_.front())) {
      word += rest_.front();
      rest_.remove_prefix(1);
    }
    if (!rest_.empty()) rest_.remove_prefix(1);
    return word;
  }
  // Whatever stands behind the blank after the last word.
  [[nodiscard]] std::string rest() const {
    return std::string(rest_.ends_with('\r') ? rest_.substr(0, rest_.size() - 1) : rest_);
  }

 private:
  static bool blank(char character) { return character == ' ' || character == '\t' || character == '\r'; }
  std::string_view rest_;
};

PromptAnswer wrong(const std::string& why) { return {.text = why, .known = false}; }
PromptAnswer answerOf(const Outcome& outcome) {
  return outcome ? PromptAnswer{} : wrong(outcome.failure().text);
}

std::optional<int> workplaceIn(Words& words) { return wholeNumber(words.next(), 1, Workplace::kCount); }
std::optional<int> numberIn(Words& words) { return wholeNumber(words.next(), 0, MacroNumber::kCount - 1); }

PromptAnswer list(PanelSimulator& panel, Words& words) {
  const std::string word = words.next();
  const auto only = wholeNumber(word, 1, Workplace::kCount);
  if (!word.empty() && !only) return wrong(kWhichWorkplace);
  PromptAnswer answer;
  for (int workplace = 1; workplace <= Workplace::kCount; ++workplace) {
    if (only && *only != workplace) continue;
    for (const auto& [number, name] : panel.macros(workplace)) {
      if (!answer.text.empty()) answer.text += '\n';
      answer.text += format("workplace %d: ", workplace) + MacroNumber::textOf(number) + " - " + name;
    }
  }
  return answer;
}

PromptAnswer get(PanelSimulator& panel, Words& words) {
  const std::string name = words.next();
  if (name.empty()) return wrong("get NAME");
  const auto value = panel.value(name);
  if (value) return {.text = *value};
  const Outcome known = panel.knows(name);
  return wrong(known ? "no such value: " + name : known.failure().text);
}

PromptAnswer set(PanelSimulator& panel, Words& words) {
  const std::string name = words.next(), value = words.rest();
  if (name.empty()) return wrong("set NAME VALUE");
  const Outcome can = panel.canSet(name, value);
  if (can) panel.set(name, value);
  return answerOf(can);
}

PromptAnswer watch(PanelSimulator& panel, Words& words) {
  std::vector<std::string> names;
  for (std::string name = words.next(); !name.empty(); name = words.next()) names.push_back(name);
  if (names == std::vector<std::string>{"off"}) {
    panel.watchNothing();
    return {};
  }
  for (const std::string& name : names)
    if (const Outcome known = panel.knows(name); !known) return answerOf(known);
  panel.watch(names);
  PromptAnswer answer;
  for (const std::string& name : names.empty() ? panel.watched() : names)
    answer.text += (answer.text.empty() ? "" : "\n") + name + " = " + panel.value(name).value_or("");
  return answer;
}

PromptAnswer trigger(PanelSimulator& panel, Words& words) {
  const std::string name = words.next();
  if (name.empty()) return wrong("trigger NAME VALUE");
  panel.trigger(name, words.rest());
  return {};
}

PromptAnswer modules(PanelSimulator& panel, Words& words) {
  const auto workplace = workplaceIn(words), count = numberIn(words);
  if (!workplace || !count) return wrong("mfd W N: W is 1 to 8");
  panel.set(format("PANEL.WP%d.MFDCOUNT", *workplace), std::to_string(*count));
  return {};
}

PromptAnswer rename(PanelSimulator& panel, Words& words) {
  const auto workplace = workplaceIn(words), number = numberIn(words);
  if (!workplace || !number) return wrong(std::string("rename W N NAME: ") + kWhichMacro);
  const std::string name = words.rest();
  if (name.find_first_not_of(" \t") == name.npos) return wrong("rename W N NAME: a macro needs a name");
  return panel.renameMacro(*workplace, *number, name) ? PromptAnswer{} : wrong("no such macro");
}

PromptAnswer remove(PanelSimulator& panel, Words& words) {
  const auto workplace = workplaceIn(words), number = numberIn(words);
  if (!workplace || !number) return wrong(std::string("delete W N: ") + kWhichMacro);
  return panel.removeMacro(*workplace, *number) ? PromptAnswer{} : wrong("no such macro");
}

PromptAnswer run(PanelSimulator& panel, Words& words) {
  const auto workplace = workplaceIn(words), number = numberIn(words);
  if (!workplace || !number) return wrong(std::string("run W N: ") + kWhichMacro);
  const Outcome begun = panel.run(*workplace, *number);
  return begun ? PromptAnswer{} : wrong("macro " + MacroNumber::textOf(*number) + ' ' + begun.failure().text);
}

PromptAnswer stop(PanelSimulator& panel, Words& words) {
  const auto workplace = workplaceIn(words);
  if (!workplace) return wrong(kWhichWorkplace);
  panel.stopRun(*workplace);
  return {};
}

PromptAnswer pace(PanelSimulator& panel, Words& words) {
  const auto time = wholeNumber(words.next(), 0, kLongestPaceMs);
  if (!time) return wrong("pace MS: 0 to 60000");
  panel.setPace(MacroRuns::Pace(*time));
  return {};
}

PromptAnswer reload(PanelSimulator& panel, Words&) {
  panel.reload();
  return {};
}

PromptAnswer setFault(PanelSimulator& panel, Words& words) {
  const std::string name = words.next(), value = words.next();
  PanelFaults faults = panel.faults();
  if (name == "off") {
    faults = {};
  } else if (!applyFault(name, value, faults)) {
    return wrong("no such fault, or not with this number: " + name + " " + value);
  }
  return panel.setFaults(faults) ? PromptAnswer{.text = "fault " + name + (value.empty() ? "" : " " + value)}
                                 : wrong("the FTP service does not answer");
}

PromptAnswer drop(PanelSimulator& panel, Words&) {
  panel.dropConnections();
  return {};
}

PromptAnswer restart(PanelSimulator& panel, Words& words) {
  const std::string pause = words.next();
  const auto time = pause.empty() ? 0 : wholeNumber(pause, 0, kLongestWaitMs);
  if (!time) return wrong("restart [MS]");
  std::string reason;
  return panel.restart(milliseconds(*time), reason) ? PromptAnswer{} : wrong(reason);
}

PromptAnswer wait(PanelSimulator& panel, Words& words) {
  const std::string word = words.next();
  const auto time = wholeNumber(word, 0, kLongestWaitMs);
  if (word == "run")
    return panel.waitForRuns(milliseconds(kLongestWaitMs)) ? PromptAnswer{} : wrong("it still runs");
  if (!time) return wrong("wait MS, or wait run");
  std::this_thread::sleep_for(milliseconds(*time));
  return {};
}

PromptAnswer status(PanelSimulator& panel, Words&) {
  PromptAnswer answer{.text = format("control %s:%d, ftp port %d, editors %d, tree ", panel.address().c_str(),
                                     panel.controlPort(), panel.ftpPort(),
                                     static_cast<int>(panel.connections())) +
                              panel.root() + "\nfaults: "};
  const std::vector<std::string> faults = faultsInForce(panel.faults());
  for (const std::string& fault : faults) answer.text += (&fault == faults.data() ? "" : ", ") + fault;
  if (faults.empty()) answer.text += "none";
  return answer;
}

PromptAnswer help(PanelSimulator& panel, Words& words);
PromptAnswer quit(PanelSimulator&, Words&) { return {.text = {}, .quit = true}; }

struct PromptCommand {
  std::string_view usage;  // its name, then its words
  std::string_view meaning;
  PromptAnswer (*carryOut)(PanelSimulator& panel, Words& words);

  [[nodiscard]] std::string_view name() const { return usage.substr(0, usage.find(' ')); }
};

constexpr PromptCommand kCommands[] = {
    {"list [W]", "macros of all workplaces or of one", list},
    {"get NAME", "current value of a value name", get},
    {"set NAME VALUE", "set and publish a value, such as QMF1.ME1.KEY1.WIPE.ROTATION 0.25", set},
    {"watch [NAME ...]", "print values now and whenever they change; \"watch off\" ends it", watch},
    {"trigger NAME VALUE", "send a trigger value to every editor", trigger},
    {"mfd W N", "modules of a workplace", modules},
    {"run W N", "carry out a macro, command after command", run},
    {"stop W", "end the macro that runs on a workplace", stop},
    {"pace MS", "from command to command of a macro that runs", pace},
    {"rename W N NAME", "rename a macro in its file and publish", rename},
    {"delete W N", "remove a macro's file and publish", remove},
    {"reload", "read the tree again and publish what changed", reload},
    {"fault NAME [N|off]",
     "never-answer, answer-after MS, drop-after N, refuse-login, cut-transfer N, stall-transfer,\n"
     "disk-full, flip-byte N, cut-silent N, swap-after-upload, slow-transfer BYTES_PER_S,\n"
     "dead-line, garble N, refuse-download, lose-reload; \"fault off\" ends all",
     setFault},
    {"drop", "close the editors' connections", drop},
    {"restart [MS]", "go away, and come back after MS milliseconds (0)", restart},
    {"wait MS", "for scripts; \"wait run\" waits until no macro runs", wait},
    {"status", "addresses, connections, faults in force", status},
    {"help", "this text", help},
    {"quit", "", quit},
};
constexpr std::size_t kUsageWidth = 20;

PromptAnswer help(PanelSimulator&, Words&) {
  PromptAnswer answer;
  for (const PromptCommand& command : kCommands) {
    std::string row(command.usage);
    row.resize(kUsageWidth, ' ');
    row += replaceAll(std::string(command.meaning), "\n", "\n" + std::string(kUsageWidth, ' '));
    row.erase(row.find_last_not_of(' ') + 1);
    answer.text += (answer.text.empty() ? "" : "\n") + row;
  }
  return answer;
}

}  // namespace

PromptAnswer runPromptLine(PanelSimulator& panel, const std::string& line) {
  Words words(line);
  std::string name = words.next();
  if (name.empty() || name.front() == '#') return {};
  if (name == "exit") name = "quit";
  const auto* const command = std::find_if(std::begin(kCommands), std::end(kCommands),
                                           [&](const PromptCommand& one) { return one.name() == name; });
  if (command == std::end(kCommands)) return wrong("no such command: " + line + " (\"help\" lists them)");
  return command->carryOut(panel, words);
}

}  // namespace tessaly
