#include <algorithm>

#include "review/CommandRules.h"
#include "values/Destination.h"

namespace tessaly {
namespace {

using enum CheckRule;

bool sets(const ClassicCommand& command) {
  return command.does(ClassicAction::kSet) || command.does(ClassicAction::kSetAlso);
}

bool goesToPanel(const MacroCommand& command) { return command.destination() == Destination::panel().name(); }

bool sameCommand(const MacroCommand& a, const MacroCommand& b) {
  return a.fid == b.fid && a.workplace == b.workplace && a.parameters == b.parameters;
}

}  // namespace

bool LookedCommand::setsOnly() const {
  if (function) return function->sets && !command.parameters.empty();
  return classic && classic->command.valid() && sets(classic->command);
}

void SequenceRules::look(const LookedCommand& looked, Told& told) {
  spill(looked, told);
  repeated(looked, told);
  setAgain(looked, told);
}

int SequenceRules::takerFrom(int number) {
  const int count = static_cast<int>(commands_.size());
  for (taker_ = std::max(taker_, number); taker_ < count; ++taker_) {
    const auto& parameters = commands_[static_cast<std::size_t>(taker_)].parameters;
    if (std::any_of(parameters.begin(), parameters.end(), [](const MacroParameter& p) { return p.hasValue; }))
      break;
  }
  return taker_;
}

// An update asks for the value of every function that has one, and gives it to the first parameter with a
// value from there on.
void SequenceRules::spill(const LookedCommand& looked, Told& told) {
  const int taker = takerFrom(looked.number);
  if (!looked.function || looked.function->incremental || taker == looked.number ||
      taker == static_cast<int>(commands_.size()))
    return;
  told.add(kSpill, looked.number, "an update would put its value into command " + std::to_string(taker),
           "a parameter with a value");
}

void SequenceRules::repeated(const LookedCommand& looked, Told& told) {
  if (looked.number == 0 ||
      !sameCommand(commands_[static_cast<std::size_t>(looked.number) - 1], looked.command))
    return;
  Finding* const finding = told.add(
      kRepeated, looked.number, "the same command as " + std::to_string(looked.number - 1), "one of the two");
  if (!finding) return;
  if (looked.setsOnly()) {
    finding->fix = RemoveCommands{{looked.number}};
  } else {
    finding->severity = Severity::kNote;  // what acts may be meant to act twice
  }
}

// Only commands of one value are looked at: of several one may say which thing the others are set for.
void SequenceRules::setAgain(const LookedCommand& looked, Told& told) {
  if (!looked.setsOnly()) {
    standing_.clear();
    classicStanding_.clear();
    return;
  }
  if (looked.command.parameters.size() != 1 || (looked.classic && !looked.classic->oneValue)) return;
  int* earlier = nullptr;
  if (looked.classic) {
    const ClassicCommand& classic = looked.classic->command;
    const std::uint8_t codes[] = {classic.cd(), classic.co(), classic.kw()};
    std::string key(std::begin(codes), std::end(codes));
    earlier = &classicStanding_.try_emplace(key.append(looked.command.fid), -1).first->second;
  } else {
    earlier = &standing_.try_emplace(looked.command.fid, -1).first->second;
  }
  const int before = std::exchange(*earlier, looked.number);
  if (before < 0) return;
  const MacroCommand& set = commands_[static_cast<std::size_t>(before)];
  if ((goesToPanel(set) && set.workplace != looked.command.workplace) ||
      set.parameters.front().name != looked.command.parameters.front().name ||
      (before == looked.number - 1 && sameCommand(set, looked.command)))
    return;
  told.add(kSetAgain, before,
           "command " + std::to_string(looked.number) + " sets it again before anything acts",
           "one of the two");
}

}  // namespace tessaly
