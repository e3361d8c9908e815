#include <algorithm>
#include <optional>

#include "cli/Commands.h"
#include "cli/ValueCheck.h"
#include "model/Settings.h"
#include "platform/Text.h"
#include "values/EntryFilter.h"
#include "values/ParameterValue.h"
#include "values/SourceNames.h"
#include "values/Timecode.h"

namespace tessaly {
namespace {

struct ValueAnswer {
  std::string shown, stored, range;
  int beeps = 0;
};

// What is asked about one parameter: exactly one of the two texts is given.
struct ValueQuestion {
  std::optional<std::string> shown, stored;
  ValueMode mode = ValueMode::kDisplay;
};

// Answers from a filter and the two conversions of a parameter kind.
template <typename Filter, typename ToStored, typename ToShown>
ValueAnswer converted(const ValueQuestion& question, const Filter& filter, const ToStored& toStored,
                      const ToShown& toShown) {
  if (question.stored) return {toShown(*question.stored), *question.stored, {}, 0};
  const FilteredEntry entry = filter(*question.shown);
  return {entry.text, toStored(entry.text), {}, entry.beeps};
}

ValueAnswer answer(const IntegerParameter& parameter, const ValueQuestion& question) {
  const ValueMode mode = question.mode;
  ValueAnswer result = converted(
      question, [&](const std::string& typed) { return filterInteger(parameter, typed, mode); },
      [&](const std::string& shown) { return storedInteger(parameter, shown, mode); },
      [&](const std::string& stored) { return shownInteger(parameter, stored, mode); });
  result.range = rangeText(parameter, mode);
  return result;
}

ValueAnswer answer(const FloatParameter& parameter, bool incremental, const ValueQuestion& question) {
  const ValueMode mode = question.mode;
  ValueAnswer result = converted(
      question, [&](const std::string& typed) { return filterFloat(parameter, incremental, typed, mode); },
      [&](const std::string& shown) { return storedFloat(parameter, incremental, shown, mode); },
      [&](const std::string& stored) { return shownFloat(parameter, incremental, stored, mode); });
  result.range = rangeText(parameter, incremental, mode);
  return result;
}

ValueAnswer answerTimecode(CommandSession& session, const ValueQuestion& question) {
  Settings settings;
  readSettings(session.root(), settings);
  const int frameRate = question.mode == ValueMode::kRaw ? 0 : settings.frameRate;
  return converted(
      question, [&](const std::string& typed) { return filterTimecode(typed, frameRate); },
      [&](const std::string& shown) { return storedTimecode(shown, frameRate); },
      [&](const std::string& stored) { return shownTimecode(stored, question.mode); });
}

// Kinds whose values are chosen from a list: pairs of stored and shown text. Nothing when the text is not in
// it.
std::optional<ValueAnswer> answerChoice(const std::vector<EnumValue>& choices,
                                        const ValueQuestion& question) {
  const std::string& text = question.stored ? *question.stored : *question.shown;
  if (question.mode == ValueMode::kRaw) return ValueAnswer{text, text, {}, 0};
  const auto choice = std::find_if(choices.begin(), choices.end(), [&](const EnumValue& candidate) {
    return (question.stored ? candidate.value : candidate.description) == text;
  });
  if (choice == choices.end()) return std::nullopt;
  return ValueAnswer{choice->description, choice->value, {}, 0};
}

int printAnswer(CommandSession& session, const ValueAnswer& result) {
  session.field("shown", result.shown);
  session.field("stored", result.stored);
  session.field("range", result.range);
  session.field("beeps", std::to_string(result.beeps));
  return kExitDone;
}

int printChoice(CommandSession& session, const std::vector<EnumValue>& choices,
                const ValueQuestion& question) {
  if (const auto result = answerChoice(choices, question)) return printAnswer(session, *result);
  return session.failed("Unknown value: " + (question.stored ? *question.stored : *question.shown));
}

// By the name alone, or with a destination prefix in front.
std::optional<FunctionRecord> functionOf(const FunctionDictionary& dictionary, const std::string& fid) {
  if (auto function = dictionary.find(fid)) return function;
  const std::size_t dot = fid.find('.');
  return dot == std::string::npos ? std::nullopt : dictionary.find(std::string_view(fid).substr(dot + 1));
}

std::optional<std::uint32_t> packedNumber(std::string_view text) {
  const bool hexadecimal = text.starts_with("0x");
  if (hexadecimal) text.remove_prefix(2);
  return exactNumber<std::uint32_t>(text, hexadecimal ? 16 : 10);
}

}  // namespace

int runValue(CommandSession& session, Arguments& arguments) {
  ValueQuestion question;
  question.shown = arguments.option("--shown");
  question.stored = arguments.option("--stored");
  if (arguments.flag("--raw")) question.mode = ValueMode::kRaw;
  if (!arguments.complete(2, 2)) return session.wrongUsage(arguments.problem());
  if (question.shown.has_value() == question.stored.has_value()) {
    return session.wrongUsage("either --shown or --stored is needed");
  }

  const std::optional<FunctionRecord> function = functionOf(session.dictionary(), arguments[0]);
  if (!function) return session.failed("Unknown function: " + arguments[0]);
  const FunctionTemplate& definition = function->definition();
  const std::string& name = arguments[1];
  if (parameterNamed(definition.inputs, name))
    return printChoice(session, inputChoices(session.dictionary()), question);
  if (const auto* found = parameterNamed(definition.enums, name))
    return printChoice(session, found->values, question);
  if (const auto* found = parameterNamed(definition.integers, name))
    return printAnswer(session, answer(*found, question));
  if (const auto* found = parameterNamed(definition.floats, name)) {
    return printAnswer(session, answer(*found, function->incremental(), question));
  }
  if (parameterNamed(definition.timecodes, name))
    return printAnswer(session, answerTimecode(session, question));
  return session.failed("Unknown parameter: " + name);
}

int runSource(CommandSession& session, Arguments& arguments) {
  if (!arguments.complete(1, 1)) return session.wrongUsage(arguments.problem());
  const std::optional<int> number = wholeNumber(arguments[0], 0, 255);
  if (!number) return session.wrongUsage("NUMBER is 0 to 255");
  session.line(sourceName(static_cast<std::uint8_t>(*number)));
  return kExitDone;
}

int runTimecode(CommandSession& session, Arguments& arguments) {
  if (!arguments.complete(1, 1)) return session.wrongUsage(arguments.problem());
  const std::optional<std::uint32_t> packed = packedNumber(arguments[0]);
  if (!packed) return session.wrongUsage("PACKED is a 32-bit number, decimal or with 0x in front");
  const Timecode timecode = Timecode::fromPacked(*packed);
  session.field("display", timecode.display(true));
  session.field("plain", timecode.plain());
  return kExitDone;
}

}  // namespace tessaly
