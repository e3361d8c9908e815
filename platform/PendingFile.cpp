#include "platform/PendingFile.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <utility>

#include "platform/SitePlace.h"
#include "platform/SystemFailure.h"
#include "platform/Text.h"
#include "platform/WayBack.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;

constexpr mode_t kMode = 0644;
constexpr mode_t kUnfinishedMode = 0600;

constexpr mode_t kAccess = 0777;
constexpr mode_t kGroupAccess = 070;

// What stands at a path; nothing when that is no regular file.
std::optional<struct stat> regularFileAt(const std::string& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) ? std::optional(status)
                                                                        : std::nullopt;
}

// Told by the mode, which also counts for who may write anything.
bool isWriteProtected(const struct stat& status) { return (status.st_mode & S_IWUSR) == 0; }

// Some file systems have nothing to flush, or not for this kind of entry.
bool cannotFlush(int error) {
  return error == EINVAL || error == EROFS || error == ENOSYS || error == EOPNOTSUPP;
}

bool flush(const Descriptor& file) { return ::fsync(file.number()) == 0 || cannotFlush(errno); }

bool lock(const Descriptor& file) { return ::flock(file.number(), LOCK_EX | LOCK_NB) == 0; }

}  // namespace

Expected<fs::path> PendingFile::destination(const fs::path& target, FilePolicy policy) {
  if (target.empty() || !target.has_filename()) return inTheWay();
  struct stat status {};
  if (::lstat(target.c_str(), &status) != 0 || S_ISREG(status.st_mode)) return target;
  if (!S_ISLNK(status.st_mode)) return inTheWay();
  if (!policy.followsLinks) return target;
  if (::stat(target.c_str(), &status) != 0) {
    // A link to nothing is replaced, one to what cannot be looked at now is not.
    const Failure failure = systemFailure(errno, "written");
    return isNothing(failure) ? Expected(target) : Expected<fs::path>(failure);
  }
  if (!S_ISREG(status.st_mode)) return inTheWay();
  std::error_code error;
  fs::path real = fs::canonical(target, error);
  if (error) return systemFailure(error.value(), "written");
  return real;
}

std::string PendingFile::temporaryName() {
  static std::atomic<unsigned> count{0};
  timespec now{};
  ::clock_gettime(CLOCK_REALTIME, &now);
  return std::string(kTemporaryStart) +
         format("%lx-%lx-%x", static_cast<unsigned long>(::getpid()), static_cast<unsigned long>(now.tv_nsec),
                count++) +
         std::string(kTemporaryEnd);
}

Outcome flushFolder(const std::string& folder, std::string_view otherwise) {
  const Descriptor names(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (names.isOpen() ? flush(names) : errno == EACCES) return {};
  return Failure{Failure::Kind::kUnflushed,
                 std::string(otherwise) + ": " + std::generic_category().message(errno)};
}

// Removes the temporary files whose writers are gone. Where the file system has no locks, or the file is
// another user's, it stays: nothing is removed on a guess.
void PendingFile::sweep(const std::string& folder) {
  const std::unique_ptr<DIR, int (*)(DIR*)> entries(::opendir(folder.c_str()), &::closedir);
  if (!entries) return;
  while (const dirent* const entry = ::readdir(entries.get())) {
    const std::string_view name = entry->d_name;
    if (!name.starts_with(kTemporaryStart) || !name.ends_with(kTemporaryEnd)) continue;
    const int at = ::dirfd(entries.get());
    const Descriptor left(::openat(at, entry->d_name, O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (left.isOpen() && lock(left)) ::unlinkat(at, entry->d_name, 0);
  }
}

// From the file that is about to be replaced; a write-protected one fails.
void PendingFile::takeOverMode() {
  const auto old = policy_.keepsMode ? regularFileAt(target_) : std::nullopt;
  if (!old) return;
  if (isWriteProtected(*old)) {
    fail({Failure::Kind::kWriteProtected, "cannot be written: the file is write-protected"});
    return;
  }
  struct stat ours {};
  if (!finishedMode_ || ::fstat(file_.number(), &ours) != 0) return;
  mode_t mode = old->st_mode & kAccess;
  const bool mine = ours.st_uid == old->st_uid && ours.st_gid == old->st_gid;
  const bool grouped = mine || ::fchown(file_.number(), old->st_uid, old->st_gid) == 0 ||
                       ::fchown(file_.number(), static_cast<uid_t>(-1), old->st_gid) == 0;
  // Another group gets no more than everybody.
  if (!grouped) mode = (mode & ~kGroupAccess) | ((mode << 3) & kGroupAccess);
  finishedMode_ = mode;
}

bool PendingFile::open() {
  temporary_ = folder_ + '/' + temporaryName();
  file_ = Descriptor(::open(temporary_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, kMode));
  if (!file_.isOpen()) {
    temporary_.clear();
    return false;
  }
  // Another writer that looks for leftovers may have come between: its lock, or the name that it removed,
  // tells. A file system without locks refuses them in another way.
  struct stat status {};
  const bool taken = !lock(file_) && errno == EWOULDBLOCK;
  if (taken || ::fstat(file_.number(), &status) != 0 || status.st_nlink == 0) {
    discard();
    errno = EEXIST;
    return false;
  }
  if (::fchmod(file_.number(), kUnfinishedMode) == 0) finishedMode_ = status.st_mode & ALLPERMS;
  return true;  // some file systems have no modes to set
}

bool PendingFile::write(std::string_view bytes) {
  while (good() && !bytes.empty()) {
    const ssize_t written = ::write(file_.number(), bytes.data(), bytes.size());
    if (written >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno != EINTR) {
      fail(errno, "written");
      discard();
    }
  }
  return good();
}

void PendingFile::putInPlace() {
  WayBack::Change change(policy_.keepsMode);
  if (!change.allowed())
    fail(cancelledFailure());
  else if (std::rename(temporary_.c_str(), target_.c_str()) != 0)
    fail(errno, "put in place");
  else
    change.done();
}

Outcome PendingFile::commit(Sync sync) {
  if (!good()) return failure_ ? *failure_ : systemFailure(EBADF, "written");
  // The lock goes with the last descriptor, and has to last until the name is the target's.
  const Descriptor locked(::fcntl(file_.number(), F_DUPFD_CLOEXEC, 0));
  if (!locked.isOpen()) fail(errno, "written");
  takeOverMode();
  if (finishedMode_ && ::fchmod(file_.number(), *finishedMode_) != 0) fail(errno, "given its mode");
  if (!failure_ && !flush(file_)) fail(errno, "flushed to the disk");
  if (!file_.close()) fail(errno, "written");
  if (!failure_) putInPlace();
  if (failure_) {
    discard();
    return *failure_;
  }
  temporary_.clear();
  return sync == Sync::kFileAndFolder ? flushFolder(folder_) : Outcome();
}

void PendingFile::discard() {
  file_ = Descriptor();
  if (!temporary_.empty()) ::unlink(temporary_.c_str());
  temporary_.clear();
}

}  // namespace tessaly
