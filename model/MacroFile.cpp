#include "model/MacroFile.h"

#include "platform/Files.h"
#include "platform/SitePlace.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

constexpr const char* kCannotParse = "Cannot parse Macro: %s";
constexpr const char* kCannotRead = "Cannot read Macro: %s (%s)";
constexpr const char* kCannotCreate = "Cannot create Macro: %s";
constexpr std::string_view kClassicFunction = "NCSCOMMAND";
constexpr const char* kClassicParameter = "CMD";

// A file that is not there, or is none, parses no more than one that holds something else.
bool isParseFailure(const Failure& failure) {
  return failure.kind == Failure::Kind::kNotXml || failure.kind == Failure::Kind::kTooLarge ||
         isNothing(failure);
}

// The empty macro under a new name.
Expected<Macro> newMacro(const SiteAccess& site, const std::string& name) {
  auto empty = readMacro(site.root, kEmptyMacro);
  if (!empty) {
    site.messages.show(format(kCannotCreate, visibleUtf8(name).c_str()));
    return empty;
  }
  return apply(*empty, SetMacroName{name});
}

// The commands of a key file as they stand in a macro.
InsertCommands insertionOf(const KeyFile& key) {
  InsertCommands insertion;
  insertion.workplace = kClassicWorkplace;
  for (const ClassicCommand& command : key.commands())
    insertion.drafts.push_back(classicDraft(command, kKeyDestination));
  return insertion;
}

}  // namespace

Expected<Macro> readMacro(const SiteRoot& root, std::string_view path) {
  auto bytes = readFile(root, path);
  if (!bytes) return bytes.failure();
  return Macro::read(*std::move(bytes));
}

Expected<Macro> takingCommands(Expected<Macro> macro) {
  if (!macro || macro->hasData()) return macro;
  return Failure{Failure::Kind::kNoMacro, "it holds no macro that takes commands"};
}

Outcome readsAsMacro(std::string_view bytes) {
  const auto macro = takingCommands(Macro::read(std::string(bytes)));
  return macro ? Outcome() : macro.failure();
}

Expected<Macro> loadMacro(const SiteAccess& site, std::string_view path) {
  auto macro = readMacro(site.root, path);
  if (macro) return macro;
  const std::string file = visibleUtf8(path);
  if (isParseFailure(macro.failure()))
    site.messages.show(format(kCannotParse, file.c_str()));
  else
    site.messages.show(format(kCannotRead, file.c_str(), macro.failure().text.c_str()));
  return macro.failure();
}

Outcome saveMacro(const SiteRoot& root, std::string_view path, const Macro& macro) {
  return writeFile(root, path, macro.bytes());
}

Outcome changeMacroFile(const SiteAccess& site, std::string_view path, const MacroChanger& change) {
  const auto macro = loadMacro(site, path);
  if (!macro) return macro.failure();
  const auto changed = change(*macro);
  if (!changed) return changed.failure();
  if (changed->bytes() == macro->bytes()) return {};
  if (site.beforeChange) site.beforeChange();
  return saveMacro(site.root, path, *changed);
}

Outcome editMacroFile(const SiteAccess& site, std::string_view path, const MacroEdit& edit) {
  return changeMacroFile(site, path, [&edit](const Macro& macro) { return apply(macro, edit); });
}

bool readMacroName(const SiteAccess& site, std::string_view path, std::string& name) {
  const auto macro = loadMacro(site, path);
  const bool named = macro && macro->name();
  name = named ? *macro->name() : kUnknownName;
  return named;
}

Outcome renameMacro(const SiteAccess& site, std::string_view path, std::string& name) {
  bool loaded = false;
  Outcome renamed = changeMacroFile(site, path, [&](const Macro& macro) {
    loaded = true;
    return apply(macro, SetMacroName{name});
  });
  if (!loaded) name = kUnknownName;
  return renamed;
}

Outcome createMacro(const SiteAccess& site, const std::string& name, std::string_view targetPath) {
  const auto macro = newMacro(site, name);
  if (!macro) return macro.failure();
  return saveMacro(site.root, targetPath, *macro);
}

Outcome insertCommand(const SiteAccess& site, std::string_view path, int position, const CommandDraft& draft,
                      int workplace, InsertMode mode) {
  return editMacroFile(site, path, InsertCommands{{draft}, workplace, position, mode});
}

CommandDraft classicDraft(const ClassicCommand& command, Destination destination) {
  return {std::string(destination.prefix()).append(kClassicFunction),
          {{ParameterKind::kEnum, kClassicParameter, command.text(), false}}};
}

Outcome appendClassicCommand(const SiteAccess& site, std::string_view path, int position,
                             const ClassicCommand& command, InsertMode mode, Destination destination) {
  return insertCommand(site, path, position, classicDraft(command, destination), kClassicWorkplace, mode);
}

Expected<Macro> keyFileMacro(const KeyFile& key) {
  const auto empty = Macro::read("<macro><data /></macro>");
  return empty ? apply(*empty, insertionOf(key)) : empty;
}

// One write, so that a conversion cut short leaves no macro without its commands. A template that takes none
// gives the empty macro all the same.
Outcome convertKeyFile(const SiteAccess& site, const std::string& name, std::string_view targetPath,
                       std::string_view keyPath) {
  const auto empty = newMacro(site, name);
  if (!empty) return empty.failure();
  // What is there and cannot be read would make an empty macro of a full key.
  const auto bytes = readFile(site.root, keyPath);
  if (!bytes && !isNothing(bytes.failure())) return bytes.failure();
  KeyFile key;
  bytes ? key.parse(*bytes) : key.load(site.root, keyPath, keyFileIndex(keyPath));
  const InsertCommands insertion = insertionOf(key);
  if (insertion.drafts.empty()) return saveMacro(site.root, targetPath, *empty);
  const auto filled = apply(*empty, insertion);
  if (filled) return saveMacro(site.root, targetPath, *filled);
  if (Outcome saved = saveMacro(site.root, targetPath, *empty); !saved) return saved;
  return filled.failure();
}

Outcome removeCommand(const SiteAccess& site, std::string_view path, int number) {
  return editMacroFile(site, path, RemoveCommands{{number}});
}

Outcome setCommandValue(const SiteAccess& site, std::string_view path, int number, const std::string& value) {
  Outcome taken;
  Outcome saved = changeMacroFile(site, path, [&](const Macro& macro) {
    auto changed = apply(macro, SetValues{{{number, value}}});
    if (changed || changed.failure().kind != Failure::Kind::kNothingTaken || !macro.hasData()) return changed;
    // The file is written even when no parameter took the value.
    taken = changed.failure();
    return reprint(macro);
  });
  return saved ? taken : saved;
}

}  // namespace tessaly
