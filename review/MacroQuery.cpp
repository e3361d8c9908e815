#include <algorithm>

#include "platform/Text.h"
#include "review/MacroSearch.h"

namespace tessaly {
namespace {

Failure wrong(std::string text) { return {Failure::Kind::kNothingTaken, std::move(text)}; }

bool isBlank(char c) { return c == ' ' || c == '\t'; }

}  // namespace

// Takes a query apart, word by word.
class QueryReader {
 public:
  using Field = MacroQuery::Field;
  using Word = MacroQuery::Word;

  explicit QueryReader(std::string_view text) : text_(text) {}

  [[nodiscard]] Expected<MacroQuery> read() {
    MacroQuery query;
    for (skipBlanks(); !text_.empty(); skipBlanks()) {
      if (query.words_.size() == MacroQuery::kMostWords)
        return wrong("a query has " + std::to_string(MacroQuery::kMostWords) + " words at the most");
      auto word = readWord();
      if (!word) return word.failure();
      query.words_.push_back(*std::move(word));
    }
    if (query.words_.empty()) return wrong("the query is empty");
    return query;
  }

 private:
  static constexpr std::pair<std::string_view, Field> kFields[] = {
      {"line", Field::kLine},     {"function", Field::kFunction}, {"destination", Field::kDestination},
      {"source", Field::kSource}, {"value", Field::kValue},       {"group", Field::kGroup}};

  void skipBlanks() {
    while (!text_.empty() && isBlank(text_.front())) text_.remove_prefix(1);
  }

  // Letters up to a ":", if they are followed by one; "" otherwise. Not from a text in quotes.
  std::string_view takeField() {
    const std::size_t end = text_.find_first_of(": \t\"");
    if (end == text_.npos || end == 0 || text_[end] != ':') return {};
    const std::string_view field = text_.substr(0, end);
    text_.remove_prefix(end + 1);
    return field;
  }

  // Up to a blank; blanks between quotes belong to it.
  Expected<std::string> takeText() {
    std::string text;
    bool quoted = false;
    for (; !text_.empty() && (quoted || !isBlank(text_.front())); text_.remove_prefix(1)) {
      if (text_.front() == '"') {
        quoted = !quoted;
      } else {
        text += text_.front();
      }
    }
    if (quoted) return wrong("a quote has no end");
    return text;
  }

  Expected<Word> readWord() {
    const std::string_view name = takeField();
    const auto* const row = std::find_if(std::begin(kFields), std::end(kFields),
                                         [&](const auto& field) { return field.first == name; });
    if (!name.empty() && row == std::end(kFields))
      return wrong("there is no field \"" + beginningOf(name, 40) +
                   "\"; put quotes around a text with a colon");
    auto text = takeText();
    if (!text) return text.failure();
    if (text->empty()) return wrong("a word of the query is empty");
    Word word{name.empty() ? Field::kLine : row->second, toUpperAscii(*text), {}};
    if (const std::size_t equals = word.text.find('=');
        word.field == Field::kValue && equals != word.text.npos) {
      word.parameter = word.text.substr(0, equals);
      word.text.erase(0, equals + 1);
    }
    return word;
  }

  std::string_view text_;
};

Expected<MacroQuery> MacroQuery::parse(std::string_view text) {
  if (text.size() > kLongest) return wrong("a query has " + std::to_string(kLongest) + " bytes at the most");
  if (!isValidUtf8(text)) return wrong("the query is no UTF-8");
  return QueryReader(text).read();
}

bool fitsPattern(std::string_view pattern, std::string_view text) {
  std::size_t p = 0, t = 0, star = pattern.npos, from = 0;
  while (t < text.size()) {
    if (p < pattern.size() && pattern[p] == '*') {
      star = p++;
      from = t;
    } else if (p < pattern.size() && pattern[p] == text[t]) {
      ++p;
      ++t;
    } else if (star != pattern.npos) {
      p = star + 1;
      t = ++from;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of('*', p) == pattern.npos;
}

}  // namespace tessaly
