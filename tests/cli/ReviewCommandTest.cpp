#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <sstream>

#include "cli/CommandTable.h"
#include "review/CheckRules.h"
#include "tests/support/TestSite.h"

namespace tessaly {
namespace {

using testing::HasSubstr;

constexpr const char* kFunctions = "c:\\programme\\RV48\\bin\\MacroFid\\CorvaneXLPanel.xml";
constexpr const char* kOlderFunctions = "c:\\programme\\RV48\\bin\\MacroFid\\TarrowMFDIfc.xml";

// The exit codes and the ways to name what is looked at; what is found is the room's own tests'.
TEST(ReviewCommand, ChecksAndFindsInFilesFoldersAndStreams) {
  TestSite site;
  site.write(
      kFunctions,
      R"(<mfd><fid name="A.SET" sid="A" description="Size"><int_parameter name="P" min="0" max="9"/></fid></mfd>)");
  site.write(kOlderFunctions, "<mfd/>");
  const auto macro = [](const char* value) {
    return std::string(R"(<macro name="M"><data><cmd fid="QMF1.A.SET"><param name="P" value=")") + value +
           R"("/></cmd></data></macro>)";
  };
  site.write("c:\\w\\sub\\macro001.mac", macro("5"));
  site.write("c:\\w\\macro002.mac", macro("10"));
  site.write("c:\\w\\macro003.mac", "<macro name=\"N\"><data/></macro>");
  const struct {
    std::vector<std::string> words;
    std::string input;
    int code;
    const char *out, *errors;
  } cases[] = {
      {{"check", "c:\\w\\sub"}, "", 0, "#\tfiles: 1, errors: 0, warnings: 0, notes: 0\n", ""},
      {{"check", "c:\\w"},
       "",
       1,
       "c:\\w\\macro002.mac\t0\terror\tlimits\tP: \"10\" is beyond the limits; right: 9",
       ""},
      {{"check", "-"}, macro("10"), 1, "-\t0\terror\tlimits", ""},
      {{"check", "--severity", "warning", "c:\\w\\macro003.mac"}, "", 0, "notes: 0\n", ""},
      {{"check", "c:\\none.mac"}, "", 1, "unreadable", ""},
      {{"check", "--severity", "loud", "c:\\w"}, "", 2, "", "--severity is"},
      {{"check"}, "", 2, "", "usage: tessaly-cli check"},
      {{"find", "size value:10", "c:\\w"}, "", 0, "c:\\w\\macro002.mac\t0\tMainframe1 - Size ==> 10\n", ""},
      {{"find", "size", "-"}, macro("7"), 0, "-\t0\tMainframe1", ""},
      {{"find", "other", "c:\\w"}, "", 1, "", ""},
      {{"find", "size", "c:\\none.mac"}, "", 1, "", "c:\\none.mac"},
      {{"find", "a:b", "c:\\w"}, "", 2, "", "no field \"a\""},
  };
  std::ostringstream out, errors;
  const auto run = [&](std::vector<std::string> words, const std::string& input) {
    words.insert(words.begin(), {"--root", site.root.path().string()});
    std::istringstream in(input);
    out.str({});
    errors.str({});
    return runCommandLine(words, in, out, errors);
  };
  for (const auto& [words, input, code, printed, reason] : cases) {
    EXPECT_EQ(run(words, input), code) << words[0] << ' ' << words.back() << errors.str();
    EXPECT_THAT(out.str(), HasSubstr(printed));
    EXPECT_THAT(errors.str(), HasSubstr(reason));
  }
  site.write(kCheckFile, "off limits\n");
  EXPECT_EQ(run({"check", "c:\\w", "--json"}, ""), 0) << "the rule is off";
  EXPECT_EQ(nlohmann::json::parse(out.str())["off"], nlohmann::json({"limits"}));
  EXPECT_EQ(run({"find", "size", "c:\\w", "--json"}, ""), 0);
  EXPECT_EQ(nlohmann::json::parse(out.str())["hits"], 2);
}

}  // namespace
}  // namespace tessaly
