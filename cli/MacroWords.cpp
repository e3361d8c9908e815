#include "cli/MacroWords.h"

#include "platform/Files.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

// Those whose text is a sentence; that of others is said of the file.
bool isSentence(Failure::Kind kind) {
  using Kind = Failure::Kind;
  return kind == Kind::kNoMacro || kind == Kind::kNoCommand || kind == Kind::kTextNotHeld ||
         kind == Kind::kNothingTaken || kind == Kind::kNoMemory;
}

}  // namespace

std::optional<InsertPlace> insertPlace(const std::optional<std::string>& at) {
  if (!at || *at == "end") return InsertPlace{};
  if (*at == "start") return InsertPlace{InsertMode::kAtStart, 0};
  const std::optional<int> position = wholeNumber(*at, 0, kMostCommandNumber);
  if (!position) return std::nullopt;
  return InsertPlace{InsertMode::kAtPosition, *position};
}

std::optional<CommandRange> commandRange(const std::string& word) {
  const std::string_view text = word;
  const std::size_t dash = text.find('-', 1);  // one in front would be a sign
  const auto first = wholeNumber(text.substr(0, dash), 0, kMostCommandNumber);
  if (!first || dash == text.npos) return first ? std::optional(CommandRange{*first, *first}) : std::nullopt;
  const auto last = wholeNumber(text.substr(dash + 1), *first, kMostCommandNumber);
  return last ? std::optional(CommandRange{*first, *last}) : std::nullopt;
}

Expected<std::vector<int>> numbersIn(const std::vector<CommandRange>& ranges, std::size_t count) {
  std::vector<int> numbers;
  for (const auto& [first, last] : ranges) {
    for (int number = first; number <= last; ++number) {
      if (static_cast<std::size_t>(number) >= count)
        return Failure{Failure::Kind::kNoCommand, "No command " + std::to_string(number)};
      numbers.push_back(number);
    }
  }
  return numbers;
}

Outcome told(std::string_view what, Outcome outcome) {
  if (outcome.written()) return outcome;
  const Failure& failure = outcome.failure();
  return Failure{failure.kind, std::string(what) + (isSentence(failure.kind) ? "" : "it ") + failure.text};
}

Expected<KeyFile> keyAt(const SiteRoot& root, const std::string& path, const std::string& shown) {
  const auto bytes = readFile(root, path);
  KeyFile key;
  if (bytes) {
    key.parse(*bytes);
    return key;
  }
  const Failure& failure = bytes.failure();
  const bool missing = failure.kind == Failure::Kind::kMissing;
  return Failure{failure.kind, missing ? "No such file: " + shown : shown + ' ' + failure.text};
}

}  // namespace tessaly
