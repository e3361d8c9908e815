#include <gtest/gtest.h>

#include "classic/ClassicGroups.h"
#include "dictionary/InterfaceFile.h"
#include "model/CommandLines.h"
#include "model/MacroFile.h"
#include "platform/Text.h"
#include "tests/support/LoadCommands.h"
#include "tests/support/TestSite.h"

namespace tessaly {
namespace {

constexpr LineOptions kPlain, kTabs{false, false, true}, kDestination{true, false, false},
    kRaw{false, true, false}, kRawDestination{true, true, false};
constexpr const char* kNoContent = "empty command line, use modify to create command...";

MacroCommand command(const char* fid, std::vector<MacroParameter> parameters = {},
                     const char* workplace = "") {
  MacroCommand result;
  result.fid = fid;
  result.workplace = workplace;
  result.parameters = std::move(parameters);
  return result;
}

struct CommandLineTest : testing::Test, TestSite {
  CommandLineTest() {
    write(R"(c:\Programme\RV48\bin\MacroCdCo_Tarrow\Cd-0x05\Cd-0x05-Co-0x01.ini)",
          "CD 0x05\nCO 0x01\n[0x01-0x01 \"x\" \"Long|name\"\n");
    EnumFamily inputs{"INPUT_5", {{"XNPUT5", "wrong"}, {"INPUT15", "Fifteen"}, {"INPUT5", "Cam 5"}}};
    dictionary.add(std::move(inputs));
    FunctionTemplate all;
    all.name = "ME1.ALL";
    all.sid = "ME1.ALL.VALUE";
    all.description = "Everything";
    all.inputs = {{"in", "", "", false}, {"twice", "", "", false}};
    all.enums = {{"enum", "", "", false, {{"3", "Circle"}}}, {"twice", "", "", false, {}}};
    all.integers = {{"scaled", "", "", false, true, 0, 255, 0, 100},
                    {"flat", "", "", false, true, 7, 7, 0, 100},
                    {"plain", "Level", "", false, false, 0, 0, 0, 0}};
    all.floats = {{"free", "", "", false, FloatUnit::kPercent, 0, 0, 0, 0},
                  {"none", "", "", false, FloatUnit::kNone, 0, 1, 0, 10},
                  {"percent", "", "", false, FloatUnit::kPercent, 0, 1, 0, 100},
                  {"degree", "", "", false, FloatUnit::kDegree, 0, 2, 0, 360}};
    all.timecodes = {{"time", "", "", false}};
    dictionary.add(all);
    all.sid.clear();
    all.name = "ME1.INC";
    dictionary.add(all);
  }

  std::string line(const MacroCommand& command, const LineOptions& options = kPlain, bool updated = false) {
    CommandLines lines(options, {dictionary, lists});
    for (int time = 0; time < 2; ++time)
      EXPECT_EQ(lines.of(command), commandLine(command, options, {dictionary, lists}));
    return commandLine(command, options, {dictionary, lists}, updated);
  }
  // The line of one parameter without the function's text.
  std::string parameterLine(const char* function, const char* name, const char* value, bool tabs = false) {
    const std::string text = line(command(function, {{name, value}}), tabs ? kTabs : kPlain);
    EXPECT_EQ(text.substr(0, 10), "Everything");
    return text.substr(10);
  }

  FunctionDictionary dictionary;
  DecodingLists lists{root};
};

TEST_F(CommandLineTest, ShowsEachKindOfParameter) {
  struct Case {
    const char *name, *value, *text, *incrementalText;  // null: the same
  };
  const Case cases[] = {{"in", "5", " ==> Cam 5", nullptr},
                        {"in", "INPUT5", " ==> ", nullptr},
                        {"in", "", " ==> ", nullptr},
                        {"twice", "15", " ==> Fifteen", nullptr},
                        {"enum", "3", " ==>  Circle", nullptr},
                        {"enum", "4", " ==>  ", nullptr},
                        {"scaled", "128", " ==> 50.2%", nullptr},
                        {"scaled", "", " ==> 0.0%", nullptr},
                        {"flat", "9", " ==> 9%", nullptr},
                        {"flat", "", " ==> %", nullptr},
                        {"plain", "12", " ==> Level12", nullptr},
                        {"plain", "", " ==> Level", nullptr},
                        {"free", "0.25", " ==> 0.25", " ==> 0.0002"},
                        {"free", "", " ==> ", " ==> 0.0000"},
                        {"none", "0.5", " ==> 5.0", " ==> 0.0005"},
                        {"percent", "512", " ==> 51200.0%", " ==> 0.5000"},
                        {"degree", "", " ==> 0.0[\xC2\xB0]", " ==> 0.0000"},
                        {"time", "270544901", " ==> 10:20:30:05", nullptr},
                        {"unknown", "1", "", nullptr}};
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.name) + "=" + c.value);
    EXPECT_EQ(parameterLine("QMF1.ME1.ALL", c.name, c.value), c.text);
    EXPECT_EQ(parameterLine("QMF1.ME1.INC", c.name, c.value), c.incrementalText ? c.incrementalText : c.text);
  }
  EXPECT_EQ(parameterLine("QMF1.ME1.ALL", "enum", "3", true), "\t Circle");
  for (const auto& [name, stored, shown] : {std::tuple("enum", "3", "Circle"),
                                            {"enum", "4", "4"},
                                            {"plain", "12", "12"},
                                            {"scaled", "128", "50.2%"},
                                            {"in", "5", "Cam 5"},
                                            {"in", "x", "x"},
                                            {"free", "0.25", "0.25"},
                                            {"unknown", "1", "1"}})
    EXPECT_EQ(shownValue(*dictionary.find("ME1.ALL"), name, stored, dictionary), shown) << name;
}

// A command of a million parameters stopped the window that draws its line.
TEST_F(CommandLineTest, LongLinesAreCutBetweenCharacters) {
  for (const char* value : {"1", "\xC3\xBC", "\xE2\x82\xAC"}) {
    for (const LineOptions& options : {kRaw, kPlain}) {
      const std::vector<MacroParameter> many(20'000, MacroParameter{"plain", value});
      const std::string text = line(command("QMF1.ME1.ALL", many), options, true);
      EXPECT_LT(text.size(), 5000U);
      EXPECT_TRUE(text.ends_with("... ==> updated"));
      EXPECT_TRUE(isValidUtf8(text));
    }
  }
}

TEST_F(CommandLineTest, FramesPanelCommands) {
  const MacroCommand wipe = command("QMF2.ME1.Wipe.Pattern", {{"pattern", "3"}, {"b", ""}});
  const MacroCommand bare = command("ME9", {{"plain", "3"}}), other = command("QMF5.ME1.ALL");
  const MacroCommand panel = command("PANEL.ME1.ALL", {{"plain", "3"}}, "2");
  const std::tuple<MacroCommand, LineOptions, bool, const char*> cases[] = {
      {wipe, kRawDestination, false, "QMF2 - ME1 - Wipe - Pattern Parameter: pattern: \"3\",  b: \"\""},
      {wipe, kRaw, true, "ME1 - Wipe - Pattern Parameter: pattern: \"3\",  b: \"\" ==> updated"},
      {wipe, kPlain, true, "??? ME1.Wipe.Pattern ==> updated"},
      {wipe, kDestination, false, "Mainframe2 - ??? ME1.Wipe.Pattern"},
      {bare, kRaw, false, "ME9 Parameter: plain: \"3\""},
      {bare, kRawDestination, false, " - ME9 Parameter: plain: \"3\""},
      {bare, kDestination, false, " - ??? ME9"},
      {panel, kDestination, false, "Panel/Workplace2 - Everything ==> Level3"},
      {panel, kRawDestination, false, "PANEL - ME1 - ALL Parameter: plain: \"3\""},
      {panel, kTabs, true, "Everything\tLevel3\tupdated"},
      {other, kDestination, false, "QMF5 - Everything"},
      {other, kRaw, false, "ME1 - ALL"}};
  for (const auto& [each, options, updated, text] : cases) EXPECT_EQ(line(each, options, updated), text);
  EXPECT_EQ(destinationLabel("PANEL", "2") + destinationLabel("QMF5", ""), "Panel/Workplace2 - QMF5 - ");
}

TEST_F(CommandLineTest, FramesClassicCommandsOfMacrosAndKeys) {
  const std::string text = "23 05 01 01 ", named = "Set - " + groupName(5, 1);
  const std::string described = named + " - Long|name";
  const MacroCommand macro = command("QMF3.NCSCOMMAND", {{"any", text}}, "1");
  EXPECT_EQ(line(macro), "QMF3Classic:  " + described);
  EXPECT_EQ(line(macro, kDestination), "Mainframe3 - QMF3Classic:  " + described);
  EXPECT_EQ(line(macro, kRaw), "QMF3NCSCOMMAND:  " + described) << "decoded in both forms";
  EXPECT_EQ(line(macro, kRawDestination, true), "QMF3 - QMF3NCSCOMMAND:  " + described + " ==> updated");
  EXPECT_EQ(line(macro, kTabs, true), "QMF3Classic:  " + described + "\tupdated");
  EXPECT_EQ(line(command("NCSCOMMAND"), kDestination), std::string(" - Classic:  ") + kNoContent);
  EXPECT_EQ(line(command("QMF1.x.NCSCOMMAND2", {{"CMD", "23 05"}}), kRaw),
            std::string("QMF1NCSCOMMAND:  ") + kNoContent);
  EXPECT_EQ(line(command("NCSCOMMAND.ME9")), "??? ME9") << "only what follows the first dot makes it classic";

  ClassicCommand key;
  ASSERT_TRUE(key.decodeText(text));
  const auto keyLine = [&](const ClassicCommand& classic, const LineOptions& options) {
    return keyCommandLine(classic, options, {dictionary, lists});
  };
  EXPECT_EQ(keyLine(key, kPlain), "Classic:  " + named + " - Long-name");
  EXPECT_EQ(keyLine(key, kDestination), "Mainframe1 - Classic:  " + named + " - Long-name");
  EXPECT_EQ(keyLine(key, kRaw), "NCSCOMMAND:  " + text);
  EXPECT_EQ(keyLine(key, kRawDestination), "QMF1 - NCSCOMMAND:  " + text);
  EXPECT_EQ(keyLine({}, kRaw), std::string("NCSCOMMAND:  ") + kNoContent);
}

// Texts of four files in different encodings, and a unit of our own.
TEST_F(CommandLineTest, JoinsTextsOfEveryEncoding) {
  FunctionDictionary western;
  write("c:\\i.xml",
        "<mfd><fid name='K\xFC.A' sid='s' description='K\xFC'><float_parameter name='\xFC' type='degree' "
        "max='1' "
        "maxDisp='180'/><enum_parameter name='e'><enum value='\xFC' description='\xD6l'/></enum_parameter>"
        "</fid></mfd>");
  ASSERT_TRUE(readInterfaceFile(root, "c:\\i.xml", FunctionSource::kPanel, western, {}));
  write(R"(c:\Programme\RV48\bin\MacroCdCo_Tarrow\Cd-0x05\Cd-0x05-Co-0x02.ini)",
        "CD 0x05\nCO 0x02\n[0x01-0x01 \"x\" \"Gr\xFCn\"\npt_String \"Tür\"\n");
  const std::string data =
      "<data><cmd fid='ü.Kü.A'><param name='ü' value='0.5'/><param name='e' value='ü'/></cmd>"
      "<cmd fid='ü.NCSCOMMAND'><param value='25 05 02 01 e4 00 '/></cmd></data></macro>";
  const std::string classic = "Set - " + groupName(5, 2) + " - Grün - Tür: ä";
  for (const bool utf8 : {true, false}) {
    write("c:\\m.mac",
          utf8 ? "<?xml version='1.0'?><macro>" + data
               : "<?xml version='1.0' encoding='windows-1252'?><macro>" + utf8ToWindows1252(data));
    MacroCommands commands;
    ASSERT_TRUE(loadCommands(access(), "c:\\m.mac", commands));
    EXPECT_EQ(commandLine(commands.at(0), kDestination, {western, lists}), "ü - Kü ==> 90.0[°] ==>  Öl");
    EXPECT_EQ(commandLine(commands[0], kRaw, {western, lists}), "Kü - A Parameter: ü: \"0.5\",  e: \"ü\"");
    EXPECT_EQ(commandLine(commands.at(1), kDestination, {western, lists}), "ü - üClassic:  " + classic);
  }
}

}  // namespace
}  // namespace tessaly
