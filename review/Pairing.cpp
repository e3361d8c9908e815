#include "review/Pairing.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "review/Alignment.h"
#include "review/CommandMeaning.h"

namespace tessaly {
namespace {

using How = Mate::How;
using Numbers = std::vector<std::uint32_t>;

constexpr std::size_t kMostCandidates = 16;  // places in the other macro that a moved block is looked for at

std::string_view identifierOf(const MacroCommand& command) { return command.fid; }
std::string_view functionOf(const MacroCommand& command) { return command.functionName(); }

// The places of the commands of one meaning that stand alone in B.
struct Places {
  std::vector<int> all;   // rising
  std::size_t begin = 0;  // those before stand alone no more
};

class Pairer {
 public:
  Pairer(const MacroCommands& a, const MacroCommands& b) : a_(a), b_(b) {
    pairing_.a.resize(a.size());
    pairing_.b.resize(b.size());
  }

  Pairing run(const FunctionDictionary* dictionary) {
    readMeanings(dictionary);
    const Alignment alignment = align(meaningsA_, meaningsB_);
    pairing_.minimal = alignment.longest;
    for (std::size_t i = 0; i < a_.size(); ++i) {
      if (alignment.partners[i] >= 0) pair(i, static_cast<std::size_t>(alignment.partners[i]), How::kSame);
    }
    pairMoved(2);
    findElsewhere();
    pairChanged(identifierOf, true);
    pairChanged(identifierOf, false);
    pairChanged(functionOf, false);
    pairMoved(1);
    return std::move(pairing_);
  }

 private:
  void readMeanings(const FunctionDictionary* dictionary) {
    std::unordered_map<std::string, std::uint32_t> numbers;
    numbers.reserve(a_.size() + b_.size());
    const auto read = [&](const MacroCommands& commands, Numbers& meanings) {
      meanings.reserve(commands.size());
      for (const MacroCommand& command : commands) {
        const auto next = static_cast<std::uint32_t>(numbers.size());
        meanings.push_back(numbers.try_emplace(meaningOf(command, dictionary), next).first->second);
      }
    };
    read(a_, meaningsA_);
    read(b_, meaningsB_);
    meaningCount_ = numbers.size();
  }

  void pair(std::size_t inA, std::size_t inB, How how, int block = -1) {
    pairing_.a[inA] = {how, static_cast<int>(inB), block};
    pairing_.b[inB] = {how, static_cast<int>(inA), block};
  }

  [[nodiscard]] static bool alone(const std::vector<Mate>& mates, std::size_t place) {
    return mates[place].how == How::kAlone;
  }

  // Commands that stand alone in both macros and mean the same, in pieces as long as can be and of `least` at
  // the least.
  void pairMoved(std::size_t least) {
    std::unordered_map<std::uint32_t, Places> places;
    for (std::size_t j = 0; j < b_.size(); ++j) {
      if (alone(pairing_.b, j)) places[meaningsB_[j]].all.push_back(static_cast<int>(j));
    }
    for (std::size_t i = 0; i < a_.size(); ++i) {
      const auto found = alone(pairing_.a, i) ? places.find(meaningsA_[i]) : places.end();
      if (found == places.end()) continue;
      const auto [place, length] = longestFrom(i, found->second);
      if (length < least) continue;
      for (std::size_t k = 0; k < length; ++k) pair(i + k, place + k, How::kMoved, blocks_);
      ++blocks_;
    }
  }

  // Where in B the longest piece stands that begins as A does at `i`, and its length.
  [[nodiscard]] std::pair<std::size_t, std::size_t> longestFrom(std::size_t i, Places& places) const {
    while (places.begin < places.all.size() &&
           !alone(pairing_.b, static_cast<std::size_t>(places.all[places.begin])))
      ++places.begin;
    const std::size_t end = std::min(places.all.size(), places.begin + kMostCandidates);
    std::pair<std::size_t, std::size_t> best{0, 0};
    for (std::size_t candidate = places.begin; candidate < end; ++candidate) {
      const auto j = static_cast<std::size_t>(places.all[candidate]);
      std::size_t length = 0;
      while (i + length < a_.size() && j + length < b_.size() && alone(pairing_.a, i + length) &&
             alone(pairing_.b, j + length) && meaningsA_[i + length] == meaningsB_[j + length])
        ++length;
      if (length > best.second) best = {j, length};
    }
    return best;
  }

  // Meanings that stand alone in both macros: a command that has one may be a moved one rather than a change.
  void findElsewhere() {
    std::vector<bool> inA(meaningCount_, false);
    elsewhere_.assign(meaningCount_, false);
    for (const std::size_t i : aloneIn(pairing_.a, 0, a_.size())) inA[meaningsA_[i]] = true;
    for (const std::size_t j : aloneIn(pairing_.b, 0, b_.size()))
      elsewhere_[meaningsB_[j]] = inA[meaningsB_[j]];
  }

  [[nodiscard]] std::vector<std::size_t> changeable(const std::vector<Mate>& mates, const Numbers& meanings,
                                                    std::size_t begin, std::size_t end,
                                                    bool nowhereElse) const {
    std::vector<std::size_t> places = aloneIn(mates, begin, end);
    if (nowhereElse) std::erase_if(places, [&](std::size_t place) { return elsewhere_[meanings[place]]; });
    return places;
  }

  // Between each two pairs that follow each other; only commands that stand nowhere else, or any.
  template <typename Key>
  void pairChanged(const Key& keyOf, bool nowhereElse) {
    std::size_t beginA = 0, beginB = 0;
    for (std::size_t i = 0; i <= a_.size(); ++i) {
      if (i < a_.size() && !pairing_.a[i].inOrder()) continue;
      const std::size_t endB = i < a_.size() ? static_cast<std::size_t>(pairing_.a[i].other) : b_.size();
      if (i > beginA && endB > beginB) {
        pairBetween(changeable(pairing_.a, meaningsA_, beginA, i, nowhereElse),
                    changeable(pairing_.b, meaningsB_, beginB, endB, nowhereElse), keyOf);
      }
      beginA = i + 1;
      beginB = endB + 1;
    }
  }

  [[nodiscard]] static std::vector<std::size_t> aloneIn(const std::vector<Mate>& mates, std::size_t begin,
                                                        std::size_t end) {
    std::vector<std::size_t> places;
    for (std::size_t i = begin; i < end; ++i) {
      if (alone(mates, i)) places.push_back(i);
    }
    return places;
  }

  template <typename Key>
  void pairBetween(const std::vector<std::size_t>& inA, const std::vector<std::size_t>& inB,
                   const Key& keyOf) {
    if (inA.empty() || inB.empty()) return;
    std::unordered_map<std::string_view, std::uint32_t> numbers;
    const auto read = [&](const MacroCommands& commands, const std::vector<std::size_t>& places) {
      Numbers row;
      row.reserve(places.size());
      for (const std::size_t place : places) {
        const auto next = static_cast<std::uint32_t>(numbers.size());
        row.push_back(numbers.try_emplace(keyOf(commands[place]), next).first->second);
      }
      return row;
    };
    const Numbers keysA = read(a_, inA), keysB = read(b_, inB);
    const Alignment alignment = align(keysA, keysB);
    for (std::size_t i = 0; i < inA.size(); ++i) {
      const int partner = alignment.partners[i];
      if (partner >= 0) pair(inA[i], inB[static_cast<std::size_t>(partner)], How::kChanged);
    }
  }

  const MacroCommands &a_, &b_;
  Numbers meaningsA_, meaningsB_;  // equal for equal meanings
  std::size_t meaningCount_ = 0;
  std::vector<bool> elsewhere_;  // by meaning
  Pairing pairing_;
  int blocks_ = 0;
};

}  // namespace

Pairing pairCommands(const MacroCommands& a, const MacroCommands& b, const FunctionDictionary* dictionary) {
  return Pairer(a, b).run(dictionary);
}

}  // namespace tessaly
