#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "review/MacroBatch.h"
#include "review/MacroShelf.h"

namespace tessaly {

// Macros of one workplace into another, as one batch: each under its own number. What is not any more what
// was compared is let alone, on either side. Blocking, on a thread of its own; `cancel` from another one.
class WorkplaceCopy {
 public:
  // A shelf of its own each time, on any thread.
  using MakeShelf = std::function<std::shared_ptr<MacroShelf>()>;
  struct Wanted {
    MacroNumber number;
    HeldContent from, to;  // as they were compared
  };
  using Progress = std::function<void(std::size_t index, const MacroBatch::Row& row)>;

  // `title` is what people are told of the batch.
  WorkplaceCopy(const SiteRoot& root, MakeShelf from, MakeShelf to, std::string title,
                std::vector<Wanted> wanted);

  // Reads what is to be written and was not read before; `fresh` is that then, to be looked at before `run`
  // writes it.
  Outcome read();
  [[nodiscard]] const std::vector<BatchItem>& fresh() const;
  // Reads what was not read before unless `read` has just done so, and writes; again: what has failed.
  // `progress` is told of each row on this thread.
  Outcome run(const Progress& progress);
  // Ends the run that is under way, or the next one.
  void cancel();

  // What the last run has written, to be undone as one. While it does not run.
  [[nodiscard]] const std::vector<BatchTrace>& traces() const { return traces_; }

 private:
  // What was read at once; `rows` are those of what was wanted.
  struct Part {
    std::vector<std::size_t> rows;
    std::unique_ptr<MacroBatch> batch;
  };

  Outcome whole(const std::function<Outcome()>& work);
  Outcome open();
  Outcome readMissing();
  Outcome write(const Progress& progress);
  [[nodiscard]] bool runs(MacroBatch* batch);
  [[nodiscard]] bool isCancelled();

  MacroHistory history_;
  MakeShelf from_, to_;
  std::string title_;
  std::vector<Wanted> wanted_;
  std::vector<bool> read_;  // each of them
  BatchPlaces places_;
  std::vector<Part> parts_;
  std::vector<std::pair<std::size_t, Failure>> unread_;  // what could not be read when it was tried last
  bool known_ = false;                                   // that, since the last run
  bool fresh_ = false;                                   // nobody has tried to write the last part
  std::vector<BatchTrace> traces_;
  std::mutex mutex_;  // over what follows
  bool cancelled_ = false;
  MacroBatch* running_ = nullptr;
  std::shared_ptr<MacroShelf> source_, target_;
};

}  // namespace tessaly
