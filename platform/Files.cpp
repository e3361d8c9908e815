#include "platform/Files.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <new>
#include <sys/stat.h>
#include <system_error>

#include "platform/Descriptor.h"
#include "platform/PendingFile.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kCopyBlock = std::size_t{64} * 1024;

struct OpenFile {
  Descriptor descriptor;
  struct stat status {};
};

// Only regular files: a pipe or a device would block, or never end.
std::optional<OpenFile> openRegular(const fs::path& path) {
  OpenFile file;
  file.descriptor = Descriptor(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  if (!file.descriptor.isOpen() || ::fstat(file.descriptor.number(), &file.status) != 0) return std::nullopt;
  if (!S_ISREG(file.status.st_mode)) return std::nullopt;
  return file;
}

// Fills `space` as far as the file goes; the count of bytes, or -1.
ssize_t readInto(const Descriptor& file, char* space, std::size_t size) {
  std::size_t count = 0;
  while (count < size) {
    const ssize_t got = ::read(file.number(), space + count, size - count);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return -1;
    if (got == 0) break;
    count += static_cast<std::size_t>(got);
  }
  return static_cast<ssize_t>(count);
}

// At most `count` bytes from the start of an open file.
std::optional<std::string> readStart(const Descriptor& file, std::size_t count) {
  try {
    std::string bytes(count, '\0');
    const ssize_t got = readInto(file, bytes.data(), bytes.size());
    if (got < 0) return std::nullopt;
    bytes.resize(static_cast<std::size_t>(got));
    return bytes;
  } catch (const std::bad_alloc&) {
    return std::nullopt;
  }
}

bool isSameFile(const struct stat& status, const fs::path& path) {
  struct stat other;
  return ::stat(path.c_str(), &other) == 0 && other.st_dev == status.st_dev && other.st_ino == status.st_ino;
}

}  // namespace

bool isRegularFile(const SiteRoot& root, std::string_view path) {
  struct stat status;
  return ::stat(root.resolve(path).c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

bool canOpen(const SiteRoot& root, std::string_view path) {
  return openRegular(root.resolve(path)).has_value();
}

std::optional<std::string> readFile(const SiteRoot& root, std::string_view path, std::size_t limit) {
  const auto file = openRegular(root.resolve(path));
  if (!file) return std::nullopt;
  const auto size = static_cast<std::size_t>(file->status.st_size);
  if (size > limit) return std::nullopt;
  return readStart(file->descriptor, size);
}

std::optional<std::string> readFilePrefix(const SiteRoot& root, std::string_view path, std::size_t count) {
  const auto file = openRegular(root.resolve(path));
  if (!file) return std::nullopt;
  return readStart(file->descriptor, std::min(count, static_cast<std::size_t>(file->status.st_size)));
}

bool writeFile(const SiteRoot& root, std::string_view path, std::string_view bytes) {
  PendingFile file(root.resolve(path));
  file.write(bytes);
  return file.commit();
}

bool copyFile(const SiteRoot& root, std::string_view from, std::string_view to) {
  const auto source = openRegular(root.resolve(from));
  if (!source) return false;
  const fs::path target = root.resolve(to);
  if (isSameFile(source->status, target)) return true;
  PendingFile copy(target);
  std::array<char, kCopyBlock> block;
  ssize_t count = 0;
  do {
    count = readInto(source->descriptor, block.data(), block.size());
    if (count < 0) return false;
    copy.write({block.data(), static_cast<std::size_t>(count)});
  } while (count > 0 && copy.good());
  return copy.commit();
}

bool removeFile(const SiteRoot& root, std::string_view path) {
  return ::unlink(root.resolve(path).c_str()) == 0;
}

bool makeFolder(const SiteRoot& root, std::string_view path) {
  const fs::path folder = root.resolve(path);
  std::error_code error;
  fs::create_directories(folder, error);
  return !folder.empty() && fs::is_directory(folder, error);
}

std::vector<std::string> listFolder(const SiteRoot& root, std::string_view folder, std::string_view suffix) {
  struct Row {
    std::string key;  // what the order goes by
    std::string name;
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

}  // namespace tessaly
