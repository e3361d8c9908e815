#pragma once

#include <string>
#include <vector>

#include "review/BatchPlaces.h"

namespace tessaly {

// What became of a batch that a program has not lived to end.
struct BatchRecovery {
  enum class How {
    kEnded,    // what it was to write is there
    kUndone,   // what was there before is there again
    kWaits,    // its panel is not connected, or did not take all of it
    kUnended,  // neither: the next start tries again; `failed`
    kRefused,  // its journal cannot be used; `reason`
    kUnknown   // whether there is one cannot be read; `reason`
  };
  std::string title;  // of the batch, UTF-8; without one the name of its journal
  How how = How::kEnded;
  std::vector<MacroPlace> written = {};    // places of its items, as far as they may have been written
  std::vector<std::string> letAlone = {};  // places that hold what the batch has neither found nor written
  std::vector<std::string> failed = {};    // places that could not be written
  std::string reason = {};                 // of the last one of them, or of a refusal

  // One line, in English; the window has it in its user's language.
  [[nodiscard]] std::string describe() const;
};

// Ends every batch in the root that no living program is busy with, or undoes it, and tells which. With
// places on panels that are not connected it waits. Blocking; whatever goes wrong stays for the next start.
[[nodiscard]] std::vector<BatchRecovery> recoverBatches(BatchPlaces& places);

}  // namespace tessaly
