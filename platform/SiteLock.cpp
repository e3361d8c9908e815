#include "platform/SiteLock.h"

#include <array>
#include <cerrno>
#include <climits>
#include <ctime>
#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/LockRecord.h"

namespace tessaly {
namespace {

constexpr const char* kName = ".tessaly.lock";
constexpr int kAttempts = 100;  // of starts that get into each other's way
constexpr mode_t kMode = 0644;  // a second start may be another user's
constexpr int kOpening = O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;

std::string thisHost() {
  char name[HOST_NAME_MAX + 1] = {};
  return ::gethostname(name, sizeof name - 1) == 0 ? name : "";
}

std::string thisUser() {
  const passwd* const user = ::getpwuid(::geteuid());
  return user != nullptr && user->pw_name != nullptr ? user->pw_name : std::to_string(::geteuid());
}

LockHolder readRecord(const Descriptor& file, const struct stat& status) {
  std::array<char, kLongestLockRecord> bytes;
  const ssize_t size = ::pread(file.number(), bytes.data(), bytes.size(), 0);
  return lockHolder({bytes.data(), size > 0 ? static_cast<std::size_t>(size) : 0}, status.st_mtime);
}

void writeRecord(const Descriptor& file) {
  const std::string record = lockRecord({thisHost(), thisUser(), ::getpid(), std::time(nullptr)});
  // On a full disk the lock holds all the same; it only does not tell whose it is.
  static_cast<void>(!::pwrite(file.number(), record.data(), record.size(), 0));
}

// A file system without locks refuses in other ways; there the record alone tells.
bool lockedByAnother(const Descriptor& file) {
  return ::flock(file.number(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

// Another start may have replaced the file while this one waited for its turn.
bool isStillAt(const Descriptor& file, const std::string& path) {
  struct stat open {
  }, named{};
  return ::fstat(file.number(), &open) == 0 && ::lstat(path.c_str(), &named) == 0 &&
         open.st_dev == named.st_dev && open.st_ino == named.st_ino;
}

Descriptor openLock(const std::string& path) {
  Descriptor file(::open(path.c_str(), O_RDWR | kOpening));
  // Another user's file, or a disk that nobody writes to. Looking at it takes no more.
  if (!file.isOpen() && (errno == EACCES || errno == EPERM || errno == EROFS))
    file = Descriptor(::open(path.c_str(), O_RDONLY | kOpening));
  return file;
}

}  // namespace

SiteLock::SiteLock(const SiteRoot& root) : path_((root.path() / kName).string()) {}

SiteLock::~SiteLock() {
  if (!file_.isOpen()) return;
  // Should the file not go, its record says nothing any more.
  static_cast<void>(!::ftruncate(file_.number(), 0));
  if (isStillAt(file_, path_)) ::unlink(path_.c_str());
}

SiteLock::Claim SiteLock::claim() {
  for (int attempt = 0; attempt < kAttempts; ++attempt)
    if (const auto settled = look()) return *settled;
  return Claim::kInUse;
}

SiteLock::Claim SiteLock::takeOver() {
  if (::unlink(path_.c_str()) != 0 && errno != ENOENT) return Claim::kNone;
  return claim();
}

// Nothing when somebody else moved in between.
std::optional<SiteLock::Claim> SiteLock::look() {
  const Descriptor file = openLock(path_);
  if (!file.isOpen()) {
    if (errno == ENOENT) return create();
    return errno == ENOTDIR ? Claim::kNone : Claim::kInTheWay;
  }
  struct stat status {};
  if (::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode)) return Claim::kInTheWay;
  const bool locked = lockedByAnother(file);
  holder_ = readRecord(file, status);
  if (locked) return Claim::kInUse;
  if (!isStillAt(file, path_)) return std::nullopt;
  if (!holder_.host.empty() && holder_.host != thisHost()) return Claim::kInUse;
  if (::unlink(path_.c_str()) != 0) return Claim::kNone;
  return std::nullopt;
}

std::optional<SiteLock::Claim> SiteLock::create() {
  Descriptor file(::open(path_.c_str(), O_RDWR | O_CREAT | O_EXCL | kOpening, kMode));
  if (!file.isOpen()) return errno == EEXIST ? std::nullopt : std::optional(Claim::kNone);
  if (lockedByAnother(file) || !isStillAt(file, path_)) return std::nullopt;
  writeRecord(file);
  file_ = std::move(file);
  return Claim::kHeld;
}

}  // namespace tessaly
