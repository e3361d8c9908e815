#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "dictionary/FunctionDictionary.h"

namespace tessaly {

// Finds functions as people speak of them: by words of their display texts, of their segments and of the
// texts of those, in any order and any case. "key 2 clip", "KEY2 CLIP" and "clip key2" are the same: a word
// ends where letters and digits meet. Observes a dictionary that is complete. Not for two threads at once.
class FunctionSearch {
 public:
  using Functions = std::vector<std::uint32_t>;
  static constexpr std::size_t kMostWords = 8;  // further ones are not looked at

  explicit FunctionSearch(const FunctionDictionary& dictionary);

  [[nodiscard]] static bool hasWords(std::string_view text);

  // Those of `among`, places in registration order, that have every word of the text: a number as a whole,
  // anything else also as a part. The best first: whole words before beginnings before parts, words that
  // stand side by side as they were typed before others, short texts before long ones. All of them, in their
  // order, for a text without words.
  [[nodiscard]] Functions find(std::string_view text, const Functions& among) const;

 private:
  using Word = std::uint32_t;
  using Qualities = std::vector<std::uint8_t>;  // of each word, how well it fits one that was typed

  void add(const FunctionRecord& function);
  void addWords(std::string_view text);
  void addSegment(std::string_view segment);
  [[nodiscard]] Word wordOf(const std::string& upper);
  [[nodiscard]] Qualities qualitiesOf(const std::string& typed) const;
  void addPlaces();
  [[nodiscard]] std::size_t usesOf(const Qualities& qualities) const;
  // How well each function fits a typed word, by the places of the words that fit; those that fit at all also
  // come in `fitting`, in no order.
  [[nodiscard]] Qualities fitOfAll(const Qualities& qualities, Functions& fitting) const;
  [[nodiscard]] std::uint8_t fitOf(std::uint32_t function, const Qualities& qualities) const;
  // Whether two words that were typed side by side stand so.
  [[nodiscard]] bool sideBySide(std::uint32_t function, const Qualities& first,
                                const Qualities& second) const;
  [[nodiscard]] Functions ranked(const Functions& functions, const std::vector<std::uint8_t>& scores) const;

  const FunctionDictionary& dictionary_;
  std::vector<std::string> words_;      // in capital letters; the first is none and stands between two texts
  std::vector<std::uint32_t> uses_;     // how often each stands in texts_
  std::vector<Word> texts_;             // of all functions
  std::vector<std::uint32_t> ends_;     // in texts_, of each function; the one before tells the beginning
  std::vector<std::uint16_t> lengths_;  // of each function's display text, in words
  std::vector<std::uint32_t> functions_;  // that have each word, rising, word by word as uses_ counts them
  std::vector<std::uint32_t> begins_;     // in functions_, of each word
  std::unordered_map<std::string, Word> known_;
  std::unordered_map<std::string_view, std::vector<Word>> segments_;  // and the words of each
};

}  // namespace tessaly
