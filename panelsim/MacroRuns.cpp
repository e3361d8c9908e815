#include "panelsim/MacroRuns.h"

#include <algorithm>
#include <utility>

namespace tessaly {

MacroRuns::MacroRuns(Calls calls) : calls_(std::move(calls)), thread_([this] { serve(); }) {}

MacroRuns::~MacroRuns() {
  {
    const std::scoped_lock guard(mutex_);
    leaving_ = true;
  }
  changed_.notify_one();
  thread_.join();
}

void MacroRuns::start(int workplace, int number, Macro macro) {
  const std::scoped_lock guard(mutex_);
  runs_[static_cast<std::size_t>(workplace - 1)] = Run{number, std::move(macro), 0, Clock::now()};
  changed_.notify_one();
}

void MacroRuns::stop(int workplace) {
  const std::scoped_lock guard(mutex_);
  auto& run = runs_[static_cast<std::size_t>(workplace - 1)];
  if (run) run = Run{run->number, std::nullopt, 0, Clock::now(), run->told};
  changed_.notify_one();
}

void MacroRuns::stopAll() {
  for (int workplace = 1; workplace <= Workplace::kCount; ++workplace) stop(workplace);
}

bool MacroRuns::waitForEnd(std::chrono::milliseconds patience) {
  std::unique_lock lock(mutex_);
  return ended_.wait_for(lock, patience, [this] {
    return !calling_ &&
           std::none_of(runs_.begin(), runs_.end(), [](const auto& run) { return run.has_value(); });
  });
}

void MacroRuns::setPace(Pace pace) {
  const std::scoped_lock guard(mutex_);
  for (auto& run : runs_)
    if (run && run->next > 0) run->due += pace - pace_;
  pace_ = pace;
  changed_.notify_one();
}

void MacroRuns::serve() {
  std::unique_lock lock(mutex_);
  while (!leaving_) {
    auto next = runs_.end();
    for (auto run = runs_.begin(); run != runs_.end(); ++run)
      if (*run && (next == runs_.end() || (*run)->due < (*next)->due)) next = run;
    if (next == runs_.end()) {
      changed_.wait(lock);
    } else if ((*next)->due > Clock::now()) {
      const Clock::time_point due = (*next)->due;
      changed_.wait_until(lock, due);
    } else {
      advance(lock, next);
    }
  }
}

// One step of a run, which may be another one once the lock was let go.
void MacroRuns::advance(std::unique_lock<std::mutex>& lock, Runs::iterator place) {
  Run& run = **place;
  calling_ = true;
  const int workplace = static_cast<int>(place - runs_.begin()) + 1, number = run.number;
  if (run.macro && !std::exchange(run.told, true)) {
    lock.unlock();
    calls_.running(workplace, number);
  } else if (run.macro && run.next < run.macro->commands().size()) {
    const Macro macro = *run.macro;
    const std::size_t command = run.next++;
    run.due += pace_;
    lock.unlock();
    calls_.carryOut(workplace, number, command, macro.commands()[command]);
  } else {
    const bool told = run.told;
    place->reset();
    lock.unlock();
    if (told) calls_.running(workplace, std::nullopt);
  }
  lock.lock();
  calling_ = false;
  ended_.notify_all();
}

}  // namespace tessaly
