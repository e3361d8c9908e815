#include <algorithm>
#include <gtest/gtest.h>

#include "platform/Text.h"
#include "values/SourceNames.h"

namespace tessaly {
namespace {

TEST(SourceNames, ClassicNumbers) {
  const struct {
    std::uint8_t number;
    const char* name;
  } cases[] = {
      {0, "Black"},
      {1, "Input 01"},
      {96, "Input 96"},
      {97, "unknown input"},
      {129, "eDpm Chan1 Fill"},
      {136, "eDpm Chan4 Key"},
      {137, "RamRecorder Chan1"},
      {142, "RamRecorder Chan6"},
      {143, "unknown input"},
      {146, "Color Bgnd 3"},
      {153, "Color Test"},
      {160, "PP A"},
      {199, "Me3 D"},
      {200, "unknown input"},
      {212, "Meh B"},
      {180, "Meh Preview1"},
      {217, "Me1 Preview2"},
      {220, "Meh Preview2"},
      {224, "Virtual Input 00"},
      {239, "Virtual Input 15"},
      {240, "White"},
      {255, "unknown input"},
  };
  for (const auto& c : cases) EXPECT_EQ(sourceName(c.number), c.name) << int{c.number};
}

TEST(SourceNames, CategoriesHaveTheirEndsAndSizes) {
  const struct {
    int category;
    std::size_t size;
    const char *firstDisplay, *firstPanel, *lastDisplay, *lastPanel;
  } cases[] = {
      {0, 5, "PP", "ME0", "ME h", "ME4"},
      {1, 154, "Input 1", "INPUT1", "Virtual Inp. 15", "INPUT239"},
      {2, 48, "Aux 1", "AUX1", "Aux 48", "AUX48"},
      {3, 6, "RamRec 1", "RAMCHAN1", "RamRec 6", "RAMCHAN6"},
      {4, 36, "Mach. 1 (rs422)", "MACHINE1", "Mach. 32 (LAN)", "MACHINE36"},
      {5, 4, "eDpm Channel 1", "CHANNEL1", "eDpm Channel 4", "CHANNEL4"},
      {6, 1, "Emem", "EMEM", "Emem", "EMEM"},
      {7, 15, "PP", "ME0", "eDpm Channel 4", "EDPM4"},
      {8, 5, "PP", "ME0.TRANSI", "ME h", "ME4.TRANSI"},
      {9, 36, "Machine 1", "MACHINE1", "iDpm 4", "IDPM4"},
  };
  for (const auto& c : cases) {
    const std::vector<PanelSource>& list = panelSources(c.category);
    ASSERT_EQ(list.size(), c.size) << c.category;
    EXPECT_EQ(list.front().displayName, c.firstDisplay);
    EXPECT_EQ(list.front().panelName, c.firstPanel);
    EXPECT_EQ(list.back().displayName, c.lastDisplay);
    EXPECT_EQ(list.back().panelName, c.lastPanel);
    EXPECT_EQ(list.front().function, c.category == 7 ? "SOURCE.SET" : "");
  }
  EXPECT_TRUE(panelSources(-1).empty());
  EXPECT_TRUE(panelSources(10).empty());
}

TEST(SourceNames, FixedInputsOfThePanelAgreeWithTheClassicNumbers) {
  const std::vector<PanelSource>& inputs = panelSources(1);
  const struct {
    const char *display, *classic;
  } cases[] = {
      {"Color 3", "Color Bgnd 3"},
      {"Color-Test", "Color Test"},
      {"eDpm Fill 4", "eDpm Chan4 Fill"},
      {"RamRec 6", "RamRecorder Chan6"},
      {"PP Pvw2", "PP Preview2"},
      {"ME2 C", "Me2 C"},
      {"ME3 D", "Me3 D"},
      {"Me-h Pvw1", "Meh Preview1"},
      {"Virtual Inp. 7", "Virtual Input 07"},
  };
  for (const auto& c : cases) {
    const auto row = std::find_if(inputs.begin(), inputs.end(),
                                  [&](const PanelSource& source) { return source.displayName == c.display; });
    ASSERT_NE(row, inputs.end()) << c.display;
    EXPECT_EQ(sourceName(static_cast<std::uint8_t>(parseInt(inputNumberText(row->panelName)))), c.classic);
  }
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
