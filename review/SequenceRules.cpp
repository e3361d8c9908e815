#include <algorithm>
#include <cstdint>
#include <iterator>
#include <utility>

#include "review/CommandRules.h"
#include "values/Destination.h"

namespace tessaly {
namespace {

using enum CheckRule;

bool sets(const ClassicCommand& command) {
  return command.does(ClassicAction::kSet) || command.does(ClassicAction::kSetAlso);
}

bool goesToPanel(const MacroCommand& command) { return command.destination() == Destination::panel().name(); }

// The fid without what is set: "QMF1.ME1.KEY1" of "QMF1.ME1.KEY1.CLIP.SET".
std::string_view stemOf(std::string_view fid) {
  for (int i = 0; i < 2; ++i) fid = fid.substr(0, std::min(fid.find_last_of('.'), fid.size()));
  return fid;
}

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
  if (!looked.function || looked.function->numbers != NumberKind::kValue || taker == looked.number ||
      taker == static_cast<int>(commands_.size()))
    return;
  if (Finding* const finding = told.add(kSpill, looked.number, {Saying::kSpills}, {Saying::kSomeParameter}))
    finding->other = taker;
}

void SequenceRules::repeated(const LookedCommand& looked, Told& told) {
  if (looked.number == 0 ||
      !sameCommand(commands_[static_cast<std::size_t>(looked.number) - 1], looked.command))
    return;
  Finding* const finding = told.add(kRepeated, looked.number, {Saying::kSameAs}, {Saying::kOneOfTwo});
  if (!finding) return;
  finding->other = looked.number - 1;
  if (looked.setsOnly()) {
    finding->fix = RemoveCommands{{looked.number}};
  } else {
    finding->severity = Severity::kNote;  // what acts may be meant to act twice
  }
}

// Only commands of one value are looked at: of several one may say which thing the others are set for, or
// have all that was set beside it stored, as a key frame does.
void SequenceRules::setAgain(const LookedCommand& looked, Told& told) {
  if (!looked.setsOnly()) {
    lastActed_ = looked.number;
    return;
  }
  const std::string_view stem = stemOf(looked.command.fid);
  if (looked.command.parameters.size() != 1 || (looked.classic && !looked.classic->oneValue)) {
    actedOn_[stem] = looked.number;
    return;
  }
  const int before = std::exchange(lastSet(looked), looked.number);
  if (before <= lastActed_) return;
  if (const auto acted = actedOn_.find(stem); acted != actedOn_.end() && before < acted->second) return;
  const MacroCommand& set = commands_[static_cast<std::size_t>(before)];
  if ((goesToPanel(set) && set.workplace != looked.command.workplace) ||
      set.parameters.front().name != looked.command.parameters.front().name ||
      (before == looked.number - 1 && sameCommand(set, looked.command)))
    return;
  if (Finding* const finding = told.add(kSetAgain, before, {Saying::kSetAgainBy}, {Saying::kOneOfTwo}))
    finding->other = looked.number;
}

int& SequenceRules::lastSet(const LookedCommand& looked) {
  constexpr int kNever = -1;
  if (!looked.classic) return set_.try_emplace(looked.command.fid, kNever).first->second;
  const ClassicCommand& classic = looked.classic->command;
  const std::uint8_t codes[] = {classic.cd(), classic.co(), classic.kw()};
  std::string key(std::begin(codes), std::end(codes));
  return classicSet_.try_emplace(key.append(looked.command.fid), kNever).first->second;
}

}  // namespace tessaly
