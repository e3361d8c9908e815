#pragma once

#include "values/ParameterValue.h"

// Parameters with the ranges that a test of shown and stored values needs.
namespace tessaly {

inline constexpr ValueMode kDisplay = ValueMode::kDisplay;
inline constexpr ValueMode kRaw = ValueMode::kRaw;

inline IntegerParameter integer(bool scaled, std::int32_t min, std::int32_t max, std::int32_t minDisplay,
                                std::int32_t maxDisplay) {
  IntegerParameter parameter;
  parameter.scaled = scaled;
  parameter.min = min;
  parameter.max = max;
  parameter.minDisplay = minDisplay;
  parameter.maxDisplay = maxDisplay;
  return parameter;
}

inline FloatParameter decimal(double min, double max, double minDisplay, double maxDisplay) {
  FloatParameter parameter;
  parameter.min = min;
  parameter.max = max;
  parameter.minDisplay = minDisplay;
  parameter.maxDisplay = maxDisplay;
  return parameter;
}

}  // namespace tessaly
