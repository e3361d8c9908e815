#include <chrono>
#include <ctime>
#include <fstream>
#include <iostream>
#include <mutex>
#include <thread>

#include "panelsim/Options.h"
#include "panelsim/PanelSimulator.h"
#include "panelsim/Prompt.h"
#include "platform/Installation.h"
#include "platform/Text.h"

namespace {

constexpr int kDone = 0, kFailed = 1, kWrongUsage = 2;

std::mutex outputMutex;  // a line is written whole, whichever thread it comes from

// In UTF-8, whatever bytes a file or a peer has given.
void printLocked(const std::string& text) { std::cout << tessaly::visibleUtf8(text, "\n\t") << std::endl; }

void print(const std::string& text) {
  if (text.empty()) return;
  const std::scoped_lock guard(outputMutex);
  printLocked(text);
}

// "14:03:07.250 " and what happened then.
void log(const std::string& text) {
  const auto now = std::chrono::system_clock::now();
  const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
  const auto part = std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch()) % 1000;
  char clock[16] = "";
  const std::scoped_lock guard(outputMutex);  // also over what std::localtime gives
  if (const std::tm* const local = std::localtime(&seconds))
    std::strftime(clock, sizeof clock, "%H:%M:%S", local);
  printLocked(tessaly::format("%s.%03d ", clock, static_cast<int>(part.count())) + text);
}

enum class Obeyed { kAll, kQuit, kWrong };  // a script stops at a wrong line

Obeyed obey(std::istream& lines, tessaly::PanelSimulator& panel, bool script) {
  for (std::string line; std::getline(lines, line);) {
    const tessaly::PromptAnswer answer = tessaly::runPromptLine(panel, line);
    print(answer.text);
    if (answer.quit) return Obeyed::kQuit;
    if (script && !answer.known) return Obeyed::kWrong;
  }
  return Obeyed::kAll;
}

}  // namespace

int main(int argc, char** argv) {
  std::string reason;
  const auto options = tessaly::readOptions({argv + 1, argv + argc}, reason);
  if (!options) {
    std::cerr << "tessaly-panelsim: " << reason << "\n" << tessaly::optionsHelp();
    return kWrongUsage;
  }
  if (options->help) {
    std::cout << tessaly::optionsHelp();
    return kDone;
  }
  if (options->version) {
    std::cout << "tessaly-panelsim " << tessaly::programVersion() << "\n";
    return kDone;
  }
  tessaly::PanelSimulator panel(options->panel, log);
  if (!panel.start(reason)) {
    std::cerr << "tessaly-panelsim: " << reason << std::endl;
    return kFailed;
  }
  print("ready control " + panel.address() + ":" + std::to_string(panel.controlPort()) + " ftp " +
        panel.address() + ":" + std::to_string(panel.ftpPort()) + " tree " + panel.root());
  if (!options->script.empty()) {
    std::ifstream script(options->script);
    if (!script) {
      std::cerr << "tessaly-panelsim: cannot read " << options->script << std::endl;
      return kFailed;
    }
    const Obeyed obeyed = obey(script, panel, true);
    if (obeyed != Obeyed::kAll) return obeyed == Obeyed::kQuit ? kDone : kFailed;
  }
  if (obey(std::cin, panel, false) == Obeyed::kQuit) return kDone;
  // Without a terminal the panel serves until it is ended by a signal.
  while (true) std::this_thread::sleep_for(std::chrono::hours(1));
}
