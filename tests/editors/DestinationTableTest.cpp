#include <gtest/gtest.h>
#include <map>
#include <set>

#include "editors/DestinationTable.h"
#include "tests/support/SmallDictionary.h"

namespace tessaly {
namespace {

TEST(DestinationTableTest, GroupsHoldTheirRanges) {
  struct Case {
    const char *group, *first, *last;
    std::size_t count;
  };
  const Case cases[] = {
      {"Bus", "PGM.ME0", "PST.ME4", 10},
      {"Key", "ME0.KEY1.KEY", "ME3.KEY6.KEY", 28},
      {"Key Wipe", "ME0.KEY1.WIPE", "ME3.KEY4.WIPE", 16},
      {"Transition", "ME0.TRANSI", "ME4.TRANSI", 5},
      {"Util", "ME0.UTIL1", "ME3.UTIL2", 8},
      {"Wipe", "ME0.WIPE1", "ME3.WIPE2", 8},
      {"iDpm Effect", "ME0.IDPM.CHANNEL1", "ME3.IDPM.CHANNEL4", 16},
      {"eDpm", "DpmEffect.ME0", "DpmEffect.ME3", 4},
      {"Color Corr.", "YUV_CORR.ME0", "RGB_CORR.ME3", 9},
      {"Auxbuses", "AUX1", "AUX48", 48},
      {"Machines Serial", "MACHINE1", "MACHINE4", 4},
      {"Machines via LAN", "MACHINE5", "MACHINE36", 32},
      {"Ramrecorder Channels", "RAMCHAN1", "RAMCHAN6", 6},
      {"eDpm Channels", "CHANNEL1.EDPM", "EDPM_MASTER", 5},
      {"Color Generators", "BACKGROUND1", "TEST_PATTERN", 4},
  };
  ASSERT_EQ(destinationGroups().size(), std::size(cases));
  for (std::size_t i = 0; i < std::size(cases); ++i) {
    const DestinationGroup& group = destinationGroups()[i];
    EXPECT_EQ(group.caption, cases[i].group);
    EXPECT_EQ(group.buttons.size(), cases[i].count) << group.caption;
    EXPECT_EQ(group.buttons.front().destination.name, cases[i].first);
    EXPECT_EQ(group.buttons.back().destination.name, cases[i].last);
  }
}

TEST(DestinationTableTest, NamesAndPlacesAreUnique) {
  std::map<std::string, DestinationNames> named;
  for (const DestinationGroup& group : destinationGroups()) {
    std::set<std::pair<int, int>> places;
    for (const DestinationButton& button : group.buttons) {
      EXPECT_TRUE(named.emplace(button.destination.name, button.destination).second)
          << button.destination.name;
      EXPECT_TRUE(places.emplace(button.row, button.column).second) << button.destination.name;
      EXPECT_EQ(button.destination.secondAlternative, "");
    }
  }
  EXPECT_EQ(named["ME2.IDPM.CHANNEL3"].firstAlternative, "ME2.KEY3.IDPM");
  EXPECT_EQ(named["RAMCHAN6"].firstAlternative, "RAM6");
  EXPECT_EQ(named["AUX6"].firstAlternative, "");
  for (const char* missing : {"ME4.KEY5.KEY", "ME4.KEY6.KEY", "ME4.KEY1.WIPE", "ME4.UTIL1", "RGB_CORR.ME4"})
    EXPECT_FALSE(named.contains(missing)) << missing;
}

// LAN machines were numbered as their names are, from 5.
TEST(DestinationTableTest, NumbersAreThoseOfTheDictionarysTexts) {
  const FunctionDictionary& dictionary = siteDictionary();
  std::map<std::string, std::string> texts;  // of one function a destination
  for (std::size_t i = 0; i < dictionary.functionCount(); ++i)
    texts.emplace(dictionary.function(i).group(), dictionary.function(i).description() + ' ');
  int looked = 0;
  for (const DestinationGroup& group : destinationGroups()) {
    for (const DestinationButton& button : group.buttons) {
      const auto text = texts.find(button.destination.name);
      if (text == texts.end() || button.caption.find_first_not_of("0123456789") != std::string::npos)
        continue;
      EXPECT_NE(text->second.find(' ' + button.caption + ' '), std::string::npos)
          << group.caption << ' ' << button.caption << ": " << text->second;
      ++looked;
    }
  }
  EXPECT_GT(looked, 100);
}

TEST(DestinationTableTest, OnlyNamedGroupsAreOwned) {
  const DestinationNames channel{"RAMCHAN1", "RAM1", ""};
  EXPECT_TRUE(channel.owns("RAMCHAN1"));
  EXPECT_TRUE(channel.owns("RAM1"));
  for (const char* other : {"", "RAM", "RAM11", "ram1"}) EXPECT_FALSE(channel.owns(other)) << other;
  EXPECT_EQ(inputCorrections()[0].forInput("239").name, "RGB_INP_CORR.INPUT239");
  EXPECT_EQ(inputCorrections()[1].forInput("1").name, "YUV_INP_CORR.INPUT1");
}

}  // namespace
}  // namespace tessaly
