#include "review/SnapshotTaking.h"

#include <utility>

#include "model/MacroFile.h"
#include "model/MacroNameScan.h"
#include "platform/Files.h"
#include "platform/SystemFailure.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

std::string whereIn(int workplace) {
  return workplace == Snapshot::kFolder ? std::string("the folder") : format("workplace %d", workplace);
}

Failure unread(const std::string& what, const Failure& why) {
  return why.kind == Failure::Kind::kCancelled ? why : Failure{why.kind, what + ": " + why.text};
}

}  // namespace

SnapshotTaking::SnapshotTaking(Snapshot::Origin origin, std::vector<int> workplaces, ShelfOf shelfOf,
                               Rules rules)
    : origin_(std::move(origin)),
      workplaces_(std::move(workplaces)),
      shelfOf_(std::move(shelfOf)),
      onlyMacros_(rules.onlyMacros),
      tries_(rules.tries) {}

Expected<Snapshot> SnapshotTaking::take(std::chrono::sys_seconds time, const Tell& tell) {
  Snapshot snapshot{origin_, time, workplaces_, {}};
  bytes_ = 0;
  for (std::size_t place = 0; place < workplaces_.size(); ++place) {
    if (const Outcome taken = takeWorkplace(place, snapshot, tell); !taken) return taken.failure();
  }
  return snapshot;
}

void SnapshotTaking::cancel() {
  tries_.cancel();
  const std::scoped_lock guard(mutex_);
  if (shelf_) shelf_->cancel();
}

void SnapshotTaking::setShelf(std::unique_ptr<MacroShelf> shelf) {
  const std::scoped_lock guard(mutex_);
  shelf_.swap(shelf);
  if (shelf_ && tries_.cancelled()) shelf_->cancel();
}

template <class T>
Expected<T> SnapshotTaking::tried(int workplace, const std::function<Expected<T>(MacroShelf&)>& read) {
  Failure why{Failure::Kind::kPanel, "the panel cannot be reached"};
  for (int tried = 0; tries_.again(tried); ++tried) {
    if (!shelf_) setShelf(shelfOf_(workplace));
    if (!shelf_) continue;
    auto result = read(*shelf_);
    if (result || result.failure().kind != Failure::Kind::kPanel) return result;
    why = result.failure();
    setShelf(nullptr);
  }
  return tries_.cancelled() ? cancelledFailure() : why;
}

Outcome SnapshotTaking::takeWorkplace(std::size_t place, Snapshot& snapshot, const Tell& tell) {
  const int workplace = workplaces_[place];
  setShelf(nullptr);  // that of the workplace before
  const auto list =
      tried<std::vector<MacroShelf::Held>>(workplace, [](MacroShelf& shelf) { return shelf.list(); });
  if (!list) return unread("the list of " + whereIn(workplace), list.failure());
  Progress progress{workplace, place, 0, list->size()};
  tell(progress);
  for (const MacroShelf::Held& held : *list) {
    if (const Outcome taken = takeMacro(workplace, held, snapshot); !taken) return taken;
    ++progress.done;
    tell(progress);
  }
  return {};
}

Outcome SnapshotTaking::takeMacro(int workplace, const MacroShelf::Held& held, Snapshot& snapshot) {
  const std::string what = "macro " + held.number.text() + " of " + whereIn(workplace);
  auto bytes = tried<std::string>(workplace, [&](MacroShelf& shelf) -> Expected<std::string> {
    auto came = shelf.read(held.number);
    const Outcome macro = came && onlyMacros_ ? readsAsMacro(*came) : Outcome();
    if (macro) return came;
    return Failure{Failure::Kind::kPanel, "what came is no macro: it " + macro.failure().text};
  });
  if (!bytes) return isNone(held, bytes.failure()) ? Outcome() : unread(what, bytes.failure());
  bytes_ += bytes->size();
  if (bytes_ > kLargestFile)
    return unread(what, {Failure::Kind::kTooLarge, "with it the macros are more than a snapshot may hold"});
  std::string name = held.name.empty() ? macroNameIn(*bytes) : held.name;
  snapshot.macros.push_back({workplace, held.number, std::move(name), *std::move(bytes)});
  return {};
}

}  // namespace tessaly
