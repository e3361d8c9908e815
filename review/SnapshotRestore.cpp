#include "review/SnapshotRestore.h"

#include <algorithm>
#include <utility>

#include "model/MacroFile.h"
#include "platform/SystemFailure.h"
#include "review/BatchPlaces.h"

namespace tessaly {
namespace {

using State = RestoreRow::State;

State stateOf(const MacroBatch::Row& row) {
  switch (row.state) {
    case MacroBatch::Row::State::kDone:
      return State::kRestored;
    case MacroBatch::Row::State::kUnverified:
      return State::kUnverified;
    case MacroBatch::Row::State::kWaiting:
    case MacroBatch::Row::State::kAsBefore:
      return State::kAsBefore;
    case MacroBatch::Row::State::kUnknown:
      return State::kUnknown;
  }
  return State::kUnknown;
}

void note(RestoreRow& row, const MacroBatch::Row& now) {
  if (now.state == MacroBatch::Row::State::kWaiting) return;
  row.state = stateOf(now);
  row.why = now.why;
  row.note = now.note;
}

}  // namespace

// How a cancel reaches what runs; it is told at once when there has been one.
class SnapshotRestore::Running {
 public:
  Running(SnapshotRestore& restore, std::function<void()> end) : restore_(restore) {
    const std::scoped_lock guard(restore_.mutex_);
    if (restore_.tries_.cancelled()) end();
    restore_.end_ = std::move(end);
  }
  ~Running() {
    const std::scoped_lock guard(restore_.mutex_);
    restore_.end_ = {};
  }
  Running(const Running&) = delete;
  Running& operator=(const Running&) = delete;

 private:
  SnapshotRestore& restore_;
};

SnapshotRestore::SnapshotRestore(std::shared_ptr<const Snapshot> snapshot, const SiteRoot& root,
                                 MacroHistory& history, ShelfOf shelfOf, Rules rules)
    : snapshot_(std::move(snapshot)),
      root_(root),
      history_(history),
      shelfOf_(std::move(shelfOf)),
      anyBytes_(rules.anyBytes),
      tries_(rules.tries) {}

Outcome SnapshotRestore::add(int from, int to, const std::vector<int>& numbers) {
  const auto macros = snapshot_->of(from);
  std::vector<RestoreRow> added;
  for (const Snapshot::Macro& macro : macros) {
    if (numbers.empty() || std::ranges::find(numbers, macro.number.value()) != numbers.end())
      added.push_back({&macro, to});
  }
  for (const int number : numbers) {
    const auto isIt = [number](const RestoreRow& row) { return row.macro->number.value() == number; };
    if (std::ranges::none_of(added, isIt))
      return Failure{Failure::Kind::kMissing,
                     "the snapshot has no macro " + MacroNumber::textOf(number) + " there"};
  }
  rows_.insert(rows_.end(), added.begin(), added.end());
  return {};
}

Outcome SnapshotRestore::look(const Told& told) {
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    for (int tried = 0; tries_.again(tried); ++tried) {
      lookAt(rows_[i]);
      if (rows_[i].state != State::kUnread || rows_[i].why.kind != Failure::Kind::kPanel) break;
    }
    if (tries_.cancelled()) return cancelledFailure();
    told(i);
    const bool gone = rows_[i].state == State::kUnread && rows_[i].why.kind == Failure::Kind::kPanel;
    if (!gone) continue;
    // Nobody waits a thousand times for a panel that is away.
    for (const Failure why = rows_[i].why; ++i < rows_.size(); told(i)) {
      rows_[i].state = State::kUnread;
      rows_[i].why = why;
    }
  }
  return {};
}

void SnapshotRestore::lookAt(RestoreRow& row) {
  row.state = State::kUnread;
  row.why = {Failure::Kind::kPanel, "the panel cannot be reached"};
  MacroShelf* const shelf = shelfOf_(row.workplace);
  if (shelf == nullptr) return;
  const Running running(*this, [shelf] { shelf->cancel(); });
  row.place = shelf->place(row.macro->number);
  const auto found = shelf->read(row.macro->number);
  row.standing = HeldContent::asRead(found);
  if (found) {
    row.state = *found == row.macro->bytes ? State::kSame : State::kChanged;
  } else if (found.failure().kind == Failure::Kind::kMissing) {
    row.state = State::kNew;
  } else {
    row.why = found.failure();
  }
}

Outcome SnapshotRestore::write(const std::vector<std::size_t>& rows, const Told& told) {
  traces_.clear();
  std::vector<std::size_t> written;
  for (const std::size_t i : rows) {
    RestoreRow& row = rows_[i];
    if (row.state == State::kSame || row.state == State::kRestored || row.state == State::kUnverified)
      continue;
    const Outcome macro = anyBytes_ ? Outcome() : readsAsMacro(row.macro->bytes);
    if (macro && row.place == MacroPlace{}) lookAt(row);  // it could not be reached before
    if (macro && row.place != MacroPlace{}) {
      written.push_back(i);
      continue;
    }
    row.state = State::kAsBefore;
    if (!macro) row.why = {macro.failure().kind, "it is no macro: it " + macro.failure().text};
    told(i);
  }
  if (tries_.cancelled()) return cancelledFailure();
  std::vector<BatchItem> items;
  for (const std::size_t i : written)
    items.push_back({rows_[i].place, rows_[i].macro->bytes, rows_[i].standing});
  if (items.empty()) return {};
  BatchPlaces places(root_, history_, [this](const MacroPlace& place) { return shelfOf_(place.workplace); });
  MacroBatch batch(places, "restore of " + std::to_string(written.size()) + " macros", MacroChange::kPutBack,
                   MacroBatch::Mode::kAsManyAsGo, std::move(items));
  const Running running(*this, [&batch] { batch.cancel(); });
  const Outcome ran = runTrying(batch, tries_, [&](std::size_t index, const MacroBatch::Row& now) {
    note(rows_[written[index]], now);
    told(written[index]);
  });
  for (std::size_t i = 0; i < written.size(); ++i) note(rows_[written[i]], batch.rows()[i]);
  traces_ = tracesOf(batch);
  if (!ran) return ran;
  return tries_.cancelled() && traces_.size() < written.size() ? cancelledFailure() : Outcome();
}

void SnapshotRestore::cancel() {
  tries_.cancel();
  const std::scoped_lock guard(mutex_);
  if (end_) end_();
}

}  // namespace tessaly
