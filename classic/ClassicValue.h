#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "classic/DecodingList.h"

// Numbers inside the parameter bytes of a classic command: widths, byte order, signs and percent.
namespace tessaly {

// Bytes of a number of this type, lowest byte first; 0 for types that are no plain number.
[[nodiscard]] std::size_t valueWidth(ParameterType type);

[[nodiscard]] bool isEnumerated(ParameterType type);
[[nodiscard]] bool isAnalog(ParameterType type);  // pt_Analog and pt_AnalogBi

// The number at `position`; nothing when it does not lie wholly inside the bytes.
[[nodiscard]] std::optional<std::uint32_t> readValue(std::span<const std::uint8_t> bytes,
                                                     std::size_t position, std::size_t width);

// Two's complement reading of a number of `width` bytes.
[[nodiscard]] std::int64_t signedValue(std::uint32_t value, std::size_t width);

// True when the parameter's limits are read as signed, and its values with them.
[[nodiscard]] bool hasSignedValues(const ParameterDescriptor& descriptor);

// The number as the parameter means it: signed or unsigned.
[[nodiscard]] std::int64_t meantValue(const ParameterDescriptor& descriptor, std::uint32_t value);

// The row of an enumerated parameter with this value, or null.
[[nodiscard]] const EnumerationRow* enumerationRow(const KeywordEntry& entry,
                                                   const ParameterDescriptor& descriptor,
                                                   std::uint32_t value);

// True when values of the parameter are shown and typed in percent: analog, its limits known and different,
// and with pt_AnalogBi a known neutral value between them.
[[nodiscard]] bool showsPercent(const ParameterDescriptor& descriptor);

// Analog value in percent of its range, rounded: 0 to 100, for pt_AnalogBi -100 to 100 around the neutral
// value; beyond that for a value outside the limits. Nothing when percent is not shown, or a side of the
// range is empty.
[[nodiscard]] std::optional<int> percentOf(const ParameterDescriptor& descriptor, std::int64_t value);

// The analog value of a percentage, exact at the limits. Only for a descriptor of which `showsPercent` holds.
[[nodiscard]] std::int64_t valueOfPercent(const ParameterDescriptor& descriptor, int percent);

}  // namespace tessaly
