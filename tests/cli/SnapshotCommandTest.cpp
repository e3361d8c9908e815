#include <gmock/gmock.h>

#include "review/Snapshot.h"
#include "tests/cli/PanelCommandFixture.h"

namespace tessaly {
namespace {

using testing::HasSubstr;

constexpr const char* kFile = "c:\\saved\\panel.zip";
constexpr const char* kFolder = "c:\\show\\";

class SnapshotCommands : public PanelCommands {
 protected:
  SnapshotCommands() {
    site.write("c:\\saved\\x", "");
    EXPECT_EQ(run({"put", "8", "0", "-"}, macro("First")).code, 0);
  }
  std::string put(int workplace, const char* number, const std::string& bytes) {
    const std::string before = tree.read(remote(workplace, number));
    tree.write(remote(workplace, number), bytes);
    return before;
  }
};

TEST_F(SnapshotCommands, APanelIsStoredAndRestored) {
  const std::string eight = "workplace 8: 1 macros\n";
  EXPECT_THAT(run({"snapshot", kFile}).out, testing::EndsWith(eight));
  EXPECT_EQ(openSnapshot(site.root, kFile)->macros.size(), 3U);

  const std::string seven = put(2, "007", macro("Other"));
  const std::string last = put(2, "999", macro("Other"));
  std::filesystem::remove(tree.root.path() / remote(8, "000"));
  const Ran told = run({"restore", kFile, "--dry-run"});
  EXPECT_EQ(told.out, "2 007 - Seven\tchanged\n2 999 - Last & least\tchanged\n8 000 - First\tnew\n");
  EXPECT_EQ(tree.read(remote(2, "007")), macro("Other"));

  EXPECT_EQ(run({"restore", kFile, "2", "7"}).out, "2 007 - Seven\trestored\n");
  EXPECT_EQ(tree.read(remote(2, "999")), macro("Other"));
  const Ran all = run({"restore", kFile});
  EXPECT_EQ(all.code, 0) << all.errors;
  EXPECT_EQ(all.out, "2 007 - Seven\tsame\n2 999 - Last & least\trestored\n8 000 - First\trestored\n");
  EXPECT_EQ(tree.read(remote(2, "007")), seven);
  EXPECT_EQ(tree.read(remote(2, "999")), last);
  EXPECT_EQ(tree.read(remote(8, "000")), macro("First"));
}

TEST_F(SnapshotCommands, NothingIsRestoredOnTrust) {
  ASSERT_EQ(run({"snapshot", kFile}).code, 0);
  const std::string good = site.read(kFile);
  put(2, "007", macro("Other"));

  ASSERT_TRUE(panel.setFaults({.control = {}, .ftp = {.flipByte = 3}}));
  const Ran flipped = run({"restore", kFile, "2", "7"});
  EXPECT_EQ(flipped.code, 3) << "what the panel holds is unknown";
  EXPECT_THAT(flipped.out, testing::Not(HasSubstr("restored")));
  EXPECT_EQ(flipped.errors, "not every macro was restored\n");
  ASSERT_TRUE(panel.setFaults({}));
  put(2, "007", macro("Other"));

  std::string bad = good;
  bad[bad.find("Seven")] = 's';
  site.write(kFile, bad);
  const Ran refused = run({"restore", kFile});
  EXPECT_EQ(refused.code, 1);
  EXPECT_THAT(refused.errors, HasSubstr("damaged"));
  EXPECT_EQ(tree.read(remote(2, "007")), macro("Other"));
}

TEST_F(SnapshotCommands, GoOnAfterALostLine) {
  // in the middle of the third list of a connection
  ASSERT_TRUE(panel.setFaults({.control = {.dropAfter = 2500}}));
  const Ran stored = run({"snapshot", kFile});
  EXPECT_EQ(stored.code, 0) << stored.errors;
  EXPECT_EQ(openSnapshot(site.root, kFile)->macros.size(), 3U);
}

TEST_F(SnapshotCommands, AFolderIsStoredAndRestored) {
  const auto folder = [this](std::vector<std::string> words) { return ranOver(site, std::move(words)); };
  const std::string file = std::string(kFolder) + "macro012.mac";
  site.write(file, macro("Twelve"));
  site.write(std::string(kFolder) + "key01.upk", "#UPK");
  EXPECT_EQ(folder({"snapshot", kFolder, kFile}).out, "folder: 1 macros\n");
  EXPECT_EQ(folder({"snapshot", kFile}).out, "012 - Twelve\n");
  site.write(file, macro("Other"));
  EXPECT_EQ(folder({"restore", kFile, kFolder, "--dry-run"}).out, "012 - Twelve\tchanged\n");
  EXPECT_EQ(folder({"restore", kFile, kFolder}).out, "012 - Twelve\trestored\n");
  EXPECT_EQ(site.read(file), macro("Twelve"));
  EXPECT_THAT(folder({"history"}).out, HasSubstr("Other"));

  // From one kind of place to the other, when it is told which.
  EXPECT_EQ(run({"restore", kFile, "5"}).out, "5 012 - Twelve\trestored\n");
  EXPECT_EQ(tree.read(remote(5, "012")), macro("Twelve"));
  EXPECT_EQ(run({"restore", kFile}).code, 2);
  ASSERT_EQ(run({"snapshot", kFile}).code, 0);
  EXPECT_THAT(folder({"snapshot", kFile}).out, HasSubstr("8 000 - First\n"));
  EXPECT_EQ(folder({"restore", kFile, kFolder}).code, 2);
  EXPECT_EQ(folder({"restore", kFile, kFolder, "--workplace", "8"}).out, "000 - First\trestored\n");
  EXPECT_EQ(folder({"restore", kFile, kFolder, "3", "--workplace", "8"}).code, 1) << "there is no such macro";
  EXPECT_EQ(folder({"snapshot", "c:\\none", kFile}).code, 1);
}

}  // namespace
}  // namespace tessaly
