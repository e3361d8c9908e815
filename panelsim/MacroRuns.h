#pragma once

#include <array>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

#include "model/Macro.h"
#include "platform/Workplace.h"

namespace tessaly {

inline constexpr int kLongestPaceMs = 60'000;

// Macros that run: one a workplace at the most, command after command on one thread. Operations may be called
// from any thread but that one.
class MacroRuns {
 public:
  using Clock = std::chrono::steady_clock;
  using Pace = std::chrono::milliseconds;
  static constexpr Pace kUsualPace{40};  // a frame

  // Both are called on the thread, in order, with no lock held.
  struct Calls {
    std::function<void(int workplace, int number, std::size_t command, const MacroCommand& what)> carryOut;
    std::function<void(int workplace, std::optional<int> number)>
        running;  // the macro that runs now, or none
  };

  explicit MacroRuns(Calls calls);
  ~MacroRuns();
  MacroRuns(const MacroRuns&) = delete;
  MacroRuns& operator=(const MacroRuns&) = delete;

  // What runs on the workplace gives way; the same macro begins anew.
  void start(int workplace, int number, Macro macro);
  void stop(int workplace);  // after the command that is being carried out
  void stopAll();
  // Blocks until nothing runs, or so long; whether nothing runs.
  [[nodiscard]] bool waitForEnd(std::chrono::milliseconds patience);
  // Between the beginnings of two commands; 0: as fast as it goes.
  void setPace(Pace pace);

 private:
  struct Run {
    int number = 0;
    std::optional<Macro> macro = {};  // nothing once it is to end
    std::size_t next = 0;
    Clock::time_point due = {};
    bool told = false;  // that it runs
  };
  using Runs = std::array<std::optional<Run>, Workplace::kCount>;

  void serve();
  void advance(std::unique_lock<std::mutex>& lock, Runs::iterator place);

  const Calls calls_;
  std::mutex mutex_;  // over what follows
  std::condition_variable changed_, ended_;
  Runs runs_;
  Pace pace_ = kUsualPace;
  bool calling_ = false;
  bool leaving_ = false;
  std::thread thread_;
};

}  // namespace tessaly
