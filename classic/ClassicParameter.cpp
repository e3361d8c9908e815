#include "classic/ClassicParameter.h"

#include <algorithm>

#include "classic/ClassicDescription.h"
#include "classic/ClassicValue.h"
#include "platform/Text.h"

namespace tessaly {

namespace {

constexpr const char* kRangeHint = "Range: %lld / %lld";
constexpr const char* kPercentHint = "Range: 0% / 100%";
constexpr const char* kBothSidesHint = "Range: -100% / +100%";
constexpr std::size_t kExtendedInputBytes = 3;
constexpr std::uint8_t kHoldOff = 0;

ParameterRange percentRange(const ParameterDescriptor& descriptor) {
  ParameterRange range{ParameterEntry::kNumber, 0, 100, kPercentHint};
  if (descriptor.type != ParameterType::kAnalogBi) return range;
  // A neutral value at a limit leaves no way to that side.
  if (descriptor.neutral.value != descriptor.minimum.value) range.minimum = -100;
  if (descriptor.neutral.value == descriptor.maximum.value) range.maximum = 0;
  range.hint = kBothSidesHint;
  return range;
}

ParameterRange numberRange(const ParameterDescriptor& descriptor) {
  ParameterRange range{ParameterEntry::kNumber, 0, 0, {}};
  if (descriptor.rowCount > 0) {
    range.maximum = static_cast<std::int64_t>(descriptor.rowCount) - 1;
  } else {
    range.maximum = (std::int64_t{1} << (8 * valueWidth(descriptor.type))) - 1;
    if (descriptor.minimum.known) range.minimum = descriptor.minimum.value;
    if (descriptor.maximum.known) range.maximum = descriptor.maximum.value;
    if (range.minimum > range.maximum) std::swap(range.minimum, range.maximum);
  }
  range.hint =
      format(kRangeHint, static_cast<long long>(range.minimum), static_cast<long long>(range.maximum));
  return range;
}

// How many bytes the parameter at `position` takes; nothing when they run out before it.
std::optional<std::size_t> bytesTaken(const ClassicCommand& command, const KeywordEntry& entry,
                                      const ParameterDescriptor& descriptor, std::size_t position) {
  const std::size_t left = command.parameters().size() - position;
  if (descriptor.type == ParameterType::kInput && command.parameter(position) == kExtendedInput) {
    return std::min(left, kExtendedInputBytes);
  }
  std::size_t end = position;
  if (!parameterText(command, entry, descriptor, end)) return std::nullopt;
  return end - position;
}

std::uint32_t packedIn(const ParameterBytes& bytes) {
  return readValue(bytes, 0, valueWidth(ParameterType::kTimecode)).value_or(0);
}

}  // namespace

ParameterRange parameterRange(const ParameterDescriptor& descriptor) {
  switch (descriptor.type) {
    case ParameterType::kByte:
    case ParameterType::kByteEnum:
    case ParameterType::kWord:
    case ParameterType::kWordEnum:
    case ParameterType::kLong:
    case ParameterType::kLongEnum:
      return numberRange(descriptor);
    case ParameterType::kAnalog:
    case ParameterType::kAnalogBi:
      return showsPercent(descriptor) ? percentRange(descriptor) : numberRange(descriptor);
    case ParameterType::kInput:
      return {ParameterEntry::kInput, 0, 0, {}};
    case ParameterType::kTimecode:
      return {ParameterEntry::kTimecode, 0, 0, {}};
    case ParameterType::kString:
      return {ParameterEntry::kText, 0, 0, {}};
    case ParameterType::kClipname:
      return {ParameterEntry::kClip, 0, 0, {}};
    case ParameterType::kUnknown:
      return {};
  }
  return {};
}

std::optional<std::int64_t> typedNumber(const KeywordEntry& entry, const ParameterDescriptor& descriptor,
                                        const ParameterBytes& bytes) {
  const auto raw = readValue(bytes, 0, valueWidth(descriptor.type));
  if (!raw) return std::nullopt;
  if (descriptor.rowCount > 0) {
    const EnumerationRow* row = enumerationRow(entry, descriptor, *raw);
    if (row == nullptr) return std::nullopt;
    return (row - entry.rows.data()) - static_cast<std::int64_t>(descriptor.firstRow);
  }
  const std::int64_t value = meantValue(descriptor, *raw);
  if (showsPercent(descriptor)) return percentOf(descriptor, value);
  return value;
}

std::int64_t startNumber(const ParameterRange& range) {
  return std::clamp(std::int64_t{0}, range.minimum, range.maximum);
}

std::optional<ParameterBytes> bytesOfNumber(const KeywordEntry& entry, const ParameterDescriptor& descriptor,
                                            std::int64_t number) {
  const ParameterRange range = parameterRange(descriptor);
  if (range.entry != ParameterEntry::kNumber || number < range.minimum || number > range.maximum) {
    return std::nullopt;
  }
  if (descriptor.rowCount > 0) {
    return bytesOfValue(descriptor, entry.rows[descriptor.firstRow + static_cast<std::size_t>(number)].value);
  }
  if (showsPercent(descriptor)) number = valueOfPercent(descriptor, static_cast<int>(number));
  return bytesOfValue(descriptor, number);
}

ParameterBytes bytesOfValue(const ParameterDescriptor& descriptor, std::int64_t value) {
  ParameterBytes bytes(valueWidth(descriptor.type));
  for (std::uint8_t& byte : bytes) {
    byte = static_cast<std::uint8_t>(value & 0xFF);
    value >>= 8;
  }
  return bytes;
}

ParameterBytes bytesOfInput(std::uint8_t number, std::optional<std::uint8_t> hold, bool last) {
  if (number != kExtendedInput) return hold ? ParameterBytes{number, *hold} : ParameterBytes{number};
  ParameterBytes bytes(kExtendedInputBytes + (last ? 1 : 0));
  bytes.front() = number;
  return bytes;
}

void fillInput(ParameterBytes& bytes) {
  const std::size_t needed = !bytes.empty() && bytes.front() == kExtendedInput ? kExtendedInputBytes : 2;
  if (bytes.size() < needed) bytes.resize(needed);
}

ParameterBytes bytesOfTimecode(const Timecode& timecode, const ParameterBytes& old) {
  ParameterDescriptor descriptor;
  descriptor.type = ParameterType::kTimecode;
  return bytesOfValue(descriptor, timecode.packedOver(packedIn(old)));
}

Timecode timecodeOf(const ParameterBytes& bytes) { return Timecode::fromPacked(packedIn(bytes)); }

ParameterBytes bytesOfText(std::string_view text) {
  text = text.substr(0, text.find('\0'));
  ParameterBytes bytes(text.begin(), text.end());
  bytes.push_back(0);
  return bytes;
}

ParameterBytes plainBytes(const KeywordEntry& entry, const ParameterDescriptor& descriptor, bool last) {
  const ParameterRange range = parameterRange(descriptor);
  switch (range.entry) {
    case ParameterEntry::kNumber:
      return bytesOfNumber(entry, descriptor, startNumber(range)).value();
    case ParameterEntry::kTimecode:
      return bytesOfTimecode({});
    case ParameterEntry::kInput:
      return bytesOfInput(0, kHoldOff, last);
    case ParameterEntry::kClip:
    case ParameterEntry::kText:
      return bytesOfText({});
    case ParameterEntry::kNothing:
      return {};
  }
  return {};
}

CutParameters cutParameters(const ClassicCommand& command, const KeywordEntry& entry) {
  CutParameters cut;
  cut.values.resize(entry.parameters.size());
  const auto bytes = command.parameters();
  std::size_t position = 0;
  bool ended = false;
  for (std::size_t i = 0; i < entry.parameters.size(); ++i) {
    const auto taken = ended ? std::nullopt : bytesTaken(command, entry, entry.parameters[i], position);
    ended = !taken;
    if (entry.parameters[i].type == ParameterType::kUnknown) cut.values[i] = ParameterBytes();
    if (ended) continue;
    const auto part = bytes.subspan(position, *taken);
    cut.values[i] = ParameterBytes(part.begin(), part.end());
    position += *taken;
  }
  if (ended) return cut;
  const auto tail = bytes.subspan(position);
  cut.tail.assign(tail.begin(), tail.end());
  return cut;
}

}  // namespace tessaly
