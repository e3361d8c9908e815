#pragma once

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <string_view>
#include <system_error>

namespace tessaly {

enum class EntryState { kValid, kEmpty, kInvalid };

// Whole numbers that an entry field takes, both ends included.
struct NumberRange {
  std::int64_t min, max;
};

// A plain decimal conversion: white space, a sign, digits; 0 for other text; held at the ends of 64 bits.
[[nodiscard]] inline std::int64_t wholeNumber(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
  const bool negative = text.starts_with('-');
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  std::int64_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc::result_out_of_range) return value;
  return negative ? std::numeric_limits<std::int64_t>::min() : std::numeric_limits<std::int64_t>::max();
}

// Text that is no number reads as 0, an empty one too: it is invalid when 0 is out of range.
[[nodiscard]] inline EntryState checkEntry(std::string_view text, NumberRange range) {
  const std::int64_t value = wholeNumber(text);
  if (value < range.min || value > range.max) return EntryState::kInvalid;
  return text.empty() ? EntryState::kEmpty : EntryState::kValid;
}

}  // namespace tessaly
