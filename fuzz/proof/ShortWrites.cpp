// Loaded into a program before the system's own: every write to a file takes half of what it is given, as a
// disk that is nearly full or a signal may have it.

#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

size_t taken(int file, size_t size) {
  struct stat status {};
  const bool isFile = ::fstat(file, &status) == 0 && S_ISREG(status.st_mode);
  return isFile && size > 1 ? size / 2 : size;
}

}  // namespace

extern "C" ssize_t write(int file, const void* bytes, size_t size) {
  return ::syscall(SYS_write, file, bytes, taken(file, size));
}

extern "C" ssize_t pwrite64(int file, const void* bytes, size_t size, off64_t at) {
  return ::syscall(SYS_pwrite64, file, bytes, taken(file, size), at);
}

extern "C" ssize_t pwrite(int file, const void* bytes, size_t size, off_t at) {
  return pwrite64(file, bytes, size, at);
}
