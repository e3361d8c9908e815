#pragma once

#include <filesystem>
#include <gtest/gtest.h>
#include <string>

#include "model/StepsFile.h"
#include "tests/support/TestSite.h"

namespace tessaly {

namespace fs = std::filesystem;

inline constexpr const char* kPath = "recovery\\paneA.steps";
inline const MacroPlace kPlace{"c:\\macros\\macro007.mac", {}, 0, {}};

// A working copy of one line of text.
class Copy {
 public:
  Copy(const SiteRoot& root, std::string start) : file(root, kPath), bytes(std::move(start)) {
    file.begin(kPlace, contentCheck(bytes));
  }
  void step(const std::string& after, bool done = true) {
    const int from = static_cast<int>(bytes.size()), to = static_cast<int>(after.size());
    file.announce(EditStep{"to " + after,
                           {from},
                           {to, static_cast<int>(file.row().position())},
                           byteChange(bytes, after),
                           contentCheck(after)});
    file.settle(done);
    if (done) bytes = after;
  }
  void go(std::size_t position) {
    const auto there = file.row().bytesAt(position, bytes);
    ASSERT_TRUE(there);
    file.announce(StepsMove{static_cast<int>(position) - static_cast<int>(file.row().position())});
    file.settle(true);
    bytes = *there;
  }

  StepsFile file;
  std::string bytes;
};

inline std::string rowText(const EditHistory& row) { return stepsText(kPlace, row); }

struct StepsFileTest : testing::Test, TestSite {
  // Steps over "a", "ab", "abc" and back to "ab"; "a" is saved.
  Copy worked() {
    fs::remove_all(root.resolve("recovery"));
    Copy copy(root, "a");
    copy.file.noteSaved(contentCheck("a"));
    copy.step("ab");
    copy.step("abc");
    copy.go(1);
    return copy;
  }
};

}  // namespace tessaly
