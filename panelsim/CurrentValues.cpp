#include "panelsim/CurrentValues.h"

#include <algorithm>
#include <cstdint>

#include "platform/Text.h"
#include "values/Destination.h"
#include "values/Timecode.h"

namespace tessaly {
namespace {

constexpr std::uint64_t kFloatSteps = 1000;
constexpr std::uint64_t kInputs = 96;
constexpr const char* kWithoutParameter = "0";

// A number that looks like chance and is the same for a name on every machine and in every run.
std::uint64_t scattered(std::string_view text) {
  std::uint64_t value = 0xcbf29ce484222325U;
  for (const char character : text) {
    value = (value ^ static_cast<unsigned char>(character)) * 0x100000001b3U;
  }
  return value ^ (value >> 29);
}

std::string integerValue(const IntegerParameter& parameter, std::uint64_t chance) {
  const std::int64_t span = std::max<std::int64_t>(std::int64_t{parameter.max} - parameter.min, 0);
  return std::to_string(parameter.min +
                        static_cast<std::int64_t>(chance % (static_cast<std::uint64_t>(span) + 1)));
}

std::string floatValue(const FloatParameter& parameter, std::uint64_t chance) {
  const double part = static_cast<double>(chance % (kFloatSteps + 1)) / kFloatSteps;
  return format("%f", parameter.min + std::max(parameter.max - parameter.min, 0.0) * part);
}

std::string timecodeValue(std::uint64_t chance) {
  const auto part = [&chance](std::uint64_t count) {
    const auto digits = static_cast<std::uint8_t>(chance % count);
    chance /= count;
    return digits;
  };
  return Timecode{.hours = part(24), .minutes = part(60), .seconds = part(60), .frames = part(25)}.stored();
}

std::string valueOf(const EnumParameter& parameter, std::uint64_t chance) {
  const auto& values = parameter.values;
  return values.empty() ? kWithoutParameter : values[chance % values.size()].value;
}
std::string valueOf(const IntegerParameter& parameter, std::uint64_t chance) {
  return integerValue(parameter, chance);
}
std::string valueOf(const FloatParameter& parameter, std::uint64_t chance) {
  return floatValue(parameter, chance);
}
std::string valueOf(const InputParameter&, std::uint64_t chance) {
  return std::to_string(1 + chance % kInputs);
}
std::string valueOf(const TimecodeParameter&, std::uint64_t chance) { return timecodeValue(chance); }

// Of the first mandatory parameter, else of the first optional one.
std::string valueFor(const FunctionTemplate& function, std::uint64_t chance) {
  std::optional<std::string> value;
  const auto look = [&](const auto& parameters, bool optional) {
    for (const auto& parameter : parameters)
      if (!value && parameter.optional == optional) value = valueOf(parameter, chance);
  };
  for (const bool optional : {false, true}) {
    look(function.enums, optional);
    look(function.integers, optional);
    look(function.floats, optional);
    look(function.inputs, optional);
    look(function.timecodes, optional);
  }
  return value.value_or(kWithoutParameter);
}

}  // namespace

std::optional<std::string> CurrentValues::of(const std::string& name) const {
  if (const auto found = values_.find(name); found != values_.end()) return found->second;
  const auto destination = Destination::ofFid(name);
  if (!destination) return std::nullopt;
  const std::string_view sid = std::string_view(name).substr(destination->prefix().size());
  if (sid.empty()) return std::nullopt;
  const auto function = dictionary_.findBySid(sid);
  if (!function) return std::nullopt;
  return valueFor(function->definition(), scattered(name));
}

}  // namespace tessaly
