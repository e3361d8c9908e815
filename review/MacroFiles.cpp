#include "review/MacroFiles.h"

#include <filesystem>
#include <system_error>

#include "platform/Files.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

constexpr std::string_view kOwnFolder = "MacroFid";
constexpr int kDeepest = 40;

// Not by a link, which may lead back to where we are.
bool isRealFolder(const SiteRoot& root, const std::string& path) {
  std::error_code error;
  return std::filesystem::is_directory(std::filesystem::symlink_status(root.resolve(path), error));
}

void addFolder(const SiteRoot& root, const std::string& folder, int depth, std::vector<MacroFolder>& found) {
  const char separator = folder.find('\\') == folder.npos && folder.starts_with('/') ? '/' : '\\';
  const bool ended = folder.ends_with('/') || folder.ends_with('\\');
  MacroFolder here{folder, {}};
  std::vector<std::string> below;
  for (const std::string& name : listFolder(root, folder)) {
    std::string path = folder + (ended ? std::string() : std::string(1, separator)) + name;
    if ((endsWithNoCase(name, ".mac") || endsWithNoCase(name, ".upk")) && isRegularFile(root, path)) {
      here.files.push_back(std::move(path));
    } else if (!equalNoCase(name, kOwnFolder) && isRealFolder(root, path)) {
      below.push_back(std::move(path));
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
