#include "model/Unread.h"

#include <string_view>

namespace tessaly {
namespace {

// So that a text cannot look like markup.
void appendEscaped(std::string_view bytes, std::string& text) {
  for (const char c : bytes) {
    switch (c) {
      case '&':
        text += "&amp;";
        break;
      case '<':
        text += "&lt;";
        break;
      case '"':
        text += "&quot;";
        break;
      default:
        text += c;
    }
  }
}

void appendElement(const XmlDocument& document, const TiXmlElement& element, std::string& text,
                   const TiXmlElement* unnamed) {
  const std::string name = document.plainText(element.ValueStr());
  text.append("<").append(name);
  for (const TiXmlAttribute* attribute = element.FirstAttribute(); attribute; attribute = attribute->Next()) {
    if (&element != unnamed || attribute->NameTStr() != "name") appendUnread(document, *attribute, text);
  }
  text += '>';
  const bool mixed = isMixed(element);
  for (const TiXmlNode* child = element.FirstChild(); child; child = child->NextSibling()) {
    if (mixed || !child->ToText() || child->ToText()->CDATA()) appendUnread(document, *child, text, unnamed);
  }
  text.append("</").append(name).append(">");
}

}  // namespace

void appendUnread(const XmlDocument& document, const TiXmlAttribute& attribute, std::string& text) {
  text.append(" ").append(document.plainText(attribute.NameTStr())).append("=\"");
  appendEscaped(document.text(attribute.ValueStr()), text);
  text += '"';
}

void appendUnread(const XmlDocument& document, const TiXmlNode& node, std::string& text,
                  const TiXmlElement* unnamed) {
  // Recursion is bounded by the depth that a file may have.
  switch (node.Type()) {
    case TiXmlNode::TINYXML_ELEMENT:
      appendElement(document, *node.ToElement(), text, unnamed);
      break;
    case TiXmlNode::TINYXML_COMMENT:
      text.append("<!--").append(document.plainText(node.ValueStr())).append("-->");
      break;
    case TiXmlNode::TINYXML_TEXT:
      if (node.ToText()->CDATA()) {
        text.append("<![CDATA[").append(document.plainText(node.ValueStr())).append("]]>");
      } else {
        appendEscaped(document.text(node.ValueStr()), text);
      }
      break;
    case TiXmlNode::TINYXML_UNKNOWN:
      text.append("<").append(document.plainText(node.ValueStr())).append(">");
      break;
    case TiXmlNode::TINYXML_DOCUMENT:
      for (const TiXmlNode* child = node.FirstChild(); child; child = child->NextSibling())
        appendUnread(document, *child, text, unnamed);
      break;
    case TiXmlNode::TINYXML_DECLARATION:  // hidden from the parser
    case TiXmlNode::TINYXML_TYPECOUNT:
      break;
  }
}

}  // namespace tessaly
