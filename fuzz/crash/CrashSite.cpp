#include "fuzz/crash/CrashSite.h"

#include <algorithm>
#include <set>

#include "fuzz/crash/BatchUser.h"
#include "link/PanelMacros.h"
#include "model/KeyFile.h"
#include "model/MacroFile.h"
#include "model/MacroHistory.h"
#include "model/Settings.h"
#include "platform/Files.h"
#include "platform/MacroNumber.h"
#include "platform/Text.h"
#include "tests/support/LoadCommands.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kKeyFile = "c:\\programme\\rv48\\appli\\Show\\CP7\\upk\\key03.upk";
constexpr std::string_view kKeyCommand = "e3 10 05 01 \n";
constexpr std::string_view kMacroEnd = "</macro>\n";

std::string folderOf(const std::string& path) { return path.substr(0, path.find_last_of('\\') + 1); }

int downloadedCommands(int generation) { return 40 << (2 * generation); }

std::string remoteFile(const fs::path& tree, int number) {
  return tree.string() + remoteMacroPath(1, MacroNumber::textOf(number));
}

Settings settingsOf(int generation) {
  const std::string text = crashValue(generation);
  return {generation, kFrameRate50Hz, text, text, text, text};
}

// The generation in which every command of the macro is.
std::optional<int> macroGeneration(const SiteAccess& site, const std::string& path, int commandCount) {
  MacroCommands commands;
  const std::string bytes = readFile(site.root, path).value_or("");
  if (!bytes.ends_with(kMacroEnd) || !loadCommands(site, path, commands)) return std::nullopt;
  if (static_cast<int>(commands.size()) != commandCount || commands[0].parameters.empty())
    return std::nullopt;
  const std::string& value = commands[0].parameters[0].value;
  const bool uniform = std::all_of(commands.begin(), commands.end(), [&value](const MacroCommand& command) {
    return command.parameters.size() == 1 && command.parameters[0].value == value;
  });
  const int generation = parseInt(value);
  return uniform && value == crashValue(generation) ? std::optional(generation) : std::nullopt;
}

std::optional<int> convertedGeneration(const SiteAccess& site, const std::string& path) {
  std::string name;
  MacroCommands commands;
  if (!readMacroName(site, path, name) || !loadCommands(site, path, commands)) return std::nullopt;
  const int generation = parseInt(std::string_view(name).substr(1));
  const bool whole = name == crashMacroName(generation) && commands.size() == std::size_t{kCrashKeys};
  return whole ? std::optional(generation) : std::nullopt;
}

std::optional<int> downloadedGeneration(const SiteRoot& root, const fs::path& tree, const std::string& path) {
  const auto bytes = readFile(root, path);
  for (int generation = 0; bytes && generation < kCrashDownloads; ++generation) {
    if (readFile(root, remoteFile(tree, generation)) == bytes) return generation;
  }
  return std::nullopt;
}

constexpr std::size_t kMostKept = 20;

MacroHistory historyOf(const SiteRoot& root) {
  MacroHistory::Limits limits;
  limits.macros = kMostKept;
  return {root, limits};
}

// That of the newest, when every kept macro is whole and has its record.
std::optional<int> keptGeneration(const SiteAccess& site) {
  const std::vector<KeptMacro> kept = historyOf(site.root).list();
  for (const KeptMacro& macro : kept)
    if (!macro.place || readFile(site.root, macro.file).value_or("").size() != macro.size)
      return std::nullopt;
  return kept.empty() ? std::nullopt : macroGeneration(site, kept.front().file, kCrashCommands);
}

std::optional<int> settingsGeneration(const SiteRoot& root) {
  Settings settings;
  if (!readSettings(root, settings)) return std::nullopt;
  return settings == settingsOf(settings.format) ? std::optional(settings.format) : std::nullopt;
}

}  // namespace

CrashSite::CrashSite(const fs::path& folder) : folder_(folder), root_(folder / "site") {}

std::string CrashSite::path(CrashStep step) {
  const CrashStepRow& row = kCrashSteps.at(static_cast<std::size_t>(step));
  return std::string(row.file.empty() ? kSettingsFile : row.file);
}

std::string CrashSite::keyPath() { return std::string(kKeyFile); }

bool CrashSite::prepare() const {
  CrashMessages messages;
  const SiteAccess site{root_, messages};
  bool done = makeFolder(root_, folderOf(keyPath())) &&
              makeFolder(root_, fs::path(remoteFile(panelTree(), 0)).parent_path().string());
  for (const CrashStepRow& row : kCrashSteps) done = done && makeFolder(root_, folderOf(path(row.step)));
  std::string key = "#UPK\nBeginHeader\nFile=key03.upk\nName=Key\nVersion=1.0\nEndHeader\n";
  for (int i = 0; i < kCrashKeys; ++i) key += kKeyCommand;
  for (int i = 0; done && i < kCrashDownloads; ++i)
    done = writeFile(root_, remoteFile(panelTree(), i), crashMacro(i, downloadedCommands(i))).done();
  done = done && writeFile(root_, keyPath(), key) &&
         writeFile(root_, kEmptyMacro, "<macro name=\"\"><data></data></macro>\n");
  done = done && makeFolder(root_, folderOf(std::string(kCrashStepsTarget))) &&
         writeFile(root_, kCrashStepsTarget, crashMacro(0, kCrashCommands));
  for (const CrashStep step : {CrashStep::kEdit, CrashStep::kSave, CrashStep::kCopy, CrashStep::kSteps})
    done = done && writeFile(root_, path(step), crashMacro(0, kCrashCommands));
  return done && keep(0) && CrashBatchUser::prepare(folder_) &&
         writeFile(root_, path(CrashStep::kDownload), crashMacro(0, downloadedCommands(0))) &&
         convertKeyFile(site, crashMacroName(0), path(CrashStep::kConvert), keyPath()) &&
         writeSettings(root_, settingsOf(0));
}

bool CrashSite::keep(int generation) const {
  return historyOf(root_)
      .keep(crashMacro(generation, kCrashCommands), {path(CrashStep::kSave), {}, 0, {}}, MacroChange::kSave)
      .done();
}

void CrashSite::forgetHistory() const { fs::remove_all(root_.path() / "history"); }

std::optional<int> CrashSite::generation(CrashStep step) const {
  CrashMessages messages;
  const SiteAccess site{root_, messages};
  const std::string file = path(step);
  switch (step) {
    case CrashStep::kEdit:
    case CrashStep::kSave:
    case CrashStep::kCopy:
    case CrashStep::kSteps:
      return macroGeneration(site, file, kCrashCommands);
    case CrashStep::kConvert:
      return convertedGeneration(site, file);
    case CrashStep::kDownload:
      return downloadedGeneration(root_, panelTree(), file);
    case CrashStep::kKeep:
      return keptGeneration(site);
    case CrashStep::kSettings:
      return settingsGeneration(root_);
    case CrashStep::kBatch:
      return CrashBatchUser::generation(folder_);
  }
  return std::nullopt;
}

CrashSite::Strays CrashSite::strays(CrashStep step) const {
  const std::string folder = folderOf(path(step));
  std::set<std::string> known{toUpperAscii(kEmptyMacro)};
  for (const CrashStepRow& row : kCrashSteps) known.insert(toUpperAscii(path(row.step)));
  Strays strays;
  const auto isTemporary = [](const std::string& name) { return name.starts_with(".tessaly-"); };
  for (const std::string& name : listFolder(root_, folder).value_or({})) {
    if (step == CrashStep::kKeep) {
      const auto inDay = listFolder(root_, folder + name).value_or({});
      strays.temporary += static_cast<int>(std::count_if(inDay.begin(), inDay.end(), isTemporary));
      // Each has its record; a kill leaves one alone at most.
      const auto files =
          static_cast<std::size_t>(inDay.size()) - listFolder(root_, folder + name, ".txt")->size();
      if (inDay.size() > 2 * files + 1) ++strays.unknown;
    }
    if (isTemporary(name)) {
      ++strays.temporary;
    } else if (!known.contains(toUpperAscii(folder + name)) && !CrashBatchUser::isOurs(folder + name) &&
               isRegularFile(root_, folder + name)) {
      ++strays.unknown;
    }
  }
  return strays;
}

std::string crashValue(int generation) {
  return std::to_string(generation) + std::string(static_cast<std::size_t>(1 + generation % 50), 'x');
}

std::string crashMacroName(int generation) { return "K" + std::to_string(generation); }

std::string crashMacro(int generation, int commands) {
  std::string bytes = "<macro name=\"" + crashMacroName(generation) + "\">\n    <data>\n";
  for (int i = 0; i < commands; ++i) {
    bytes += format("        <cmd fid=\"QMF1.ME1.Key%d.On\" workplace=\"1\" group=\"0\">\n", i) +
             "            <param name=\"Value\" value=\"" + crashValue(generation) +
             "\" />\n        </cmd>\n";
  }
  return bytes + "    </data>\n</macro>\n";
}

}  // namespace tessaly
