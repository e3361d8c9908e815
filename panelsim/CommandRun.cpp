#include "panelsim/CommandRun.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>

#include "panelsim/ClassicRun.h"
#include "platform/Text.h"
#include "values/Destination.h"

namespace tessaly {
namespace {

using Result = CommandRun::Result;

constexpr const char* kStep = "INC";
constexpr double kStepUnit = 1.0 / 1024;  // of a float's step

Result left(std::string why) { return {.values = {}, .note = "not carried out: " + std::move(why)}; }

std::vector<std::string> segmentsOf(std::string_view name) {
  std::vector<std::string> segments(1);
  for (const char character : name) {
    if (character == '.')
      segments.emplace_back();
    else
      segments.back() += character;
  }
  return segments;
}

std::string joined(const std::vector<std::string>& segments) {
  std::string name;
  for (const std::string& segment : segments) name += (name.empty() ? "" : ".") + segment;
  return name;
}

template <typename Parameters>
bool named(const Parameters& parameters, const std::string& name) {
  return parameterNamed(parameters, name) != nullptr;
}

}  // namespace

// Each family with a step among its members may be the one that the name took it from.
std::string CommandRun::steppedName(const FunctionRecord& function) const {
  std::vector<std::string> segments = segmentsOf(function.name());
  for (std::string& segment : segments) {
    if (segment != kStep) continue;
    for (const auto& [name, family] : dictionary_.enumFamilies()) {
      const auto& members = family.members;
      if (std::none_of(members.begin(), members.end(), [](const auto& one) { return one.fidText == kStep; }))
        continue;
      for (const SegmentAlternative& member : members) {
        segment = member.fidText;
        const auto other = dictionary_.find(joined(segments));
        if (other && &other->definition() == &function.definition() && !other->incremental())
          return other->sid();
      }
    }
    segment = kStep;
  }
  return {};
}

Result CommandRun::step(const FunctionTemplate& function, const std::string& name,
                        const MacroParameter& parameter) const {
  const IntegerParameter* const whole = parameterNamed(function.integers, parameter.name);
  const FloatParameter* const real = parameterNamed(function.floats, parameter.name);
  const std::string now = values_.of(name).value_or("");
  if (whole) {
    const auto from = exactNumber<std::int32_t>(now), by = exactNumber<std::int32_t>(parameter.value);
    if (!by) return left("its step is no number");
    if (!from) return left(name + " is no number");
    std::int64_t next = std::int64_t{*from} + *by;
    const auto [low, high] = std::minmax(whole->min, whole->max);
    if (low < high)
      next = std::clamp<std::int64_t>(next, low, high);
    else
      next = std::clamp<std::int64_t>(next, std::numeric_limits<std::int32_t>::min(),
                                      std::numeric_limits<std::int32_t>::max());
    return {.values = {{name, std::to_string(next)}}};
  }
  if (!real) return left("it steps no number");
  const auto from = exactNumber<double>(now), by = exactNumber<double>(parameter.value);
  if (!by || !std::isfinite(*by)) return left("its step is no number");
  if (!from || !std::isfinite(*from)) return left(name + " is no number");
  double next = *from + *by * kStepUnit;
  const auto [low, high] = std::minmax(real->min, real->max);
  if (low < high) next = std::min(std::max(next, low), high);
  return {.values = {{name, format("%f", next)}}};
}

Result CommandRun::panelStyle(const MacroCommand& command) const {
  const auto function = dictionary_.find(command.functionName());
  if (!function) return left("no such function");
  std::string name = function->sid();
  const bool steps = name.empty();
  if (steps) {
    const auto segments = segmentsOf(function->name());
    if (std::find(segments.begin(), segments.end(), kStep) == segments.end()) return {.note = "acts"};
    name = steppedName(*function);
    if (name.empty()) return left("nothing sets what it steps");
  }
  const auto& given = command.parameters;
  const auto parameter =
      std::find_if(given.begin(), given.end(), [](const auto& one) { return one.hasValue; });
  if (parameter == given.end() || parameter->value.empty()) return {.note = "acts"};
  const FunctionTemplate& known = function->definition();
  if (!named(known.enums, parameter->name) && !named(known.integers, parameter->name) &&
      !named(known.floats, parameter->name) && !named(known.inputs, parameter->name) &&
      !named(known.timecodes, parameter->name))
    return left("no parameter " + parameter->name);
  name.insert(0, std::string(command.destination()) + '.');
  return steps ? step(known, name, *parameter) : Result{.values = {{name, parameter->value}}};
}

Result CommandRun::classic(const MacroCommand& command) const {
  const std::string text = command.parameters.empty() ? std::string() : command.parameters.front().value;
  return runClassic(std::string(command.destination()) + ".NCSCOMMAND.", text, lists_,
                    [this](const std::string& name) { return values_.of(name); });
}

Result CommandRun::carryOut(const MacroCommand& command) {
  if (!Destination::ofFid(command.fid)) return left("no such destination");
  Result result = command.classic() ? classic(command) : panelStyle(command);
  for (const auto& [name, value] : result.values) values_.set(name, value);
  return result;
}

}  // namespace tessaly
