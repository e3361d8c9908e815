#include "PanelFixture.h"
#include "panelsim/Options.h"
#include "panelsim/Prompt.h"

namespace tessaly {
namespace {

TEST_F(PanelTest, WrongPromptLinesAreRefusedAndChangeNothing) {
  start();
  for (const char* line : {"dance",
                           "set",
                           "get",
                           "get QMF1.NOTHING",
                           "rename 1",
                           "rename 9 1 x",
                           "rename 1 1000 x",
                           "rename 1 5 x",
                           "delete 1 5",
                           "delete 0 5",
                           "mfd 1 x",
                           "fault",
                           "fault smell",
                           "fault cut-transfer",
                           "fault cut-transfer -1",
                           "fault never-answer 5",
                           "fault flip-byte",
                           "fault slow-transfer 0",
                           "fault dead-line 1",
                           "wait",
                           "wait x",
                           "restart -1"}) {
    EXPECT_FALSE(runPromptLine(*panel, line).known) << line;
  }
  for (const char* line :
       {"", "  ", "# note", "help", "list", "status", "wait 0", "set QMF1.A  two  words\r"}) {
    EXPECT_TRUE(runPromptLine(*panel, line).known) << line;
  }
  EXPECT_EQ(runPromptLine(*panel, "get QMF1.A").text, " two  words");
  EXPECT_TRUE(runPromptLine(*panel, "quit").quit);
}

TEST(Options, TableOfCommandLines) {
  std::string reason;
  for (const std::vector<std::string>& wrong :
       std::vector<std::vector<std::string>>{{"--smell"},
                                             {"--control-port"},
                                             {"--control-port", "65536"},
                                             {"--ftp-port", "21x"},
                                             {"--mfd", "1,,2"},
                                             {"--mfd", "1,2,3,4,5,6,7,8,9"},
                                             {"--drop-after", "off"},
                                             {"--answer-after", "-5"},
                                             {"address", "::1"}}) {
    EXPECT_FALSE(readOptions(wrong, reason)) << wrong.front();
  }
  const auto options = readOptions(
      {"--address", "127.0.0.5", "--site", "/srv/site", "--control-port", "0", "--mfd", "1,0,3",
       "--refuse-login", "--cut-transfer", "10", "--answer-after", "250", "--garble", "7", "--lose-reload"},
      reason);
  ASSERT_TRUE(options);
  EXPECT_EQ(options->panel.root, "/srv/site/panel-127.0.0.5");
  EXPECT_TRUE(options->panel.seed);
  EXPECT_EQ(options->panel.modules, (std::array<int, 8>{1, 0, 3, 0, 0, 0, 0, 0}));
  EXPECT_TRUE(options->panel.faults.ftp.refuseLogin);
  EXPECT_EQ(options->panel.faults.ftp.cutAfter, 10U);
  EXPECT_EQ(options->panel.faults.control.delay.count(), 250);
  EXPECT_EQ(options->panel.faults.control.garbleAfter, 7U);
  EXPECT_TRUE(options->panel.faults.loseReload);
  EXPECT_FALSE(options->panel.faults.control.dropAfter);
}

TEST_F(PanelTest, AnEmptyTreeIsFilledFromTheFirstApplicationThatHasMacros) {
  const std::string appli = "c:\\programme\\RV48\\appli\\Show\\";
  site.write(appli + "devices.ini", "Dev1=CP1 \"Desk\"\r\nDev2=CP2 \"Old\"\r\n");
  site.write(appli + "CP1\\assign\\contents.cnt", "Name=Desk\n");
  site.write(appli + "CP1\\macroWP2\\macro010.mac", macro("Ten"));
  site.write(appli + "CP1\\macroWP2\\notes.mac", macro("no macro"));
  PanelOptions seeded = options();
  seeded.site = site.root.path().string();
  seeded.seed = true;
  start(seeded);
  EXPECT_EQ(panel->macros(2), (std::vector<std::pair<int, std::string>>{{10, "Ten"}}));
  EXPECT_TRUE(panel->removeMacro(2, 10));
  tree.write(hostPathOfTree(1, "macro001.mac"), macro("own"));
  start(seeded);
  EXPECT_TRUE(panel->macros(2).empty()) << "a tree in use is left alone";
}

}  // namespace
}  // namespace tessaly
