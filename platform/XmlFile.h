#pragma once

#include <string>
#include <string_view>
#include <tinyxml.h>

#include "platform/ContentCheck.h"
#include "platform/Outcome.h"
#include "platform/SiteRoot.h"

// Loading and saving TinyXML documents with the guards that the parser lacks.
namespace tessaly {

inline constexpr int kDeepestXml = 256;          // nested elements
inline constexpr int kMostXmlAttributes = 1000;  // on one element

// Loads the file into `document` (cleared first). False for a file that is missing, no regular file, larger
// than 256 MB, contains a NUL or a DOCTYPE with an internal subset, is nested deeper or carries more
// attributes on one element than the limits above, or does not parse; `document` is then empty. `check`, when
// given, is set as soon as the bytes were read. Never throws.
[[nodiscard]] bool loadXml(const SiteRoot& root, std::string_view path, TiXmlDocument& document,
                           ContentCheck* check = nullptr);

Outcome parseXml(std::string bytes, TiXmlDocument& document);
[[nodiscard]] Expected<std::string> printXml(const TiXmlDocument& document);
Outcome keepsXml(std::string_view bytes);

// What was written.
struct SavedXml {
  // Loading the file again is sure to give the elements and attributes of the tree; the tree has come from a
  // file, and its element and attribute names still are such as the parser reads.
  bool same = false;
  ContentCheck check;
};

// Prints the tree to memory and writes it whole beside the target, then renames it over. False when nothing
// was written; an old file is then as it was. An empty document is not written. `result`, when given, is set
// when the tree was written.
[[nodiscard]] bool saveXml(const SiteRoot& root, std::string_view path, const TiXmlDocument& document,
                           SavedXml* result = nullptr);

}  // namespace tessaly
