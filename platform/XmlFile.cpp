#include "platform/XmlFile.h"

#include <algorithm>
#include <new>
#include <utility>

#include "platform/Files.h"
#include "platform/XmlGuard.h"

namespace tessaly {
namespace {

using Kind = Failure::Kind;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::size_t kIndentation = 4;  // blanks a level

Failure noMemory() { return {Kind::kNoMemory, "does not fit into memory"}; }

// CR LF and a lone CR become LF, as they do when the parser reads a file by itself.
void unifyLineEnds(std::string& text) {
  std::size_t from = text.find('\r');
  if (from == std::string::npos) return;
  std::size_t to = from;
  while (from < text.size()) {
    const char c = text[from++];
    if (c == '\r' && from < text.size() && text[from] == '\n') ++from;
    text[to++] = c == '\r' ? '\n' : c;
  }
  text.resize(to);
}

// The parser reads byte by byte, whatever the document declares: in UTF-8 it takes a byte that begins a
// character together with those that should follow, whatever they are, and skips some characters as white
// space.
Outcome parseTree(const std::string& bytes, TiXmlDocument& document) {
  // Kept in texts; the setting is the whole program's.
  static const bool whiteSpaceStays = (TiXmlBase::SetCondenseWhiteSpace(false), true);
  static_cast<void>(whiteSpaceStays);
  document.SetTabSize(0);  // nobody asks for lines and columns, and keeping them costs an eighth of the time
  document.Parse(bytes.c_str(), nullptr, TIXML_ENCODING_LEGACY);
  if (!document.Error()) return {};
  return Failure{Kind::kNotXml, std::string("is not well formed: ") + document.ErrorDesc()};
}

class Printer {
 public:
  [[nodiscard]] std::size_t pieces() const { return pieces_; }
  [[nodiscard]] std::string& bytes() { return bytes_; }

  // Recursion is bounded by the depth that a file may have.
  void node(const TiXmlNode& node, std::size_t depth) {
    ++pieces_;
    switch (node.Type()) {
      case TiXmlNode::TINYXML_ELEMENT:
        element(*node.ToElement(), depth);
        break;
      case TiXmlNode::TINYXML_COMMENT:
        bytes_.append("<!--").append(node.ValueStr()).append("-->");
        break;
      case TiXmlNode::TINYXML_TEXT:
        text(*node.ToText());
        break;
      case TiXmlNode::TINYXML_UNKNOWN:
        bytes_.append("<").append(node.ValueStr()).append(">");
        break;
      case TiXmlNode::TINYXML_DOCUMENT:
      case TiXmlNode::TINYXML_DECLARATION:  // hidden from the parser
      case TiXmlNode::TINYXML_TYPECOUNT:
        break;
    }
  }

 private:
  void element(const TiXmlElement& element, std::size_t depth) {
    bytes_.append("<").append(element.ValueStr());
    for (const TiXmlAttribute* attribute = element.FirstAttribute(); attribute;
         attribute = attribute->Next()) {
      ++pieces_;
      const std::string& value = attribute->ValueStr();
      const char quote = value.find('"') == std::string::npos ? '"' : '\'';
      bytes_.append(" ").append(attribute->NameTStr()).append("=");
      bytes_.append(1, quote).append(value).append(1, quote);
    }
    if (element.NoChildren()) {
      bytes_ += " />";
      return;
    }
    bytes_ += '>';
    children(element, depth);
    bytes_.append("</").append(element.ValueStr()).append(">");
  }

  void children(const TiXmlElement& element, std::size_t depth) {
    const bool asRead = element.FirstChild()->ToText() && element.FirstChild() == element.LastChild();
    if (asRead || isMixed(element)) {
      for (const TiXmlNode* child = element.FirstChild(); child; child = child->NextSibling())
        node(*child, depth + 1);
      return;
    }
    for (const TiXmlNode* child = element.FirstChild(); child; child = child->NextSibling()) {
      if (child->ToText()) continue;
      newLine(depth + 1);
      node(*child, depth + 1);
    }
    newLine(depth);
  }

  void text(const TiXmlText& text) {
    if (text.CDATA()) {
      bytes_.append("<![CDATA[").append(text.ValueStr()).append("]]>");
    } else {
      bytes_ += text.ValueStr();
    }
  }

  void newLine(std::size_t depth) { bytes_.append(1, '\n').append(kIndentation * depth, ' '); }

  std::string bytes_;
  std::size_t pieces_ = 0;
};

}  // namespace

std::string XmlDocument::plainText(std::string_view stored) const {
  std::string text = utf8Spelling(stored, encoding_);
  std::transform(text.begin(), text.end(), text.begin(), shownForm);
  return text;
}

bool isLayout(const TiXmlText& text) {
  return !text.CDATA() && std::all_of(text.ValueStr().begin(), text.ValueStr().end(), [](char c) {
    return std::string_view(" \t\n\v\f").find(shownForm(c)) != std::string_view::npos;
  });
}

bool isMixed(const TiXmlElement& element) {
  for (const TiXmlNode* child = element.FirstChild(); child; child = child->NextSibling()) {
    if (child->ToText() && !isLayout(*child->ToText())) return true;
  }
  return false;
}

Outcome parseXml(std::string bytes, XmlDocument& document) {
  document = XmlDocument();  // of an earlier content nothing stays
  Outcome parsed;
  try {
    document.marked_ = bytes.starts_with(kByteOrderMark);
    if (document.marked_) bytes.erase(0, kByteOrderMark.size());
    document.size_ = bytes.size();
    document.encoding_ = xmlEncoding(bytes, document.marked_);
    document.encodingName_ = xmlEncodingName(bytes, document.encoding_);
    unifyLineEnds(bytes);
    XmlLook look = prepareXml(bytes, {kDeepestXml, kMostXmlAttributes, kMostXmlPieces});
    document.kept_ = std::move(look.kept);
    parsed = look.safe ? parseTree(bytes, document) : std::move(look.safe);
  } catch (const std::bad_alloc&) {
    parsed = noMemory();
  }
  if (!parsed) document.Clear();
  return parsed;
}

Expected<std::string> printXml(const XmlDocument& document) try {
  if (!document.kept()) return document.kept().failure();
  if (document.NoChildren()) return Failure{Kind::kNotXml, "is empty"};
  Printer printer;
  printer.bytes().reserve(document.size_ + document.size_ / 8);
  if (document.marked_) printer.bytes() += kByteOrderMark;
  for (const TiXmlNode* node = document.FirstChild(); node; node = node->NextSibling()) {
    printer.node(*node, 0);
    printer.bytes() += '\n';
  }
  std::string bytes = std::move(printer.bytes());
  if (printer.pieces() > kMostXmlPieces || bytes.size() > kLargestFile)
    return Failure{Kind::kTooLarge, "would grow too large"};
  std::transform(bytes.begin(), bytes.end(), bytes.begin(), shownForm);
  return bytes;
} catch (const std::bad_alloc&) {
  return noMemory();
}

Outcome loadXml(const SiteRoot& root, std::string_view path, XmlDocument& document) {
  Expected<std::string> bytes = readFile(root, path);
  if (bytes) return parseXml(*std::move(bytes), document);
  document = XmlDocument();
  return bytes.failure();
}

}  // namespace tessaly
