#include <gtest/gtest.h>
#include <map>

#include "panelsim/ClassicRun.h"
#include "platform/Text.h"
#include "tests/support/TestSite.h"

namespace tessaly {
namespace {

// What a command of the device 16, code 1 makes of the values of its keyword 1.
TEST(ClassicRun, SetsStepsAndSaysWhatItLeaves) {
  const std::string rows = "pt_ByteEnum \"e\"\n:0x05 \"a\"\n:0x06 \"b\"\n:0x09 \"c\"\n";
  const std::string gain = "pt_Analog \"v\"\n:0x05 0x00 \"\"\n:0x69 0x00 \"\"\n";
  const std::string left = "not carried out: ", name = "QMF1.10.01.01.";
  const struct {
    std::string parameters, command, now, result;
  } cases[] = {
      {"", "23 10 01 01 ", "", "acts"},
      {"", "43 10 01 01 ", "", left + "no step in it"},
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
      {"pt_Timecode \"t\"\n", "47 10 01 01 01 00 00 00 ", "00 00 00 00", left + "no step in it"},
      {"pt_Byte \"0\"\n:0x10\n", "44 10 01 01 20 ", "20", name + "0=40 "},  // nor with one only
      {"pt_ByteEnum \"e\"\n", "44 10 01 01 01 ", "05", left + "a step of nothing that is set"},
      {"[0x02] 0x06 \"other\"\n" + rows, "44 10 01 02 01 ", "05", left + "a step of nothing that is set"},
      {"pt_Byte \"0\"\n[0x02] 0x07 \"other\"\n" + rows, "44 10 01 02 01 ", "05", "QMF1.10.01.02.0=06 "},
      {rows + "pt_ByteEnum \"f\"\n:0x01 \"x\"\n:0x02 \"y\"\n", "45 10 01 01 05 01 ", "01",
       name + "0=05 " + name + "05.1=02 "},
      {gain, "45 10 01 01 0f 00 ", "10 00", name + "0=1a 00 "},
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

}  // namespace
}  // namespace tessaly
