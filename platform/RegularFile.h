#pragma once

#include <cstddef>
#include <filesystem>
#include <sys/stat.h>

#include "platform/Descriptor.h"
#include "platform/FilePolicy.h"
#include "platform/Outcome.h"

namespace tessaly {

// A regular file open for reading. Pipes, devices and folders are refused: they would block, or never end.
class RegularFile {
 public:
  static Expected<RegularFile> open(const std::filesystem::path& path) {
    return open(path, filePolicy(path));
  }
  static Expected<RegularFile> open(const std::filesystem::path& path, FilePolicy policy);

  [[nodiscard]] std::size_t size() const { return static_cast<std::size_t>(status_.st_size); }

  // True when `path` leads to this very file.
  [[nodiscard]] bool isAt(const std::filesystem::path& path) const;

  // Fills `space` as far as the file goes; the count of bytes, 0 at the end.
  [[nodiscard]] Expected<std::size_t> read(char* space, std::size_t size) const;

 private:
  Descriptor descriptor_;
  struct stat status_ {};
};

}  // namespace tessaly
