#include "model/MacroFile.h"

#include "model/KeyFile.h"
#include "model/MacroTree.h"
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

bool loadOrReport(const SiteAccess& site, std::string_view path, TiXmlDocument& document,
                  ContentCheck* check = nullptr) {
  if (loadXml(site.root, path, document, check)) return true;
  site.messages.show(format(kCannotParse, std::string(path).c_str()));
  return false;
}

// What a load of the written file would give. Its commands leave the tree.
SavedMacro savedMacro(TiXmlElement& data, const SavedXml& written) {
  SavedMacro saved;
  saved.check = written.check;
  if (written.same) saved.commands = takeCommands(data, true);
  return saved;
}

// Loads, lets `change` work on the commands, and saves. `change` returns false to leave the file as it was.
// `saved` may be null.
template <typename Change>
bool changeData(const SiteAccess& site, std::string_view path, const Change& change,
                SavedMacro* saved = nullptr) {
  TiXmlDocument document;
  if (!loadOrReport(site, path, document)) return false;
  TiXmlElement* data = macroData(document);
  SavedXml written;
  if (!data || !change(*data) || !saveXml(site.root, path, document, saved ? &written : nullptr))
    return false;
  if (saved) *saved = savedMacro(*data, written);
  return true;
}

// The empty template under a new name.
bool takeTemplate(const SiteAccess& site, const std::string& name, TiXmlDocument& document) {
  if (!loadXml(site.root, kEmptyMacro, document)) {
    site.messages.show(format(kCannotCreate, name.c_str()));
    return false;
  }
  TiXmlElement* macro = namedMacro(document);
  if (macro) setMacroName(document, *macro, name);
  return macro != nullptr;
}

CommandDraft classicDraft(const ClassicCommand& command, int mainframe) {
  return {format(kClassicFid, mainframe), {{ParameterKind::kEnum, kClassicParameter, command.text(), false}}};
}

}  // namespace

bool loadCommands(const SiteAccess& site, std::string_view path, bool fresh, MacroCommands& commands,
                  ContentCheck* check) {
  TiXmlDocument document;
  if (!loadOrReport(site, path, document, check)) return false;
  commands.clear();
  TiXmlElement* data = macroData(document);
  if (!data) return false;
  commands = takeCommands(*data, fresh);
  return true;
}

bool readMacroName(const SiteAccess& site, std::string_view path, std::string& name) {
  name = kUnknownName;
  TiXmlDocument document;
  if (!loadOrReport(site, path, document)) return false;
  const TiXmlElement* macro = namedMacro(document);
  if (!macro) return false;
  name = macroNameOf(*macro);
  return true;
}

bool renameMacro(const SiteAccess& site, std::string_view path, std::string& name) {
  TiXmlDocument document;
  if (!loadOrReport(site, path, document)) {
    name = kUnknownName;
    return false;
  }
  TiXmlElement* macro = namedMacro(document);
  if (!macro) return false;
  setMacroName(document, *macro, name);
  return saveXml(site.root, path, document);
}

bool createMacro(const SiteAccess& site, const std::string& name, std::string_view targetPath) {
  TiXmlDocument document;
  return takeTemplate(site, name, document) && saveXml(site.root, targetPath, document);
}

bool insertCommand(const SiteAccess& site, std::string_view path, int position, const CommandDraft& draft,
                   int workplace, InsertMode mode, SavedMacro* saved) {
  return changeData(
      site, path, [&](TiXmlElement& data) { return placeCommand(data, position, draft, workplace, mode); },
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
      [&](TiXmlElement& data) {
        TiXmlElement* const old = commandElement(data, number);
        return old && placeCommand(data, number, draft, workplace, InsertMode::kAtPosition) &&
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
  TiXmlDocument document;
  if (!takeTemplate(site, name, document)) return false;
  KeyFile key;
  key.load(site.root, keyPath, keyFileIndex(keyPath));
  TiXmlElement* const data = macroData(document);
  bool placed = true;
  for (const ClassicCommand& command : key.commands()) {
    placed = data && placeCommand(*data, 0, classicDraft(command, kKeyMainframe), kClassicWorkplace,
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
      [number](TiXmlElement& data) {
        TiXmlElement* command = commandElement(data, number);
        return command && data.RemoveChild(command);
      },
      saved);
}

bool setCommandValue(const SiteAccess& site, std::string_view path, int number, const std::string& value) {
  bool taken = false;
  const bool saved = changeData(site, path, [&](TiXmlElement& data) {
    taken = setValueFrom(commandElement(data, number), value);
    return true;  // the file is written even when no parameter took the value
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
  return number >= 0 && index < commands_.size() && setValueFrom(commands_[index], value);
}

bool HeldMacro::save(const SiteAccess& site, std::string_view path, SavedMacro* saved) {
  SavedXml written;
  if (empty_ || !saveXml(site.root, path, document_, saved ? &written : nullptr)) return false;
  TiXmlElement* const data = macroData(document_);
  if (saved && data) *saved = savedMacro(*data, written);
  commands_.clear();
  document_.Clear();
  empty_ = true;
  return true;
}

}  // namespace tessaly
