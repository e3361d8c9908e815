#include "platform/Files.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <limits>
#include <new>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "platform/Descriptor.h"
#include "platform/PendingFile.h"
#include "platform/RegularFile.h"
#include "platform/SystemFailure.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;

constexpr mode_t kFolderMode = 0777;  // less the umask
constexpr std::size_t kCopyBlock = std::size_t{64} * 1024;

// At most `count` bytes from the start of an open file.
Expected<std::string> readStart(const RegularFile& file, std::size_t count) {
  try {
    std::string bytes(count, '\0');
    const auto got = file.read(bytes.data(), bytes.size());
    if (!got) return got.failure();
    bytes.resize(*got);
    return bytes;
  } catch (const std::bad_alloc&) {
    return systemFailure(ENOMEM, "read");
  }
}

Expected<std::string> readWhole(const fs::path& host, FilePolicy policy, std::size_t limit) {
  const auto file = RegularFile::open(host, policy);
  if (!file) return file.failure();
  if (file->size() > limit) return systemFailure(EFBIG, "read");
  return readStart(*file, file->size());
}

Outcome writeWhole(const fs::path& host, FilePolicy policy, std::string_view bytes) {
  PendingFile file(host, policy);
  file.write(bytes);
  return file.commit();
}

bool isFolder(const fs::path& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

}  // namespace

bool isRegularFile(const SiteRoot& root, std::string_view path) {
  struct stat status;
  return ::stat(root.resolve(path).c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

bool isFolder(const SiteRoot& root, std::string_view path) { return isFolder(root.resolve(path)); }

bool canOpen(const SiteRoot& root, std::string_view path) {
  return RegularFile::open(root.resolve(path)).has_value();
}

Expected<std::string> readFile(const SiteRoot& root, std::string_view path, std::size_t limit) {
  const fs::path host = root.resolve(path);
  return readWhole(host, filePolicy(host), limit);
}

Expected<std::string> readOwnFile(const SiteRoot& root, std::string_view path, std::size_t limit) {
  return readWhole(root.resolve(path), kOwnFile, limit);
}

std::optional<std::string> readFilePrefix(const SiteRoot& root, std::string_view path, std::size_t count) {
  const auto file = RegularFile::open(root.resolve(path));
  if (!file) return std::nullopt;
  auto start = readStart(*file, std::min(count, file->size()));
  return start ? std::optional(*std::move(start)) : std::nullopt;
}

Outcome writeFile(const SiteRoot& root, std::string_view path, std::string_view bytes) {
  const fs::path host = root.resolve(path);
  return writeWhole(host, filePolicy(host), bytes);
}

Outcome writeOwnFile(const SiteRoot& root, std::string_view path, std::string_view bytes) {
  return writeWhole(root.resolve(path), kOwnFile, bytes);
}

Outcome copyFile(const SiteRoot& root, std::string_view from, std::string_view to) {
  const auto source = RegularFile::open(root.resolve(from));
  if (!source) return source.failure();
  const fs::path target = root.resolve(to);
  if (source->isAt(target)) return {};
  PendingFile copy(target);
  std::array<char, kCopyBlock> block;
  while (copy.good()) {
    const auto count = source->read(block.data(), block.size());
    if (!count) return count.failure();
    if (*count == 0) break;
    copy.write({block.data(), *count});
  }
  return copy.commit();
}

Outcome appendToOwnFile(const SiteRoot& root, std::string_view path, std::size_t size,
                        std::string_view bytes) {
  const Descriptor file(::open(root.resolve(path).c_str(), O_WRONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC));
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

bool isThisUsers(const SiteRoot& root, std::string_view path) {
  struct stat status {};
  return ::lstat(root.resolve(path).c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
         status.st_uid == ::geteuid();
}

Outcome moveOwnFile(const SiteRoot& root, std::string_view from, std::string_view to) {
  if (::rename(root.resolve(from).c_str(), root.resolve(to).c_str()) == 0) return {};
  return systemFailure(errno, "moved");
}

Outcome removeFile(const SiteRoot& root, std::string_view path) {
  const fs::path host = root.resolve(path);
  struct stat status {};
  const bool users = filePolicy(host).keepsMode;
  const bool isFile = users && ::lstat(host.c_str(), &status) == 0 && S_ISREG(status.st_mode);
  if (isFile && (status.st_mode & S_IWUSR) == 0)
    return Failure{Failure::Kind::kWriteProtected, "cannot be removed: the file is write-protected"};
  if (::unlink(host.c_str()) != 0) return systemFailure(errno, "removed");
  if (!users) return {};
  const fs::path folder = host.has_parent_path() ? host.parent_path() : ".";
  return flushFolder(folder.string(), "is removed, but a power cut may bring it back");
}

Outcome makeFolder(const SiteRoot& root, std::string_view path) { return makeFolder(root.resolve(path)); }

Outcome makeFolder(const fs::path& host) {
  if (host.empty()) return systemFailure(ENOENT, "made");
  fs::path folder;
  for (const fs::path& part : host) {
    const fs::path parent = folder;
    folder /= part;
    if (isFolder(folder)) continue;
    const bool made = ::mkdir(folder.c_str(), kFolderMode) == 0;
    // Somebody else may have been faster.
    if (!made && !(errno == EEXIST && isFolder(folder))) return systemFailure(errno, "made");
    if (auto flushed = flushFolder(parent.empty() ? "." : parent.string()); made && !flushed) return flushed;
  }
  return {};
}

Outcome makeOwnFolder(const fs::path& host) {
  struct stat status {};
  if (::lstat(host.c_str(), &status) == 0 && !S_ISDIR(status.st_mode))
    return Failure{Failure::Kind::kInTheWay, "cannot be made: " + host.string() + " is no folder of our own"};
  return makeFolder(host);
}

std::vector<std::string> listFolder(const SiteRoot& root, std::string_view folder, std::string_view suffix) {
  struct Row {
    std::string key;  // what the order goes by
    std::string name;
    // NOLINTNEXTLINE(modernize-use-nullptr): the zero is the compiler's.
    auto operator<=>(const Row&) const = default;
  };
  std::vector<Row> rows;
  std::error_code error;
  fs::directory_iterator entry(root.resolve(folder), error);
  for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
    std::string name = entry->path().filename().string();
    std::error_code unknown;
    if (!endsWithNoCase(name, suffix)) continue;
    if (!suffix.empty() && !entry->is_regular_file(unknown)) continue;
    rows.push_back({toUpperAscii(name), std::move(name)});
  }
  std::sort(rows.begin(), rows.end());
  std::vector<std::string> names;
  names.reserve(rows.size());
  for (Row& row : rows) names.push_back(std::move(row.name));
  return names;
}

std::uint64_t freeBytes(const fs::path& folder) {
  std::error_code error;
  const auto bytes = fs::space(folder, error).available;
  return error ? std::numeric_limits<std::uint64_t>::max() : bytes;
}

}  // namespace tessaly
