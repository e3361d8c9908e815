#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "platform/Text.h"
#include "tests/cli/Ran.h"

namespace tessaly {
namespace {

using testing::HasSubstr;

constexpr const char* kA = "c:\\a.mac";
constexpr const char* kB = "c:\\b.mac";

std::string size(const char* value, const char* destination = "QMF1") {
  return std::string("<cmd fid=\"") + destination + ".SIZE\"><param name=\"size\" value=\"" + value +
         "\"/></cmd>";
}
std::string macro(const std::string& commands, const char* name = "M") {
  return std::string("<macro name=\"") + name + "\"><data>" + commands + "</data></macro>";
}

class DiffCommand : public Runs {
 protected:
  DiffCommand() {
    writeFunctions(
        site, R"(<fid name="SIZE" sid="S" description="Size"><float_parameter name="size" min="0" max="1")"
              R"( minDisp="0" maxDisp="100"/></fid>)");
  }
  int run(std::vector<std::string> words, const std::string& input = {}) {
    words.insert(words.begin(), "diff");
    return Runs::run(std::move(words), input);
  }
};

TEST_F(DiffCommand, ExitCodeTellsSameDifferentAndTrouble) {
  site.write(kA, macro(size("0.5")));
  site.write("c:\\no.mac", "no macro");
  const struct {
    std::vector<std::string> words;
    std::string input;
    int code;
    const char* out;
    const char* errors = "";
  } cases[] = {
      {{kA, "-"}, macro(size("0.5")), 0, ""},
      {{kA, "-"}, macro(size("0.6")), 1, "!-\t0\t0\tMainframe1 - Size ==> 50.0\n!+\t0\t0\tMainframe1 -"},
      {{kA, "-"}, macro(size("0.5", "QMF2")), 1, "?\t\t\tdestination: \"QMF1\" | \"QMF2\"\n", ""},
      {{kA, "-"}, macro(size("0.50")), 1, "\n?\t\t\tparameter size: \"0.5\" | \"0.50\" (the same value)\n"},
      {{"-", kA}, macro(size("0.5"), "N"), 1, "#\tname: \"N\" | \"M\"\n", ""},
      {{kA, "-"}, macro(size("0.5") + "<!-- c -->"), 1, "#\tcomments", ""},
      {{kA, "-"}, macro(" " + size("0.5")), 1, "#\tonly the layout differs", ""},
      {{kA, "c:\\none.mac"}, "", 2, "", "Cannot parse Macro: c:\\none.mac\n"},
      {{"c:\\no.mac", kA}, "", 2, "", "Cannot parse Macro: c:\\no.mac\n"},
      {{kA}, "", 2, "", "usage: tessaly-cli diff"},
      {{"-", "-"}, macro(""), 2, "", "only one of the two"},
  };
  for (const auto& [words, input, code, printed, reason] : cases) {
    EXPECT_EQ(run(words, input), code) << input;
    EXPECT_THAT(last.out, HasSubstr(printed));
    EXPECT_THAT(last.errors, HasSubstr(reason));
    EXPECT_TRUE(code != 0 || last.out.empty()) << last.out;
    const bool usage = last.errors.find("usage:") != std::string::npos;
    EXPECT_EQ(usage, code == 2 && words != std::vector<std::string>({kA, "c:\\none.mac"}) &&
                         words[0] != "c:\\no.mac");
  }
  // Trouble with the output is none of "different".
  std::istringstream in;
  std::ostringstream closed, errors;
  closed.setstate(std::ios::badbit);
  EXPECT_EQ(runCommandLine({"--root", site.root.path().string(), "diff", kA, kA}, in, closed, errors), 2);
}

TEST_F(DiffCommand, JsonHasEveryRowThatDiffers) {
  site.write(kA, macro(size("0.1") + size("0.2") + size("0.3") + "<cmd fid=\"X\"/>" + size("0.7")));
  site.write(kB, macro(size("0.3") + size("0.1") + size("0.2") + "<cmd fid=\"Y\"/>" + size("0.8")));
  EXPECT_EQ(run({kA, kB, "--json"}), 1);
  const auto json = nlohmann::json::parse(last.out);
  EXPECT_EQ(json["counts"],
            nlohmann::json::parse(R"({"same":2,"sameMeaning":0,"changed":1,"onlyA":1,"onlyB":1,"moved":1})"));
  std::string kinds;
  for (const auto& row : json["rows"]) kinds += row["kind"].get<std::string>() + ' ';
  EXPECT_EQ(kinds, "moved-to moved-from only-a only-b changed ");
  EXPECT_EQ(json["rows"][2]["b"], nullptr);
  EXPECT_EQ(json["rows"][4]["lineB"], "Mainframe1 - Size ==> 80.0");
  EXPECT_EQ(
      json["rows"][4]["changes"][0],
      nlohmann::json::parse(R"({"what":"parameter","name":"size","a":"0.7","b":"0.8","sameInUnit":false})"));
  std::string alike;
  for (int i = 0; i < 8; ++i) alike += size("0.4");
  site.write(kA, macro(alike + "<cmd fid=\"X\"/>" + alike + size("0.1") + alike));
  site.write(kB, macro(alike + alike + size("0.10") + alike));
  EXPECT_EQ(run({kA, kB}), 1);
  EXPECT_EQ(
      replaceAll(last.out, "\tMainframe1 - Size ==> 40.0\n", ";"),
      "=\t5\t5;=\t6\t6;=\t7\t7;-\t8\t\t - ??? X\n=\t9\t8;=\t10\t9;=\t11\t10;...\n=\t14\t13;=\t15\t14;"
      "=\t16\t15;~\t17\t16\tMainframe1 - Size ==> 10.0\n?\t\t\tparameter size: \"0.1\" | \"0.10\" (the same "
      "value)\n=\t18\t17;=\t19\t18;=\t20\t19;#\tsame: 24, same meaning: 1, changed: 0, only A: 1, only B: 0, "
      "moved: 0\n");
  EXPECT_EQ(run({kA, kA, "--json"}), 0);
  EXPECT_EQ(nlohmann::json::parse(last.out)["same"], true);
}

}  // namespace
}  // namespace tessaly
