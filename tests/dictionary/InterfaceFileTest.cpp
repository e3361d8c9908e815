#include <gmock/gmock.h>
#include <string>
#include <vector>

#include "dictionary/InterfaceFile.h"
#include "platform/Text.h"
#include "tests/support/TestSite.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class InterfaceFileTest : public testing::Test {
 protected:
  bool read(const std::string& bytes, FunctionSource source = FunctionSource::kPanel) {
    site_.write("c:\\ifc.xml", bytes);
    return readInterfaceFile(site_.root, "c:\\ifc.xml", source, dictionary_,
                             [this](const std::string& text) { reports_.push_back(text); });
  }

  const FunctionTemplate& only() { return dictionary_.function(0).definition(); }

  TestSite site_;
  FunctionDictionary dictionary_;
  std::vector<std::string> reports_;
};

TEST_F(InterfaceFileTest, FunctionWithEveryKindOfParameter) {
  ASSERT_TRUE(
      read(R"(<?xml version="1.0"?><!-- c --><other><fid name="NO"/></other><mfd><skip><fid name="NO"/></skip>
    <fid name="A.B" sid="s" group="g" description="d" long_desc="l" Name="NO">
      <timecode_parameter name="t" sid="ts" use="optional"/>
      <float_parameter name="f1" type="percent" min="-1.5" max="2.5x" minDisp="0" maxDisp="1e2" use="Optional"/>
      <float_parameter name="f2" type="degree"/><float_parameter name="f3" type="dB" min="junk" max="1e999" minDisp="nan"/>
      <int_parameter name="i1" description="id" scaler="yes" min=" -12abc" max="34" minDisp="1" maxDisp="2"/>
      <int_parameter name="i2" scaler="true" use="optional"/>
      <enum_parameter name="e" sid="es"><enum value="v1" description="d1"/><x value="NO"/><enum value="v2"/></enum_parameter>
      <input_parameter name="n" description="nd"/><unknown name="NO"/></fid></mfd>)",
           FunctionSource::kOlderFamily));
  ASSERT_EQ(dictionary_.summary(), "Number of FIDs: 1/1");
  const FunctionTemplate& fid = only();
  EXPECT_EQ(fid.source, FunctionSource::kOlderFamily);
  std::string told = fid.name + ' ' + fid.sid + fid.group + fid.description + fid.longDescription;
  const auto tell = [&told](const auto& parameter) {
    told += '\n' + parameter.name + '|' + parameter.sid + '|' + parameter.description +
            (parameter.optional ? " optional" : "");
  };
  const auto range = [&told](const auto& parameter) {
    told += format(" %g %g %g %g", static_cast<double>(parameter.min), static_cast<double>(parameter.max),
                   static_cast<double>(parameter.minDisplay), static_cast<double>(parameter.maxDisplay));
  };
  for (const auto& parameter : fid.timecodes) tell(parameter);
  for (const auto& parameter : fid.floats)
    tell(parameter), range(parameter), told += " unit " + std::to_string(static_cast<int>(parameter.unit));
  for (const auto& parameter : fid.integers)
    tell(parameter), range(parameter), told += parameter.scaled ? " scaled" : "";
  for (const auto& parameter : fid.enums) {
    tell(parameter);
    for (const EnumValue& value : parameter.values) told += ' ' + value.value + '=' + value.description;
  }
  for (const auto& parameter : fid.inputs) tell(parameter);
  // Only the exact words make it optional or scaled, and no conversion may come to "inf".
  EXPECT_EQ(told,
            "A.B sgdl\nt|ts| optional\nf1|| -1.5 2.5 0 100 unit 1\nf2|| 0 0 0 0 unit 2\n"
            "f3|| 0 1e+15 0 0 unit 0\ni1||id -12 34 1 2 scaled\ni2|| optional 0 0 0 0\n"
            "e|es| v1=d1 v2=\nn||nd");
}

TEST_F(InterfaceFileTest, FamiliesServeOnlyLaterTemplatesAndLeadWithTheirName) {
  ASSERT_TRUE(read(R"(<mfd><fid name="$i.early"/>
    <fidsegment_indexed fidseg="I" displayname="In " min="0" max="2" offset="1" name="i"><x fidseg="NO"/></fidsegment_indexed>
    <fidsegment_enum name="e"><any fidseg="E1" displayname="first"/><other displayname="bare"/></fidsegment_enum>
    <fidsegment_enum id="1" name="late"><m fidseg="NO"/></fidsegment_enum><fidsegment_enum><m fidseg="NO"/></fidsegment_enum>
    <fid name="$i.$e" description="$i $e"/><fid name="$late"/><fid name="$"/></mfd>)"));
  std::vector<std::string> lines;
  for (std::size_t i = 0; i < dictionary_.functionCount(); ++i) {
    lines.push_back(std::string(dictionary_.name(i)) + " = " + dictionary_.function(i).description());
  }
  EXPECT_THAT(lines, ElementsAre("I0.E1 = In 1 first", "I0. = In 1 bare", "I1.E1 = In 2 first",
                                 "I1. = In 2 bare", "I2.E1 = In 3 first", "I2. = In 3 bare"));
  EXPECT_EQ(dictionary_.templateCount(), 4u);
}

TEST_F(InterfaceFileTest, AliasesKeepTheLaterDescription) {
  ASSERT_TRUE(read(R"(<mfd><alias name="a"><x segm="S1" descrShort="short" descrLong="long é" search2="two"/>
    <y descrLong="long" segm="S2" descrShort="short"/><z segm="S1" descrShort="again"/></alias>
    <alias other="1" name="b"><x segm="S3"/></alias><alias/></mfd>)"));
  ASSERT_EQ(dictionary_.aliases().size(), 2u);
  const AliasEntry* first = dictionary_.alias("S1");
  EXPECT_EQ(first->description, "long é");
  EXPECT_EQ(first->upperDescription, "LONG é");
  EXPECT_EQ(first->search2, "two");
  EXPECT_EQ(dictionary_.alias("S2")->description, "short");
  EXPECT_EQ(dictionary_.alias("S2")->search2, "");
}

TEST_F(InterfaceFileTest, BrokenFilesAreReportedAndLeaveWhatIsThere) {
  ASSERT_TRUE(read("<mfd><fid name='A'/></mfd>"));
  std::string deep = "<mfd>";
  for (int i = 0; i < 100'000; ++i) deep += "<a>";
  const struct {
    std::string bytes;
    bool parsed;
  } cases[] = {
      {"", false},
      {"<mfd><fid name='B'/>", false},
      {"<mfd><fid name='B'/></mf", false},
      {std::string("\0\1\2\xff", 4), false},
      {deep, false},
      {"<other><mfd><fid name='B'/></mfd></other>", true},  // only the top level is looked at
      {"<!-- only -->text<Mfd><fid name='B'/></Mfd>", true},
  };
  for (const auto& [bytes, parsed] : cases) {
    reports_.clear();
    EXPECT_EQ(read(bytes), parsed) << bytes.substr(0, 40);
    if (parsed) {
      EXPECT_THAT(reports_, IsEmpty()) << bytes;
    } else {
      EXPECT_THAT(reports_, ElementsAre("Cannot parse file: c:\\ifc.xml")) << bytes.substr(0, 40);
    }
    EXPECT_EQ(dictionary_.summary(), "Number of FIDs: 1/1") << bytes.substr(0, 40);
  }
}

TEST_F(InterfaceFileTest, LoadingReadsTheOlderFileFirstAndGoesOnAfterAFailure) {
  site_.write(kOlderFamilyInterface,
              "<mfd><fidsegment_indexed name='n' fidseg='N' min='1' max='1'/><fid name='X'/></mfd>");
  site_.write(
      kPanelInterface,
      "<mfd><fidsegment_indexed name='n' fidseg='M' min='1' max='1'/><fid name='$n'/><fid name='X'/></mfd>");
  const ReportProblem report = [this](const std::string& text) { reports_.push_back(text); };
  loadFunctionDictionary(site_.root, dictionary_, report);
  EXPECT_THAT(reports_, IsEmpty());
  EXPECT_EQ(dictionary_.summary(), "Number of FIDs: 3/3");
  EXPECT_EQ(dictionary_.name(1), "N1");  // the first file's family serves the second and is kept
  EXPECT_EQ(dictionary_.find("X")->source(), FunctionSource::kOlderFamily);

  std::filesystem::remove(site_.root.resolve(kOlderFamilyInterface));
  FunctionDictionary second;
  loadFunctionDictionary(site_.root, second, report);
  EXPECT_THAT(reports_,
              ElementsAre("Cannot parse file: c:\\programme\\RV48\\bin\\MacroFid\\TarrowMFDIfc.xml"));
  EXPECT_EQ(second.find("X")->source(), FunctionSource::kPanel);
  EXPECT_TRUE(second.find("M1"));
}

TEST_F(InterfaceFileTest, FunctionsBeyondTheBoundsAreReportedOnceForBothFiles) {
  const std::string many = "<fidsegment_indexed name='n' min='0' max='999999'/>";
  site_.write(kOlderFamilyInterface, "<mfd>" + many + "<fid name='$n.$n'/><fid name='A'/></mfd>");
  site_.write(kPanelInterface, "<mfd><fid name='$n.$n.$n'/><fid name='B'/></mfd>");
  loadFunctionDictionary(site_.root, dictionary_,
                         [this](const std::string& text) { reports_.push_back(text); });
  EXPECT_THAT(
      reports_,
      ElementsAre("Functions that go beyond the dictionary's bounds are left out: 2 of 4 descriptions."));
  EXPECT_EQ(dictionary_.summary(), "Number of FIDs: 4/2");
}

// A line joins these with texts of other files.
TEST_F(InterfaceFileTest, TextsAreUtf8WhateverTheFileIs) {
  const struct {
    std::string head, bytes, text;
  } cases[] = {{"", "K\xFC&amp;&#x2013;", "Kü&–"},
               {"", "Kü & \xE2\x82\xAC", "Kü & €"},
               {"<?xml version='1.0' encoding='windows-1252'?>", "\xC3\xBC\x80", "Ã¼€"},
               {"\xEF\xBB\xBF", "Kü", "Kü"},
               {"<?xml version='1.0'?>", "K\xFC", "Kü"}};
  for (const auto& c : cases) {
    FunctionDictionary dictionary;
    site_.write("c:\\ifc.xml", c.head + "<mfd><fidsegment_enum name='" + c.bytes + "'><x fidseg='" + c.bytes +
                                   "'/></fidsegment_enum><fid name='$" + c.bytes + "' description='" +
                                   c.bytes + "'><int_parameter name='i' min='&#49;2'/></fid></mfd>");
    ASSERT_TRUE(readInterfaceFile(site_.root, "c:\\ifc.xml", FunctionSource::kPanel, dictionary, {}));
    ASSERT_TRUE(dictionary.find(c.text)) << c.bytes;
    EXPECT_EQ(dictionary.function(0).description(), c.text);
    EXPECT_EQ(dictionary.function(0).definition().integers.at(0).min, 12);
  }
}

}  // namespace
}  // namespace tessaly
