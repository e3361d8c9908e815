#include "review/LineChanges.h"

#include <cctype>
#include <cstdint>
#include <unordered_map>

#include "review/Alignment.h"

namespace tessaly {
namespace {

// Every byte of a character beyond ASCII counts, so that none is cut.
bool isOfWord(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte >= 0x80 || std::isalnum(byte) != 0 || c == '.' || c == '_';
}

std::vector<LinePart> wordsOf(std::string_view line) {
  std::vector<LinePart> words;
  for (std::size_t begin = 0, end = 0; begin < line.size(); begin = end) {
    end = begin + 1;
    while (end < line.size() && isOfWord(line[begin]) && isOfWord(line[end])) ++end;
    words.push_back({begin, end});
  }
  return words;
}

using Numbers = std::unordered_map<std::string_view, std::uint32_t>;

std::vector<std::uint32_t> numbersOf(std::string_view line, const std::vector<LinePart>& words,
                                     Numbers& numbers) {
  std::vector<std::uint32_t> row;
  for (const LinePart& word : words) {
    const auto next = static_cast<std::uint32_t>(numbers.size());
    row.push_back(numbers.try_emplace(line.substr(word.begin, word.end - word.begin), next).first->second);
  }
  return row;
}

void mark(std::vector<LinePart>& parts, const LinePart& word) {
  if (!parts.empty() && parts.back().end == word.begin) {
    parts.back().end = word.end;
  } else {
    parts.push_back(word);
  }
}

}  // namespace

LineChanges changesInside(std::string_view a, std::string_view b) {
  const std::vector<LinePart> wordsA = wordsOf(a), wordsB = wordsOf(b);
  Numbers numbers;
  const auto rowA = numbersOf(a, wordsA, numbers), rowB = numbersOf(b, wordsB, numbers);
  const Alignment alignment = align(rowA, rowB);
  LineChanges changes;
  std::vector<bool> kept(wordsB.size(), false);
  for (std::size_t i = 0; i < wordsA.size(); ++i) {
    const int partner = alignment.partners[i];
    if (partner < 0) {
      mark(changes.a, wordsA[i]);
    } else {
      kept[static_cast<std::size_t>(partner)] = true;
    }
  }
  for (std::size_t j = 0; j < wordsB.size(); ++j) {
    if (!kept[j]) mark(changes.b, wordsB[j]);
  }
  return changes;
}

}  // namespace tessaly
