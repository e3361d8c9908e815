#pragma once

#include <string>

#include "platform/XmlFile.h"

// What stands in a macro's document and in no record: unknown attributes and elements, comments, texts. It is
// told as text, equal for two documents when they hold the same, whatever their layout, quotes, references
// and encodings.
namespace tessaly {

// ` note="x"`.
void appendUnread(const XmlDocument& document, const TiXmlAttribute& attribute, std::string& text);

// The node with all that it holds; nothing for layout. The name of `unnamed` is left out.
void appendUnread(const XmlDocument& document, const TiXmlNode& node, std::string& text,
                  const TiXmlElement* unnamed = nullptr);

}  // namespace tessaly
