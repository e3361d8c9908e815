#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <set>

#include <QLabel>
#include <QToolButton>

#include "editors/DestinationPad.h"
#include "editors/DestinationTable.h"
#include "platform/Text.h"
#include "tests/support/SmallDictionary.h"

namespace tessaly {
namespace {

// Catches a button in a wrong place, line or group, with another one's name, cut off, or beside its
// neighbours.
TEST(DestinationPadTest, ButtonsStandInTheirGroupsAndLines) {
  DestinationPad pad;
  pad.resize(pad.sizeHint());
  pad.show();
  std::map<int, std::map<int, const QToolButton*>> lines;  // by place
  std::set<int> heights;
  int stops = 0;
  for (const QToolButton* button : pad.findChildren<QToolButton*>()) {
    const QPoint place = button->mapTo(&pad, QPoint());
    lines[place.y()][place.x()] = button;
    heights.insert(button->height());
    stops += (button->focusPolicy() & Qt::TabFocus) != 0 ? 1 : 0;
    EXPECT_GE(button->width(), button->fontMetrics().horizontalAdvance(button->text()) + 12);
  }
  EXPECT_EQ(stops, 16) << "one a group";
  EXPECT_THAT(heights, testing::ElementsAre(pad.fontMetrics().height() + 6));
  const auto told = [](const QToolButton& button) {
    return button.accessibleName().toStdString() + " [" + button.toolTip().toStdString() + ']';
  };
  std::vector<std::string> groups;
  for (const auto& [y, line] : lines) {
    const QToolButton *first = nullptr, *last = nullptr;
    int right = 0, count = 0;
    const auto end = [&] {
      if (first != nullptr)
        groups.push_back(told(*first) + " to " + told(*last) + ": " + std::to_string(count));
      count = 0;
    };
    for (const auto& [x, button] : line) {
      const bool together = first != nullptr && x - right == 2 && button->width() == last->width();
      if (!together) {
        EXPECT_TRUE(first == nullptr || x - right >= 10 || button->accessibleName().isEmpty())
            << told(*button);
        end();
        first = button;
      }
      last = button;
      right = x + button->width();
      ++count;
    }
    end();
  }
  const char* const mixEffects[] = {
      "@ Bus Pgm [PGM.ME#] to @ Bus Pst [PST.ME#]: 2",
      "@ Key 1 [ME#.KEY1.KEY] to @ Key 6 [ME#.KEY6.KEY]: 6",
      "@ Key Wipe 1 [ME#.KEY1.WIPE] to @ Key Wipe 4 [ME#.KEY4.WIPE]: 4",
      "@ Transition Transi [ME#.TRANSI] to @ Transition Transi [ME#.TRANSI]: 1",
      "@ Util 1 [ME#.UTIL1] to @ Util 2 [ME#.UTIL2]: 2",
      "@ Wipe 1 [ME#.WIPE1] to @ Wipe 2 [ME#.WIPE2]: 2",
      ("@ iDpm Effect 1 [ME#.IDPM.CHANNEL1, ME#.KEY1.IDPM] to @ iDpm Effect 4 [ME#.IDPM.CHANNEL4, "
       "ME#.KEY4.IDPM]: 4"),
      "@ eDpm Effect [DpmEffect.ME#] to @ eDpm Effect [DpmEffect.ME#]: 1",
      "@ Color Corr. YUV [YUV_CORR.ME#] to @ Color Corr. RGB [RGB_CORR.ME#]: 2"};
  std::vector<std::string> expected;
  for (int i = 0; i < 4; ++i)
    for (const char* group : mixEffects)
      expected.push_back(replaceAll(replaceAll(group, "@", mixEffectNames()[i]), "#", std::to_string(i)));
  EXPECT_EQ(std::vector(groups.begin(), groups.begin() + 36), expected);
  EXPECT_THAT(
      std::vector(groups.begin() + 36, groups.end()),
      testing::ElementsAre(
          "MEh Bus Pgm [PGM.ME4] to MEh Bus Pst [PST.ME4]: 2",
          "MEh Key 1 [ME4.KEY1.KEY] to MEh Key 4 [ME4.KEY4.KEY]: 4",
          "MEh Transition Transi [ME4.TRANSI] to MEh Transition Transi [ME4.TRANSI]: 1",
          "MEh Color Corr. YUV [YUV_CORR.ME4] to MEh Color Corr. YUV [YUV_CORR.ME4]: 1",
          "Auxbuses 1 [AUX1] to Auxbuses 24 [AUX24]: 24", "Auxbuses 25 [AUX25] to Auxbuses 48 [AUX48]: 24",
          "Machines Serial 1 [MACHINE1] to Machines Serial 2 [MACHINE2]: 2",
          "Machines via LAN 1 [MACHINE5] to Machines via LAN 16 [MACHINE20]: 16",
          "Ramrecorder Channels 1 [RAMCHAN1, RAM1] to Ramrecorder Channels 3 [RAMCHAN3, RAM3]: 3",
          "Machines Serial 3 [MACHINE3] to Machines Serial 4 [MACHINE4]: 2",
          "Machines via LAN 17 [MACHINE21] to Machines via LAN 32 [MACHINE36]: 16",
          "Ramrecorder Channels 4 [RAMCHAN4, RAM4] to Ramrecorder Channels 6 [RAMCHAN6, RAM6]: 3",
          "eDpm Channels 1 [CHANNEL1.EDPM] to eDpm Channels Master [EDPM_MASTER]: 5",
          "Color Generators Col 1 [BACKGROUND1] to Color Generators Color-Test [TEST_PATTERN]: 4",
          " [RGB_INP_CORR.INPUT] to  [RGB_INP_CORR.INPUT]: 1",
          " [YUV_INP_CORR.INPUT] to  [YUV_INP_CORR.INPUT]: 1"));
  std::vector<std::string> captions;
  for (const QLabel* label : pad.findChildren<QLabel*>()) captions.push_back(label->text().toStdString());
  EXPECT_THAT(captions,
              testing::ElementsAre("PP", "ME1", "ME2", "ME3", "MEh", "Bus", "Key", "Key Wipe", "Transition",
                                   "Util", "Wipe", "iDpm Effect", "eDpm", "Color Corr.", "Auxbuses",
                                   "Machines Serial", "Machines via LAN", "Ramrecorder Channels",
                                   "eDpm Channels", "Color Generators", "Input Correction"));
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
