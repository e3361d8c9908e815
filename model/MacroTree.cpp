#include "model/MacroTree.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "model/Unread.h"

namespace tessaly {
namespace {

constexpr const char* kMacro = "macro";
constexpr const char* kData = "data";
constexpr const char* kCommand = "cmd";
constexpr const char* kParameter = "param";
constexpr const char* kName = "name";
constexpr const char* kValue = "value";
constexpr const char* kFid = "fid";
constexpr const char* kWorkplace = "workplace";
constexpr const char* kGroup = "group";
constexpr const char* kModule = "module";
constexpr const char* kWidget = "widget";

// The attributes of a command and the fields that they fill.
constexpr std::pair<std::string_view, std::string MacroCommand::*> kFields[] = {
    {kFid, &MacroCommand::fid},
    {kWorkplace, &MacroCommand::workplace},
    {kGroup, &MacroCommand::group},
    {kModule, &MacroCommand::module},
    {kWidget, &MacroCommand::widget}};

std::size_t countOf(const TiXmlElement& parent, const char* name) {
  std::size_t count = 0;
  for (auto* child = parent.FirstChildElement(name); child; child = child->NextSiblingElement(name)) ++count;
  return count;
}

// What `element` holds beside its attributes and the children that `read` takes.
template <typename Read>
void readChildren(const XmlDocument& document, const TiXmlElement& element, std::string& unread,
                  const Read& read) {
  bool looked = false, mixed = false;  // most elements hold no text, and are not looked through for it
  int taken = 0;
  for (const TiXmlNode* child = element.FirstChild(); child; child = child->NextSibling()) {
    if (child->ToElement() && read(*child->ToElement())) {
      ++taken;
      continue;
    }
    const TiXmlText* const text = child->ToText();
    if (text && !looked) mixed = isMixed(element);
    looked = looked || text;
    if (text && !mixed && !text->CDATA()) continue;
    if (taken > 0) unread.append(" after ").append(std::to_string(taken)).append(": ");
    appendUnread(document, *child, unread);
  }
}

void readParameter(const XmlDocument& document, const TiXmlElement& element, MacroParameter& parameter,
                   std::string& unread) {
  parameter.hasValue = false;
  for (const TiXmlAttribute* attribute = element.FirstAttribute(); attribute; attribute = attribute->Next()) {
    const std::string_view name = attribute->NameTStr();
    if (name == kName) {
      parameter.name = document.text(attribute->ValueStr());
    } else if (name == kValue) {
      parameter.value = document.text(attribute->ValueStr());
      parameter.hasValue = true;
    }
    // An empty name is none in the record.
    if (name != kValue && (name != kName || parameter.name.empty()))
      appendUnread(document, *attribute, unread);
  }
  readChildren(document, element, unread, [](const TiXmlElement&) { return false; });
}

void readCommand(const XmlDocument& document, const TiXmlElement& element, MacroCommand& command) {
  for (const TiXmlAttribute* attribute = element.FirstAttribute(); attribute; attribute = attribute->Next()) {
    const std::string_view attributeName = attribute->NameTStr();
    bool read = false;
    for (const auto& [name, field] : kFields) {
      if (attributeName != name) continue;
      command.*field = document.text(attribute->ValueStr());
      read = !(command.*field).empty();  // an empty one is none in the record
      break;
    }
    if (!read) appendUnread(document, *attribute, command.unread);
  }
  command.parameters.reserve(countOf(element, kParameter));
  readChildren(document, element, command.unread, [&](const TiXmlElement& child) {
    if (child.ValueStr() != kParameter) return false;
    std::string unread;
    readParameter(document, child, command.parameters.emplace_back(), unread);
    if (unread.empty()) return true;
    const std::string number = std::to_string(command.parameters.size());
    command.unread.append(" parameter ").append(number).append(":").append(unread);
    return true;
  });
}

Outcome setText(const XmlDocument& document, TiXmlElement& element, const char* attribute,
                std::string_view text) {
  const Expected<std::string> spelling = document.spelling(text);
  if (!spelling) return spelling.failure();
  element.SetAttribute(attribute, spelling->c_str());
  return {};
}

Outcome addParameter(const XmlDocument& document, TiXmlElement& command,
                     const CommandDraft::Parameter& parameter) {
  if (parameter.optional && parameter.value.empty()) return {};
  auto element = std::make_unique<TiXmlElement>(kParameter);
  Outcome set = setText(document, *element, kName, parameter.name);
  if (set) set = setText(document, *element, kValue, parameter.value);
  if (set) command.LinkEndChild(element.release());
  return set;
}

Outcome fillCommand(const XmlDocument& document, TiXmlElement& command, const CommandDraft& draft,
                    int workplace) {
  Outcome filled = setText(document, command, kFid, draft.fid);
  command.SetAttribute(kWorkplace, workplace);
  command.SetAttribute(kGroup, "0");
  command.SetAttribute(kModule, "0");
  command.SetAttribute(kWidget, "0");
  for (const CommandDraft::Parameter& parameter : draft.parameters) {
    if (filled) filled = addParameter(document, command, parameter);
  }
  return filled;
}

TiXmlElement* parameterWithValue(TiXmlElement& command) {
  for (TiXmlElement* parameter = command.FirstChildElement(kParameter); parameter;
       parameter = parameter->NextSiblingElement(kParameter)) {
    if (parameter->Attribute(kValue)) return parameter;
  }
  return nullptr;
}

}  // namespace

TiXmlElement* namedMacro(XmlDocument& document) {
  TiXmlElement* macro = document.FirstChildElement(kMacro);
  while (macro && !macro->Attribute(kName)) macro = macro->NextSiblingElement(kMacro);
  return macro;
}

std::string macroNameOf(const XmlDocument& document, const TiXmlElement& macro) {
  return document.text(macro.Attribute(kName));
}

Outcome setMacroName(const XmlDocument& document, TiXmlElement& macro, std::string_view name) {
  return setText(document, macro, kName, name);
}

TiXmlElement* macroData(XmlDocument& document) {
  TiXmlElement* macro = document.FirstChildElement(kMacro);
  return macro ? macro->FirstChildElement(kData) : nullptr;
}

MacroCommands takeCommands(const XmlDocument& document, TiXmlElement& data, std::string& places) {
  MacroCommands commands;
  std::size_t count = 0;
  bool mixed = false;
  for (const TiXmlNode* child = data.FirstChild(); child; child = child->NextSibling()) {
    if (child->ToText()) mixed = mixed || !isLayout(*child->ToText());
    count += child->ToElement() && child->ValueStr() == kCommand;
  }
  commands.reserve(count);
  for (TiXmlNode *child = data.FirstChild(), *next = nullptr; child; child = next) {
    next = child->NextSibling();
    if (child->ToElement() && child->ValueStr() == kCommand) {
      readCommand(document, *child->ToElement(), commands.emplace_back());
      data.RemoveChild(child);
    } else if (!mixed && child->ToText() && !child->ToText()->CDATA()) {
      data.RemoveChild(child);
    } else {
      places.append(std::to_string(commands.size())).append(" ");
    }
  }
  return commands;
}

std::vector<TiXmlElement*> commandElements(TiXmlElement& data) {
  std::vector<TiXmlElement*> commands;
  for (TiXmlElement* command = data.FirstChildElement(kCommand); command;
       command = command->NextSiblingElement(kCommand))
    commands.push_back(command);
  return commands;
}

std::vector<int> orderedNumbers(std::vector<int> numbers) {
  std::sort(numbers.begin(), numbers.end());
  numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
  return numbers;
}

std::vector<TiXmlElement*> chosenCommands(TiXmlElement* data, const std::vector<int>& numbers) {
  const auto all = data ? commandElements(*data) : std::vector<TiXmlElement*>();
  std::vector<TiXmlElement*> chosen;
  chosen.reserve(numbers.size());
  for (const int number : numbers) {
    if (number < 0 || static_cast<std::size_t>(number) >= all.size()) return {};
    chosen.push_back(all[static_cast<std::size_t>(number)]);
  }
  return chosen;
}

TiXmlElement* commandElement(TiXmlElement& data, int number) {
  if (number < 0) return nullptr;
  TiXmlElement* command = data.FirstChildElement(kCommand);
  for (int i = 0; command && i < number; ++i) command = command->NextSiblingElement(kCommand);
  return command;
}

TiXmlElement* insertionPoint(TiXmlElement& data, int position, InsertMode mode) {
  switch (mode) {
    case InsertMode::kAtStart:
      return commandElement(data, 0);
    case InsertMode::kAtPosition:
      return commandElement(data, position);
    case InsertMode::kAppend:
      return nullptr;
  }
  return nullptr;
}

Outcome placeBefore(const XmlDocument& document, TiXmlElement& data, TiXmlElement* before,
                    const CommandDraft& draft, int workplace) {
  auto command = std::make_unique<TiXmlElement>(kCommand);
  Outcome filled = fillCommand(document, *command, draft, workplace);
  if (!filled) return filled;
  if (before) {
    data.InsertBeforeChild(before, *command);
  } else {
    data.LinkEndChild(command.release());
  }
  return {};
}

// Only the first parameter with a value is ever changed, whatever its name, and a command without one passes
// the value on to the next: deliberate, the value update relies on it.
Outcome setValueFrom(const XmlDocument& document, TiXmlElement* command, std::string_view value) {
  for (; command; command = command->NextSiblingElement(kCommand)) {
    if (TiXmlElement* parameter = parameterWithValue(*command))
      return setText(document, *parameter, kValue, value);
  }
  return Failure{Failure::Kind::kNothingTaken, "no parameter took the value"};
}

}  // namespace tessaly
