#include "cli/Arguments.h"

#include <algorithm>

namespace tessaly {
namespace {

constexpr std::string_view kMark = "--";
constexpr std::string_view kHelp = "--help";

}  // namespace

std::vector<OptionShape> optionsOf(std::string_view usage) {
  std::vector<OptionShape> options;
  for (std::size_t at = usage.find(kMark); at != usage.npos; at = usage.find(kMark, at)) {
    const std::size_t end = std::min(usage.find_first_of(" ]()|", at), usage.size());
    const std::string_view behind = usage.substr(end, 3);
    OptionShape option{usage.substr(at, end - at)};
    if (behind.size() > 1 && behind[0] == ' ' && std::string_view("[]()|").find(behind[1]) == behind.npos) {
      option.value = OptionShape::Value::kNeeded;
    } else if (behind.starts_with(" [") && behind.back() != '-') {
      option.value = OptionShape::Value::kOptional;
    }
    options.push_back(option);
    at = end;
  }
  return options;
}

Arguments::Arguments(const std::vector<std::string>& words, std::span<const OptionShape> options) {
  for (std::size_t at = 0; at < words.size();) {
    if (words[at] == kMark) {
      words_.insert(words_.end(), words.begin() + static_cast<std::ptrdiff_t>(at) + 1, words.end());
      return;
    }
    if (words[at] == "-h") {
      given_.emplace_back(kHelp, std::string());
      ++at;
    } else if (words[at].starts_with(kMark)) {
      at = takeOption(words, at, options);
    } else {
      words_.push_back(words[at++]);
    }
  }
}

std::size_t Arguments::takeOption(const std::vector<std::string>& words, std::size_t at,
                                  std::span<const OptionShape> options) {
  const auto refuse = [this](std::string problem) {
    if (problem_.empty()) problem_ = std::move(problem);
  };
  const std::string& word = words[at++];
  const std::size_t equals = word.find('=');
  const std::string name = word.substr(0, equals);
  const auto option = std::find_if(options.begin(), options.end(),
                                   [&](const OptionShape& candidate) { return candidate.name == name; });
  if (option == options.end()) {
    refuse("unknown option " + name);
    return at;
  }
  const bool needed = option->value == OptionShape::Value::kNeeded;
  std::string value;
  if (equals != std::string::npos) {
    value = word.substr(equals + 1);
    if (option->value == OptionShape::Value::kNone) refuse(name + " takes no value");
    if (option->value == OptionShape::Value::kOptional) words_.push_back(value);
  } else if (needed && at < words.size() && words[at] != kMark) {
    value = words[at++];
  } else if (needed) {
    refuse(name + (name == "--root" ? " needs a folder" : " needs a value"));
    return at;
  }
  given_.emplace_back(option->name, std::move(value));
  return at;
}

const Arguments::Given* Arguments::find(std::string_view name) const {
  const auto given = std::find_if(given_.rbegin(), given_.rend(),
                                  [&](const Given& candidate) { return candidate.first == name; });
  return given == given_.rend() ? nullptr : &*given;
}

std::optional<std::string> Arguments::option(std::string_view name) const {
  const Given* const given = find(name);
  return given ? std::optional(given->second) : std::nullopt;
}

bool Arguments::complete(std::size_t least, std::size_t most) {
  if (!problem_.empty()) return false;
  if (words_.size() < least) problem_ = "too few words";
  if (words_.size() > most) problem_ = "too many words: " + words_[most];
  return problem_.empty();
}

}  // namespace tessaly
