#include <filesystem>
#include <gtest/gtest.h>

#include "panelsim/PanelTree.h"
#include "tests/support/TestSite.h"

namespace tessaly {
namespace {

// A file may be written twice within the grain of its time. One that was young when it was read may have
// changed since without a sign; of an old one the time is believed.
TEST(PanelTree, AYoungFileIsReadAgainThoughItsTimeAndSizeAreTheSame) {
  TestSite tree;
  PanelTree panel(tree.root.path());
  ASSERT_TRUE(panel.prepare());
  for (const char* folder : {"workplace1", "workplace8"})
    EXPECT_TRUE(std::filesystem::is_directory(tree.root.path() / "flash/data/PANEL/macro" / folder));
  const auto now = std::filesystem::file_time_type::clock::now();
  const auto path = tree.root.path() / "flash/data/PANEL/macro/workplace1/macro001.mac";
  const auto write = [&](const std::string& name, std::filesystem::file_time_type time) {
    tree.write(path.string(), "<macro name=\"" + name + "\"><data/></macro>");
    std::filesystem::last_write_time(path, time);
    return panel.names(1)[1];
  };
  EXPECT_EQ(write("One", now), "One");
  EXPECT_EQ(write("Two", now), "Two");
  EXPECT_EQ(write("Old", now - std::chrono::hours(1)), "Old");
  EXPECT_EQ(write("New", now - std::chrono::hours(1)), "Old");
  EXPECT_EQ(write("Later", now - std::chrono::hours(1)), "Later") << "another size";
}

}  // namespace
}  // namespace tessaly
