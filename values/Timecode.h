#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tessaly {

// Hours, minutes, seconds and frames with the drop-frame and field marks.
struct Timecode {
  std::uint8_t hours = 0, minutes = 0, seconds = 0, frames = 0;
  bool dropFrame = false;
  bool field = false;

  // Packed 32-bit form, two decimal digits a byte, frames lowest (docs/classic-commands.md).
  [[nodiscard]] std::uint32_t packed() const;
  // The same over what is stored: a number or mark that `old` stands for already keeps its bits there, also
  // those that are no decimal digit.
  [[nodiscard]] std::uint32_t packedOver(std::uint32_t old) const;
  [[nodiscard]] static Timecode fromPacked(std::uint32_t packed);

  // "10:20:30:05", "." before the frames with drop frame; "*" at the end when asked for and the field mark is
  // set.
  [[nodiscard]] std::string display(bool withField = false) const;
  [[nodiscard]] std::string plain() const;

  // Reads h, m, s, f from the left; white space around the numbers is skipped, missing numbers are 0, a "."
  // before the last number sets drop frame. Digits alone are read from the right in pairs: "3005" is 30
  // seconds and 5 frames.
  [[nodiscard]] static Timecode fromText(std::string_view text);

  // A stored parameter value: the decimal packed form, or a timecode text when it contains ":".
  [[nodiscard]] static Timecode fromStored(std::string_view stored);
  [[nodiscard]] std::string stored() const;

  friend bool operator==(const Timecode&, const Timecode&) = default;
};

}  // namespace tessaly
