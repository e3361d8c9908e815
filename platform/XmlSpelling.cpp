#include "platform/XmlSpelling.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>

#include "platform/Text.h"

namespace tessaly {
namespace {

constexpr std::string_view kWhiteSpace = " \t\n\v\f\r";
constexpr std::string_view kDeclaration = "<?xml";
constexpr std::string_view kEncoding = "encoding";
constexpr std::size_t kLongestShown = 60;  // bytes of a text in a failure

constexpr std::pair<std::string_view, char> kEntities[] = {
    {"amp;", '&'}, {"lt;", '<'}, {"gt;", '>'}, {"quot;", '"'}, {"apos;", '\''}};

std::string_view skipWhiteSpace(std::string_view text) {
  return text.substr(std::min(text.find_first_not_of(kWhiteSpace), text.size()));
}

// The name in `encoding="..."`, empty when there is none.
std::string_view declaredEncoding(std::string_view declaration) {
  const std::size_t at = declaration.find(kEncoding);
  if (at == declaration.npos) return {};
  std::string_view rest = skipWhiteSpace(declaration.substr(at + kEncoding.size()));
  if (!rest.starts_with('=')) return {};
  rest = skipWhiteSpace(rest.substr(1));
  if (rest.starts_with('"') || rest.starts_with('\'')) rest.remove_prefix(1);
  return rest.substr(0, rest.find_first_of("\"'?> \t\n\r"));
}

// Empty when there is none.
std::string_view declarationOf(std::string_view bytes) {
  const std::string_view start = skipWhiteSpace(bytes);
  const bool declares = start.size() > kDeclaration.size() &&
                        equalNoCase(start.substr(0, kDeclaration.size()), kDeclaration) &&
                        kWhiteSpace.find(start[kDeclaration.size()]) != kWhiteSpace.npos;
  return declares ? start.substr(0, start.find('>')) : std::string_view();
}

bool isOneOf(std::string_view name, std::initializer_list<std::string_view> names) {
  return std::any_of(names.begin(), names.end(), [name](auto known) { return equalNoCase(name, known); });
}

bool isXmlCharacter(char32_t c) {
  return c >= ' ' ? c != 0xFFFE && c != 0xFFFF : c == '\t' || c == '\n' || c == '\r';
}

struct Reference {
  char32_t character;
  std::size_t length;  // bytes behind the "&"
};

// What `rest`, the text behind a "&", refers to.
std::optional<Reference> referenceIn(std::string_view rest) {
  for (const auto& [entity, character] : kEntities) {
    if (rest.starts_with(entity)) return Reference{static_cast<unsigned char>(character), entity.size()};
  }
  if (!rest.starts_with('#')) return std::nullopt;
  const bool hex = rest.substr(1).starts_with('x');
  const char* const first = rest.data() + (hex ? 2 : 1);
  const char* const end = rest.data() + rest.size();
  std::uint32_t value = 0;
  const auto [behind, error] = std::from_chars(first, end, value, hex ? 16 : 10);
  const bool surrogate = value >= 0xD800 && value <= 0xDFFF;
  if (error != std::errc() || behind == end || *behind != ';' || surrogate || value > 0x10FFFF ||
      !isXmlCharacter(value))
    return std::nullopt;
  return Reference{value, static_cast<std::size_t>(behind + 1 - rest.data())};
}

std::string decoded(std::string_view bytes, XmlEncoding encoding) {
  switch (encoding) {
    case XmlEncoding::kUtf8:
      return std::string(bytes);
    case XmlEncoding::kWindows1252:
      return windows1252ToUtf8(bytes);
    case XmlEncoding::kOnlyUtf8Said:
    case XmlEncoding::kUndeclared:
    case XmlEncoding::kUnknown:
      break;
  }
  return displayUtf8(bytes);
}

// Neither a letter beyond ASCII nor anything hidden: most texts.
bool isPlain(std::string_view text) {
  bool plain = true;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    plain &= byte < 0x80 && (byte >= ' ' || byte < static_cast<unsigned char>(kFirstHidden));
  }
  return plain;
}

Failure notHeld(std::string_view text, std::string_view why) {
  std::string shown = beginningOf(text, kLongestShown);
  if (shown.size() < text.size()) shown += "...";
  return {Failure::Kind::kTextNotHeld, "\"" + shown + "\" " + std::string(why)};
}

// Windows-1252 bytes that would be taken for UTF-8: every letter beyond ASCII as a reference.
std::string withReferences(std::string_view bytes) {
  std::string spelled;
  for (const char c : bytes) {
    if (static_cast<unsigned char>(c) < 0x80) {
      spelled += c;
    } else {
      const char32_t character = windows1252Character(c);
      spelled.append(1, kHiddenAmpersand).append(format("#x%X;", static_cast<unsigned>(character)));
    }
  }
  return spelled;
}

std::string shownText(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), shownForm);
  return text;
}

// UTF-8 into the bytes of the encoding.
Expected<std::string> encoded(const std::string& text, XmlEncoding encoding, bool references) {
  if (encoding == XmlEncoding::kUtf8 || encoding == XmlEncoding::kOnlyUtf8Said || isAscii(text)) return text;
  if (encoding == XmlEncoding::kUnknown)
    return notHeld(shownText(text),
                   "has letters that cannot be stored: the file declares an encoding that is not known");
  std::optional<std::string> bytes = exactWindows1252(text);
  if (!bytes) return notHeld(shownText(text), "has letters that the file's encoding, Windows-1252, lacks");
  if (encoding != XmlEncoding::kUndeclared || !isValidUtf8(*bytes)) return *std::move(bytes);
  if (references) return withReferences(*bytes);
  return notHeld(shownText(text), "would have other letters in the file, which declares no encoding");
}

// As the parser's own printing has it.
void appendSpelled(std::string& spelled, char c) {
  for (const auto& [entity, character] : kEntities) {
    if (c != character) continue;
    spelled.append(1, kHiddenAmpersand).append(entity);
    return;
  }
  if (c == '\t' || c == '\n' || c == '\r') {
    spelled.append(1, kHiddenAmpersand).append(format("#x%02X;", static_cast<unsigned>(c)));
  } else {
    spelled += c;
  }
}

}  // namespace

XmlEncoding xmlEncoding(std::string_view bytes, bool marked) {
  const std::string_view declaration = declarationOf(bytes);
  if (!marked && declaration.empty()) return XmlEncoding::kUndeclared;
  const std::string_view name = declaredEncoding(declaration);
  if (marked || name.empty() || isOneOf(name, {"UTF-8", "UTF8"}))
    return isValidUtf8(bytes) ? XmlEncoding::kUtf8 : XmlEncoding::kOnlyUtf8Said;
  return isOneOf(name, {"windows-1252", "cp1252", "cp-1252", "ISO-8859-1", "ISO8859-1", "latin1"})
             ? XmlEncoding::kWindows1252
             : XmlEncoding::kUnknown;
}

std::string xmlEncodingName(std::string_view bytes, XmlEncoding encoding) {
  switch (encoding) {
    case XmlEncoding::kUtf8:
    case XmlEncoding::kOnlyUtf8Said:
      return "UTF-8";
    case XmlEncoding::kWindows1252:
      return "windows-1252";
    case XmlEncoding::kUndeclared:
      return "none";
    case XmlEncoding::kUnknown:
      break;
  }
  return toUpperAscii(declaredEncoding(declarationOf(bytes)));
}

std::string textOf(std::string_view spelled, XmlEncoding encoding) {
  if (isPlain(spelled)) return std::string(spelled);
  const auto isHidden = [](char c) { return shownForm(c) != c; };
  std::string text = isAscii(spelled) ? std::string(spelled) : decoded(spelled, encoding);
  auto at = std::find_if(text.begin(), text.end(), isHidden);
  std::string result(text.begin(), at);
  for (std::string_view rest(text.data() + result.size(), text.size() - result.size()); !rest.empty();) {
    const auto reference =
        rest.front() == kHiddenAmpersand ? referenceIn(rest.substr(1)) : std::optional<Reference>();
    if (reference) {
      appendUtf8(result, reference->character);
    } else {
      result += shownForm(rest.front());
    }
    rest.remove_prefix(1 + (reference ? reference->length : 0));
  }
  return result;
}

Expected<std::string> spellingOf(std::string_view given, XmlEncoding encoding) {
  const std::string text = displayUtf8(given.substr(0, given.find('\0')));
  const auto isForbidden = [](char c) {
    return static_cast<unsigned char>(c) < ' ' && !isXmlCharacter(static_cast<unsigned char>(c));
  };
  if (std::any_of(text.begin(), text.end(), isForbidden))
    return notHeld(text, "has a control character, which an XML file cannot hold");
  Expected<std::string> bytes = encoded(text, encoding, true);
  if (!bytes) return bytes;
  std::string spelled;
  spelled.reserve(bytes->size());
  for (const char c : *bytes) appendSpelled(spelled, c);
  return spelled;
}

std::string utf8Spelling(std::string_view spelled, XmlEncoding encoding) {
  return decoded(spelled, encoding);
}

Expected<std::string> spellingOfUtf8(const std::string& spelled, XmlEncoding encoding, bool references) {
  return encoded(spelled, encoding, references);
}

}  // namespace tessaly
