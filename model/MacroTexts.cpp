#include "model/MacroTexts.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <tuple>

#include "platform/XmlSpelling.h"

namespace tessaly {
namespace {

using Part = SetTexts::Part;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kBlanks = " \t\n\v\f\r";
constexpr int kNoParameter = -1;

struct Place {
  int command, parameter;
  std::string_view attribute;
  friend bool operator<(const Place& a, const Place& b) {
    return std::tie(a.command, a.parameter, a.attribute) < std::tie(b.command, b.parameter, b.attribute);
  }
};

constexpr bool startsName(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
         static_cast<unsigned char>(c) >= 0x7F;
}

Place placeOf(const SetTexts::Text& text) {
  switch (text.part) {
    case Part::kFid:
      return {text.command, kNoParameter, "fid"};
    case Part::kWorkplace:
      return {text.command, kNoParameter, "workplace"};
    case Part::kValue:
      break;
  }
  return {text.command, text.parameter, "value"};
}

// Goes through the bytes of a macro that parses and is kept, as the parser reads them, and tells the
// attributes of its commands and their parameters.
class AttributeScan {
 public:
  explicit AttributeScan(std::string_view bytes) : bytes_(bytes) {}

  // `take` gets each place with the beginning and the end of its value between the quotes. False when the
  // bytes are not as was thought.
  template <typename Take>
  bool run(const Take& take) {
    for (at_ = bytes_.find('<'); at_ != bytes_.npos; at_ = bytes_.find('<', at_)) {
      if (rest().starts_with("<!--")) {
        skipBeyond("-->", 4);
      } else if (rest().starts_with("<![CDATA[")) {
        skipBeyond("]]>", 9);
      } else if (rest().starts_with("</")) {
        if (levels_.empty()) return false;
        levels_.pop_back();
        skipBeyond(">", 2);
      } else if (at_ + 1 == bytes_.size() || !startsName(bytes_[at_ + 1])) {
        skipBeyond(">", 1);  // an instruction, or what the parser takes for one
      } else if (!element(take)) {
        return false;
      }
    }
    return levels_.empty();
  }

 private:
  enum class Role { kOther, kMacro, kData, kCommand, kParameter };

  [[nodiscard]] std::string_view rest() const { return bytes_.substr(at_); }

  void skipBeyond(std::string_view mark, std::size_t from) {
    const std::size_t found = bytes_.find(mark, at_ + from);
    at_ = found == bytes_.npos ? bytes_.size() : found + mark.size();
  }

  std::string_view until(std::string_view ends) {
    const std::size_t begin = at_;
    at_ = std::min(bytes_.find_first_of(ends, at_), bytes_.size());
    return bytes_.substr(begin, at_ - begin);
  }

  void skipBlanks() { at_ = std::min(bytes_.find_first_not_of(kBlanks, at_), bytes_.size()); }

  Role roleOf(std::string_view name) {
    // The commands of further macros and data have numbers that nobody asks for.
    if (levels_.empty()) return name == "macro" ? Role::kMacro : Role::kOther;
    const Role parent = levels_.back();
    if (parent == Role::kMacro && name == "data") return Role::kData;
    if (parent == Role::kData && name == "cmd") {
      ++command_;
      parameter_ = kNoParameter;
      return Role::kCommand;
    }
    if (parent == Role::kCommand && name == "param") {
      ++parameter_;
      return Role::kParameter;
    }
    return Role::kOther;
  }

  template <typename Take>
  bool element(const Take& take) {
    ++at_;
    const Role role = roleOf(until(" \t\n\v\f\r/>"));
    const bool told = role == Role::kCommand || role == Role::kParameter;
    levels_.push_back(role);
    while (true) {
      skipBlanks();
      if (at_ == bytes_.size()) return false;
      if (rest().starts_with("/>")) {
        levels_.pop_back();
        at_ += 2;
        return true;
      }
      if (bytes_[at_] == '>') {
        ++at_;
        return true;
      }
      const std::string_view name = until(" \t\n\v\f\r=/>");
      skipBlanks();
      if (name.empty() || !rest().starts_with('=')) return false;
      ++at_;
      skipBlanks();
      if (!rest().starts_with('"') && !rest().starts_with('\'')) return false;
      const char quote = bytes_[at_++];
      const std::size_t begin = at_, end = bytes_.find(quote, at_);
      if (end == bytes_.npos) return false;
      at_ = end + 1;
      if (told) take(Place{command_, role == Role::kCommand ? kNoParameter : parameter_, name}, begin, end);
    }
  }

  std::string_view bytes_;
  std::size_t at_ = 0;
  std::vector<Role> levels_;
  int command_ = -1, parameter_ = kNoParameter;
};

// The field of a command that a text goes into; null when it has none.
std::string* fieldOf(MacroCommands& commands, const SetTexts::Text& text) {
  if (text.command < 0 || static_cast<std::size_t>(text.command) >= commands.size()) return nullptr;
  MacroCommand& command = commands[static_cast<std::size_t>(text.command)];
  if (text.part == Part::kFid) return &command.fid;
  if (text.part == Part::kWorkplace) return &command.workplace;
  if (text.parameter < 0 || static_cast<std::size_t>(text.parameter) >= command.parameters.size())
    return nullptr;
  MacroParameter& parameter = command.parameters[static_cast<std::size_t>(text.parameter)];
  return parameter.hasValue ? &parameter.value : nullptr;
}

using Wanted = std::map<Place, std::string>;  // as it is spelled in the bytes

Expected<std::string> putInto(const std::string& bytes, const Wanted& wanted) {
  std::string made;
  made.reserve(bytes.size());
  std::size_t copied = 0, put = 0;
  const bool known = AttributeScan(bytes).run([&](const Place& place, std::size_t begin, std::size_t end) {
    const auto found = wanted.find(place);
    if (found == wanted.end()) return;
    made.append(bytes, copied, begin - copied).append(found->second);
    copied = end;
    ++put;
  });
  if (!known || put != wanted.size())
    return Failure{Failure::Kind::kNoCommand, "a command lacks what was to be set"};
  return made.append(bytes, copied);
}

Failure otherMacro() {
  return {Failure::Kind::kNotKept, "would not read as the same macro with the new texts"};
}

}  // namespace

MacroSpelling::MacroSpelling(const Macro& macro) {
  std::string_view bytes = macro.bytes();
  const bool marked = bytes.starts_with(kByteOrderMark);
  if (marked) bytes.remove_prefix(kByteOrderMark.size());
  encoding_ = xmlEncoding(bytes, marked);
}

Expected<std::string> MacroSpelling::of(std::string_view text) const {
  auto spelled = spellingOf(text, encoding_);
  if (spelled) std::transform(spelled->begin(), spelled->end(), spelled->begin(), shownForm);
  return spelled;
}

Expected<Macro> withTexts(const Macro& macro, const SetTexts& edit) {
  if (!macro.kept()) return macro.kept().failure();
  const MacroSpelling spelling(macro);
  MacroCommands commands = macro.commands();
  Wanted wanted;
  for (const SetTexts::Text& text : edit.texts) {
    std::string* const field = fieldOf(commands, text);
    if (!field) return Failure{Failure::Kind::kNoCommand, "there is no such command or value"};
    if (*field == text.text) continue;  // it keeps its spelling
    auto spelled = spelling.of(text.text);
    if (!spelled) return spelled.failure();
    *field = text.text;
    wanted[placeOf(text)] = *std::move(spelled);
  }
  if (wanted.empty()) return macro;
  auto made = putInto(macro.bytes(), wanted);
  if (!made) return made.failure();
  auto after = Macro::read(*std::move(made));
  if (!after) return after;
  if (after->commands() != commands || after->unread() != macro.unread() || after->name() != macro.name())
    return otherMacro();
  return after;
}

}  // namespace tessaly
