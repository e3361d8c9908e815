// What is listed of the disk, and what is done to whole macros there.
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "tests/cli/CommandFixture.h"

namespace tessaly {
namespace {

using ::testing::HasSubstr;

class SiteCommands : public Commands {
 protected:
  SiteCommands() {
    site.write("c:\\programme\\rv48\\appli\\Show\\devices.ini", "CP1 \"Main\" CP7 \"Side\" CP9 \"None\"");
    site.write(cp1 + "assign\\contents.cnt", "");
    site.write(cp7 + "appli_cp.ini", "");
    site.write(one, kOpener);
    site.write(cp1 + "macroWP1\\macro-12.mac", "no macro");
    site.write(cp7 + "upk\\key03.upk",
               "#UPK\nBeginHeader\nFile=x\nName=MK04\r\nVersion=1.0\nEndHeader\ne3 10 05 01 \n");
  }

  static constexpr const char* kOpener = R"(<macro name="Opener"><data></data></macro>)";
  const std::string cp1 = "c:\\programme\\rv48\\appli\\Show\\CP1\\",
                    cp7 = "c:\\programme\\rv48\\appli\\Show\\CP7\\";
  const std::string one = cp1 + "macroWP1\\macro007.mac", two = cp1 + "macroWP1\\macro008.mac";
  const std::string key = cp7 + "upk\\key03.upk";
};

TEST_F(SiteCommands, ListsAreThoseOfAPane) {
  const std::string path = "c:\\programme\\rv48\\appli";
  const std::string host = site.root.resolve(path).string();
  const struct {
    std::vector<std::string> words;
    int code;
    std::string out, errors;
  } cases[] = {
      {{}, 0, "Show\t" + path + "\\Show\\\n", ""},
      {{"c:/programme/rv48/appli//"}, 0, "Show\t" + path + "\\Show\\\n", ""},
      {{path, "Show"},
       0,
       "CP1\tCP1-Corvane XL -Main\t" + cp1 + "\nCP7\tCP7-TarrowCP -     Side\t" + cp7 + "\n",
       ""},
      {{path, "Show", "CP1"}, 0, "1\t" + cp1 + "macroWP1\\\n2\t" + cp1 + "macroWP2\\\n", ""},
      {{path, "Show", "CP1", "1"},
       1,
       "-12 - ???\t" + cp1 + "macroWP1\\macro-12.mac\n007 - Opener\t" + one + "\n",
       "Cannot parse Macro: "},
      {{host, "Show", "CP1", "2"}, 0, "", ""},
      {{path, "Show", "CP7"}, 0, "03 - MK04\t" + key + "\n", ""},
      {{path, "Show", "CP7", "1"}, 1, "", "TarrowCP - no workplaces supported\n"},
      {{path, "Show", "CP1", "3"}, 2, "", "a workplace on the disk is 1 to 2\n"},
      {{path, "Show", "CP9"}, 1, "", "Show has no control panel CP9\n"},
      {{path, "None"}, 1, "", "no control panel data included: None\n"},
      {{"c:\\none"}, 1, "", "no applications found in c:\\none\\\n"},
  };
  for (auto [words, code, out, errors] : cases) {
    words.insert(words.begin(), "list");
    const Ran told = run(words);
    EXPECT_EQ(told.code, code) << words.back();
    EXPECT_EQ(told.out, out);
    EXPECT_THAT(told.errors, errors.empty() ? HasSubstr("") : HasSubstr(errors));
    EXPECT_EQ(told.errors.empty(), errors.empty()) << told.errors;
  }
  EXPECT_THAT(output({"list", host, "Show", "CP7"}), HasSubstr("\t" + site.root.resolve(key).string()))
      << "another program can open it";
  const auto json = nlohmann::json::parse(run({"list", path, "Show", "CP1", "1", "--json"}).out);
  EXPECT_EQ(json["macros"][1]["number"], 7);
  EXPECT_EQ(json["macros"][0]["number"], nullptr) << "its name has none";
}

TEST_F(SiteCommands, MacrosAreCopiedAndDeletedAndKept) {
  const std::string before = kOpener, gone = "<missing>", folder = cp1 + "macroWP2",
                    seven = folder + "\\macro007.mac";
  site.write(seven, "<macro name=\"Old\"><data/></macro>");
  const std::string old = site.read(seven), native = site.root.resolve(folder).string();
  const struct {
    std::vector<std::string> words;
    int code;
    const char* errors;
    std::string place, after, change, kept;
  } cases[] = {
      {{"copy-macro", one, two}, 0, "", two, before, "", ""},
      {{"copy-macro", one, "c:\\none\\x.mac"}, 1, "The macro cannot be copied: it", one, before, "", ""},
      {{"copy-macro", "c:\\none.mac", two}, 1, "No such file: c:\\none.mac\n", two, before, "", ""},
      {{"copy-macro", one, key}, 1, "A key file is only read", one, before, "", ""},
      {{"copy-macro", one, two, "c:\\none"}, 1, "c:\\none is no folder\n", two, before, "", ""},
      {{"copy-macro", key, folder}, 1, "Only macros go into a folder", one, before, "", ""},
      {{"copy-macro", one, two, folder}, 0, "", seven, before, "copy", old},
      {{"copy-macro", one, folder + "\\"}, 0, "", folder + "\\macro008.mac", before, "copy", before},
      {{"copy-macro", "c:\\none.mac", one, native}, 1, "No such file", seven, before, "copy", before},
      {{"delete-macro", "-"}, 2, "a stream cannot be deleted\n", one, before, "copy", before},
      {{"delete-macro", key}, 1, "Only macros are deleted, not ", one, before, "copy", before},
      {{"delete-macro", "c:\\a", "c:\\b", two}, 1, "c:\\a\nNo such file: c:\\b", two, gone, "delete", before},
  };
  for (const auto& c : cases) {
    const Ran told = run(c.words);
    const std::string what = c.words[0] + ' ' + c.words[1] + ' ' + c.words.back();
    EXPECT_EQ(told.code, c.code) << what << told.errors;
    EXPECT_THAT(told.errors, HasSubstr(c.errors)) << what;
    EXPECT_EQ(site.read(c.place), c.after) << what;
    const auto kept = nlohmann::json::parse(output({"history", "--json"}));
    EXPECT_EQ(kept.empty() ? "" : kept[0]["change"], c.change) << what;
    if (kept.empty()) continue;
    EXPECT_EQ(output({"history", "restore", kept[0]["id"], "-"}), c.kept) << what;
  }
  // A key becomes a macro of its name, as by "copy from".
  output({"copy-macro", key, one});
  EXPECT_EQ(output({"name", one}), "MK04\n");
  EXPECT_EQ(output({"show", one, "--raw"}), "QMF1NCSCOMMAND:  Trigger - Auxbus - Aux5 - kw: 01  | params:\n");
  EXPECT_EQ(output({"copy-macro", "-", "-"}, before), before);
}

TEST_F(SiteCommands, FoldersAreCompared) {
  const std::string a = cp1 + "macroWP1", b = cp1 + "macroWP2";
  site.write(b + "\\macro007.mac", R"(<macro name="Closer"><data></data></macro>)");
  std::filesystem::remove(site.root.resolve(a + "\\macro-12.mac"));
  EXPECT_EQ(run({"compare", a, b}).out, "007\trenamed\tOpener\tCloser\n#\tsame: 0, not the same: 1\n");
  EXPECT_EQ(run({"compare", a, b}).code, 1);
  output({"copy-macro", one, b});
  EXPECT_EQ(output({"compare", a, b}), "");
  output({"copy-macro", one, two});
  const auto json = nlohmann::json::parse(run({"compare", a, b, "--json"}).out);
  EXPECT_EQ(json["rows"][0]["state"], "only-a");
  EXPECT_EQ(run({"compare", a, "c:\\none"}).code, 2);
  EXPECT_EQ(run({"compare", a}).code, 2);
}

TEST_F(SiteCommands, TheEffectIsThatOfTheWholeMacro) {
  output({"insert", one, "QMF2.ME1.SIZE.INC", "size=512"});
  EXPECT_EQ(output({"effect", one}), "Size set\tchanged by +50.0%\tQMF2.ME1.SIZE\n") << "of an unknown value";
  EXPECT_THAT(output({"sheet", one, "--format", "html"}), HasSubstr("changed by +50.0%"));
  output({"insert", one, "QMF2.ME1.SIZE.SET", "size=0.25"});
  output({"insert", one, "QMF2.ME1.SIZE.SET", "size=0.75"});
  output({"insert-classic", one, "23 63 05 01 "});
  output({"insert-classic", one, "e3 10 05 01 "});
  const auto json = nlohmann::json::parse(output({"effect", one, "--json"}));
  EXPECT_EQ(json["values"][0]["stored"], "0.75");
  EXPECT_EQ(json["commands"][0]["what"], "steps");
  EXPECT_EQ(json["commands"][2]["what"], "sets");
  EXPECT_THAT(output({"effect", one}), HasSubstr("\t75.0%\tQMF2.ME1.SIZE\n"));
  EXPECT_THAT(output({"effect", one}), HasSubstr("\n#\t3\tuntold\t"));
  EXPECT_THAT(output({"effect", one}), HasSubstr("\n#\t4\tacts\t\n")) << "though nothing is to be said of it";
  EXPECT_EQ(run({"effect", "c:\\none.mac"}).code, 1);
}

// What the program is asked, and writes nothing for.
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
