#pragma once

#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "model/MacroHistory.h"
#include "platform/ContentCheck.h"
#include "platform/SiteRoot.h"
#include "review/MacroShelf.h"

namespace tessaly {

// What a place holds, as far as it is known.
struct HeldContent {
  enum class Kind { kUnknown, kNothing, kBytes };
  Kind kind = Kind::kUnknown;
  ContentCheck check = {};  // of bytes

  [[nodiscard]] static HeldContent nothing() { return {Kind::kNothing, {}}; }
  [[nodiscard]] static HeldContent of(std::string_view bytes) { return {Kind::kBytes, contentCheck(bytes)}; }
  // Of what was read; unknown when it could not be.
  [[nodiscard]] static HeldContent asRead(const Expected<std::string>& read);
  // Of what is to be there; nothing after a deletion.
  [[nodiscard]] static HeldContent after(const std::optional<std::string>& bytes) {
    return bytes ? of(std::string_view(*bytes)) : nothing();
  }

  friend bool operator==(const HeldContent&, const HeldContent&) = default;
};

// The places that a batch reads and writes: files of the disk by their paths, macros of panels by their
// shelves. One thread; `cancel` from another one.
class BatchPlaces {
 public:
  // The shelf of the workplace that the place is in; null while that panel is not connected.
  using PanelShelves = std::function<MacroShelf*(const MacroPlace& place)>;

  // Observes root and history, which is this thread's alone. Without `panels` none is connected.
  BatchPlaces(const SiteRoot& root, MacroHistory& history, PanelShelves panels = {})
      : root_(root), history_(history), panels_(std::move(panels)) {}

  [[nodiscard]] const SiteRoot& root() const { return root_; }
  [[nodiscard]] MacroHistory& history() const { return history_; }

  [[nodiscard]] static bool onPanel(const MacroPlace& place) { return place.file.empty(); }
  // Whether it can be got at now.
  [[nodiscard]] bool reaches(const MacroPlace& place) const {
    return !onPanel(place) || shelfOf(place) != nullptr;
  }

  [[nodiscard]] Expected<std::string> read(const MacroPlace& place);
  // As a shelf writes, and deletes without bytes. Without `change` a batch puts back: a file's own bytes of
  // the batch are not kept, so that a history without room does not stop it.
  [[nodiscard]] ShelfWrite write(const MacroPlace& place, std::optional<std::string_view> bytes,
                                 std::optional<MacroChange> change, const BeforeWrite& before);
  // Ends what runs on a panel; its shelves take nothing more.
  void cancel();

 private:
  class Busy;

  [[nodiscard]] MacroShelf* shelfOf(const MacroPlace& place) const {
    return panels_ ? panels_(place) : nullptr;
  }

  const SiteRoot& root_;
  MacroHistory& history_;
  PanelShelves panels_;
  std::mutex mutex_;
  MacroShelf* busy_ = nullptr;  // while it reads or writes; under mutex_
};

// Whether what was found is what a panel may hold of `bytes` when sending them was cut short: their
// beginning.
[[nodiscard]] bool isTorn(const Expected<std::string>& found, std::string_view bytes);

// "c:\...\macro007.mac", or "10.0.0.1 workplace 1 macro 007".
[[nodiscard]] std::string placeInWords(const MacroPlace& place);

}  // namespace tessaly
