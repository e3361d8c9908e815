#pragma once

#include "model/MacroFile.h"
#include "tests/cli/Ran.h"

namespace tessaly {

inline constexpr const char* kMacro = "c:\\appli\\macro007.mac";

inline constexpr const char* kFunctions = R"(<mfd>
  <fidsegment_enum name="INPUT_5"><v fidseg="INPUT5" displayname="Camera 5"/></fidsegment_enum>
  <fidsegment_enum name="dir"><v fidseg="SET" displayname="set"/><v fidseg="INC" displayname="step"/></fidsegment_enum>
  <fid name="ME1.SIZE.$dir" sid="ME1.SIZE" group="ME1.WIPE" description="Size $dir">
    <float_parameter name="size" description="size" type="percent" min="0" max="1" minDisp="0" maxDisp="100"/>
  </fid>
  <fid name="ME1.ALL.SET" sid="ME1.ALL" group="ME1" description="All">
    <enum_parameter name="mode" description="Mode"><enum value="0" description="Off"/></enum_parameter>
    <int_parameter name="level" description="level: " scaler="yes" min="0" max="255" minDisp="0" maxDisp="100"/>
    <input_parameter name="in" description="Input" use="optional"/>
    <timecode_parameter name="tc" description="At"/>
  </fid>
</mfd>)";

class Commands : public ::testing::Test {
 protected:
  Commands() {
    site.write(kEmptyMacro, R"(<macro name=""><data></data></macro>)");
    site.write(kOlderFamilyInterface, kFunctions);
    site.write(kPanelInterface, "<mfd/>");
    site.write("c:\\appli\\keep", "");
  }

  Ran run(std::vector<std::string> words, const std::string& input = {}) {
    return ranOver(site, std::move(words), input);
  }

  // Runs what has to succeed without a word on the error stream.
  std::string output(std::vector<std::string> words, const std::string& input = {}) {
    const std::string name = words.front();
    const Ran outcome = run(std::move(words), input);
    EXPECT_EQ(outcome.code, 0) << name;
    EXPECT_EQ(outcome.errors, "") << name;
    return outcome.out;
  }

  // All values of the macro, in their order.
  std::string values(const std::string& path) {
    std::string all;
    const auto macro = readMacro(site.root, path);
    for (const MacroCommand& command : macro->commands()) {
      for (const MacroParameter& parameter : command.parameters) all += parameter.value + ',';
    }
    return all;
  }

  TestSite site;
};

}  // namespace tessaly
