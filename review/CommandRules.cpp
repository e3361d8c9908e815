#include "review/CommandRules.h"

#include <algorithm>

#include "platform/CloseName.h"
#include "review/CommandFix.h"
#include "values/Destination.h"

namespace tessaly {
namespace {

using enum CheckRule;

constexpr int kMostWorkplaces = 8;
constexpr std::size_t kMostParameters = 64;  // no function has as many, a hostile command may have a million

// Sentences have the quotes around it.
Said of(Saying saying, std::string_view value) { return {saying, {std::string(value)}}; }

// In the order in which they are written.
template <typename Use>
void forEachParameter(const FunctionTemplate& definition, const Use& use) {
  std::for_each(definition.enums.begin(), definition.enums.end(), use);
  std::for_each(definition.integers.begin(), definition.integers.end(), use);
  std::for_each(definition.floats.begin(), definition.floats.end(), use);
  std::for_each(definition.inputs.begin(), definition.inputs.end(), use);
  std::for_each(definition.timecodes.begin(), definition.timecodes.end(), use);
}

bool hasParameter(const FunctionTemplate& definition, std::string_view name) {
  return parameterNamed(definition.enums, name) || parameterNamed(definition.integers, name) ||
         parameterNamed(definition.floats, name) || parameterNamed(definition.inputs, name) ||
         parameterNamed(definition.timecodes, name);
}

void destination(CheckKnowledge&, const LookedCommand& looked, Told& told) {
  const std::string_view name = looked.command.destination();
  if (Destination::named(name)) return;
  Finding* const finding =
      told.add(kDestination, looked.number,
               name.empty() ? Said{Saying::kDestinationMissing} : of(Saying::kDestinationUnknown, name),
               {Saying::kDestinations});
  // Two mainframes are as close to each other as either is to what was meant.
  CloseName close(name);
  for (int index = 0; index < Destination::kCount; ++index) close.offer(Destination::at(index).name());
  if (const auto meant = close.found(); finding && meant)
    finding->fix =
        withFid(looked.command, looked.number, std::string(*meant) + looked.command.fid.substr(name.size()));
}

void workplace(CheckKnowledge&, const LookedCommand& looked, Told& told) {
  if (looked.command.destination() != Destination::panel().name()) return;
  const std::string& text = looked.command.workplace;
  if (text.size() == 1 && text[0] >= '1' && text[0] <= '0' + kMostWorkplaces) return;
  told.add(kWorkplace, looked.number,
           text.empty() ? Said{Saying::kWorkplaceMissing} : of(Saying::kWorkplaceUnknown, text),
           {Saying::kWorkplaces});
}

void unknownFunction(CheckKnowledge& knowledge, const LookedCommand& looked, Told& told) {
  if (looked.function || looked.classic) return;
  const std::string_view name = looked.command.functionName();
  Finding* const finding = told.add(kUnknownFunction, looked.number, of(Saying::kNoFunction, name));
  if (!finding) return;
  finding->meant = knowledge.closeFunction(name);
  const std::string& fid = looked.command.fid;
  if (!finding->meant.empty())
    finding->fix =
        withFid(looked.command, looked.number, fid.substr(0, fid.size() - name.size()) + finding->meant);
}

void unknownParameter(CheckKnowledge&, const LookedCommand& looked, Told& told) {
  if (!looked.function) return;
  const auto& parameters = looked.command.parameters;
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    const std::string& name = parameters[i].name;
    if (hasParameter(looked.function->definition, name)) continue;
    Finding* const finding = told.add(kUnknownParameter, looked.number, of(Saying::kNoParameter, name));
    if (!finding) return;
    finding->parameter = name;
    CloseName close(name);
    forEachParameter(looked.function->definition, [&](const auto& parameter) {
      if (std::none_of(parameters.begin(), parameters.end(),
                       [&](const MacroParameter& other) { return other.name == parameter.name; }))
        close.offer(parameter.name);
    });
    finding->meant = close.found().value_or("");
    if (!finding->meant.empty())
      finding->fix = withParameterName(looked.command, looked.number, i, finding->meant);
    return;
  }
}

void parameterTwice(CheckKnowledge&, const LookedCommand& looked, Told& told) {
  const auto& parameters = looked.command.parameters;
  for (std::size_t i = 1; i < std::min(parameters.size(), kMostParameters); ++i) {
    const auto here = parameters.begin() + static_cast<std::ptrdiff_t>(i);
    if (std::none_of(parameters.begin(), here,
                     [&](const MacroParameter& earlier) { return earlier.name == here->name; }))
      continue;
    if (Finding* const finding =
            told.add(kParameterTwice, looked.number, of(Saying::kTwice, here->name), {Saying::kOnce}))
      finding->parameter = here->name;
    return;
  }
}

void emptyParameter(CheckKnowledge&, const LookedCommand& looked, Told& told) {
  if (!looked.function) return;
  const auto& stored = looked.command.parameters;
  forEachParameter(looked.function->definition, [&](const auto& parameter) {
    if (parameter.optional) return;
    const auto found = std::find_if(stored.begin(), stored.end(), [&](const MacroParameter& candidate) {
      return candidate.name == parameter.name;
    });
    if (found != stored.end() && !found->value.empty()) return;
    if (Finding* const finding =
            told.add(kEmptyParameter, looked.number,
                     of(found == stored.end() ? Saying::kMissing : Saying::kNoValue, parameter.name),
                     {Saying::kSomeValue}))
      finding->parameter = parameter.name;
  });
}

struct FaultText {
  CheckRule rule;
  Saying saying;
};

FaultText textOf(ValueFault fault) {
  switch (fault) {
    case ValueFault::kNone:
    case ValueFault::kNumber:
      return {kNumber, Saying::kNoNumber};
    case ValueFault::kLimits:
      return {kLimits, Saying::kBeyond};
    case ValueFault::kChoice:
      return {kChoice, Saying::kNoChoice};
    case ValueFault::kSource:
      return {kSource, Saying::kNoSiteSource};
    case ValueFault::kTimecode:
      return {kTimecode, Saying::kNoTimecode};
  }
  return {kNumber, Saying::kNothing};
}

// Number, limits, choice, source and timecode: a value breaks one of them at the most.
void value(CheckKnowledge& knowledge, const LookedCommand& looked, Told& told) {
  if (!looked.function) return;
  const auto& parameters = looked.command.parameters;
  for (std::size_t i = 0; i < std::min(parameters.size(), kMostParameters); ++i) {
    const ValueJudgement judgement = judge(looked.function->definition, looked.function->numbers,
                                           parameters[i].name, parameters[i].value, knowledge.bounds);
    if (judgement.fault == ValueFault::kNone) continue;
    const FaultText fault = textOf(judgement.fault);
    Finding* const finding =
        told.add(fault.rule, looked.number, of(fault.saying, parameters[i].value), judgement.can);
    if (!finding) continue;
    finding->parameter = parameters[i].name;
    if (judgement.nearest.empty()) continue;
    finding->meant = judgement.nearest;
    finding->fix = withValue(looked.command, looked.number, i, judgement.nearest);
  }
}

void classic(CheckKnowledge&, const LookedCommand& looked, Told& told) {
  if (!looked.classic) return;
  for (const ClassicFault& fault : looked.classic->faults) {
    Finding* const finding = told.add(fault.rule, looked.number, fault.wrong, fault.right);
    if (!finding) continue;
    finding->parameter = fault.parameter;
    finding->meant = fault.meant;
    if (!fault.meant.empty()) finding->fix = withValue(looked.command, looked.number, 0, fault.meant);
  }
}

constexpr CommandRule kCommandRules[] = {destination,    workplace,      unknownFunction, unknownParameter,
                                         parameterTwice, emptyParameter, value,           classic};

}  // namespace

std::span<const CommandRule> commandRules() { return kCommandRules; }

Finding* Told::add(CheckRule rule, int command, Said wrong, Said right) {
  if (off_.contains(rule)) return nullptr;
  findings_.push_back({.rule = rule,
                       .severity = infoOf(rule).severity,
                       .command = command,
                       .wrong = std::move(wrong),
                       .right = std::move(right)});
  return &findings_.back();
}

}  // namespace tessaly
