// The steps on the disk: what a start finds again, and what it puts aside.
#include "tests/model/StepsFixture.h"

namespace tessaly {
namespace {

constexpr const char* kDamaged = "recovery\\paneA-damaged.steps";

TEST_F(StepsFileTest, AStartFindsTheRowWhereItWas) {
  Copy copy = worked();
  copy.step("abX", false);  // that could not be written
  EXPECT_EQ(Copy(root, "ab").file.row().size(), 2U) << "one change more on the disk is passed over";
  copy.step("aY");
  copy.go(0);
  Copy again(root, "a");
  EXPECT_EQ(rowText(again.file.row()), rowText(copy.file.row()));
  EXPECT_EQ(again.file.row().size(), 2U) << "what was undone before another change is gone";
  EXPECT_TRUE(again.file.row().savedAt(0));
  EXPECT_EQ(again.file.row().selectedAt(2), (std::vector{2, 1})) << "what each step selected";
  EXPECT_EQ(again.file.row().selectedAt(0), std::vector<int>());
  again.go(2);
  EXPECT_EQ(again.bytes, "aY");
  EXPECT_EQ(again.file.row().selectedAt(2), std::vector<int>());
  EXPECT_EQ(again.file.row().selectedAt(1), std::vector{2});
  EXPECT_EQ(again.file.row().selectedAt(0), std::vector{1});
  again.file.noteSaved(contentCheck("aY"));
  EXPECT_TRUE(Copy(root, "aY").file.row().savedAt(2)) << "a file goes on over a start";
  again.file.noteSaving();
  EXPECT_FALSE(Copy(root, "aY").file.row().saved()) << "a save that was cut off may or may not have happened";
  EXPECT_FALSE(again.file.row().bytesAt(0, "zz")) << "no wrong bytes";
  const MacroPlace other{{}, "10.0.0.1", 1, "007"};
  StepsFile start(root, kPath);
  start.begin(other, contentCheck("aY"));
  EXPECT_EQ(start.row().size(), 0U) << "another macro of the same bytes";
  EXPECT_FALSE(start.takeTrouble());
  again.step("aYZ");
  again.file.begin(other, contentCheck("aYZ"));
  EXPECT_EQ(again.file.row().size(), 0U);
  EXPECT_EQ(read(kPath), "<missing>") << "another macro ends the row";
  Copy anew = worked();
  anew.file.begin(kPlace, contentCheck("zz"));
  EXPECT_EQ(anew.file.row().size(), 0U) << "something else has written the macro";
}

TEST_F(StepsFileTest, WhatCannotBeUsedIsPutAsideAndNoWrongBytesComeOfIt) {
  static_cast<void>(worked());
  const std::string whole = read(kPath);
  const std::size_t lastRecord = whole.size() - stepsRecord(StepsMove{-1}).size();
  const auto replaced = [&](const char* what, const char* by) {
    std::string text = whole;
    return text.replace(text.find(what), std::string(what).size(), by);
  };
  // Records whose sums are right.
  const auto record = [](const std::string& inside) {
    return std::to_string(inside.size()) + ' ' + std::to_string(textSum(inside)) + '\n' + inside + '\n';
  };
  const std::string other = record("kind=steps\nversion=1\n\n") + whole;
  const std::string beyond =
      record("kind=step\nat=0\nremoved=9\nadded=18446744073709551609\nsize=2\ncheck=1\n\nab");
  const struct {
    const char* what;
    std::string text;
    const char* held;
    std::size_t steps;                // that are there again
    std::optional<StepsFault> fault;  // why not
  } rows[] = {
      {"whole", whole, "ab", 2, {}},
      {"torn in the last record", whole.substr(0, whole.size() - 3), "abc", 2, {}},
      {"torn in the last but one", whole.substr(0, lastRecord - 3), "ab", 1, {}},
      {"cut off further than what is held", whole.substr(0, lastRecord - 3), "abc", 0,
       StepsFault::kOtherBytes},
      {"other bytes are held", whole, "a?", 0, StepsFault::kOtherBytes},
      {"a byte of a step has changed", replaced("to abc", "to abd"), "abc", 0, StepsFault::kOtherBytes},
      {"rubbish behind", whole + "rubbish", "ab", 2, {}},
      {"cut off in its head", whole.substr(0, 40), "ab", 0, StepsFault::kDamaged},
      {"half a check", record("kind=steps\nversion=2\ndisk=x\nsize=1\n\n"), "ab", 0, StepsFault::kDamaged},
      {"empty", "", "ab", 0, StepsFault::kDamaged},
      {"zeros", std::string(1000, '\0'), "ab", 0, StepsFault::kDamaged},
      {"a length beyond all", "99999999999999999999 1\n" + whole, "ab", 0, StepsFault::kDamaged},
      {"more bytes than there are", whole + beyond, "ab", 2, {}},
      {"another version", other, "ab", 0, StepsFault::kOtherVersion},
  };
  for (const auto& row : rows) {
    write(kPath, row.text);
    fs::remove(root.resolve(kDamaged));
    Copy copy(root, row.held);
    EXPECT_EQ(copy.file.row().size(), row.steps) << row.what;
    const auto trouble = copy.file.takeTrouble();
    EXPECT_EQ(trouble ? trouble->found : std::nullopt, row.fault) << row.what;
    EXPECT_EQ(read(kDamaged), row.fault ? row.text : "<missing>") << row.what;
    copy.step("new");
    EXPECT_EQ(Copy(root, "new").file.row().size(), copy.file.row().size()) << row.what;
  }
  // One word of a whole record is wrong: nothing has happened.
  const std::string step =
                        "added=1\nafter=\nat=2\nbefore=\ncheck=" + std::to_string(contentCheck("abx").sum) +
                        "\nkind=step\nname=\nremoved=0\nsize=3\n\nx",
                    undo = "count=1\nkind=undo\n\n";
  const auto stepsWith = [&](std::string inside, const char* held, const char* from, const char* to) {
    write(kPath, whole + record(inside.replace(inside.find(from), std::string(from).size(), to)));
    return Copy(root, held).file.row().size();
  };
  EXPECT_EQ(stepsWith(step, "abx", "", ""), 2U);
  EXPECT_EQ(stepsWith(undo, "a", "", ""), 2U);
  for (const auto& [from, to] : {std::pair("at=2", "at=y"),
                                 {"at=2", "at=3"},
                                 {"added=1", "added="},
                                 {"added=1", "added=2"},
                                 {"removed=0", "removed="},
                                 {"removed=0", "removed=2"},
                                 {"before=", "before=1"},
                                 {"after=", "after=2147483648 "},
                                 {"size=3", "size="},
                                 {"size=3", "size=2"},
                                 {"check=", "chuck="},
                                 {"step", "stop"}})
    EXPECT_EQ(stepsWith(step, "abx", from, to), 0U) << to;
  for (const auto& [from, to] :
       {std::pair("=1", "=0"), {"=1", "="}, {"=1", "=2"}, {"undo", "redo"}, {"undo", "und"}})
    EXPECT_EQ(stepsWith(undo, "a", from, to), 0U) << to;
}

// Other copies of the program read what this one writes, and the other way round.
TEST(StepsText, IsAsDocumented) {
  EditHistory row(ContentCheck{2, 18446744073709551615U}, true);
  row.setSaved(ContentCheck{4, 5});
  row.add({"100%\n", {}, {12, 2147483647}, {1, "b", "\n"}, {2, 7}});
  row.add({"x", {0}, {}, {0, "", "a"}, {3, 8}});
  row.moveTo(0);
  const std::string text = stepsText({{}, "10.0.0.1", 8, "007"}, row);
  EXPECT_EQ(text,
            "102 7902947956860620329\ncheck=18446744073709551615\ncut=yes\nkind=steps\nnumber=007\n"
            "panel=10.0.0.1\nsize=2\nversion=2\nworkplace=8\n\n\n"
            "27 12247191932102404237\ncheck=5\nkind=saved\nsize=4\n\n\n"
            "95 635616688556013742\nadded=1\nafter=12 2147483647 \nat=1\nbefore=\ncheck=7\nkind=step\n"
            "name=100%25%0A\nremoved=1\nsize=2\n\nb\n\n"
            "74 10511887638581585119\nadded=1\nafter=\nat=0\nbefore=0 \ncheck=8\nkind=step\nname=x\n"
            "removed=0\nsize=3\n\na\n"
            "19 3745886346361127998\ncount=2\nkind=undo\n\n\n");
  auto head = readStepsHead(text);
  ASSERT_TRUE(std::holds_alternative<StepsHead>(head));
  EXPECT_EQ(std::get<StepsHead>(head).place, (MacroPlace{{}, "10.0.0.1", 8, "007"}));
  const auto read = readSteps(std::get<StepsHead>(head), text, {2, 18446744073709551615U});
  ASSERT_TRUE(read);
  EXPECT_EQ(read->end, text.size());
  EXPECT_EQ(stepsText({{}, "10.0.0.1", 8, "007"}, read->row), text);
  EXPECT_EQ(read->row.step(0), row.step(0));
  EXPECT_EQ(read->row.step(1), row.step(1));
}

TEST(EditHistory, WeighsAndComparesAsDocumented) {
  EXPECT_EQ(EditHistory::weight({"abc", {1, 2}, {3}, {0, "12345", "1234567"}, {}}), 384U + 9 + 24 + 12);
  const struct {
    const char *before, *after;
    ByteChange change;
  } cases[] = {
      {"", "", {0, "", ""}},         {"abc", "abc", {3, "", ""}},     {"aa", "aaa", {2, "", "a"}},
      {"aaa", "aa", {2, "a", ""}},   {"abcab", "ab", {2, "cab", ""}}, {"axc", "ayyc", {1, "x", "yy"}},
      {"xbc", "ybc", {0, "x", "y"}}, {"abx", "aby", {2, "x", "y"}},   {"ab", "bb", {0, "a", "b"}}};
  for (const auto& [before, after, change] : cases)
    EXPECT_EQ(byteChange(before, after), change) << before << ' ' << after;
}

TEST_F(StepsFileTest, WhatIsNoSmallFileIsPutAsideUnread) {
  const std::string victim = root.resolve("victim").string();
  const struct {
    const char* what;
    std::function<void(const fs::path&)> put;
    StepsFault fault;
  } rows[] = {
      {"1 GB",
       [](const fs::path& path) {
         std::ofstream(path) << "1 1\n";
         fs::resize_file(path, std::uintmax_t{1} << 30);
       },
       StepsFault::kTooLarge},
      {"a folder", [](const fs::path& path) { fs::create_directory(path); }, StepsFault::kUnreadable},
      {"a link", [&](const fs::path& path) { fs::create_symlink(victim, path); }, StepsFault::kUnreadable}};
  write("victim", "theirs");
  for (const auto& row : rows) {
    static_cast<void>(worked());
    fs::remove(root.resolve(kPath));
    row.put(root.resolve(kPath));
    Copy copy(root, "ab");
    const auto trouble = copy.file.takeTrouble();
    ASSERT_TRUE(trouble) << row.what;
    EXPECT_EQ(trouble->found, row.fault) << row.what;
    copy.step("abc");
    EXPECT_FALSE(copy.file.takeTrouble()) << row.what;
    EXPECT_EQ(Copy(root, "abc").file.row().size(), 1U) << row.what;
  }
  EXPECT_EQ(read("victim"), "theirs");
}

TEST_F(StepsFileTest, TheRowGoesWhereItsMacroGoesAndEndsWithIt) {
  const MacroPlace other{"c:\\macros\\macro008.mac", {}, 0, {}};
  const auto found = [&] {
    StepsFile start(root, kPath);
    start.begin(other, contentCheck("ab"));
    return start.row().size();
  };
  Copy copy(root, "a");
  copy.file.noteSaved(contentCheck("a"));
  copy.file.follow(other);
  EXPECT_EQ(read(kPath), "<missing>") << "nothing has happened";
  copy.step("ab");
  EXPECT_EQ(found(), 1U);
  copy.file.follow(kPlace);
  const std::string text = read(kPath);
  copy.file.follow({"C:/macros/macro007.mac", {}, 0, {}});
  EXPECT_EQ(read(kPath), text) << "it is there";
  copy.file.follow(other);
  EXPECT_EQ(found(), 1U);
  copy.file.announce(StepsMove{-1});
  copy.file.end();
  copy.file.settle(true);
  copy.file.noteSaved(contentCheck("ab"));
  EXPECT_EQ(copy.file.row().size(), 0U);
  copy.step("abc");
  EXPECT_EQ(copy.file.row().size(), 1U);
  EXPECT_EQ(read(kPath), "<missing>") << "it is nowhere";
}

TEST_F(StepsFileTest, TheRowAndItsFileAreBounded) {
  EditHistory full(contentCheck("0"));
  for (std::size_t number = 1; number <= EditHistory::kMostSteps; ++number)
    full.add({{},
              {},
              {},
              {0, std::to_string(number - 1), std::to_string(number)},
              contentCheck(std::to_string(number))});
  write(kPath, rowText(full));
  Copy copy(root, std::to_string(full.size()));
  copy.step("one more");
  EXPECT_EQ(copy.file.row().size(), EditHistory::kMostSteps);
  EXPECT_TRUE(copy.file.row().cut());
  EXPECT_EQ(rowText(Copy(root, copy.bytes).file.row()), rowText(copy.file.row()));
  copy.go(0);
  EXPECT_EQ(copy.bytes, "1") << "the oldest went";

  // What is undone and done anew leaves nothing behind for good.
  constexpr std::size_t kHeavy = 300'000;
  for (char letter = 'a'; letter <= 'z'; ++letter) {
    copy.step(std::string(kHeavy, letter));
    EXPECT_LT(fs::file_size(root.resolve(kPath)), 20 * kHeavy);
    copy.go(0);
  }
  EXPECT_EQ(rowText(Copy(root, "1").file.row()), rowText(copy.file.row()));
  // One step that is heavier than all may be.
  copy.step(std::string(EditHistory::kMostBytes, 'x'));
  EXPECT_EQ(copy.file.row().size(), 0U);
  EXPECT_EQ(Copy(root, copy.bytes).file.row().size(), 0U);
}

}  // namespace
}  // namespace tessaly
