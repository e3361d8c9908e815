#include "cli/ValueCheck.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>

#include "platform/Text.h"
#include "values/ParameterValue.h"
#include "values/SourceNames.h"
#include "values/Timecode.h"

namespace tessaly {
namespace {

constexpr double kLastDigit = 0.000001;  // of a stored float, which is rounded
constexpr double kFixedPointMin = -2048;
constexpr double kFixedPointMax = 2047;
constexpr int kHours = 24;
constexpr int kSixty = 60;

bool within(double number, double first, double second, double slack = 0) {
  return number >= std::min(first, second) - slack && number <= std::max(first, second) + slack;
}

bool holds(const IntegerParameter& parameter, const std::string& value) {
  const auto number = exactNumber<std::int32_t>(value);
  // Equal limits are those that an interface file leaves out.
  return number && (parameter.min == parameter.max || within(*number, parameter.min, parameter.max));
}

bool holds(const FloatParameter& parameter, bool incremental, const std::string& value) {
  const auto number = exactNumber<double>(value);
  if (!number || !std::isfinite(*number)) return false;
  if (incremental) return within(*number, kFixedPointMin, kFixedPointMax);
  return parameter.min == parameter.max || within(*number, parameter.min, parameter.max, kLastDigit);
}

bool holdsTimecode(const std::string& value) {
  const Timecode timecode = Timecode::fromStored(value);
  const bool clock = timecode.hours < kHours && timecode.minutes < kSixty && timecode.seconds < kSixty;
  if (value.find(':') != value.npos)
    return clock && (value == timecode.display() || value == timecode.plain());
  const auto packed = exactNumber<std::uint32_t>(value);
  return packed && clock && timecode.packed() == *packed;
}

bool isListed(const std::vector<EnumValue>& choices, const std::string& value) {
  return choices.empty() || std::any_of(choices.begin(), choices.end(),
                                        [&](const EnumValue& choice) { return choice.value == value; });
}

std::string listOf(const std::vector<EnumValue>& choices) {
  constexpr std::size_t kMost = 12;
  std::string list;
  for (std::size_t i = 0; i < std::min(choices.size(), kMost); ++i)
    list += (i == 0 ? "one of " : ", ") + choices[i].value;
  return choices.size() > kMost ? list + " ..." : list;
}

Outcome heldOr(bool held, std::string_view parameter, const std::string& value, const std::string& can) {
  if (held) return {};
  return Failure{Failure::Kind::kNothingTaken,
                 std::string(parameter) + " cannot hold " + value + " (" + can + "); --force stores it"};
}

}  // namespace

std::vector<EnumValue> inputChoices(const FunctionDictionary& dictionary) {
  std::vector<EnumValue> choices;
  for (const PanelSource& source : inputSources(dictionary))
    choices.push_back({inputNumberText(source.panelName), source.displayName});
  return choices;
}

Outcome canHold(const FunctionDictionary& dictionary, const FunctionRecord& function,
                std::string_view parameter, const std::string& value) {
  if (value.empty()) return {};
  const FunctionTemplate& definition = function.definition();
  if (parameterNamed(definition.inputs, parameter)) {
    const std::vector<EnumValue> inputs = inputChoices(dictionary);
    return heldOr(isListed(inputs, value), parameter, value, "an input of the site: " + listOf(inputs));
  }
  if (const auto* choice = parameterNamed(definition.enums, parameter))
    return heldOr(isListed(choice->values, value), parameter, value, listOf(choice->values));
  if (const auto* whole = parameterNamed(definition.integers, parameter))
    return heldOr(holds(*whole, value), parameter, value,
                  "a whole number, " + rangeText(*whole, ValueMode::kRaw));
  if (const auto* real = parameterNamed(definition.floats, parameter)) {
    const bool incremental = function.incremental();
    return heldOr(holds(*real, incremental, value), parameter, value,
                  "a number, " + rangeText(*real, incremental, ValueMode::kRaw));
  }
  if (parameterNamed(definition.timecodes, parameter))
    return heldOr(holdsTimecode(value), parameter, value, "a packed timecode, as timecode explains it");
  return {};
}

}  // namespace tessaly
