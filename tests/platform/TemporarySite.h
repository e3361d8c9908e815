#pragma once

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <random>
#include <string>

#include "platform/SiteRoot.h"

namespace tessaly {

// A private root, removed at the end. `put` and `bytes` bypass the code under test.
class TemporarySite : public testing::Test {
 protected:
  TemporarySite() : folder_(newFolder()), root_(folder_) {}
  ~TemporarySite() override { std::filesystem::remove_all(folder_); }

  std::filesystem::path host(const std::string& relative) const { return folder_ / hostPath(relative); }

  void put(const std::string& relative, const std::string& content) const {
    std::filesystem::create_directories(host(relative).parent_path());
    std::ofstream(host(relative), std::ios::binary) << content;
  }

  std::string bytes(const std::string& relative) const {
    std::ifstream file(host(relative), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  // How many entries a folder has, left-over temporary files included.
  std::ptrdiff_t entries(const std::string& relative) const {
    return std::distance(std::filesystem::directory_iterator(host(relative)), {});
  }

 private:
  static std::filesystem::path newFolder() {
    std::random_device random;
    std::filesystem::path folder;
    do {
      folder = std::filesystem::temp_directory_path() / ("tessaly-test-" + std::to_string(random()));
    } while (!std::filesystem::create_directory(folder));
    return folder;
  }

  std::filesystem::path folder_;

 protected:
  SiteRoot root_;
};

}  // namespace tessaly
