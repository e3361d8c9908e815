#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/Messages.h"
#include "platform/SiteAccess.h"
#include "platform/SiteRoot.h"

// What the fuzz targets share. One thread.
namespace tessaly {

// Ends the program when a rule of the code under test does not hold.
inline void require(bool holds, const char* rule) {
  if (holds) return;
  std::fprintf(stderr, "broken rule: %s\n", rule);
  std::abort();
}

// The bytes of one run as fields, from the front: texts end at a NUL, so that seeds can be written by hand.
// Behind the end everything is empty and zero.
class FuzzInput {
 public:
  FuzzInput(const std::uint8_t* data, std::size_t size) : left_(reinterpret_cast<const char*>(data), size) {}

  [[nodiscard]] bool empty() const { return left_.empty(); }

  std::string_view text() {
    const std::string_view field = left_.substr(0, left_.find('\0'));
    left_.remove_prefix(std::min(field.size() + 1, left_.size()));
    return field;
  }

  std::uint8_t byte() {
    if (left_.empty()) return 0;
    const auto first = static_cast<std::uint8_t>(left_.front());
    left_.remove_prefix(1);
    return first;
  }

  std::string_view rest() { return std::exchange(left_, {}); }

 private:
  std::string_view left_;
};

// A site in a folder of its own, in memory where the system has such a place.
class ScratchSite : private Messages {
 public:
  ScratchSite() : root(makeFolder()) { std::filesystem::create_directories(root.path() / "c"); }
  ~ScratchSite() override {
    std::error_code ignored;
    std::filesystem::remove_all(root.path(), ignored);
  }
  ScratchSite(const ScratchSite&) = delete;
  ScratchSite& operator=(const ScratchSite&) = delete;

  SiteAccess access() { return {root, *this}; }

  // The path is below the root; its folder must exist.
  void put(const std::string& path, std::string_view bytes) const {
    std::ofstream file(root.path() / path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    require(static_cast<bool>(file.flush()), "the scratch folder takes a file");
  }

  [[nodiscard]] std::string bytes(const std::string& path) const {
    std::ifstream file(root.path() / path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  }

  const SiteRoot root;
  std::size_t shown = 0;  // messages

 private:
  // Whether a user may write to the memory's folder is only known by trying.
  static std::filesystem::path makeFolder() {
    for (const std::filesystem::path& place :
         {std::filesystem::path("/dev/shm"), std::filesystem::temp_directory_path()}) {
      std::string folder = (place / "tessaly-fuzz-XXXXXX").string();
      const bool wanted = place != "/dev/shm" || std::getenv("TMPDIR") == nullptr;
      if (wanted && ::mkdtemp(folder.data()) != nullptr) return folder;
    }
    require(false, "there is a place for a scratch folder");
    return {};
  }

  void show(const std::string&, MessageIcon) override { ++shown; }
  bool ask(const std::string&, MessageIcon) override {
    ++shown;
    return false;
  }
};

}  // namespace tessaly
