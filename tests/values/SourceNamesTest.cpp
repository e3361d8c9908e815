#include <algorithm>
#include <gtest/gtest.h>
#include <map>

#include "platform/Text.h"
#include "values/SourceNames.h"

namespace tessaly {
namespace {

// A number has its name in a classic command and, where a panel offers it as an input, one there.
TEST(SourceNames, EveryNumberHasItsNames) {
  const struct {
    int first;
    std::vector<std::string> classic, panel;
  } cases[] = {
      {0, {"Black"}, {}},
      {129,
       {"eDpm Chan1 Fill", "eDpm Chan1 Key", "eDpm Chan2 Fill", "eDpm Chan2 Key", "eDpm Chan3 Fill",
        "eDpm Chan3 Key", "eDpm Chan4 Fill", "eDpm Chan4 Key"},
       {"eDpm Fill 1", "", "eDpm Fill 2", "", "eDpm Fill 3", "", "eDpm Fill 4"}},
      {137,
       {"RamRecorder Chan1", "RamRecorder Chan2", "RamRecorder Chan3", "RamRecorder Chan4",
        "RamRecorder Chan5", "RamRecorder Chan6"},
       {"RamRec 1", "RamRec 2", "RamRec 3", "RamRec 4", "RamRec 5", "RamRec 6"}},
      {144, {"Color Bgnd 1", "Color Bgnd 2", "Color Bgnd 3"}, {"Color 1", "Color 2", "Color 3"}},
      {153, {"Color Test"}, {"Color-Test"}},
      {160, {"PP A", "Me1 A", "Me2 A", "Me3 A", "Meh A"}, {"PP A", "ME1 A", "ME2 A", "ME3 A", "Me-h A"}},
      {176,
       {"PP Preview1", "Me1 Preview1", "Me2 Preview1", "Me3 Preview1", "Meh Preview1"},
       {"PP Pvw1", "ME1 Pvw1", "ME2 Pvw1", "ME3 Pvw1", "Me-h Pvw1"}},
      {192,
       {"PP C", "PP D", "Me1 C", "Me1 D", "Me2 C", "Me2 D", "Me3 C", "Me3 D"},
       {"PP C", "PP D", "ME1 C", "ME1 D", "ME2 C", "ME2 D", "ME3 C", "ME3 D"}},
      {208, {"PP B", "Me1 B", "Me2 B", "Me3 B", "Meh B"}, {"PP B", "ME1 B", "ME2 B", "ME3 B", "Me-h B"}},
      {216,
       {"PP Preview2", "Me1 Preview2", "Me2 Preview2", "Me3 Preview2", "Meh Preview2"},
       {"PP Pvw2", "ME1 Pvw2", "ME2 Pvw2", "ME3 Pvw2", "Me-h Pvw2"}},
      {240, {"White"}, {}},
  };
  std::map<int, std::string> classic, panel;
  for (int i = 1; i <= 96; ++i) classic[i] = format("Input %02d", i);
  for (int i = 1; i <= 96; ++i) panel[i] = format("Input %d", i);
  for (int i = 0; i < 16; ++i) classic[224 + i] = format("Virtual Input %02d", i);
  for (int i = 0; i < 16; ++i) panel[224 + i] = format("Virtual Inp. %d", i);
  for (const auto& run : cases) {
    for (std::size_t i = 0; i < run.classic.size(); ++i)
      classic[run.first + static_cast<int>(i)] = run.classic[i];
    for (std::size_t i = 0; i < run.panel.size(); ++i)
      if (!run.panel[i].empty()) panel[run.first + static_cast<int>(i)] = run.panel[i];
  }
  for (int i = 0; i < 256; ++i)
    EXPECT_EQ(sourceName(static_cast<std::uint8_t>(i)), classic.contains(i) ? classic[i] : "unknown input")
        << i;
  std::map<int, std::string> offered;
  for (const PanelSource& input : panelSources(1))
    offered[parseInt(inputNumberText(input.panelName))] = input.displayName;
  EXPECT_EQ(offered, panel);
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
