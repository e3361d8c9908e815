#include "platform/XmlFile.h"

#include <cstdio>
#include <cstdlib>
#include <new>
#include <string>

#include "platform/Files.h"
#include "platform/XmlGuard.h"

namespace tessaly {
namespace {

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

bool parse(std::string& text, TiXmlDocument& document) {
  unifyLineEnds(text);
  if (!isSafeXml(text, {kDeepestXml, kMostXmlAttributes})) return false;
  document.SetTabSize(0);  // nobody asks for lines and columns, and keeping them costs an eighth of the time
  document.Parse(text.c_str(), nullptr, TIXML_DEFAULT_ENCODING);
  return !document.Error();
}

}  // namespace

bool loadXml(const SiteRoot& root, std::string_view path, TiXmlDocument& document) {
  bool loaded = false;
  try {
    document = TiXmlDocument();  // an earlier byte order mark and error are forgotten too
    std::optional<std::string> text = readFile(root, path);
    loaded = text && parse(*text, document);
  } catch (const std::bad_alloc&) {
    loaded = false;
  }
  if (!loaded) document.Clear();
  return loaded;
}

bool saveXml(const SiteRoot& root, std::string_view path, const TiXmlDocument& document) {
  if (document.NoChildren()) return false;
  char* bytes = nullptr;
  std::size_t size = 0;
  std::FILE* const memory = ::open_memstream(&bytes, &size);
  if (!memory) return false;
  const bool printed = document.SaveFile(memory);
  const bool whole = std::fclose(memory) == 0 && printed;
  const bool saved = whole && writeFile(root, path, {bytes, size});
  std::free(bytes);
  return saved;
}

}  // namespace tessaly
