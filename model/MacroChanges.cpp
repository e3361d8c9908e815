#include "model/MacroChanges.h"

#include <tinyxml.h>

#include "model/MacroTree.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "platform/XmlFile.h"

namespace tessaly {
namespace {

enum class Needed { kName, kCommands };

// Why a change to a macro was not made whose own words were right.
Failure whyNot(const SiteAccess& site, std::string_view path, Needed needed) {
  TiXmlDocument document;
  if (!loadXml(site.root, path, document)) return {Failure::Kind::kNotXml, "it cannot be read as a macro"};
  if (needed == Needed::kName && !namedMacro(document))
    return {Failure::Kind::kNoMacro, "it holds no macro with a name"};
  if (needed == Needed::kCommands && !macroData(document))
    return {Failure::Kind::kNoMacro, "it has no commands element"};
  return {Failure::Kind::kDiskError, "the file cannot be written"};
}

Outcome outcome(bool done, const SiteAccess& site, std::string_view path, Needed needed) {
  if (done) return {};
  return whyNot(site, path, needed);
}

// A text in the encoding of the document, in which names are stored.
Outcome encode(TiXmlDocument& document, std::string& text) {
  TiXmlElement holder("macro");
  setMacroName(document, holder, text);
  std::string stored = macroNameOf(holder);
  if (!isValidUtf8(text)) return Failure{Failure::Kind::kTextNotHeld, "this is no UTF-8: " + text};
  if (stored != text && windows1252ToUtf8(stored) != text)
    return Failure{Failure::Kind::kTextNotHeld, "the encoding of the file lacks a character of " + text};
  text = std::move(stored);
  return {};
}

// As above, for a file; one that does not parse is left to whoever reports it.
Outcome encodeFor(const SiteAccess& site, std::string_view path, std::string& text) {
  TiXmlDocument document;
  return loadXml(site.root, path, document) ? encode(document, text) : Outcome();
}

}  // namespace

Outcome readsAsMacro(const SiteAccess& site, const std::string& path) {
  MacroCommands commands;
  std::string name;
  if (!loadCommands(site, path, true, commands)) return whyNot(site, path, Needed::kCommands);
  return outcome(readMacroName(site, path, name), site, path, Needed::kName);
}

Outcome renameIn(const SiteAccess& site, const std::string& path, const std::string& name) {
  std::string held = name;
  if (Outcome fits = encodeFor(site, path, held); !fits) return fits;
  std::string given = name;
  return outcome(renameMacro(site, path, given), site, path, Needed::kName);
}

Outcome createAt(const SiteAccess& site, const std::string& path, const std::string& name) {
  std::string held = name;
  if (Outcome fits = encodeFor(site, kEmptyMacro, held); !fits) return fits;
  if (createMacro(site, name, path)) return {};
  const Failure reason = whyNot(site, kEmptyMacro, Needed::kName);
  if (reason.kind == Failure::Kind::kNoMacro) return Failure{reason.kind, "the empty macro has no name"};
  return reason;
}

Outcome insertInto(const SiteAccess& site, const std::string& path, const InsertPlace& place,
                   CommandDraft draft, int workplace) {
  TiXmlDocument document;
  if (loadXml(site.root, path, document)) {
    for (CommandDraft::Parameter& parameter : draft.parameters) {
      if (Outcome fits = encode(document, parameter.value); !fits) return fits;
    }
  }
  return outcome(insertCommand(site, path, place.position, draft, workplace, place.mode), site, path,
                 Needed::kCommands);
}

Outcome insertInto(const SiteAccess& site, const std::string& path, const InsertPlace& place,
                   const ClassicCommand& command, int mainframe) {
  return outcome(appendClassicCommand(site, path, place.position, command, place.mode, mainframe), site, path,
                 Needed::kCommands);
}

Outcome removeFrom(const SiteAccess& site, const std::string& path, int number) {
  if (removeCommand(site, path, number)) return {};
  TiXmlDocument document;
  TiXmlElement* const data = loadXml(site.root, path, document) ? macroData(document) : nullptr;
  if (data && !commandElement(*data, number))
    return Failure{Failure::Kind::kNoCommand, "there is no such command"};
  return whyNot(site, path, Needed::kCommands);
}

Outcome setIn(const SiteAccess& site, const std::string& path, int number, const std::string& value) {
  std::string stored = value;
  if (Outcome fits = encodeFor(site, path, stored); !fits) return fits;
  if (setCommandValue(site, path, number, stored)) return {};
  const Failure reason = whyNot(site, path, Needed::kCommands);
  if (reason.kind == Failure::Kind::kDiskError && !takerOf(site, path, number))
    return Failure{Failure::Kind::kNothingTaken, "nothing takes the value"};
  return reason;
}

Outcome convertTo(const SiteAccess& site, const std::string& path, const std::string& keyPath,
                  const std::string& name) {
  std::string held = name;
  if (Outcome fits = encodeFor(site, kEmptyMacro, held); !fits) return fits;
  if (convertKeyFile(site, name, path, keyPath)) return {};
  for (const Needed needed : {Needed::kName, Needed::kCommands}) {
    const Failure reason = whyNot(site, kEmptyMacro, needed);
    if (reason.kind != Failure::Kind::kDiskError)
      return Failure{reason.kind, "the empty macro: " + reason.text};
  }
  return Failure{Failure::Kind::kDiskError, "the file cannot be written"};
}

std::optional<ValueTaker> takerOf(const SiteAccess& site, const std::string& path, int number) {
  TiXmlDocument document;
  TiXmlElement* const data = loadXml(site.root, path, document) ? macroData(document) : nullptr;
  for (TiXmlElement* command = data ? commandElement(*data, number) : nullptr; command;
       command = command->NextSiblingElement("cmd")) {
    for (const TiXmlElement* parameter = command->FirstChildElement("param"); parameter;
         parameter = parameter->NextSiblingElement("param")) {
      if (!parameter->Attribute("value")) continue;
      const char* const name = parameter->Attribute("name");
      const char* const fid = command->Attribute("fid");
      ValueTaker taker;
      taker.command.fid = fid ? fid : "";
      taker.parameter = name ? name : "";
      return taker;
    }
  }
  return std::nullopt;
}

}  // namespace tessaly
