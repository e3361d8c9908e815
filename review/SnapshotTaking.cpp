#include "review/SnapshotTaking.h"

#include <utility>

#include "platform/Files.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

Failure cancelled() { return {Failure::Kind::kCancelled, "was cancelled"}; }

std::string whereIn(int workplace) {
  return workplace == Snapshot::kFolder ? std::string("the folder") : format("workplace %d", workplace);
}

Failure unread(const std::string& what, const Failure& why) {
  return why.kind == Failure::Kind::kCancelled ? why : Failure{why.kind, what + ": " + why.text};
}

}  // namespace

SnapshotTaking::SnapshotTaking(Snapshot::Origin origin, std::vector<int> workplaces, ShelfOf shelfOf,
                               Patience patience)
    : origin_(std::move(origin)),
      workplaces_(std::move(workplaces)),
      shelfOf_(std::move(shelfOf)),
      patience_(patience) {}

Expected<Snapshot> SnapshotTaking::take(std::chrono::sys_seconds time, const Tell& tell) {
  Snapshot snapshot{origin_, time, workplaces_, {}};
  bytes_ = 0;
  for (std::size_t place = 0; place < workplaces_.size(); ++place) {
    if (const Outcome taken = takeWorkplace(place, snapshot, tell); !taken) return taken.failure();
  }
  return snapshot;
}

void SnapshotTaking::cancel() {
  const std::scoped_lock guard(mutex_);
  cancelled_ = true;
  if (shelf_ != nullptr) shelf_->cancel();
  changed_.notify_all();
}

template <class T>
Expected<T> SnapshotTaking::tried(const std::function<Expected<T>()>& read) {
  auto result = read();
  for (int tries = 1; tries < patience_.tries; ++tries) {
    if (result || result.failure().kind != Failure::Kind::kPanel || !pause()) break;
    result = read();
  }
  return result;
}

Outcome SnapshotTaking::takeWorkplace(std::size_t place, Snapshot& snapshot, const Tell& tell) {
  const int workplace = workplaces_[place];
  const std::unique_ptr<MacroShelf> shelf = shelfOf_(workplace);
  const auto use = [this](MacroShelf* used) {
    const std::scoped_lock guard(mutex_);
    shelf_ = used;
    return !cancelled_;
  };
  if (!use(shelf.get())) return cancelled();
  const Outcome taken = [&]() -> Outcome {
    const auto list = tried<std::vector<MacroShelf::Held>>([&] { return shelf->list(); });
    if (!list) return unread("the list of " + whereIn(workplace), list.failure());
    Progress progress{workplace, place, 0, list->size()};
    tell(progress);
    for (const MacroShelf::Held& held : *list) {
      if (const Outcome one = takeMacro(*shelf, workplace, held, snapshot); !one) return one;
      ++progress.done;
      tell(progress);
    }
    return {};
  }();
  return use(nullptr) ? taken : cancelled();
}

Outcome SnapshotTaking::takeMacro(MacroShelf& shelf, int workplace, const MacroShelf::Held& held,
                                  Snapshot& snapshot) {
  const std::string what = "macro " + held.number.text() + " of " + whereIn(workplace);
  auto bytes = tried<std::string>([&] { return shelf.read(held.number); });
  if (!bytes) {
    const bool absent = bytes.failure().kind == Failure::Kind::kMissing;
    return absent ? Outcome() : unread(what, bytes.failure());
  }
  bytes_ += bytes->size();
  if (bytes_ > kLargestFile)
    return unread(what, {Failure::Kind::kTooLarge, "with it the macros are more than a snapshot may hold"});
  snapshot.macros.push_back({workplace, held.number, held.name, *std::move(bytes)});
  return {};
}

bool SnapshotTaking::pause() {
  std::unique_lock guard(mutex_);
  return !changed_.wait_for(guard, patience_.pause, [this] { return cancelled_; });
}

}  // namespace tessaly
