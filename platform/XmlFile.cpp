#include "platform/XmlFile.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <string>

#include "platform/Files.h"
#include "platform/Text.h"
#include "platform/XmlGuard.h"

namespace tessaly {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// CR LF and a lone CR become LF, as they do when the parser reads a file by itself.
void unifyLineEnds(std::string& text) {
  std::size_t from = text.find('\r');
  if (from == std::string::npos) return;
  std::size_t to = from;
  while (from < text.size()) {
    const char c = text[from++];
    if (c == '\r' && from < text.size() && text[from] == '\n') ++from;
    text[to++] = c == '\r' ? '\n' : c;
  }
  text.resize(to);
}

// In UTF-8 the parser takes a byte that begins a character together with those that should follow, whatever
// they are, and so would run over a quote, a tag or a reference. What only claims to be UTF-8 is read byte by
// byte.
void parseText(const std::string& text, TiXmlDocument& document) {
  if (isValidUtf8(text)) {
    document.Parse(text.c_str(), nullptr, TIXML_DEFAULT_ENCODING);
  } else {
    const bool marked = text.starts_with(kByteOrderMark);
    document.Parse(text.c_str() + (marked ? kByteOrderMark.size() : 0), nullptr, TIXML_ENCODING_LEGACY);
  }
}

bool parse(std::string& text, TiXmlDocument& document) {
  unifyLineEnds(text);
  if (!isSafeXml(text, {kDeepestXml, kMostXmlAttributes})) return false;
  document.SetTabSize(0);  // nobody asks for lines and columns, and keeping them costs an eighth of the time
  parseText(text, document);
  return !document.Error();
}

bool isPlainWord(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '.' ||
           c == '-' || c == '_';
  });
}

// Whether the printed tree is sure to be read as it was printed. Texts are printed with entities for all that
// could end them. What does not come back as it was: a text with a numeric reference in it, which is printed
// as it stands (so is a reference for a control character, and the two look alike), a declaration, whose
// texts are printed as they are, and a byte order mark before what is no UTF-8.
bool isReadAsPrinted(const TiXmlDocument& document, std::string_view bytes) {
  constexpr std::string_view kDeclaration = "<?xml";
  if (bytes.size() > kLargestFile || bytes.find("&#") != bytes.npos) return false;
  const bool marked = bytes.starts_with(kByteOrderMark);
  const TiXmlDeclaration* const declaration = document.FirstChild()->ToDeclaration();
  if (bytes.find(kDeclaration, (marked ? kByteOrderMark.size() : 0) + (declaration ? 1 : 0)) != bytes.npos)
    return false;
  if (declaration && !(isPlainWord(declaration->Version()) && isPlainWord(declaration->Encoding()) &&
                       isPlainWord(declaration->Standalone())))
    return false;
  return !marked || isValidUtf8(bytes);
}

}  // namespace

bool loadXml(const SiteRoot& root, std::string_view path, TiXmlDocument& document, ContentCheck* check) {
  bool loaded = false;
  try {
    document = TiXmlDocument();  // an earlier byte order mark and error are forgotten too
    auto text = readFile(root, path);
    if (text && check) *check = contentCheck(*text);
    loaded = text && parse(*text, document);
  } catch (const std::bad_alloc&) {
    loaded = false;
  }
  if (!loaded) document.Clear();
  return loaded;
}

Outcome parseXml(std::string bytes, TiXmlDocument& document) {
  document = TiXmlDocument();
  if (parse(bytes, document)) return {};
  return Failure{Failure::Kind::kNotXml, "does not parse"};
}

Expected<std::string> printXml(const TiXmlDocument& document) {
  char* bytes = nullptr;
  std::size_t size = 0;
  std::FILE* const memory = ::open_memstream(&bytes, &size);
  if (!memory) return Failure{Failure::Kind::kNoMemory, "out of memory"};
  const bool printed = document.SaveFile(memory);
  const bool whole = std::fclose(memory) == 0 && printed;
  std::string text(bytes, whole ? size : 0);
  std::free(bytes);
  if (!whole) return Failure{Failure::Kind::kNoMemory, "out of memory"};
  return text;
}

Outcome keepsXml(std::string_view) { return {}; }

bool saveXml(const SiteRoot& root, std::string_view path, const TiXmlDocument& document, SavedXml* result) {
  if (document.NoChildren()) return false;
  char* bytes = nullptr;
  std::size_t size = 0;
  std::FILE* const memory = ::open_memstream(&bytes, &size);
  if (!memory) return false;
  const bool printed = document.SaveFile(memory);
  const bool whole = std::fclose(memory) == 0 && printed;
  const bool saved = whole && writeFile(root, path, {bytes, size}).done();
  if (result && saved) *result = {isReadAsPrinted(document, {bytes, size}), contentCheck({bytes, size})};
  std::free(bytes);
  return saved;
}

}  // namespace tessaly
