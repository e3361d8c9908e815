#include <algorithm>
#include <gtest/gtest.h>

#include "platform/Sha256.h"
#include "platform/Text.h"
#include "values/SourceNames.h"

namespace tessaly {
namespace {

// A classic command has more names than a panel offers.
TEST(SourceNames, AreThoseOfEveryPanel) {
  for (const auto& [number, name] : {std::pair(0, "Black"),
                                     {96, "Input 96"},
                                     {97, "unknown input"},
                                     {136, "eDpm Chan4 Key"},
                                     {239, "Virtual Input 15"}})
    EXPECT_EQ(sourceName(static_cast<std::uint8_t>(number)), name);
  std::string all;
  for (int i = 0; i < 256; ++i) all += std::string(sourceName(static_cast<std::uint8_t>(i))) + '\n';
  for (int category = -1; category <= 10; ++category) {
    all += format("%d: %d\n", category, static_cast<int>(panelSources(category).size()));
    for (const PanelSource& source : panelSources(category))
      all += source.displayName + '|' + source.panelName + '|' + source.function + '\n';
  }
  EXPECT_EQ(sha256Text(all).value_or("").substr(0, 16), "5d86968fce0ca2f7") << all;
}

TEST(SourceNames, InputListComesFromTheNamedFamilyFirst) {
  FunctionDictionary dictionary;
  EXPECT_TRUE(inputSources(dictionary).empty());
  dictionary.add(EnumFamily{"INPUT_2", {{"INPUT9", "Nine"}, {"INPUT9", "Again"}, {"AUX1", "Aux"}}});
  dictionary.add(EnumFamily{"KEYINPUT", {{"INPUT9", "Later"}, {"INPUT4", "Four"}}});
  dictionary.add(EnumFamily{"OTHER", {{"INPUT1", "No"}}});
  const std::vector<PanelSource> all = inputSources(dictionary);
  ASSERT_EQ(all.size(), 2U);
  EXPECT_EQ(all[0].displayName, "Nine");
  EXPECT_EQ(all[1].panelName, "INPUT4");

  dictionary.add(EnumFamily{"INPUT_5", {{"INPUT7", "Seven"}, {"ME1", "Bus"}, {"INPUT3", "Three"}}});
  const std::vector<PanelSource> named = inputSources(dictionary);
  ASSERT_EQ(named.size(), 2U);
  EXPECT_EQ(named[0].displayName, "Seven");
  EXPECT_EQ(named[1].displayName, "Three");
}

TEST(SourceNames, AClassicCommandCanNameWhatTheDictionaryLeavesOut) {
  const std::vector<ClassicSource> rows = classicInputs(
      {{"Cam", "INPUT2", {}}, {"Far", "INPUT256", {}}, {"Odd", "INPUT3x", {}}, {"Blk", "INPUT0", {}}});
  ASSERT_EQ(rows.size(), 2 + classicSources().size() - 2);
  EXPECT_EQ(rows[0].name + rows[1].name + rows[2].name + rows[3].name, "CamBlkInput 01Input 03");
  const auto named = [&rows](const char* name) {
    return std::find_if(rows.begin(), rows.end(), [name](const auto& row) { return row.name == name; });
  };
  ASSERT_NE(named("eDpm Chan4 Key"), rows.end());
  EXPECT_EQ(named("eDpm Chan4 Key")->number, 136);
  EXPECT_EQ(named("White")->number, 240);
  EXPECT_EQ(named("Black"), rows.end());  // under the dictionary's name
}

TEST(SourceNames, InputNumberIsWhatFollowsThePrefix) {
  EXPECT_EQ(inputNumberText("INPUT5"), "5");
  EXPECT_EQ(inputNumberText("AUX5"), "");
}

}  // namespace
}  // namespace tessaly
