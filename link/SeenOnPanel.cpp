#include "link/SeenOnPanel.h"

namespace tessaly {

void SeenOnPanel::note(const MacroPlace& place, std::string_view bytes) {
  const ContentCheck check = contentCheck(bytes);
  const MutexLock guard(mutex_);
  seen_[keyOf(place)] = check;
}

void SeenOnPanel::forget(int workplace, std::string_view number) {
  const MutexLock guard(mutex_);
  std::erase_if(seen_, [&](const auto& seen) {
    return std::get<0>(seen.first) == workplace && std::get<1>(seen.first) == number;
  });
}

std::optional<ContentCheck> SeenOnPanel::of(const MacroPlace& place) const {
  const MutexLock guard(mutex_);
  const auto seen = seen_.find(keyOf(place));
  return seen == seen_.end() ? std::nullopt : std::optional(seen->second);
}

}  // namespace tessaly
