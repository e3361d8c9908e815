#include "review/SnapshotShelf.h"

#include <algorithm>
#include <utility>

#include "platform/SystemFailure.h"
#include "platform/Text.h"

namespace tessaly {
SnapshotShelf::SnapshotShelf(std::shared_ptr<const Snapshot> snapshot, int workplace, std::string path)
    : snapshot_(std::move(snapshot)), workplace_(workplace), path_(std::move(path)) {}

std::string SnapshotShelf::title() const {
  const std::string file(displayUtf8(fileNameOf(path_)));
  return workplace_ == Snapshot::kFolder ? "the folder in " + file
                                         : format("workplace %d in ", workplace_) + file;
}

// The archive stands where a folder would, so that a place says where it was found.
MacroPlace SnapshotShelf::place(MacroNumber number) const {
  return {path_ + '/' + snapshotFileOf(workplace_, number), {}, workplace_, number.text()};
}

Expected<std::vector<MacroShelf::Held>> SnapshotShelf::list() {
  if (cancelled_) return cancelledFailure();
  std::vector<Held> held;
  for (const Snapshot::Macro& macro : snapshot_->of(workplace_)) held.push_back({macro.number, macro.name});
  return held;
}

Expected<std::string> SnapshotShelf::read(MacroNumber number) {
  if (cancelled_) return cancelledFailure();
  const auto macros = snapshot_->of(workplace_);
  const auto found = std::ranges::lower_bound(
      macros, number.value(), {}, [](const Snapshot::Macro& macro) { return macro.number.value(); });
  if (found == macros.end() || found->number.value() != number.value())
    return Failure{Failure::Kind::kMissing, "is not in the snapshot"};
  return found->bytes;
}

Outcome SnapshotShelf::writable() const {
  return Failure{Failure::Kind::kNoSnapshot, "is never changed once it is made"};
}

ShelfWrite SnapshotShelf::write(MacroNumber, std::string_view, MacroChange, const BeforeWrite&) {
  return {ShelfWrite::State::kAsBefore, writable().failure()};
}

ShelfWrite SnapshotShelf::remove(MacroNumber, const BeforeWrite&) {
  return {ShelfWrite::State::kAsBefore, writable().failure()};
}

}  // namespace tessaly
