#include <gmock/gmock.h>

#include "platform/Text.h"
#include "review/ValueJudgement.h"
#include "tests/review/SampleMacros.h"
#include "tests/support/PlantedFaults.h"
#include "tests/support/TestSite.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The sample site's macros are checked by its dictionary and lists.
struct MacroCheckTest : SampleMacrosTest {
  // "limits 1 error VALUE: what is wrong; what is right" for a finding at the second command.
  static std::vector<std::string> told(const Findings& findings) {
    std::vector<std::string> lines;
    for (const Finding& finding : findings) {
      const std::string right = rightText(finding);
      lines.push_back(std::string(infoOf(finding.rule).name) + ' ' + std::to_string(finding.command) + ' ' +
                      std::string(severityName(finding.severity)) +
                      (finding.parameter.empty() ? "" : ' ' + finding.parameter) + ": " + wrongText(finding) +
                      (right.empty() ? "" : "; " + right));
    }
    return lines;
  }

  MacroCheck check{{dictionary(), lists}};
};

// A fix is an edit after which the finding is gone and nothing else is there.
TEST_F(MacroCheckTest, CertainFixesMend) {
  const std::string clip = "QMF1.ME1.KEY1.CLIP.SET", half = parameter("VALUE", "0.5");
  const struct {
    std::string commands, rule, right;
  } cases[] = {
      {command(clip, parameter("VALUE", "7")),
       "limits 0 error VALUE: \"7\" is beyond the limits; 1 (a number, min: 0.0000   max: 1.0000)",
       command(clip, parameter("VALUE", "1"))},
      {command("QMF1.ME1.KEY1.CLIPP.SET", half),
       "unknown-function 0 error: no function is called \"ME1.KEY1.CLIPP.SET\"; ME1.KEY1.CLIP.SET",
       command(clip, half)},
      {command("PANNEL.LIGHT.DIMMER.SET", half),
       "destination 0 error: the destination \"PANNEL\" is unknown; QMF1 to QMF4, or PANEL",
       command("PANEL.LIGHT.DIMMER.SET", half)},
      {command(clip, parameter("VALEU", "0.5")),
       "unknown-parameter 0 error VALEU: the function has no parameter \"VALEU\"; VALUE",
       command(clip, half)},
      {command("QMF1.ME1.TRANSI.TYPE.SET", parameter("TYPE", "Wipe")),
       "choice 0 error TYPE: \"Wipe\" is none of the values; WIPE (one of MIX, WIPE, ADD, FAM, CUT, DPM)",
       command("QMF1.ME1.TRANSI.TYPE.SET", parameter("TYPE", "WIPE"))},
      {command("QMF1.ME2.TRANSI.DURATION.SET", parameter("TIMECODE", "00:00:01:27")),
       "timecode 0 error TIMECODE: \"00:00:01:27\" is no timecode; 00:00:01:24 (a packed timecode of a clock "
       "with 25 frames a second)",
       command("QMF1.ME2.TRANSI.DURATION.SET", parameter("TIMECODE", "00:00:01:24"))},
      {command("QMF1.NCSCOMMAND", parameter("CMD", "24 00 20 08 02")),
       "classic-text 0 error: the text does not decode; 24 00 20 08 02 ",
       command("QMF1.NCSCOMMAND", parameter("CMD", "24 00 20 08 02 "))},
      {command(clip, half) + command(clip, half), "repeated 1 warning: the same command as 0; one of the two",
       command(clip, half)},
      {command("QMF1.ME1.KEY1.BORDER_MODE.SET", parameter("MODE", "2") + parameter("DIRECTION", "8")),
       "limits 0 error DIRECTION: \"8\" is beyond the limits; 7 (a whole number, min: 0   max: 7)",
       command("QMF1.ME1.KEY1.BORDER_MODE.SET", parameter("MODE", "2") + parameter("DIRECTION", "7"))},
  };
  for (const auto& [commands, rule, right] : cases) {
    const auto macro = Macro::read(macroOf(commands));
    Findings findings = check.check(*macro);
    std::erase_if(findings,
                  [](const Finding& finding) { return finding.rule == CheckRule::kEmptyParameter; });
    ASSERT_THAT(told(findings), ElementsAre(rule)) << commands;
    ASSERT_TRUE(findings[0].fix) << commands;
    const auto mended = tessaly::apply(*macro, *findings[0].fix);
    ASSERT_TRUE(mended) << commands;
    EXPECT_EQ(mended->commands(), Macro::read(macroOf(right))->commands()) << commands;
    EXPECT_THAT(check.check(*mended), IsEmpty()) << right;
  }
}

// What could be a fault by the letter, and is none; and what must not be mended by guess.
TEST_F(MacroCheckTest, LeavesWhatIsMeant) {
  const std::string x = "QMF1.CHANNEL1.EDPM.POSITION_X.SET";
  const auto set = [](const std::string& fid, const char* value) {
    return command(fid, parameter("VALUE", value));
  };
  const std::string clip = "QMF1.ME1.KEY1.CLIP.SET";
  const struct {
    std::string commands;
    std::vector<std::string> told;
  } cases[] = {
      {set(clip, "0.1") + command("QMF1.ME1.KEY1.CUT_ON") + set(clip, "0.2"), {}},
      {set(clip, "0.1") + set("QMF2.ME1.KEY1.CLIP.SET", "0.2"), {}},
      {set(clip, "0.1") + set("QMF1.ME1.KEY1.GAIN.SET", "0.1") + set(clip, "0.2"),
       {"set-again 0 warning: it is set again before anything acts, by command 2; one of the two"}},
      {command("PANEL.LIGHT.DIMMER.SET", parameter("VALUE", "0.1"), "1") +
           command("PANEL.LIGHT.DIMMER.SET", parameter("VALUE", "0.2"), "2"),
       {}},
      {command(clip) + command("QMF1.NCSCOMMAND", parameter("CMD", "24 00 20 08 02 ")),
       {"empty-parameter 0 error VALUE: \"VALUE\" is missing; a value: the parameter is not optional",
        "spill 0 warning: an update would put its value into command 1; a parameter with a value"}},
      {command(clip),
       {"empty-parameter 0 error VALUE: \"VALUE\" is missing; a value: the parameter is not optional"}},
      {command("QMF5.ME1.KEY1.CLIP.SET", parameter("VALUE", "0.5")),
       {"destination 0 error: the destination \"QMF5\" is unknown; QMF1 to QMF4, or PANEL"}},
      {command("PANEL.LIGHT.DIMMER.SET", parameter("VALUE", "0.1"), "12"),
       {"workplace 0 error: \"12\" is no workplace; 1 to 8"}},
      {set(clip, "0.1") + command(clip, parameter("OTHER", "0.1")),
       {"unknown-parameter 1 error OTHER: the function has no parameter \"OTHER\"",
        "empty-parameter 1 error VALUE: \"VALUE\" is missing; a value: the parameter is not optional"}},
      {R"(<cmd fid="QMF1.ME1.KEY1.CLIPP.SET" workplace="1" group="0" module="0" widget="0" mine="x"/>)",
       {"unknown-function 0 error: no function is called \"ME1.KEY1.CLIPP.SET\"; ME1.KEY1.CLIP.SET"}},
      {R"(<cmd fid="QMF1.ME1.KEY1.CLIPP.SET" workplace="1" group="3" module="0" widget="0"/>)",
       {"unknown-function 0 error: no function is called \"ME1.KEY1.CLIPP.SET\"; ME1.KEY1.CLIP.SET"}},
      {R"(<cmd fid="QMF1.ME1.KEY1.CLIPP.SET" workplace="1" group="0" module="0" widget="0">)"
       R"(<param name="VALUE"/></cmd>)",
       {"unknown-function 0 error: no function is called \"ME1.KEY1.CLIPP.SET\"; ME1.KEY1.CLIP.SET"}},
      {command("QMF1.NCSCOMMAND", parameter("CMD", "24 00 2x 08 02")),
       {"classic-text 0 error: the text does not decode"}},
      {classic("3f 00 03 10 05 0g "),
       {"classic-text 0 error: the byte \"0g\" is not written in the digits 0 to 9 and a to f"}},
      {command(clip, parameter("VALUE", "0.5") + parameter("VALEU", "0.5")),
       {"unknown-parameter 0 error VALEU: the function has no parameter \"VALEU\""}},
      {set(clip, "0.1") + set("QMF7.ME1.KEY1.GAIN.SET", "0.1") + set(clip, "0.2"),
       {"set-again 0 warning: it is set again before anything acts, by command 2; one of the two",
        "destination 1 error: the destination \"QMF7\" is unknown; QMF1 to QMF4, or PANEL"}},
  };
  for (const auto& [commands, expected] : cases) {
    const Findings findings = check.check(*Macro::read(macroOf(commands)));
    EXPECT_EQ(told(findings), expected) << commands;
    for (const Finding& finding : findings) EXPECT_FALSE(finding.fix) << commands;
  }
  EXPECT_EQ(numberKindOf(*dictionary().find("ME1.KEY1.CLIP.INC")), NumberKind::kStep);
  EXPECT_EQ(numberKindOf(*dictionary().find("ME1.KEY1.CUT_ON")), NumberKind::kFixedPoint);
}

TEST_F(MacroCheckTest, JudgesTheBytesByTheEncodingThatTheyAreReadIn) {
  const std::string end = "'><data>" + command("QMF1.ME1.KEY1.CUT_OFF") + "</data></macro>";
  const auto declared = [](const char* name) {
    return "<?xml version='1.0' encoding='" + std::string(name) + "'?><macro name='";
  };
  const struct {
    std::string bytes;
    std::vector<std::string> told;
  } cases[] = {
      {"<macro name='\xC3\x81" + end, {}},  // UTF-8, whose second byte Windows-1252 lacks
      {"<macro name='\xC1" + end, {}},
      {"<macro name='\xC1\x81" + end,
       {"encoding -1 error: the file has bytes that are no character of Windows-1252; UTF-8 or "
        "Windows-1252"}},
      {"\xEF\xBB\xBF<macro name='\xC3\x81" + end, {}},
      {declared("UTF-8") + "\xC3\x81" + end, {}},
      {declared("UTF-8") + "\xC1" + end,
       {"encoding -1 error: the file says UTF-8, but its bytes are none; UTF-8 or Windows-1252"}},
      {declared("windows-1252") + "\xC1" + end, {}},
      {declared("windows-1252") + "\x81" + end,
       {"encoding -1 error: the file has bytes that are no character of Windows-1252; UTF-8 or "
        "Windows-1252"}},
      {declared("KOI8-R") + "x" + end, {}},
      {declared("KOI8-R") + "\xC1" + end,
       {"encoding -1 error: the file says KOI8-R, of which only ASCII is understood; UTF-8 or Windows-1252"}},
      {"<macro name='M'/>", {"unreadable -1 error: there is no macro with data in the file"}},
      {"<macro name=''><data/></macro>",
       {"no-name -1 warning: the macro has no name", "empty-macro -1 note: there are no commands"}},
  };
  for (const auto& [bytes, expected] : cases) {
    const auto macro = Macro::read(bytes);
    ASSERT_TRUE(macro) << bytes;
    EXPECT_EQ(told(check.check(*macro)), expected) << bytes;
  }
}

// A finding for each of them would take a gigabyte.
TEST_F(MacroCheckTest, HostileCommandGivesFewFindings) {
  std::string many;
  for (int i = 0; i < 20'000; ++i) many += parameter("VALUE", "7") + parameter("OTHER", "7");
  EXPECT_LT(check.check(*Macro::read(macroOf(command("QMF1.ME1.KEY1.CLIP.SET", many)))).size(), 100U);
}

TEST_F(MacroCheckTest, WorkplaceRulesAndRulesThatAreOff) {
  const TestSite site;
  const std::string sound = macroOf(command("QMF1.ME1.KEY1.CUT_OFF"));
  site.write("c:\\w\\macro001.mac", sound);
  site.write("c:\\w\\macro002.mac", sound);
  site.write("c:\\w\\macro03.mac", "<macro><data/></macro>");
  site.write("c:\\w\\macro004.mac", "<macro name='x'>");
  site.write("c:\\w\\deep\\key00.upk",
             "#UPK\nBeginHeader\nFile=key00.upk\nName=K\nVersion=1.0\nEndHeader\n24 00 20 08 02\n24 00 2O 08 "
             "02 \n24 0 20 8 02 zz \n");
  site.write("c:\\w\\MacroFid\\macro001.mac", "not ours");
  std::vector<std::string> problems;
  const RulesOff off = RulesOff::parse(
      "# why\r\noff file-name\r\n\noff nothing\non limits\noff unreadable\n\toff  name-twice", problems);
  EXPECT_THAT(off.names(), ElementsAre("unreadable", "name-twice", "file-name"));
  EXPECT_THAT(problems, ElementsAre("line 4 is no \"off RULE\"", "line 5 is no \"off RULE\""));
  static_cast<void>(RulesOff::load(site.root, problems));
  EXPECT_EQ(problems.size(), 2U) << "a site without switches";
  std::filesystem::create_directories(site.root.resolve(kCheckFile));
  static_cast<void>(RulesOff::load(site.root, problems));
  EXPECT_EQ(problems.size(), 3U);
  std::filesystem::remove(site.root.resolve(kCheckFile));
  const std::tuple<const char*, const char*, const char*> files[] = {
      {"", "limits", "off limits\n"},
      {"# why\noff limits\noff spill", "limits", "# why\noff limits\n"},
      {"off spill\non limits", "limits", "on limits\noff limits\n"},
      {" off  spill ", "spill", " off  spill "},
      {"off spill\n", "", ""},
  };
  for (const auto& [before, rule, after] : files) {
    if (*before) site.write(kCheckFile, before);
    RulesOff stored;
    if (const CheckRuleInfo* info = checkRuleNamed(rule)) stored.set(info->rule);
    EXPECT_TRUE(stored.store(site.root));
    EXPECT_EQ(site.read(kCheckFile), after);
    EXPECT_EQ(RulesOff::load(site.root, problems), stored) << after;
  }
  const std::string native = site.root.resolve("c:\\w").string();
  EXPECT_EQ(macroFoldersUnder(site.root, native).at(0).files.at(0),
            site.root.resolve("c:\\w\\macro001.mac").string());
  for (const bool switched : {false, true}) {
    MacroCheck own({dictionary(), lists, 25, switched ? off : RulesOff()});
    std::vector<std::string> lines;
    for (const MacroFolder& folder : macroFoldersUnder(site.root, "c:\\w"))
      checkFolder(site.root, folder, own, [&](const CheckedFile& file) {
        for (const std::string& line : told(file.findings))
          lines.push_back(std::string(fileNameOf(file.path)) + ' ' + line);
      });
    std::vector<std::string> expected = {
        "macro002.mac name-twice -1 warning: macro001.mac has the same name",
        "macro004.mac unreadable -1 error: is not well formed: Error reading Element value.",
        "macro03.mac file-name -1 warning: the file is not named by its number; macro007.mac",
        "macro03.mac no-name -1 warning: the macro has no name",
        "macro03.mac empty-macro -1 note: there are no commands",
        "key00.upk classic-text 0 error: the text does not decode; 24 00 20 08 02 ",
        "key00.upk classic-text 1 error: the byte \"2O\" is not written in the digits 0 to 9 and a to f"};
    if (switched) expected.erase(expected.begin(), expected.begin() + 3);
    EXPECT_EQ(lines, expected);
  }
}

TEST_F(MacroCheckTest, FindsPlantedFaultsInSoundMacros) {
  std::size_t planted = 0, serious = 0;
  for (const MacroFolder& folder : macroFoldersUnder(root(), "c:\\programme\\RV48\\appli"))
    checkFolder(root(), folder, check, [&](const CheckedFile& file) {
      for (const Finding& finding : file.findings) serious += finding.severity != Severity::kNote;
    });
  EXPECT_EQ(serious, 0U) << "in the sample site";
  PlantedFaults faults(root(), "c:\\programme\\RV48\\appli", dictionary(), lists);
  for (unsigned number = 0; number < 4 * kCheckRules; ++number) {
    const auto result = faults.plant(number);
    if (!result) continue;
    ++planted;
    EXPECT_TRUE(result->found) << number << ": " << infoOf(result->rule).name << ' ' << result->where;
  }
  EXPECT_EQ(planted, 4 * (kCheckRules - 2));  // two are of folders
}

}  // namespace
}  // namespace tessaly
