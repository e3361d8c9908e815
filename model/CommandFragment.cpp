#include "model/CommandFragment.h"

#include <algorithm>
#include <new>
#include <optional>

#include "model/Macro.h"
#include "model/MacroTree.h"
#include "platform/Text.h"
#include "platform/XmlCopy.h"
#include "platform/XmlFile.h"

namespace tessaly {
namespace {

using Kind = Failure::Kind;

constexpr const char* kRoot = "tessaly-commands";
constexpr const char* kData = "data";  // so that a command lies as deep as in a macro
constexpr const char* kCommand = "cmd";
constexpr const char* kVersionName = "version";
constexpr std::string_view kVersion = "1";
constexpr const char* kEncoding = "encoding";
constexpr const char* kLetters = "letters";
constexpr char kUtf8Letters = 'u';
constexpr char kWesternLetters = 'w';
constexpr const char* kShell =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<tessaly-commands "
    "version=\"1\"><data></data></tessaly-commands>";

Failure refused(std::string why) { return {Kind::kNoFragment, std::move(why)}; }

Failure notOurs() { return refused("is no text of commands"); }

Failure noMemory() { return {Kind::kNoMemory, "there is not enough memory for the commands"}; }

Failure tooMany() { return refused(format("holds more than %zu commands", kMostFragmentCommands)); }

// In such a file UTF-8 and Windows-1252 can stand beside each other.
bool readsEachTextByItself(XmlEncoding encoding) {
  return encoding != XmlEncoding::kUtf8 && encoding != XmlEncoding::kWindows1252;
}

TiXmlElement* fragmentData(XmlDocument& document) {
  return document.FirstChildElement(kRoot)->FirstChildElement(kData);
}

std::string lettersOf(const TiXmlElement& root) {
  const char* const letters = root.Attribute(kLetters);
  return letters ? letters : "";
}

Outcome isOurs(const XmlDocument& document) {
  const TiXmlElement* const root = document.FirstChildElement();
  if (!root || root->ValueStr() != kRoot) return notOurs();
  if (root->NextSiblingElement()) return refused("goes on behind its end");
  const char* const version = root->Attribute(kVersionName);
  if (!version || version != kVersion)
    return refused("is of version " + (version ? document.text(version) : "\"\"") + " and not of " +
                   std::string(kVersion));
  if (!document.kept()) return refused(document.kept().failure().text);
  if (document.encoding() != XmlEncoding::kUtf8 && document.encoding() != XmlEncoding::kUndeclared)
    return refused("declares another encoding than UTF-8");
  return {};
}

// The number of commands.
Expected<std::size_t> countCommands(const TiXmlElement& root) {
  const TiXmlNode* const data = root.FirstChild();
  if (!data || data->ValueStr() != kData || !data->ToElement() || data->NextSibling())
    return refused("has no data of its own");
  std::size_t count = 0;
  for (const TiXmlNode* child = data->FirstChild(); child; child = child->NextSibling()) {
    if (!child->ToElement() || child->ValueStr() != kCommand)
      return refused("holds something else than commands");
    if (++count > kMostFragmentCommands) return tooMany();
  }
  if (count == 0) return refused("holds no commands");
  return count;
}

// Each letter says how one text was spelled; none at all stand for UTF-8 everywhere.
Outcome lettersFit(TiXmlElement& root) {
  const std::string letters = lettersOf(root);
  if (letters.empty()) return {};
  std::size_t texts = 0;
  const Outcome counted = respellXml(*root.FirstChild(), [&](const std::string& text, bool) {
    ++texts;
    return Expected<std::string>(text);
  });
  const bool known = letters.find_first_not_of({kUtf8Letters, kWesternLetters}) == letters.npos;
  if (counted && known && texts == letters.size()) return {};
  return refused("does not say of each text how it was spelled");
}

Outcome parse(const std::string& text, XmlDocument& document) {
  Outcome parsed = parseXml(text, document);
  if (parsed || parsed.failure().kind == Kind::kNoMemory) return parsed;
  return refused(parsed.failure().text);
}

}  // namespace

Expected<CommandFragment> CommandFragment::of(const Macro& macro, std::vector<int> numbers) try {
  XmlDocument source;
  if (const Outcome parsed = parseXml(macro.bytes(), source); !parsed) return parsed.failure();
  const auto chosen = chosenCommands(macroData(source), orderedNumbers(std::move(numbers)));
  if (chosen.empty()) return Failure{Kind::kNoCommand, "there is no such command"};
  if (chosen.size() > kMostFragmentCommands) return tooMany();

  XmlDocument document;
  if (const Outcome parsed = parseXml(kShell, document); !parsed) return parsed.failure();
  TiXmlElement& data = *fragmentData(document);
  std::string letters;
  const XmlRespell toUtf8 = [&](const std::string& text, bool) {
    letters += isValidUtf8(text) ? kUtf8Letters : kWesternLetters;
    return Expected<std::string>(utf8Spelling(text, source.encoding()));
  };
  for (const TiXmlElement* const command : chosen) {
    TiXmlNode* const copy = data.InsertEndChild(*command);
    if (!copy) throw std::bad_alloc();
    if (const Outcome spelled = respellXml(*copy, toUtf8); !spelled) return spelled.failure();
  }
  TiXmlElement& root = *document.FirstChildElement();
  const Expected<std::string> encoding = document.spelling(source.encodingName());
  root.SetAttribute(kEncoding, encoding ? encoding->c_str() : "");
  const bool mixed = readsEachTextByItself(source.encoding());
  if (mixed && letters.find(kWesternLetters) != letters.npos) root.SetAttribute(kLetters, letters.c_str());
  auto text = printXml(document);
  if (!text) return refused(text.failure().text);
  return read(*std::move(text));
} catch (const std::bad_alloc&) {
  return noMemory();
}

Expected<CommandFragment> CommandFragment::read(std::string text) try {
  if (text.size() > kLargestFragment)
    return refused(format("is larger than %zu MB", kLargestFragment / (1024 * 1024)));
  if (text.find(kRoot) == text.npos) return notOurs();  // whatever else a clipboard may hold
  if (!isValidUtf8(text)) return refused("is no UTF-8");
  XmlDocument document;
  if (const Outcome parsed = parse(text, document); !parsed) return parsed.failure();
  if (const Outcome ours = isOurs(document); !ours) return ours.failure();
  TiXmlElement& root = *document.FirstChildElement();
  const Expected<std::size_t> count = countCommands(root);
  if (!count) return count.failure();
  if (const Outcome fit = lettersFit(root); !fit) return fit.failure();
  return CommandFragment({std::move(text), *count});
} catch (const std::bad_alloc&) {
  return noMemory();
}

Outcome CommandFragment::placeInto(const XmlDocument& target, TiXmlElement& data,
                                   TiXmlElement* before) const {
  XmlDocument document;
  if (Outcome parsed = parse(content_->text, document); !parsed) return parsed;
  const TiXmlElement& root = *document.FirstChildElement();
  const char* const source = root.Attribute(kEncoding);
  const bool asItWas =
      readsEachTextByItself(target.encoding()) && source && document.text(source) == target.encodingName();
  const std::string letters = lettersOf(root);
  std::size_t at = 0;
  const XmlRespell toTarget = [&](const std::string& text, bool references) -> Expected<std::string> {
    const char letter = letters.empty() ? kUtf8Letters : letters[at++];
    if (asItWas && letter == kUtf8Letters) return text;
    if (asItWas) {
      auto bytes = exactWindows1252(text);
      if (bytes && !isValidUtf8(*bytes)) return *std::move(bytes);  // and is taken for Windows-1252 again
    }
    return spellingOfUtf8(text, target.encoding(), references);
  };
  TiXmlElement& commands = *fragmentData(document);
  if (Outcome spelled = respellXml(commands, toTarget); !spelled) return spelled;
  for (const TiXmlElement* command = commands.FirstChildElement(); command;
       command = command->NextSiblingElement()) {
    if (!(before ? data.InsertBeforeChild(before, *command) : data.InsertEndChild(*command)))
      return noMemory();
  }
  return {};
}

}  // namespace tessaly
