#include <tinyxml.h>

#include "fuzz/Fuzzing.h"
#include "platform/XmlFile.h"

// An XML file, loaded and saved: the tree that comes back has the same elements and attributes.
namespace tessaly {
namespace {

ScratchSite& site() {
  static ScratchSite one;
  return one;
}

bool sameAttributes(const TiXmlElement& a, const TiXmlElement& b) {
  const TiXmlAttribute* left = a.FirstAttribute();
  const TiXmlAttribute* right = b.FirstAttribute();
  for (; left && right; left = left->Next(), right = right->Next()) {
    if (left->NameTStr() != right->NameTStr() || left->ValueStr() != right->ValueStr()) return false;
  }
  return left == right;
}

// Recursion is bounded by the depth that a file may have.
bool sameElements(const TiXmlNode& a, const TiXmlNode& b) {
  const TiXmlElement* left = a.FirstChildElement();
  const TiXmlElement* right = b.FirstChildElement();
  for (; left && right; left = left->NextSiblingElement(), right = right->NextSiblingElement()) {
    if (left->ValueStr() != right->ValueStr() || !sameAttributes(*left, *right)) return false;
    if (!sameElements(*left, *right)) return false;
  }
  return left == right;
}

void run(std::string_view bytes) {
  site().put("c/a.xml", bytes);
  TiXmlDocument document;
  if (!loadXml(site().root, "c:\\a.xml", document)) {
    require(document.NoChildren(), "a refused file leaves an empty document");
    return;
  }
  require(site().bytes("c/a.xml") == bytes, "loading leaves the file alone");
  if (!saveXml(site().root, "c:\\b.xml", document)) {
    require(document.NoChildren(), "every document with something in it is saved");
    return;
  }
  TiXmlDocument again;
  require(loadXml(site().root, "c:\\b.xml", again), "what was saved can be loaded");
  require(sameElements(document, again), "what was saved has the same elements and attributes");
  TiXmlDocument third;
  require(saveXml(site().root, "c:\\c.xml", again) && loadXml(site().root, "c:\\c.xml", third) &&
              sameElements(again, third),
          "and stays so");
}

}  // namespace
}  // namespace tessaly

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tessaly::run({reinterpret_cast<const char*>(data), size});
  return 0;
}
