#pragma once

#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <string>
#include <sys/syscall.h>
#include <unistd.h>
#include <vector>

// For one source of a test program.

// What is flushed while it lives, and which time it fails how.
struct Flushes {
  explicit Flushes(std::size_t fails, int how = EIO) : failing(fails), error(how) { watched = this; }
  ~Flushes() { watched = nullptr; }
  Flushes(const Flushes&) = delete;
  Flushes& operator=(const Flushes&) = delete;

  std::vector<std::string> names;
  const std::size_t failing;  // counted from 1; 0 for none
  const int error;
  inline static Flushes* watched = nullptr;
};

// In place of the system's.
extern "C" int fsync(int file) {
  Flushes* const watched = Flushes::watched;
  if (watched == nullptr) return static_cast<int>(::syscall(SYS_fsync, file));
  watched->names.push_back(
      std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(file)).filename().string());
  if (watched->names.size() != watched->failing) return 0;
  errno = watched->error;
  return -1;
}
