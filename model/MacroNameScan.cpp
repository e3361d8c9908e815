#include "model/MacroNameScan.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "model/MacroTree.h"
#include "platform/XmlFile.h"

namespace tessaly {

namespace {

constexpr std::size_t kDeepest = 16;         // open elements
constexpr std::size_t kMostAttributes = 16;  // of one element
constexpr std::string_view kRoot = "macro";
constexpr std::string_view kNameAttribute = "name";
constexpr std::string_view kDeclarationStart = "<?xml ";

// What a byte may be; looked up, as each byte of each file of a folder is asked.
enum Use : unsigned char { kSpace = 1, kLetter = 2, kDigit = 4, kText = 8 };

constexpr std::array<unsigned char, 256> usesOfBytes() {
  std::array<unsigned char, 256> uses{};
  for (const char c : {' ', '\t', '\n', '\r'}) uses[static_cast<unsigned char>(c)] |= kSpace;
  for (unsigned c = 'a'; c <= 'z'; ++c) uses[c] |= kLetter;
  for (unsigned c = 'A'; c <= 'Z'; ++c) uses[c] |= kLetter;
  uses['_'] |= kLetter;
  for (unsigned c = '0'; c <= '9'; ++c) uses[c] |= kDigit;
  // Nothing that the parser would read as another character, or as the end of something.
  for (unsigned c = ' '; c < uses.size(); ++c)
    if (c != '"' && c != '&' && c != '<' && c != '>') uses[c] |= kText;
  return uses;
}

constexpr std::array<unsigned char, 256> kUses = usesOfBytes();

bool is(unsigned use, char c) { return (kUses[static_cast<unsigned char>(c)] & use) != 0; }

// A cursor over the bytes that knows only elements with quoted attributes and white space between them.
class PlainDocument {
 public:
  explicit PlainDocument(std::string_view bytes) : rest_(bytes) {}

  std::optional<std::string_view> name() {
    skipSpace();
    // What a declaration says of the encoding decides how letters beyond ASCII are read.
    if (rest_.substr(0, kDeclarationStart.size()) == kDeclarationStart && !skipDeclaration())
      return std::nullopt;
    do {
      skipSpace();
      if (!tag()) return std::nullopt;
    } while (depth_ > 0);
    skipSpace();
    if (!rest_.empty() || !name_) return std::nullopt;
    return name_;
  }

 private:
  // As many bytes from here as are of this use.
  [[nodiscard]] std::string_view takeAll(unsigned use) {
    std::size_t length = 0;
    while (length < rest_.size() && is(use, rest_[length])) ++length;
    const std::string_view found = rest_.substr(0, length);
    rest_.remove_prefix(length);
    return found;
  }

  void skipSpace() { static_cast<void>(takeAll(kSpace)); }

  [[nodiscard]] bool take(char expected) {
    if (rest_.empty() || rest_.front() != expected) return false;
    rest_.remove_prefix(1);
    return true;
  }

  [[nodiscard]] bool skipDeclaration() {
    const bool ascii =
        std::all_of(rest_.begin(), rest_.end(), [](char c) { return static_cast<signed char>(c) > 0; });
    rest_.remove_prefix(kDeclarationStart.size());
    const bool plain = attributes([](std::string_view attribute, std::string_view) {
      return attribute == "version" || attribute == "encoding" || attribute == "standalone";
    });
    return ascii && plain && take('?') && take('>');
  }

  [[nodiscard]] std::string_view word() {
    if (rest_.empty() || !is(kLetter, rest_.front())) return {};
    return takeAll(kLetter | kDigit);
  }

  [[nodiscard]] bool tag() {
    if (!take('<')) return false;
    if (take('/')) return closingTag();
    const std::string_view element = word();
    if (element.empty() || (depth_ == 0 && element != kRoot)) return false;
    const bool plain = attributes([this](std::string_view attribute, std::string_view value) {
      if (depth_ == 0 && attribute == kNameAttribute) name_ = value;
      return true;
    });
    if (!plain) return false;
    if (take('/')) return take('>');
    if (!take('>') || depth_ == kDeepest) return false;
    open_[depth_++] = element;
    return true;
  }

  [[nodiscard]] bool closingTag() {
    if (depth_ == 0 || word() != open_[depth_ - 1] || !take('>')) return false;
    --depth_;
    return true;
  }

  // Hands each attribute to `known`, which is false for one that ends it all.
  template <class Known>
  [[nodiscard]] bool attributes(const Known& known) {
    std::array<std::string_view, kMostAttributes> names;
    std::size_t count = 0;
    std::uint64_t lengths = 0;  // of these, as few are compared
    while (true) {
      const std::size_t before = rest_.size();
      skipSpace();
      if (rest_.empty() || !is(kLetter, rest_.front())) return true;
      const std::string_view attribute = word();
      if (rest_.size() == before || count == names.size() || !take('=') || !take('"')) return false;
      const auto end = names.begin() + static_cast<std::ptrdiff_t>(count);
      const std::uint64_t length = std::uint64_t{1} << (attribute.size() % 64);
      if ((lengths & length) != 0 && std::find(names.begin(), end, attribute) != end) return false;
      lengths |= length;
      names[count++] = attribute;
      const std::string_view value = takeAll(kText);
      if (!take('"')) return false;
      if (!known(attribute, value)) return false;
    }
  }

  std::string_view rest_;
  std::array<std::string_view, kDeepest> open_;
  std::size_t depth_ = 0;
  std::optional<std::string_view> name_;
};

}  // namespace

std::optional<std::string> scanMacroName(std::string_view bytes) {
  const std::optional<std::string_view> name = PlainDocument(bytes).name();
  if (!name) return std::nullopt;
  return textOf(*name, XmlEncoding::kUndeclared);  // one that declares an encoding holds ASCII only
}

std::string macroNameIn(std::string_view bytes) {
  if (auto name = scanMacroName(bytes)) return *std::move(name);
  XmlDocument document;
  if (!parseXml(std::string(bytes), document)) return {};
  const TiXmlElement* const macro = namedMacro(document);
  return macro ? macroNameOf(document, *macro) : std::string();
}

}  // namespace tessaly
