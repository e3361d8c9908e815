#include "platform/FileLock.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <limits>
#include <sys/stat.h>
#include <thread>

#include "platform/SystemFailure.h"

namespace tessaly {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr mode_t kMode = 0666;            // less the umask
constexpr milliseconds kLookAgain{3};     // while somebody else holds the lock
constexpr std::size_t kLongestText = 64;  // bytes

// A lock is one byte of the file, beyond its end.
bool lockByte(const Descriptor& file, std::uint64_t number) {
  struct flock range {};
  range.l_type = F_WRLCK;
  range.l_whence = SEEK_SET;
  range.l_start = static_cast<off_t>(number % (std::numeric_limits<off_t>::max() - 1));
  range.l_len = 1;
  return ::fcntl(file.number(), F_OFD_SETLK, &range) == 0;
}

}  // namespace

Expected<FileLock> FileLock::take(const std::filesystem::path& file, std::uint64_t number,
                                  milliseconds patience) {
  FileLock lock;
  lock.file_ =
      Descriptor(::open(file.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, kMode));
  struct stat status {};
  if (!lock.file_.isOpen() || ::fstat(lock.file_.number(), &status) != 0)
    return systemFailure(errno, "locked");
  if (!S_ISREG(status.st_mode))
    return Failure{Failure::Kind::kInTheWay, "cannot be locked: not a regular file"};
  const auto latest = steady_clock::now() + patience;
  while (!lockByte(lock.file_, number)) {
    if (errno != EAGAIN && errno != EACCES && errno != EINTR) return systemFailure(errno, "locked");
    if (steady_clock::now() >= latest)
      return Failure{Failure::Kind::kInUse, "is being changed by another program"};
    std::this_thread::sleep_for(kLookAgain);
  }
  return lock;
}

std::string FileLock::text() const {
  std::array<char, kLongestText> space;
  const ssize_t count = ::pread(file_.number(), space.data(), space.size(), 0);
  return count > 0 ? std::string(space.data(), static_cast<std::size_t>(count)) : std::string();
}

Outcome FileLock::setText(const std::string& text) const {
  const auto size = static_cast<ssize_t>(text.size());
  if (::pwrite(file_.number(), text.data(), text.size(), 0) == size && ::ftruncate(file_.number(), size) == 0)
    return {};
  return systemFailure(errno, "written");
}

}  // namespace tessaly
