#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/MacroKeeper.h"

namespace tessaly {

// A macro that the history holds.
struct KeptMacro {
  std::string id;         // "2026-11-24/175644-123"
  std::int64_t when = 0;  // milliseconds since 1970, UTC
  std::uint64_t size = 0;
  std::string file;  // site path of its bytes
  // Of the record beside it; without one nothing is known but the bytes.
  std::optional<MacroPlace> place;
  MacroChange change = MacroChange::kSave;
  std::string name;  // of the macro, UTF-8

  // Takes what the record tells; of one that is none nothing.
  void takeRecord(std::string_view record);

  // "c:\...\macro007.mac", or "10.0.0.1 workplace 1 macro 007"; empty when unknown.
  [[nodiscard]] std::string placeText() const;
};

// The words of a record and of the command line ("save", "put-back" ...).
[[nodiscard]] std::string_view changeWord(MacroChange change);
[[nodiscard]] MacroChange changeOfWord(std::string_view word);  // `kSave` for any other word

// The record beside a kept macro of these bytes (docs/history-format.md).
[[nodiscard]] std::string historyRecord(std::string_view bytes, const MacroPlace& place, MacroChange change);

}  // namespace tessaly
