#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "classic/ClassicCommand.h"
#include "classic/DecodingList.h"
#include "values/Timecode.h"

// What is typed or picked for a parameter of a classic command, and the bytes that it becomes.
namespace tessaly {

using ParameterBytes = std::vector<std::uint8_t>;

enum class ParameterEntry : std::uint8_t { kNothing, kNumber, kTimecode, kInput, kClip, kText };

// How a parameter is entered. The number that is typed is a percentage where values are shown in percent, the
// row number (from 0) for an enumerated parameter, else the value itself.
struct ParameterRange {
  ParameterEntry entry = ParameterEntry::kNothing;
  std::int64_t minimum = 0, maximum = 0;  // numbers only, both inclusive
  std::string hint;                       // "Range: 0 / 255", "Range: -100% / +100%"; empty unless a number
};

[[nodiscard]] ParameterRange parameterRange(const ParameterDescriptor& descriptor);

// The number that stands for these bytes in the entry dialog, out of range when the bytes are. Nothing for a
// value without a row, or on a side of an analog range that has no width.
[[nodiscard]] std::optional<std::int64_t> typedNumber(const KeywordEntry& entry,
                                                      const ParameterDescriptor& descriptor,
                                                      const ParameterBytes& bytes);

// The number that an entry dialog opens with when no value stands yet.
[[nodiscard]] std::int64_t startNumber(const ParameterRange& range);

// Nothing when the number lies outside the parameter's range.
[[nodiscard]] std::optional<ParameterBytes> bytesOfNumber(const KeywordEntry& entry,
                                                          const ParameterDescriptor& descriptor,
                                                          std::int64_t number);

// The value as it stands, lowest byte first, in the parameter's width (two's complement).
[[nodiscard]] ParameterBytes bytesOfValue(const ParameterDescriptor& descriptor, std::int64_t value);

inline constexpr std::uint8_t kExtendedInput = 255;

// Number and, if any, source-hold byte. Input 255 marks an extended input, which is followed by two bytes,
// and by one more when nothing else follows.
[[nodiscard]] ParameterBytes bytesOfInput(std::uint8_t number, std::optional<std::uint8_t> hold, bool last);

// Input bytes at the end of a command may lack the source hold, or what follows an extended input; brought to
// the length that they need once something follows.
void fillInput(ParameterBytes& bytes);

// Over the bytes that stand there: numbers that they hold already keep their bits.
[[nodiscard]] ParameterBytes bytesOfTimecode(const Timecode& timecode, const ParameterBytes& old = {});
[[nodiscard]] Timecode timecodeOf(const ParameterBytes& bytes);  // zero when four bytes are not there

// The characters up to the first zero, and a zero byte.
[[nodiscard]] ParameterBytes bytesOfText(std::string_view text);

// What stands for a parameter that was not chosen when a command is complete at once: zero, the first row,
// the start of the range, the neutral position, input 0, an empty text.
[[nodiscard]] ParameterBytes plainBytes(const KeywordEntry& entry, const ParameterDescriptor& descriptor,
                                        bool last);

// The parameter bytes of a command, cut up as its description reads them. Parameters that the bytes do not
// reach have none; bytes after the last one are the tail.
struct CutParameters {
  std::vector<std::optional<ParameterBytes>> values;
  ParameterBytes tail;
};
[[nodiscard]] CutParameters cutParameters(const ClassicCommand& command, const KeywordEntry& entry);

}  // namespace tessaly
