#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/XmlFile.h"

// Elements on their way from one document to another.
namespace tessaly {

// What becomes of a text with letters beyond ASCII; `references` says whether one may stand in it.
using XmlRespell = std::function<Expected<std::string>(const std::string& text, bool references)>;

// All texts of a tree, names too, in the order in which they stand in the file; the first failure ends it.
Outcome respellXml(TiXmlNode& node, const XmlRespell& respell);

// An element with all that it holds, spelled as the encoding of `target` has it; kTextNotHeld when that lacks
// one of its letters.
[[nodiscard]] Expected<std::unique_ptr<TiXmlElement>> copyFor(const XmlDocument& target,
                                                              const TiXmlElement& element,
                                                              const XmlDocument& from);

}  // namespace tessaly
