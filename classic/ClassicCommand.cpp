#include "classic/ClassicCommand.h"

#include <algorithm>

#include "platform/Text.h"

namespace tessaly {

namespace {

constexpr std::uint8_t kLengthMask = 0x1F;
constexpr std::uint8_t kLongMark = 0x1F;              // low five bits of byte 0
constexpr std::size_t kShortHead = 1, kLongHead = 3;  // bytes before cd
constexpr std::size_t kCodeBytes = 3;                 // cd, co and kw, which the length counts
constexpr std::size_t kLongFrom = 32;                 // lengths from here on are built in the long form
constexpr std::size_t kLengthUnit = 255;              // deliberately not 256: panels and stored keys count so
constexpr std::size_t kMostParameters = 0xFFFF - kCodeBytes;

std::uint8_t nibble(char digit) {
  if (digit >= '0' && digit <= '9') return static_cast<std::uint8_t>(digit - '0');
  if (digit >= 'a' && digit <= 'f') return static_cast<std::uint8_t>(digit - 'a' + 10);
  if (digit >= 'A' && digit <= 'F') return static_cast<std::uint8_t>(digit - 'A' + 10);
  return 0;
}

// The bytes that a text spells; none when it is malformed or fills the buffer of half its length.
std::vector<std::uint8_t> spelledBytes(std::string_view text) {
  const std::size_t capacity = text.size() / 2;
  std::vector<std::uint8_t> bytes;
  bytes.reserve(capacity);
  std::size_t start = 0;
  for (std::size_t blank = text.find(' '); blank != text.npos; blank = text.find(' ', start)) {
    const std::size_t length = blank - start;
    if (length != 1 && length != 2) return {};
    bytes.push_back(length == 2 ? hexByte(text[start], text[start + 1]) : hexByte('0', text[start]));
    // Deliberate: a text of one-digit bytes fills the buffer and counts as damaged, as everywhere where such
    // lines are read.
    if (bytes.size() >= capacity) return {};
    start = blank + 1;
  }
  return bytes;
}

}  // namespace

std::uint8_t hexByte(char high, char low) {
  return static_cast<std::uint8_t>(nibble(high) << 4 | nibble(low));
}

void ClassicCommand::build(std::uint8_t action, std::uint8_t cd, std::uint8_t co, std::uint8_t kw,
                           std::span<const std::uint8_t> parameters) {
  const auto kept = parameters.first(std::min(parameters.size(), kMostParameters));
  std::vector<std::uint8_t> copy(kept.begin(), kept.end());  // the caller may hand us our own parameters
  parameters_ = std::move(copy);
  action_ = action & kActionMask;
  cd_ = cd;
  co_ = co;
  kw_ = kw;
  // Deliberate: a length of 31 is built short, though a reader takes it for the long form's mark.
  longForm_ = parameters_.size() + kCodeBytes >= kLongFrom;
  longLength_ = longForm_ ? static_cast<std::uint16_t>(parameters_.size() + kCodeBytes) : std::uint16_t{0};
  valid_ = true;
}

bool ClassicCommand::decode(std::span<const std::uint8_t> bytes) {
  ClassicCommand old;  // keeps the parameters alive: the bytes may be our own
  std::swap(*this, old);
  if (bytes.empty()) return false;

  const bool isLong = (bytes[0] & kLengthMask) == kLongMark;
  const std::size_t head = isLong ? kLongHead : kShortHead;
  if (bytes.size() < head) return false;
  const std::size_t length = isLong ? (bytes[1] * kLengthUnit + bytes[2]) : (bytes[0] & kLengthMask);
  if (length < kCodeBytes || bytes.size() - head < length) return false;

  const auto rest = bytes.subspan(head, length);
  action_ = bytes[0] & kActionMask;
  longForm_ = isLong;
  longLength_ = isLong ? static_cast<std::uint16_t>(length) : std::uint16_t{0};
  cd_ = rest[0];
  co_ = rest[1];
  kw_ = rest[2];
  parameters_.assign(rest.begin() + kCodeBytes, rest.end());
  valid_ = true;
  return true;
}

bool ClassicCommand::decodeText(std::string_view text) { return decode(spelledBytes(text)); }

void ClassicCommand::clear() { *this = ClassicCommand(); }

std::string ClassicCommand::text() const {
  if (!valid_) return {};
  const std::size_t length = parameters_.size() + kCodeBytes;
  std::string text;
  if (longForm_) {
    // Deliberately without a blank before cd, and low byte first: lines of this form exist, and no reader
    // takes them back.
    text = format("%02x %02x %02x", action_, static_cast<unsigned>(length & 0xFF),
                  static_cast<unsigned>(length >> 8));
  } else {
    text = format("%02x ", static_cast<unsigned>(action_ + length));
  }
  text += format("%02x %02x %02x ", cd_, co_, kw_);
  for (const std::uint8_t byte : parameters_) text += format("%02x ", byte);
  return text;
}

std::string ClassicCommand::debugText() const {
  std::string text = format("ac: %02x", action_);
  if (longForm_) text += format(" | cw: %02x | %02x", longLength_ & 0xFF, longLength_ >> 8);
  text += format(" | cd: %02x | co: %02x | kw: %02x", cd_, co_, kw_);
  if (!parameters_.empty()) text += " | params:";
  for (const std::uint8_t byte : parameters_) text += format(" %02x", byte);
  return text;
}

bool ClassicCommand::readsBack() const {
  ClassicCommand read;
  return read.decodeText(text()) && read == *this;
}

bool ClassicCommand::increments() const {
  return does(ClassicAction::kIncrement) || does(ClassicAction::kIncrementAlso);
}

std::string_view ClassicCommand::misspeltByte(std::string_view text) const {
  std::size_t left = (longForm_ ? kLongHead : kShortHead) + kCodeBytes + parameters_.size();
  for (; left > 0; --left) {
    const std::string_view byte = text.substr(0, text.find(' '));
    if (byte.find_first_not_of("0123456789abcdefABCDEF") != byte.npos) return byte;
    text.remove_prefix(byte.size() + 1);
  }
  return {};
}

std::uint8_t ClassicCommand::parameter(std::size_t index) const {
  return index < parameters_.size() ? parameters_[index] : std::uint8_t{0};
}

}  // namespace tessaly
