#include "fuzz/crash/FlushWatch.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <mutex>
#include <set>
#include <sys/syscall.h>
#include <unistd.h>

namespace tessaly {
namespace {

namespace fs = std::filesystem;

struct Watch {
  std::mutex mutex;  // transfers have a thread of their own
  bool active = false;
  std::size_t flushes = 0, failing = 0;
  std::set<std::string> flushed;  // files and folders
  std::set<std::string> open;     // folders with names that are not on the disk yet
  std::string fault;
};

Watch& watch() {
  static Watch theOne;
  return theOne;
}

std::string folderOf(const std::string& path) { return fs::path(path).parent_path().string(); }

// False when this flush is to fail.
bool noteFlush(int file) {
  const std::scoped_lock guard(watch().mutex);
  if (!watch().active) return true;
  if (++watch().flushes == watch().failing) return false;
  const std::string path = fs::read_symlink("/proc/self/fd/" + std::to_string(file)).string();
  watch().flushed.insert(path);
  watch().open.erase(path);
  return true;
}

void noteName(const std::string& path) {
  const std::scoped_lock guard(watch().mutex);
  if (watch().active) watch().open.insert(folderOf(path));
}

void noteRename(const std::string& from) {
  const std::scoped_lock guard(watch().mutex);
  if (watch().active && !watch().flushed.contains(from)) watch().fault = from + " was put in place unflushed";
}

}  // namespace

void FlushWatch::start(std::size_t failing) {
  const std::scoped_lock guard(watch().mutex);
  watch().active = true;
  watch().flushes = 0;
  watch().failing = failing;
  watch().flushed.clear();
  watch().open.clear();
  watch().fault.clear();
}

void FlushWatch::stop() {
  const std::scoped_lock guard(watch().mutex);
  watch().active = false;
}

std::size_t FlushWatch::flushes() {
  const std::scoped_lock guard(watch().mutex);
  return watch().flushes;
}

std::string FlushWatch::fault() {
  const std::scoped_lock guard(watch().mutex);
  if (!watch().fault.empty() || watch().open.empty()) return watch().fault;
  return "names in " + *watch().open.begin() + " were left unflushed";
}

}  // namespace tessaly

extern "C" int fsync(int file) {
  if (tessaly::noteFlush(file)) return static_cast<int>(::syscall(SYS_fsync, file));
  errno = EIO;
  return -1;
}

extern "C" int rename(const char* from, const char* to) noexcept {
  tessaly::noteRename(from);
  tessaly::noteName(to);
  return static_cast<int>(::syscall(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0));
}

extern "C" int mkdir(const char* path, mode_t mode) noexcept {
  const int result = static_cast<int>(::syscall(SYS_mkdirat, AT_FDCWD, path, mode));
  const int error = errno;
  if (result == 0) tessaly::noteName(path);
  errno = error;
  return result;
}
