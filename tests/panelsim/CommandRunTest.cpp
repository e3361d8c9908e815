#include <gtest/gtest.h>

#include "dictionary/InterfaceFile.h"
#include "panelsim/CommandRun.h"
#include "tests/support/TestSite.h"

namespace tessaly {
namespace {

// What a command with the parameter "v" makes of the values.
TEST(CommandRun, SetsStepsAndSaysWhatItLeaves) {
  TestSite site;
  site.write(kPanelInterface, R"(<mfd>
    <fidsegment_enum name="MOVE"><segment fidseg="BACK" displayname=""/><segment fidseg="INC" displayname=""/></fidsegment_enum>
    <fidsegment_enum name="HOW"><segment fidseg="INC" displayname=""/><segment fidseg="SET" displayname=""/></fidsegment_enum>
    <fid name="I.$HOW" sid="I" description=""><int_parameter name="v" min="-3" max="5"/></fid>
    <fid name="R.$HOW" sid="R" description=""><int_parameter name="v" min="5" max="-3"/></fid>
    <fid name="D.$HOW.$HOW" sid="D" description=""><int_parameter name="v" min="0" max="9"/></fid>
    <fid name="L.$HOW" sid="L" description=""><int_parameter name="v" min="0" max="0"/></fid>
    <fid name="F.$HOW" sid="F" description=""><float_parameter name="v" min="0.5" max="0.75"/></fid>
    <fid name="G.$HOW" sid="G" description=""><float_parameter name="v" min="0" max="0"/></fid>
    <fid name="E.$HOW" sid="E" description=""><enum_parameter name="v"><enum value="ON" description=""/></enum_parameter></fid>
    <fid name="N.SET" sid="N" description=""><input_parameter name="v"/></fid>
    <fid name="T.SET" sid="T" description=""><timecode_parameter name="v"/></fid>
    <fid name="O.INC" description=""><int_parameter name="v" min="0" max="9"/></fid>
    <fid name="CUT" description=""/></mfd>)");
  site.write(kOlderFamilyInterface, "<mfd/>");
  FunctionDictionary dictionary;
  loadFunctionDictionary(site.root, dictionary, [](const std::string&) {});
  DecodingLists lists(site.root);
  const std::string left = "not carried out: ";
  const struct {
    std::string name, now, value, result, parameter = "v";
  } cases[] = {
      {"I.SET", "1", "7", "PANEL.I=7"},
      {"I.INC", "1", "2", "PANEL.I=3"},
      {"I.INC", "1", "-2", "PANEL.I=-1"},
      {"I.INC", "1", "9", "PANEL.I=5"},
      {"I.INC", "1", "-9", "PANEL.I=-3"},
      {"I.INC", "x", "1", left + "PANEL.I is no number"},
      {"I.INC", "1", "x", left + "its step is no number"},
      {"I.SET", "1", "", "acts"},
      {"I.SET", "1", "2", left + "no parameter w", "w"},
      {"R.INC", "1", "9", "PANEL.R=5"},
      {"D.INC.INC", "1", "9", left + "nothing sets what it steps"},
      {"L.INC", "7", "8", "PANEL.L=15"},
      {"L.INC", "2147483647", "1", "PANEL.L=2147483647"},
      {"L.INC", "-2147483648", "-1", "PANEL.L=-2147483648"},
      {"F.INC", "0.5", "128", "PANEL.F=0.625000"},
      {"F.INC", "0.5", "1024", "PANEL.F=0.750000"},
      {"F.INC", "0.5", "-1024", "PANEL.F=0.500000"},
      {"F.INC", "nan", "1", left + "PANEL.F is no number"},
      {"F.INC", "x", "1", left + "PANEL.F is no number"},
      {"F.INC", "0.5", "inf", left + "its step is no number"},
      {"F.INC", "0.5", "x", left + "its step is no number"},
      {"G.INC", "0.5", "1024", "PANEL.G=1.500000"},
      {"E.INC", "ON", "1", left + "it steps no number"},
      {"N.SET", "1", "7", "PANEL.N=7"},
      {"T.SET", "1", "7", "PANEL.T=7"},
      {"O.INC", "", "1", left + "nothing sets what it steps"},
      {"CUT", "", "", "acts"},
      {"NOTHING", "", "", left + "no such function"},
  };
  for (const auto& [name, now, value, result, parameter] : cases) {
    CurrentValues values(dictionary);
    const std::string changed = std::string("PANEL.") + name[0];
    values.set(changed, now);
    CommandRun run(dictionary, lists, values);
    MacroCommand command;
    command.fid = "PANEL." + name;
    command.parameters = {{.name = "none", .value = "9", .hasValue = false},
                          {.name = parameter, .value = value, .hasValue = true}};
    const CommandRun::Result got = run.carryOut(command);
    std::string text = got.note;
    for (const auto& [of, is] : got.values) text += of + "=" + is;
    EXPECT_EQ(text, result) << name << ' ' << value;
    EXPECT_EQ(values.of(changed), got.values.empty() ? now : got.values[0].second) << "it is kept";
  }
}

}  // namespace
}  // namespace tessaly
