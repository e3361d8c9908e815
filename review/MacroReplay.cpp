#include <algorithm>
#include <memory_resource>
#include <numeric>
#include <string>
#include <unordered_map>
#include <utility>

#include "platform/Text.h"
#include "review/ClassicEffect.h"
#include "review/CommandMeaning.h"
#include "review/EffectTold.h"
#include "review/FunctionStep.h"
#include "values/Destination.h"

namespace tessaly {
namespace {

using What = CommandEffect::What;
using Kind = ValueState::Kind;

constexpr std::string_view kClassic = ".NCSCOMMAND.";

// The mandatory parameters of a function, whatever their kind.
bool needsValue(const FunctionTemplate& function) {
  const auto any = [](const auto& parameters) {
    return std::any_of(parameters.begin(), parameters.end(), [](const auto& one) { return !one.optional; });
  };
  return any(function.enums) || any(function.integers) || any(function.floats) || any(function.inputs) ||
         any(function.timecodes);
}

// The name as the dictionary has it; null without such a parameter.
const std::string* parameterOf(const FunctionTemplate& function, std::string_view name) {
  const std::string* found = nullptr;
  const auto look = [&](const auto& parameters) {
    if (const auto* one = found ? nullptr : parameterNamed(parameters, name)) found = &one->name;
  };
  look(function.enums);
  look(function.integers);
  look(function.floats);
  look(function.inputs);
  look(function.timecodes);
  return found;
}

const MacroParameter* firstWithValue(const MacroCommand& command) {
  const auto& parameters = command.parameters;
  const auto found = std::find_if(parameters.begin(), parameters.end(),
                                  [](const MacroParameter& parameter) { return parameter.hasValue; });
  return found == parameters.end() ? nullptr : &*found;
}

}  // namespace

class MacroEffect::Replay {
 public:
  Replay(Told& told, DecodingLists& lists, const Start& start) : told_(told), lists_(lists), start_(start) {}

  void run(const MacroCommands& commands) {
    told_.effects.reserve(commands.size());
    told_.firstChanges.reserve(commands.size() + 1);
    told_.changes.reserve(commands.size());
    known_.reserve(commands.size());
    values_.reserve(commands.size());
    for (const MacroCommand& command : commands) {
      told_.firstChanges.push_back(told_.changes.size());
      told_.effects.push_back(command.classic() ? replayClassic(command) : replay(command));
    }
    told_.firstChanges.push_back(told_.changes.size());
    sortByValue();
  }

 private:
  // What the dictionary tells of a fid.
  struct Known {
    What what = What::kUntold;
    const char* why = "";
    std::optional<FunctionRecord> function = {};  // that sets the value, also of a step
    std::string sid = {};                         // until the value has its place
    int value = -1;                               // once a command has changed it
  };

  Known& known(const MacroCommand& command) {
    const auto [place, isNew] = known_.try_emplace(command.fid);
    if (isNew) place->second = look(command);
    return place->second;
  }

  [[nodiscard]] Known look(const MacroCommand& command) const {
    const auto function = told_.dictionary.find(command.functionName());
    if (!function) return {What::kUntold, "the function is not in the dictionary"};
    if (!Destination::named(command.destination())) return {What::kUntold, "its destination is unknown"};
    if (std::string sid = function->sid(); !sid.empty()) return {What::kSets, "", function, std::move(sid)};
    if (!isStep(*function)) return {What::kActs};
    auto stepped = steppedBy(told_.dictionary, *function);
    if (!stepped) return {What::kUntold, "the panel tells no value that it steps"};
    return {What::kSteps, "", stepped->setter, std::move(stepped->sid)};
  }

  CommandEffect replay(const MacroCommand& command) {
    Known& known = this->known(command);
    if (!known.function) return {known.what, known.why};
    const FunctionTemplate& function = known.function->definition();
    const MacroParameter* const parameter = firstWithValue(command);
    if (!parameter || parameter->value.empty()) {
      if (!needsValue(function)) return {What::kActs};
      return {What::kUntold, "its value is missing"};
    }
    const std::string* const name = parameterOf(function, parameter->name);
    if (!name) return {What::kUntold, "the function has no parameter " + parameter->name};
    const bool steps = known.what == What::kSteps;
    const auto step = steps ? stepOf(function, *parameter) : std::nullopt;
    if (steps && !step) return {What::kUntold, "its step is no number"};
    if (known.value < 0) known.value = valueOf(command, known, *name);
    CommandEffect effect{known.what, besides(command, *parameter)};
    ValueState after{Kind::kKnown, steps ? std::string() : parameter->value};
    if (steps) after = furtherBy(known.value, function, parameter->name, *step, effect);
    const ValueState& now = last(known.value);
    const bool so = now.kind == Kind::kKnown && after.kind == Kind::kKnown &&
                    equalInUnit(function, parameter->name, now.stored, after.stored);
    change(known.value, std::move(after), so);
    return effect;
  }

  // What else a command says, which no value tells.
  static std::string besides(const MacroCommand& command, const MacroParameter& taken) {
    std::string names;
    for (const MacroParameter& parameter : command.parameters) {
      if (&parameter == &taken || !parameter.hasValue || parameter.value.empty()) continue;
      names += (names.empty() ? "no value tells " : ", ") + parameter.name;
    }
    return names;
  }

  ValueState furtherBy(int value, const FunctionTemplate& function, const std::string& parameter, double step,
                       CommandEffect& effect) {
    const ValueState& now = last(value);
    if (now.kind != Kind::kKnown) return {Kind::kChanged, {}, now.by + step};
    auto next = stepped(function, parameter, now.stored, step);
    if (next) return {Kind::kKnown, *std::move(next)};
    effect.why = "its value was no number before";
    return {};
  }

  CommandEffect replayClassic(const MacroCommand& command) {
    const MacroParameter* const text = command.parameters.empty() ? nullptr : &command.parameters.front();
    if (!Destination::named(command.destination())) return {What::kUntold, "its destination is unknown"};
    const auto [place, isNew] = classics_.try_emplace(text ? text->value : std::string_view());
    if (isNew) place->second = classicEffect(place->first, lists_);
    const ClassicEffect& classic = place->second;
    CommandEffect effect = classic.told;
    for (const ClassicPart& part : classic.parts) {
      const int value = valueOf(command, classic, part);
      const ValueState& now = last(value);
      ValueState after{Kind::kKnown, part.bytes};
      if (part.bytes.empty() && now.kind == Kind::kKnown) {
        auto next = stepped(*classic.entry, part, now.stored);
        if (!next) effect.why = "its value was none of its list before";
        after = next ? ValueState{Kind::kKnown, *std::move(next)} : ValueState();
      } else if (part.bytes.empty()) {
        after = {Kind::kChanged, {}, now.by + static_cast<double>(part.step)};
      }
      const bool so = after.kind == Kind::kKnown && now == after;
      change(value, std::move(after), so);
    }
    return effect;
  }

  int valueOf(const MacroCommand& command, Known& known, std::string_view parameter) {
    std::string name = std::exchange(known.sid, {});
    name.insert(0, 1, '.').insert(0, command.destination());
    const auto found = values_.find(name);
    if (found != values_.end()) return found->second;
    return add({std::move(name), false}, {.function = known.function, .parameter = parameter});
  }

  int valueOf(const MacroCommand& command, const ClassicEffect& classic, const ClassicPart& part) {
    std::string name(command.destination());
    name.append(kClassic).append(format("%02x.%02x.%02x.", classic.cd, classic.co, classic.kw));
    name.append(part.chosen).append(std::to_string(part.place));
    const auto found = values_.find(name);
    if (found != values_.end()) return found->second;
    return add({std::move(name), true}, {.entry = classic.entry,
                                         .cd = classic.cd,
                                         .co = classic.co,
                                         .place = part.place,
                                         .chosenName = part.chosenName});
  }

  int add(EffectValue value, Told::Source source) {
    const int place = static_cast<int>(told_.values.size());
    if (auto known = start_ ? start_(value.name) : std::nullopt)
      source.start = {Kind::kKnown, *std::move(known)};
    values_.emplace(told_.values.emplace_back(std::move(value)).name, place);
    told_.sources.push_back(std::move(source));
    return place;
  }

  Told::Source& source(int value) { return told_.sources[static_cast<std::size_t>(value)]; }

  const ValueState& last(int value) {
    const Told::Source& of = source(value);
    return of.lastChange < 0 ? of.start : told_.changes[static_cast<std::size_t>(of.lastChange)].after;
  }

  void change(int value, ValueState after, bool soAlready) {
    // Its effect is added after it.
    const int command = static_cast<int>(told_.effects.size());
    const int before = std::exchange(source(value).lastChange, static_cast<int>(told_.changes.size()));
    told_.changes.push_back({command, value, std::move(after), soAlready, before});
  }

  void sortByValue() {
    auto& first = told_.firstOfValue;
    first.assign(told_.values.size() + 1, 0);
    for (const ValueChange& change : told_.changes) ++first[static_cast<std::size_t>(change.value) + 1];
    std::partial_sum(first.begin(), first.end(), first.begin());
    std::vector<std::size_t> next(first.begin(), first.end());
    told_.changesByValue.resize(told_.changes.size());
    for (std::size_t i = 0; i < told_.changes.size(); ++i)
      told_.changesByValue[next[static_cast<std::size_t>(told_.changes[i].value)]++] = static_cast<int>(i);
  }

  Told& told_;
  DecodingLists& lists_;
  const Start& start_;
  std::pmr::monotonic_buffer_resource memory_;                        // of the maps
  std::pmr::unordered_map<std::string_view, Known> known_{&memory_};  // by the fids of the commands
  std::pmr::unordered_map<std::string_view, ClassicEffect> classics_{&memory_};  // by their texts
  std::pmr::unordered_map<std::string_view, int> values_{&memory_};              // by their names
};

void MacroEffect::replay(const MacroCommands& commands, DecodingLists& lists, const Start& start) {
  Replay(*told_, lists, start).run(commands);
}

}  // namespace tessaly
