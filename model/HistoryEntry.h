#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

#include "platform/MacroKeeper.h"

namespace tessaly {

inline constexpr std::size_t kLastVersions = 20;  // of each macro, that another's never drive out

// One kept macro, as the names of its folder and files tell of it (docs/history-format.md).
struct HistoryEntry {
  std::string day;         // "2026-11-24"
  std::string stem;        // "175644-123-9f3a1c20-4711-42-macro007"
  std::int64_t when = 0;   // milliseconds since 1970, UTC, by the clock of the time
  std::uint64_t size = 0;  // bytes
  std::uint64_t number =
      0;  // counts what is kept, whatever the clock says; 0 from a version that did not count
  bool outsideRoot = false;

  // A new one.
  HistoryEntry(std::int64_t when, std::uint64_t size, std::uint64_t number, const MacroPlace& place,
               bool outsideRoot);
  // Nothing when the names are none of ours.
  static std::optional<HistoryEntry> parse(std::string_view day, std::string_view stem);

  [[nodiscard]] std::string id() const;        // "2026-11-24/175644-123"
  [[nodiscard]] std::string_view key() const;  // the same for all versions of one macro

 private:
  HistoryEntry() = default;
};

// The key of a macro's versions.
[[nodiscard]] std::string historyKey(const MacroPlace& place);

[[nodiscard]] bool isHistoryDay(std::string_view name);

// Which of the entries, oldest first, in the root or outside it, goes next: one of the macro with the most
// versions. Of more than `kLastVersions` it is that whose neighbours in time are closest, but none of the
// last ones; else its oldest. With `spareOnly` nothing when no macro has more than those.
[[nodiscard]] std::optional<std::size_t> nextToGo(const std::deque<HistoryEntry>& entries, bool outsideRoot,
                                                  bool spareOnly);

}  // namespace tessaly
