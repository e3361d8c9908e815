// What a simulated panel does with macros that run, and with names and values that are typed.
#include "panelsim/PanelSimulator.h"
#include "panelsim/ValueNames.h"
#include "platform/Text.h"
#include "values/Destination.h"

namespace tessaly {

std::string PanelSimulator::runningName(int workplace) { return format("PANEL.MACRO%d.RUNNING", workplace); }

Outcome PanelSimulator::run(int workplace, int number) {
  auto macro = [&] {
    const std::scoped_lock guard(mutex_);
    return tree_.read(workplace, number);
  }();
  if (!macro) return macro.failure();
  runs_.start(workplace, number, *std::move(macro));
  return {};
}

void PanelSimulator::carryOut(int workplace, int number, std::size_t command, const MacroCommand& what) {
  CommandRun::Result result;
  {
    const std::scoped_lock guard(mutex_);
    result = commands_.carryOut(what);
  }
  std::string line = format("workplace %d, macro ", workplace) + MacroNumber::textOf(number) + ", command " +
                     std::to_string(command + 1) + ": " + what.fid;
  for (const auto& [name, value] : result.values) line += ", " + name + " = " + value;
  log_(line + (result.note.empty() ? "" : ", " + result.note));
  for (const auto& [name, value] : result.values) publish(name, value);
}

void PanelSimulator::tellRun(int workplace, std::optional<int> number) {
  log_(format("workplace %d, ", workplace) +
       (number ? "runs macro " + MacroNumber::textOf(*number) : std::string("runs no macro")));
  set(runningName(workplace), number ? MacroNumber::textOf(*number) : "");
}

void PanelSimulator::watch(const std::vector<std::string>& names) {
  const std::scoped_lock guard(mutex_);
  watched_.insert(names.begin(), names.end());
}

void PanelSimulator::watchNothing() {
  const std::scoped_lock guard(mutex_);
  watched_.clear();
}

std::vector<std::string> PanelSimulator::watched() {
  const std::scoped_lock guard(mutex_);
  return {watched_.begin(), watched_.end()};
}

Outcome PanelSimulator::knows(const std::string& name) {
  if (dictionary_.functionCount() == 0 || currentValue(name)) return {};
  std::string near;
  for (const std::string& one : nearNames(dictionary_, name))
    near += (near.empty() ? "; near: " : ", ") + one;
  if (!Destination::ofFid(name)) near = "; a name begins with QMF1. to QMF4. or PANEL.";
  return Failure{Failure::Kind::kMissing, "no such value: " + name + near};
}

Outcome PanelSimulator::canSet(const std::string& name, const std::string& value) {
  if (Outcome known = knows(name); !known) return known;
  const std::string could = cannotHold(dictionary_, name, value);
  if (could.empty()) return {};
  return Failure{Failure::Kind::kNothingTaken, name + " cannot hold " + value + ": it is " + could};
}

}  // namespace tessaly
