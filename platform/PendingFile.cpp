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

#include "platform/SystemFailure.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;

constexpr int kAttempts = 100;  // names tried when others' temporary files are in the way
constexpr mode_t kMode = 0644;
constexpr mode_t kUnfinishedMode = 0600;
constexpr std::string_view kTemporaryStart = ".tessaly-";
constexpr std::string_view kTemporaryEnd = ".tmp";

// Where the bytes for `target` have to go, or an empty path when they cannot.
fs::path destination(const fs::path& target) {
  if (target.empty() || !target.has_filename()) return {};
  struct stat status;
  if (::lstat(target.c_str(), &status) != 0) return target;
  if (S_ISREG(status.st_mode)) return target;
  if (!S_ISLNK(status.st_mode)) return {};
  if (::stat(target.c_str(), &status) != 0) return target;  // a link to nothing is replaced
  if (!S_ISREG(status.st_mode)) return {};
  std::error_code error;
  const fs::path real = fs::canonical(target, error);
  return error ? fs::path() : real;
}

// Hidden, and with an ending that no search for macros or key files finds.
std::string temporaryName() {
  static std::atomic<unsigned> count{0};
  timespec now{};
  ::clock_gettime(CLOCK_REALTIME, &now);
  return std::string(kTemporaryStart) +
         format("%lx-%lx-%x", static_cast<unsigned long>(::getpid()), static_cast<unsigned long>(now.tv_nsec),
                count++) +
         std::string(kTemporaryEnd);
}

bool lock(const Descriptor& file) { return ::flock(file.number(), LOCK_EX | LOCK_NB) == 0; }

// Removes the temporary files whose writers are gone. Where the file system has no locks, or the file is
// another user's, it stays: nothing is removed on a guess.
void sweep(const std::string& folder) {
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

// The rename is on the disk only when the folder is. Some file systems cannot do that, which is no failure:
// the file itself is complete by then.
void syncFolder(const std::string& folder) {
  const Descriptor descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (descriptor.isOpen()) ::fsync(descriptor.number());
}

}  // namespace

PendingFile::PendingFile(const fs::path& target) {
  const fs::path real = destination(target);
  if (real.empty()) {
    failure_ = Failure{Failure::Kind::kInTheWay, "cannot be written: no regular file can stand there"};
    return;
  }
  target_ = real.string();
  folder_ = real.has_parent_path() ? real.parent_path().string() : ".";
  sweep(folder_);
  for (int attempt = 0; attempt < kAttempts && !open(); ++attempt) {
    if (errno != EEXIST && errno != EINTR) break;
  }
  if (!file_.isOpen()) fail(errno);
}

void PendingFile::fail(int error) {
  if (!failure_) failure_ = systemFailure(error, "written");
}

// False leaves no file, and its reason in errno.
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

PendingFile::~PendingFile() { discard(); }

bool PendingFile::write(std::string_view bytes) {
  while (good() && !bytes.empty()) {
    const ssize_t written = ::write(file_.number(), bytes.data(), bytes.size());
    if (written >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno != EINTR) {
      fail(errno);
      discard();
    }
  }
  return good();
}

Outcome PendingFile::commit(Sync sync) {
  if (!good()) return failure_ ? *failure_ : systemFailure(EBADF, "written");
  // The lock goes with the last descriptor, and has to last until the name is the target's.
  const Descriptor locked(::fcntl(file_.number(), F_DUPFD_CLOEXEC, 0));
  const bool readable = !finishedMode_ || ::fchmod(file_.number(), *finishedMode_) == 0;
  const bool stored = locked.isOpen() && readable && ::fsync(file_.number()) == 0;
  if (!stored) fail(errno);
  if (!file_.close()) fail(errno);
  if (!failure_ && std::rename(temporary_.c_str(), target_.c_str()) != 0) fail(errno);
  if (failure_) {
    discard();
    return *failure_;
  }
  temporary_.clear();
  if (sync == Sync::kFileAndFolder) syncFolder(folder_);
  return {};
}

void PendingFile::discard() {
  file_ = Descriptor();
  if (!temporary_.empty()) ::unlink(temporary_.c_str());
  temporary_.clear();
}

}  // namespace tessaly
