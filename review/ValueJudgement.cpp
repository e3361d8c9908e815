#include "review/ValueJudgement.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <optional>

#include "platform/CloseName.h"
#include "platform/Text.h"
#include "review/FunctionStep.h"
#include "values/ParameterValue.h"
#include "values/SourceNames.h"

namespace tessaly {
namespace {

constexpr double kLastDigit = 0.000001;  // of a stored float, which is rounded
constexpr double kFixedPointMin = -2048;
constexpr double kFixedPointMax = 2047;
constexpr int kHours = 24;
constexpr int kSixty = 60;

enum class Reading { kWhole, kBeyond, kNone };

template <typename Number>
Reading readWhole(std::string_view text, Number& number) {
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (stop != end || error == std::errc::invalid_argument) return Reading::kNone;
  return error == std::errc() ? Reading::kWhole : Reading::kBeyond;
}

// As few digits as give the limit back.
std::string realText(double limit) {
  char digits[32];
  return {digits, std::to_chars(digits, digits + sizeof digits, limit).ptr};
}

ValueJudgement judgeInteger(const IntegerParameter& parameter, bool step, const std::string& value) {
  const bool bound = !step && parameter.min != parameter.max;
  const std::int64_t low = bound ? std::min(parameter.min, parameter.max) : INT32_MIN;
  const std::int64_t high = bound ? std::max(parameter.min, parameter.max) : INT32_MAX;
  const auto range = [&] {
    const auto text = [](std::int64_t limit) { return std::to_string(limit); };
    return Said{Saying::kWholeNumber, {"min: " + text(low) + "   max: " + text(high)}};
  };
  std::int64_t number = 0;
  const Reading reading = readWhole(value, number);
  if (reading == Reading::kNone) return {ValueFault::kNumber, range()};
  if (reading == Reading::kWhole && number >= low && number <= high) return {};
  const bool below = reading == Reading::kWhole ? number < low : value.starts_with('-');
  return {ValueFault::kLimits, range(), std::to_string(below ? low : high)};
}

ValueJudgement judgeFloat(const FloatParameter& parameter, bool incremental, const std::string& value) {
  const auto range = [&] {
    return Said{Saying::kNumber, {rangeText(parameter, incremental, ValueMode::kRaw)}};
  };
  double number = 0;
  const Reading reading = readWhole(value, number);
  if (reading == Reading::kNone || (reading == Reading::kWhole && !std::isfinite(number)))
    return {ValueFault::kNumber, range()};
  if (reading == Reading::kBeyond) return {ValueFault::kLimits, range()};
  if (!incremental && parameter.min == parameter.max) return {};
  const auto [low, high] =
      incremental ? std::pair(kFixedPointMin, kFixedPointMax)
                  : std::pair(std::min(parameter.min, parameter.max), std::max(parameter.min, parameter.max));
  const double slack = incremental ? 0 : kLastDigit;
  if (number >= low - slack && number <= high + slack) return {};
  return {ValueFault::kLimits, range(), realText(number < low ? low : high)};
}

ValueJudgement judgeChoice(const EnumParameter& parameter, const std::string& value) {
  const std::vector<EnumValue>& choices = parameter.values;
  if (choices.empty() || std::any_of(choices.begin(), choices.end(),
                                     [&](const EnumValue& choice) { return choice.value == value; }))
    return {};
  constexpr std::size_t kMost = 12;
  std::string first;
  CloseName close(value);
  for (std::size_t i = 0; i < choices.size(); ++i) {
    close.offer(choices[i].value);
    if (i < kMost) first += (i == 0 ? "" : ", ") + choices[i].value;
  }
  const bool number =
      exactNumber<double>(value).has_value();  // no misspelt one: every code is as far from it
  return {ValueFault::kChoice,
          {choices.size() > kMost ? Saying::kOneOfAndMore : Saying::kOneOf, {std::move(first)}},
          std::string(number ? "" : close.found().value_or(""))};
}

ValueJudgement judgeTimecode(const std::string& value, int frameRate) {
  const Timecode timecode = Timecode::fromStored(value);
  const bool text = value.find(':') != value.npos;
  std::uint32_t packed = 0;
  const bool spelled = text ? value == timecode.display() || value == timecode.plain()
                            : readWhole(value, packed) == Reading::kWhole && timecode.packed() == packed;
  if (spelled && onTheClock(timecode, frameRate)) return {};
  ValueJudgement judgement{ValueFault::kTimecode, {Saying::kTimecode}, {}};
  if (frameRate > 0) judgement.can = {Saying::kTimecodeAtRate, {std::to_string(frameRate)}};
  if (!spelled || !onTheClock(timecode, 0)) return judgement;
  Timecode last = timecode;
  last.frames = static_cast<std::uint8_t>(frameRate - 1);
  judgement.nearest = text ? value == timecode.display() ? last.display() : last.plain() : last.stored();
  return judgement;
}

}  // namespace

NumberKind numberKindOf(const FunctionRecord& function) {
  if (!function.incremental()) return NumberKind::kValue;
  return isStep(function) ? NumberKind::kStep : NumberKind::kFixedPoint;
}

std::unordered_set<std::string> ValueBounds::inputsOf(const FunctionDictionary& dictionary) {
  std::unordered_set<std::string> numbers;
  for (const PanelSource& source : inputSources(dictionary))
    numbers.insert(inputNumberText(source.panelName));
  return numbers;
}

bool onTheClock(const Timecode& timecode, int frameRate) {
  return timecode.hours < kHours && timecode.minutes < kSixty && timecode.seconds < kSixty &&
         (frameRate <= 0 || timecode.frames < frameRate);
}

ValueJudgement judge(const FunctionTemplate& function, NumberKind kind, std::string_view parameter,
                     const std::string& value, const ValueBounds& bounds) {
  if (value.empty()) return {};
  if (parameterNamed(function.inputs, parameter)) {
    if (bounds.inputs.empty() || bounds.inputs.contains(value)) return {};
    const auto& inputs = bounds.inputs;
    return {ValueFault::kSource, {Saying::kSuchInput, {*std::min_element(inputs.begin(), inputs.end())}}};
  }
  if (const auto* choice = parameterNamed(function.enums, parameter)) return judgeChoice(*choice, value);
  if (const auto* whole = parameterNamed(function.integers, parameter))
    return judgeInteger(*whole, kind == NumberKind::kStep, value);
  if (const auto* real = parameterNamed(function.floats, parameter))
    return judgeFloat(*real, kind != NumberKind::kValue, value);
  if (parameterNamed(function.timecodes, parameter)) return judgeTimecode(value, bounds.frameRate);
  return {};
}

}  // namespace tessaly
