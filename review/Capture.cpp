#include "review/Capture.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace tessaly {

namespace {

Capture::Obstacle obstacleOf(ValueQuestion::Kind kind) {
  switch (kind) {
    case ValueQuestion::Kind::kAsked:
      return Capture::Obstacle::kNone;
    case ValueQuestion::Kind::kClassic:
      return Capture::Obstacle::kClassic;
    case ValueQuestion::Kind::kNoDestination:
      return Capture::Obstacle::kNoDestination;
    case ValueQuestion::Kind::kNoValue:
      return Capture::Obstacle::kNoValue;
  }
  return Capture::Obstacle::kNoValue;
}

// But for the value itself.
bool sameCommand(const MacroCommand& asked, const MacroCommand& now, std::size_t parameter) {
  if (asked == now) return true;
  if (asked.fid != now.fid || asked.parameters.size() != now.parameters.size()) return false;
  MacroCommand other = now;
  other.parameters[parameter].value = asked.parameters[parameter].value;
  return other == asked;
}

}  // namespace

Capture::Capture(const Macro& macro, const std::vector<int>& commands, const FunctionDictionary& dictionary)
    : commands_(macro.sharedCommands()) {
  std::vector<int> numbers = commands;
  if (numbers.empty()) {
    numbers.resize(commands_->size());
    std::iota(numbers.begin(), numbers.end(), 0);
  }
  rows_.reserve(numbers.size());
  for (const int number : numbers) {
    if (number < 0 || static_cast<std::size_t>(number) >= commands_->size()) continue;
    rows_.push_back(rowOf(number, dictionary));
    if (rows_.back().obstacle == Obstacle::kNone) rowsByName_[rows_.back().name].push_back(rows_.size() - 1);
  }
}

Capture::Row Capture::rowOf(int number, const FunctionDictionary& dictionary) const {
  const MacroCommand& command = (*commands_)[static_cast<std::size_t>(number)];
  ValueQuestion question = valueQuestion(command, dictionary);
  Row row{.command = number, .obstacle = obstacleOf(question.kind), .name = std::move(question.name)};
  const auto taker = std::ranges::find_if(command.parameters, &MacroParameter::hasValue);
  if (taker != command.parameters.end()) {
    row.parameter = static_cast<int>(taker - command.parameters.begin());
    row.old = taker->value;
  }
  if (row.obstacle != Obstacle::kNone) return row;
  if (fidOfValue(row.name, dictionary) != command.fid)
    row.obstacle = Obstacle::kOtherFunction;
  else if (row.parameter < 0)
    row.obstacle = Obstacle::kNothingToFill;
  else
    row.state = State::kWaiting;
  return row;
}

void Capture::settle(Row& row) {
  if (row.now)
    row.state = *row.now == row.old ? State::kSame : State::kDiffers;
  else
    row.state = row.givenUp ? State::kMissing : State::kWaiting;
}

Capture::Counts Capture::counts() const {
  Counts counts;
  for (const Row& row : rows_) {
    if (row.state == State::kCannot) continue;
    ++counts.asked;
    if (row.now) ++counts.came;
    if (row.state == State::kWaiting) ++counts.waiting;
    if (row.state == State::kMissing) ++counts.missing;
    if (row.state == State::kChanged) ++counts.changed;
    if (row.state != State::kDiffers) continue;
    ++counts.differ;
    if (row.ticked) ++counts.ticked;
  }
  return counts;
}

std::vector<std::string> Capture::ask() {
  std::vector<std::string> names;
  for (Row& row : rows_) {
    if (row.state != State::kWaiting && row.state != State::kMissing) continue;
    row.givenUp = false;
    row.state = State::kWaiting;
    names.push_back(row.name);
  }
  return names;
}

void Capture::giveUp() {
  for (Row& row : rows_) {
    row.givenUp = true;
    if (row.state == State::kWaiting) row.state = State::kMissing;
  }
}

bool Capture::answer(const std::string& name, const std::string& value) {
  const auto found = rowsByName_.find(name);
  // No value is empty: a name that somebody has asked for twice is told so until its value comes.
  if (found == rowsByName_.end() || value.empty()) return false;
  bool any = false;
  for (const std::size_t number : found->second) {
    Row& row = rows_[number];
    if (row.now) continue;
    row.now = value;
    if (row.state != State::kChanged) settle(row);
    any = true;
  }
  return any;
}

bool Capture::complete() const {
  return std::ranges::all_of(rows_,
                             [](const Row& row) { return row.obstacle != Obstacle::kNone || row.now; });
}

bool Capture::tick(std::size_t row, bool on) {
  if (rows_[row].state != State::kDiffers) return false;
  rows_[row].ticked = on;
  return true;
}

void Capture::tickAll(bool on) {
  for (std::size_t row = 0; row < rows_.size(); ++row) tick(row, on);
}

void Capture::tickAs(const Capture& other) {
  for (std::size_t row = 0; row < std::min(rows_.size(), other.rows_.size()); ++row)
    rows_[row].ticked = other.rows_[row].ticked;
}

bool Capture::follow(const std::optional<Macro>& now) {
  bool any = false;
  const MacroCommands none, &commands = now ? now->commands() : none;
  for (Row& row : rows_) {
    if (row.obstacle != Obstacle::kNone) continue;
    const auto number = static_cast<std::size_t>(row.command);
    const auto parameter = static_cast<std::size_t>(row.parameter);
    const MacroCommand& asked = (*commands_)[number];
    const State before = row.state;
    const MacroCommand* const here = number < commands.size() ? &commands[number] : nullptr;
    const bool same = here != nullptr && sameCommand(asked, *here, parameter);
    const std::string* const value = same ? &here->parameters[parameter].value : nullptr;
    // What was taken over, and what was taken back again, is the same command still.
    if (value != nullptr &&
        (*value == asked.parameters[parameter].value || (row.now && *value == *row.now))) {
      row.old = *value;
      settle(row);
    } else {
      row.state = State::kChanged;
    }
    any = any || row.state != before;
  }
  return any;
}

SetValues Capture::edit() const {
  SetValues edit;
  for (const Row& row : rows_)
    if (row.state == State::kDiffers && row.ticked) edit.values.emplace_back(row.command, *row.now);
  return edit;
}

}  // namespace tessaly
