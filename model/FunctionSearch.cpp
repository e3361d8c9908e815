#include "model/FunctionSearch.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/Text.h"

namespace tessaly {
namespace {

constexpr std::uint32_t kBetween = 0;  // no word
constexpr std::uint8_t kPart = 1, kBeginning = 3, kWhole = 4;
constexpr std::uint8_t kSideBySide = 4;
constexpr int kMostScore = static_cast<int>(FunctionSearch::kMostWords) * (kWhole + kSideBySide);
constexpr std::size_t kFew = 16;  // times fewer than others, so that each is looked at by itself
constexpr int kLongest = 63;      // words of a display text that tell two functions apart

enum class Kind { kBlank, kDigit, kLetter };

Kind kindOf(char c) {
  if (c >= '0' && c <= '9') return Kind::kDigit;
  const bool letter =
      (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (static_cast<unsigned char>(c) & 0x80) != 0;
  return letter ? Kind::kLetter : Kind::kBlank;
}

// Calls `take` with each run of letters and each run of digits.
template <typename Take>
void forEachWord(std::string_view text, Take take) {
  for (std::size_t begin = 0, end = 0; begin < text.size(); begin = end) {
    const Kind kind = kindOf(text[begin]);
    end = begin + 1;
    while (end < text.size() && kindOf(text[end]) == kind) ++end;
    if (kind != Kind::kBlank) take(text.substr(begin, end - begin));
  }
}

// Without leading zeros, so that "03" is "3".
std::string wordText(std::string_view word) {
  if (kindOf(word.front()) != Kind::kDigit) return toUpperAscii(word);
  word.remove_prefix(std::min(word.find_first_not_of('0'), word.size() - 1));
  return std::string(word);
}

}  // namespace

FunctionSearch::FunctionSearch(const FunctionDictionary& dictionary)
    : dictionary_(dictionary), words_{{}}, uses_{0} {
  const std::size_t count = dictionary.functionCount();
  ends_.reserve(count);
  lengths_.reserve(count);
  for (std::size_t i = 0; i < count; ++i) add(dictionary.function(i));
  addPlaces();
}

void FunctionSearch::add(const FunctionRecord& function) {
  const std::size_t begin = texts_.size();
  addWords(function.description());
  lengths_.push_back(static_cast<std::uint16_t>(std::min<std::size_t>(texts_.size() - begin, kLongest)));
  texts_.push_back(kBetween);
  for (std::string_view rest = function.name(); !rest.empty();) {
    const std::string_view segment = rest.substr(0, rest.find('.'));
    rest.remove_prefix(std::min(segment.size() + 1, rest.size()));
    addSegment(segment);
  }
  ends_.push_back(static_cast<std::uint32_t>(texts_.size()));
}

void FunctionSearch::addWords(std::string_view text) {
  forEachWord(text, [this](std::string_view word) { texts_.push_back(wordOf(wordText(word))); });
}

// Side by side with the next one, as they are in a name; what else tells of a segment stands apart.
void FunctionSearch::addSegment(std::string_view segment) {
  const auto known = segments_.find(segment);
  if (known != segments_.end()) {
    texts_.insert(texts_.end(), known->second.begin(), known->second.end());
    for (const Word word : known->second) ++uses_[word];
    return;
  }
  const std::size_t begin = texts_.size();
  if (const AliasEntry* alias = dictionary_.alias(segment)) {
    texts_.push_back(kBetween);
    addWords(alias->upperDescription);
    texts_.push_back(kBetween);
    addWords(alias->search2);
    texts_.push_back(kBetween);
  }
  addWords(segment);
  segments_.emplace(segment,
                    std::vector<Word>(texts_.begin() + static_cast<std::ptrdiff_t>(begin), texts_.end()));
}

FunctionSearch::Word FunctionSearch::wordOf(const std::string& upper) {
  const auto [found, fresh] = known_.emplace(upper, static_cast<Word>(words_.size()));
  if (fresh) {
    words_.push_back(upper);
    uses_.push_back(0);
  }
  ++uses_[found->second];
  return found->second;
}

FunctionSearch::Qualities FunctionSearch::qualitiesOf(const std::string& typed) const {
  const bool number = kindOf(typed.front()) == Kind::kDigit;
  Qualities qualities(words_.size());
  for (std::size_t word = 1; word < words_.size(); ++word) {
    const std::string& text = words_[word];
    if (text == typed)
      qualities[word] = kWhole;
    else if (!number && text.starts_with(typed))
      qualities[word] = kBeginning;
    else if (!number && text.find(typed) != text.npos)
      qualities[word] = kPart;
  }
  return qualities;
}

void FunctionSearch::addPlaces() {
  begins_.resize(words_.size() + 1);
  for (std::size_t word = 1; word < words_.size(); ++word) begins_[word + 1] = begins_[word] + uses_[word];
  functions_.resize(begins_.back());
  std::vector<std::uint32_t> next = begins_;
  for (std::uint32_t function = 0, place = 0; function < ends_.size(); ++function) {
    for (; place < ends_[function]; ++place)
      if (const Word word = texts_[place]; word != kBetween) functions_[next[word]++] = function;
  }
}

std::size_t FunctionSearch::usesOf(const Qualities& qualities) const {
  std::size_t uses = 0;
  for (std::size_t word = 1; word < qualities.size(); ++word) uses += qualities[word] != 0 ? uses_[word] : 0;
  return uses;
}

FunctionSearch::Qualities FunctionSearch::fitOfAll(const Qualities& qualities, Functions& fitting) const {
  Qualities fit(ends_.size());
  for (std::size_t word = 1; word < qualities.size(); ++word) {
    if (qualities[word] == 0) continue;
    for (std::uint32_t place = begins_[word]; place < begins_[word + 1]; ++place) {
      std::uint8_t& best = fit[functions_[place]];
      if (best == 0) fitting.push_back(functions_[place]);
      best = std::max(best, qualities[word]);
    }
  }
  return fit;
}

std::uint8_t FunctionSearch::fitOf(std::uint32_t function, const Qualities& qualities) const {
  std::uint8_t best = 0;
  for (std::uint32_t place = function == 0 ? 0 : ends_[function - 1]; place < ends_[function]; ++place)
    best = std::max(best, qualities[texts_[place]]);
  return best;
}

bool FunctionSearch::sideBySide(std::uint32_t function, const Qualities& first,
                                const Qualities& second) const {
  for (std::uint32_t place = function == 0 ? 0 : ends_[function - 1]; place + 1 < ends_[function]; ++place)
    if (first[texts_[place]] != 0 && second[texts_[place + 1]] != 0) return true;
  return false;
}

bool FunctionSearch::hasWords(std::string_view text) {
  return std::any_of(text.begin(), text.end(), [](char c) { return kindOf(c) != Kind::kBlank; });
}

// By the score, then by the length of the text: counted out, as there may be very many.
FunctionSearch::Functions FunctionSearch::ranked(const Functions& functions,
                                                 const std::vector<std::uint8_t>& scores) const {
  std::array<std::uint32_t, std::size_t{kMostScore + 1} * (kLongest + 1)> counts{};
  const auto rank = [&](std::size_t i) {
    return static_cast<std::size_t>(kMostScore - scores[i]) * (kLongest + 1) + lengths_[functions[i]];
  };
  for (std::size_t i = 0; i < functions.size(); ++i) ++counts[rank(i)];
  std::uint32_t place = 0;
  for (std::uint32_t& count : counts) place += std::exchange(count, place);
  Functions found(functions.size());
  for (std::size_t i = 0; i < functions.size(); ++i) found[counts[rank(i)]++] = functions[i];
  return found;
}

FunctionSearch::Functions FunctionSearch::find(std::string_view text, const Functions& among) const {
  std::vector<Qualities> typed;
  forEachWord(text, [&](std::string_view word) {
    if (typed.size() < kMostWords) typed.push_back(qualitiesOf(wordText(word)));
  });
  if (typed.empty()) return among;
  std::size_t rarest = 0;
  for (std::size_t i = 1; i < typed.size(); ++i)
    if (usesOf(typed[i]) < usesOf(typed[rarest])) rarest = i;
  Functions fitting, passed;
  const Qualities first = fitOfAll(typed[rarest], fitting);
  if (fitting.size() < among.size() / kFew) {
    std::sort(fitting.begin(), fitting.end());
    for (const std::uint32_t function : fitting)
      if (std::binary_search(among.begin(), among.end(), function)) passed.push_back(function);
  } else {
    for (const std::uint32_t function : among)
      if (first[function] != 0) passed.push_back(function);
  }
  std::vector<std::uint8_t> scores;
  for (const std::uint32_t function : passed) scores.push_back(first[function]);
  for (std::size_t i = 0; i < typed.size(); ++i) {
    if (i == rarest) continue;
    Functions ignored;
    const bool few = passed.size() * kFew < usesOf(typed[i]);
    const Qualities all = few ? Qualities() : fitOfAll(typed[i], ignored);
    std::size_t left = 0;
    for (std::size_t at = 0; at < passed.size(); ++at) {
      const std::uint8_t fit = few ? fitOf(passed[at], typed[i]) : all[passed[at]];
      if (fit == 0) continue;
      passed[left] = passed[at];
      scores[left++] = static_cast<std::uint8_t>(scores[at] + fit);
    }
    passed.resize(left);
    scores.resize(left);
  }
  for (std::size_t i = 0; i + 1 < typed.size(); ++i)
    for (std::size_t at = 0; at < passed.size(); ++at)
      if (sideBySide(passed[at], typed[i], typed[i + 1])) scores[at] += kSideBySide;
  return ranked(passed, scores);
}

}  // namespace tessaly
