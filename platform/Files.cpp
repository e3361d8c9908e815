#include "platform/Files.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <limits>
#include <new>
#include <system_error>
#include <utility>

#include "platform/FolderEntries.h"
#include "platform/PendingFile.h"
#include "platform/RegularFile.h"
#include "platform/SitePlace.h"
#include "platform/SystemFailure.h"
#include "platform/Text.h"
#include "platform/WayBack.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;

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

Outcome outcomeOf(int error, std::string_view doing) {
  return error == 0 ? Outcome() : systemFailure(error, doing);
}

bool isFolder(const fs::path& path) { return kindAt(path) == EntryKind::kFolder; }

Outcome removeNow(const fs::path& host, bool users) {
  WayBack::Change change(users);
  if (!change.allowed()) return cancelledFailure();
  Outcome removed = outcomeOf(removeEntry(host), "removed");
  if (removed) change.done();
  return removed;
}

}  // namespace

bool isRegularFile(const SiteRoot& root, std::string_view path) {
  return kindAt(root.resolve(path)) == EntryKind::kFile;
}

bool isFolder(const SiteRoot& root, std::string_view path) { return isFolder(root.resolve(path)); }

bool canOpen(const SiteRoot& root, std::string_view path) {
  return RegularFile::open(root.resolve(path)).has_value();
}

Expected<std::string> readFile(const SiteRoot& root, std::string_view path, std::size_t limit) {
  const auto host = placeOf(root, path);
  return host ? readWhole(*host, filePolicy(*host), limit) : host.failure();
}

Expected<std::string> readOwnFile(const SiteRoot& root, std::string_view path, std::size_t limit) {
  const auto host = placeOf(root, path);
  return host ? readWhole(*host, kOwnFile, limit) : host.failure();
}

Expected<std::string> readFilePrefix(const SiteRoot& root, std::string_view path, std::size_t count) {
  const auto host = placeOf(root, path);
  if (!host) return host.failure();
  const auto file = RegularFile::open(*host);
  if (!file) return file.failure();
  return readStart(*file, std::min(count, file->size()));
}

Outcome writeFile(const SiteRoot& root, std::string_view path, std::string_view bytes) {
  const auto host = placeOf(root, path);
  return host ? writeWhole(*host, filePolicy(*host), bytes) : host.failure();
}

Outcome writeOwnFile(const SiteRoot& root, std::string_view path, std::string_view bytes) {
  const auto host = placeOf(root, path);
  return host ? writeWhole(*host, kOwnFile, bytes) : host.failure();
}

Outcome copyFile(const SiteRoot& root, std::string_view from, std::string_view to) {
  const auto place = placeOf(root, from), target = placeOf(root, to);
  if (!place || !target) return place ? target.failure() : place.failure();
  const auto source = RegularFile::open(*place);
  if (!source) return source.failure();
  if (source->isAt(*target)) return {};
  PendingFile copy(*target);
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
  const auto host = placeOf(root, path);
  return host ? appendAt(*host, size, bytes) : host.failure();
}

bool isThisUsers(const SiteRoot& root, std::string_view path) {
  const FolderEntry entry = entryAt(root.resolve(path));
  return entry.kind == EntryKind::kFile && entry.thisUsers;
}

Outcome moveOwnFile(const SiteRoot& root, std::string_view from, std::string_view to) {
  const auto source = placeOf(root, from), target = placeOf(root, to);
  if (!source || !target) return source ? target.failure() : source.failure();
  return outcomeOf(moveEntry(*source, *target), "moved");
}

Outcome removeFile(const SiteRoot& root, std::string_view path) {
  const auto place = placeOf(root, path);
  if (!place) return place.failure();
  const fs::path& host = *place;
  const bool users = filePolicy(host).keepsMode;
  const FolderEntry entry = users ? entryAt(host) : FolderEntry{};
  if (entry.kind == EntryKind::kFile && entry.writeProtected)
    return Failure{Failure::Kind::kWriteProtected, "cannot be removed: the file is write-protected"};
  if (auto removed = removeNow(host, users); !removed || !users) return removed;
  const fs::path folder = host.has_parent_path() ? host.parent_path() : ".";
  return flushFolder(folder.string(), "is removed, but a power cut may bring it back");
}

Outcome makeFolder(const SiteRoot& root, std::string_view path) {
  const auto host = placeOf(root, path);
  return host ? makeFolder(*host) : host.failure();
}

Outcome makeFolder(const fs::path& host) {
  if (host.empty()) return systemFailure(ENOENT, "made");
  fs::path folder;
  for (const fs::path& part : host) {
    const fs::path parent = folder;
    folder /= part;
    if (!folder.has_relative_path() || isFolder(folder)) continue;
    const int error = makeEntry(folder);
    // Somebody else may have been faster.
    if (error != 0 && !(error == EEXIST && isFolder(folder))) return systemFailure(error, "made");
    if (auto flushed = flushFolder(parent.empty() ? "." : parent.string()); error == 0 && !flushed)
      return flushed;
  }
  return {};
}

Outcome makeOwnFolder(const fs::path& host) {
  const EntryKind kind = entryAt(host).kind;
  if (kind != EntryKind::kNone && kind != EntryKind::kFolder)
    return Failure{Failure::Kind::kInTheWay, "cannot be made: " + host.string() + " is no folder of our own"};
  return makeFolder(host);
}

Expected<std::vector<std::string>> listFolder(const SiteRoot& root, std::string_view folder,
                                              std::string_view suffix) {
  struct Row {
    std::string key;  // what the order goes by
    std::string name;
    // NOLINTNEXTLINE(modernize-use-nullptr): the zero is the compiler's.
    auto operator<=>(const Row&) const = default;
  };
  const auto host = placeOf(root, folder);
  if (!host) return host.failure();
  auto found = namesIn(*host, suffix);
  if (!found) return found;
  std::vector<Row> rows;
  for (std::string& name : *found) rows.push_back({toUpperAscii(name), std::move(name)});
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
