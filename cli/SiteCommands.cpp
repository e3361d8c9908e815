// What the lists of a pane show of the disk, and the operations on whole macro files.
#include <filesystem>
#include <nlohmann/json.hpp>

#include "cli/Commands.h"
#include "cli/MacroWords.h"
#include "cli/PrintJson.h"
#include "model/MacroFile.h"
#include "model/Settings.h"
#include "model/SiteBrowser.h"
#include "platform/Files.h"
#include "platform/SitePlace.h"
#include "platform/Text.h"
#include "platform/Workplace.h"

namespace tessaly {
namespace {

using Json = nlohmann::ordered_json;

constexpr int kSchema = 1;
constexpr std::string_view kMacroEnd = ".mac";

// One list on its way out: a row has what it is called, and where it is.
class Listing {
 public:
  Listing(CommandSession& session, const char* kind, bool onHost, bool json)
      : session_(session),
        onHost_(onHost),
        json_(json),
        report_{{"schema", kSchema}, {kind, Json::array()}} {}

  // `columns` are those before the path.
  void add(const std::string& columns, Json row, const std::string& path) {
    const std::string place = onHost_ ? session_.root().resolve(path).string() : path;
    row["path"] = displayUtf8(place);
    if (json_)
      report_.back().push_back(std::move(row));
    else
      session_.line(columns + '\t' + outputName(place));
  }
  int end() { return json_ ? printJson(session_, report_) : kExitDone; }

 private:
  CommandSession& session_;
  bool onHost_;
  bool json_;
  Json report_;
};

// Where a pane would look: a path, and what is chosen in it.
struct Chosen {
  std::string path;  // ends in a separator
  std::string application, panel;
  bool onHost = false;  // the path is one of this host
  bool json = false;
};

int listApplications(CommandSession& session, const Chosen& chosen) {
  const auto names = applications(session.root(), chosen.path);
  if (!names) return session.failed(chosen.path + ' ' + names.failure().text);
  if (names->empty()) return session.failed("no applications found in " + chosen.path);
  Listing list(session, "applications", chosen.onHost, chosen.json);
  for (const std::string& name : *names)
    list.add(outputName(name), {{"name", displayUtf8(name)}}, applicationFolder(chosen.path, name));
  return list.end();
}

int listPanels(CommandSession& session, const Chosen& chosen, const std::vector<PanelEntry>& panels) {
  Listing list(session, "panels", chosen.onHost, chosen.json);
  for (const PanelEntry& panel : panels)
    list.add(outputName(panel.name) + '\t' + outputName(panel.text),
             {{"name", displayUtf8(panel.name)},
              {"label", displayUtf8(panel.label)},
              {"olderFamily", panel.olderFamily}},
             panelFolder(chosen.path, chosen.application, panel.name));
  return list.end();
}

int listWorkplaces(CommandSession& session, const Chosen& chosen) {
  Listing list(session, "workplaces", chosen.onHost, chosen.json);
  for (int number = 1; number <= kDiskWorkplaces; ++number)
    list.add(std::to_string(number), {{"number", number}},
             macroFolder(chosen.path, chosen.application, chosen.panel, number));
  return list.end();
}

int listRows(CommandSession& session, const Chosen& chosen, const std::vector<MacroRow>& rows,
             const std::function<std::string(const std::string& numberText)>& fileOf) {
  Listing list(session, "macros", chosen.onHost, chosen.json);
  for (const MacroRow& row : rows)
    list.add(outputName(row.text()),
             {{"number", row.number < 0 ? Json() : Json(row.number)}, {"name", displayUtf8(row.shownName())}},
             fileOf(row.numberText));
  return list.end();
}

int listMacrosIn(CommandSession& session, const Chosen& chosen, int workplace) {
  const std::string folder = macroFolder(chosen.path, chosen.application, chosen.panel, workplace);
  const auto macros = listMacros(session.root(), folder);
  if (!macros) return session.failed(folder + ' ' + macros.failure().text);
  for (const std::string& report : macros->reports) session.warn(report);
  const int code = listRows(session, chosen, macros->rows,
                            [&](const std::string& number) { return macroFile(folder, number); });
  return macros->reports.empty() ? code : kExitFailed;
}

int listKeys(CommandSession& session, const Chosen& chosen) {
  const std::string folder = keyFolder(chosen.path, chosen.application, chosen.panel);
  const auto keys = listKeyFiles(session.root(), folder);
  if (!keys) return session.failed(folder + ' ' + keys.failure().text);
  return listRows(session, chosen, *keys, [&](const std::string& number) { return keyFile(folder, number); });
}

bool isSeparator(char character) { return character == '\\' || character == '/'; }

// The path that is named, or that of pane A.
Chosen chosenPath(CommandSession& session, const Arguments& arguments) {
  Chosen chosen;
  Settings settings;
  if (arguments.size() == 0) {
    const Outcome read = readSettings(session.root(), settings);
    if (!read && !isNothing(read.failure()))
      session.warn(std::string(kSettingsFile) + ' ' + read.failure().text);
  }
  chosen.path = arguments.size() > 0 ? sitePathOf(arguments[0]) : settings.pathA;
  chosen.onHost = !chosen.path.empty() && chosen.path.front() == '/';
  if (!chosen.onHost) chosen.path = replaceAll(std::move(chosen.path), "/", "\\");
  while (!chosen.path.empty() && isSeparator(chosen.path.back())) chosen.path.pop_back();
  chosen.path += '\\';
  chosen.json = arguments.flag("--json");
  return chosen;
}

// Copies one file; a key becomes a macro of its name.
int copyOne(CommandSession& session, const std::string& source, const std::string& target) {
  return session.readFrom(source, [&](const FileOperand& from) {
    const bool isKey = isKeyFile(from.path());
    if (const auto reads = keyAt(session.root(), from.path(), from.shown()); !reads)
      return session.failed(reads.failure().text);
    const auto copy = [&](const std::string& path) -> Outcome {
      std::string name;
      if (!isKey) return told("The macro cannot be copied: ", copyFile(session.root(), from.path(), path));
      if (!readNameLine(session.root(), from.path(), name))
        return Failure{Failure::Kind::kNoMacro, "No name in the file: " + from.shown()};
      if (name.ends_with('\r')) name.pop_back();
      Outcome done = told("The key file cannot be converted: ",
                          convertKeyFile(session.site(), displayUtf8(name), path, from.path()));
      if (done.written()) warnOfUnreadable(session, from, nullptr);
      return done;
    };
    const auto mayStand = [](const std::string& path) -> Outcome {
      if (!isKeyFile(path)) return {};
      return Failure{Failure::Kind::kInTheWay, "A key file is only read: " + path};
    };
    return session.writeTo(target, FileUse::kWrite, isKey ? MacroChange::kConvert : MacroChange::kCopy, copy,
                           mayStand);
  });
}

int deleteOne(CommandSession& session, const std::string& word) {
  const auto check = [&](const std::string& path) -> Outcome {
    if (!isRegularFile(session.root(), path))
      return Failure{Failure::Kind::kMissing, "No such file: " + path};
    if (endsWithNoCase(path, kMacroEnd)) return {};
    return Failure{Failure::Kind::kInTheWay, "Only macros are deleted, not " + path};
  };
  const auto remove = [&](const std::string& path) {
    return told("The macro cannot be deleted: ", removeFile(session.root(), path));
  };
  return session.writeTo(word, FileUse::kWrite, MacroChange::kDelete, remove, check);
}

}  // namespace

int runList(CommandSession& session, Arguments& arguments) {
  if (!arguments.complete(0, 4)) return session.wrongUsage(arguments.problem());
  const auto workplace = arguments.size() < 4 ? 0 : wholeNumber(arguments[3], 1, kDiskWorkplaces);
  if (!workplace)
    return session.wrongUsage("a workplace on the disk is 1 to " + std::to_string(kDiskWorkplaces));
  Chosen chosen = chosenPath(session, arguments);
  if (arguments.size() < 2) return listApplications(session, chosen);
  chosen.application = arguments[1];
  const auto panels = controlPanels(session.root(), chosen.path, chosen.application);
  if (!panels) return session.failed(chosen.application + ' ' + panels.failure().text);
  if (panels->empty()) return session.failed("no control panel data included: " + chosen.application);
  if (arguments.size() < 3) return listPanels(session, chosen, *panels);
  chosen.panel = arguments[2];
  const auto panel = std::find_if(panels->begin(), panels->end(),
                                  [&](const PanelEntry& entry) { return entry.name == chosen.panel; });
  if (panel == panels->end())
    return session.failed(chosen.application + " has no control panel " + chosen.panel);
  if (hasWorkplaces(panel->text))
    return *workplace > 0 ? listMacrosIn(session, chosen, *workplace) : listWorkplaces(session, chosen);
  if (*workplace > 0) return session.failed("TarrowCP - no workplaces supported");
  return listKeys(session, chosen);
}

int runCopyMacro(CommandSession& session, Arguments& arguments) {
  if (!arguments.complete(2, SIZE_MAX)) return session.wrongUsage(arguments.problem());
  const std::string& last = arguments[arguments.size() - 1];
  const std::string folder = sitePathOf(last);
  if (!isFolder(session.root(), folder)) {
    if (arguments.size() == 2) return copyOne(session, arguments[0], last);
    return session.failed(folder + " is no folder");
  }
  int code = kExitDone;
  for (std::size_t i = 0; i + 1 < arguments.size(); ++i) {
    const std::string source = sitePathOf(arguments[i]);
    const std::string name = source.substr(source.find_last_of("\\/") + 1);
    const bool isMacro = endsWithNoCase(name, kMacroEnd);
    const char separator = folder.find('\\') == folder.npos && folder.front() == '/' ? '/' : '\\';
    const std::string target = isSeparator(folder.back()) ? folder + name : folder + separator + name;
    code = std::max(code, isMacro ? copyOne(session, arguments[i], target)
                                  : session.failed("Only macros go into a folder, not " + source));
  }
  return code;
}

int runDeleteMacro(CommandSession& session, Arguments& arguments) {
  if (!arguments.complete(1, SIZE_MAX)) return session.wrongUsage(arguments.problem());
  int code = kExitDone;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    if (arguments[i] == "-") return session.wrongUsage("a stream cannot be deleted");
    code = std::max(code, deleteOne(session, arguments[i]));
  }
  return code;
}

}  // namespace tessaly
