#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "model/MacroHistory.h"
#include "review/MacroBatch.h"
#include "review/MacroShelf.h"
#include "review/Snapshot.h"
#include "review/Tries.h"

namespace tessaly {

// A macro of a snapshot, and what became of it where it is to go.
struct RestoreRow {
  enum class State {
    kNotLooked,
    // What stands there.
    kSame,
    kNew,      // nothing yet
    kChanged,  // something else
    kUnread,   // not known; `why`
    // What became of it.
    kRestored,
    kUnverified,  // the panel has taken it, and does not let it be read
    kAsBefore,    // `why`
    kUnknown      // `why`
  };
  const Snapshot::Macro* macro;
  int workplace;  // that it goes to, or Snapshot::kFolder
  State state = State::kNotLooked;
  Failure why = {};
  std::string note = {};  // what else a person is to know
  MacroPlace place = {};
  HeldContent standing = {};  // what was found there
};

// Puts macros of a snapshot back: each that is not there as it is in the snapshot goes through a batch, kept
// in the history and verified; one that has changed since it was looked at is let alone. What a panel does
// not take, as when its line is lost, is tried again. Blocking, on any one thread; `cancel` from another one.
class SnapshotRestore {
 public:
  // The shelf of a workplace, or of the folder, which is observed; null while it cannot be reached.
  using ShelfOf = std::function<MacroShelf*(int workplace)>;
  using Told = std::function<void(std::size_t row)>;

  struct Rules {
    bool anyBytes = false;  // also what is no macro is written
    Tries::Rules tries = {};
  };

  // Observes root and history.
  SnapshotRestore(std::shared_ptr<const Snapshot> snapshot, const SiteRoot& root, MacroHistory& history,
                  ShelfOf shelfOf, Rules rules);

  // Adds the macros of a workplace that go to another one, or the same; of them those with these numbers, all
  // without one. kMissing, nothing added, when one is not in the snapshot.
  Outcome add(int from, int to, const std::vector<int>& numbers = {});
  [[nodiscard]] const std::vector<RestoreRow>& rows() const { return rows_; }

  // Finds out what stands there; told of each row.
  Outcome look(const Told& told);
  // Writes these rows, those that are the same left out; told of each that is done or given up.
  Outcome write(const std::vector<std::size_t>& rows, const Told& told);
  // What the last write has written, to be undone as one. While nothing runs.
  [[nodiscard]] const std::vector<BatchTrace>& traces() const { return traces_; }
  // What runs ends; so does what is begun later.
  void cancel();

 private:
  class Running;

  void lookAt(RestoreRow& row);

  std::shared_ptr<const Snapshot> snapshot_;
  const SiteRoot& root_;
  MacroHistory& history_;
  ShelfOf shelfOf_;
  bool anyBytes_;
  Tries tries_;
  std::vector<RestoreRow> rows_;
  std::vector<BatchTrace> traces_;
  std::mutex mutex_;           // over what follows
  std::function<void()> end_;  // ends what runs
};

}  // namespace tessaly
