#include <gmock/gmock.h>

#include "review/MacroSearch.h"
#include "review/WhereUsed.h"
#include "tests/review/SampleMacros.h"

namespace tessaly {
namespace {

using testing::HasSubstr;

using MacroSearchTest = SampleMacrosTest;

TEST_F(MacroSearchTest, AnswersByWordsThatAllHold) {
  const auto macro =
      Macro::read(macroOf(command("QMF1.ME1.KEY1.FILL.SET", parameter("INPUT", "5")) +
                          command("QMF2.ME1.TRANSI.RATE.SET", parameter("RATE", "5")) +
                          command("PANEL.LIGHT.DIMMER.SET", parameter("VALUE", "0.500000"), "3") +
                          classic("25 03 21 09 05 00 ") + command("QMF1.No.Such", parameter("INPUT", "5"))));
  // The rate is no source, nobody knows what INPUT is of an unknown function, and a source is called as the
  // site or the classic table calls it.
  const std::pair<const char*, std::vector<const char*>> cases[] = {
      {"",
       {"function:EY1.FILL", "function:KEY1.FIL", "destination:Panel/Workplace1", "group:Me1",
        "\"function:ME1\""}},
      {"0", {"function:key1.fill", "function:*EY1.FILL*", "function:ME1.* source:5"}},
      {"01", {"function:ME1.*"}},
      {"03", {"source:5", "source:\"input 5\"", "source:05"}},
      {"04", {"value:INPUT=5"}},
      {"1", {"\"transition rate\"", "rate transition"}},
      {"2", {"destination:panel", "destination:Panel/Workplace3 dimmer", "value:0.5", "value:VALUE=.5"}},
      {"3", {"group:\"me3 - key2\"", "group:*", "value:\"25 03*\"", "source:\"Input 05\""}},
  };
  for (const auto& [commands, queries] : cases)
    for (const char* query : queries) {
      auto parsed = MacroQuery::parse(query);
      ASSERT_TRUE(parsed) << query;
      MacroSearch search(*std::move(parsed), {dictionary(), lists});
      std::string found;
      for (const SearchHit& hit : search.find(*macro)) found += std::to_string(hit.command);
      EXPECT_EQ(found, commands) << query;
    }
}

// What a command names, by its name and the query that finds it, and the lines that are found in keys.
TEST_F(MacroSearchTest, WhatACommandNamesIsFoundByItsQuery) {
  const LineContext context{dictionary(), lists};
  const std::pair<std::string, std::vector<std::string>> cases[] = {
      {command("QMF1.ME1.KEY1.FILL.SET", parameter("INPUT", "5") + parameter("X", "5")),
       {"0 ME1.KEY1.FILL.SET function:ME1.KEY1.FILL.SET", "1 Mainframe1 destination:Mainframe1",
        "2 Input 5 source:5"}},
      {command("QMF2.NO.SUCH", parameter("INPUT", "5")),
       {"0 NO.SUCH function:NO.SUCH", "1 Mainframe2 destination:Mainframe2"}},
      {command("PANEL.LIGHT.DIMMER.SET", parameter("VALUE", "0.5"), "3"),
       {"0 LIGHT.DIMMER.SET function:LIGHT.DIMMER.SET", "1 Panel/Workplace3 destination:Panel/Workplace3"}},
      {classic("25 03 21 09 05 00 "),
       {"3 Me3 - Key2 group:\"Me3 - Key2\"", "1 Mainframe1 destination:Mainframe1", "2 Input 5 source:5"}},
      {classic("25 03 21 09 62 00 "),
       {"3 Me3 - Key2 group:\"Me3 - Key2\"", "1 Mainframe1 destination:Mainframe1", "2 98 source:98"}},
      {command("QMF1.NCSCOMMAND"), {"1 Mainframe1 destination:Mainframe1"}},
      {classic("x"), {"1 Mainframe1 destination:Mainframe1"}},
  };
  for (const auto& [text, expected] : cases) {
    const auto macro = Macro::read(macroOf(text));
    std::vector<std::string> told;
    for (const auto& [kind, name, query] : usedBy(macro->commands()[0], context)) {
      told.push_back(std::to_string(static_cast<int>(kind)) + ' ' + name + ' ' + query);
      EXPECT_EQ(MacroSearch(*MacroQuery::parse(query), context).find(*macro).size(), 1U) << query;
    }
    EXPECT_EQ(told, expected) << text;
  }
  EXPECT_EQ(queryWord("", "\"clip\""), "clip");
  EXPECT_EQ(queryWord("line", "\""), "");
  KeyFile keys;
  keys.parse(
      "#UPK\nBeginHeader\nFile=key00.upk\nName=K\nVersion=1.0\nEndHeader\n25 03 21 09 05 00 \n"
      "24 10 05 03 c8 \n");
  const auto hits = MacroSearch(*MacroQuery::parse("destination:QMF1 200"), context).find(keys);
  ASSERT_EQ(hits.size(), 1U);
  EXPECT_EQ(hits[0].command, 1);
  EXPECT_EQ(hits[0].line, "Mainframe1 - QMF1Classic:  Set - Auxbus - Aux5 - Mix Rate - 200");
}

TEST_F(MacroSearchTest, HostileQueriesEndWithAReason) {
  std::string words;
  for (std::size_t i = 0; i <= MacroQuery::kMostWords; ++i) words += "a ";
  const std::pair<std::string, const char*> cases[] = {
      {"", "empty"},
      {" \t", "empty"},
      {"colour:red", "no field \"colour\""},
      {"source:", "empty"},
      {"\"\"", "empty"},
      {"source:\"5", "no end"},
      {words, "32 words"},
      {std::string(1001, 'a'), "1000 bytes"},
      {"\xFF", "UTF-8"},
  };
  for (const auto& [query, reason] : cases) {
    const auto parsed = MacroQuery::parse(query);
    ASSERT_FALSE(parsed) << query;
    EXPECT_THAT(parsed.failure().text, HasSubstr(reason));
  }
  // A pattern of stars could take longer than anybody lives.
  std::string pattern;
  for (int i = 0; i < 400; ++i) pattern += "*A";
  EXPECT_FALSE(fitsPattern(pattern + 'B', std::string(4000, 'A')));
}

}  // namespace
}  // namespace tessaly
