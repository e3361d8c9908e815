#include "review/Alignment.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <unordered_map>

namespace tessaly {
namespace {

using Numbers = std::vector<std::uint32_t>;
using Bits = std::vector<std::uint64_t>;

constexpr std::size_t kWordBits = 64;

struct Range {
  std::size_t begin = 0, end = 0;

  [[nodiscard]] std::size_t size() const { return end - begin; }
};

// Where a bit stands in a row of bits.
void set(Bits& bits, std::size_t place) {
  bits[place / kWordBits] |= std::uint64_t{1} << (place % kWordBits);
}

// One row of the table of common lengths: a bit that is clear raises the length by one. `matches` has the
// places of the row's member; words before `from` have none.
void advance(Bits& row, const Bits& matches, std::size_t from) {
  std::uint64_t carry = 0;
  for (std::size_t i = from; i < row.size(); ++i) {
    const std::uint64_t before = row[i], matched = before & matches[i];
    const std::uint64_t half = before + matched;
    const std::uint64_t sum = half + carry;
    carry = static_cast<std::uint64_t>(half < before) | static_cast<std::uint64_t>(sum < half);
    row[i] = sum | (before & ~matches[i]);
  }
}

class Aligner {
 public:
  Aligner(Numbers first, Numbers second) : first_(std::move(first)), second_(std::move(second)) {
    const std::uint32_t largest = first_.empty() ? 0 : *std::max_element(first_.begin(), first_.end());
    starts_.assign(std::size_t{largest} + 2, 0);
    for (const std::uint32_t number : first_) ++starts_[number + 1];
    for (std::size_t i = 1; i < starts_.size(); ++i) starts_[i] += starts_[i - 1];
    places_.resize(first_.size());
    Numbers next(starts_.begin(), starts_.end() - 1);
    for (std::size_t i = 0; i < first_.size(); ++i)
      places_[next[first_[i]]++] = static_cast<std::uint32_t>(i);
    result_.partners.assign(first_.size(), -1);
  }

  Alignment run() {
    const std::uint64_t cells = std::uint64_t{first_.size()} * second_.size();
    std::size_t parts = 1;
    while (cells / parts / parts > kMostCells) ++parts;
    result_.longest = parts == 1;
    const auto share = [parts](std::size_t size, std::size_t part) { return size * part / parts; };
    for (std::size_t i = 0; i < parts; ++i)
      part({share(first_.size(), i), share(first_.size(), i + 1)},
           {share(second_.size(), i), share(second_.size(), i + 1)});
    return std::move(result_);
  }

 private:
  void pair(std::size_t first, std::size_t second) { result_.partners[first] = static_cast<int>(second); }

  // Halves the second row, finds where the first one parts best, and goes on with both sides.
  void part(Range first, Range second) {
    while (first.size() > 0 && second.size() > 0 && first_[first.begin] == second_[second.begin])
      pair(first.begin++, second.begin++);
    while (first.size() > 0 && second.size() > 0 && first_[first.end - 1] == second_[second.end - 1])
      pair(--first.end, --second.end);
    if (first.size() == 0 || second.size() == 0) return;
    if (second.size() == 1) {
      const auto found = placesOf(second_[second.begin], first);
      if (!found.empty()) pair(found.front(), second.begin);
      return;
    }
    const std::size_t middle = second.begin + second.size() / 2;
    const std::size_t split = first.begin + bestSplit(first, second, middle);
    part({first.begin, split}, {second.begin, middle});
    part({split, first.end}, {middle, second.end});
  }

  [[nodiscard]] std::size_t bestSplit(Range first, Range second, std::size_t middle) const {
    const Numbers before = lengths(first, {second.begin, middle}, false);
    const Numbers behind = lengths(first, {middle, second.end}, true);
    std::size_t best = 0;
    std::uint32_t most = 0;
    for (std::size_t i = 0; i <= first.size(); ++i) {
      const std::uint32_t both = before[i] + behind[first.size() - i];
      if (both <= most) continue;
      most = both;
      best = i;
    }
    return best;
  }

  // The longest common lengths of the whole second range with the first 0, 1, ... members of the first one;
  // backwards with the last ones.
  [[nodiscard]] Numbers lengths(Range first, Range second, bool backwards) const {
    const std::size_t words = (first.size() + kWordBits - 1) / kWordBits;
    const auto bitOf = [&](std::size_t place) {
      return backwards ? first.end - 1 - place : place - first.begin;
    };
    Bits row(words, std::numeric_limits<std::uint64_t>::max());
    Bits matches(words, 0);
    std::unordered_map<std::uint32_t, Bits> frequent;  // 64 at the most
    for (std::size_t i = 0; i < second.size(); ++i) {
      const std::uint32_t number = second_[backwards ? second.end - 1 - i : second.begin + i];
      const auto places = placesOf(number, first);
      if (places.empty()) continue;
      const bool often = places.size() > words;
      Bits& used = often ? frequent[number] : matches;
      if (!often || used.empty()) {
        used.resize(words, 0);
        for (const std::uint32_t place : places) set(used, bitOf(place));
      }
      advance(row, used, bitOf(backwards ? places.back() : places.front()) / kWordBits);
      if (often) continue;
      for (const std::uint32_t place : places) used[bitOf(place) / kWordBits] = 0;
    }
    Numbers counts(first.size() + 1, 0);
    for (std::size_t i = 0; i < first.size(); ++i)
      counts[i + 1] = counts[i] + ((row[i / kWordBits] >> (i % kWordBits) & 1U) == 0 ? 1 : 0);
    return counts;
  }

  // Rising.
  [[nodiscard]] std::span<const std::uint32_t> placesOf(std::uint32_t number, Range range) const {
    if (std::size_t{number} + 1 >= starts_.size()) return {};
    const auto begin = places_.begin() + starts_[number], end = places_.begin() + starts_[number + 1];
    return {std::lower_bound(begin, end, range.begin), std::lower_bound(begin, end, range.end)};
  }

  Numbers first_, second_;
  Numbers starts_, places_;  // of each number in the first row: places_[starts_[number]] and on
  Alignment result_;
};

// The places of the members that the other row has, too: no other can be part of an alignment.
Numbers shared(std::span<const std::uint32_t> row, std::span<const std::uint32_t> other) {
  std::uint32_t largest = 0;
  for (const std::uint32_t number : other) largest = std::max(largest, number);
  std::vector<bool> there(std::size_t{largest} + 1, false);
  for (const std::uint32_t number : other) there[number] = true;
  Numbers places;
  for (std::size_t i = 0; i < row.size(); ++i) {
    if (row[i] <= largest && there[row[i]]) places.push_back(static_cast<std::uint32_t>(i));
  }
  return places;
}

Numbers chosen(std::span<const std::uint32_t> row, const Numbers& places) {
  Numbers numbers;
  numbers.reserve(places.size());
  for (const std::uint32_t place : places) numbers.push_back(row[place]);
  return numbers;
}

}  // namespace

Alignment align(std::span<const std::uint32_t> first, std::span<const std::uint32_t> second) {
  const Numbers firstPlaces = shared(first, second), secondPlaces = shared(second, first);
  const Alignment inner = Aligner(chosen(first, firstPlaces), chosen(second, secondPlaces)).run();
  Alignment result{std::vector<int>(first.size(), -1), inner.longest};
  for (std::size_t i = 0; i < firstPlaces.size(); ++i) {
    const int partner = inner.partners[i];
    if (partner >= 0)
      result.partners[firstPlaces[i]] = static_cast<int>(secondPlaces[static_cast<std::size_t>(partner)]);
  }
  return result;
}

}  // namespace tessaly
