#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

// What a command does. Set and increment have two codes each; a code that is not listed stands for no action.
enum class ClassicAction : std::uint8_t {
  kSet = 0x20,
  kSetAlso = 0xA0,
  kIncrement = 0x40,
  kIncrementAlso = 0xC0,
  kRead = 0x60,
  kTrigger = 0xE0
};

// One byte of two hexadecimal digits of either case; any other character counts as 0.
[[nodiscard]] std::uint8_t hexByte(char high, char low);

// Classic command: action, device code (cd), command code (co), keyword (kw) and parameter bytes, with a byte
// form and a text form of two-digit hexadecimal bytes, each followed by a blank (docs/classic-commands.md).
class ClassicCommand {
 public:
  static constexpr std::uint8_t kActionMask = 0xE0;

  // Replaces everything; the record is valid afterwards. Only the action's top three bits are kept, and no
  // more parameters than a 16-bit length can count (65,532).
  void build(std::uint8_t action, std::uint8_t cd, std::uint8_t co, std::uint8_t kw,
             std::span<const std::uint8_t> parameters);

  // Both clear the record first and report success; a failure leaves it empty and invalid.
  bool decode(std::span<const std::uint8_t> bytes);
  bool decodeText(std::string_view text);

  void clear();

  // Empty for an invalid record.
  [[nodiscard]] std::string text() const;
  // "ac: 20 | cd: 10 | co: 05 | kw: 01 | params: 0a"
  [[nodiscard]] std::string debugText() const;

  // Whether `decodeText` makes the same record of `text`; not so with 28 parameters and more, and for an
  // invalid record. A command that does not read back is lost once it is saved.
  [[nodiscard]] bool readsBack() const;

  [[nodiscard]] std::uint8_t action() const { return action_; }
  [[nodiscard]] bool does(ClassicAction action) const { return action_ == static_cast<std::uint8_t>(action); }
  [[nodiscard]] bool increments() const;  // with either code
  [[nodiscard]] std::uint16_t longLength() const { return longLength_; }
  [[nodiscard]] std::uint8_t cd() const { return cd_; }
  [[nodiscard]] std::uint8_t co() const { return co_; }
  [[nodiscard]] std::uint8_t kw() const { return kw_; }
  [[nodiscard]] std::span<const std::uint8_t> parameters() const { return parameters_; }
  [[nodiscard]] std::uint8_t parameter(std::size_t index) const;  // 0 when out of range
  [[nodiscard]] bool longForm() const { return longForm_; }
  [[nodiscard]] bool valid() const { return valid_; }

  // Of the text that it was decoded from: the first byte that makes the record and is not spelt in
  // hexadecimal digits, so that another one was read; empty without one.
  [[nodiscard]] std::string_view misspeltByte(std::string_view text) const;

  friend bool operator==(const ClassicCommand&, const ClassicCommand&) = default;

 private:
  std::uint8_t action_ = 0, cd_ = 0, co_ = 0, kw_ = 0;
  std::uint16_t longLength_ = 0;
  bool longForm_ = false;
  bool valid_ = false;
  std::vector<std::uint8_t> parameters_;
};

}  // namespace tessaly
