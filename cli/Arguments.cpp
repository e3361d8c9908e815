#include "cli/Arguments.h"

#include <algorithm>
#include <charconv>
#include <iterator>

namespace tessaly {

Arguments::Arguments(std::vector<std::string> words) : words_(std::move(words)) {
  const auto end = std::find(words_.begin(), words_.end(), "--");
  if (end == words_.end()) return;
  literals_.assign(std::next(end), words_.end());
  words_.erase(end, words_.end());
}

bool Arguments::flag(std::string_view name) { return std::erase(words_, name) > 0; }

std::optional<std::string> Arguments::option(std::string_view name) {
  std::optional<std::string> value;
  while (true) {
    const auto word = std::find(words_.begin(), words_.end(), name);
    if (word == words_.end()) return value;
    const auto next = std::next(word);
    if (next == words_.end()) {
      problem_ = std::string(name) + " needs a value";
      words_.erase(word);
      return value;
    }
    value = *next;
    words_.erase(word, std::next(next));
  }
}

bool Arguments::complete(std::size_t least, std::size_t most) {
  if (!problem_.empty()) return false;
  const auto unknown = std::find_if(words_.begin(), words_.end(),
                                    [](const std::string& word) { return word.starts_with("--"); });
  if (unknown != words_.end()) {
    problem_ = "unknown option " + *unknown;
    return false;
  }
  words_.insert(words_.end(), literals_.begin(), literals_.end());
  literals_.clear();
  if (words_.size() < least) problem_ = "too few words";
  if (words_.size() > most) problem_ = "too many words: " + words_[most];
  return problem_.empty();
}

std::optional<int> wholeNumber(std::string_view text, int least, int most) {
  int number = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stop != end || number < least || number > most) return std::nullopt;
  return number;
}

}  // namespace tessaly
