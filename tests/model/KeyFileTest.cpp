#include <gtest/gtest.h>

#include "model/KeyFile.h"
#include "tests/support/TestSite.h"

namespace tessaly {
namespace {

const std::string kHeader = "#UPK\nBeginHeader\nFile=key03.upk\nName=MK04\nVersion=1.0\nEndHeader\n";

// The text of every command, "-" for an empty record.
std::string commandsOf(const KeyFile& key) {
  std::string result;
  for (const ClassicCommand& command : key.commands()) {
    result += (command.valid() ? command.text() : "-") + ";";
  }
  return result;
}

TEST(KeyFile, ReadsHeaderAndCommands) {
  struct Case {
    std::string bytes, name, commands;
  };
  const Case cases[] = {
      {"", "", ""},
      {"#UPK\nBeginHeader\nName=no", "", ""},
      {"\n\n\nName=A=B\r", "A=B\r", ""},
      {"\n\n\nName\nx=1\n", "", ""},
      {"\n\n\nName=K\xFC\n", "Kü", ""},
      {kHeader.substr(0, kHeader.size() - 1), "MK04", ""},
      {kHeader, "MK04", "-;"},
      {kHeader + "\r\n \t\n", "MK04", "-;"},
      {kHeader + "e3 10 05 01 \n", "MK04", "e3 10 05 01 ;"},
      {kHeader + "\t e3 10 05 01 \r\n\r\n24 10 05 01 0a ", "MK04", "e3 10 05 01 ;24 10 05 01 0a ;"},
      {kHeader + "e3 10 05 01\nzz\ne3 10 05 01  \n23 1 05 02 \n", "MK04", "-;-;-;23 01 05 02 ;"},
      {std::string("\x7F"
                   "ELF\0\n\n\n\0=\0\n",
                   13),
       std::string("\0", 1), ""}};
  KeyFile key;
  for (const Case& c : cases) {
    SCOPED_TRACE(c.bytes);
    key.parse(c.bytes);
    EXPECT_EQ(key.name(), c.name);
    EXPECT_EQ(commandsOf(key), c.commands);
  }
}

TEST(KeyFile, TellsWhatASaveWouldLose) {
  std::string bytes = "e3 10 05 01 \n";
  // 27 parameters, the same without the final blank, and 28, which only the long form holds.
  std::string line = "3e 10 05 01 ";
  for (int i = 0; i < 27; ++i) line += "07 ";
  bytes += line + "\n" + line.substr(0, line.size() - 1) + "\n";
  bytes += "3f 00 1f" + line.substr(2) + "07 \nzz\n";
  KeyFile key;
  key.parse(kHeader + bytes);
  EXPECT_EQ(key.unreadable(), (std::vector<int>{2, 3, 4}));
  EXPECT_EQ(key.lines()[4].number, 11);
  key.parse(kHeader + "zz\r\nzz\r\rzz\n\nzz\r\n\r\nzz");
  EXPECT_EQ(key.unreadable(), (std::vector<int>{0, 1, 2, 3, 4}));
  std::vector<int> numbers;
  for (const KeyFile::Line& one : key.lines()) numbers.push_back(one.number);
  EXPECT_EQ(numbers, (std::vector<int>{7, 8, 10, 12, 14}));
  std::string many = kHeader;
  for (int i = 0; i < 5001; ++i) many += "zz\n";
  key.parse(many);
  EXPECT_EQ(key.lastIndex(), 4999) << "no more are held";
  key.parse(kHeader);  // the empty command of a file without lines loses nothing
  EXPECT_EQ(key.unreadable(), std::vector<int>());
}

TEST(KeyFile, TakesTheDefaultHeaderForAMissingFile) {
  const TestSite site;
  KeyFile key;
  key.load(site.root, R"(c:\upk\key03.upk)", 3);
  EXPECT_EQ(key.name(), "MK04");
  EXPECT_EQ(commandsOf(key), "-;");
  site.write(R"(c:\upk\KEY03.UPK)", kHeader + "e3 10 05 01 \n");
  key.load(site.root, R"(c:\upk\key03.upk)", 7);
  EXPECT_EQ(key.name(), "MK04");
  EXPECT_EQ(commandsOf(key), "e3 10 05 01 ;");
}

TEST(KeyFile, TakesItsIndexFromTheFileName) {
  const std::pair<const char*, int> cases[] = {
      {R"(c:\upk\key03.upk)", 3}, {R"(c:\key44\KEY95.UPK)", 95}, {"/srv/key07", 7}, {"key7.upk", 0},
      {"key-1.upk", 0},           {"monkey12.upk", 0},           {"key1", 0},       {"", 0}};
  for (const auto& [path, index] : cases) EXPECT_EQ(keyFileIndex(path), index) << path;
}

}  // namespace
}  // namespace tessaly
