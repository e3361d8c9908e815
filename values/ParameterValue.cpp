#include "values/ParameterValue.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "platform/FixedPoint.h"
#include "platform/Text.h"
#include "values/Timecode.h"

namespace tessaly {
namespace {

constexpr double kFixedPointOne = 1024;  // incremental floats travel as value × 1024
constexpr int kFixedPointMin = -2048;
constexpr int kFixedPointMax = 2047;

std::string asItStands(std::string_view shown) { return shown.empty() ? "0" : std::string(shown); }

// `value` moved from one range to another; differences in double, as the limits may span all of 32 bits.
double rescaled(double value, double fromMin, double fromMax, double toMin, double toMax) {
  return (toMax - toMin) * ((value - fromMin) / (fromMax - fromMin)) + toMin;
}

// Adds 0.5 and cuts towards zero, so -511.5 becomes -511: deliberate, stored macros and panels agree on it.
std::int32_t roundedByHalf(double value, std::int32_t least, std::int32_t most) {
  const double raised = value + 0.5;
  if (!(raised > static_cast<double>(least))) return least;
  if (raised >= static_cast<double>(most)) return most;
  return static_cast<std::int32_t>(raised);
}

}  // namespace

std::string shownInteger(const IntegerParameter& parameter, std::string_view stored, ValueMode mode) {
  if (mode == ValueMode::kRaw || !parameter.scaled || parameter.min == parameter.max)
    return std::string(stored);
  return fixedPoint(
      rescaled(parseDouble(stored), parameter.min, parameter.max, parameter.minDisplay, parameter.maxDisplay),
      1);
}

std::string shownFloat(const FloatParameter& parameter, bool incremental, std::string_view stored,
                       ValueMode mode) {
  if (mode == ValueMode::kRaw) return std::string(stored);
  if (incremental) return fixedPoint(parseDouble(stored) / kFixedPointOne, 4);
  if (parameter.min == parameter.max) return std::string(stored);
  return fixedPoint(
      rescaled(parseDouble(stored), parameter.min, parameter.max, parameter.minDisplay, parameter.maxDisplay),
      1);
}

std::string storedInteger(const IntegerParameter& parameter, std::string_view shown, ValueMode mode) {
  if (mode == ValueMode::kRaw || !parameter.scaled || parameter.minDisplay == parameter.maxDisplay) {
    return asItStands(shown);
  }
  // Multiplied before it is divided: 0.5 is added to the exact product of whole numbers.
  const double span = static_cast<double>(parameter.max) - parameter.min;
  const double shownSpan = static_cast<double>(parameter.maxDisplay) - parameter.minDisplay;
  const double value = span * (parseDouble(shown) - parameter.minDisplay) / shownSpan + parameter.min;
  return format("%d", roundedByHalf(value, std::numeric_limits<std::int32_t>::min(),
                                    std::numeric_limits<std::int32_t>::max()));
}

std::string storedFloat(const FloatParameter& parameter, bool incremental, std::string_view shown,
                        ValueMode mode) {
  if (mode == ValueMode::kRaw) return asItStands(shown);
  if (incremental) {
    return format("%d", roundedByHalf(parseDouble(shown) * kFixedPointOne, kFixedPointMin, kFixedPointMax));
  }
  if (parameter.min == parameter.max || parameter.minDisplay == parameter.maxDisplay)
    return asItStands(shown);
  return format("%f", (parameter.max - parameter.min) * (parseDouble(shown) - parameter.minDisplay) /
                              (parameter.maxDisplay - parameter.minDisplay) +
                          parameter.min);
}

std::string shownTimecode(std::string_view stored, ValueMode mode) {
  return mode == ValueMode::kRaw ? std::string(stored) : Timecode::fromStored(stored).display();
}

std::string storedTimecode(std::string_view shown, int frameRate) {
  if (frameRate <= 0 || shown.empty()) return std::string(shown);
  const auto held = [](std::uint8_t number, int count) {
    return static_cast<std::uint8_t>(std::min<int>(number, count - 1));
  };
  Timecode timecode = Timecode::fromText(shown);
  timecode.hours = held(timecode.hours, 24);
  timecode.minutes = held(timecode.minutes, 60);
  timecode.seconds = held(timecode.seconds, 60);
  timecode.frames = held(timecode.frames, frameRate);
  return timecode.stored();
}

std::string rangeText(const IntegerParameter& parameter, ValueMode mode) {
  if (mode == ValueMode::kRaw || !parameter.scaled) {
    return format("min: %d   max: %d", parameter.min, parameter.max);
  }
  return format("min: %d%%   max: %d%%", parameter.minDisplay, parameter.maxDisplay);
}

std::string rangeText(const FloatParameter& parameter, bool incremental, ValueMode mode) {
  if (incremental) {
    return mode == ValueMode::kRaw ? format("min: %d   max: %d", kFixedPointMin, kFixedPointMax)
                                   : format("min: %2.4f   max: %2.4f", -2.0, 2.0);
  }
  if (parameter.min == parameter.max) return "range: no limits";
  if (mode == ValueMode::kRaw) return format("min: %2.4f   max: %2.4f", parameter.min, parameter.max);
  return format("min: %2.0f%%   max: %2.0f%%", parameter.minDisplay, parameter.maxDisplay);
}

}  // namespace tessaly
