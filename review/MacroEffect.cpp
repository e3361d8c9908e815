#include "review/MacroEffect.h"

#include <algorithm>

#include "classic/ClassicGroups.h"
#include "platform/Text.h"
#include "review/ClassicEffect.h"
#include "review/CommandMeaning.h"
#include "review/EffectTold.h"
#include "review/FunctionStep.h"

namespace tessaly {
namespace {

using Kind = ValueState::Kind;

constexpr std::string_view kClassic = "NCSCOMMAND.";

}  // namespace

std::string_view EffectValue::destination() const { return std::string_view(name).substr(0, name.find('.')); }

std::string_view EffectValue::section() const {
  std::string_view rest = name;
  rest.remove_prefix(std::min(destination().size() + 1, rest.size()));
  if (!classic) return rest.substr(0, rest.find('.'));
  rest.remove_prefix(std::min(kClassic.size(), rest.size()));
  const ClassicGroup* const group = rest.size() < 2 ? nullptr : classicGroup(hexByte(rest[0], rest[1]));
  return group ? std::string_view(group->name) : rest.substr(0, 2);
}

MacroEffect::MacroEffect(const MacroCommands& commands, const LineContext& context, const Start& start)
    : told_(new Told{context.dictionary}) {
  replay(commands, context.decodingLists, start);
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

const std::deque<EffectValue>& MacroEffect::values() const { return told_->values; }

const ValueState& MacroEffect::at(int value, int step) const {
  const auto place = static_cast<std::size_t>(value);
  const auto changes =
      std::span(told_->changesByValue)
          .subspan(told_->firstOfValue[place], told_->firstOfValue[place + 1] - told_->firstOfValue[place]);
  const auto after = std::partition_point(changes.begin(), changes.end(), [&](int change) {
    return told_->changes[static_cast<std::size_t>(change)].command < step;
  });
  return after == changes.begin() ? told_->sources[place].start
                                  : told_->changes[static_cast<std::size_t>(*(after - 1))].after;
}

bool MacroEffect::equal(int value, std::string_view a, std::string_view b) const {
  const Told::Source& source = told_->sources[static_cast<std::size_t>(value)];
  return source.function ? equalInUnit(source.function->definition(), source.parameter, a, b) : a == b;
}

std::string MacroEffect::label(int value) const {
  const Told::Source& source = told_->sources[static_cast<std::size_t>(value)];
  if (source.function) return source.function->description();
  const std::string& parameter = source.entry->parameters[source.place].name;
  return groupName(source.cd, source.co) + " - " + source.entry->longName + source.chosenName +
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

std::string MacroEffect::told(int value, const ValueState& state, std::string_view changed) const {
  std::string text = shown(value, state);
  return state.kind == Kind::kChanged ? replaceAll(std::string(changed), "%1", text) : text;
}

}  // namespace tessaly
