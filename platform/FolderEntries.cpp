#include "platform/FolderEntries.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "platform/Descriptor.h"
#include "platform/SitePlace.h"
#include "platform/SystemFailure.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;

constexpr mode_t kFolderMode = 0777;  // less the umask

EntryKind kindOf(mode_t mode) {
  if (S_ISREG(mode)) return EntryKind::kFile;
  if (S_ISDIR(mode)) return EntryKind::kFolder;
  return S_ISLNK(mode) ? EntryKind::kLink : EntryKind::kOther;
}

int numberOf(int result) { return result == 0 ? 0 : errno; }

}  // namespace

EntryKind kindAt(const fs::path& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 ? kindOf(status.st_mode) : EntryKind::kNone;
}

FolderEntry entryAt(const fs::path& path) {
  struct stat status {};
  if (::lstat(path.c_str(), &status) != 0) return {};
  return {kindOf(status.st_mode), (status.st_mode & S_IWUSR) == 0, status.st_uid == ::geteuid()};
}

FileStamp stampAt(const fs::path& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) return {};
  constexpr std::int64_t kInASecond = 1'000'000'000;
  return {true, static_cast<std::uint64_t>(status.st_size),
          status.st_mtim.tv_sec * kInASecond + status.st_mtim.tv_nsec};
}

Expected<std::vector<std::string>> namesIn(const fs::path& folder, std::string_view suffix) {
  std::vector<std::string> names;
  std::error_code error;
  fs::directory_iterator entry(folder, error);
  for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
    std::string name = entry->path().filename().string();
    std::error_code unknown;
    if (!endsWithNoCase(name, suffix)) continue;
    if (!suffix.empty() && !entry->is_regular_file(unknown)) continue;
    names.push_back(std::move(name));
  }
  if (!error) return names;
  Failure failure = systemFailure(error.value(), "read");
  if (isNothing(failure)) return names;
  return failure;
}

int makeEntry(const fs::path& folder) { return numberOf(::mkdir(folder.c_str(), kFolderMode)); }
int moveEntry(const fs::path& from, const fs::path& to) {
  return numberOf(std::rename(from.c_str(), to.c_str()));
}
int removeEntry(const fs::path& file) { return numberOf(::unlink(file.c_str())); }

Outcome appendAt(const fs::path& path, std::size_t size, std::string_view bytes) {
  const Descriptor file(::open(path.c_str(), O_WRONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC));
  struct stat status {};
  if (!file.isOpen() || ::fstat(file.number(), &status) != 0) return systemFailure(errno, "written");
  if (!S_ISREG(status.st_mode) || static_cast<std::size_t>(status.st_size) < size)
    return Failure{Failure::Kind::kChanged, "cannot be written: it is not as it was left"};
  const auto end = static_cast<off_t>(size);
  bool good = status.st_size == end || ::ftruncate(file.number(), end) == 0;
  for (std::size_t done = 0; good && done < bytes.size();) {
    const ssize_t written =
        ::pwrite(file.number(), bytes.data() + done, bytes.size() - done, end + static_cast<off_t>(done));
    if (written >= 0)
      done += static_cast<std::size_t>(written);
    else
      good = errno == EINTR;
  }
  if (good && ::fsync(file.number()) == 0) return {};
  const int error = errno;
  if (::ftruncate(file.number(), end) != 0) errno = error;  // its reader knows a part from a whole
  return systemFailure(error, "written");
}

}  // namespace tessaly
