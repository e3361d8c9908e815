#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

namespace tessaly {

// Offsets none of which lies before the one in front of it: two bytes each, and four for every 32. Once one
// lies 64 kB or more behind the first of its 32, which the names of no real site do, all have four bytes.
class RisingOffsets {
 public:
  [[nodiscard]] std::size_t size() const { return wide_.empty() ? steps_.size() : wide_.size(); }
  [[nodiscard]] std::size_t capacity() const { return wide_.empty() ? steps_.capacity() : wide_.capacity(); }
  [[nodiscard]] std::uint32_t operator[](std::size_t index) const {
    return wide_.empty() ? bases_[index / kGroup] + steps_[index] : wide_[index];
  }

  void reserve(std::size_t count) {
    if (wide_.empty()) {
      bases_.reserve(count / kGroup + 1);
      steps_.reserve(count);
    } else {
      wide_.reserve(count);
    }
  }

  void push_back(std::uint32_t offset) {
    if (wide_.empty()) {
      if (steps_.size() % kGroup == 0) bases_.push_back(offset);
      const std::uint32_t step = offset - bases_.back();
      if (step <= std::numeric_limits<std::uint16_t>::max()) {
        steps_.push_back(static_cast<std::uint16_t>(step));
        return;
      }
      widen();
    }
    wide_.push_back(offset);
  }

  // The last one that is not behind `offset`; the first one is not.
  [[nodiscard]] std::size_t lastUpTo(std::size_t offset) const {
    if (!wide_.empty()) return placeBehind(wide_.begin(), wide_.end(), offset) - 1;
    const std::size_t group = placeBehind(bases_.begin(), bases_.end(), offset) - 1;
    const auto begin = steps_.begin() + static_cast<std::ptrdiff_t>(group * kGroup);
    const auto end = begin + std::min<std::ptrdiff_t>(kGroup, steps_.end() - begin);
    return group * kGroup + placeBehind(begin, end, offset - bases_[group]) - 1;
  }

  void shrink_to_fit() {
    bases_.shrink_to_fit();
    steps_.shrink_to_fit();
    wide_.shrink_to_fit();
  }

  [[nodiscard]] std::size_t bytes() const {
    return (bases_.capacity() + wide_.capacity()) * sizeof(std::uint32_t) +
           steps_.capacity() * sizeof(std::uint16_t);
  }

 private:
  static constexpr std::size_t kGroup = 32;

  template <typename Place>
  static std::size_t placeBehind(Place begin, Place end, std::size_t offset) {
    return static_cast<std::size_t>(std::upper_bound(begin, end, offset) - begin);
  }

  void widen() {
    std::vector<std::uint32_t> all;
    all.reserve(steps_.capacity());
    for (std::size_t i = 0; i < steps_.size(); ++i) all.push_back((*this)[i]);
    steps_ = {};
    bases_ = {};
    wide_ = std::move(all);
  }

  std::vector<std::uint32_t> bases_;  // the first of each group
  std::vector<std::uint16_t> steps_;  // of each from there on
  std::vector<std::uint32_t> wide_;   // in place of both
};

}  // namespace tessaly
