#include "model/MacroTree.h"

#include <memory>
#include <string_view>
#include <utility>

#include "platform/Text.h"

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

// Decided as the parser decides it: a declaration that names no encoding means UTF-8 too.
bool holdsUtf8(const TiXmlDocument& document) {
  for (const TiXmlNode* node = document.FirstChild(); node; node = node->NextSibling()) {
    if (const TiXmlDeclaration* declaration = node->ToDeclaration()) {
      const std::string_view encoding = declaration->Encoding();
      return encoding.empty() || equalNoCase(encoding, "UTF-8") || equalNoCase(encoding, "UTF8");
    }
  }
  return false;
}

std::size_t countOf(const TiXmlElement& parent, const char* name) {
  std::size_t count = 0;
  for (auto* child = parent.FirstChildElement(name); child; child = child->NextSiblingElement(name)) ++count;
  return count;
}

void readParameter(const TiXmlElement& element, MacroParameter& parameter) {
  parameter.hasValue = false;
  for (const TiXmlAttribute* attribute = element.FirstAttribute(); attribute; attribute = attribute->Next()) {
    const std::string_view name = attribute->NameTStr();
    if (name == kName) {
      parameter.name = attribute->ValueStr();
    } else if (name == kValue) {
      parameter.value = attribute->ValueStr();
      parameter.hasValue = true;
    }
  }
}

void readCommand(const TiXmlElement& element, MacroCommand& command) {
  for (const TiXmlAttribute* attribute = element.FirstAttribute(); attribute; attribute = attribute->Next()) {
    const std::string_view attributeName = attribute->NameTStr();
    for (const auto& [name, field] : kFields) {
      if (attributeName == name) {
        command.*field = attribute->ValueStr();
        break;
      }
    }
  }
  command.parameters.reserve(countOf(element, kParameter));
  for (const TiXmlElement* child = element.FirstChildElement(kParameter); child;
       child = child->NextSiblingElement(kParameter)) {
    readParameter(*child, command.parameters.emplace_back());
  }
}

// Texts go in as C strings: a NUL in the file would make it unreadable.
std::unique_ptr<TiXmlElement> buildCommand(const CommandDraft& draft, int workplace) {
  auto command = std::make_unique<TiXmlElement>(kCommand);
  command->SetAttribute(kFid, draft.fid.c_str());
  command->SetAttribute(kWorkplace, workplace);
  command->SetAttribute(kGroup, "0");
  command->SetAttribute(kModule, "0");
  command->SetAttribute(kWidget, "0");
  for (const CommandDraft::Parameter& parameter : draft.parameters) {
    if (parameter.optional && parameter.value.empty()) continue;
    auto element = std::make_unique<TiXmlElement>(kParameter);
    element->SetAttribute(kName, parameter.name.c_str());
    element->SetAttribute(kValue, parameter.value.c_str());
    command->LinkEndChild(element.release());
  }
  return command;
}

TiXmlElement* parameterWithValue(TiXmlElement& command) {
  for (TiXmlElement* parameter = command.FirstChildElement(kParameter); parameter;
       parameter = parameter->NextSiblingElement(kParameter)) {
    if (parameter->Attribute(kValue)) return parameter;
  }
  return nullptr;
}

}  // namespace

TiXmlElement* namedMacro(TiXmlDocument& document) {
  TiXmlElement* macro = document.FirstChildElement(kMacro);
  while (macro && !macro->Attribute(kName)) macro = macro->NextSiblingElement(kMacro);
  return macro;
}

const char* macroNameOf(const TiXmlElement& macro) { return macro.Attribute(kName); }

Outcome setMacroName(TiXmlDocument& document, TiXmlElement& macro, const std::string& name) {
  const std::string stored = holdsUtf8(document) ? name : utf8ToWindows1252(name);
  macro.SetAttribute(kName, stored.c_str());
  return {};
}

TiXmlElement* macroData(TiXmlDocument& document) {
  TiXmlElement* macro = document.FirstChildElement(kMacro);
  return macro ? macro->FirstChildElement(kData) : nullptr;
}

MacroCommands takeCommands(TiXmlElement& data) {
  MacroCommands commands;
  commands.reserve(countOf(data, kCommand));
  TiXmlElement* element = data.FirstChildElement(kCommand);
  while (element) {
    MacroCommand& command = commands.emplace_back();
    readCommand(*element, command);
    TiXmlElement* const next = element->NextSiblingElement(kCommand);
    data.RemoveChild(element);
    element = next;
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

Outcome placeBefore(const TiXmlDocument&, TiXmlElement& data, TiXmlElement* before, const CommandDraft& draft,
                    int workplace) {
  std::unique_ptr<TiXmlElement> command = buildCommand(draft, workplace);
  const bool placed = before ? data.InsertBeforeChild(before, *command) != nullptr
                             : data.LinkEndChild(command.release()) != nullptr;
  if (placed) return {};
  return Failure{Failure::Kind::kNoCommand, "the command cannot be placed"};
}

// Only the first parameter with a value is ever changed, whatever its name, and a command without one passes
// the value on to the next: deliberate, the value update relies on it.
Expected<bool> setValueFrom(const TiXmlDocument&, TiXmlElement* command, const std::string& value) {
  for (; command; command = command->NextSiblingElement(kCommand)) {
    if (TiXmlElement* parameter = parameterWithValue(*command)) {
      parameter->SetAttribute(kValue, value.c_str());
      return true;
    }
  }
  return false;
}

}  // namespace tessaly
