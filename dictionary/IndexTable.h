#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace tessaly {

// A hash table of function numbers whose keys lie elsewhere: four bytes a slot, open addressing with linear
// probing, 40 to 80 % full. A slot holds the number plus one in its low bits and a few bits of the hash above
// them, so that a probe hardly ever looks at a key in vain. Hashes are of 64 bits.
class IndexTable {
 public:
  static constexpr int kIndexBits = 22;
  static constexpr std::uint32_t kIndexMask = (std::uint32_t{1} << kIndexBits) - 1;
  static constexpr std::uint32_t kLargestIndex = kIndexMask - 1;

  // Empties the table and makes room for `count` entries.
  void makeRoom(std::size_t count) { slots_.assign(std::bit_ceil(count + count / 4 + 1), 0); }

  // Enters `index` unless an entry with the same key is there; `same(index)` compares an entry with the key.
  // Room must have been made.
  template <typename Same>
  void insertFirst(std::uint64_t hash, std::uint32_t index, Same same) {
    const std::size_t place = probe(hash, same);
    if (slots_[place] != 0) return;
    slots_[place] = tagOf(hash) << kIndexBits | (index + 1);
  }

  template <typename Same>
  [[nodiscard]] std::optional<std::uint32_t> find(std::uint64_t hash, Same same) const {
    if (slots_.empty()) return std::nullopt;
    const std::uint32_t slot = slots_[probe(hash, same)];
    return slot == 0 ? std::nullopt : std::optional(indexIn(slot));
  }

  [[nodiscard]] std::size_t bytes() const { return slots_.capacity() * sizeof(std::uint32_t); }

 private:
  static std::uint32_t tagOf(std::uint64_t hash) {
    return static_cast<std::uint32_t>(hash >> (32 + kIndexBits));
  }
  static std::uint32_t indexIn(std::uint32_t slot) { return (slot & kIndexMask) - 1; }

  // The slot of the key, or the free one where it would go.
  template <typename Same>
  std::size_t probe(std::uint64_t hash, Same same) const {
    const std::uint32_t tag = tagOf(hash);
    for (std::size_t place = hash & (slots_.size() - 1);; place = (place + 1) & (slots_.size() - 1)) {
      const std::uint32_t slot = slots_[place];
      if (slot == 0 || (slot >> kIndexBits == tag && same(indexIn(slot)))) return place;
    }
  }

  std::vector<std::uint32_t> slots_;  // a power of two
};

}  // namespace tessaly
