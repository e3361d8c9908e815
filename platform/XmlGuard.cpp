#include "platform/XmlGuard.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>
#include <vector>

#include "platform/Text.h"
#include "platform/XmlSpelling.h"

namespace tessaly {
namespace {

using Kind = Failure::Kind;

constexpr const char* kWhiteSpace = " \t\n\v\f\r";

constexpr auto kEndsTagRun = [] {
  std::array<bool, 256> table{};
  for (const unsigned char c : {'\0', '"', '\'', '=', '>'}) table[c] = true;
  return table;
}();

constexpr bool startsName(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
         static_cast<unsigned char>(c) >= 0x7F;
}

constexpr bool isBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

bool startsWith(const char* text, std::string_view start) {
  return std::strncmp(text, start.data(), start.size()) == 0;
}

// The bytes end with a NUL and have none before, so that every search stops at the end by itself.
class Scan {
 public:
  Scan(std::string& bytes, const XmlLimits& limits)
      : limits_(limits), begin_(bytes.data()), end_(begin_ + bytes.size()), at_(begin_) {}

  XmlLook run() {
    while (look_.safe && *at_ != '\0') {
      textRun();
      if (*at_ == '<') markup();
    }
    return std::move(look_);
  }

 private:
  // An open element. White space in one that holds text too is text; elsewhere it is layout, but for the
  // blanks that are all that an element holds.
  struct Level {
    std::size_t firstBlank;  // in blanks_
    bool mixed = false;
    bool empty = true;
  };

  void refuse(Kind kind, std::string why) { look_.safe = Failure{kind, std::move(why)}; }

  void doNotKeep(const char* what) {
    if (look_.kept) look_.kept = Failure{Kind::kNotKept, what};
  }

  void count() {
    if (++pieces_ > limits_.pieces)
      refuse(Kind::kTooLarge, format("has more than %zu elements, attributes and texts", limits_.pieces));
  }

  void textRun() {
    char* const start = at_;
    at_ += std::strspn(at_, kWhiteSpace);
    if (*at_ == '<' || *at_ == '\0') {
      if (at_ != start && !levels_.empty()) blanks_.push_back(start);
      return;
    }
    at_ += std::strcspn(at_, "<");
    count();
    if (levels_.empty()) {
      doNotKeep("has text outside its root element");
    } else {
      levels_.back().mixed = true;
    }
  }

  void markup() {
    const char next = at_[1];
    if (next == '/') {
      closeLevel();
      skipBeyond(1, ">", "a tag");
      return;
    }
    count();
    if (!levels_.empty()) levels_.back().empty = false;
    if (startsName(next)) {
      element();
    } else if (startsWith(at_, "<!--")) {
      skipBeyond(4, "-->", "a comment");
    } else if (startsWith(at_, "<![CDATA[")) {
      if (!levels_.empty()) levels_.back().mixed = true;
      skipBeyond(9, "]]>", "character data");
    } else if (equalNoCase({at_, ::strnlen(at_, 9)}, "<!DOCTYPE")) {
      documentType();
    } else {
      if (next == '?') at_[1] = kHiddenQuestion;
      skipBeyond(1, ">", "an instruction");  // the parser ends it here, quotes or not
    }
  }

  void skipBeyond(int offset, const char* mark, const char* what) {
    char* const found = std::strstr(at_ + offset, mark);
    if (!found) {
      refuse(Kind::kNotXml, std::string("is not well formed: ") + what + " without its end");
      return;
    }
    at_ = found + std::strlen(mark);
  }

  void closeLevel() {
    if (levels_.empty()) return;
    const Level level = levels_.back();
    levels_.pop_back();
    for (std::size_t i = level.firstBlank; i < blanks_.size(); ++i) {
      char* const blank = blanks_[i];
      const bool only = level.empty && std::memchr(blank, '\n', std::strspn(blank, kWhiteSpace)) == nullptr;
      if ((level.mixed || only) && kHideable.find(*blank) != kHideable.npos) *blank = hiddenForm(*blank);
    }
    blanks_.resize(level.firstBlank);
  }

  void element() {
    if (levels_.size() == static_cast<std::size_t>(limits_.depth)) {
      refuse(Kind::kTooLarge, format("is nested deeper than %d elements", limits_.depth));
      return;
    }
    levels_.push_back({blanks_.size()});
    int attributes = 0;
    for (++at_; look_.safe; ++at_) {
      while (!kEndsTagRun[static_cast<unsigned char>(*at_)]) ++at_;
      if (*at_ == '\0' || *at_ == '>') break;
      if (*at_ == '=') {
        attribute(++attributes);
      } else {
        quoted();
      }
      if (*at_ == '\0') break;
    }
    if (*at_ != '>') return;  // the parser says that the tag has no end
    if (at_[-1] == '/') closeLevel();
    ++at_;
  }

  void attribute(int number) {
    count();
    if (number > limits_.attributes)
      refuse(Kind::kTooLarge, format("has more than %d attributes on one element", limits_.attributes));
    const char* name = at_;
    while (isBlank(name[-1])) --name;
    constexpr std::string_view kSpace = "xml:space";
    if (std::string_view(begin_, static_cast<std::size_t>(name - begin_)).ends_with(kSpace))
      doNotKeep("says by xml:space how white space counts");
    const char* const value = at_ + 1 + std::strspn(at_ + 1, kWhiteSpace);
    if (*value != '"' && *value != '\'') doNotKeep("has an attribute without quotes");
  }

  // From an opening quote to its closing one, or to the end.
  void quoted() {
    at_ = std::strchr(at_ + 1, *at_);
    if (!at_) {
      at_ = end_;
    } else if (!isBlank(at_[1]) && at_[1] != '/' && at_[1] != '>') {
      doNotKeep("has attributes without white space between them");
    }
  }

  void documentType() {
    char quote = '\0';
    for (at_ += 2; *at_ != '\0' && *at_ != '>'; ++at_) {
      if (quote == '\0' && *at_ == '[') break;
      if (quote == '\0' && (*at_ == '"' || *at_ == '\'')) {
        quote = *at_;
      } else if (*at_ == quote) {
        quote = '\0';
      }
    }
    // The parser would stop at a ">" within quotes too.
    if (quote != '\0' || *at_ != '>') {
      refuse(Kind::kNotXml, "has a document type with an internal subset or without its end");
    } else {
      ++at_;
    }
  }

  const XmlLimits& limits_;
  char* const begin_;
  char* const end_;
  char* at_;
  XmlLook look_;
  std::vector<Level> levels_;
  std::vector<char*> blanks_;  // where white space between tags starts, in the open elements
  std::size_t pieces_ = 0;
};

// Tab, line feed and carriage return are the only ones that XML allows. In blocks of a fixed size, which the
// compiler makes instructions for many bytes of.
bool hasForbiddenControl(std::string_view bytes) {
  constexpr std::size_t kBlock = 64;
  const auto forbidden = [](char c) {
    return static_cast<unsigned char>((static_cast<unsigned char>(c) < ' ') & (c != '\t') & (c != '\n') &
                                      (c != '\r'));
  };
  for (; bytes.size() >= kBlock; bytes.remove_prefix(kBlock)) {
    unsigned char any = 0;
    for (std::size_t i = 0; i < kBlock; ++i) any |= forbidden(bytes[i]);
    if (any != 0) return true;
  }
  return std::any_of(bytes.begin(), bytes.end(), [&](char c) { return forbidden(c) != 0; });
}

void hideAmpersands(std::string& bytes) {
  for (std::size_t at = bytes.find('&'); at != std::string::npos; at = bytes.find('&', at + 1))
    bytes[at] = kHiddenAmpersand;
}

}  // namespace

XmlLook prepareXml(std::string& bytes, const XmlLimits& limits) {
  const bool forbidden = hasForbiddenControl(bytes);
  if (forbidden && bytes.find('\0') != std::string::npos) return {Failure{Kind::kNotXml, "holds a NUL"}, {}};
  hideAmpersands(bytes);
  XmlLook look = Scan(bytes, limits).run();
  if (forbidden) look.kept = Failure{Kind::kNotKept, "holds a control character that XML does not allow"};
  return look;
}

}  // namespace tessaly
