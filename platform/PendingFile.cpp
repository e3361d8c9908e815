#include "platform/PendingFile.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>

#include "platform/Text.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;

constexpr int kAttempts = 100;  // names tried when others' temporary files are in the way
constexpr mode_t kMode = 0644;

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
  return format(".tessaly-%lx-%lx-%x.tmp", static_cast<unsigned long>(::getpid()),
                static_cast<unsigned long>(now.tv_nsec), count++);
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
  if (real.empty()) return;
  target_ = real.string();
  folder_ = real.has_parent_path() ? real.parent_path().string() : ".";
  for (int attempt = 0; attempt < kAttempts && !file_.isOpen(); ++attempt) {
    temporary_ = folder_ + '/' + temporaryName();
    file_ =
        Descriptor(::open(temporary_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, kMode));
    if (!file_.isOpen() && errno != EEXIST && errno != EINTR) break;
  }
  if (!file_.isOpen()) temporary_.clear();
}

PendingFile::~PendingFile() { discard(); }

bool PendingFile::write(std::string_view bytes) {
  while (good() && !bytes.empty()) {
    const ssize_t written = ::write(file_.number(), bytes.data(), bytes.size());
    if (written >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno != EINTR) {
      discard();
    }
  }
  return good();
}

bool PendingFile::commit() {
  if (!good()) return false;
  const bool stored = ::fsync(file_.number()) == 0;
  const bool closed = file_.close();
  if (!stored || !closed || std::rename(temporary_.c_str(), target_.c_str()) != 0) {
    discard();
    return false;
  }
  temporary_.clear();
  syncFolder(folder_);
  return true;
}

void PendingFile::discard() {
  file_ = Descriptor();
  if (!temporary_.empty()) ::unlink(temporary_.c_str());
  temporary_.clear();
}

}  // namespace tessaly
