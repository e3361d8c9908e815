#include <gtest/gtest.h>
#include <sstream>

#include "dictionary/InterfaceFile.h"
#include "panelsim/CommandRun.h"
#include "platform/Text.h"
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
    <fid name="X.SET" sid="X" description=""><input_parameter name="w"/></fid>
    <fid name="O.INC" description=""><int_parameter name="v" min="0" max="9"/></fid>
    <fid name="CUT" description=""/></mfd>)");
  site.write(kOlderFamilyInterface, "<mfd/>");
  FunctionDictionary dictionary;
  loadFunctionDictionary(site.root, dictionary, [](const std::string&) {});
  DecodingLists lists(site.root);
  // The function, its value, what the command gives (- for nothing), and what is then: the value, or a note.
  for (const char* row : {"I.SET 1 7 7",
                          "I.INC 1 2 3",
                          "I.INC 1 -2 -1",
                          "I.INC 1 9 5",
                          "I.INC 1 -9 -3",
                          "I.SET 1 - acts",
                          "I.INC x 1 PANEL.I is no number",
                          "I.INC 1 x its step is no number",
                          "R.INC 1 9 5",
                          "L.INC 7 8 15",
                          "L.INC 2147483647 1 2147483647",
                          "L.INC -2147483648 -1 -2147483648",
                          "F.INC 0.5 128 0.625000",
                          "F.INC 0.5 1024 0.750000",
                          "F.INC 0.5 -1 0.500000",
                          "F.INC nan 1 PANEL.F is no number",
                          "F.INC x 1 PANEL.F is no number",
                          "F.INC 0.5 inf its step is no number",
                          "F.INC 0.5 x its step is no number",
                          "G.INC 0.5 1024 1.500000",
                          "E.INC ON 1 it steps no number",
                          "N.SET 1 7 7",
                          "T.SET 1 7 7",
                          "X.SET 1 7 no parameter v",
                          "CUT 1 - acts",
                          "O.INC 1 1 nothing sets what it steps",
                          "D.INC.INC 1 1 nothing sets what it steps",
                          "NOTHING 1 1 no such function"}) {
    std::istringstream words(row);
    std::string name, now, value, result;
    std::getline(words >> name >> now >> value >> std::ws, result);
    if (value == "-") value.clear();
    CurrentValues values(dictionary);
    const std::string changed = std::string("PANEL.") + name.front();
    values.set(changed, now);
    MacroCommand command;
    command.fid = "PANEL." + name;
    command.parameters = {{.name = "none", .value = "9", .hasValue = false}, {.name = "v", .value = value}};
    const CommandRun::Result got = CommandRun(dictionary, lists, values).carryOut(command);
    const std::string note = replaceAll(got.note, "not carried out: ", "");
    EXPECT_EQ(note.empty() ? got.values.at(0).second : note, result) << row;
    EXPECT_EQ(values.of(changed), got.note.empty() ? result : now) << row;
  }
}

}  // namespace
}  // namespace tessaly
