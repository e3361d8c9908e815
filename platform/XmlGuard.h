#pragma once

#include <cstddef>
#include <string>

#include "platform/Outcome.h"

namespace tessaly {

struct XmlLimits {
  int depth;           // nested elements
  int attributes;      // on one element
  std::size_t pieces;  // elements, attributes, texts, comments and instructions together
};

// What a look at a document before the parser's tells, at a small part of the parser's cost.
struct XmlLook {
  // Not done for what the parser cannot be trusted with:
  // - more nesting, attributes or pieces than the limits: the parser recurses, its time grows with their
  // square
  //   and its memory is fifty times the file's;
  // - a NUL, after which the parser would drop the rest without a word;
  // - a DOCTYPE with an internal subset, which the parser cuts at the first ">";
  // - a comment, instruction or character data without its end.
  Outcome safe;
  // Not done when the tree would not give back what stands in the document:
  // - text outside the root element, where the parser stops reading;
  // - attributes without quotes, or without white space between them, which printing would repair;
  // - control characters that XML does not allow;
  // - `xml:space`, for white space between elements is layout to us.
  Outcome kept;
};

// Looks at the bytes and hides in them what the parser must not see (XmlSpelling.h). The bytes are read as
// this parser reads them, not as the XML rules would have it: what it takes for a comment or a quoted value
// must be taken for one here, or a hostile file could hide its depth. Whether they are well formed is the
// parser's to say.
[[nodiscard]] XmlLook prepareXml(std::string& bytes, const XmlLimits& limits);

}  // namespace tessaly
