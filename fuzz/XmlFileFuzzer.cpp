#include "fuzz/Fuzzing.h"
#include "platform/XmlFile.h"

// An XML document, parsed and printed: nothing but layout and quotes changes, and what was printed gives the
// same tree.
namespace tessaly {
namespace {

bool sameAttributes(const TiXmlElement& a, const TiXmlElement& b) {
  const TiXmlAttribute* left = a.FirstAttribute();
  const TiXmlAttribute* right = b.FirstAttribute();
  for (; left && right; left = left->Next(), right = right->Next()) {
    if (left->NameTStr() != right->NameTStr() || left->ValueStr() != right->ValueStr()) return false;
  }
  return left == right;
}

// Recursion is bounded by the depth that a file may have.
bool sameNodes(const TiXmlNode& a, const TiXmlNode& b) {
  if (a.Type() != b.Type() || a.ValueStr() != b.ValueStr()) return false;
  if (a.ToElement() && !sameAttributes(*a.ToElement(), *b.ToElement())) return false;
  const TiXmlNode* left = a.FirstChild();
  const TiXmlNode* right = b.FirstChild();
  for (; left && right; left = left->NextSibling(), right = right->NextSibling()) {
    if (!sameNodes(*left, *right)) return false;
  }
  return left == right;
}

// Without what printing may change; an element without content becomes one tag.
std::string substance(std::string_view bytes) {
  std::string left;
  for (const char c : bytes) {
    if (std::string_view(" \t\n\v\f\r").find(c) == std::string_view::npos) left += c == '\'' ? '"' : c;
  }
  return left;
}

bool mayHoldEmptyElement(const std::string& substance) {
  for (std::size_t at = substance.find("></"); at != std::string::npos; at = substance.find("></", at + 1)) {
    if (at > 0 && substance[at - 1] != '/') return true;
  }
  return false;
}

void run(std::string_view bytes) {
  XmlDocument document;
  if (!parseXml(std::string(bytes), document)) {
    require(document.NoChildren(), "a refused document leaves an empty one");
    return;
  }
  const auto printed = printXml(document);
  if (!printed) {
    require(!document.kept() || document.NoChildren(), "every document with something in it is printed");
    return;
  }
  const std::string before = substance(bytes);
  require(mayHoldEmptyElement(before) || substance(*printed) == before, "only layout and quotes change");
  XmlDocument again;
  require(parseXml(*printed, again).done(), "what was printed can be parsed");
  require(sameNodes(document, again), "what was printed gives the same tree");
  const auto twice = printXml(again);
  require(twice && *twice == *printed, "what was printed once is printed the same again");
}

}  // namespace
}  // namespace tessaly

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tessaly::run({reinterpret_cast<const char*>(data), size});
  return 0;
}
