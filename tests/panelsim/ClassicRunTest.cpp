#include <gtest/gtest.h>
#include <map>
#include <sstream>

#include "dictionary/InterfaceFile.h"
#include "panelsim/ClassicRun.h"
#include "platform/Text.h"
#include "tests/support/TestSite.h"

namespace tessaly {
namespace {

// What a command of the device 16, code 1 makes of the values of its keyword 1.
TEST(ClassicRun, SetsStepsAndSaysWhatItLeaves) {
  const std::string rows = "pt_ByteEnum \"e\"\n:0x05 \"a\"\n:0x06 \"b\"\n:0x09 \"c\"\n";
  const std::string gain = "pt_Analog \"v\"\n:0x05 0x00 \"\"\n:0x69 0x00 \"\"\n";
  const std::string both = "pt_AnalogBi \"v\"\n:0x00 0x00 \"\"\n:0x64 0x00 \"\"\n:0xc8 0x00 \"\"\n";
  const std::string left = "not carried out: ", name = "QMF1.10.01.01.";
  const struct {
    std::string parameters, command, now, result;
  } cases[] = {
      {"", "23 10 01 01 ", "", "acts"},
      {"", "a3 10 01 01 ", "", "acts"},
      {"", "43 10 01 01 ", "", left + "no step in it"},
      {"", "63 10 01 01 ", "", "acts"},
      {"", "e3 10 01 01 ", "", "acts"},
      {"", "83 10 01 01 ", "", left + "no such action"},
      {"", "23 10 01 02 ", "", left + "no decoding list knows it"},
      {"", "2 ", "", left + "the text does not decode"},
      {"pt_Word \"0\"\npt_None \"u\"\npt_Byte \"0\"\n", "26 10 01 01 05 01 07 ", "",
       name + "0=05 01 " + name + "2=07 "},
      {"pt_Word \"0\"\npt_Byte \"0\"\n", "25 10 01 01 05 01 ", "", name + "0=05 01 "},
      {"pt_Word \"0\"\npt_Byte \"0\"\n", "45 10 01 01 05 01 ", "", left + "too few bytes"},
      {"pt_Byte \"0\"\npt_Word \"0\"\n", "46 10 01 01 08 02 01 ", "ff 00",
       name + "0=08 " + name + "1=01 02 "},
      {"pt_Word \"0\"\n", "45 10 01 01 02 00 ", "", name + "0 is not known"},
      {"pt_Word \"0\"\n", "45 10 01 01 02 00 ", "05", name + "0 is not known"},
      {"pt_Word \"0\"\n", "45 10 01 01 02 00 ", "fe ff", name + "0=ff ff "},
      {"pt_Byte \"0\"\n:0x9c\n:0x64\n", "44 10 01 01 9c ", "f6", name + "0=9c "},
      {"pt_Byte \"0\"\n:0x9c\n:0x64\n", "44 10 01 01 64 ", "02", name + "0=64 "},
      {"pt_Byte \"0\"\n:0x9c\n:0x9c\n", "44 10 01 01 80 ", "80", name + "0=ff "},  // no limits
      {"pt_Byte \"0\"\n", "44 10 01 01 ff ", "ff", name + "0=ff "},
      {"pt_Timecode \"t\"\n", "47 10 01 01 01 00 00 00 ", "00 00 00 00", left + "no step in it"},
      {"pt_Byte \"0\"\n:0x10\n", "44 10 01 01 20 ", "20", name + "0=40 "},  // nor with one only
      {"pt_ByteEnum \"e\"\n", "44 10 01 01 01 ", "05", left + "a step of nothing that is set"},
      {"[0x02] 0x06 \"other\"\n" + rows, "44 10 01 02 01 ", "05", left + "a step of nothing that is set"},
      {"pt_Byte \"0\"\n[0x02] 0x07 \"other\"\n" + rows, "44 10 01 02 01 ", "05", "QMF1.10.01.02.0=06 "},
      {rows, "44 10 01 01 01 ", "09", name + "0=05 "},
      {rows, "44 10 01 01 ff ", "05", name + "0=09 "},
      {rows, "44 10 01 01 02 ", "06", name + "0=05 "},
      {rows + "pt_ByteEnum \"f\"\n:0x01 \"x\"\n:0x02 \"y\"\n", "45 10 01 01 05 01 ", "01",
       name + "0=05 " + name + "1=02 "},
      {rows, "44 10 01 01 01 ", "07", name + "0 is none of its list"},
      {gain, "45 10 01 01 0f 00 ", "10 00", name + "0=1a 00 "},
      {gain, "45 10 01 01 05 00 ", "00 10", name + "0=69 00 "},
      {both, "45 10 01 01 6e 00 ", "10 00", name + "0=1a 00 "},
  };
  for (const auto& one : cases) {
    TestSite site;
    site.write("c:\\Programme\\RV48\\bin\\MacroCdCo_Tarrow\\Cd-0x10\\Cd-0x10-Co-0x01.ini",
               "CD 0x10\nCO 0x01\n[0x01] 0x07 \"own\"\n" + one.parameters);
    DecodingLists lists(site.root);
    const CommandRun::Result result = runClassic("QMF1.", one.command, lists, [&one](const std::string&) {
      return one.now.empty() ? std::nullopt : std::optional(one.now);
    });
    std::string text = result.note;
    for (const auto& [changed, value] : result.values) text += changed + "=" + value + " ";
    EXPECT_EQ(text, one.result) << one.command << one.parameters;
  }
}

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
