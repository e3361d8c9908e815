#pragma once

#include <atomic>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/MacroKeeper.h"
#include "platform/Outcome.h"
#include "review/BatchPlaces.h"
#include "review/Tries.h"

namespace tessaly {

// A macro of a batch: what is to stand where.
struct BatchItem {
  MacroPlace place;                  // each place once in a batch
  std::optional<std::string> bytes;  // nothing: what stands there is deleted
  HeldContent expected = {};         // anything else there is let alone; unknown: whatever stands there
};

// Writes many macros as one: what each place holds goes to the history first, each macro is verified, and a
// journal in the root (docs/batch-journal.md) holds all of it until the batch is over, so that the next start
// after a crash ends or undoes it (BatchRecovery). Blocking, on a thread of its own; `cancel` from another
// one. Every place holds its old or its new macro whole at any time, but for a panel that cannot be reached.
class MacroBatch {
 public:
  enum class Mode {
    kAsManyAsGo,  // each row for itself
    kAllOrNone    // files of the disk: after a failure or a cancel what was written is put back
  };
  struct Row {
    enum class State {
      kWaiting,
      kDone,
      kUnverified,  // a panel has taken it, and does not let it be read
      kAsBefore,    // why it was not done, or was put back, tells `why`
      kUnknown      // what stands there could not be found out
    };
    State state = State::kWaiting;
    Failure why = {};
    std::string note = {};                 // what else a person is to know
    HeldContent before = {};               // what stood there when it was written over
    std::optional<std::string> kept = {};  // its id in the history
    [[nodiscard]] bool done() const { return state == State::kDone || state == State::kUnverified; }
    // It failed at the panel, which may take it at another try.
    [[nodiscard]] bool mayGoYet() const { return !done() && why.kind == Failure::Kind::kPanel; }
  };
  using Progress = std::function<void(std::size_t index, const Row& row)>;

  // `title` is what people are told of it ("copy of 12 macros"), UTF-8. Observes the places.
  MacroBatch(BatchPlaces& places, std::string title, MacroChange change, Mode mode,
             std::vector<BatchItem> items);

  // Writes the rows that are not done, in their order; again: those that have failed. `progress` is told of
  // each on this thread. Not done when nothing was tried at all, as without room for the journal.
  Outcome run(const Progress& progress = {});
  // What is being written is ended or put back; the rest of the rows is not begun. Once.
  void cancel();

  // While it does not run.
  [[nodiscard]] const std::vector<BatchItem>& items() const { return items_; }
  [[nodiscard]] const std::vector<Row>& rows() const { return rows_; }
  [[nodiscard]] std::size_t doneCount() const;
  [[nodiscard]] const std::string& title() const { return title_; }

 private:
  Outcome runEach(const std::vector<std::size_t>& open, const Progress& progress);
  Outcome runAll(const std::vector<std::size_t>& open, const Progress& progress);
  void putBack(const std::vector<std::size_t>& open, std::size_t count,
               const std::vector<std::optional<std::string>>& olds, const Failure& why,
               const Progress& progress);
  void write(std::size_t index, const BeforeWrite& before);

  BatchPlaces& places_;
  std::string title_;
  MacroChange change_;
  Mode mode_;
  std::vector<BatchItem> items_;
  std::vector<Row> rows_;
  std::map<std::size_t, std::string> torn_;  // of rows that are unknown: what a part may be left of
  std::atomic<bool> cancelled_{false};
};

// Runs a batch again while rows of it failed at the panel, which may take them yet. `progress` is told once
// of each row that is done or given up; a cancel of the tries begins no run, that of the batch ends one.
Outcome runTrying(MacroBatch& batch, Tries& tries, const MacroBatch::Progress& progress);

// What a batch has left, to be undone by another one.
struct BatchTrace {
  MacroPlace place;
  HeldContent before;               // kUnknown: it cannot be undone
  std::optional<std::string> kept;  // id of what stood there
  HeldContent left;
};
[[nodiscard]] BatchTrace traceOf(const BatchItem& item, const MacroBatch::Row& row);  // of one that is done
[[nodiscard]] std::vector<BatchTrace> tracesOf(const MacroBatch& batch);

// The items of the batch that undoes it, as far as the history holds what stood there; what it surely does
// not is counted in `lost`. A failure when that cannot be known now.
[[nodiscard]] Expected<std::vector<BatchItem>> undoing(const std::vector<BatchTrace>& traces,
                                                       const SiteRoot& root, MacroHistory& history,
                                                       std::size_t& lost);

}  // namespace tessaly
