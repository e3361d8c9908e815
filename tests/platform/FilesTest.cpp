#include <array>
#include <cerrno>
#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "TemporarySite.h"
#include "platform/Files.h"
#include "platform/PendingFile.h"
#include "platform/WayBack.h"
#include "tests/support/WatchedFlushes.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;

class FilesTest : public TemporarySite {
 protected:
  FilesTest() { put("c/old.mac", "old"); }
};

// While it lives, a file cannot grow beyond `bytes`, as on a full disk.
class FullDisk {
 public:
  explicit FullDisk(rlim_t bytes) {
    std::signal(SIGXFSZ, SIG_IGN);
    ::getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit limit{bytes, before_.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FullDisk() { ::setrlimit(RLIMIT_FSIZE, &before_); }

 private:
  rlimit before_;
};

TEST_F(FilesTest, WrittenBytesComeBackAndNothingElseStays) {
  const std::string content("a\0\r\n\xFF", 5);
  ::chmod(host("c/old.mac").c_str(), 0604);
  const mode_t mask = ::umask(027);
  EXPECT_TRUE(writeFile(root_, "C:\\OLD.mac", content));
  EXPECT_TRUE(writeFile(root_, "c:\\empty", ""));
  ::umask(mask);
  EXPECT_EQ(bytes("c/old.mac"), content);
  EXPECT_EQ(fs::status(host("c/old.mac")).permissions(), fs::perms(0604)) << "the old file's mode is kept";
  EXPECT_EQ(fs::status(host("c/empty")).permissions(), fs::perms(0640));
  EXPECT_EQ(entries("c"), 2);
  EXPECT_EQ(readFile(root_, "c:\\old.MAC"), content);
  EXPECT_EQ(readFilePrefix(root_, "c:\\old.mac", 2), content.substr(0, 2));
  EXPECT_EQ(readFilePrefix(root_, "c:\\empty", 2), "");
}

#ifndef __clang__  // whose sanitizers want descriptors of their own
// Catches a file that is taken for missing, and so neither kept nor asked about, while its folder cannot be
// listed.
TEST_F(FilesTest, WhatCannotBeLookedForIsNotMissing) {
  const std::string path = "c:\\OLD.mac";
  const SiteRoot& root = root_;  // a sanitizer may want a descriptor to look at this object
  rlimit before;
  ::getrlimit(RLIMIT_NOFILE, &before);
  const rlimit none{0, before.rlim_max};
  ::setrlimit(RLIMIT_NOFILE, &none);
  const Failure failures[] = {readFile(root, path).failure(), writeFile(root, path, "new").failure(),
                              removeFile(root, path).failure(), copyFile(root, path, "c:\\b").failure()};
  const bool listed = listFolder(root, "c:").has_value();
  ::setrlimit(RLIMIT_NOFILE, &before);
  for (const Failure& failure : failures)
    EXPECT_EQ(failure, (Failure{Failure::Kind::kDiskError, "cannot be found: Too many open files"}));
  EXPECT_FALSE(listed) << "nor is its folder empty";
  EXPECT_EQ(bytes("c/old.mac"), "old");
  EXPECT_EQ(entries("c"), 1);
}
#endif

TEST_F(FilesTest, AFailedWriteLeavesTheOldFile) {
  const std::string large(100'000, 'x');
  put("c/large", large);
  fs::create_directory(host("c/folder"));
  ::mkfifo(host("c/pipe").c_str(), 0600);
  fs::create_symlink("folder", host("c/toFolder"));
  const auto before = entries("c");
  for (const char* target :
       {"c:\\folder", "c:\\pipe", "c:\\toFolder", "c:\\none\\x", "c:\\old.mac\\x", "c:\\..\\x", ""}) {
    EXPECT_FALSE(writeFile(root_, target, "new")) << target;
    EXPECT_FALSE(copyFile(root_, "c:\\old.mac", target)) << target;
  }
  {
    const FullDisk disk(50'000);
    EXPECT_FALSE(writeFile(root_, "c:\\old.mac", large));
    EXPECT_FALSE(copyFile(root_, "c:\\large", "c:\\old.mac"));
  }
  EXPECT_FALSE(copyFile(root_, "c:\\none", "c:\\old.mac"));
  EXPECT_EQ(bytes("c/old.mac"), "old");
  EXPECT_EQ(entries("c"), before);
}

TEST_F(FilesTest, WhatAKilledWriterLeftGoesAndALivingOneKeepsItsFile) {
  for (const char* name : {"c/.tessaly-1-2-3.tmp", "c/.tessaly-old.tmp", "c/.tessaly.lock", "c/mine.tmp"})
    put(name, "left");
  fs::create_symlink("old.mac", host("c/.tessaly-link.tmp"));
  PendingFile pending(host("c/new.mac"));
  ASSERT_TRUE(pending.write("new"));
  EXPECT_EQ(entries("c"), 5);  // old.mac, the link, the two that are no leftovers, and the pending one
  for (const auto& entry : fs::directory_iterator(host("c"))) {
    if (entry.is_symlink() || !entry.path().filename().string().starts_with(".tessaly-")) continue;
    EXPECT_EQ(entry.status().permissions(), fs::perms(0600)) << "half a file is nobody else's";
  }
  EXPECT_TRUE(writeFile(root_, "c:\\old.mac", "other"));
  EXPECT_TRUE(pending.commit());
  EXPECT_EQ(bytes("c/new.mac"), "new");
  EXPECT_EQ(fs::status(host("c/new.mac")).permissions(), fs::status(host("c/old.mac")).permissions());
  EXPECT_EQ(entries("c"), 5);
}

TEST_F(FilesTest, LinksAreWrittenWhereTheyLead) {
  put("d/real", "");
  fs::create_symlink("../d/real", host("c/link"));
  fs::create_symlink("nowhere", host("c/dangling"));
  EXPECT_FALSE(canOpen(root_, "c:\\dangling"));
  EXPECT_TRUE(writeFile(root_, "c:\\LINK", "1"));
  EXPECT_TRUE(writeFile(root_, "c:\\dangling", "2"));
  EXPECT_EQ(bytes("d/real"), "1");
  EXPECT_TRUE(fs::is_symlink(host("c/link")));
  EXPECT_EQ(bytes("c/dangling"), "2");
}

// Also for root, whom no mode stops.
TEST_F(FilesTest, AWriteProtectedFileIsNeitherReplacedNorRemoved) {
  PendingFile pending(host("c/old.mac"));
  ASSERT_TRUE(pending.write("new"));
  ::chmod(host("c/old.mac").c_str(), 0444);
  fs::create_symlink("old.mac", host("c/link"));
  put("c/new.mac", "new");
  for (const Outcome& outcome :
       {writeFile(root_, "c:\\old.mac", "new"), copyFile(root_, "c:\\new.mac", "c:\\link"),
        removeFile(root_, "c:\\old.mac"), pending.commit()}) {
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.failure().kind, Failure::Kind::kWriteProtected);
  }
  EXPECT_EQ(bytes("c/old.mac"), "old");
  EXPECT_EQ(entries("c"), 3);
}

// Who may write into the folder could have put a link there, to a file that only we may read or write.
TEST_F(FilesTest, FilesOfOurOwnAreNotReachedThroughLinks) {
  for (const char* name : {"c/macrofid/tempA.mac", "c/MacroFid/TEMPCLASSIC.mac", "c/MacroFid/Settings.dat",
                           "recovery/paneB.txt", "recovery/paneA.mac"}) {
    fs::create_directories(host(name).parent_path());
    fs::create_symlink(host("c/old.mac"), host(name));
    EXPECT_FALSE(readFile(root_, name)) << name;
    EXPECT_FALSE(readFilePrefix(root_, name, 1)) << name;
    EXPECT_TRUE(writeFile(root_, name, "ours")) << name;
    EXPECT_EQ(bytes(name), "ours");
    EXPECT_EQ(bytes("c/old.mac"), "old") << name;
  }
  for (const char* name : {"c/MacroFid/other.mac", "c/other/tempA.mac"}) {
    fs::create_directories(host(name).parent_path());
    fs::create_symlink(host("c/old.mac"), host(name));
    EXPECT_EQ(readFile(root_, name), "old") << name;
  }
  fs::create_directory_symlink(host("c"), host("history"));
  EXPECT_EQ(makeOwnFolder(host("history")).failure().kind, Failure::Kind::kInTheWay);
  EXPECT_TRUE(makeOwnFolder(host("recovery")));
}

TEST_F(FilesTest, WhatIsFlushedIsLookedAt) {
  struct Case {
    std::size_t failing;  // 1 is the file, 2 its folder
    int error;
    std::optional<Failure::Kind> kind;
    const char* content;
  };
  using Kind = Failure::Kind;
  for (const Case& one : {Case{1, EIO, Kind::kDiskError, "old"}, Case{2, EIO, Kind::kUnflushed, "new"},
                          Case{1, EINVAL, std::nullopt, "new"}, Case{2, EINVAL, std::nullopt, "new"}}) {
    put("c/old.mac", "old");
    const Flushes flushes(one.failing, one.error);
    const Outcome outcome = writeFile(root_, "c:\\old.mac", "new");
    EXPECT_EQ(outcome ? std::nullopt : std::optional(outcome.failure().kind), one.kind) << one.failing;
    EXPECT_EQ(bytes("c/old.mac"), one.content);
    EXPECT_EQ(entries("c"), 1);
  }
  {
    const Flushes removal(1);
    EXPECT_EQ(removeFile(root_, "c:\\old.mac").failure().kind, Kind::kUnflushed);
    EXPECT_EQ(removal.names, std::vector<std::string>{"c"});
  }
  for (const std::size_t failing : {0U, 2U}) {
    fs::remove_all(host("c/one"));
    const Flushes flushes(failing);
    EXPECT_EQ(makeFolder(root_, "c:\\one\\two").done(), failing == 0);
    EXPECT_EQ(flushes.names, (std::vector<std::string>{"c", "one"}))
        << "a new folder is a name in its parent";
  }
}

TEST_F(FilesTest, WhatIsPutBehindAFileIsThereOrNot) {
  put("c/log", "abcdef");
  EXPECT_TRUE(appendToOwnFile(root_, "c:\\log", 3, "XY")) << "what was behind has not happened";
  EXPECT_TRUE(appendToOwnFile(root_, "c:\\log", 5, "Z"));
  EXPECT_EQ(appendToOwnFile(root_, "c:\\log", 7, "Z").failure().kind, Failure::Kind::kChanged);
  EXPECT_EQ(appendToOwnFile(root_, "c:\\none", 0, "Z").failure().kind, Failure::Kind::kMissing);
  fs::create_symlink("old.mac", host("c/link"));
  EXPECT_FALSE(appendToOwnFile(root_, "c:\\link", 0, "Z") || appendToOwnFile(root_, "c:", 0, "Z"));
  {
    const FullDisk disk(8);
    EXPECT_FALSE(appendToOwnFile(root_, "c:\\log", 6, "0123"));
  }
  EXPECT_EQ(bytes("c/log"), "abcXYZ") << "nothing of it stays";
  {
    const Flushes flushes(1);
    EXPECT_EQ(appendToOwnFile(root_, "c:\\log", 6, "0123").failure().kind, Failure::Kind::kDiskError);
  }
  EXPECT_EQ(bytes("c/log"), "abcXYZ");
  EXPECT_TRUE(moveOwnFile(root_, "c:\\log", "c:\\moved"));
  EXPECT_EQ(moveOwnFile(root_, "c:\\log", "c:\\moved").failure().kind, Failure::Kind::kMissing);
  EXPECT_FALSE(moveOwnFile(root_, "c:\\moved", ""));
  EXPECT_TRUE(isThisUsers(root_, "c:\\moved"));
  EXPECT_FALSE(isThisUsers(root_, "c:\\log") || isThisUsers(root_, "c:") || isThisUsers(root_, "c:\\link"));
}

TEST_F(FilesTest, NothingChangesOnceItsThreadIsGivenUp) {
  using Left = WayBack::Left;
  put("recovery/paneA.txt", "");
  {
    WayBack way;
    const WayBack::Walk walk(way);
    EXPECT_TRUE(writeFile(root_, "recovery\\paneA.txt", "ours"));
    EXPECT_EQ(way.giveUp(), Left::kAsBefore) << "none of the user's files";
    EXPECT_TRUE(WayBack::givenUp());
    for (const Outcome& outcome : {writeFile(root_, "c:\\old.mac", "new"), removeFile(root_, "c:\\old.mac"),
                                   writeFile(root_, "recovery\\paneA.txt", "new")})
      EXPECT_EQ(outcome.failure().kind, Failure::Kind::kCancelled);
  }
  EXPECT_EQ(bytes("c/old.mac") + bytes("recovery/paneA.txt"), "oldours");
  EXPECT_FALSE(WayBack::givenUp());
  for (const bool users : {false, true}) {
    WayBack way;
    const WayBack::Walk walk(way);
    { const WayBack::Change failing(true); }
    const WayBack::Change change(users);
    EXPECT_EQ(way.giveUp(), users ? Left::kUnknown : Left::kAsBefore);
  }
  WayBack way;
  const WayBack::Walk walk(way);
  EXPECT_TRUE(writeFile(root_, "c:\\old.mac", "new"));
  EXPECT_EQ(way.giveUp(), Left::kChanged);
}

TEST_F(FilesTest, CopiesAreWholeAndWritable) {
  const std::string large(200'000, 'y');
  put("c/large", large);
  ::chmod(host("c/large").c_str(), 0444);
  EXPECT_TRUE(copyFile(root_, "c:\\large", "c:\\OLD.MAC"));
  EXPECT_EQ(bytes("c/old.mac"), large);
  EXPECT_NE(fs::status(host("c/old.mac")).permissions() & fs::perms::owner_write, fs::perms::none);
  EXPECT_TRUE(copyFile(root_, "c:\\large", "C:/Large"));
  EXPECT_EQ(fs::status(host("c/large")).permissions(), fs::perms(0444));  // not even touched
  EXPECT_EQ(entries("c"), 2);
}

TEST_F(FilesTest, OnlyRegularFilesAreRead) {
  ::mkfifo(host("c/pipe").c_str(), 0600);
  for (const char* path : {"c:", "c:\\pipe", "/dev/zero", "c:\\none", "c:\\old.mac\\x", ""}) {
    EXPECT_FALSE(readFile(root_, path)) << path;
    EXPECT_FALSE(readFilePrefix(root_, path, 1)) << path;
    EXPECT_FALSE(canOpen(root_, path)) << path;
    EXPECT_FALSE(isRegularFile(root_, path)) << path;
  }
  EXPECT_TRUE(canOpen(root_, "c:\\old.mac"));
  EXPECT_FALSE(readFile(root_, "c:\\old.mac", 2));
  EXPECT_EQ(readFile(root_, "c:\\old.mac", 3), "old");
}

TEST_F(FilesTest, FoldersAreMadeListedAndLeftAloneByRemove) {
  for (const char* name : {"c/b.mac", "c/A.MAC", "c/a.mac", "c/_.upk", "c/amac"}) put(name, "");
  EXPECT_TRUE(makeFolder(root_, "C:\\Sub.mac\\deep"));
  using Names = std::vector<std::string>;
  EXPECT_EQ(listFolder(root_, "c:", ".mac"), (Names{"A.MAC", "a.mac", "b.mac", "old.mac"}));
  EXPECT_EQ(listFolder(root_, "c:\\"),
            (Names{"A.MAC", "a.mac", "amac", "b.mac", "old.mac", "Sub.mac", "_.upk"}));
  EXPECT_TRUE(listFolder(root_, "c:\\none")->empty());
  EXPECT_TRUE(listFolder(root_, "..")->empty());
  EXPECT_TRUE(makeFolder(root_, "c:\\sub.MAC"));
  EXPECT_FALSE(makeFolder(root_, "c:\\old.mac"));
  EXPECT_FALSE(removeFile(root_, "c:\\sub.mac\\deep"));
  EXPECT_TRUE(removeFile(root_, "c:\\OLD.mac"));
  EXPECT_FALSE(fs::exists(host("c/old.mac")));
}

}  // namespace
}  // namespace tessaly
