#include "model/SiteBrowser.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <optional>
#include <set>

#include "model/MacroFile.h"
#include "model/MacroNameScan.h"
#include "platform/CollectedMessages.h"
#include "platform/Files.h"
#include "platform/MacroNumber.h"
#include "platform/SitePlace.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

constexpr std::string_view kDevicesFile = "\\devices.ini";
constexpr std::string_view kPanelApplicationFile = "\\appli_cp.ini";
constexpr std::string_view kContentsFile = "\\assign\\contents.cnt";
constexpr std::string_view kPanelMark = "CP";
constexpr std::string_view kOlderFamilyText = "-TarrowCP -     ";
constexpr std::string_view kCurrentFamilyText = "-Corvane XL -";
constexpr std::string_view kNameMark = "Name=";
constexpr std::string_view kKeyFileStart = "key";
constexpr std::size_t kNameBytes = 254;                          // of a file that are searched for its name
constexpr std::size_t kMostDevicesBytes = std::size_t{1} << 20;  // a real one has a few lines
constexpr std::size_t kKeyNumberBegin = 3, kKeyNumberSize = 2;   // "key03.upk"

std::string joined(std::string_view folder, std::string_view rest) {
  return std::string(folder).append(rest);
}

enum class PanelKind { kNone, kOlderFamily, kCurrentFamily };

// The kinds of an application's panels. Each panel is looked at once, and only when the application has such
// an entry, so that a file full of invented names does not search the disk for each.
class PanelKinds {
 public:
  PanelKinds(const SiteRoot& root, std::string_view path, std::string_view application,
             const std::vector<std::string>& entries)
      : root_(root), path_(path), application_(application) {
    for (const std::string& entry : entries) entries_.insert(toUpperAscii(entry));
  }

  PanelKind kind(const std::string& name) {
    if (!entries_.contains(toUpperAscii(name))) return PanelKind::kNone;
    const auto known = kinds_.find(name);
    if (known != kinds_.end()) return known->second;
    return kinds_.emplace(name, look(panelFolder(path_, application_, name))).first->second;
  }

 private:
  PanelKind look(const std::string& folder) const {
    if (folder.empty()) return PanelKind::kNone;
    if (hasPanelApplication(root_, folder)) return PanelKind::kOlderFamily;
    return hasContentsFile(root_, folder) ? PanelKind::kCurrentFamily : PanelKind::kNone;
  }

  const SiteRoot& root_;
  std::string_view path_, application_;
  std::set<std::string> entries_;
  std::map<std::string, PanelKind> kinds_;
};

// A number of the given range, or -1.
int tableNumber(std::string_view text, int count) {
  const int number = parseInt(text);
  return number >= 0 && number < count ? number : -1;
}

std::string middle(const std::string& text, std::size_t begin, std::size_t size) {
  return text.substr(std::min(begin, text.size()), size);
}

}  // namespace

bool hasDevicesFile(const SiteRoot& root, std::string_view folder) {
  return canOpen(root, joined(folder, kDevicesFile));
}

bool hasPanelApplication(const SiteRoot& root, std::string_view folder) {
  return canOpen(root, joined(folder, kPanelApplicationFile));
}

bool hasContentsFile(const SiteRoot& root, std::string_view folder) {
  return canOpen(root, joined(folder, kContentsFile));
}

bool readNameLine(const SiteRoot& root, std::string_view path, std::string& name) {
  const auto bytes = readFilePrefix(root, path, kNameBytes);
  if (!bytes) return false;
  const std::size_t mark = bytes->find(kNameMark);
  if (mark == std::string::npos) return false;
  const std::size_t begin = mark + kNameMark.size();
  name = displayUtf8(bytes->substr(begin, std::min(bytes->find('\n', begin), bytes->size()) - begin));
  return true;
}

std::string beforeHyphen(std::string_view text) {
  const std::size_t hyphen = text.find('-');
  if (hyphen == std::string_view::npos || hyphen < 2) return {};
  return std::string(text.substr(0, hyphen));
}

Expected<std::vector<std::string>> applications(const SiteRoot& root, std::string_view path) {
  auto names = listFolder(root, path);
  if (!names) return names;
  std::erase_if(*names, [&](const std::string& name) {
    return !isPlainName(name) || !hasDevicesFile(root, joined(path, name));
  });
  return names;
}

Expected<std::vector<PanelEntry>> controlPanels(const SiteRoot& root, std::string_view path,
                                                std::string_view application) {
  std::vector<PanelEntry> panels;
  const std::string folder = applicationFolder(path, application);
  if (folder.empty()) return panels;
  const auto devices = readFilePrefix(root, joined(folder, kDevicesFile), kMostDevicesBytes);
  if (!devices) return isNothing(devices.failure()) ? Expected(std::move(panels)) : devices.failure();

  const auto entries = listFolder(root, folder);
  if (!entries) return entries.failure();
  PanelKinds kinds(root, path, application, *entries);
  std::size_t position = 0;
  while (true) {
    const std::size_t begin = devices->find(kPanelMark, position);
    const std::size_t blank = begin == std::string::npos ? begin : devices->find(' ', begin);
    if (blank == std::string::npos) break;
    position = blank + 1;
    const std::string written = devices->substr(begin, blank - begin);
    const PanelKind kind = kinds.kind(written);
    if (kind == PanelKind::kNone) continue;

    const std::size_t open = devices->find('"', position);
    const std::size_t close = open == std::string::npos ? open : devices->find('"', open + 1);
    if (close == std::string::npos) break;
    position = close + 1;
    PanelEntry entry;
    entry.label = devices->substr(open + 1, close - open - 1);
    entry.text = written;
    entry.text.append(kind == PanelKind::kOlderFamily ? kOlderFamilyText : kCurrentFamilyText)
        .append(entry.label);
    // The first hyphen alone decides: a panel written "CP-1" is looked up as "CP" from here on, deliberately,
    // as every copy of the system finds its folders so.
    entry.name = beforeHyphen(entry.text);
    entry.olderFamily = kinds.kind(entry.name) == PanelKind::kOlderFamily;
    panels.push_back(std::move(entry));
  }
  return panels;
}

bool isOlderFamily(const SiteRoot& root, std::string_view path, std::string_view application,
                   std::string_view panel) {
  const std::string folder = panelFolder(path, application, panel);
  return !folder.empty() && hasPanelApplication(root, folder);
}

bool hasWorkplaces(std::string_view panelText) { return panelText.find("Corvane") != std::string_view::npos; }

std::string applicationFolder(std::string_view path, std::string_view application) {
  return isPlainName(application) ? joined(path, application) + '\\' : std::string();
}

std::string panelFolder(std::string_view path, std::string_view application, std::string_view panel) {
  const std::string folder = applicationFolder(path, application);
  return folder.empty() || !isPlainName(panel) ? std::string() : joined(folder, panel) + '\\';
}

std::string macroFolder(std::string_view path, std::string_view application, std::string_view panel,
                        int workplace) {
  const std::string folder = panelFolder(path, application, panel);
  return folder.empty() ? folder : folder + format("macroWP%d\\", workplace);
}

std::string keyFolder(std::string_view path, std::string_view application, std::string_view panel) {
  const std::string folder = panelFolder(path, application, panel);
  return folder.empty() ? folder : folder + "upk\\";
}

std::string macroFile(std::string_view folder, std::string_view numberText) {
  return joined(folder, macroFileName(numberText));
}

std::string macroFile(std::string_view folder, int number) {
  return macroFile(folder, MacroNumber::textOf(number));
}

std::string keyFile(std::string_view folder, std::string_view numberText) {
  return joined(folder, kKeyFileStart).append(numberText).append(".upk");
}

Expected<MacroListing> listMacros(const SiteRoot& root, std::string_view folder) {
  const auto files = listFolder(root, folder, kMacroFileEnd);
  if (!files) return files.failure();
  MacroListing listing;
  CollectedMessages messages(listing.reports);
  const SiteAccess site{root, messages};
  // Looked for once: the files of a folder share the search for its spelling on disk.
  const std::string place = root.resolve(folder).string();
  for (const std::string& file : *files) {
    if (!isPlainName(file)) continue;
    MacroRow row;
    row.numberText = middle(file, kMacroFileStart.size(), MacroNumber::kDigits);
    row.number = tableNumber(row.numberText, MacroNumber::kCount);
    const auto bytes = readFile(root, place + "/" + file);
    if (bytes && equalNoCase(file, macroFileName(row.numberText))) row.check = contentCheck(*bytes);
    if (const auto name = bytes ? scanMacroName(*bytes) : std::nullopt)
      row.name = *name;
    else
      // A macro that cannot be read is listed all the same, under the name "???".
      static_cast<void>(readMacroName(site, joined(folder, file), row.name));
    listing.rows.push_back(std::move(row));
  }
  return listing;
}

Expected<std::vector<MacroRow>> listKeyFiles(const SiteRoot& root, std::string_view folder) {
  const auto files = listFolder(root, folder, ".upk");
  if (!files) return files.failure();
  std::vector<MacroRow> rows;
  for (const std::string& file : *files) {
    if (!isPlainName(file) || !file.starts_with(kKeyFileStart)) continue;
    MacroRow row;
    if (!readNameLine(root, joined(folder, file), row.name)) continue;
    row.numberText = middle(file, kKeyNumberBegin, kKeyNumberSize);
    row.number = tableNumber(row.numberText, kKeyNumbers);
    rows.push_back(std::move(row));
  }
  return rows;
}

std::vector<std::string> macroNames(const std::vector<MacroRow>& rows) {
  std::vector<std::string> names(MacroNumber::kCount);
  for (const MacroRow& row : rows) {
    if (row.number >= 0) names[static_cast<std::size_t>(row.number)] = row.name;
  }
  return names;
}

}  // namespace tessaly
