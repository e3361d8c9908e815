#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <tinyxml.h>

#include "platform/Outcome.h"
#include "platform/SiteRoot.h"
#include "platform/XmlSpelling.h"

// Reading and printing TinyXML documents so that what nobody touched stays as it is.
namespace tessaly {

inline constexpr int kDeepestXml = 256;          // nested elements
inline constexpr int kMostXmlAttributes = 1000;  // on one element
// Elements, attributes, texts, comments and instructions together: about 1 GB of memory at the most, beside
// the texts themselves. A macro of 100,000 commands with eight parameters each has 3 million.
inline constexpr std::size_t kMostXmlPieces = 5'000'000;

// The parser's tree, and what the parser does not tell. Values of attributes and texts stand in the tree as
// the file spells them (XmlSpelling.h): read them by `text`, put them in by `spelling`. Names are plain
// bytes.
class XmlDocument : public TiXmlDocument {
 public:
  // A text of the tree as UTF-8.
  [[nodiscard]] std::string text(std::string_view spelled) const { return textOf(spelled, encoding_); }
  // A comment, an instruction or a name of the tree as UTF-8: nothing in it is a reference.
  [[nodiscard]] std::string plainText(std::string_view stored) const;
  // How a text stands in the tree; kTextNotHeld when the file's encoding cannot hold it.
  [[nodiscard]] Expected<std::string> spelling(std::string_view text) const {
    return spellingOf(text, encoding_);
  }
  [[nodiscard]] XmlEncoding encoding() const { return encoding_; }
  [[nodiscard]] const std::string& encodingName() const { return encodingName_; }  // see xmlEncodingName
  // Whether printing gives back every text, attribute, comment and instruction that was read; kNotKept with
  // the construct otherwise.
  [[nodiscard]] const Outcome& kept() const { return kept_; }

 private:
  friend Outcome parseXml(std::string bytes, XmlDocument& document);
  friend Expected<std::string> printXml(const XmlDocument& document);

  XmlEncoding encoding_ = XmlEncoding::kUndeclared;
  std::string encodingName_;
  bool marked_ = false;   // by a byte order mark
  std::size_t size_ = 0;  // bytes that were read
  Outcome kept_;
};

// White space as it stands in a file; that of a CDATA section is text.
[[nodiscard]] bool isLayout(const TiXmlText& text);
// Whether the element holds text beside white space: its white space is then text too, and no layout.
[[nodiscard]] bool isMixed(const TiXmlElement& element);

// Parses the bytes into `document`, which is empty after a failure: kNotXml with what is wrong, kTooLarge for
// more than the limits above, kNoMemory. The text of a failure goes on from the name of the file. Never
// throws.
Outcome parseXml(std::string bytes, XmlDocument& document);

// The bytes of the tree: each element on a line of its own, indented by four blanks a level, where it does
// not stand beside text; everything else as it was read. What is printed can be parsed and gives the same
// tree. A failure for a tree that would lose what was read (kNotKept), has grown beyond the limits
// (kTooLarge) or is empty (kNotXml).
[[nodiscard]] Expected<std::string> printXml(const XmlDocument& document);

// Reads the file into `document`. A file that is missing, no regular file or larger than 256 MB fails too.
Outcome loadXml(const SiteRoot& root, std::string_view path, XmlDocument& document);

}  // namespace tessaly
