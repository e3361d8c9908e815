#include "review/FolderNames.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "platform/SystemFailure.h"
#include "platform/Text.h"

namespace tessaly {

namespace fs = std::filesystem;

Expected<std::vector<std::string>> namesIn(const SiteRoot& root, std::string_view folder) {
  std::error_code error;
  std::vector<std::pair<std::string, std::string>> rows;  // what the order goes by, and the name
  fs::directory_iterator entry(root.resolve(folder), error);
  for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
    std::string name = entry->path().filename().string();
    rows.emplace_back(toUpperAscii(name), std::move(name));
  }
  if (error) return systemFailure(error.value(), "read");
  std::ranges::sort(rows);
  std::vector<std::string> names;
  for (auto& row : rows) names.push_back(std::move(row.second));
  return names;
}

bool mayBe(fs::file_type kind, const fs::path& host, bool followed) {
  std::error_code unknown;
  const fs::file_type found =
      (followed ? fs::status(host, unknown) : fs::symlink_status(host, unknown)).type();
  return found == kind || found == fs::file_type::none;
}

}  // namespace tessaly
