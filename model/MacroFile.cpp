#include "model/MacroFile.h"

#include "model/KeyFile.h"
#include "model/MacroTree.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "platform/XmlFile.h"

namespace tessaly {
namespace {

constexpr const char* kCannotParse = "Cannot parse Macro: %s";
constexpr const char* kCannotCreate = "Cannot create Macro: %s";
constexpr const char* kUnknownName = "???";
constexpr const char* kClassicFid = "QMF%d.NCSCOMMAND";
constexpr const char* kClassicParameter = "CMD";
constexpr int kClassicWorkplace = 1;
constexpr int kKeyMainframe = 1;  // keys of the older family always go to the first mainframe

bool loadOrReport(const SiteAccess& site, std::string_view path, XmlDocument& document,
                  ContentCheck* check = nullptr) {
  Expected<std::string> bytes = readFile(site.root, path);
  if (bytes && check) *check = contentCheck(*bytes);
  if (bytes && parseXml(*std::move(bytes), document)) return true;
  site.messages.show(format(kCannotParse, std::string(path).c_str()));
  return false;
}

// Printed before anything is written; the commands then leave the tree, which reading the file again would
// give just so.
bool save(const SiteAccess& site, std::string_view path, XmlDocument& document, SavedMacro* saved) {
  const Expected<std::string> bytes = printXml(document);
  if (!bytes || !writeFile(site.root, path, *bytes)) return false;
  TiXmlElement* const data = saved ? macroData(document) : nullptr;
  if (data) *saved = {takeCommands(document, *data, true), contentCheck(*bytes)};
  return true;
}

// Loads, lets `change` work on the commands, and saves. `change` returns false to leave the file as it was.
// `saved` may be null.
template <typename Change>
bool changeData(const SiteAccess& site, std::string_view path, const Change& change,
                SavedMacro* saved = nullptr) {
  XmlDocument document;
  if (!loadOrReport(site, path, document)) return false;
  TiXmlElement* data = macroData(document);
  return data && change(document, *data) && save(site, path, document, saved);
}

// The empty template under a new name.
bool takeTemplate(const SiteAccess& site, const std::string& name, XmlDocument& document) {
  if (!loadXml(site.root, kEmptyMacro, document)) {
    site.messages.show(format(kCannotCreate, name.c_str()));
    return false;
  }
  TiXmlElement* macro = namedMacro(document);
  return macro && setMacroName(document, *macro, name);
}

CommandDraft classicDraft(const ClassicCommand& command, int mainframe) {
  return {format(kClassicFid, mainframe), {{ParameterKind::kEnum, kClassicParameter, command.text(), false}}};
}

}  // namespace

bool loadCommands(const SiteAccess& site, std::string_view path, bool fresh, MacroCommands& commands,
                  ContentCheck* check) {
  XmlDocument document;
  if (!loadOrReport(site, path, document, check)) return false;
  commands.clear();
  TiXmlElement* data = macroData(document);
  if (!data) return false;
  commands = takeCommands(document, *data, fresh);
  return true;
}

bool readMacroName(const SiteAccess& site, std::string_view path, std::string& name) {
  name = kUnknownName;
  XmlDocument document;
  if (!loadOrReport(site, path, document)) return false;
  const TiXmlElement* macro = namedMacro(document);
  if (!macro) return false;
  name = macroNameOf(document, *macro);
  return true;
}

bool renameMacro(const SiteAccess& site, std::string_view path, std::string& name) {
  XmlDocument document;
  if (!loadOrReport(site, path, document)) {
    name = kUnknownName;
    return false;
  }
  TiXmlElement* macro = namedMacro(document);
  return macro && setMacroName(document, *macro, name) && saveXml(site.root, path, document);
}

bool createMacro(const SiteAccess& site, const std::string& name, std::string_view targetPath) {
  XmlDocument document;
  return takeTemplate(site, name, document) && saveXml(site.root, targetPath, document).done();
}

bool insertCommand(const SiteAccess& site, std::string_view path, int position, const CommandDraft& draft,
                   int workplace, InsertMode mode, SavedMacro* saved) {
  return changeData(
      site, path,
      [&](const XmlDocument& document, TiXmlElement& data) {
        return placeCommand(document, data, position, draft, workplace, mode).done();
      },
      saved);
}

bool appendClassicCommand(const SiteAccess& site, std::string_view path, int position,
                          const ClassicCommand& command, InsertMode mode, int mainframe, SavedMacro* saved) {
  return insertCommand(site, path, position, classicDraft(command, mainframe), kClassicWorkplace, mode,
                       saved);
}

bool replaceCommand(const SiteAccess& site, std::string_view path, int number, const CommandDraft& draft,
                    int workplace, SavedMacro* saved) {
  return changeData(
      site, path,
      [&](const XmlDocument& document, TiXmlElement& data) {
        TiXmlElement* const old = commandElement(data, number);
        return old && placeCommand(document, data, number, draft, workplace, InsertMode::kAtPosition) &&
               data.RemoveChild(old);
      },
      saved);
}

bool replaceClassicCommand(const SiteAccess& site, std::string_view path, int number,
                           const ClassicCommand& command, int mainframe, SavedMacro* saved) {
  return replaceCommand(site, path, number, classicDraft(command, mainframe), kClassicWorkplace, saved);
}

bool convertKeyFile(const SiteAccess& site, const std::string& name, std::string_view targetPath,
                    std::string_view keyPath) {
  XmlDocument document;
  if (!takeTemplate(site, name, document)) return false;
  KeyFile key;
  key.load(site.root, keyPath, keyFileIndex(keyPath));
  TiXmlElement* const data = macroData(document);
  bool placed = true;
  for (const ClassicCommand& command : key.commands()) {
    placed = data && placeCommand(document, *data, 0, classicDraft(command, kKeyMainframe), kClassicWorkplace,
                                  InsertMode::kAppend);
    if (!placed) break;
  }
  // One write, so that a conversion cut short leaves no macro without its commands. A template that takes
  // none gives the empty macro all the same.
  return saveXml(site.root, targetPath, document) && placed;
}

bool removeCommand(const SiteAccess& site, std::string_view path, int number, SavedMacro* saved) {
  return changeData(
      site, path,
      [number](const XmlDocument&, TiXmlElement& data) {
        TiXmlElement* command = commandElement(data, number);
        return command && data.RemoveChild(command);
      },
      saved);
}

bool setCommandValue(const SiteAccess& site, std::string_view path, int number, const std::string& value) {
  bool taken = false;
  const bool saved = changeData(site, path, [&](const XmlDocument& document, TiXmlElement& data) {
    const Outcome set = setValueFrom(document, commandElement(data, number), value);
    taken = set.done();
    // The file is written even when no parameter took the value.
    return taken || set.failure().kind == Failure::Kind::kNothingTaken;
  });
  return saved && taken;
}

bool HeldMacro::open(const SiteAccess& site, std::string_view path) {
  commands_.clear();
  empty_ = !loadOrReport(site, path, document_);
  TiXmlElement* const data = empty_ ? nullptr : macroData(document_);
  if (data) commands_ = commandElements(*data);
  return !empty_;
}

bool HeldMacro::setCommandValue(int number, const std::string& value) {
  const auto index = static_cast<std::size_t>(number);
  return number >= 0 && index < commands_.size() && setValueFrom(document_, commands_[index], value);
}

bool HeldMacro::save(const SiteAccess& site, std::string_view path, SavedMacro* saved) {
  if (empty_ || !tessaly::save(site, path, document_, saved)) return false;
  commands_.clear();
  document_.Clear();
  empty_ = true;
  return true;
}

}  // namespace tessaly
