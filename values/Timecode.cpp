#include "values/Timecode.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <optional>

#include "platform/Text.h"

namespace tessaly {
namespace {

constexpr std::uint32_t kFieldBit = 0x80;      // in the byte of the minutes
constexpr std::uint32_t kDropFrameBit = 0x40;  // in the byte of the hours
constexpr std::uint32_t kByteDigits = 0xFF;    // the bits of a byte that hold the two digits
constexpr std::uint32_t kMinuteDigits = 0x7F;
constexpr std::uint32_t kHourDigits = 0x3F;
constexpr std::size_t kNumbers = 4;  // hours, minutes, seconds, frames
constexpr std::uint32_t kMostOfANumber = std::numeric_limits<std::uint8_t>::max();
constexpr std::string_view kSpace = " \t\f\v\n\r";

std::uint32_t packDigits(std::uint8_t number, std::uint32_t mask) {
  return ((static_cast<std::uint32_t>(number / 10) << 4U) | (number % 10U)) & mask;
}

std::uint8_t unpackDigits(std::uint32_t digits) {
  return static_cast<std::uint8_t>((digits >> 4U) * 10 + (digits & 0x0FU));
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

void skipSpace(std::string_view text, std::size_t& position) {
  while (position < text.size() && kSpace.find(text[position]) != std::string_view::npos) ++position;
}

// Decimal digits at `position`, which moves past them; 0 without digits, held at `most`.
std::uint32_t readNumber(std::string_view text, std::size_t& position, std::uint32_t most) {
  std::uint64_t value = 0;
  for (; position < text.size() && isDigit(text[position]); ++position) {
    value = value * 10 + static_cast<std::uint64_t>(text[position] - '0');
    if (value > most) value = most;
  }
  return static_cast<std::uint32_t>(value);
}

// The numbers of a text that is nothing but digits, the hours taking what three pairs leave over; nothing for
// another text.
std::optional<std::array<std::uint8_t, kNumbers>> pairsOf(std::string_view text) {
  const std::size_t first = std::min(text.find_first_not_of(kSpace), text.size());
  std::string_view digits = text.substr(first, text.find_last_not_of(kSpace) + 1 - first);
  if (digits.empty() || !std::all_of(digits.begin(), digits.end(), isDigit)) return std::nullopt;
  std::array<std::uint8_t, kNumbers> numbers{};
  for (std::size_t i = kNumbers; i-- > 0;) {
    std::size_t position = i == 0 || digits.size() < 2 ? 0 : digits.size() - 2;
    const std::size_t start = position;
    numbers[i] = static_cast<std::uint8_t>(readNumber(digits, position, kMostOfANumber));
    digits = digits.substr(0, start);
  }
  return numbers;
}

}  // namespace

std::uint32_t Timecode::packed() const {
  return packDigits(frames, kByteDigits) | (packDigits(seconds, kByteDigits) << 8U) |
         ((packDigits(minutes, kMinuteDigits) | (field ? kFieldBit : 0U)) << 16U) |
         ((packDigits(hours, kHourDigits) | (dropFrame ? kDropFrameBit : 0U)) << 24U);
}

std::uint32_t Timecode::packedOver(std::uint32_t old) const {
  const Timecode before = fromPacked(old);
  std::uint32_t changed = 0;
  if (frames != before.frames) changed |= kByteDigits;
  if (seconds != before.seconds) changed |= kByteDigits << 8U;
  if (minutes != before.minutes || field != before.field) changed |= kByteDigits << 16U;
  if (hours != before.hours || dropFrame != before.dropFrame) changed |= kByteDigits << 24U;
  return (old & ~changed) | (packed() & changed);
}

Timecode Timecode::fromPacked(std::uint32_t packed) {
  Timecode timecode;
  timecode.frames = unpackDigits(packed & kByteDigits);
  timecode.seconds = unpackDigits((packed >> 8U) & kByteDigits);
  timecode.minutes = unpackDigits((packed >> 16U) & kMinuteDigits);
  timecode.hours = unpackDigits((packed >> 24U) & kHourDigits);
  timecode.field = ((packed >> 16U) & kFieldBit) != 0;
  timecode.dropFrame = ((packed >> 24U) & kDropFrameBit) != 0;
  return timecode;
}

std::string Timecode::display(bool withField) const {
  return format("%02i:%02i:%02i%c%02i%s", hours, minutes, seconds, dropFrame ? '.' : ':', frames,
                withField && field ? "*" : "");
}

std::string Timecode::plain() const { return format("%02d:%02d:%02d:%02d", hours, minutes, seconds, frames); }

Timecode Timecode::fromText(std::string_view text) {
  if (const auto pairs = pairsOf(text))
    return {(*pairs)[0], (*pairs)[1], (*pairs)[2], (*pairs)[3], false, false};
  std::array<std::uint8_t, kNumbers> numbers{};
  char separator = ':';
  std::size_t position = 0;
  for (std::uint8_t& number : numbers) {
    skipSpace(text, position);
    number = static_cast<std::uint8_t>(readNumber(text, position, kMostOfANumber));
    skipSpace(text, position);
    if (&number == &numbers.back() || position >= text.size()) break;
    if (text[position] != ':' && text[position] != '.') break;
    separator = text[position++];
  }
  return {numbers[0], numbers[1], numbers[2], numbers[3], separator == '.', false};
}

Timecode Timecode::fromStored(std::string_view stored) {
  if (stored.find(':') != std::string_view::npos) return fromText(stored);
  std::size_t position = 0;
  skipSpace(stored, position);
  return fromPacked(readNumber(stored, position, std::numeric_limits<std::uint32_t>::max()));
}

std::string Timecode::stored() const { return std::to_string(packed()); }

}  // namespace tessaly
