// What the program is asked, and writes nothing for.
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "tests/cli/CommandFixture.h"

namespace tessaly {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

TEST_F(Commands, DictionaryIsListedAndShown) {
  EXPECT_EQ(output({"dictionary"}), "Number of FIDs: 2/3\n");
  EXPECT_EQ(output({"dictionary", "--list"}),
            "Number of FIDs: 2/3\nME1.SIZE.SET\nME1.SIZE.INC\nME1.ALL.SET\n");
  EXPECT_EQ(output({"dictionary", "--list", "all"}), "Number of FIDs: 2/3\nME1.ALL.SET\n");
  EXPECT_EQ(output({"dictionary", "--show", "ME1.ALL.SET"}),
            "Number of FIDs: 2/3\nname: ME1.ALL.SET\nsid: ME1.ALL\ngroup: ME1\ndescription: All\nsource: 1\n"
            "template: ME1.ALL.SET\n"
            "parameter: enum mode description=\"Mode\" optional=no values=\"0:Off\"\n"
            "parameter: integer level description=\"level: \" optional=no scaled=yes min=0 max=255 minDisp=0 "
            "maxDisp=100\n"
            "parameter: input in description=\"Input\" optional=yes\n"
            "parameter: timecode tc description=\"At\" optional=no\n");
  EXPECT_THAT(output({"dictionary", "--show", "ME1.SIZE.INC"}),
              HasSubstr("\nsid:\ngroup:\ndescription: Size step\n"));
  const auto json =
      nlohmann::json::parse(output({"dictionary", "--list", "inc", "--show", "ME1.ALL.SET", "--json"}));
  EXPECT_EQ(json["names"], nlohmann::json::array({"ME1.SIZE.INC"}));
  EXPECT_EQ(
      json["function"]["parameters"][0]["values"].dump() + json["function"]["parameters"][1].dump(),
      R"([{"shown":"Off","stored":"0"}]{"description":"level: ","kind":"integer","max":255,"maxDisp":100,)"
      R"("min":0,"minDisp":0,"name":"level","optional":false,"scaled":true})");
  EXPECT_EQ(run({"dictionary", "--show", "ME1"}).errors, "Unknown function: ME1\n");
  EXPECT_EQ(output({"dictionary", "--find", "step size"}), "Number of FIDs: 2/3\nME1.SIZE.INC\n");
  for (const char* words : {"word", "--find=+", "--find=size --list"}) {
    std::istringstream each(words);
    std::vector<std::string> given{"dictionary"};
    for (std::string word; each >> word;) given.push_back(word);
    EXPECT_EQ(run(given).code, 2) << words;
  }

  site.write(kPanelInterface, "<mfd");
  const Ran broken = run({"dictionary"});
  EXPECT_EQ(broken.code, 1);
  EXPECT_EQ(broken.out, "Number of FIDs: 2/3\n");
  EXPECT_EQ(broken.errors, std::string("Cannot parse file: ").append(kPanelInterface) + "\n");
}

TEST_F(Commands, ValuesAreConvertedAsTheFieldDoes) {
  const struct {
    std::vector<std::string> words;
    const char* out;
  } cases[] = {
      {{"ME1.ALL.SET", "level", "--shown", "5,0x"},
       "shown: 5.0\nstored: 13\nrange: min: 0%   max: 100%\nbeeps: 1\n"},
      {{"QMF1.ME1.SIZE.INC", "size", "--shown", "3000", "--raw"},
       "shown: 2047\nstored: 2047\nrange: min: -2048   max: 2047\nbeeps: 1\n"},
      {{"ME1.ALL.SET", "tc", "--shown", "10:20:30:25"},
       "shown: 10:20:30:24\nstored: 270544932\nrange:\nbeeps: 1\n"},
      {{"ME1.ALL.SET", "in", "--stored", "5"}, "shown: Camera 5\nstored: 5\nrange:\nbeeps: 0\n"},
      {{"ME1.ALL.SET", "mode", "--shown", "Off"}, "shown: Off\nstored: 0\nrange:\nbeeps: 0\n"},
  };
  for (const auto& c : cases) {
    std::vector<std::string> words = c.words;
    words.insert(words.begin(), "value");
    EXPECT_EQ(output(words), c.out);
  }
  EXPECT_EQ(run({"value", "ME1.ALL.SET", "mode", "--stored", "7"}).errors, "Unknown value: 7\n");
  EXPECT_EQ(run({"value", "ME1.ALL.SET", "gone", "--stored", "7"}).errors, "Unknown parameter: gone\n");
  EXPECT_EQ(run({"value", "ME1.ALL.SET", "mode"}).code, 2);
}

TEST_F(Commands, SmallQuestions) {
  EXPECT_EQ(output({"source", "224"}), "Virtual Input 00\n");
  EXPECT_EQ(run({"source", "256"}).code, 2);
  EXPECT_EQ(output({"timecode", "270544901"}), "display: 10:20:30:05\nplain: 10:20:30:05\n");
  EXPECT_EQ(output({"timecode", "0x50a03005"}), "display: 10:20:30.05*\nplain: 10:20:30:05\n");
  EXPECT_EQ(run({"timecode", "4294967296"}).code, 2);
  EXPECT_EQ(output({"classic", "23 63 05 01 "}),
            "valid: yes\ntext: 23 63 05 01 \ndebug: ac: 20 | cd: 63 | co: 05 | kw: 01\n"
            "description: Set - cd: 63 - co: 05 - kw: 01  | params:\n");
  const Ran invalid = run({"classic", "23 10"});
  EXPECT_EQ(invalid.code, 1) << "a script asks by the exit code";
  EXPECT_EQ(invalid.out + invalid.errors, "valid: no\ntext:\ndebug:\ndescription:\n");
  EXPECT_EQ(output({"address", "10.0.0.7"}), "accepted\n");
  const Ran refused = run({"address", "10.0.0."});
  EXPECT_EQ(std::pair(refused.code, refused.out + refused.errors), std::pair(1, std::string("refused\n")));
  const Ran unmatched = run({"dictionary", "--list", "none"});
  EXPECT_EQ(unmatched.code, 1);
  EXPECT_EQ(unmatched.out + unmatched.errors, "Number of FIDs: 2/3\n");
}

}  // namespace
}  // namespace tessaly
