#include "review/FolderNames.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "platform/SitePlace.h"
#include "platform/SystemFailure.h"
#include "platform/Text.h"

namespace tessaly {

namespace fs = std::filesystem;

Outcome eachEntryIn(const SiteRoot& root, std::string_view folder, const TakeEntry& take) {
  const auto host = placeOf(root, folder);
  if (!host) return host.failure();
  std::error_code error;
  fs::directory_iterator entry(*host, error);
  for (; !error && entry != fs::directory_iterator(); entry.increment(error))
    take(entry->path().filename().string(), *entry);
  return error ? Outcome(systemFailure(error.value(), "read")) : Outcome();
}

Expected<std::vector<fs::directory_entry>> entriesIn(const SiteRoot& root, std::string_view folder) {
  std::vector<std::pair<std::string, fs::directory_entry>> rows;  // what the order goes by
  const Outcome read =
      eachEntryIn(root, folder, [&](const std::string& name, const fs::directory_entry& entry) {
        rows.emplace_back(toUpperAscii(name), entry);
      });
  if (!read) return read.failure();
  std::ranges::sort(rows);
  std::vector<fs::directory_entry> entries;
  for (auto& row : rows) entries.push_back(std::move(row.second));
  return entries;
}

bool mayBe(fs::file_type kind, const fs::directory_entry& entry, bool followed) {
  std::error_code unknown;
  // The folder itself mostly knows, without another look.
  if (kind == fs::file_type::regular && followed && entry.is_regular_file(unknown)) return true;
  const fs::path& host = entry.path();
  const fs::file_type found =
      (followed ? fs::status(host, unknown) : fs::symlink_status(host, unknown)).type();
  return found == kind || found == fs::file_type::none;
}

}  // namespace tessaly
