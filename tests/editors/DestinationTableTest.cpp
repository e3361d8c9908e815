#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>

#include <QToolButton>

#include "editors/DestinationPad.h"
#include "editors/DestinationTable.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

TEST(DestinationPadTest, ButtonsStandInTheirGroupsAndLines) {
  DestinationPad pad;
  pad.resize(pad.sizeHint());
  pad.show();
  std::map<std::pair<int, int>, const QToolButton*> buttons;  // by line and place in it
  int stops = 0;
  for (const QToolButton* button : pad.findChildren<QToolButton*>()) {
    const QPoint place = button->mapTo(&pad, QPoint());
    buttons[{place.y(), place.x()}] = button;
    stops += (button->focusPolicy() & Qt::TabFocus) != 0 ? 1 : 0;
    EXPECT_GE(button->width(), button->fontMetrics().horizontalAdvance(button->text()) + 12);
  }
  EXPECT_EQ(stops, 16) << "one a group";
  std::vector<std::string> groups;
  std::string first;
  std::pair<int, int> beside;
  for (const auto& [place, button] : buttons) {
    const std::string told = (button->accessibleName() + " [" + button->toolTip() + ']').toStdString();
    if (place != beside) groups.emplace_back(), first = told;
    groups.back() = first == told ? told : first + " to " + told;
    beside = {place.first, place.second + button->width() + 2};
  }
  const char* const mixEffects[] = {"@ Bus Pgm [PGM.ME#] to @ Bus Pst [PST.ME#]",
                                    "@ Key 1 [ME#.KEY1.KEY] to @ Key 6 [ME#.KEY6.KEY]",
                                    "@ Key Wipe 1 [ME#.KEY1.WIPE] to @ Key Wipe 4 [ME#.KEY4.WIPE]",
                                    "@ Transition Transi [ME#.TRANSI]",
                                    "@ Util 1 [ME#.UTIL1] to @ Util 2 [ME#.UTIL2]",
                                    "@ Wipe 1 [ME#.WIPE1] to @ Wipe 2 [ME#.WIPE2]",
                                    ("@ iDpm Effect 1 [ME#.IDPM.CHANNEL1, ME#.KEY1.IDPM] to @ iDpm Effect 4 "
                                     "[ME#.IDPM.CHANNEL4, ME#.KEY4.IDPM]"),
                                    "@ eDpm Effect [DpmEffect.ME#]",
                                    "@ Color Corr. YUV [YUV_CORR.ME#] to @ Color Corr. RGB [RGB_CORR.ME#]"};
  std::vector<std::string> expected;
  for (int i = 0; i < 4; ++i)
    for (const char* group : mixEffects)
      expected.push_back(replaceAll(replaceAll(group, "@", mixEffectNames()[i]), "#", std::to_string(i)));
  EXPECT_EQ(std::vector(groups.begin(), groups.begin() + 36), expected);
  EXPECT_THAT(std::vector(groups.begin() + 36, groups.end()),
              testing::ElementsAre(
                  "MEh Bus Pgm [PGM.ME4] to MEh Bus Pst [PST.ME4]",
                  "MEh Key 1 [ME4.KEY1.KEY] to MEh Key 4 [ME4.KEY4.KEY]",
                  "MEh Transition Transi [ME4.TRANSI]", "MEh Color Corr. YUV [YUV_CORR.ME4]",
                  "Auxbuses 1 [AUX1] to Auxbuses 24 [AUX24]", "Auxbuses 25 [AUX25] to Auxbuses 48 [AUX48]",
                  "Machines Serial 1 [MACHINE1] to Machines Serial 2 [MACHINE2]",
                  "Machines via LAN 1 [MACHINE5] to Machines via LAN 16 [MACHINE20]",
                  "Ramrecorder Channels 1 [RAMCHAN1, RAM1] to Ramrecorder Channels 3 [RAMCHAN3, RAM3]",
                  "Machines Serial 3 [MACHINE3] to Machines Serial 4 [MACHINE4]",
                  "Machines via LAN 17 [MACHINE21] to Machines via LAN 32 [MACHINE36]",
                  "Ramrecorder Channels 4 [RAMCHAN4, RAM4] to Ramrecorder Channels 6 [RAMCHAN6, RAM6]",
                  "eDpm Channels 1 [CHANNEL1.EDPM] to eDpm Channels Master [EDPM_MASTER]",
                  "Color Generators Col 1 [BACKGROUND1] to Color Generators Color-Test [TEST_PATTERN]",
                  " [RGB_INP_CORR.INPUT] to  [YUV_INP_CORR.INPUT]"));
}

}  // namespace
}  // namespace tessaly
