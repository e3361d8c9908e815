#pragma once

#include <chrono>
#include <optional>
#include <set>
#include <string>

namespace tessaly {

// How long values are watched, and what is still missing then: a panel sends nothing for a name that it does
// not know.
class ValueWatch {
 public:
  // `count` values are wanted, 0 for no end, within `patience` from now on, if given.
  ValueWatch(std::set<std::string> names, int count, std::optional<std::chrono::milliseconds> patience);

  [[nodiscard]] bool over() const;
  // How long the next value may take, `most` at the longest.
  [[nodiscard]] std::chrono::milliseconds timeLeft(std::chrono::milliseconds most) const;
  void count(const std::string& name);

  // Once it is over: what did not come, or an empty text.
  [[nodiscard]] std::string shortfall() const;

 private:
  std::set<std::string> silent_;  // names without a value
  int left_;
  bool endless_;
  std::optional<std::chrono::steady_clock::time_point> end_;
};

}  // namespace tessaly
