#include <memory>

#include "platform/XmlFile.h"

namespace tessaly {
namespace {

// Spells a copied tree anew. Recursion is bounded by the depth that a file may have.
class Respelling {
 public:
  Respelling(XmlEncoding from, XmlEncoding to) : from_(from), to_(to) {}

  Outcome node(TiXmlNode& node) const {
    TiXmlElement* const element = node.ToElement();
    const TiXmlText* const text = node.ToText();
    auto value = text && !text->CDATA() ? spelled(node.ValueStr()) : plain(node.ValueStr());
    if (!value) return value.failure();
    node.SetValue(*value);
    if (element) {
      if (Outcome done = attributes(*element); !done) return done;
    }
    for (TiXmlNode* child = node.FirstChild(); child; child = child->NextSibling()) {
      if (Outcome done = this->node(*child); !done) return done;
    }
    return {};
  }

 private:
  [[nodiscard]] Expected<std::string> spelled(std::string_view stored) const {
    return spellingOf(textOf(stored, from_), to_);
  }
  [[nodiscard]] Expected<std::string> plain(std::string_view stored) const {
    return plainSpellingOf(plainTextOf(stored, from_), to_);
  }

  Outcome attributes(TiXmlElement& element) const {
    for (TiXmlAttribute* attribute = element.FirstAttribute(); attribute; attribute = attribute->Next()) {
      const auto name = plain(attribute->NameTStr());
      if (!name) return name.failure();
      const auto value = spelled(attribute->ValueStr());
      if (!value) return value.failure();
      attribute->SetName(*name);
      attribute->SetValue(*value);
    }
    return {};
  }

  XmlEncoding from_, to_;
};

}  // namespace

Expected<std::unique_ptr<TiXmlElement>> XmlDocument::copyOf(const TiXmlElement& element,
                                                            const XmlDocument& from) const {
  std::unique_ptr<TiXmlElement> copy(element.Clone()->ToElement());
  if (from.encoding_ == encoding_) return copy;
  if (Outcome spelled = Respelling(from.encoding_, encoding_).node(*copy); !spelled) return spelled.failure();
  return copy;
}

}  // namespace tessaly
