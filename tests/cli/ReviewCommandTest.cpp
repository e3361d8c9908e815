#include <filesystem>
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "platform/Text.h"
#include "review/CheckRules.h"
#include "tests/cli/Ran.h"

namespace tessaly {
namespace {

using testing::HasSubstr;

struct ReviewCommand : Runs {
  ReviewCommand() {
    writeFunctions(
        site,
        R"(<fid name="A.SET" sid="A" description="Size"><int_parameter name="P" min="0" max="9"/></fid>)");
  }
};

// The exit codes and the ways to name what is looked at; what is found is the room's own tests'.
TEST_F(ReviewCommand, ChecksAndFindsInFilesFoldersAndStreams) {
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
       "macro002.mac\t0\terror\tlimits\tP: \"10\" is beyond the limits; right: 9",
       ""},
      {{"check", "-"}, macro("10"), 1, "-\t0\terror\tlimits", ""},
      {{"check", "--severity", "warning", "c:\\w\\macro003.mac"}, "", 0, "notes: 0\n", ""},
      {{"check", "c:\\none.mac"}, "", 1, "unreadable", ""},
      {{"check", "--severity", "loud", "c:\\w"}, "", 2, "", "--severity is"},
      {{"check"}, "", 2, "", "usage: tessaly-cli check"},
      {{"find", "size value:10", "c:\\w"}, "", 0, "c:\\w\\macro002.mac\t0\tMainframe1 - Size ==> 10\n", ""},
      {{"find", "size", "-"}, macro("7"), 0, "-\t0\tMainframe1", ""},
      {{"find", "other", "c:\\w"}, "", 1, "", ""},
      {{"find", "auxbus", "-"}, "#UPK\n\nFile=\nName=K\n\n\ne3 10 05 01 \n", 0, "-\t0\t", ""},
      {{"find", "size", "c:\\w", "c:\\none.mac"}, "", 1, "\t0\tMainframe1", "c:\\none.mac"},
      {{"find", "a:b", "c:\\w"}, "", 2, "", "no field \"a\""},
      {{"sheet", "c:\\w", "--format", "csv", "--date", "2026-11-25"},
       "",
       0,
       "M,1,Mainframe1,Size ==> 10,",
       ""},
      {{"sheet", "c:\\w\\macro002.mac", "--format", "HTML"}, "", 0, "<td>Size ==&gt; 10<ul", ""},
      {{"sheet", "c:\\w\\macro003.mac", "--format", "pdf", "--paper", "a5"}, "", 0, "[ 0 0 419.53", ""},
      {{"sheet", "-", "--format", "csv"}, "none", 1, "cannot be read (is not well", "- is not well formed"},
      {{"sheet", "c:\\none.mac", "--format", "csv"}, "", 1, "", "c:\\none.mac"},
      {{"sheet", "c:\\w", "--format", "csv", "--output", "/dev/full"}, "", 1, "", "/dev/full"},
      {{"sheet", "c:\\w", "--format", "csv", "--output", "c:\\none\\x"}, "", 1, "", "c:\\none\\x"},
      {{"sheet", "c:\\w"}, "", 2, "", "--format is"},
      {{"sheet", "c:\\w", "--format", "csv", "--paper", "a3"}, "", 2, "", "--paper is"},
      {{"sheet", "c:\\w", "--format", "csv", "--date", "2026-02-29"}, "", 2, "", "--date is"},
  };
  for (const auto& [words, input, code, printed, reason] : cases) {
    EXPECT_EQ(run(words, input), code) << words[0] << ' ' << words.back() << last.errors;
    EXPECT_THAT(last.out, HasSubstr(printed));
    EXPECT_THAT(last.errors, HasSubstr(reason));
  }
  site.write(kCheckFile, "off limits\n");
  EXPECT_EQ(run({"check", "c:\\w", "--json"}), 0) << "the rule is off";
  EXPECT_EQ(nlohmann::json::parse(last.out)["off"], nlohmann::json({"limits"}));
  EXPECT_EQ(run({"find", "size", "c:\\w", "--json"}), 0);
  EXPECT_EQ(nlohmann::json::parse(last.out)["hits"], 2);
  EXPECT_EQ(nlohmann::json::parse(last.out)["found"][0].dump(),
            R"({"commands":[{"command":0,"line":"Mainframe1 - Size ==> 10"}],"name":"M",)"
            R"("path":"c:\\w\\macro002.mac"})");
}

TEST_F(ReviewCommand, ReplacesInAllMacrosOrInNone) {
  const auto macro = [](const char* goal, const char* value = "12") {
    return std::string("<macro name='M'><data>\r\n<cmd workplace='1' fid='") + goal +
           ".A.SET' mine='1'><param name=\"P\" value=\"" + value + "\"/></cmd></data></macro>";
  };
  const auto replace = [this](std::vector<std::string> words) {
    words.insert(words.begin(), "replace");
    return run(std::move(words));
  };
  const std::string rule = "destination:QMF1->QMF2", one = "c:\\w\\macro001.mac", two = "c:\\w\\macro002.mac";
  site.write(one, macro("QMF1"));
  site.write(two, macro("QMF1"));
  EXPECT_EQ(replace({rule, "c:\\w", one, "--dry-run"}), 0);
  EXPECT_THAT(last.out, HasSubstr(two + "\t0\t-\tMainframe1 - Size ==> 12\n" + two +
                                  "\t0\t+\tMainframe2 - Size ==> 12\n#\tcommands: 2, "));
  EXPECT_EQ(site.read(one), macro("QMF1"));
  site.write("c:\\w\\macro003.mac", "no macro");
  EXPECT_EQ(replace({rule, "c:\\w"}), 1);
  EXPECT_THAT(last.errors, HasSubstr("macro003.mac"));
  EXPECT_EQ(site.read(one), macro("QMF1")) << "a file does not parse";
  std::filesystem::permissions(site.root.resolve(two), std::filesystem::perms::owner_read);
  EXPECT_EQ(replace({rule, one, two}), 1);
  EXPECT_THAT(last.errors, HasSubstr("macro002.mac"));
  EXPECT_EQ(site.read(one), macro("QMF1")) << "put back, for the other one is protected";
  std::filesystem::permissions(site.root.resolve(two), std::filesystem::perms::owner_all);
  EXPECT_EQ(replace({rule, one, two, one}), 0) << last.errors;
  EXPECT_EQ(site.read(one) + site.read(two), macro("QMF2") + macro("QMF2"));
  EXPECT_EQ(replace({rule, one, two}), 1) << "there is nothing left";
  EXPECT_EQ(replace({"value:P=12->7", one}), 0);
  EXPECT_THAT(last.out, HasSubstr("\tmends\t0\terror\tlimits\tP: "));
  EXPECT_EQ(replace({"segment:SET->INC", one, "--json"}), 1);
  EXPECT_THAT(last.out, HasSubstr("there is no function"));
  EXPECT_EQ(replace({rule, "-"}), 2);
  EXPECT_EQ(replace({"destination:QMF1", one}), 2);
}

constexpr const char* kA = "c:\\a.mac";
constexpr const char* kB = "c:\\b.mac";

class DiffCommand : public Runs {
 protected:
  static std::string size(const char* value, const char* destination = "QMF1") {
    return std::string("<cmd fid=\"") + destination + ".SIZE\"><param name=\"size\" value=\"" + value +
           "\"/></cmd>";
  }
  static std::string macro(const std::string& commands, const char* name = "M") {
    return std::string("<macro name=\"") + name + "\"><data>" + commands + "</data></macro>";
  }
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
