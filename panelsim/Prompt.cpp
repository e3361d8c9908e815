#include "panelsim/Prompt.h"

#include <chrono>
#include <string_view>
#include <thread>

#include "panelsim/Options.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

constexpr std::string_view kHelp =
    R"(list [W]               macros of all workplaces or of one
get NAME               current value of a value name
set NAME VALUE         set and publish a value, such as QMF1.ME1.KEY1.WIPE.ROTATION 0.25
trigger NAME VALUE     send a trigger value to every editor
mfd W N                modules of a workplace
rename W N NAME        rename a macro in its file and publish
delete W N             remove a macro's file and publish
reload                 read the tree again and publish what changed
fault NAME [N|off]     never-answer, answer-after MS, drop-after N, refuse-login,
                       cut-transfer N, stall-transfer, disk-full, flip-byte N, cut-silent N,
                       swap-after-upload, slow-transfer BYTES_PER_S, dead-line, garble N,
                       refuse-download, lose-reload; "fault off" ends all
drop                   close the editors' connections
restart [MS]           go away, and come back after MS milliseconds (0)
wait MS                for scripts
status                 addresses and connections
quit)";

constexpr int kLongestWaitMs = 24 * 60 * 60 * 1000;

std::string nextWord(std::string_view& rest) {
  const auto blank = [](char character) {
    return character == ' ' || character == '\t' || character == '\r';
  };
  while (!rest.empty() && blank(rest.front())) rest.remove_prefix(1);
  std::string word;
  while (!rest.empty() && !blank(rest.front())) {
    word += rest.front();
    rest.remove_prefix(1);
  }
  if (!rest.empty()) rest.remove_prefix(1);
  return word;
}

std::string restOf(std::string_view rest) {
  if (!rest.empty() && rest.back() == '\r') rest.remove_suffix(1);
  return std::string(rest);
}

PromptAnswer wrong(const std::string& why) { return {.text = why, .known = false}; }

PromptAnswer list(PanelSimulator& panel, const std::string& only) {
  PromptAnswer answer;
  for (int workplace = 1; workplace <= Workplace::kCount; ++workplace) {
    if (!only.empty() && only != std::to_string(workplace)) continue;
    for (const auto& [number, name] : panel.macros(workplace)) {
      if (!answer.text.empty()) answer.text += '\n';
      answer.text += format("workplace %d: ", workplace) + MacroNumber::textOf(number) + " - " + name;
    }
  }
  return answer;
}

PromptAnswer setFault(PanelSimulator& panel, const std::string& name, const std::string& value) {
  PanelFaults faults = panel.faults();
  if (name == "off") {
    faults = {};
  } else if (!applyFault(name, value, faults)) {
    return wrong("no such fault: " + name + " " + value);
  }
  return panel.setFaults(faults) ? PromptAnswer{.text = "fault " + name + (value.empty() ? "" : " " + value)}
                                 : wrong("the FTP service does not answer");
}

PromptAnswer restart(PanelSimulator& panel, const std::string& pause) {
  const auto time = pause.empty() ? 0 : wholeNumber(pause, 0, kLongestWaitMs);
  if (!time) return wrong("restart [MS]");
  std::string reason;
  return panel.restart(std::chrono::milliseconds(*time), reason) ? PromptAnswer{} : wrong(reason);
}

// Commands on one macro or workplace: W and N stand before the rest.
PromptAnswer runNumbered(PanelSimulator& panel, const std::string& command, std::string_view rest) {
  const auto workplace = wholeNumber(nextWord(rest), 1, Workplace::kCount);
  const auto number = wholeNumber(nextWord(rest), 0, MacroNumber::kCount - 1);
  if (!workplace || !number) return wrong(command + " W N, W 1 to 8 and N 0 to 999");
  if (command == "mfd") {
    panel.set(format("PANEL.WP%d.MFDCOUNT", *workplace), std::to_string(*number));
    return {};
  }
  const bool done = command == "delete" ? panel.removeMacro(*workplace, *number)
                                        : panel.renameMacro(*workplace, *number, restOf(rest));
  return done ? PromptAnswer{} : wrong("no such macro");
}

PromptAnswer status(PanelSimulator& panel) {
  return {.text = format("control %s:%d, ftp port %d, editors %d, tree ", panel.address().c_str(),
                         panel.controlPort(), panel.ftpPort(), static_cast<int>(panel.connections())) +
                  panel.root()};
}

}  // namespace

PromptAnswer runPromptLine(PanelSimulator& panel, const std::string& line) {
  std::string_view rest = line;
  const std::string command = nextWord(rest);
  if (command.empty() || command.front() == '#') return {};
  if (command == "quit" || command == "exit") return {.text = {}, .quit = true};
  if (command == "help") return {.text = std::string(kHelp)};
  if (command == "status") return status(panel);
  if (command == "mfd" || command == "rename" || command == "delete")
    return runNumbered(panel, command, rest);
  if (command == "reload") {
    panel.reload();
    return {};
  }
  if (command == "drop") {
    panel.dropConnections();
    return {};
  }
  const std::string word = nextWord(rest);
  if (command == "list") return list(panel, word);
  if (command == "restart") return restart(panel, word);
  if (command == "fault") return setFault(panel, word, nextWord(rest));
  if (command == "wait") {
    const auto time = wholeNumber(word, 0, kLongestWaitMs);
    if (!time) return wrong("wait MS");
    std::this_thread::sleep_for(std::chrono::milliseconds(*time));
    return {};
  }
  if (word.empty() || (command != "get" && command != "set" && command != "trigger")) {
    return wrong("no such command: " + line + " (\"help\" lists them)");
  }
  if (command == "get") {
    const auto value = panel.value(word);
    return value ? PromptAnswer{.text = *value} : wrong("no such value: " + word);
  }
  if (command == "set") panel.set(word, restOf(rest));
  if (command == "trigger") panel.trigger(word, restOf(rest));
  return {};
}

}  // namespace tessaly
