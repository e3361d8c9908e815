#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>

#include "classic/ClassicBuilder.h"
#include "classic/ClassicDescription.h"
#include "platform/Text.h"
#include "tests/support/BuildPaths.h"
#include "tests/support/TestSite.h"

namespace tessaly {
namespace {

using ::testing::ElementsAre;
using List = ClassicBuilder::List;

// Row numbers of the menu.
constexpr std::size_t kMe1 = 1, kPp = 4, kMeh = 5, kDve = 10, kAuxbus = 18;

class ClassicBuilderTest : public ::testing::Test {
 protected:
  void list(int cd, int co, const std::string& entries) {
    site.write(
        format("c:\\Programme\\RV48\\bin\\MacroCdCo_Tarrow\\Cd-0x%02x\\Cd-0x%02x-Co-0x%02x.ini", cd, cd, co),
        format("CD 0x%02x\nCO 0x%02x\n", cd, co) + entries);
  }

  // A builder in create mode with the functions of "Auxbus - Aux1" listed.
  ClassicBuilder atFunctions(const std::string& entries) {
    list(16, 1, entries);
    ClassicBuilder builder(lists, true);
    EXPECT_TRUE(builder.chooseGroup(kAuxbus) && builder.chooseSubgroup(0));
    return builder;
  }

  ClassicCommand loaded(const std::string& text) {
    ClassicCommand command;
    EXPECT_TRUE(command.decodeText(text)) << text;
    return command;
  }

  TestSite site;
  // Every look-up sees the file as it is now.
  std::chrono::steady_clock::time_point now;
  DecodingLists lists{site.root, [this] { return now += std::chrono::seconds(1); }};
};

TEST_F(ClassicBuilderTest, LeadsFromLeftToRight) {
  list(0, 33,
       "[0x05] 0x01 \"m\" \"Mode\"\npt_ByteEnum \"mode\"\n:0x03 \"a\" \"Std\"\n:0x09 \"Tie\"\n"
       "[0x06] 0x01 \"--- more ---\"\n");
  ClassicBuilder builder(lists, false);
  EXPECT_EQ(builder.stateLine(), "No selection until now...");
  EXPECT_EQ(builder.heading(List::kMainGroup), "select  > Main Group <");
  EXPECT_FALSE(builder.chooseGroup(0));
  EXPECT_FALSE(builder.chooseGroup(6));
  EXPECT_FALSE(builder.chooseGroup(53));
  EXPECT_FALSE(builder.chooseSubgroup(0));

  ASSERT_TRUE(builder.chooseGroup(kDve));
  EXPECT_TRUE(builder.subgroupRows()[2].separator);
  EXPECT_FALSE(builder.chooseSubgroup(2));
  EXPECT_EQ(builder.subgroupRows().size(), 9u);

  ASSERT_TRUE(builder.chooseGroup(kMe1));
  EXPECT_EQ(builder.heading(List::kMainGroup), "Main Group");
  EXPECT_EQ(builder.heading(List::kSubgroup), "select  > Subgroup <");
  EXPECT_EQ(builder.stateLine(), "Current Command: under construction . . .");
  ASSERT_TRUE(builder.chooseSubgroup(2));
  EXPECT_EQ(builder.heading(List::kSubgroup), "Select other Me1");
  EXPECT_FALSE(builder.chooseFunction(1));
  EXPECT_FALSE(builder.chooseAction(0));
  ASSERT_TRUE(builder.chooseFunction(0));
  EXPECT_EQ(builder.path(), "Me1 - Key2 - Mode");
  EXPECT_TRUE(builder.parameterRows().empty());
  EXPECT_FALSE(builder.chooseParameter(0));
  ASSERT_TRUE(builder.chooseAction(0));
  EXPECT_THAT(builder.parameterRows(), ElementsAre("mode: ..."));
  EXPECT_FALSE(builder.complete());
  EXPECT_EQ(builder.heading(List::kParameters), "select  > Parameter <");
  ASSERT_TRUE(builder.chooseParameter(0));
  EXPECT_EQ(builder.heading(List::kParameters), "Change Parameter to");
  EXPECT_EQ(builder.enumeration(0).back().longName, "Tie");
  ASSERT_TRUE(builder.setNumber(0, 1));

  EXPECT_EQ(builder.stateLine(), "READY TO INSERT");
  EXPECT_TRUE(builder.complete());
  EXPECT_FALSE(builder.canInsertAtSelected());
  EXPECT_FALSE(builder.chooseAction(0));
  EXPECT_EQ(builder.path(), "Me1 - Key2 - Mode - set by value");
  EXPECT_EQ(builder.command().text(), "24 01 21 05 09 ");
  EXPECT_EQ(builder.description(), "Set - Me1 - Key2 - Mode - mode: Tie");

  ASSERT_TRUE(builder.chooseSubgroup(1));  // another key has no list
  EXPECT_TRUE(builder.functionRows().empty());
  EXPECT_THAT(builder.missingList(), ::testing::EndsWith("\\Cd-0x00\\Cd-0x00-Co-0x20.ini"));
  EXPECT_FALSE(builder.command().valid());
  builder.startFromScratch();
  EXPECT_EQ(builder.stateLine(), "current command: under construction . . .");
  EXPECT_EQ(builder.path(), "");
  EXPECT_FALSE(builder.complete());
}

TEST_F(ClassicBuilderTest, OffersActionsBySubCodeAndLastType) {
  const std::string byte = "pt_Byte \"0\"\n", rows = "pt_LongEnum \"e\"\n:0x01 0x00 0x00 0x00 \"x\"\n";
  const std::string analog = "pt_Analog \"v\"\n:0x01 0x00 \"\"\n";
  const std::string bi = "pt_AnalogBi \"v\"\n:0x01 0x00 \"\"\n:0x05 0x00 \"\"\n:0x09 0x00 \"\"\n";
  const struct {
    const char* subCode;
    std::string parameters;
    std::array<const char*, kActionRows> texts;
  } cases[] = {
      {"0x00", bi, {"", "", "", "", "", "", ""}},
      {"0x07", "", {"set by value", "", "", "", "increment", "", "trigger"}},
      {"0x07", rows + byte, {"set by value", "", "", "", "increment", "", "trigger"}},
      {"0x02", byte + rows, {"", "", "", "", "toggle up", "toggle down", ""}},
      {"0x05", rows, {"set by value", "", "", "", "", "", "trigger"}},
      {"0x03", analog, {"set by value", "set to minimum", "", "", "increment", "", ""}},
      {"0x06", bi, {"", "", "", "", "increment", "", "trigger"}},
      {"0x01", bi, {"set by value", "set to minimum", "set to maximum", "set to neutral", "", "", ""}},
  };
  for (const auto& entry : cases) {
    const auto list = DecodingList::parse(
        std::string("CD 0x10\nCO 0x01\n[0x01] ") + entry.subCode + " \"f\"\n" + entry.parameters, 16, 1);
    ASSERT_TRUE(list);
    const auto texts = actionRows(list->entries()[0]);
    EXPECT_TRUE(std::equal(texts.begin(), texts.end(), entry.texts.begin()))
        << entry.subCode << entry.parameters;
  }
}

TEST_F(ClassicBuilderTest, WritesWhatAnActionBringsByItself) {
  const std::string rows = "pt_WordEnum \"e\"\n:0x01 0x00 \"one\"\n:0xff 0xff \"back\"\n";
  const std::string bi = "pt_AnalogBi \"v\"\n:0x01 0x00 \"\"\n:0x05 0x00 \"\"\n:0x09 0x02 \"\"\n";
  const std::string clip = "pt_Input \"i\"\npt_Timecode \"t\"\npt_Clipname \"c\"\n";
  const struct {
    std::string parameters;
    std::size_t action;
    const char* text;
    const char* described;
  } cases[] = {
      {"", 6, "e3 10 01 01 ", "Trigger - Auxbus - Aux1 - F"},
      {"", 0, "23 10 01 01 ", "Set - Auxbus - Aux1 - F"},
      {rows, 4, "45 10 01 01 01 00 ", "Toggle up - Auxbus - Aux1 - F - e: one"},
      {rows, 5, "45 10 01 01 ff ff ", "Toggle down - Auxbus - Aux1 - F - e: back"},
      {bi, 1, "25 10 01 01 01 00 ", "Set - Auxbus - Aux1 - F - v: -100%"},
      {rows + bi, 2, "27 10 01 01 01 00 09 02 ", "Set - Auxbus - Aux1 - F - e: one - v: 100%"},
      {bi, 3, "25 10 01 01 05 00 ", "Set - Auxbus - Aux1 - F - v: 0%"},
      {clip, 6, "ea 10 01 01 00 00 00 00 00 00 00 ",
       "Trigger - Auxbus - Aux1 - F - i: Black source hold off - t: 00:00:00:00 - c: "},
  };
  for (const auto& entry : cases) {
    // Two entries of the keyword, so that the bytes decide and toggles are told.
    ClassicBuilder builder =
        atFunctions("[0x01] 0x07 \"F\"\n" + entry.parameters + "[0x01] 0x00 \"never\"\npt_None \"\"\n");
    ASSERT_TRUE(builder.chooseFunction(0) && builder.chooseAction(entry.action));
    EXPECT_TRUE(builder.complete()) << entry.text;
    EXPECT_EQ(builder.command().text(), entry.text);
    EXPECT_EQ(builder.description(), entry.described);
    const bool toLimit = entry.action >= 1 && entry.action <= 3;
    EXPECT_EQ(ClassicBuilder(lists, builder.command()).chosenAction(), toLimit ? 0 : entry.action);
    EXPECT_EQ(toLimit, toLimit && builder.setNumber(builder.parameterRows().size() - 1, 50));
    EXPECT_EQ(builder.chosenAction(), toLimit ? 0 : entry.action);
  }
}

TEST_F(ClassicBuilderTest, LimitsWhatIsTyped) {
  const std::string bi = "pt_AnalogBi \"v\"\n:0x00 0x00 \"\"\n";
  const struct {
    std::string parameter;
    std::int64_t minimum, maximum;
    const char* hint;
    const char* lowest;  // value bytes in text form
    const char* highest;
  } cases[] = {
      {"pt_Byte \"0\"\n", 0, 255, "Range: 0 / 255", "00 ", "ff "},
      {"pt_Byte \"0\"\n:0x9c\n:0x64\n", -100, 100, "Range: -100 / 100", "9c ", "64 "},
      {"pt_Word \"0\"\n:0x00 0x80\n:0xff 0x7f\n", -32768, 32767, "Range: -32768 / 32767", "00 80 ", "ff 7f "},
      {"pt_Word \"0\"\n:0x05 0x00\n:0x05 0x00\n", 5, 5, "Range: 5 / 5", "05 00 ", "05 00 "},
      {"pt_Word \"0\"\n:0x09 0x00\n:0x05 0x00\n", 5, 9, "Range: 5 / 9", "05 00 ", "09 00 "},
      {"pt_Long \"0\"\n", 0, 4294967295, "Range: 0 / 4294967295", "00 00 00 00 ", "ff ff ff ff "},
      {"pt_Long \"0\"\n:0xff 0xff 0xff 0xff\n:0x01 0x00 0x00 0x00\n", -1, 1, "Range: -1 / 1", "ff ff ff ff ",
       "01 00 00 00 "},
      {"pt_ByteEnum \"e\"\n:0x80 \"a\"\n:0x02 \"b\"\n", 0, 1, "Range: 0 / 1", "80 ", "02 "},
      {"pt_ByteEnum \"e\"\n", 0, 255, "Range: 0 / 255", "00 ", "ff "},
      {"pt_Analog \"v\"\n:0x00 0x00 \"\"\n", 0, 65535, "Range: 0 / 65535", "00 00 ", "ff ff "},
      {"pt_Analog \"v\"\n:0x07 0x00 \"\"\n:0xff 0x03 \"\"\n", 0, 100, "Range: 0% / 100%", "07 00 ", "ff 03 "},
      {"pt_Analog \"v\"\n:0xff 0xff \"\"\n:0x01 0x00 \"\"\n", 0, 100, "Range: 0% / 100%", "ff ff ", "01 00 "},
      {bi + ":0x03 0x00 \"\"\n:0xe8 0x03 \"\"\n", -100, 100, "Range: -100% / +100%", "00 00 ", "e8 03 "},
      {bi + ":0x00 0x00 \"\"\n:0xe8 0x03 \"\"\n", 0, 100, "Range: -100% / +100%", "00 00 ", "e8 03 "},
      {bi + ":0xe8 0x03 \"\"\n:0xe8 0x03 \"\"\n", -100, 0, "Range: -100% / +100%", "00 00 ", "e8 03 "},
      {bi + ":0xe8 0x03 \"\"\n:0x09 0x00 \"\"\n", 0, 9, "Range: 0 / 9", "00 00 ", "09 00 "},
  };
  for (const auto& entry : cases) {
    ClassicBuilder builder = atFunctions("[0x01] 0x01 \"F\"\n" + entry.parameter);
    ASSERT_TRUE(builder.chooseFunction(0) && builder.chooseAction(0));
    const ParameterRange range = builder.range(0);
    EXPECT_EQ(range.minimum, entry.minimum) << entry.parameter;
    EXPECT_EQ(range.maximum, entry.maximum) << entry.parameter;
    EXPECT_EQ(range.hint, entry.hint);
    EXPECT_FALSE(builder.setNumber(0, range.minimum - 1) || builder.setNumber(0, range.maximum + 1));
    EXPECT_FALSE(builder.setInput(0, 1) || builder.setText(0, "1") || builder.setTimecode(0, {}));
    for (const auto& [number, bytes] :
         {std::pair{range.minimum, entry.lowest}, {range.maximum, entry.highest}}) {
      ASSERT_TRUE(builder.setNumber(0, number)) << entry.parameter;
      EXPECT_EQ(builder.command().text().substr(12), bytes) << entry.parameter << number;
      EXPECT_EQ(builder.currentNumber(0), number) << entry.parameter;
    }
  }
}

// Chooses a value for a parameter row, the lowest, the highest or one between, and returns how it is shown.
std::string choose(ClassicBuilder& builder, std::size_t row, std::size_t pick) {
  const ParameterRange range = builder.range(row);
  switch (range.entry) {
    case ParameterEntry::kNumber: {
      const std::int64_t picks[] = {range.minimum, range.maximum,
                                    range.minimum + (range.maximum - range.minimum) / 3};
      EXPECT_TRUE(builder.setNumber(row, picks[pick]));
      EXPECT_EQ(builder.currentNumber(row), picks[pick]);
      const auto rows = builder.enumeration(row);
      if (!rows.empty()) return rows[static_cast<std::size_t>(picks[pick])].longName;
      return std::to_string(picks[pick]) + (range.hint.ends_with('%') ? "%" : "");
    }
    case ParameterEntry::kInput:
      EXPECT_TRUE(builder.setInput(row, pick == 1 ? 240 : 0));
      return pick == 1 ? "White source hold off" : "Black source hold off";
    case ParameterEntry::kTimecode:
      EXPECT_TRUE(builder.setTimecode(row, {23, 59, 1, 29, true, false}));
      EXPECT_EQ(builder.currentTimecode(row).frames, 29);
      return "23:59:01.29";
    case ParameterEntry::kClip:
    case ParameterEntry::kText:
      EXPECT_TRUE(builder.setText(row, "ab"));
      EXPECT_EQ(builder.currentText(row), "ab");
      return "ab";
    case ParameterEntry::kNothing:
      break;
  }
  return builder.parameterRows()[row].substr(builder.parameterRows()[row].find(": ") + 2);
}

// Chooses every value, from the right, as gaps must not shift bytes; then the stored text has to describe,
// and to load again, as what was chosen.
void chooseAndReadBack(ClassicBuilder& builder, const KeywordEntry& entry, DecodingLists& lists,
                       std::size_t pick) {
  std::vector<std::string> shown(entry.parameters.size());
  for (std::size_t i = shown.size(); i-- > 0;) {
    EXPECT_TRUE(builder.complete() || builder.command().parameters().empty());
    shown[i] = choose(builder, i, pick);
  }
  ASSERT_TRUE(builder.complete()) << builder.path();

  std::string expected = groupName(builder.command().cd(), builder.command().co()) + " - " + entry.longName;
  for (std::size_t i = 0; i < shown.size(); ++i) {
    const std::string& name = entry.parameters[i].name;
    expected += " - " + (name.empty() ? "" : name + ": ") + shown[i];
    EXPECT_EQ(builder.parameterRows()[i], (name.empty() ? "Value" : name) + ": " + shown[i]);
  }
  ClassicCommand stored;
  ASSERT_TRUE(stored.decodeText(builder.command().text()));
  const std::string described = describeClassic(stored, lists);
  EXPECT_EQ(described.substr(described.find(" - ") + 3), expected) << builder.path();
  EXPECT_EQ(described, builder.description());
  ClassicBuilder again(lists, stored);
  EXPECT_EQ(again.parameterRows(), builder.parameterRows());
  EXPECT_EQ(again.chosenFunction(), builder.chosenFunction());
}

TEST(ClassicBuilderOnTheSampleSite, WritesWhatReadsBackForEveryFunctionAndAction) {
  const SiteRoot root{sourcePath("site")};
  DecodingLists lists(root);
  std::set<std::shared_ptr<const DecodingList>> seen;  // mix effects share their lists
  std::set<ParameterType> types;
  int commands = 0;
  ClassicBuilder builder(lists, true);
  for (std::size_t group = 0; group < builder.groupRows().size(); ++group) {
    if (!builder.chooseGroup(group)) continue;
    for (std::size_t subgroup = 0; subgroup < builder.subgroupRows().size(); ++subgroup) {
      if (!builder.chooseSubgroup(subgroup)) continue;
      if (!builder.chooseFunction(0)) continue;
      const auto list = lists.list(builder.command().cd(), builder.command().co());
      if (!seen.insert(list).second) continue;
      for (std::size_t function = 0; function < builder.functionRows().size(); ++function) {
        for (const ParameterDescriptor& each : list->entries()[function].parameters) types.insert(each.type);
        for (std::size_t step = 0; step < kActionRows * 3; ++step) {
          if (!builder.chooseFunction(function) || !builder.chooseAction(step / 3)) continue;
          chooseAndReadBack(builder, list->entries()[function], lists, step % 3);
          if (HasFailure()) return;
          ++commands;
        }
      }
    }
  }
  EXPECT_GE(seen.size(), 40u);
  EXPECT_TRUE(types.size() == 12 && !types.contains(ParameterType::kUnknown)) << "one of each";
  EXPECT_GT(commands, 1000);
}

TEST_F(ClassicBuilderTest, ModifyKeepsTheRestOfTheCommand) {
  list(0, 32, "[0x04] 0x01 \"Other\"\n[0x05] 0x03 \"Clip\"\npt_Word \"0\"\npt_Input \"i\"\n");
  list(0, 8, "[0x06] 0x01 \"Elsewhere\"\n");
  const ClassicCommand command = loaded("27 01 20 05 01 02 07 01 ");
  ClassicBuilder builder(lists, command);
  EXPECT_EQ(builder.stateLine(), "READY TO MODIFY");
  EXPECT_TRUE(builder.canInsertAtSelected());
  EXPECT_EQ(builder.chosenGroup(), kMe1);
  EXPECT_EQ(builder.chosenSubgroup(), 1u);
  EXPECT_EQ(builder.chosenFunction(), 1u);
  EXPECT_THAT(builder.parameterRows(), ElementsAre("Value: 513", "i: Input 07 source hold on"));
  ASSERT_TRUE(builder.setInput(1, 8));
  EXPECT_EQ(builder.command().text(), "27 01 20 05 01 02 08 01 ");
  ASSERT_TRUE(builder.setInput(1, 8, false));
  EXPECT_EQ(builder.command().text(), "27 01 20 05 01 02 08 00 ");
  ASSERT_TRUE(builder.setInput(1, 9, true));
  EXPECT_TRUE(builder.currentHold(1));
  ASSERT_TRUE(builder.setInput(1, 8));

  ASSERT_TRUE(builder.chooseGroup(kMeh));
  EXPECT_EQ(builder.command().text(), "27 04 20 05 01 02 08 01 ");
  EXPECT_TRUE(builder.complete());
  ASSERT_TRUE(builder.chooseSubgroup(5));  // "Transition": a list without the keyword
  EXPECT_EQ(builder.command().text(), "27 04 08 05 01 02 08 01 ");
  EXPECT_THAT(builder.parameterRows(), ElementsAre("wrong keyword index..."));
  EXPECT_FALSE(builder.complete());
  ASSERT_TRUE(builder.chooseGroup(kDve));  // has no such command code
  EXPECT_FALSE(builder.chosenSubgroup());
  EXPECT_EQ(builder.heading(List::kSubgroup), "select  > Subgroup <");
  ASSERT_TRUE(builder.chooseGroup(kPp) && builder.chooseSubgroup(1));
  EXPECT_EQ(builder.description(), "Set - PP - Key1 - Clip - 513 - i: Input 08 source hold on");
  EXPECT_TRUE(builder.complete());

  ASSERT_TRUE(builder.chooseFunction(1));
  EXPECT_FALSE(builder.complete());
  ASSERT_TRUE(builder.chooseGroup(kMe1));  // nothing left to keep
  EXPECT_FALSE(builder.command().valid());
}

TEST_F(ClassicBuilderTest, LoadsCommandsThatDoNotFit) {
  list(16, 1,
       "[0x01] 0x03 \"F\"\npt_Word \"0\"\npt_None \"u\"\npt_Input \"i\"\n[0x02] 0x02 \"T\"\npt_ByteEnum "
       "\"e\"\n:0x01 \"x\"\n");
  const struct {
    const char* text;
    std::vector<std::string> rows;
    std::optional<std::size_t> action;
    bool complete;
  } cases[] = {
      {"24 10 01 01 05 ", {"Value - not enough params!!!", "u: ", "i - not enough params!!!"}, 0, true},
      {"68 10 01 01 05 00 ff 01 02 ", {"Value: 5", "u: ", "i: extended input"}, std::nullopt, true},
      {"44 10 01 02 01 ", {"e: x"}, std::nullopt, true},  // a single entry never reads as a toggle
      {"24 10 01 09 05 ", {"wrong keyword index..."}, std::nullopt, false},
      {"24 10 02 01 05 ", {"wrong keyword index..."}, std::nullopt, false},
      {"24 63 02 01 05 ", {}, std::nullopt, false},
  };
  for (const auto& entry : cases) {
    ClassicBuilder builder(lists, loaded(entry.text));
    EXPECT_EQ(builder.parameterRows(), entry.rows) << entry.text;
    EXPECT_EQ(builder.chosenAction(), entry.action) << entry.text;
    EXPECT_EQ(builder.complete(), entry.complete) << entry.text;
    EXPECT_EQ(builder.command().text(), entry.text);
  }
  // A byte more than the parameters take, and fewer than an extended input has.
  for (const auto& [head, rest] :
       std::vector<std::pair<std::string, std::string>>{{"28", "07 01 99 "}, {"27", "ff 01 "}}) {
    ClassicBuilder builder(lists, loaded(head + " 10 01 01 05 00 " + rest));
    ASSERT_TRUE(builder.setNumber(0, 6));
    EXPECT_EQ(builder.command().text(), head + " 10 01 01 06 00 " + rest);
  }
  // An input at the end may have no source hold; once something follows, its first byte would be taken for
  // it.
  list(16, 3, "[0x01] 0x03 \"F\"\npt_Input \"i\"\npt_Byte \"0\"\n");
  ClassicBuilder shorter(lists, loaded("24 10 03 01 07 "));
  ASSERT_TRUE(shorter.setNumber(1, 5));
  EXPECT_EQ(shorter.description(), "Set - Auxbus - Aux3 - F - i: Input 07 source hold off - 5");
  ClassicBuilder builder(lists, loaded(cases[0].text));
  EXPECT_FALSE(builder.chooseFunction(7));
  EXPECT_THAT(builder.parameterRows(), ElementsAre("wrong keyword index..."));
  EXPECT_FALSE(ClassicBuilder(lists, loaded("44 10 01 02 01 ")).chooseParameter(0));  // a step is no value
}

// "set to minimum" is about the last parameter: another one's value once ended it, too.
TEST_F(ClassicBuilderTest, OnlyTheLastParameterEndsALimit) {
  ClassicBuilder builder =
      atFunctions("[0x01] 0x01 \"F\"\npt_Byte \"0\"\npt_Analog \"v\"\n:0x01 0x00 \"\"\n");
  ASSERT_TRUE(builder.chooseFunction(0) && builder.chooseAction(1) && builder.setNumber(0, 5));
  EXPECT_TRUE(builder.path().ends_with("set to minimum")) << builder.path();
  ASSERT_TRUE(builder.setNumber(1, 50));
  EXPECT_TRUE(builder.path().ends_with("set by value")) << builder.path();
}

TEST_F(ClassicBuilderTest, KeepsCommandsStorable) {
  const std::string longs = "pt_Long \"0\"\npt_Long \"0\"\npt_Long \"0\"\npt_Long \"0\"\npt_Long \"0\"\n";
  ClassicBuilder builder =
      atFunctions("[0x01] 0x04 \"F\"\n" + longs + "pt_Clipname \"c\"\n[0x02] 0x04 \"G\"\n" + longs + longs);
  ASSERT_TRUE(builder.chooseFunction(0) && builder.chooseAction(6));
  EXPECT_FALSE(builder.setText(5, "seven77"));
  ASSERT_TRUE(builder.setText(5, std::string_view("six666\0beyond", 13)));
  EXPECT_TRUE(loaded(builder.command().text()).valid());
  EXPECT_EQ(builder.parameterRows()[5], "c: six666");
  ASSERT_TRUE(builder.chooseFunction(1) && builder.chooseAction(6));
  EXPECT_FALSE(builder.complete());
  EXPECT_EQ(builder.stateLine(), "Current Command: too long to be stored");

  // A string leaves room for what is still to be chosen.
  ClassicBuilder first = atFunctions("[0x01] 0x01 \"F\"\npt_String \"s\"\n" + longs);
  ASSERT_TRUE(first.chooseFunction(0) && first.chooseAction(0));
  EXPECT_EQ(first.textRoom(0), 6u);
  EXPECT_FALSE(first.setText(0, "seven77"));

  // A loaded command of 28 bytes may stay as it is, but what is changed must be readable again.
  std::string text = "3f 00 1f 10 01 01 ";
  for (int i = 0; i < 28; ++i) text += "41 ";
  ClassicBuilder longer(lists, loaded(text));
  EXPECT_EQ(longer.stateLine(), "READY TO MODIFY");
  list(18, 1, "[0x01] 0x01 \"F\"\npt_String \"s\"\n");
  ASSERT_TRUE(longer.chooseGroup(8 + 1) && longer.chooseSubgroup(0));
  EXPECT_FALSE(longer.complete());
}

TEST_F(ClassicBuilderTest, MarksAnExtendedInputSoThatItIsFound) {
  ClassicBuilder builder =
      atFunctions("[0x01] 0x01 \"F\"\npt_Input \"i\"\n[0x01] 0x01 \"G\"\npt_ByteEnum \"e\"\n:0x01 \"x\"\n");
  ASSERT_TRUE(builder.chooseFunction(0) && builder.chooseAction(0));
  EXPECT_FALSE(builder.setInput(0, 256) || builder.setInput(0, -1));
  ASSERT_TRUE(builder.setInput(0, 255));
  EXPECT_EQ(builder.description(), "Set - Auxbus - Aux1 - F - i: extended input");
}

}  // namespace
}  // namespace tessaly
