#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace tessaly {

// How often what a panel does not give or take is tried, as when its line is lost, and the waits between two
// tries, which a cancel ends. One thread; `cancel` and `cancelled` on any.
//
//   for (int tried = 0; tries.again(tried); ++tried) ...
class Tries {
 public:
  struct Rules {
    int most = 4;
    std::chrono::milliseconds pause{1000};
  };

  explicit Tries(Rules rules) : rules_(rules) {}

  // Whether it is tried once more after so many tries; waits before all but the first one.
  [[nodiscard]] bool again(int tried);
  [[nodiscard]] bool last(int tried) const { return tried + 1 >= rules_.most; }

  void cancel();  // for good
  [[nodiscard]] bool cancelled() const;

 private:
  Rules rules_;
  mutable std::mutex mutex_;
  std::condition_variable changed_;
  bool cancelled_ = false;  // under the mutex
};

}  // namespace tessaly
