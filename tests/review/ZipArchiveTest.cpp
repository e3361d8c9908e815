#include <gtest/gtest.h>

#include "platform/ZipArchive.h"

namespace tessaly {
namespace {

using namespace std::chrono_literals;
using namespace std::string_literals;

TEST(ZipArchiveTest, FilesStandAsTheyAreMarkedWithTheTime) {
  const std::pair<std::chrono::sys_seconds, std::string> times[] = {
      {std::chrono::sys_days{2031y / 12 / 29} + 12h + 34min + 57s, "\x5c\x64\x9d\x67"},
      {std::chrono::sys_days{1979y / 12 / 31} + 1s, "\0\0\x9f\x01"s},
      {std::chrono::sys_days{2108y / 1 / 1}, "\0\0\x21\xfe"s}};
  for (const auto& [time, marked] : times) {
    const std::string archive = *packZip({{"a/ü", "abc"}, {"b", ""}}, time);
    // The entry before its bytes, and in the list behind them all.
    EXPECT_EQ(archive.substr(0, 42), "PK\3\4\x0A\0\0\x08\0\0"s + marked +
                                         "\xC2\x41\x24\x35\3\0\0\0\3\0\0\0\4\0\0\0a/üabcPK\3"s + "\4\x0A");
    const std::size_t list = archive.find("PK\1\2");
    EXPECT_EQ(archive[list + 5], 3) << "of a system with modes";
    EXPECT_EQ(archive.substr(list + 12, 4), marked);
    EXPECT_EQ(archive.substr(list + 38, 4), "\0\0\xa4\x81"s);
    const auto files = unpackZip(archive, 2);
    ASSERT_TRUE(files);
    EXPECT_EQ(files->at(0).name + '=' + files->at(0).bytes + ' ' + files->at(1).name, "a/ü=abc b");
    EXPECT_EQ(unpackZip(archive, 1).failure().text, "holds 2 files, more than a snapshot can have");
    EXPECT_EQ(unpackZip(archive.substr(0, archive.size() - 1), 2).failure().text,
              "is no archive, or a damaged one");
  }
}

}  // namespace
}  // namespace tessaly
