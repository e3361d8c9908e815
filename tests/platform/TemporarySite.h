#pragma once

#include <gtest/gtest.h>

#include "tests/support/TestSite.h"

namespace tessaly {

// A private root, removed at the end. `put` and `bytes` bypass the code under test.
class TemporarySite : public testing::Test {
 protected:
  std::filesystem::path host(const std::string& relative) const { return root_.path() / hostPath(relative); }

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
  TestSite site_;

 protected:
  const SiteRoot& root_ = site_.root;
};

}  // namespace tessaly
