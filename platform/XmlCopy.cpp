#include "platform/XmlCopy.h"

#include "platform/Text.h"

namespace tessaly {
namespace {

template <typename Set>
Outcome respellOne(const std::string& text, bool references, const XmlRespell& respell, const Set& set) {
  if (isAscii(text)) return {};
  const Expected<std::string> spelled = respell(text, references);
  if (!spelled) return spelled.failure();
  set(*spelled);
  return {};
}

}  // namespace

// Recursion is bounded by the depth that a file may have.
Outcome respellXml(TiXmlNode& node, const XmlRespell& respell) {
  const TiXmlText* const text = node.ToText();
  Outcome done = respellOne(node.ValueStr(), text && !text->CDATA(), respell,
                            [&](const std::string& spelled) { node.SetValue(spelled); });
  TiXmlElement* const element = node.ToElement();
  for (TiXmlAttribute* attribute = element ? element->FirstAttribute() : nullptr; attribute && done;
       attribute = attribute->Next()) {
    done = respellOne(attribute->NameTStr(), false, respell,
                      [&](const std::string& spelled) { attribute->SetName(spelled); });
    if (!done) break;
    done = respellOne(attribute->ValueStr(), true, respell,
                      [&](const std::string& spelled) { attribute->SetValue(spelled); });
  }
  for (TiXmlNode* child = node.FirstChild(); child && done; child = child->NextSibling())
    done = respellXml(*child, respell);
  return done;
}

Expected<std::unique_ptr<TiXmlElement>> copyFor(const XmlDocument& target, const TiXmlElement& element,
                                                const XmlDocument& from) {
  std::unique_ptr<TiXmlElement> copy(element.Clone()->ToElement());
  if (from.encoding() == target.encoding() && from.encodingName() == target.encodingName()) return copy;
  const auto respell = [&](const std::string& text, bool references) {
    return spellingOfUtf8(utf8Spelling(text, from.encoding()), target.encoding(), references);
  };
  if (Outcome spelled = respellXml(*copy, respell); !spelled) return spelled.failure();
  return copy;
}

}  // namespace tessaly
