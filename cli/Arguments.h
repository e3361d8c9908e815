#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tessaly {

// An option as a usage shows it: "--raw", "--list [TEXT]" or "--at start|end|N".
struct OptionShape {
  enum class Value { kNone, kOptional, kNeeded };
  std::string_view name;
  Value value = Value::kNone;
};

// The options that a usage names, so that what is printed is what is read. The names point into the usage.
[[nodiscard]] std::vector<OptionShape> optionsOf(std::string_view usage);

// The words after a command's name, taken apart by the options that it knows. A needed value is the next
// word, whatever it looks like, or follows a "="; an optional one counts as a positional word. Everything
// after "--" is positional, and "-h" before it is "--help".
class Arguments {
 public:
  Arguments(const std::vector<std::string>& words, std::span<const OptionShape> options);

  // True when the flag stood there.
  [[nodiscard]] bool flag(std::string_view name) const { return find(name) != nullptr; }

  // The value of the option; of several the last.
  [[nodiscard]] std::optional<std::string> option(std::string_view name) const;

  // False, with `problem` telling why, when an option is unknown or lacks its value, or when there are fewer
  // or more positional words than given.
  [[nodiscard]] bool complete(std::size_t least, std::size_t most);

  [[nodiscard]] const std::string& problem() const { return problem_; }

  // The positional words.
  [[nodiscard]] std::size_t size() const { return words_.size(); }
  [[nodiscard]] const std::string& operator[](std::size_t i) const { return words_[i]; }

 private:
  using Given = std::pair<std::string_view, std::string>;  // an option's name and its value

  // The word and, if it takes one, the value behind it; where the next word stands.
  std::size_t takeOption(const std::vector<std::string>& words, std::size_t at,
                         std::span<const OptionShape> options);
  [[nodiscard]] const Given* find(std::string_view name) const;

  std::vector<std::string> words_;
  std::vector<Given> given_;
  std::string problem_;
};

}  // namespace tessaly
