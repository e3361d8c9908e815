#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace tessaly {

// Edits (a character put in, left out or exchanged) between two texts, in ASCII letters of either case; more
// than `most` is told as most + 1.
[[nodiscard]] std::size_t editsBetween(std::string_view a, std::string_view b, std::size_t most);

// The one of many names that is meant: the closest, when it is at most two edits away and no other is as
// close. The names are offered one by one and outlive this.
class CloseName {
 public:
  static constexpr std::size_t kMostEdits = 2;

  explicit CloseName(std::string_view wanted) : wanted_(wanted) {}
  void offer(std::string_view name);
  [[nodiscard]] std::optional<std::string_view> found() const;

 private:
  std::string_view wanted_, best_;
  std::size_t edits_ = kMostEdits + 1;
  bool alone_ = true;
};

}  // namespace tessaly
