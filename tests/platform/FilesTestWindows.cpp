#include <gmock/gmock.h>
#include <memory>

#include "TemporarySite.h"
#include "platform/FileLock.h"
#include "platform/Files.h"
#include "platform/OpenFileWindows.h"
#include "platform/PendingFile.h"
#include "platform/RaiseSocket.h"
#include "platform/SiteLock.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using Kind = Failure::Kind;
using testing::ElementsAre;

class FilesTest : public TemporarySite {
 protected:
  FilesTest() { put("c/old.mac", "old"); }
};

TEST_F(FilesTest, WrittenBytesComeBackAndNothingElseStays) {
  const std::string content("a\0\r\n\x1A\xFF", 6);
  ::SetFileAttributesW(host("c/old.mac").c_str(), FILE_ATTRIBUTE_HIDDEN);
  EXPECT_TRUE(writeFile(root_, "C:\\OLD.mac", content));
  EXPECT_TRUE(writeFile(root_,
                        "c:\\K\xFC"
                        "che.mac",
                        ""));
  EXPECT_EQ(bytes("c/old.mac"), content);
  EXPECT_NE(::GetFileAttributesW(host("c/old.mac").c_str()) & FILE_ATTRIBUTE_HIDDEN, 0U);
  EXPECT_THAT(*listFolder(root_, "c:\\", ".MAC"), ElementsAre("K\u00FCche.mac", "old.mac"));
  EXPECT_EQ(readFile(root_, "c:\\old.MAC"), content);
}

TEST_F(FilesTest, WhatTheSystemKeepsForItselfNamesNothing) {
  for (const std::string name : {"NUL", "con.mac", "COM1", "lpt\u00B9.mac", "Aux .mac", "old.mac:stream",
                                 "old.mac.", "old.mac ", "ol?.mac", "..", "old.mac\\x", "none\\x"}) {
    EXPECT_FALSE(writeFile(root_, "c:\\" + name, "new")) << name;
    EXPECT_FALSE(readFile(root_, "c:\\" + name)) << name;
    EXPECT_FALSE(copyFile(root_, "c:\\old.mac", "c:\\" + name)) << name;
    EXPECT_FALSE(makeFolder(root_, "c:\\" + name) && name != "none\\x") << name;
  }
  EXPECT_FALSE(writeFile(root_, "c:\\", "new"));
  EXPECT_EQ(bytes("c/old.mac"), "old");
}

TEST_F(FilesTest, NoPathIsTooLong) {
  std::string folder = "c:";
  for (int i = 0; i < 6; ++i) folder += '\\' + std::string(60, static_cast<char>('a' + i));
  ASSERT_TRUE(makeFolder(root_, folder));
  EXPECT_TRUE(writeFile(root_, folder + "\\one.mac", "1"));
  EXPECT_TRUE(copyFile(root_, folder + "\\ONE.mac", folder + "\\two.mac"));
  EXPECT_EQ(readFile(root_, folder + "\\two.mac"), "1");
  EXPECT_TRUE(removeFile(root_, folder + "\\one.mac"));
  EXPECT_THAT(*listFolder(root_, folder), ElementsAre("two.mac"));
  EXPECT_TRUE(removeFile(root_, folder + "\\two.mac"));
  // What the library could not remove by itself.
  for (fs::path left = root_.resolve(folder); left.filename() != "c"; left = left.parent_path())
    EXPECT_NE(::RemoveDirectoryW(widePath(left).c_str()), 0);
}

// Neither read half nor replaced, and whoever asks is told that somebody has it.
TEST_F(FilesTest, AFileThatAnotherProgramHasOpenStays) {
  const auto before = entries("c");
  {
    const Descriptor other =
        openFile(host("c/old.mac"), {.access = GENERIC_READ | GENERIC_WRITE, .sharing = 0});
    ASSERT_TRUE(other.isOpen());
    for (const Outcome& outcome :
         {writeFile(root_, "c:\\old.mac", "new"), removeFile(root_, "c:\\old.mac")}) {
      ASSERT_FALSE(outcome);
      EXPECT_EQ(outcome.failure().kind, Kind::kInUse) << outcome.failure().text;
    }
    EXPECT_EQ(readFile(root_, "c:\\old.mac").failure().kind, Kind::kInUse);
  }
  EXPECT_EQ(bytes("c/old.mac"), "old");
  EXPECT_EQ(entries("c"), before);
  const Descriptor reader = openFile(host("c/old.mac"), {.sharing = FILE_SHARE_READ});
  EXPECT_TRUE(readFile(root_, "c:\\old.mac"));
}

TEST_F(FilesTest, AWriteProtectedFileIsNeitherReplacedNorRemoved) {
  PendingFile pending(host("c/old.mac"));
  ASSERT_TRUE(pending.write("new"));
  ::SetFileAttributesW(host("c/old.mac").c_str(), FILE_ATTRIBUTE_READONLY);
  for (const Outcome& outcome :
       {writeFile(root_, "c:\\old.mac", "new"), removeFile(root_, "c:\\old.mac"), pending.commit()}) {
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.failure().kind, Kind::kWriteProtected);
  }
  EXPECT_EQ(bytes("c/old.mac"), "old");
  EXPECT_EQ(entries("c"), 1);
  ::SetFileAttributesW(host("c/old.mac").c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(FilesTest, WhatAKilledWriterLeftGoesAndALivingOneKeepsItsFile) {
  for (const char* name : {"c/.tessaly-1-2-3.tmp", "c/.tessaly.lock", "c/mine.tmp"}) put(name, "left");
  PendingFile pending(host("c/new.mac"));
  ASSERT_TRUE(pending.write("new"));
  EXPECT_TRUE(writeFile(root_, "c:\\old.mac", "other"));
  EXPECT_EQ(entries("c"), 4);  // old.mac, the two that are no leftovers, and the pending one
  EXPECT_TRUE(pending.commit());
  EXPECT_EQ(bytes("c/new.mac"), "new");
  EXPECT_EQ(entries("c"), 4);
}

TEST_F(FilesTest, OwnFilesGrowAndLocksHaveOneHolder) {
  ASSERT_TRUE(writeOwnFile(root_, "steps", "12345"));
  EXPECT_TRUE(appendToOwnFile(root_, "steps", 3, "abc"));
  EXPECT_EQ(bytes("steps"), "123abc");
  EXPECT_EQ(appendToOwnFile(root_, "steps", 7, "x").failure().kind, Kind::kChanged);
  constexpr std::chrono::milliseconds kShort{10};
  const auto one = FileLock::take(host("lock"), 1, kShort), two = FileLock::take(host("lock"), 2, kShort);
  ASSERT_TRUE(one && two);
  EXPECT_TRUE(one->setText("0123456789"));
  EXPECT_TRUE(one->setText("kept"));
  EXPECT_EQ(two->text(), "kept");
  EXPECT_EQ(FileLock::take(host("lock"), 1, kShort).failure().kind, Kind::kInUse);
}

TEST_F(FilesTest, ASiteHasOneProgram) {
  using Claim = SiteLock::Claim;
  const struct {
    const char* record;
    Claim claim, takenOver;
  } cases[] = {{"", Claim::kHeld, Claim::kHeld},
               {"4711\ntessaly\nstudio-2\nanna\n1700000000\n", Claim::kInUse, Claim::kHeld}};
  for (const auto& one : cases) {
    put(".tessaly.lock", one.record);
    auto lock = std::make_unique<SiteLock>(root_);
    ASSERT_EQ(lock->claim(), one.claim);
    EXPECT_EQ(one.claim == Claim::kHeld ? Claim::kHeld : lock->takeOver(), one.takenOver);
    SiteLock second(root_);
    EXPECT_EQ(second.claim(), Claim::kInUse);
    EXPECT_EQ(second.holder().process, static_cast<std::int64_t>(::GetCurrentProcessId()));
    EXPECT_EQ(second.takeOver(), Claim::kHeld);
    lock.reset();
    EXPECT_EQ(SiteLock(root_).claim(), Claim::kInUse) << "what was taken over is not given back";
  }
  EXPECT_FALSE(fs::exists(host(".tessaly.lock")));
  fs::create_directory(host(".tessaly.lock"));
  EXPECT_EQ(SiteLock(root_).claim(), Claim::kInTheWay);
}

TEST_F(FilesTest, OnlyAWindowThatAnswersComesToTheFront) {
  constexpr std::chrono::milliseconds kShort{20}, kLong{10000};
  EXPECT_FALSE(askToRaise(root_, kLong)) << "nobody listens";
  const RaiseSocket socket(root_);
  EXPECT_FALSE(askToRaise(root_, kShort)) << "the window hangs";
  std::atomic<bool> raised{false};
  std::thread window([&] {
    while (!raised) raised = socket.answer() || raised;
  });
  EXPECT_TRUE(askToRaise(SiteRoot(root_.path() / "."), kLong));
  raised = true;
  window.join();
}

}  // namespace
}  // namespace tessaly
