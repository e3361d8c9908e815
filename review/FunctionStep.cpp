#include "review/FunctionStep.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include "platform/FixedPoint.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

constexpr std::string_view kIncrement = "INC";
constexpr double kFixedPointOne = 1024;  // a step of a float travels as value × 1024
constexpr std::string_view kPercent = "%";
constexpr std::string_view kDegree = "[\xC2\xB0]";

// Of a step in the unit of what is sent, in that of what is shown.
template <typename Parameter>
double shownUnits(const Parameter& parameter, double step) {
  const double span = static_cast<double>(parameter.max) - parameter.min;
  return span == 0 ? step : step * (static_cast<double>(parameter.maxDisplay) - parameter.minDisplay) / span;
}

std::string_view unitOf(FloatUnit unit) {
  switch (unit) {
    case FloatUnit::kNone:
      return {};
    case FloatUnit::kPercent:
      return kPercent;
    case FloatUnit::kDegree:
      return kDegree;
  }
  return {};
}

}  // namespace

bool isStep(const FunctionRecord& function) {
  std::string_view rest = function.name();
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find('.'), rest.size());
    if (rest.substr(0, end) == kIncrement) return true;
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return false;
}

std::optional<SteppedValue> steppedBy(const FunctionDictionary& dictionary, const FunctionRecord& step) {
  const std::string_view name = step.name(), pattern = step.definition().name;
  std::size_t at = 0, patternAt = 0;
  std::string other;
  while (at <= name.size() && patternAt <= pattern.size()) {
    const std::size_t end = std::min(name.find('.', at), name.size());
    const std::size_t patternEnd = std::min(pattern.find('.', patternAt), pattern.size());
    const std::string_view family = pattern.substr(patternAt, patternEnd - patternAt);
    const EnumFamily* const members = name.substr(at, end - at) == kIncrement && family.starts_with('$')
                                          ? dictionary.enumFamily(family.substr(1))
                                          : nullptr;
    for (std::size_t i = 0; members && i < members->members.size(); ++i) {
      const auto found =
          dictionary.find(other.assign(name).replace(at, end - at, members->members[i].fidText));
      if (!found || &found->definition() != &step.definition()) continue;
      if (std::string sid = found->sid(); !sid.empty()) return SteppedValue{*found, std::move(sid)};
    }
    at = end + 1;
    patternAt = patternEnd + 1;
  }
  return std::nullopt;
}

std::optional<double> stepOf(const FunctionTemplate& function, const MacroParameter& parameter) {
  if (parameterNamed(function.integers, parameter.name)) {
    const auto number = exactNumber<std::int32_t>(parameter.value);
    return number ? std::optional<double>(*number) : std::nullopt;
  }
  if (!parameterNamed(function.floats, parameter.name)) return std::nullopt;
  const auto number = exactNumber<double>(parameter.value);
  return number && std::isfinite(*number) ? std::optional(*number / kFixedPointOne) : std::nullopt;
}

std::optional<std::string> stepped(const FunctionTemplate& function, std::string_view parameter,
                                   std::string_view stored, double step) {
  if (const auto* whole = parameterNamed(function.integers, parameter)) {
    const auto number = exactNumber<std::int32_t>(stored);
    if (!number) return std::nullopt;
    const bool bound = whole->min != whole->max;
    const double low = bound ? std::min(whole->min, whole->max) : std::numeric_limits<std::int32_t>::min();
    const double high = bound ? std::max(whole->min, whole->max) : std::numeric_limits<std::int32_t>::max();
    return fixedPoint(std::clamp(*number + step, low, high), 0);
  }
  const auto* const real = parameterNamed(function.floats, parameter);
  const auto number = exactNumber<double>(stored);
  if (!real || !number || !std::isfinite(*number)) return std::nullopt;
  double value = *number + step;
  if (real->min != real->max)
    value = std::clamp(value, std::min(real->min, real->max), std::max(real->min, real->max));
  return fixedPoint(value, 6);
}

std::string shownStep(const FunctionTemplate& function, std::string_view parameter, double step) {
  const auto* const whole = parameterNamed(function.integers, parameter);
  if (whole && whole->scaled) return format("%+0.1f", shownUnits(*whole, step)).append(kPercent);
  const auto* const real = parameterNamed(function.floats, parameter);
  if (!real) return format("%+.0f", step);
  return format("%+0.1f", shownUnits(*real, step)).append(unitOf(real->unit));
}

}  // namespace tessaly
