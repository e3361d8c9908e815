#include <ctime>
#include <filesystem>

#include "PanelFixture.h"
#include "panelsim/Options.h"
#include "panelsim/Prompt.h"
#include "tests/support/BuildPaths.h"

namespace tessaly {
namespace {

TEST_F(PanelTest, WrongPromptLinesAreRefusedAndChangeNothing) {
  tree.write(hostPathOfTree(1, "macro000.mac"), macro("Zero"));
  tree.write(hostPathOfTree(8, "macro999.mac"), macro("Nine"));
  start();
  const std::string which = "W is 1 to 8 and N 0 to 999", fault = "no such fault, or not with this number: ";
  const std::pair<std::string, std::vector<const char*>> wrong[] = {
      {"no such command: dance (\"help\" lists them)", {"dance"}},
      {"set NAME VALUE", {"set"}},
      {"get NAME", {"get"}},
      {"trigger NAME VALUE", {"trigger"}},
      {"no such value: QMF1.NOTHING", {"get QMF1.NOTHING"}},
      {"rename W N NAME: " + which, {"rename 1", "rename 9 1 x", "rename 1 1000 x"}},
      {"rename W N NAME: a macro needs a name", {"rename 1 0", "rename 1 0  "}},
      {"no such macro", {"rename 1 5 x", "delete 1 5"}},
      {"a workplace is 1 to 8", {"list 9", "list x", "stop 0"}},
      {"macro 005 cannot be opened: No such file or directory", {"run 1 5"}},
      {"run W N: " + which, {"run 9 0", "run 1 x"}},
      {"pace MS: 0 to 60000", {"pace", "pace -1", "pace 60001"}},
      {"delete W N: " + which, {"delete 0 5", "delete 1"}},
      {"mfd W N: W is 1 to 8", {"mfd 1 x", "mfd 9 1"}},
      {fault + " ", {"fault"}},
      {fault + "smell ", {"fault smell"}},
      {fault + "cut-transfer -1", {"fault cut-transfer -1"}},
      {fault + "never-answer 5", {"fault never-answer 5"}},
      {fault + "slow-transfer 0", {"fault slow-transfer 0"}},
      {"wait MS, or wait run", {"wait", "wait x", "wait 86400001"}},
      {"restart [MS]", {"restart -1"}},
  };
  for (const auto& [text, lines] : wrong)
    for (const char* line : lines) {
      const PromptAnswer answer = runPromptLine(*panel, line);
      EXPECT_FALSE(answer.known) << line;
      EXPECT_EQ(answer.text, text) << line;
    }
  std::string told;
  for (const char* line : {"", "  ", "# note", "wait 0", "wait run", "restart 0", "pace 0", "pace 60000",
                           " \tset\tQMF1.A  two  words\r", "get QMF1.A", "list\r", "list 8",
                           "rename 8 999 Ten", "list 2", "delete 1 0", "list"}) {
    const PromptAnswer answer = runPromptLine(*panel, line);
    EXPECT_TRUE(answer.known && !answer.quit) << line;
    told += answer.text + '|';
  }
  EXPECT_EQ(
      told,
      "||||||||| two  words|workplace 1: 000 - Zero\nworkplace 8: 999 - Nine|workplace 8: 999 - Nine||||"
      "workplace 8: 999 - Ten|");
  const std::string help = runPromptLine(*panel, "help").text, indented = "\n                    ";
  EXPECT_TRUE(help.starts_with(
      "list [W]            macros of all workplaces or of one\nget NAME            current"));
  EXPECT_NE(help.find("stall-transfer," + indented + "disk-full"), help.npos);
  EXPECT_TRUE(help.ends_with("\nhelp                this text\nquit"));
  EXPECT_TRUE(runPromptLine(*panel, "quit").quit && runPromptLine(*panel, "exit").quit);
}

TEST_F(PanelTest, StatusNamesTheFaultsInForce) {
  start();
  for (const char* fault :
       {"answer-after 5", "drop-after 0", "cut-transfer 1", "flip-byte 0", "cut-silent 2", "slow-transfer 1",
        "garble 4", "never-answer", "refuse-login", "stall-transfer", "disk-full", "refuse-download",
        "swap-after-upload", "dead-line", "lose-reload"}) {
    PanelFaults faults;
    const std::string words = fault;
    const std::size_t blank = words.find(' ');
    ASSERT_TRUE(
        applyFault(words.substr(0, blank), blank == words.npos ? "" : words.substr(blank + 1), faults));
    EXPECT_EQ(faultsInForce(faults), std::vector<std::string>{fault});
  }
  ASSERT_TRUE(runPromptLine(*panel, "fault lose-reload").known);
  ASSERT_TRUE(runPromptLine(*panel, "fault drop-after 7").known);
  EXPECT_TRUE(runPromptLine(*panel, "status").text.ends_with("\nfaults: drop-after 7, lose-reload"));
  ASSERT_TRUE(runPromptLine(*panel, "fault lose-reload off").known);
  ASSERT_TRUE(runPromptLine(*panel, "fault drop-after off").known);
  ASSERT_TRUE(runPromptLine(*panel, "fault answer-after off").known);
  EXPECT_EQ(runPromptLine(*panel, "status").text,
            "control 127.0.0.1:" + std::to_string(panel->controlPort()) + ", ftp port " +
                std::to_string(panel->ftpPort()) + ", editors 0, tree " + panel->root() + "\nfaults: none");
}

// A panel of the sample site, whose macro 7 sets, steps and cuts.
TEST_F(PanelTest, AMacroIsCarriedOutAndWhatIsTypedIsChecked) {
  const std::string clip = "QMF1.ME1.KEY1.CLIP";
  const std::string seven = "<macro name=\"Seven\"><data><cmd fid=\"" + clip +
                            ".SET\"><param name=\"VALUE\" value=\"0.25\"/></cmd><cmd fid=\"" + clip +
                            ".INC\"><param name=\"VALUE\" value=\"512\"/></cmd>"
                            "<cmd fid=\"QMF1.ME1.TRANSI.CUT\"/></data></macro>";
  for (const int workplace : {1, 8}) tree.write(hostPathOfTree(workplace, "macro007.mac"), seven);
  PanelOptions withSite = options();
  withSite.site = sourcePath("site");
  withSite.pace = MacroRuns::Pace(kLongestPaceMs);
  start(withSite);

  // A run that is stopped, and one that gives way, do no more.
  int begun = 0;
  const auto begins = [&] {
    for (const char* line : {"run 1 7", "run 8 7"}) ASSERT_TRUE(runPromptLine(*panel, line).known);
    ++begun;
    const std::string first = "workplace 8, macro 007, command 1: " + clip + ".SET, " + clip + " = 0.25";
    ASSERT_TRUE(soon([&] { return logged(first) == begun; }));
  };
  begins();
  const std::clock_t worked = std::clock();
  EXPECT_FALSE(panel->waitForRuns(MacroRuns::Pace(200)));
  EXPECT_LT(std::clock() - worked, CLOCKS_PER_SEC / 20) << "waiting takes no time";
  ASSERT_TRUE(runPromptLine(*panel, "run 2 7").text.starts_with("macro 007 ")) << "there is none";
  ASSERT_TRUE(runPromptLine(*panel, "stop 1").known);
  ASSERT_TRUE(runPromptLine(*panel, "stop 8").known);
  EXPECT_TRUE(panel->waitForRuns(std::chrono::seconds(10)));
  EXPECT_EQ(panel->value("PANEL.MACRO1.RUNNING"), "");
  begins();
  ASSERT_TRUE(runPromptLine(*panel, "restart").known);
  EXPECT_TRUE(panel->waitForRuns(std::chrono::seconds(10)));
  EXPECT_EQ(panel->value(clip), "0.25");
  // A shorter pace counts for the run that waits already.
  begins();
  ASSERT_TRUE(runPromptLine(*panel, "pace 0").known);
  EXPECT_TRUE(panel->waitForRuns(std::chrono::seconds(10)));
  EXPECT_EQ(panel->value(clip), "1.000000") << "both have stepped it";

  ASSERT_TRUE(connect());
  for (const std::string& name : {clip, std::string("PANEL.MACRO1.RUNNING")})
    ASSERT_TRUE(connection.subscribe(name));
  ASSERT_TRUE(runPromptLine(*panel, "watch " + clip).known);
  ASSERT_TRUE(connection.callFunctionId("PANEL.MACRO1.RUN", registerNumber("007")));
  const std::vector<std::string> wanted = {"value PANEL.MACRO1.RUNNING=007", "value " + clip + "=0.25",
                                           "value " + clip + "=0.750000", "value PANEL.MACRO1.RUNNING="};
  ASSERT_TRUE(soon([&] { return recorder.events().size() == 7; })) << "status 0, two values, what followed";
  const auto events = recorder.events();
  EXPECT_EQ(std::vector<std::string>(events.end() - 4, events.end()), wanted);
  EXPECT_EQ(logged(clip + " = 0.750000\nworkplace 1, macro 007, command 3: QMF1.ME1.TRANSI.CUT, acts"), 1)
      << "it is watched";
  EXPECT_EQ(logged("PANEL.MACRO1.RUNNING = 007"), 0);

  const struct {
    const char *line, *says;
  } refused[] = {
      {"set QMF1.ME1.KEY1.CLIPP 0.5",
       "no such value: QMF1.ME1.KEY1.CLIPP; near: QMF1.ME1.KEY1.CLIP, QMF1.ME0.KEY1.CLIP, "
       "QMF1.ME1.KEY2.CLIP, "
       "QMF1.ME1.KEY3.CLIP, QMF1.ME1.KEY4.CLIP"},
      {"get QMF1.ME1.KEY1.WIPE.ROT",
       "no such value: QMF1.ME1.KEY1.WIPE.ROT; near: QMF1.ME1.KEY1.WIPE.ROTATION, "
       "QMF1.ME1.KEY1.WIPE.ROTATION_SPEED, QMF1.ME1.KEY1.WIPE.ROTATION_ENABLE, QMF1.ME1.KEY1.WIPE.SOFT, "
       "QMF1.ME0.KEY1.WIPE.SOFT"},
      {"watch QMF1.ME1.KEY1.CLIP NOTHING",
       "no such value: NOTHING; a name begins with QMF1. to QMF4. or PANEL."}};
  for (const auto& [line, says] : refused) {
    const PromptAnswer answer = runPromptLine(*panel, line);
    EXPECT_FALSE(answer.known) << line;
    EXPECT_EQ(answer.text, says);
  }
  for (const auto& [words, could] : std::initializer_list<std::pair<std::string, std::string>>{
           {"QMF1.ME1.KEY1.CLIP 1.5", "a number, min: 0.0000   max: 1.0000"},
           {"QMF1.ME1.TRANSI.TYPE Wipe", "one of MIX, WIPE, ADD, FAM, CUT, DPM"},
           {"QMF1.ME1.KEY1.RATE fast", "one of 0, 1, 2, 3; or a whole number, min: 0   max: 999"},
           {"PANEL.WP1.MFDCOUNT 13", "a whole number, min: 0   max: 12"},
           {"PANEL.MONITOR.SOURCE x", "the number of an input"},
           {"QMF1.ME1.KEY1.WIPE.PATTERN x",
            "one of 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12 ...; or one of 0, 1"},
           {"PANEL.CLOCK.TIMECODE x", "a packed timecode"},
           {"PANEL.CLOCK.TIMECODE 255", "a packed timecode"}})
    EXPECT_EQ(runPromptLine(*panel, "set " + words).text,
              std::string(words).insert(words.find(' '), " cannot hold") + ": it is " + could);
  EXPECT_EQ(panel->value(clip), "0.750000");
  // The limits themselves, and what one of several parameters can hold.
  for (const std::string& rest :
       {clip + " 0", clip + " 1", std::string("QMF1.ME1.KEY1.RATE 25"), std::string("PANEL.MONITOR.SOURCE 7"),
        std::string("PANEL.CLOCK.TIMECODE 1")})
    EXPECT_TRUE(runPromptLine(*panel, "set " + rest).known) << rest;
  EXPECT_EQ(runPromptLine(*panel, "watch").text, clip + " = 1");
  EXPECT_TRUE(runPromptLine(*panel, "watch off").known);
  EXPECT_EQ(runPromptLine(*panel, "watch").text, "");
}

TEST(Options, TableOfCommandLines) {
  std::string reason;
  for (const std::string wrong :
       {"--smell", "--control-port", "--control-port 65536", "--ftp-port 21x", "--mfd 1,,2", "--mfd 1001",
        "--pace 60001", "--root ", "--mfd 1,2,3,4,5,6,7,8,9", "--drop-after off", "--answer-after -5",
        "address ::1"}) {
    const std::size_t blank = wrong.find(' ');
    std::vector<std::string> words{wrong.substr(0, blank)};
    if (blank != wrong.npos) words.push_back(wrong.substr(blank + 1));
    EXPECT_FALSE(readOptions(words, reason)) << wrong;
    EXPECT_EQ(
        reason,
        (words.size() == 1 ? "wrong option, or one without its value: " : "wrong option or value: ") + wrong);
  }
  const auto options = readOptions(
      {"--address", "127.0.0.5",      "--site",         "/srv/site", "--control-port", "0",   "--mfd",
       "1,0,3",     "--refuse-login", "--cut-transfer", "10",        "--answer-after", "250", "--garble",
       "7",         "--lose-reload",  "--ftp-port",     "65535",     "--pace",         "0",   "--script",
       "s"},
      reason);
  ASSERT_TRUE(options);
  EXPECT_EQ(options->panel.root, "/srv/site/panel-127.0.0.5");
  EXPECT_TRUE(options->panel.seed);
  EXPECT_EQ(options->panel.controlPort, 0);
  EXPECT_EQ(options->panel.ftpPort, 65535);
  EXPECT_EQ(options->panel.pace.count(), 0);
  EXPECT_EQ(options->script, "s");
  EXPECT_EQ(options->panel.modules, (std::array<int, 8>{1, 0, 3, 0, 0, 0, 0, 0}));
  EXPECT_TRUE(options->panel.faults.ftp.refuseLogin);
  EXPECT_EQ(options->panel.faults.ftp.cutAfter, 10U);
  EXPECT_EQ(options->panel.faults.control.delay.count(), 250);
  EXPECT_EQ(options->panel.faults.control.garbleAfter, 7U);
  EXPECT_TRUE(options->panel.faults.loseReload);
  EXPECT_FALSE(options->panel.faults.control.dropAfter || options->version || options->help);
  EXPECT_TRUE(readOptions({"--version"}, reason)->version && readOptions({"--help"}, reason)->help);
  const PanelOptions seeded = readOptions({"--seed"}, reason)->panel;
  EXPECT_TRUE(seeded.seed);
  EXPECT_EQ(seeded.site, SiteRoot::fromEnvironment("").path().string());
}

TEST_F(PanelTest, AnEmptyTreeIsFilledFromTheFirstApplicationThatHasMacros) {
  for (const std::string name : {"Empty", "Show", "Zebra"}) {
    const std::string appli = "c:\\programme\\RV48\\appli\\" + name + '\\';
    site.write(appli + "devices.ini", "Dev1=CP1 \"Desk\"\r\nDev2=CP2 \"Old\"\r\n");
    site.write(appli + "CP1\\assign\\contents.cnt", "Name=Desk\n");
    for (const char* number : {"1", "8"}) {
      const std::string folder = appli + "CP1\\macroWP" + number;
      site.write(folder + "\\notes.mac", macro("no macro"));
      if (name != "Empty") site.write(folder + "\\macro010.mac", macro(name));
    }
  }
  PanelOptions seeded = options();
  seeded.site = site.root.path().string();
  seeded.seed = true;
  start(seeded);
  EXPECT_EQ(panel->macros(8), (std::vector<std::pair<int, std::string>>{{10, "Show"}}));
  EXPECT_EQ(logged("filled the empty tree with 2 macros of the site"), 1);
  EXPECT_TRUE(panel->removeMacro(8, 10) && panel->removeMacro(1, 10));
  ASSERT_TRUE(runPromptLine(*panel, "restart").known);
  EXPECT_TRUE(panel->macros(8).empty()) << "it was emptied";
  for (const int workplace : {1, 8}) {
    const std::string own = hostPathOfTree(workplace, "macro001.mac");
    tree.write(own, macro("own"));
    start(seeded);
    EXPECT_EQ(panel->macros(8).size(), workplace == 8) << "a tree in use is left alone";
    std::filesystem::remove(own);
  }
}

}  // namespace
}  // namespace tessaly
