#include "platform/XmlGuard.h"

#include <array>
#include <cstring>
#include <string_view>

#include "platform/Text.h"

namespace tessaly {
namespace {

constexpr std::string_view kWhiteSpace = " \t\n\v\f\r";

constexpr auto kEndsTagRun = [] {
  std::array<bool, 256> table{};
  for (const unsigned char c : {'\0', '"', '\'', '=', '>'}) table[c] = true;
  return table;
}();

constexpr bool startsName(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
         static_cast<unsigned char>(c) >= 0x7F;
}

bool startsWith(const char* text, std::string_view start) {
  return std::strncmp(text, start.data(), start.size()) == 0;
}

bool startsWithNoCase(const char* text, std::string_view start) {
  return ::strncasecmp(text, start.data(), start.size()) == 0;
}

// True for a numeric reference that is not complete: the parser looks for its ";" anywhere behind and may
// jump there over any markup.
bool hasOpenReference(std::string_view text) {
  for (std::size_t at = text.find("&#"); at != text.npos; at = text.find("&#", at)) {
    at += 2;
    const bool isHex = at < text.size() && text[at] == 'x';
    if (isHex) ++at;
    const std::size_t end = text.find_first_not_of(isHex ? "0123456789abcdefABCDEF" : "0123456789", at);
    if (end == text.npos || end == at || text[end] != ';') return true;
  }
  return false;
}

// The bytes end with a NUL and have none before, so that every search stops at the end by itself.
class Scan {
 public:
  Scan(const std::string& bytes, const XmlLimits& limits)
      : limits_(limits),
        at_(bytes.c_str()),
        end_(at_ + bytes.size()),
        anyOpenReference_(hasOpenReference(bytes)) {}

  bool run() {
    for (;;) {
      const char* const text = at_;
      at_ = std::strchr(text, '<');
      if (!isBounded(text, at_ ? at_ : end_)) return false;
      if (!at_) return true;
      if (!markup()) return false;
    }
  }

 private:
  bool markup() {
    const char next = at_[1];
    if (startsName(next)) return element();
    if (next == '/') {
      if (depth_ > 0) --depth_;
    } else if (startsWith(at_, "<!--")) {
      skipBeyond(4, "-->");
      return true;
    } else if (startsWith(at_, "<![CDATA[")) {
      skipBeyond(9, "]]>");
      return true;
    } else if (startsWithNoCase(at_, "<!DOCTYPE")) {
      return documentType();
    } else if (startsWithNoCase(at_, "<?xml")) {
      return declaration();
    }
    skipBeyond(1, ">");  // whatever else it is, the parser ends it here, quotes or not
    return true;
  }

  // True when the parser, reading characters from `start`, stops at `delimiter` as it should.
  bool isBounded(const char* start, const char* delimiter) const {
    return !anyOpenReference_ || !hasOpenReference({start, static_cast<std::size_t>(delimiter - start)});
  }

  void skipBeyond(int offset, const char* mark) {
    const char* const found = std::strstr(at_ + offset, mark);
    at_ = found ? found + std::strlen(mark) : end_;
  }

  bool element() {
    if (++depth_ > limits_.depth) return false;
    int attributes = 0;
    for (++at_;; ++at_) {
      while (!kEndsTagRun[static_cast<unsigned char>(*at_)]) ++at_;
      if (*at_ == '\0') return true;
      if (*at_ == '>') break;
      if (*at_ == '=') {
        if (++attributes > limits_.attributes) return false;
      } else if (!quoted()) {
        return false;
      }
      if (*at_ == '\0') return true;
    }
    if (at_[-1] == '/') --depth_;
    ++at_;
    return true;
  }

  // From an opening quote to its closing one, or to the end.
  bool quoted() {
    const char* const start = at_ + 1;
    at_ = std::strchr(start, *at_);
    if (!at_) at_ = end_;
    return isBounded(start, at_);
  }

  bool documentType() {
    char quote = '\0';
    for (at_ += 2; *at_ != '\0' && *at_ != '>'; ++at_) {
      if (quote == '\0' && *at_ == '[') return false;
      if (quote == '\0' && (*at_ == '"' || *at_ == '\'')) {
        quote = *at_;
      } else if (*at_ == quote) {
        quote = '\0';
      }
    }
    return quote == '\0';  // the parser would stop at a ">" within quotes too
  }

  // The parser knows three attributes here, whose quoted values may hold a ">"; it skips all else word by
  // word.
  bool declaration() {
    at_ += std::string_view("<?xml").size();
    while (*at_ != '\0' && *at_ != '>') {
      skipWhiteSpace();
      if (startsWithNoCase(at_, "encoding") || startsWithNoCase(at_, "version") ||
          startsWithNoCase(at_, "standalone")) {
        if (!declared()) return false;
      } else {
        for (; *at_ != '\0' && *at_ != '>' && kWhiteSpace.find(*at_) == kWhiteSpace.npos; ++at_) {
          if (static_cast<unsigned char>(*at_) >= 0x80)
            return false;  // the parser may take it for white space
        }
      }
    }
    return true;
  }

  // One of these attributes. Its value is written back between double quotes, and nothing in it as a
  // reference.
  bool declared() {
    at_ += std::strcspn(at_, "= \t\n\v\f\r>");
    skipWhiteSpace();
    if (*at_ != '=') return false;
    ++at_;
    skipWhiteSpace();
    const bool isQuoted = *at_ == '"' || *at_ == '\'';
    const char* const value = isQuoted ? at_ + 1 : at_;
    if (!isQuoted) {
      at_ += std::strcspn(at_, "/ \t\n\v\f\r>");
    } else if (!quoted() || *at_ == '\0') {
      return false;
    }
    const std::string_view text(value, static_cast<std::size_t>(at_ - value));
    if (isQuoted) ++at_;
    return text.find_first_of("\"&") == text.npos;
  }

  void skipWhiteSpace() { at_ += std::strspn(at_, kWhiteSpace.data()); }

  const XmlLimits& limits_;
  const char* at_;
  const char* end_;
  bool anyOpenReference_;  // somewhere, maybe in a comment where it does no harm
  int depth_ = 0;
};

}  // namespace

bool isSafeXml(const std::string& bytes, const XmlLimits& limits) {
  return bytes.find('\0') == std::string::npos && Scan(bytes, limits).run();
}

}  // namespace tessaly
