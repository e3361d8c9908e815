#include "platform/RegularFile.h"

#include <cerrno>
#include <fcntl.h>

#include "platform/SystemFailure.h"

namespace tessaly {

Expected<RegularFile> RegularFile::open(const std::filesystem::path& path, FilePolicy policy) {
  RegularFile file;
  const int links = policy.followsLinks ? 0 : O_NOFOLLOW;
  file.descriptor_ = Descriptor(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | links));
  if (!file.descriptor_.isOpen() || ::fstat(file.descriptor_.number(), &file.status_) != 0)
    return systemFailure(errno, "opened");
  if (!S_ISREG(file.status_.st_mode))
    return Failure{Failure::Kind::kInTheWay, "cannot be opened: not a regular file"};
  return file;
}

bool RegularFile::isAt(const std::filesystem::path& path) const {
  struct stat other;
  return ::stat(path.c_str(), &other) == 0 && other.st_dev == status_.st_dev &&
         other.st_ino == status_.st_ino;
}

Expected<std::size_t> RegularFile::read(char* space, std::size_t size) const {
  std::size_t count = 0;
  while (count < size) {
    const ssize_t got = ::read(descriptor_.number(), space + count, size - count);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return systemFailure(errno, "read");
    if (got == 0) break;
    count += static_cast<std::size_t>(got);
  }
  return count;
}

}  // namespace tessaly
