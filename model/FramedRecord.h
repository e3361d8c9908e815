#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "model/RecordText.h"
#include "platform/ContentCheck.h"

namespace tessaly {

// A record of a file that grows at its end: keys, an empty line and bytes as they are, in a frame that tells
// its length and checksum, so that a part of one is known for what it is (docs/history-format.md).
struct FramedRecord {
  RecordText keys;
  std::string_view bytes;  // points into the text that it was taken from
};

[[nodiscard]] std::string framedRecord(const RecordText& keys, std::string_view first = {},
                                       std::string_view second = {});

// Takes a record from the front; nothing, and nothing taken, when no whole one stands there.
[[nodiscard]] std::optional<FramedRecord> takeFramedRecord(std::string_view& text);

// The keys "size" and "check".
void setCheck(RecordText& text, const ContentCheck& check);
[[nodiscard]] std::optional<ContentCheck> checkIn(const RecordText& text);

// Takes a decimal number and the character behind it from the front.
[[nodiscard]] std::optional<std::uint64_t> takeNumber(std::string_view& text, char behind);

}  // namespace tessaly
