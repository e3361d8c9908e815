#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "platform/Outcome.h"

// How the texts of an XML file are spelled. The parser would resolve some references, damage others, take
// every
// "<?xml..." for a declaration and drop white space between tags; so what it must not see is hidden from it
// behind control characters that no XML file may hold. Its tree then has each text in the file's own
// spelling, and printing the tree gives that back byte for byte.
namespace tessaly {

inline constexpr char kFirstHidden = '\x0E';
inline constexpr std::string_view kHideable = "&? \t\n";
inline constexpr char kHiddenAmpersand = kFirstHidden;
inline constexpr char kHiddenQuestion = kFirstHidden + 1;

// One of kHideable.
[[nodiscard]] constexpr char hiddenForm(char c) {
  return static_cast<char>(kFirstHidden + static_cast<char>(kHideable.find(c)));
}

// What stands for itself stays.
[[nodiscard]] constexpr char shownForm(char c) {
  const auto place =
      static_cast<std::size_t>(static_cast<unsigned char>(c)) - static_cast<std::size_t>(kFirstHidden);
  return place < kHideable.size() ? kHideable[place] : c;
}

enum class XmlEncoding {
  kUtf8,          // declared so, by a byte order mark or a declaration without another encoding, and true
  kOnlyUtf8Said,  // declared so, but the bytes are no UTF-8
  kWindows1252,   // declared so, or as its subset ISO-8859-1
  kUndeclared,    // neither declaration nor mark: Windows-1252, and UTF-8 is understood too
  kUnknown,       // another one is declared; only ASCII can be stored
};

// The encoding of a document without its byte order mark.
[[nodiscard]] XmlEncoding xmlEncoding(std::string_view bytes, bool marked);

// How we call the encoding of a document: "UTF-8", "windows-1252" for its subset too, "none", or the declared
// name in capital letters.
[[nodiscard]] std::string xmlEncodingName(std::string_view bytes, XmlEncoding encoding);

// A text of the tree as UTF-8, references resolved. One that names no character stands as it is spelled, so
// does a "&" that begins none. Where the encoding is not certain each text is taken as UTF-8 when it is
// valid, else as Windows-1252.
[[nodiscard]] std::string textOf(std::string_view spelled, XmlEncoding encoding);

// The spelling of a text, up to a NUL, which reads as that text; kTextNotHeld when the encoding lacks one of
// its characters, or XML does. Given as UTF-8; what is none counts as Windows-1252.
[[nodiscard]] Expected<std::string> spellingOf(std::string_view text, XmlEncoding encoding);

// A text of the tree with its letters in UTF-8 and all else spelled as it is.
[[nodiscard]] std::string utf8Spelling(std::string_view spelled, XmlEncoding encoding);

// Back from there into an encoding, be it another one; kTextNotHeld when it lacks a letter. Where references
// count letters may become some.
[[nodiscard]] Expected<std::string> spellingOfUtf8(const std::string& spelled, XmlEncoding encoding,
                                                   bool references);

}  // namespace tessaly
