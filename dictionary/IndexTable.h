#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

namespace tessaly {

// A hash table of function numbers whose keys lie elsewhere: open addressing with linear probing, 40 to 80 %
// full. A slot holds the number plus one: two bytes where every number fits them, as on most sites, else
// four, with a few bits of the hash above the number, so that a probe hardly ever looks at a key in vain.
// Hashes are of 64 bits.
class IndexTable {
 public:
  static constexpr int kWideIndexBits = 22;
  static constexpr std::uint32_t kLargestIndex = (std::uint32_t{1} << kWideIndexBits) - 2;

  // Empties the table and makes room for the numbers below `count`. Keys that are dear to compare want wide
  // slots.
  void makeRoom(std::size_t count, bool wide = false) {
    const std::size_t size = std::bit_ceil(count + count / 4 + 1);
    const bool narrow = !wide && count <= std::numeric_limits<std::uint16_t>::max();
    narrow_ = std::vector<std::uint16_t>(narrow ? size : 0);
    wide_ = std::vector<std::uint32_t>(narrow ? 0 : size);
  }

  // Enters `index` unless an entry with the same key is there; `same(index)` compares an entry with the key.
  // Room must have been made.
  template <typename Same>
  void insertFirst(std::uint64_t hash, std::uint32_t index, Same same) {
    wide_.empty() ? insertInto(narrow_, hash, index, same) : insertInto(wide_, hash, index, same);
  }

  template <typename Same>
  [[nodiscard]] std::optional<std::uint32_t> find(std::uint64_t hash, Same same) const {
    return wide_.empty() ? findIn(narrow_, hash, same) : findIn(wide_, hash, same);
  }

  [[nodiscard]] std::size_t bytes() const {
    return narrow_.capacity() * sizeof(std::uint16_t) + wide_.capacity() * sizeof(std::uint32_t);
  }

 private:
  template <typename Slot>
  static constexpr int kIndexBits = sizeof(Slot) == sizeof(std::uint16_t) ? 16 : kWideIndexBits;
  template <typename Slot>
  static constexpr std::uint32_t kIndexMask = (std::uint32_t{1} << kIndexBits<Slot>)-1;

  template <typename Slot>
  static std::uint32_t indexIn(Slot slot) {
    return (slot & kIndexMask<Slot>)-1;
  }
  // The bits of a slot above its number, which a narrow one does not have.
  template <typename Slot>
  static std::uint32_t tagOf(std::uint64_t hash) {
    return static_cast<std::uint32_t>(hash >> 32) & ~kIndexMask<Slot> & std::numeric_limits<Slot>::max();
  }

  template <typename Slot, typename Same>
  static void insertInto(std::vector<Slot>& slots, std::uint64_t hash, std::uint32_t index, Same same) {
    Slot& slot = slots[probe(slots, hash, same)];
    if (slot == 0) slot = static_cast<Slot>(tagOf<Slot>(hash) | (index + 1));
  }

  template <typename Slot, typename Same>
  static std::optional<std::uint32_t> findIn(const std::vector<Slot>& slots, std::uint64_t hash, Same same) {
    if (slots.empty()) return std::nullopt;
    const Slot slot = slots[probe(slots, hash, same)];
    return slot == 0 ? std::nullopt : std::optional(indexIn(slot));
  }

  // The slot of the key, or the free one where it would go.
  template <typename Slot, typename Same>
  static std::size_t probe(const std::vector<Slot>& slots, std::uint64_t hash, Same same) {
    const std::uint32_t tag = tagOf<Slot>(hash);
    for (std::size_t place = hash & (slots.size() - 1);; place = (place + 1) & (slots.size() - 1)) {
      const Slot slot = slots[place];
      if (slot == 0 || ((slot & ~kIndexMask<Slot>) == tag && same(indexIn(slot)))) return place;
    }
  }

  std::vector<std::uint16_t> narrow_;  // one of both has slots, a power of two
  std::vector<std::uint32_t> wide_;
};

}  // namespace tessaly
