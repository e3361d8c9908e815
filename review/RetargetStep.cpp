#include "review/RetargetStep.h"

#include <utility>

#include "platform/Text.h"
#include "review/ClassicFacts.h"
#include "review/CommandMeaning.h"
#include "review/NamedSources.h"
#include "review/RetargetClassic.h"
#include "values/Destination.h"

namespace tessaly {
namespace {

constexpr char kMostWorkplaces = '8';
constexpr int kMostClassicSources = 255;  // that number marks an extended input

Failure wrong(std::string text) { return {Failure::Kind::kNothingTaken, std::move(text)}; }
Failure nothingChanges() { return wrong("what takes the place is what is there"); }

// A mainframe, or a workplace of the panel.
struct Goal {
  std::string mainframe, workplace;  // "QMF2", "3"; one of them is empty
  friend bool operator==(const Goal&, const Goal&) = default;
};

// "QMF2", "Mainframe 2", "Panel/Workplace3", "workplace 3", whatever the case.
std::optional<Goal> goalNamed(std::string_view text) {
  const std::string name = replaceAll(toUpperAscii(text), " ", "");
  std::string_view rest = name;
  const auto numbered = [&](std::string_view word, char most) {
    return rest.size() == word.size() + 1 && rest.starts_with(word) && rest.back() >= '1' &&
           rest.back() <= most;
  };
  constexpr char kMostMainframes = '0' + Destination::kMainframes;
  if (numbered("QMF", kMostMainframes) || numbered("MAINFRAME", kMostMainframes))
    return Goal{std::string("QMF") + rest.back(), {}};
  if (constexpr std::string_view kPanel = "PANEL/"; rest.starts_with(kPanel))
    rest.remove_prefix(kPanel.size());
  if (numbered("WORKPLACE", kMostWorkplaces)) return Goal{{}, std::string(1, rest.back())};
  return std::nullopt;
}

class DestinationStep final : public RetargetStep {
 public:
  DestinationStep(Goal from, Goal to) : from_(std::move(from)), to_(std::move(to)) {}

  std::optional<RetargetedCommand> change(const MacroCommand& command) override {
    if (from_.mainframe.empty()) {
      if (command.destination() != Destination::panel().name() || command.workplace != from_.workplace)
        return std::nullopt;
      RetargetedCommand changed{command, {}};
      changed.after.workplace = to_.workplace;
      return changed;
    }
    if (command.destination() != from_.mainframe) return std::nullopt;
    RetargetedCommand changed{command, {}};
    changed.after.fid.replace(0, from_.mainframe.size(), to_.mainframe);
    return changed;
  }

 private:
  Goal from_, to_;
};

class SourceStep final : public RetargetStep {
 public:
  SourceStep(NamedSources from, NamedSources to, const LineContext& context)
      : from_(std::move(from)), to_(std::move(to)), context_(context) {}

  std::optional<RetargetedCommand> change(const MacroCommand& command) override {
    if (command.classic()) return changeClassic(command);
    RetargetedCommand changed{command, {}};
    std::optional<FunctionRecord> function;
    bool found = false;
    for (MacroParameter& parameter : changed.after.parameters) {
      if (!parameter.hasValue || !from_.panel.contains(parameter.value)) continue;
      if (!function) function = context_.dictionary.find(command.functionName());
      if (!function || !parameterNamed(function->definition().inputs, parameter.name)) continue;
      if (to_.panel.empty()) return RetargetedCommand{command, "only classic commands have that source"};
      parameter.value = *to_.panel.begin();
      found = true;
    }
    return found ? std::optional(std::move(changed)) : std::nullopt;
  }

 private:
  std::optional<RetargetedCommand> changeClassic(const MacroCommand& command) {
    const auto classic = ClassicInMacro::of(command);
    if (!classic) return std::nullopt;
    const ClassicCommand& old = classic->command();
    std::vector<std::uint8_t> bytes(old.parameters().begin(), old.parameters().end());
    bool found = false;
    const auto number = wholeNumber(*to_.classic.begin(), 0, kMostClassicSources - 1);
    for (const std::size_t place : classicSourcePlaces(old, context_.decodingLists)) {
      if (!from_.classic.contains(std::to_string(bytes[place]))) continue;
      found = true;
      bytes[place] = static_cast<std::uint8_t>(number.value_or(0));
    }
    if (!found) return std::nullopt;
    if (!number) return RetargetedCommand{command, "a classic command has sources from 0 to 254"};
    return classic->with(old.cd(), old.co(), bytes);
  }

  NamedSources from_, to_;  // `to_` one number of each at most, and a classic one always
  LineContext context_;
};

class ValueStep final : public RetargetStep {
 public:
  ValueStep(const RetargetRule& rule, const LineContext& context)
      : parameter_(rule.parameter), from_(rule.from), to_(rule.to), context_(context) {}

  std::optional<RetargetedCommand> change(const MacroCommand& command) override {
    if (command.classic()) return std::nullopt;
    const auto function = context_.dictionary.find(command.functionName());
    const FunctionTemplate* const definition = function ? &function->definition() : nullptr;
    RetargetedCommand changed{command, {}};
    bool found = false;
    for (MacroParameter& parameter : changed.after.parameters) {
      if (!parameter.hasValue || !(parameter_.empty() || equalNoCase(parameter_, parameter.name))) continue;
      std::string held, wanted;
      appendComparedValue(held, definition, parameter.name, parameter.value);
      appendComparedValue(wanted, definition, parameter.name, from_);
      if (held != wanted || parameter.value == to_) continue;
      parameter.value = to_;
      found = true;
    }
    return found ? std::optional(std::move(changed)) : std::nullopt;
  }

 private:
  std::string parameter_, from_, to_;
  LineContext context_;
};

// The numbers of a source that a rule names.
Expected<NamedSources> numbersOf(const std::string& text, const FunctionDictionary& dictionary) {
  if (text.find('*') != text.npos) return wrong("a rule names its sources without \"*\"");
  auto numbers = sourcesNamed(toUpperAscii(text), dictionary);
  if (numbers.classic.empty()) return wrong("there is no source \"" + beginningOf(text, 40) + '"');
  return numbers;
}

}  // namespace

Expected<std::unique_ptr<RetargetStep>> destinationStep(const RetargetRule& rule) {
  Goal goals[2];
  for (const auto& [text, goal] : {std::pair(&rule.from, &goals[0]), std::pair(&rule.to, &goals[1])}) {
    auto named = goalNamed(*text);
    if (!named)
      return wrong('"' + beginningOf(*text, 40) +
                   "\" is neither a mainframe (QMF1 to QMF4) nor a workplace (Panel/Workplace1 to 8)");
    *goal = *std::move(named);
  }
  if (goals[0] == goals[1]) return nothingChanges();
  if (goals[0].mainframe.empty() != goals[1].mainframe.empty())
    return wrong("a mainframe gives way to a mainframe, and a workplace to a workplace");
  return std::unique_ptr<RetargetStep>(
      std::make_unique<DestinationStep>(std::move(goals[0]), std::move(goals[1])));
}

Expected<std::unique_ptr<RetargetStep>> sourceStep(const RetargetRule& rule, const LineContext& context) {
  auto from = numbersOf(rule.from, context.dictionary);
  if (!from) return from.failure();
  const auto to = numbersOf(rule.to, context.dictionary);
  if (!to) return to.failure();
  if (to->panel.size() > 1 || to->classic.size() > 1)
    return wrong('"' + beginningOf(rule.to, 40) + "\" is the name of several sources; give the number");
  for (const std::string& number : to->panel) from->panel.erase(number);
  for (const std::string& number : to->classic) from->classic.erase(number);
  if (from->panel.empty() && from->classic.empty()) return nothingChanges();
  return std::unique_ptr<RetargetStep>(std::make_unique<SourceStep>(*std::move(from), *to, context));
}

std::unique_ptr<RetargetStep> valueStep(const RetargetRule& rule, const LineContext& context) {
  return std::make_unique<ValueStep>(rule, context);
}

Expected<std::unique_ptr<RetargetStep>> RetargetStep::make(const RetargetRule& rule,
                                                           const LineContext& context) {
  if (rule.from.empty()) return wrong("what is to be replaced is empty");
  if (rule.to.empty()) return wrong("what is to take its place is empty");
  if (rule.from == rule.to) return nothingChanges();
  switch (rule.kind) {
    case RetargetRule::Kind::kDestination:
      return destinationStep(rule);
    case RetargetRule::Kind::kSegment:
      return segmentStep(rule, context);
    case RetargetRule::Kind::kSource:
      return sourceStep(rule, context);
    case RetargetRule::Kind::kValue:
      return valueStep(rule, context);
  }
  return nothingChanges();
}

}  // namespace tessaly
