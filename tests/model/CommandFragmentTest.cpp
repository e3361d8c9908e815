#include <gmock/gmock.h>

#include "model/MacroEdit.h"
#include "platform/Text.h"
#include "tests/model/OddFiles.h"

namespace tessaly {
namespace {

std::string commandsIn(const std::string& fragment) { return fragment.substr(fragment.find("<data>")); }

// Where commands of one macro were put into another, all else is as it was, and they come out again as they
// went in, to the byte where both files spell letters alike.
TEST(CommandFragment, ComesThroughEachFileWhole) {
  for (const OddFile& from : kOddFiles) {
    for (const OddFile& to : kOddFiles) {
      const std::string told = from.bytes() + "\ninto\n" + to.bytes();
      const auto source = Macro::read(from.bytes());
      const auto target = Macro::read(to.bytes());
      const auto fragment = CommandFragment::of(*source, {1, 0, 1});
      ASSERT_TRUE(fragment) << fragment.failure().text << told;
      ASSERT_EQ(fragment->size(), 2U);
      const auto read = CommandFragment::read(fragment->text());
      const auto pasted = apply(*target, InsertFragment{*read, 1, InsertMode::kAtPosition});
      ASSERT_TRUE(pasted) << pasted.failure().text << told;
      ASSERT_EQ(pasted->commands().size(), 4U) << told;
      EXPECT_EQ(pasted->commands()[1], source->commands()[0]) << told;
      EXPECT_EQ(pasted->commands()[2], source->commands()[1]) << told;
      EXPECT_EQ(apply(*pasted, RemoveCommands{{1, 2}})->bytes(), to.bytes()) << told;
      const auto again = CommandFragment::of(*pasted, {1, 2});
      EXPECT_EQ(commandsIn(again->text()), commandsIn(fragment->text())) << told;
      if (from.head != to.head) continue;
      EXPECT_EQ(again->text(), fragment->text()) << told;
      EXPECT_THAT(pasted->bytes(), testing::HasSubstr(from.first() + from.second()));
    }
  }
}

// The spelling of a text stays where it can; else the text does, or nothing is pasted.
TEST(CommandFragment, EncodingsAreSettledTextByText) {
  const std::string none, utf8 = "<?xml version='1.0' encoding='UTF-8'?>",
                          wrong = utf8 + "<!-- \xFC -->",  // says UTF-8 and is none
      western = "<?xml version='1.0' encoding='ISO-8859-1'?>",
                          koi8 = "<?xml version='1.0' encoding='KOI8-R'?>",
                          iso5 = "<?xml version='1.0' encoding='ISO-8859-5'?>";
  const std::string letters = " a='\xC3\xBC' b='\xFC'";
  const struct {
    std::string from, content, to, pasted;  // empty: refused
  } rows[] = {
      {none, letters, none, letters},
      {wrong, letters, wrong, letters},
      {koi8, letters, koi8, letters},
      {koi8, letters, iso5, ""},
      {koi8, letters, utf8, " a='ü' b='ü'"},
      {wrong, letters, utf8, " a='ü' b='ü'"},
      {none, letters, western, " a='\xFC' b='\xFC'"},
      {western, " a='\xC3\xBC'", none, " a='&#xC3;&#xBC;'"},
      {western, "><!-- \xC3\xBC --></cmd><cmd", none, ""},  // no references count there
      {western, "><\xFC \xFC='&#xFC;' /></cmd><cmd", utf8, "><ü ü='&#xFC;' /></cmd><cmd"},
      {utf8, " a='Ж'", utf8, " a='Ж'"},
      {utf8, " a='Ж'", none, ""},
      {none, " a='Ж'", none, " a='Ж'"},
      {none, " a='Ж'", western, ""},
      {utf8, " a='&#x416; &uuml; &'", western, " a='&#x416; &uuml; &'"},
      {utf8, "><![CDATA[ü]]>ü &#xA; </cmd><cmd", western, "><![CDATA[\xFC]]>\xFC &#xA; </cmd><cmd"},
  };
  for (const auto& row : rows) {
    const auto file = [](const std::string& head, const std::string& content) {
      return *Macro::read(head + "<macro><data><cmd" + content + " /></data></macro>");
    };
    const Macro source = file(row.from, row.content);
    const Macro target = *apply(file(row.to, ""), RemoveCommands{{0}});
    std::vector<int> numbers;
    for (std::size_t i = 0; i < source.commands().size(); ++i) numbers.push_back(static_cast<int>(i));
    const auto fragment = CommandFragment::of(source, numbers);
    ASSERT_TRUE(fragment) << row.content;
    const auto pasted = apply(target, InsertFragment{*fragment, 0, InsertMode::kAtStart});
    if (row.pasted.empty()) {
      ASSERT_FALSE(pasted) << row.from << row.content << row.to;
      EXPECT_EQ(pasted.failure().kind, Failure::Kind::kTextNotHeld);
    } else {
      ASSERT_TRUE(pasted) << pasted.failure().text << row.content << row.to;
      EXPECT_EQ(pasted->bytes(), reprint(file(row.to, row.pasted))->bytes()) << row.from;
    }
  }
}

TEST(CommandFragment, WhatIsNoneIsRefusedWithTheReason) {
  const std::string head = "<tessaly-commands version=\"1\"><data>", tail = "</data></tessaly-commands>";
  const auto repeated = [](const std::string& text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i) all += text;
    return all;
  };
  const struct {
    std::string text, reason;
  } rows[] = {
      {"", "is no text of commands"},
      {"three words", "is no text of commands"},
      {"<macro><data><cmd/></data></macro>", "is no text of commands"},
      {replaceAll(head, "\"1\"", "\"2\"") + "<cmd/>" + tail, "is of version 2 and not of 1"},
      {replaceAll(head, " version=\"1\"", "") + "<cmd/>" + tail, "is of version \"\" and not of 1"},
      {head + tail, "holds no commands"},
      {"<tessaly-commands version=\"1\"><cmd/></tessaly-commands>", "has no data of its own"},
      {head + "<cmd/></data><data>" + tail, "has no data of its own"},
      {head + "<cmd/><note/>" + tail, "holds something else than commands"},
      {head + "<cmd/>text" + tail, "holds something else than commands"},
      {head + "<cmd/><!-- c -->" + tail, "holds something else than commands"},
      {head + "<cmd>" + tail, "is not well formed"},
      {head + "<cmd/>" + tail + "junk", "has text outside its root element"},
      {head + "<cmd/>" + tail + "<macro/>", "goes on behind its end"},
      {head + "<cmd a=b/>" + tail, "has an attribute without quotes"},
      {head + "<cmd a='\xFC'/>" + tail, "is no UTF-8"},
      {"<?xml version='1.0' encoding='ISO-8859-1'?>" + head + "<cmd a='ü'/>" + tail, "declares another"},
      {replaceAll(head, "\"1\"", "\"1\" letters=\"wu\"") + "<cmd a='ü'/>" + tail,
       "does not say of each text"},
      {replaceAll(head, "\"1\"", "\"1\" letters=\"x\"") + "<cmd a='ü'/>" + tail, "does not say of each text"},
      {head + repeated("<cmd/>", 5001) + tail, "holds more than 5000 commands"},
      {head + "<cmd a='" + std::string(kLargestFragment, 'x') + "'/>" + tail, "is larger than 8 MB"},
  };
  for (const auto& row : rows) {
    const auto fragment = CommandFragment::read(row.text);
    ASSERT_FALSE(fragment) << row.reason;
    EXPECT_EQ(fragment.failure().kind, Failure::Kind::kNoFragment) << row.reason;
    EXPECT_THAT(fragment.failure().text, testing::HasSubstr(row.reason)) << row.text.substr(0, 200);
  }
  EXPECT_TRUE(CommandFragment::read(head + repeated("<cmd/>", 5000) + tail));
  // A stranger's false word about a text costs no file its encoding.
  const auto lying = CommandFragment::read(replaceAll(head, "\"1\"", "\"1\" encoding='none' letters='w'") +
                                           "<cmd a='Ã¼'/>" + tail);
  const auto pasted = apply(*Macro::read("<macro><data/></macro>"), InsertFragment{*lying});
  EXPECT_THAT(pasted->bytes(), testing::HasSubstr("a=\"&#xC3;&#xBC;\""));
}

TEST(CommandFragment, OnlyCommandsThatThereAreAreCopied) {
  const auto macro = Macro::read("<macro><data><cmd fid='A' /><x /></data></macro>");
  for (const std::vector<int>& numbers : {std::vector<int>{}, {1}, {0, 1}, {-1}}) {
    const auto fragment = CommandFragment::of(*macro, numbers);
    ASSERT_FALSE(fragment);
    EXPECT_EQ(fragment.failure().kind, Failure::Kind::kNoCommand);
  }
  EXPECT_FALSE(CommandFragment::of(*Macro::read("<macro/>"), {0}));
}

}  // namespace
}  // namespace tessaly
