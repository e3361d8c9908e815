#include "panelsim/PanelTree.h"

#include <chrono>
#include <string_view>
#include <system_error>

#include "model/MacroFile.h"
#include "model/SiteBrowser.h"
#include "platform/Files.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

constexpr std::string_view kApplications = "c:\\programme\\RV48\\appli\\";
using FileTime = std::filesystem::file_time_type;

// How long a file may be written again without another time: that of a system clock that hangs behind, where
// the file system tells parts of seconds at all.
std::chrono::milliseconds grainOf(FileTime time) {
  const bool whole = time.time_since_epoch() % std::chrono::seconds(1) == FileTime::duration::zero();
  return std::chrono::milliseconds(whole ? 2'000 : 100);
}

}  // namespace

PanelTree::PanelTree(const std::filesystem::path& root) : host_(root) {}

std::string PanelTree::folder(int workplace) const {
  return (host_.path() / format("flash/data/PANEL/macro/workplace%d", workplace)).string();
}

std::string PanelTree::file(int workplace, int number) const {
  return folder(workplace) + '/' + macroFileName(MacroNumber::textOf(number));
}

bool PanelTree::prepare() const {
  for (int workplace = 1; workplace <= Workplace::kCount; ++workplace) {
    if (!makeFolder(host_, folder(workplace))) return false;
  }
  return true;
}

std::map<int, std::string> PanelTree::names(int workplace) {
  std::map<int, std::string> names;
  const std::string where = folder(workplace);
  for (const std::string& entry : listFolder(host_, where, kMacroFileEnd).value_or({})) {
    if (const auto number = MacroNumber::ofFile(entry)) names[number->value()] = nameOf(where + "/" + entry);
  }
  return names;
}

const std::string& PanelTree::nameOf(const std::string& path) {
  KnownFile& known = known_[path];
  std::error_code error;
  const auto time = std::filesystem::last_write_time(path, error);
  const auto size = std::filesystem::file_size(path, error);
  if (!error && known.settled && known.time == time && known.size == size) return known.name;
  SilentMessages silent;
  known = {.time = time,
           .size = size,
           .settled = !error && time + grainOf(time) < FileTime::clock::now(),
           .name = {}};
  if (!readMacroName({host_, silent}, path, known.name) || known.name.empty()) known.name = kUnknownName;
  return known.name;
}

Expected<Macro> PanelTree::read(int workplace, int number) const {
  return readMacro(host_, file(workplace, number));
}

bool PanelTree::remove(int workplace, int number) const {
  return removeFile(host_, file(workplace, number)).done();
}

bool PanelTree::rename(int workplace, int number, const std::string& name) const {
  SilentMessages silent;
  std::string stored = name;
  return renameMacro({host_, silent}, file(workplace, number), stored).done();
}

int PanelTree::seed(const SiteRoot& site) const {
  int copied = 0;
  for (const std::string& application : applications(site, kApplications).value_or({})) {
    for (const PanelEntry& panel : controlPanels(site, kApplications, application).value_or({})) {
      for (int workplace = 1; workplace <= Workplace::kCount && !panel.olderFamily; ++workplace) {
        const std::string from = macroFolder(kApplications, application, panel.name, workplace);
        for (const std::string& entry : listFolder(site, from, kMacroFileEnd).value_or({})) {
          const auto number = MacroNumber::ofFile(entry);
          if (number && copyFile(site, from + entry, file(workplace, number->value()))) ++copied;
        }
      }
      if (copied > 0) return copied;
    }
  }
  return copied;
}

}  // namespace tessaly
