#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <string>
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

  // Again: what has failed to be written. `progress` is told of each row on this thread.
  Outcome run(const Progress& progress);
  // Ends the run that is under way, or the next one.
  void cancel();

  // What the last run has written, to be undone as one. While it does not run.
  [[nodiscard]] const std::vector<BatchTrace>& traces() const { return traces_; }

 private:
  Outcome runOnce(const Progress& progress);
  Outcome readAll(const Progress& progress);
  [[nodiscard]] bool isCancelled();

  MacroHistory history_;
  MakeShelf from_, to_;
  std::string title_;
  std::vector<Wanted> wanted_;
  BatchPlaces places_;
  std::vector<std::size_t> rows_;  // of the batch: the index of what was wanted
  std::vector<BatchTrace> traces_;
  std::mutex mutex_;                   // over what follows
  std::unique_ptr<MacroBatch> batch_;  // once everything was read; changed by the thread of `run` alone
  bool cancelled_ = false;
  std::shared_ptr<MacroShelf> source_, target_;
};

}  // namespace tessaly
