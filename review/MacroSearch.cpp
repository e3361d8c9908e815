#include "review/MacroSearch.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "model/CommandLines.h"
#include "platform/Text.h"
#include "review/ClassicFacts.h"
#include "review/NamedSources.h"

namespace tessaly {
namespace {

constexpr LineOptions kOptions{.showDestination = true};
constexpr std::size_t kMostClassics = 20'000;

// A text with "*" fits a pattern, one without is looked for anywhere.
bool fits(const std::string& wanted, const std::string& upper) {
  return wanted.find('*') == wanted.npos ? upper.find(wanted) != upper.npos : fitsPattern(wanted, upper);
}

// As a whole.
bool equals(std::string_view wanted, std::string_view text) {
  return fitsPattern(wanted, toUpperAscii(text));
}

// Whole segments that follow each other, or a pattern for the whole name.
bool fitsName(const std::string& wanted, std::string_view name) {
  const std::string upper = toUpperAscii(name);
  if (wanted.find('*') != wanted.npos) return fitsPattern(wanted, upper);
  for (std::size_t at = upper.find(wanted); at != upper.npos; at = upper.find(wanted, at + 1)) {
    const std::size_t end = at + wanted.size();
    if ((at == 0 || upper[at - 1] == '.') && (end == upper.size() || upper[end] == '.')) return true;
  }
  return false;
}

char upperAscii(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

bool sameNumber(std::string_view a, std::string_view b) {
  const auto first = exactNumber<double>(a), second = exactNumber<double>(b);
  return first && second && *first == *second;
}

}  // namespace

class MacroSearch::Asking {
 public:
  using Field = MacroQuery::Field;
  using Word = MacroQuery::Word;

  // What is quickly said comes first, the line last.
  Asking(MacroQuery query, const LineContext& context)
      : words_(std::move(query.words_)), context_(context), lines_(kOptions, context) {
    std::stable_partition(words_.begin(), words_.end(),
                          [](const Word& word) { return word.field != Field::kLine; });
    for (const Word& word : words_) sources_.push_back(sourcesOf(word));
  }

  // The line when every word holds; null otherwise. Stays until the next call.
  const std::string* ask(const MacroCommand& command) {
    const std::string* line = nullptr;
    for (std::size_t i = 0; i < words_.size(); ++i) {
      if (words_[i].field == Field::kLine && line == nullptr) {
        line = &lines_.of(command);
        upperLine_.resize(line->size());
        std::transform(line->begin(), line->end(), upperLine_.begin(), upperAscii);
      }
      if (!holds(words_[i], sources_[i], command)) return nullptr;
    }
    return line != nullptr ? line : &lines_.of(command);
  }

  void begin() {
    if (facts_.size() > kMostClassics) facts_.clear();
  }

 private:
  using Numbers = NamedSources;

  [[nodiscard]] Numbers sourcesOf(const Word& word) const {
    return word.field == Field::kSource ? sourcesNamed(word.text, context_.dictionary) : Numbers();
  }

  bool holds(const Word& word, const Numbers& sources, const MacroCommand& command) {
    switch (word.field) {
      case Field::kLine:
        return fits(word.text, upperLine_);
      case Field::kFunction:
        return fitsName(word.text, command.functionName());
      case Field::kDestination:
        return goesTo(word.text, command);
      case Field::kSource:
        return namesSource(sources, command);
      case Field::kValue:
        return std::any_of(command.parameters.begin(), command.parameters.end(),
                           [&](const MacroParameter& parameter) { return hasValue(word, parameter); });
      case Field::kGroup:
        return command.classic() && fits(word.text, toUpperAscii(factsOf(command).group));
    }
    return false;
  }

  // "QMF2", "Mainframe2", "PANEL", "Panel/Workplace3".
  static bool goesTo(const std::string& wanted, const MacroCommand& command) {
    if (equals(wanted, command.destination())) return true;
    constexpr std::size_t kEnd = 3;  // " - "
    const std::string label = destinationLabel(command.destination(), command.workplace);
    return equals(wanted, std::string_view(label).substr(0, label.size() - kEnd));
  }

  static bool hasValue(const Word& word, const MacroParameter& parameter) {
    if (!word.parameter.empty() && !equals(word.parameter, parameter.name)) return false;
    return parameter.hasValue &&
           (equals(word.text, parameter.value) || sameNumber(word.text, parameter.value));
  }

  bool namesSource(const Numbers& sources, const MacroCommand& command) {
    if (command.classic()) {
      const auto& named = factsOf(command).sources;
      return std::any_of(named.begin(), named.end(),
                         [&](const std::string& n) { return sources.classic.contains(n); });
    }
    // Most values are none of the numbers, so the function is asked last.
    return std::any_of(command.parameters.begin(), command.parameters.end(),
                       [&](const MacroParameter& parameter) {
                         if (!sources.panel.contains(parameter.value)) return false;
                         const auto function = context_.dictionary.find(command.functionName());
                         return function && parameterNamed(function->definition().inputs, parameter.name);
                       });
  }

  const ClassicFacts& factsOf(const MacroCommand& command) {
    static const std::string kNone;
    const std::string& text = command.parameters.empty() ? kNone : command.parameters.front().value;
    const auto known = facts_.find(text);
    if (known != facts_.end()) return known->second;
    return facts_.emplace(text, classicFacts(text, context_.decodingLists)).first->second;
  }

  std::vector<Word> words_;
  std::vector<Numbers> sources_;  // of each word
  LineContext context_;
  CommandLines lines_;
  std::string upperLine_;                                // of the command that is asked about
  std::unordered_map<std::string, ClassicFacts> facts_;  // by the stored text
};

MacroSearch::MacroSearch(MacroQuery query, const LineContext& context)
    : asking_(std::make_unique<Asking>(std::move(query), context)) {}
MacroSearch::~MacroSearch() = default;

std::vector<SearchHit> MacroSearch::find(const Macro& macro) {
  std::vector<SearchHit> hits;
  asking_->begin();
  int number = 0;
  for (const MacroCommand& command : macro.commands()) {
    if (const std::string* const line = asking_->ask(command)) hits.push_back({number, *line});
    ++number;
  }
  return hits;
}

// Keys have classic commands for the first mainframe, as a macro made of them would.
std::vector<SearchHit> MacroSearch::find(const KeyFile& keys) {
  std::vector<SearchHit> hits;
  asking_->begin();
  int number = 0;
  for (const ClassicCommand& command : keys.commands()) {
    const MacroCommand stored{.fid = "QMF1.NCSCOMMAND",
                              .workplace = "1",
                              .group = "0",
                              .module = "0",
                              .widget = "0",
                              .parameters = {{"CMD", command.text(), true}}};
    if (const std::string* const line = asking_->ask(stored)) hits.push_back({number, *line});
    ++number;
  }
  return hits;
}

}  // namespace tessaly
