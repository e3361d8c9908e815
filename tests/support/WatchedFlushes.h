#pragma once

#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <string>
#include <sys/syscall.h>
#include <unistd.h>
#include <vector>

// For one source of a test program.

// What is flushed, and which time it fails how.
struct Flushes {
  std::vector<std::string> names;
  std::size_t failing = 0;  // counted from 1; 0 for none
  int error = 0;
};
inline Flushes* watched = nullptr;

// In place of the system's.
extern "C" int fsync(int file) {
  if (watched == nullptr) return static_cast<int>(::syscall(SYS_fsync, file));
  watched->names.push_back(
      std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(file)).filename().string());
  if (watched->names.size() != watched->failing) return 0;
  errno = watched->error;
  return -1;
}
