#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

// The words after a command's name. A command takes its flags and options off first, then checks with
// `complete` that what is left are its positional words. Everything after "--" is positional.
class Arguments {
 public:
  explicit Arguments(std::vector<std::string> words);

  // True when the flag stood there.
  bool flag(std::string_view name);

  // The word after the option; of several the last. An option without a word is a problem.
  std::optional<std::string> option(std::string_view name);

  // False, with `problem` telling why, when an option is unknown or lacks its word, or when there are fewer
  // or more positional words than given.
  [[nodiscard]] bool complete(std::size_t least, std::size_t most);

  [[nodiscard]] const std::string& problem() const { return problem_; }

  // The positional words, once complete.
  [[nodiscard]] std::size_t size() const { return words_.size(); }
  [[nodiscard]] const std::string& operator[](std::size_t i) const { return words_[i]; }

 private:
  std::vector<std::string> words_;     // before "--"
  std::vector<std::string> literals_;  // after it
  std::string problem_;
};

// A whole number within the bounds, digits and a sign only; nothing otherwise.
[[nodiscard]] std::optional<int> wholeNumber(std::string_view text, int least, int most);

}  // namespace tessaly
