#pragma once

#include <cstddef>
#include <optional>

namespace tessaly {

// A workplace of a panel, numbered 1 to 8.
class Workplace {
 public:
  static constexpr int kCount = 8;

  // Nothing for a number out of bounds.
  [[nodiscard]] static constexpr std::optional<Workplace> of(int number) {
    return number >= 1 && number <= kCount ? std::optional(Workplace(number)) : std::nullopt;
  }

  [[nodiscard]] constexpr int value() const { return value_; }
  [[nodiscard]] constexpr std::size_t index() const { return static_cast<std::size_t>(value_ - 1); }

 private:
  explicit constexpr Workplace(int value) : value_(value) {}

  int value_;
};

}  // namespace tessaly
