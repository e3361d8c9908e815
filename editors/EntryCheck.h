#pragma once

#include <cstdint>
#include <string_view>

#include "platform/Text.h"

namespace tessaly {

enum class EntryState { kValid, kEmpty, kInvalid };

// Whole numbers that an entry field takes, both ends included.
struct NumberRange {
  std::int64_t min, max;
};

// Text that is no number reads as 0, an empty one too: it is invalid when 0 is out of range.
[[nodiscard]] inline EntryState checkEntry(std::string_view text, NumberRange range) {
  const std::int64_t value = parseLong(text);
  if (value < range.min || value > range.max) return EntryState::kInvalid;
  return text.empty() ? EntryState::kEmpty : EntryState::kValid;
}

}  // namespace tessaly
