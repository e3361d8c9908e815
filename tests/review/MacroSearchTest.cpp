#include <gmock/gmock.h>

#include "dictionary/InterfaceFile.h"
#include "review/MacroSearch.h"
#include "tests/support/BuildPaths.h"

namespace tessaly {
namespace {

using testing::HasSubstr;

constexpr const char* kMacro =
    R"(<macro name="M"><data>)"
    R"(<cmd fid="QMF1.ME1.KEY1.FILL.SET" workplace="1"><param name="INPUT" value="5"/></cmd>)"
    R"(<cmd fid="QMF2.ME1.TRANSI.RATE.SET" workplace="1"><param name="RATE" value="5"/></cmd>)"
    R"(<cmd fid="PANEL.LIGHT.DIMMER.SET" workplace="3"><param name="VALUE" value="0.500000"/></cmd>)"
    R"(<cmd fid="QMF1.NCSCOMMAND" workplace="1"><param name="CMD" value="25 03 21 09 05 00 "/></cmd>)"
    R"(<cmd fid="QMF1.No.Such" workplace="1"><param name="INPUT" value="5"/></cmd>)"
    R"(</data></macro>)";

TEST(MacroSearchTest, AnswersByWordsThatAllHold) {
  const SiteRoot root{sourcePath("site")};
  FunctionDictionary dictionary;
  loadFunctionDictionary(root, dictionary, {});
  DecodingLists lists(root);
  const auto macro = Macro::read(kMacro);
  const struct {
    const char *query, *commands;
  } cases[] = {
      {"source:5", "03"},  // the rate is no source, and nobody knows what INPUT is of an unknown function
      {"source:\"input 5\"", "03"},   // as the site calls it
      {"source:\"Input 05\"", "03"},  // as the classic table does
      {"function:key1.fill", "0"},
      {"function:EY1.FILL", ""},
      {"function:KEY1.FIL", ""},
      {"function:*EY1.FILL*", "0"},
      {"function:ME1.*", "01"},
      {"function:ME1.* source:5", "0"},
      {"destination:panel", "2"},
      {"destination:Panel/Workplace3 dimmer", "2"},
      {"destination:Panel/Workplace1", ""},
      {"value:0.5", "2"},
      {"value:VALUE=.5", "2"},
      {"value:INPUT=5", "04"},
      {"group:\"me3 - key2\"", "3"},
      {"group:Me1", ""},
      {"group:*", "3"},
      {"value:\"25 03*\"", "3"},
      {"\"transition rate\"", "1"},
      {"rate transition", "1"},
      {"source:05", "03"},
      {"\"function:ME1\"", ""},
  };
  for (const auto& [query, commands] : cases) {
    auto parsed = MacroQuery::parse(query);
    ASSERT_TRUE(parsed) << query;
    MacroSearch search(*std::move(parsed), {dictionary, lists});
    std::string found;
    for (const SearchHit& hit : search.find(*macro)) found += std::to_string(hit.command);
    EXPECT_EQ(found, commands) << query;
  }
}

TEST(MacroSearchTest, HostileQueriesEndWithAReason) {
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
