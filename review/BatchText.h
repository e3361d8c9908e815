#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "review/BatchJournal.h"

// The text of a batch's journal (docs/batch-journal.md).
namespace tessaly {

// Head and items.
[[nodiscard]] std::string batchText(const BatchRecord& record);
[[nodiscard]] std::string batchBegunText(const BatchRecord::Begun& begun);
[[nodiscard]] std::string batchUndoingText();

// What stands in it, up to the first record that is not whole; `end` is where that begins. Nothing unless
// head and items are whole, and of this version.
[[nodiscard]] std::optional<BatchRecord> readBatch(std::string_view text, std::size_t& end);

}  // namespace tessaly
