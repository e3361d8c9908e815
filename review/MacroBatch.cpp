#include "review/MacroBatch.h"

#include <algorithm>
#include <map>
#include <set>
#include <tuple>
#include <utility>

#include "platform/Files.h"
#include "platform/SitePlace.h"
#include "platform/SystemFailure.h"
#include "review/BatchJournal.h"

namespace tessaly {
namespace {

using State = MacroBatch::Row::State;

Failure changedFailure() {
  return {Failure::Kind::kChanged, "holds something else by now: it was let alone"};
}
bool fits(const HeldContent& expected, const Expected<std::string>& found) {
  return expected.kind == HeldContent::Kind::kUnknown || expected == HeldContent::asRead(found);
}

State stateOf(const ShelfWrite& written) {
  switch (written.state) {
    case ShelfWrite::State::kWritten:
      return State::kDone;
    case ShelfWrite::State::kUnverified:
      return State::kUnverified;
    case ShelfWrite::State::kAsBefore:
      return State::kAsBefore;
    case ShelfWrite::State::kUnknown:
      return State::kUnknown;
  }
  return State::kUnknown;
}

// A file of the disk counts however its path is spelled.
auto keyOf(const SiteRoot& root, const MacroPlace& place) {
  return std::tuple(BatchPlaces::onPanel(place) ? std::string() : root.resolve(place.file).string(),
                    place.address, place.workplace, place.number);
}

// What is done may be done again by a later start, over what has come there until then.
void noteEnd(const Outcome& ended, const std::vector<std::size_t>& open, std::vector<MacroBatch::Row>& rows) {
  if (ended) return;
  for (const std::size_t index : open) {
    if (!rows[index].done()) continue;
    rows[index].why = ended.failure();
    rows[index].note = ended.failure().text;
  }
}

// Why the items cannot be a batch at all.
Outcome checked(const SiteRoot& root, const std::vector<BatchItem>& items, MacroBatch::Mode mode) {
  std::set<decltype(keyOf(root, {}))> seen;
  for (const BatchItem& item : items) {
    if (!seen.insert(keyOf(root, item.place)).second)
      return Failure{Failure::Kind::kInTheWay, placeInWords(item.place) + " stands twice in the batch"};
    if (mode == MacroBatch::Mode::kAllOrNone && BatchPlaces::onPanel(item.place))
      return Failure{Failure::Kind::kPanel, "what is on a panel cannot be written all or none"};
  }
  return {};
}

}  // namespace

MacroBatch::MacroBatch(BatchPlaces& places, std::string title, MacroChange change, Mode mode,
                       std::vector<BatchItem> items)
    : places_(places),
      title_(std::move(title)),
      change_(change),
      mode_(mode),
      items_(std::move(items)),
      rows_(items_.size()) {}

Outcome MacroBatch::run(const Progress& progress) {
  std::vector<std::size_t> open;
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    if (rows_[i].done()) continue;
    if (rows_[i].state != State::kUnknown) rows_[i] = {};
    open.push_back(i);
  }
  if (open.empty()) return {};
  if (Outcome able = checked(places_.root(), items_, mode_); !able) return able;
  Outcome ran = mode_ == Mode::kAllOrNone ? runAll(open, progress) : runEach(open, progress);
  cancelled_ = false;
  return ran;
}

void MacroBatch::cancel() {
  cancelled_ = true;
  if (mode_ == Mode::kAsManyAsGo) places_.cancel();
}

std::size_t MacroBatch::doneCount() const {
  return static_cast<std::size_t>(std::ranges::count_if(rows_, [](const Row& row) { return row.done(); }));
}

// Writes one row; what stands there is asked of `before` once it is what was expected.
void MacroBatch::write(std::size_t index, const BeforeWrite& before) {
  const BatchItem& item = items_[index];
  Row& row = rows_[index];
  const auto tried = torn_.find(index);
  std::string old = tried == torn_.end() ? std::string() : tried->second;
  bool stays = tried != torn_.end();  // what an earlier try has left is there yet, as far as is known
  const ShelfWrite written =
      places_.write(item.place, item.bytes, change_, [&](const ShelfStanding& standing) -> Outcome {
        // A part of what this row has tried to write is its own; what stood there before that counts.
        const bool own =
            tried != torn_.end() &&
            (isTorn(standing.bytes, item.bytes.value_or("")) || isTorn(standing.bytes, tried->second) ||
             HeldContent::asRead(standing.bytes) == HeldContent::after(item.bytes));
        stays = stays && (own || HeldContent::asRead(standing.bytes).kind == HeldContent::Kind::kUnknown);
        if (!own && !fits(item.expected, standing.bytes)) return changedFailure();
        if (!own) {
          row.before = HeldContent::asRead(standing.bytes);
          row.kept = standing.kept;
          old = standing.bytes.value_or("");
        }
        return before(standing);
      });
  row.state = stateOf(written);
  if (row.state == State::kAsBefore && stays) row.state = State::kUnknown;
  row.why = written.why;
  row.note = written.note;
  torn_.erase(index);
  if (row.state == State::kUnknown) torn_[index] = std::move(old);
}

Outcome MacroBatch::runEach(const std::vector<std::size_t>& open, const Progress& progress) {
  BatchRecord record{title_, mode_, change_, {}, {}, {}, false};
  for (const std::size_t index : open) {
    record.items.push_back(items_[index]);
    if (torn_.contains(index)) record.items.back().expected = {};  // a part of it may be there
  }
  auto journal = BatchJournal::begin(places_.root(), record);
  if (!journal) return journal.failure();
  for (std::size_t i = 0; i < open.size(); ++i) {
    Row& row = rows_[open[i]];
    if (cancelled_) {
      row.state = State::kAsBefore;
      row.why = cancelledFailure();
    } else {
      write(open[i], [&](const ShelfStanding& standing) {
        return journal->noteBegun(i, standing.bytes, BatchPlaces::onPanel(items_[open[i]].place));
      });
    }
    if (progress) progress(open[i], row);
  }
  noteEnd(journal->end(), open, rows_);
  return {};
}

Outcome MacroBatch::runAll(const std::vector<std::size_t>& open, const Progress& progress) {
  BatchRecord record{title_, mode_, change_, {}, {}, {}, false};
  for (const std::size_t index : open) {
    const BatchItem& item = items_[index];
    auto old = places_.read(item.place);
    const bool missing = !old && old.failure().kind == Failure::Kind::kMissing;
    if (!old && (!missing || !item.bytes))
      return Failure{old.failure().kind, placeInWords(item.place) + ' ' + old.failure().text};
    if (!fits(item.expected, old))
      return Failure{Failure::Kind::kChanged, placeInWords(item.place) + " has been changed meanwhile"};
    record.items.push_back({item.place, item.bytes, HeldContent::asRead(old)});
    record.olds.push_back(old ? std::optional(*std::move(old)) : std::nullopt);
  }
  auto journal = BatchJournal::begin(places_.root(), record);
  if (!journal) return journal.failure();
  for (std::size_t i = 0; i < open.size(); ++i) {
    Row& row = rows_[open[i]];
    if (cancelled_) {
      row.state = State::kAsBefore;
      row.why = cancelledFailure();
    } else {
      write(open[i], [&](const ShelfStanding& standing) -> Outcome {
        return fits(record.items[i].expected, standing.bytes) ? Outcome() : changedFailure();
      });
    }
    if (progress) progress(open[i], row);
    if (row.done()) continue;
    // Should that not be noted, a program that dies now is followed by one that goes on: all, or none.
    static_cast<void>(journal->noteUndoing());
    putBack(open, i, record.olds, row.why, progress);
    const bool whole =
        std::ranges::all_of(open, [&](std::size_t index) { return rows_[index].state == State::kAsBefore; });
    if (whole) static_cast<void>(journal->end());
    return {};
  }
  noteEnd(journal->end(), open, rows_);
  return {};
}

// The first `count` of the open rows, the last one first; those behind them are not begun.
void MacroBatch::putBack(const std::vector<std::size_t>& open, std::size_t count,
                         const std::vector<std::optional<std::string>>& olds, const Failure& why,
                         const Progress& progress) {
  for (std::size_t i = open.size(); i-- > 0;) {
    const std::size_t index = open[i];
    Row& row = rows_[index];
    if (i == count) continue;  // why it is
    if (i < count) {
      const HeldContent left = HeldContent::after(items_[index].bytes);
      const ShelfWrite back = places_.write(
          items_[index].place, olds[i], std::nullopt, [&](const ShelfStanding& standing) -> Outcome {
            return fits(left, standing.bytes) ? Outcome() : changedFailure();
          });
      row.state = back.written()                             ? State::kAsBefore
                  : back.why.kind == Failure::Kind::kChanged ? State::kUnknown
                                                             : State::kDone;
      row.why = back.written() ? why : back.why;
    } else {
      row.state = State::kAsBefore;
      row.why = why;
    }
    if (progress) progress(index, row);
  }
}

Outcome runTrying(MacroBatch& batch, Tries& tries, const MacroBatch::Progress& progress) {
  std::vector<bool> givenUp(batch.rows().size(), false);  // each run tries these, too
  for (int tried = 0; tries.again(tried); ++tried) {
    const Outcome ran = batch.run([&](std::size_t index, const MacroBatch::Row& row) {
      if (!row.done() && (givenUp[index] || (row.mayGoYet() && !tries.last(tried)))) return;
      givenUp[index] = !row.done();
      progress(index, row);
    });
    if (!ran) return ran;
    if (std::ranges::none_of(batch.rows(), &MacroBatch::Row::mayGoYet)) break;
  }
  return {};
}

BatchTrace traceOf(const BatchItem& item, const MacroBatch::Row& row) {
  return {item.place, row.before, row.kept, HeldContent::after(item.bytes)};
}

std::vector<BatchTrace> tracesOf(const MacroBatch& batch) {
  std::vector<BatchTrace> traces;
  for (std::size_t i = 0; i < batch.rows().size(); ++i) {
    if (batch.rows()[i].done()) traces.push_back(traceOf(batch.items()[i], batch.rows()[i]));
  }
  return traces;
}

Expected<std::vector<BatchItem>> undoing(const std::vector<BatchTrace>& traces, const SiteRoot& root,
                                         MacroHistory& history, std::size_t& lost) {
  using Kind = HeldContent::Kind;
  Outcome listed;
  std::map<std::string, std::string> files;  // by the ids
  for (KeptMacro& kept : history.list(nullptr, &listed))
    files.emplace(std::move(kept.id), std::move(kept.file));
  const Failure gone =
      listed ? Failure{Failure::Kind::kMissing, "is no longer in the history"} : listed.failure();
  std::vector<BatchItem> items;
  lost = 0;
  for (const BatchTrace& trace : traces) {
    BatchItem item{trace.place, std::nullopt, trace.left};
    if (trace.before.kind == Kind::kBytes) {
      const auto file = trace.kept ? files.find(*trace.kept) : files.end();
      auto bytes = file != files.end() ? readOwnFile(root, file->second) : Expected<std::string>(gone);
      if (!bytes && !isNothing(bytes.failure())) return bytes.failure();
      if (bytes) item.bytes = *std::move(bytes);
    }
    if (trace.before.kind == Kind::kNothing || item.bytes)
      items.push_back(std::move(item));
    else
      ++lost;
  }
  return items;
}

}  // namespace tessaly
