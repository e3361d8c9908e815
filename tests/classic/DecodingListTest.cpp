#include <filesystem>
#include <gtest/gtest.h>
#include <thread>

#include "classic/DecodingList.h"
#include "platform/Text.h"
#include "tests/support/TestSite.h"

namespace tessaly {
namespace {

constexpr const char* kPath = "c:\\Programme\\RV48\\bin\\MacroCdCo_Tarrow\\Cd-0x10\\Cd-0x10-Co-0x05.ini";
const std::string kHead = "CD = 0x10\nCO = 0x05\n";

std::optional<DecodingList> parse(const std::string& bytes) { return DecodingList::parse(bytes, 0x10, 0x05); }

ClassicCommand command(std::uint8_t action, std::vector<std::uint8_t> parameters) {
  ClassicCommand built;
  built.build(action, 0x10, 0x05, 0x01, parameters);
  return built;
}

// One line an entry, with its parameters and rows.
std::string summary(const DecodingList& list) {
  std::string text;
  for (const KeywordEntry& entry : list.entries()) {
    text += format("%d/%d/%d %s|%s", entry.keyword, entry.subCode, entry.thirdByte, entry.shortName.c_str(),
                   entry.longName.c_str());
    for (const ParameterDescriptor& parameter : entry.parameters) {
      text += format(" [%d %s", static_cast<int>(parameter.type), parameter.name.c_str());
      if (parameter.numericAttribute != 0) text += format("#%d", parameter.numericAttribute);
      for (const ParameterLimit* limit : {&parameter.minimum, &parameter.neutral, &parameter.maximum}) {
        if (limit->known) text += format(" %d%s", static_cast<int>(limit->value), limit->text.c_str());
      }
      for (std::size_t i = 0; i < parameter.rowCount; ++i) {
        const EnumerationRow& row = entry.rows[parameter.firstRow + i];
        text += format(" %x=%s|%s", row.value, row.shortName.c_str(), row.longName.c_str());
      }
      text += "]";
    }
    text += "\n";
  }
  return text;
}

TEST(DecodingList, ReadsEveryKindOfLine) {
  const auto list = parse(
      " \tCD=0x10\r\n\r\n  CO - 0x05 0x1f\r\n"
      "free text\n"
      "[0x01]0x03 \"short\" \"long name\" 0x7f\n"
      "[0x02-0x1F,\"\";\n"
      "pt_Byte \" 12x\"\n: 0x01 0x00\n: 0x09\n: 0x08\n"
      "pt_WordEnum \"mode\"\n: 0x34;0x12;\"a\"\n:0x01=0x00 \"b\" \"bee\"\n"
      "pt_LongEnum \"\"\n:0x01 0x02 0x03 0x84 \"c\"\n"
      "pt_Analog \"gain\"\n:0x9c 0xff \"low\"\n:0x64 0x00\"dB\"\n"
      "pt_AnalogBi \"x\"\n:0x00 0x00 \"l\"\n:0x10 0x00 \"m\"\n:0xff 0xff \"r\"\n"
      "pt_Other \"own\"\n: nothing that matters\n"
      "pt_Input \"in\"\n: nothing either\n"
      "pt_Clipname \"clip\"\n");
  ASSERT_TRUE(list);
  EXPECT_EQ(summary(*list),
            "1/3/127 short|long name\n"
            "2/31/-1 | [1 #12 1 8] [4 mode 1234=a|a 1=b|bee] [6  84030201=c|c] [8 gain -100low 100dB]"
            " [9 x 0l 16m 65535r] [0 own] [7 in] [12 clip]\n");
}

TEST(DecodingList, TestsTheCommandCodeInItsOwnSense) {
  const struct {
    const char* head;
    std::uint8_t cd, co;
    bool accepted;
  } cases[] = {
      {"CD 0x10\nCO 0x10 0x1f\n", 0x10, 0x10, true},
      {"CD 0x10\nCO 0x10 0x1f\n", 0x10, 0x00, true},
      {"CD 0x10\nCO 0x10 0x1f\n", 0x10, 0x11, false},
      {"CD 0x10\nCO 0x1f 0x10\n", 0x10, 0x11, false},
      {"CD 0x10\nCO 0x05\n", 0x10, 0x04, false},
      {"CD 0x00\nCO 0x05\n", 3, 5, true},
      {"CD 0x03\nCO 0x05\n", 3, 5, false},
      {"CD 0x05\nCO 0x05\n", 5, 5, true},
      {"CD 0xzz\nCO 0x05\n", 0, 5, true},
      {"CD 0X10\nCO 0x05\n", 0x10, 5, false},
      {"CD 0x1\nCO 0x05\n", 0x01, 5, false},
      {"CO 0x05\nCD 0x10\n", 0x10, 5, false},
      {"cd 0x10\nCO 0x05\n", 0x10, 5, false},
      {"CD 0x10\nCO\n", 0x10, 0, false},
  };
  for (const auto& entry : cases) {
    const auto list = DecodingList::parse(std::string(entry.head) + "[0x01] 0x01 \"a\"", entry.cd, entry.co);
    EXPECT_EQ(list.has_value(), entry.accepted) << entry.head << int(entry.co);
  }
}

// The bytes after the head, and what is left of them: entries, parameters and rows of the last entry.
TEST(DecodingList, KeepsWhatStandsBeforeADamagedLine) {
  std::string sixteen = "[0x01] 0x01 \"a\"\n";
  for (int i = 0; i < 16; ++i) sixteen += "pt_Timecode \"t\"\n";
  std::string lines = "[0x01] 0x01 \"a\"\npt_ByteEnum \"e\"\n";
  for (int i = 0; i < 2000; ++i) lines += ":0x01 \"row\"\n\n";
  const std::string tail = "[0x02] 0x01 \"b\"";
  const struct {
    std::string body;
    std::size_t entries, parameters, rows;
  } cases[] = {
      {"", 0, 0, 0},
      {"; a comment", 0, 0, 0},
      {"[0x01] 0x01\n" + tail, 0, 0, 0},
      {"[0x01] 0x0", 0, 0, 0},
      {"[0x01]\n0x01 \"a\"", 0, 0, 0},
      {"[0x01] 0x01 \"a\nb\"\n" + tail, 0, 0, 0},
      {"pt_Byte \"1\"\n" + tail, 0, 0, 0},
      {"[0x01] 0x01 \"a\"\n:0x01\n" + tail, 1, 0, 0},
      {"[0x01] 0x01 \"a\" \"b\n" + tail, 2, 0, 0},  // the optional text is simply absent
      {"[0x01] 0x01 \"a\"\npt_Input\n" + tail, 1, 0, 0},
      {"[0x01] 0x01 \"a\"\npt_Word \"1\"\n:0x01\n" + tail, 1, 1, 0},
      {"[0x01] 0x01 \"a\"\npt_ByteEnum \"e\"\n:0x01 \"x\"\n:0x02\n" + tail, 1, 1, 1},
      {"[0x01] 0x01 \"a\"\npt_Analog \"v\"\n:0x01 0x02\n" + tail, 1, 1, 0},
      {"[0x01] 0x01 \"a\"\npt_String \"s\"\n:0x01\n" + tail, 1, 1, 0},
      {"[0x01] 0x01 \"a\"\npt_Input \"s\"\n:0x01\n" + tail, 2, 0, 0},
      {sixteen + tail, 1, 15, 0},
      {lines + tail, 1, 1, 996},
  };
  for (const auto& entry : cases) {
    const auto list = parse(kHead + entry.body);
    ASSERT_EQ(list.has_value(), entry.entries > 0) << entry.body.substr(0, 80);
    if (!list) continue;
    EXPECT_EQ(list->entries().size(), entry.entries) << entry.body.substr(0, 80);
    EXPECT_EQ(list->entries().back().parameters.size(), entry.parameters) << entry.body.substr(0, 80);
    EXPECT_EQ(list->entries().back().rows.size(), entry.rows) << entry.body.substr(0, 80);
  }
}

TEST(DecodingList, TakesTheFirstEntryThatFitsTheBytesAndTogglesByItsLastParameter) {
  const struct {
    const char* parameters;
    std::vector<std::uint8_t> bytes;
    bool fits;
    std::uint8_t action = 0x20;
    bool toggle = false;
    int step = 0;
  } cases[] = {
      {"pt_ByteEnum \"e\"\n:0x02 \"two\"", {2}, true},
      {"pt_ByteEnum \"e\"\n:0x02 \"two\"", {2, 9, 9}, true},
      {"pt_ByteEnum \"e\"\n:0x02 \"two\"", {3}, false},
      {"pt_ByteEnum \"e\"\n:0x02 \"two\"", {}, false},
      {"pt_ByteEnum \"e\"\n:0x02 \"two\"\npt_ByteEnum \"f\"\n:0x03 \"three\"", {2, 2}, false},
      {"pt_WordEnum \"e\"\n:0x02 0x01 \"x\"", {2, 1}, true},
      {"pt_WordEnum \"e\"\n:0x02 0x01 \"x\"", {1, 2}, false},
      {"pt_LongEnum \"e\"\n:0x01 0x00 0x00 0x80 \"x\"", {1, 0, 0, 0x80}, true},
      {"pt_LongEnum \"e\"\n:0x01 0x00 0x00 0x80 \"x\"", {1, 0, 0}, false},
      // A byte's limits serve as row number and row count.
      {"pt_Byte \"0\"\n:0x00\n:0xff", {7}, false},
      {"pt_ByteEnum \"e\"\n:0x05 \"x\"\n:0x06 \"y\"\npt_Byte \"0\"\n:0x01\n:0x01", {5, 6}, true},
      {"pt_ByteEnum \"e\"\n:0x05 \"x\"\n:0x06 \"y\"\npt_Byte \"0\"\n:0x01\n:0x01", {5, 5}, false},
      {"pt_Word \"0\"", {1, 2}, true},
      {"pt_Word \"0\"", {1}, false},
      {"pt_Timecode \"t\"", {1, 2, 3}, false},
      {"pt_Input \"i\"", {5}, true},
      {"pt_Input \"i\"", {0xff, 1, 2}, false},
      {"pt_Input \"i\"", {0xff, 1, 2, 3}, true},
      {"pt_Input \"i\"\npt_ByteEnum \"e\"\n:0x07 \"x\"", {0xff, 1, 2, 7}, true},
      {"pt_Input \"i\"\npt_ByteEnum \"e\"\n:0x07 \"x\"", {5, 7}, true},
      {"pt_String \"s\"\npt_Clipname \"c\"", {}, true},
      {"pt_Own \"u\"", {1, 2, 3}, false},
      {"pt_ByteEnum \"e\"\n:0xff \"x\"", {0xff}, true, 0x40, true, -1},
      {"pt_ByteEnum \"e\"\n:0xff \"x\"", {0xff}, true, 0xC0, true, -1},
      {"pt_ByteEnum \"e\"\n:0xff \"x\"", {0xff}, true},
      {"pt_Input \"i\"\npt_WordEnum \"e\"\n:0x01 0x00 \"x\"", {5, 1, 0}, true, 0x40, true, 1},
      {"pt_Long \"0\"", {0xfe, 0xff, 0xff, 0xff}, true, 0x40, true, -2},
      {"pt_Analog \"v\"", {0xff, 0xff}, true, 0x40},
      {"pt_AnalogBi \"v\"", {0xff, 0xff}, true, 0xC0},
      {"pt_Input \"i\"", {0xee}, true, 0x40, true, 0},
  };
  for (const auto& entry : cases) {
    const auto list = parse(kHead + "[0x01] 0x07 \"own\"\n" + entry.parameters + "\n[0x01] 0x07 \"all\"\n");
    ASSERT_TRUE(list);
    const auto found = list->find(command(entry.action, entry.bytes));
    ASSERT_TRUE(found);
    EXPECT_EQ(found->shortName, entry.fits ? "own" : "all") << entry.parameters;
    EXPECT_EQ(found->toggle, entry.toggle) << entry.parameters;
    EXPECT_EQ(found->step, entry.step) << entry.parameters;
  }
  const auto single = parse(kHead + "[0x01] 0x07 \"own\"\npt_ByteEnum \"e\"\n:0x02 \"two\"\n");
  ASSERT_TRUE(single);
  const auto unwalked = single->find(command(0x40, {9}));
  ASSERT_TRUE(unwalked);
  EXPECT_FALSE(unwalked->toggle);
  ClassicCommand other;
  other.build(0x20, 0x10, 0x05, 0x02, {});
  EXPECT_FALSE(single->find(other));
}

TEST(DecodingLists, ReadsAHugeListOnlyAsFarAsItCounts) {
  TestSite site;
  site.write(kPath, kHead + "[0x01] 0x01 \"a\"\n");
  std::filesystem::resize_file(site.root.resolve(kPath), 100'000'000);
  DecodingLists lists(site.root);
  const auto list = lists.list(0x10, 0x05);
  ASSERT_TRUE(list);
  EXPECT_EQ(list->entries().size(), 1u);
}

TEST(DecodingLists, ReadsAgainOnlyWhenTheFileChanged) {
  TestSite site;
  auto now = std::chrono::steady_clock::now();
  DecodingLists lists(site.root, [&now] { return now; });
  EXPECT_EQ(lists.list(0x10, 0x05), nullptr);

  site.write(kPath, kHead + "[0x01] 0x01 \"a\"\n");
  EXPECT_EQ(lists.list(0x10, 0x05), nullptr);  // not looked at again within the second
  now += std::chrono::seconds(1);
  const auto first = lists.list(0x10, 0x05);
  ASSERT_NE(first, nullptr);
  now += std::chrono::seconds(1);
  EXPECT_EQ(lists.list(0x10, 0x05), first);

  site.write(kPath, kHead + "[0x01] 0x01 \"other\"\n");
  now += std::chrono::seconds(1);
  const auto second = lists.list(0x10, 0x05);
  ASSERT_NE(second, nullptr);
  EXPECT_EQ(second->entries()[0].shortName, "other");
  EXPECT_EQ(first->entries()[0].shortName, "a");  // whoever holds the old list keeps it

  std::filesystem::remove(site.root.resolve(kPath));
  now += std::chrono::seconds(1);
  EXPECT_EQ(lists.revision(), 3U);  // of the list that came, changed and went, not of its first reading
  EXPECT_EQ(lists.list(0x10, 0x05), nullptr);
}

TEST(DecodingLists, ServesThreadsAndForgetsTheLeastUsedButNotHowItsFileWas) {
  TestSite site;
  site.write(kPath, kHead + "[0x01] 0x01 \"a\"\n");
  site.write(decodingListPath(0, 1), "CD 0x00\nCO 0x01\n[0x01] 0x01 \"shared\"\n");
  for (int co = 0; co < 256; ++co)
    site.write(decodingListPath(0x20, static_cast<std::uint8_t>(co)),
               format("CD 0x20\nCO 0x%02x\n[0x01] 0x01 \"b\"\n", static_cast<unsigned>(co)));
  auto now = std::chrono::steady_clock::now();
  DecodingLists lists(site.root, [&now] { return now; });
  const std::weak_ptr<const DecodingList> first = lists.list(0x10, 0x05);
  EXPECT_EQ(lists.list(3, 1), lists.list(0, 1));
  std::vector<std::thread> threads;
  for (int thread = 0; thread < 4; ++thread) {
    threads.emplace_back([&lists] {
      for (int co = 0; co < 300; ++co) {
        EXPECT_NE(lists.list(2, 1), nullptr);
        EXPECT_NE(lists.list(0x20, static_cast<std::uint8_t>(co)), nullptr);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_TRUE(first.expired());
  EXPECT_NE(lists.list(0x10, 0x05), nullptr);
  EXPECT_EQ(lists.revision(), 0U) << "read again, it is the same, or who checks many would never end";
  for (int co = 0; co < 256; ++co) static_cast<void>(lists.list(0x20, static_cast<std::uint8_t>(co)));
  site.write(kPath, kHead + "[0x01] 0x01 \"other\"\n");
  now += std::chrono::seconds(1);
  EXPECT_EQ(lists.revision(), 1U) << "what was found out by it holds no longer";
}

}  // namespace
}  // namespace tessaly
