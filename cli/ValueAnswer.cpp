#include "cli/ValueAnswer.h"

#include <algorithm>

#include "cli/ValueCheck.h"
#include "model/Settings.h"
#include "values/EntryFilter.h"

namespace tessaly {
namespace {

// Answers from a filter and the two conversions of a parameter kind.
template <typename Filter, typename ToStored, typename ToShown>
ValueAnswer converted(const AskedValues& question, const Filter& filter, const ToStored& toStored,
                      const ToShown& toShown) {
  if (question.stored) return {toShown(*question.stored), *question.stored, {}, 0};
  const FilteredEntry entry = filter(*question.shown);
  return {entry.text, toStored(entry.text), {}, entry.beeps};
}

ValueAnswer answer(const IntegerParameter& parameter, const AskedValues& question) {
  const ValueMode mode = question.mode;
  ValueAnswer result = converted(
      question, [&](const std::string& typed) { return filterInteger(parameter, typed, mode); },
      [&](const std::string& shown) { return storedInteger(parameter, shown, mode); },
      [&](const std::string& stored) { return shownInteger(parameter, stored, mode); });
  result.range = rangeText(parameter, mode);
  return result;
}

ValueAnswer answer(const FloatParameter& parameter, bool incremental, const AskedValues& question) {
  const ValueMode mode = question.mode;
  ValueAnswer result = converted(
      question, [&](const std::string& typed) { return filterFloat(parameter, incremental, typed, mode); },
      [&](const std::string& shown) { return storedFloat(parameter, incremental, shown, mode); },
      [&](const std::string& stored) { return shownFloat(parameter, incremental, stored, mode); });
  result.range = rangeText(parameter, incremental, mode);
  return result;
}

ValueAnswer answerTimecode(CommandSession& session, const AskedValues& question) {
  Settings settings;
  if (question.shown) static_cast<void>(readSettings(session.root(), settings));
  const int frameRate = question.mode == ValueMode::kRaw ? 0 : settings.frameRate;
  return converted(
      question, [&](const std::string& typed) { return filterTimecode(typed, frameRate); },
      [&](const std::string& shown) { return storedTimecode(shown, frameRate); },
      [&](const std::string& stored) { return shownTimecode(stored, question.mode); });
}

// Kinds whose values are chosen from a list: pairs of stored and shown text. Nothing when the text is not in
// it.
std::optional<ValueAnswer> answerChoice(const std::vector<EnumValue>& choices, const AskedValues& question) {
  const std::string& text = question.stored ? *question.stored : *question.shown;
  if (question.mode == ValueMode::kRaw) return ValueAnswer{text, text, {}, 0};
  const auto choice = std::find_if(choices.begin(), choices.end(), [&](const EnumValue& candidate) {
    return (question.stored ? candidate.value : candidate.description) == text;
  });
  if (choice == choices.end()) return std::nullopt;
  return ValueAnswer{choice->description, choice->value, {}, 0};
}

}  // namespace

Expected<ValueAnswer> answerValue(CommandSession& session, const FunctionRecord& function,
                                  const std::string& parameter, const AskedValues& question) {
  const FunctionTemplate& definition = function.definition();
  const auto chosen = [&](const std::vector<EnumValue>& choices) -> Expected<ValueAnswer> {
    if (auto result = answerChoice(choices, question)) return *std::move(result);
    return Failure{Failure::Kind::kNothingTaken,
                   "Unknown value: " + (question.stored ? *question.stored : *question.shown)};
  };
  if (parameterNamed(definition.inputs, parameter)) return chosen(inputChoices(session.dictionary()));
  if (const auto* found = parameterNamed(definition.enums, parameter)) return chosen(found->values);
  if (const auto* found = parameterNamed(definition.integers, parameter)) return answer(*found, question);
  if (const auto* found = parameterNamed(definition.floats, parameter))
    return answer(*found, function.incremental(), question);
  if (parameterNamed(definition.timecodes, parameter)) return answerTimecode(session, question);
  return Failure{Failure::Kind::kNothingTaken, "Unknown parameter: " + parameter};
}

}  // namespace tessaly
