#include "panelsim/CurrentValues.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "platform/Text.h"
#include "values/Timecode.h"

namespace tessaly {
namespace {

constexpr std::array<std::string_view, 5> kDestinations = {"QMF1", "QMF2", "QMF3", "QMF4", "PANEL"};
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

std::string valueFor(const FunctionTemplate& function, std::uint64_t chance) {
  if (!function.enums.empty()) {
    const auto& values = function.enums.front().values;
    return values.empty() ? kWithoutParameter : values[chance % values.size()].value;
  }
  if (!function.integers.empty()) return integerValue(function.integers.front(), chance);
  if (!function.floats.empty()) return floatValue(function.floats.front(), chance);
  if (!function.inputs.empty()) return std::to_string(1 + chance % kInputs);
  if (!function.timecodes.empty()) return timecodeValue(chance);
  return kWithoutParameter;
}

}  // namespace

std::optional<std::string> CurrentValues::of(const std::string& name) const {
  if (const auto found = values_.find(name); found != values_.end()) return found->second;
  const std::size_t dot = name.find('.');
  if (dot == std::string::npos) return std::nullopt;
  const std::string_view destination = std::string_view(name).substr(0, dot);
  if (std::find(kDestinations.begin(), kDestinations.end(), destination) == kDestinations.end())
    return std::nullopt;
  const std::string_view sid = std::string_view(name).substr(dot + 1);
  if (sid.empty()) return std::nullopt;
  const auto function = dictionary_.findBySid(sid);
  if (!function) return std::nullopt;
  return valueFor(function->definition(), scattered(name));
}

}  // namespace tessaly
