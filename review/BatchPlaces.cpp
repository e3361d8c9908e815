#include "review/BatchPlaces.h"

#include "platform/Files.h"
#include "platform/MacroNumber.h"
#include "review/DiskShelf.h"

namespace tessaly {
namespace {

Failure notConnected(const MacroPlace& place) {
  return {Failure::Kind::kPanel, "the panel at " + place.address.text() + " is not connected"};
}

}  // namespace

HeldContent HeldContent::asRead(const Expected<std::string>& read) {
  if (read) return of(std::string_view(*read));
  return read.failure().kind == Failure::Kind::kMissing ? nothing() : HeldContent{};
}

// A shelf within reach of cancel.
class BatchPlaces::Busy {
 public:
  Busy(BatchPlaces& places, MacroShelf* shelf) : places_(places) { set(shelf); }
  ~Busy() { set(nullptr); }
  Busy(const Busy&) = delete;
  Busy& operator=(const Busy&) = delete;

 private:
  void set(MacroShelf* shelf) {
    const std::scoped_lock guard(places_.mutex_);
    places_.busy_ = shelf;
  }

  BatchPlaces& places_;
};

Expected<std::string> BatchPlaces::read(const MacroPlace& place) {
  if (!onPanel(place)) return readFile(root_, place.file);
  MacroShelf* const shelf = shelfOf(place);
  const auto number = MacroNumber::parse(place.number);
  if (shelf == nullptr || !number) return notConnected(place);
  const Busy busy(*this, shelf);
  return shelf->read(*number);
}

ShelfWrite BatchPlaces::write(const MacroPlace& place, std::optional<std::string_view> bytes,
                              std::optional<MacroChange> change, const BeforeWrite& before) {
  if (!onPanel(place)) return writeMacroFile(root_, history_, place.file, bytes, change, before);
  MacroShelf* const shelf = shelfOf(place);
  const auto number = MacroNumber::parse(place.number);
  if (shelf == nullptr || !number) return {ShelfWrite::State::kAsBefore, notConnected(place)};
  const Busy busy(*this, shelf);
  return bytes ? shelf->write(*number, *bytes, change.value_or(MacroChange::kPutBack), before)
               : shelf->remove(*number, before);
}

void BatchPlaces::cancel() {
  const std::scoped_lock guard(mutex_);
  if (busy_ != nullptr) busy_->cancel();
}

bool isTorn(const Expected<std::string>& found, std::string_view bytes) {
  return found && found->size() < bytes.size() && bytes.starts_with(*found);
}

std::string placeInWords(const MacroPlace& place) {
  KeptMacro named;
  named.place = place;
  return named.placeText();
}

}  // namespace tessaly
