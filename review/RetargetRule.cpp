#include "review/RetargetRule.h"

#include <algorithm>
#include <utility>

#include "platform/Text.h"

namespace tessaly {
namespace {

using Kind = RetargetRule::Kind;

constexpr std::pair<std::string_view, Kind> kKinds[] = {{"destination:", Kind::kDestination},
                                                        {"segment:", Kind::kSegment},
                                                        {"source:", Kind::kSource},
                                                        {"value:", Kind::kValue}};
constexpr std::string_view kArrow = "->";
constexpr std::string_view kWhere = "where";

Failure wrong(std::string text) { return {Failure::Kind::kNothingTaken, std::move(text)}; }

constexpr bool isBlank(char c) { return c == ' '; }

bool isControl(char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; }

std::string_view withoutBlanks(std::string_view text) {
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
  return text;
}

// The place of the first `mark` outside quotes; nothing stands there for npos.
std::size_t findUnquoted(std::string_view text, std::string_view mark) {
  bool quoted = false;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] == '"') quoted = !quoted;
    if (!quoted && text.substr(at).starts_with(mark)) return at;
  }
  return text.npos;
}

// Of the word "where" by itself.
std::size_t findWhere(std::string_view text) {
  const std::string word = " " + std::string(kWhere);
  for (std::size_t from = 0; from < text.size();) {
    const std::size_t found = findUnquoted(text.substr(from), word);
    if (found == text.npos) return found;
    const std::size_t end = from + found + word.size();
    if (end == text.size() || isBlank(text[end])) return from + found + 1;
    from = end;  // no quote stands in the word
  }
  return text.npos;
}

std::string withoutQuotes(std::string_view text) {
  std::string plain(withoutBlanks(text));
  plain.erase(std::remove(plain.begin(), plain.end(), '"'), plain.end());
  return plain;
}

std::string quoted(const std::string& text) {
  const bool plain = text.find_first_of(" =") == text.npos && text.find(kArrow) == text.npos && !text.empty();
  return plain ? text : '"' + text + '"';
}

}  // namespace

Expected<RetargetRule> RetargetRule::parse(std::string_view text) {
  if (text.size() > kLongest) return wrong("a rule has " + std::to_string(kLongest) + " bytes at the most");
  if (!isValidUtf8(text)) return wrong("the rule is no UTF-8");
  if (std::any_of(text.begin(), text.end(), isControl)) return wrong("the rule has a control character");
  if (std::count(text.begin(), text.end(), '"') % 2 != 0) return wrong("a quote has no end");
  text = withoutBlanks(text);
  const auto* const kind = std::find_if(std::begin(kKinds), std::end(kKinds),
                                        [&](const auto& row) { return text.starts_with(row.first); });
  if (kind == std::end(kKinds))
    return wrong("a rule begins with \"destination:\", \"segment:\", \"source:\" or \"value:\"");
  RetargetRule rule{.kind = kind->second};
  text.remove_prefix(kind->first.size());
  if (const std::size_t where = findWhere(text); where != text.npos) {
    rule.where = withoutBlanks(text.substr(where + kWhere.size()));
    if (rule.where.empty()) return wrong("\"where\" is followed by a query");
    text = text.substr(0, where);
  }
  const std::size_t arrow = findUnquoted(text, kArrow);
  if (arrow == text.npos) return wrong("a rule has \"->\" between what is replaced and what takes its place");
  std::string_view from = text.substr(0, arrow);
  const std::string_view to = text.substr(arrow + kArrow.size());
  if (findUnquoted(to, kArrow) != to.npos)
    return wrong("a rule has one \"->\" only; put quotes around a text");
  if (const std::size_t equals = findUnquoted(from, "="); rule.kind == Kind::kValue && equals != from.npos) {
    rule.parameter = withoutQuotes(from.substr(0, equals));
    if (rule.parameter.empty()) return wrong("the name of the parameter is empty");
    from.remove_prefix(equals + 1);
  }
  rule.from = withoutQuotes(from);
  rule.to = withoutQuotes(to);
  return rule;
}

std::string RetargetRule::text() const {
  const auto* const row = std::find_if(std::begin(kKinds), std::end(kKinds),
                                       [this](const auto& known) { return known.second == kind; });
  std::string typed(row->first);
  if (!parameter.empty()) typed += quoted(parameter) + '=';
  typed.append(quoted(from)).append(kArrow).append(quoted(to));
  if (!where.empty()) typed.append(" ").append(kWhere).append(" ").append(where);
  return typed;
}

}  // namespace tessaly
