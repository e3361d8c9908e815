#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>

#include "platform/ContentCheck.h"
#include "platform/MacroKeeper.h"
#include "platform/ThreadAnnotations.h"

namespace tessaly {

// What this program has last fetched from each place of a panel to be shown, or sent there, so that what
// others have put there since is known from it. Any thread.
class SeenOnPanel {
 public:
  void note(const MacroPlace& place, std::string_view bytes);
  // The panel itself is asked to change it.
  void forget(int workplace, std::string_view number);
  // Nothing where nothing was.
  [[nodiscard]] std::optional<ContentCheck> of(const MacroPlace& place) const;

 private:
  using Key = std::tuple<int, std::string, HostAddress>;  // workplace, number, address
  [[nodiscard]] static Key keyOf(const MacroPlace& place) {
    return {place.workplace, place.number, place.address};
  }

  mutable Mutex mutex_;
  std::map<Key, ContentCheck> seen_ GUARDED_BY(mutex_);
};

}  // namespace tessaly
