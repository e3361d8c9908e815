#include <gtest/gtest.h>

#include "app/RecoveryFile.h"
#include "platform/Files.h"
#include "tests/support/TestSite.h"

namespace tessaly {
namespace {

constexpr const char* kRecord = "recovery\\paneB.txt";

class RecoveryFileTest : public testing::Test {
 protected:
  const ContentCheck check{3, 4}, held{5, 6};
  const RecoveryRecord onDisk{
      {PaneSource::kHarddisk, "c:\\a %1\n\\", {}, 0, "007", "N%0A=\"\xFC"}, 1, 2, check, false};
  const RecoveryRecord onPanel{
      {PaneSource::kPanel, {}, "10.0.0.1:5", 8, "999", ""}, 5, 6, std::nullopt, true};
  const RecoveryRecord loose{
      {PaneSource::kHarddisk, {}, {}, 0, {}, "a.mac"}, 7, 8, check, false, "/tmp/a.mac", held};

  TestSite site;
  RecoveryFile file{site.root, 'B'};
};

TEST_F(RecoveryFileTest, WhatIsWrittenIsReadAgain) {
  EXPECT_TRUE(file.isMissing());
  for (const RecoveryRecord& record : {onDisk, onPanel, loose}) {
    site.write(file.besidePath(), "set aside");
    ASSERT_TRUE(file.write(record));
    const auto read = file.read();
    ASSERT_TRUE(read);
    const auto parts = [](const RecoveryRecord& of) {
      return std::tie(of.target, of.loose, of.since, of.edited, of.check, of.held, of.setAside);
    };
    EXPECT_TRUE(parts(*read) == parts(record)) << record.since;
    EXPECT_EQ(isRegularFile(site.root, file.besidePath()), record.setAside) << "what nobody tells of goes";
  }
  file.remove();
  EXPECT_TRUE(file.isMissing());
  EXPECT_EQ(listFolder(site.root, "recovery")->size(), 0U);
}

TEST_F(RecoveryFileTest, ADamagedRecordIsNone) {
  const std::string whole = "disk=c:\\a\\macro007.mac\nsince=1\nedited=2\n";
  site.write(kRecord, whole);
  ASSERT_TRUE(file.read());
  for (const std::string& damaged :
       {std::string(), whole.substr(0, whole.size() - 1), whole + '\0', "since=1\nedited=2\n" + std::string(),
        std::string("disk=c:\\a\\macro.mac\nsince=1\nedited=2\n"),
        std::string("disk=macro007.mac\nsince=1\nedited=2\n"),
        std::string("disk=c:\\a\\macro007.mac\nsince=-1\nedited=2\n"),
        std::string("panel=x\nworkplace=9\nnumber=007\nsince=1\nedited=2\n"),
        std::string("panel=x\nworkplace=1\nnumber=../\nsince=1\nedited=2\n"), std::string(100'000, 'x')}) {
    site.write(kRecord, damaged);
    EXPECT_EQ(file.read().failure().kind, Failure::Kind::kChanged) << damaged.substr(0, 60);
  }
}

TEST_F(RecoveryFileTest, AFolderOrRecordOfSomebodyElseIsNotUsed) {
  site.write("elsewhere\\victim", "theirs");
  std::filesystem::create_directory_symlink(site.root.resolve("elsewhere"), site.root.path() / "recovery");
  EXPECT_EQ(file.write(onDisk).failure().kind, Failure::Kind::kInTheWay);
  std::filesystem::remove(site.root.path() / "recovery");
  std::filesystem::create_directory(site.root.path() / "recovery");
  std::filesystem::create_symlink(site.root.resolve("elsewhere\\victim"), site.root.resolve(kRecord));
  EXPECT_FALSE(file.read());
  EXPECT_TRUE(file.write(onDisk));
  EXPECT_TRUE(file.read());
  EXPECT_EQ(site.read("elsewhere\\victim"), "theirs");
}

}  // namespace
}  // namespace tessaly
