#pragma once

#include <memory>
#include <random>

#include "app/WorkingCopy.h"
#include "fuzz/crash/CrashSite.h"

namespace tessaly {

// Works on the working copy of pane B with steps: a start, then edits, undo, redo and saves by chance. Every
// start looks whether working file, record and steps agree.
class CrashStepsUser {
 public:
  explicit CrashStepsUser(SiteAccess site) : site_(site) {}

  // Decides what comes next: the generation that the working file holds behind it, `fresh` for an edit.
  [[nodiscard]] int decide(int fresh);
  // Does it. False when it fails, or what is there does not agree.
  [[nodiscard]] bool act();

 private:
  enum class Act { kStart, kEdit, kUndo, kRedo, kSave };

  [[nodiscard]] bool start();

  SiteAccess site_;
  std::minstd_rand random_{std::random_device()()};
  std::unique_ptr<WorkingCopy> copy_;  // once the program has started
  Act next_ = Act::kStart;
  int generation_ = 0;  // of an edit
};

}  // namespace tessaly
