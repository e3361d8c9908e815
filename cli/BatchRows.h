#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "cli/CommandSession.h"
#include "review/MacroBatch.h"

namespace tessaly {

// It is there, and a power cut may take it.
[[nodiscard]] inline bool unflushed(const MacroBatch::Row& row) {
  return row.done() && row.why.kind == Failure::Kind::kUnflushed;
}

// Runs a batch and prints a row for each of its macros: what `nameOf` calls it, a tab, and `done` ("sent"),
// "as before: " or "unknown: " with the reason; with `take` that is told what became of each instead. What a
// panel did not take is tried three times more, a second apart: a line that was lost may stand again. An exit
// code.
int runBatch(CommandSession& session, MacroBatch& batch, std::string_view done,
             const std::function<std::string(std::size_t index)>& nameOf,
             const std::function<void(std::size_t index, const std::string& state)>& take = {});

}  // namespace tessaly
