#pragma once

#include <string>

namespace tessaly {

struct XmlLimits {
  int depth;       // nested elements
  int attributes;  // on one element
};

// Looks at a document before the parser does, at a small part of the parser's cost, and tells whether the
// parser can be trusted with it. False for
// - more nesting or attributes than the limits: the parser recurses, and its time grows with their square;
// - a NUL, after which the parser would drop the rest without a word;
// - a DOCTYPE with an internal subset, which the parser cuts at the first ">" and loses the rest on saving;
// - a numeric reference cut short by a "<", a closing quote or the end: the parser would run over it and lose
//   markup, or leave its memory;
// - a declaration with a double quote or a "&" in a value, which would be saved as something else.
// Bytes that are no UTF-8 must be parsed byte by byte, whatever the document says about itself.
// The bytes are read as this parser reads them, not as the XML rules would have it: what it takes for a
// comment or a quoted value must be taken for one here, or a hostile file could hide its depth. Whether they
// are well formed is the parser's to say.
[[nodiscard]] bool isSafeXml(const std::string& bytes, const XmlLimits& limits);

}  // namespace tessaly
