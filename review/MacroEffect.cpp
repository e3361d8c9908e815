#include "review/MacroEffect.h"

#include <algorithm>
#include <cstdint>
#include <unordered_map>
#include <utility>

#include "classic/ClassicGroups.h"
#include "platform/Text.h"
#include "review/ClassicEffect.h"
#include "review/CommandMeaning.h"
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

bool hasParameter(const FunctionTemplate& function, std::string_view name) {
  return parameterNamed(function.enums, name) || parameterNamed(function.integers, name) ||
         parameterNamed(function.floats, name) || parameterNamed(function.inputs, name) ||
         parameterNamed(function.timecodes, name);
}

const MacroParameter* firstWithValue(const MacroCommand& command) {
  const auto& parameters = command.parameters;
  const auto found = std::find_if(parameters.begin(), parameters.end(),
                                  [](const MacroParameter& parameter) { return parameter.hasValue; });
  return found == parameters.end() ? nullptr : &*found;
}

bool equalInUnit(const FunctionTemplate& function, std::string_view parameter, std::string_view a,
                 std::string_view b) {
  if (a == b) return true;
  std::string first, second;
  appendComparedValue(first, &function, parameter, a);
  appendComparedValue(second, &function, parameter, b);
  return first == second;
}

}  // namespace

struct MacroEffect::Told {
  // What a value is shown by: the function or the entry that changed it first.
  struct Source {
    std::optional<FunctionRecord> function = {};
    std::string parameter = {};
    std::shared_ptr<const KeywordEntry> entry = {};
    std::uint8_t cd = 0, co = 0;
    std::size_t place = 0;  // in the entry
    ValueState start = {};
    std::vector<int> changes = {};
  };

  const FunctionDictionary& dictionary;
  std::vector<CommandEffect> effects = {};
  std::vector<std::size_t> firstChanges = {};  // of each command, and the end
  std::vector<ValueChange> changes = {};
  std::vector<EffectValue> values = {};
  std::vector<Source> sources = {};  // of each value
};

class MacroEffect::Replay {
 public:
  Replay(Told& told, DecodingLists& lists, const Start& start) : told_(told), lists_(lists), start_(start) {}

  void run(const MacroCommands& commands) {
    told_.effects.reserve(commands.size());
    told_.firstChanges.reserve(commands.size() + 1);
    told_.changes.reserve(commands.size());
    for (const MacroCommand& command : commands) {
      told_.firstChanges.push_back(told_.changes.size());
      told_.effects.push_back(command.classic() ? replayClassic(command) : replay(command));
    }
    told_.firstChanges.push_back(told_.changes.size());
  }

 private:
  // What the dictionary tells of a fid.
  struct Known {
    CommandEffect effect;
    std::optional<FunctionRecord> function = {};  // that sets the value, also of a step
    int value = -1;                               // once a command has changed it
  };

  Known& known(const MacroCommand& command) {
    const auto [place, isNew] = known_.try_emplace(command.fid);
    if (isNew) place->second = look(command);
    return place->second;
  }

  [[nodiscard]] Known look(const MacroCommand& command) const {
    const auto function = told_.dictionary.find(command.functionName());
    if (!function) return {{What::kUntold, "the function is not in the dictionary"}};
    if (!Destination::named(command.destination())) return {{What::kUntold, "its destination is unknown"}};
    if (!function->incremental()) return {{What::kSets}, function};
    if (!isStep(*function)) return {{What::kActs}};
    const auto setter = setterOf(told_.dictionary, *function);
    if (!setter) return {{What::kUntold, "the panel tells no value that it steps"}};
    return {{What::kSteps}, setter};
  }

  CommandEffect replay(const MacroCommand& command) {
    Known& known = this->known(command);
    if (!known.function) return known.effect;
    const FunctionTemplate& function = known.function->definition();
    const MacroParameter* const parameter = firstWithValue(command);
    if (!parameter || parameter->value.empty()) {
      if (!needsValue(function)) return {What::kActs};
      return {What::kUntold, "its value is missing"};
    }
    if (!hasParameter(function, parameter->name))
      return {What::kUntold, "the function has no parameter " + parameter->name};
    const bool steps = known.effect.what == What::kSteps;
    const auto step = steps ? stepOf(function, *parameter) : std::nullopt;
    if (steps && !step) return {What::kUntold, "its step is no number"};
    if (known.value < 0) known.value = valueOf(command, *known.function, *parameter);
    CommandEffect effect{known.effect.what, besides(command, *parameter)};
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

  int valueOf(const MacroCommand& command, const FunctionRecord& setter, const MacroParameter& parameter) {
    std::string name(command.destination());
    name.append(1, '.').append(setter.sid());
    const auto [place, isNew] = values_.try_emplace(std::move(name), told_.values.size());
    if (isNew) add({place->first, false}, {.function = setter, .parameter = parameter.name});
    return static_cast<int>(place->second);
  }

  int valueOf(const MacroCommand& command, const ClassicEffect& classic, const ClassicPart& part) {
    std::string name(command.destination());
    name.append(kClassic).append(
        format("%02x.%02x.%02x.%d", classic.cd, classic.co, classic.kw, static_cast<int>(part.place)));
    const auto [place, isNew] = values_.try_emplace(std::move(name), told_.values.size());
    if (isNew)
      add({place->first, true},
          {.entry = classic.entry, .cd = classic.cd, .co = classic.co, .place = part.place});
    return static_cast<int>(place->second);
  }

  void add(EffectValue value, Told::Source source) {
    if (auto known = start_ ? start_(value.name) : std::nullopt)
      source.start = {Kind::kKnown, *std::move(known)};
    told_.values.push_back(std::move(value));
    told_.sources.push_back(std::move(source));
  }

  Told::Source& source(int value) { return told_.sources[static_cast<std::size_t>(value)]; }

  const ValueState& last(int value) {
    const Told::Source& of = source(value);
    return of.changes.empty() ? of.start : told_.changes[static_cast<std::size_t>(of.changes.back())].after;
  }

  void change(int value, ValueState after, bool soAlready) {
    std::vector<int>& changes = source(value).changes;
    const int before = changes.empty() ? -1 : changes.back();
    changes.push_back(static_cast<int>(told_.changes.size()));
    // Its effect is added after it.
    const int command = static_cast<int>(told_.effects.size());
    told_.changes.push_back({command, value, std::move(after), soAlready, before});
  }

  Told& told_;
  DecodingLists& lists_;
  const Start& start_;
  std::unordered_map<std::string_view, Known> known_;             // by the fids of the commands
  std::unordered_map<std::string_view, ClassicEffect> classics_;  // by their texts
  std::unordered_map<std::string, std::size_t> values_;
};

std::string_view EffectValue::destination() const { return std::string_view(name).substr(0, name.find('.')); }

std::string_view EffectValue::section() const {
  std::string_view rest = name;
  rest.remove_prefix(std::min(destination().size() + 1, rest.size()));
  if (!classic) return rest.substr(0, rest.find('.'));
  const std::size_t code = kClassic.size() - 1;
  const ClassicGroup* const group =
      rest.size() < code + 2 ? nullptr : classicGroup(hexByte(rest[code], rest[code + 1]));
  return group ? std::string_view(group->name) : rest.substr(std::min(code, rest.size()), 2);
}

MacroEffect::MacroEffect(const MacroCommands& commands, const LineContext& context, const Start& start)
    : told_(new Told{context.dictionary}) {
  Replay(*told_, context.decodingLists, start).run(commands);
}

MacroEffect::~MacroEffect() = default;
MacroEffect::MacroEffect(MacroEffect&&) noexcept = default;
MacroEffect& MacroEffect::operator=(MacroEffect&&) noexcept = default;

int MacroEffect::commandCount() const { return static_cast<int>(told_->effects.size()); }

const CommandEffect& MacroEffect::effect(int command) const {
  return told_->effects[static_cast<std::size_t>(command)];
}

std::span<const ValueChange> MacroEffect::changes(int command) const {
  const auto place = static_cast<std::size_t>(command);
  const std::size_t first = told_->firstChanges[place];
  return std::span(told_->changes).subspan(first, told_->firstChanges[place + 1] - first);
}

const ValueState& MacroEffect::before(const ValueChange& change) const {
  return change.before < 0 ? told_->sources[static_cast<std::size_t>(change.value)].start
                           : told_->changes[static_cast<std::size_t>(change.before)].after;
}

const std::vector<EffectValue>& MacroEffect::values() const { return told_->values; }

const ValueState& MacroEffect::at(int value, int step) const {
  const Told::Source& source = told_->sources[static_cast<std::size_t>(value)];
  const auto after = std::partition_point(source.changes.begin(), source.changes.end(), [&](int change) {
    return told_->changes[static_cast<std::size_t>(change)].command < step;
  });
  return after == source.changes.begin() ? source.start
                                         : told_->changes[static_cast<std::size_t>(*(after - 1))].after;
}

std::string MacroEffect::label(int value) const {
  const Told::Source& source = told_->sources[static_cast<std::size_t>(value)];
  if (source.function) return source.function->description();
  const std::string& parameter = source.entry->parameters[source.place].name;
  return groupName(source.cd, source.co) + " - " + source.entry->longName +
         (parameter.empty() ? "" : " - " + parameter);
}

std::string MacroEffect::shown(int value, std::string_view stored) const {
  const Told::Source& source = told_->sources[static_cast<std::size_t>(value)];
  if (source.function) return shownValue(*source.function, source.parameter, stored, told_->dictionary);
  return shownClassic(*source.entry, source.place, stored);
}

std::string MacroEffect::shown(int value, const ValueState& state) const {
  if (state.kind == Kind::kUnknown) return {};
  if (state.kind == Kind::kKnown) return shown(value, state.stored);
  const Told::Source& source = told_->sources[static_cast<std::size_t>(value)];
  return source.function ? shownStep(source.function->definition(), source.parameter, state.by)
                         : format("%+.0f", state.by);
}

}  // namespace tessaly
