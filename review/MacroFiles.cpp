#include "review/MacroFiles.h"

#include <filesystem>

#include "platform/Text.h"
#include "review/FolderNames.h"

namespace tessaly {
namespace {

using Kind = std::filesystem::file_type;

constexpr std::string_view kOwnFolder = "MacroFid";
constexpr int kDeepest = 40;

void addFolder(const SiteRoot& root, const std::string& folder, int depth, std::vector<MacroFolder>& found) {
  const char separator = folder.find('\\') == folder.npos && folder.starts_with('/') ? '/' : '\\';
  const bool ended = folder.ends_with('/') || folder.ends_with('\\');
  MacroFolder here{folder, {}};
  std::vector<std::string> below;
  const auto entries = entriesIn(root, folder);
  if (!entries) here.files.push_back(folder);  // who reads it is told why not
  for (const std::filesystem::directory_entry& entry : entries.value_or({})) {
    const std::string name = entry.path().filename().string();
    std::string path = folder + (ended ? std::string() : std::string(1, separator)) + name;
    if ((endsWithNoCase(name, ".mac") || endsWithNoCase(name, ".upk")) && mayBe(Kind::regular, entry, true)) {
      here.files.push_back(std::move(path));
    } else if (!equalNoCase(name, kOwnFolder) && mayBe(Kind::directory, entry, false)) {
      below.push_back(std::move(path));  // not by a link, which may lead back to where we are
    }
  }
  if (!here.files.empty()) found.push_back(std::move(here));
  if (depth == kDeepest) return;
  for (const std::string& path : below) addFolder(root, path, depth + 1, found);
}

}  // namespace

std::vector<MacroFolder> macroFoldersUnder(const SiteRoot& root, const std::string& folder) {
  std::vector<MacroFolder> found;
  addFolder(root, folder, 0, found);
  return found;
}

}  // namespace tessaly
