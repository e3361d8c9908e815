#include "classic/ClassicValue.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace tessaly {

namespace {

// The side of an analog range that a value or a percentage lies on: from 0 percent to +100 or -100.
struct Side {
  std::int64_t zero, full;
};

Side upperSide(const ParameterDescriptor& descriptor) {
  const bool aroundNeutral = descriptor.type == ParameterType::kAnalogBi;
  return {aroundNeutral ? descriptor.neutral.value : descriptor.minimum.value, descriptor.maximum.value};
}

Side lowerSide(const ParameterDescriptor& descriptor) {
  return {descriptor.neutral.value, descriptor.minimum.value};
}

bool isAbove(const ParameterDescriptor& descriptor, std::int64_t value) {
  if (descriptor.type == ParameterType::kAnalog) return true;
  const bool rising = descriptor.maximum.value >= descriptor.minimum.value;
  return rising ? value >= descriptor.neutral.value : value <= descriptor.neutral.value;
}

}  // namespace

std::size_t valueWidth(ParameterType type) {
  switch (type) {
    case ParameterType::kByte:
    case ParameterType::kByteEnum:
      return 1;
    case ParameterType::kWord:
    case ParameterType::kWordEnum:
    case ParameterType::kAnalog:
    case ParameterType::kAnalogBi:
      return 2;
    case ParameterType::kLong:
    case ParameterType::kLongEnum:
    case ParameterType::kTimecode:
      return 4;
    case ParameterType::kUnknown:
    case ParameterType::kInput:
    case ParameterType::kString:
    case ParameterType::kClipname:
      return 0;
  }
  return 0;
}

bool isEnumerated(ParameterType type) {
  return type == ParameterType::kByteEnum || type == ParameterType::kWordEnum ||
         type == ParameterType::kLongEnum;
}

bool isAnalog(ParameterType type) {
  return type == ParameterType::kAnalog || type == ParameterType::kAnalogBi;
}

std::optional<std::uint32_t> readValue(std::span<const std::uint8_t> bytes, std::size_t position,
                                       std::size_t width) {
  if (position > bytes.size() || bytes.size() - position < width) return std::nullopt;
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < width; ++i) value |= std::uint32_t{bytes[position + i]} << (8 * i);
  return value;
}

std::int64_t signedValue(std::uint32_t value, std::size_t width) {
  const std::int64_t span = std::int64_t{1} << (8 * width);
  return value >= span / 2 ? value - span : std::int64_t{value};
}

bool hasSignedValues(const ParameterDescriptor& descriptor) {
  const ParameterLimit& low = descriptor.minimum;
  const ParameterLimit& high = descriptor.maximum;
  return low.known && high.known && (low.value < 0 || low.value > high.value);
}

std::int64_t meantValue(const ParameterDescriptor& descriptor, std::uint32_t value) {
  return hasSignedValues(descriptor) ? signedValue(value, valueWidth(descriptor.type)) : std::int64_t{value};
}

const EnumerationRow* enumerationRow(const KeywordEntry& entry, const ParameterDescriptor& descriptor,
                                     std::uint32_t value) {
  for (std::size_t i = 0; i < descriptor.rowCount && descriptor.firstRow + i < entry.rows.size(); ++i) {
    const EnumerationRow& row = entry.rows[descriptor.firstRow + i];
    if (row.value == value) return &row;
  }
  return nullptr;
}

bool showsPercent(const ParameterDescriptor& descriptor) {
  const ParameterLimit& low = descriptor.minimum;
  const ParameterLimit& high = descriptor.maximum;
  const ParameterLimit& middle = descriptor.neutral;
  if (!isAnalog(descriptor.type) || !low.known || !high.known || low.value == high.value) return false;
  if (descriptor.type == ParameterType::kAnalog) return true;
  const auto [first, last] = std::minmax(low.value, high.value);
  return middle.known && middle.value >= first && middle.value <= last;
}

std::optional<int> percentOf(const ParameterDescriptor& descriptor, std::int64_t value) {
  if (!showsPercent(descriptor)) return std::nullopt;
  const bool above = isAbove(descriptor, value);
  const Side side = above ? upperSide(descriptor) : lowerSide(descriptor);
  if (value == side.zero) return 0;
  if (side.full == side.zero) return std::nullopt;
  const double share =
      100.0 * static_cast<double>(value - side.zero) / static_cast<double>(side.full - side.zero);
  const int percent = static_cast<int>(std::lround(share));
  return above ? percent : -percent;
}

std::int64_t valueOfPercent(const ParameterDescriptor& descriptor, int percent) {
  const Side side = percent >= 0 ? upperSide(descriptor) : lowerSide(descriptor);
  const double offset = static_cast<double>(side.full - side.zero) * std::abs(percent) / 100.0;
  return side.zero + std::llround(offset);
}

}  // namespace tessaly
