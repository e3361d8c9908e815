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
  const std::string before = kOpener, folder = cp1 + "macroWP2", seven = folder + "\\macro007.mac";
  site.write(seven, "<macro name=\"Old\"><data/></macro>");
  const std::string old = site.read(seven);
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
      {{"copy-macro", "c:\\none.mac", one, site.root.resolve(folder).string()},
       1,
       "No such file",
       seven,
       before,
       "copy",
       before},
      {{"delete-macro", "-"}, 2, "a stream cannot be deleted\n", one, before, "copy", before},
      {{"delete-macro", key}, 1, "Only macros are deleted, not ", one, before, "copy", before},
      {{"delete-macro", "c:\\none.mac", "c:\\none2.mac", two},
       1,
       "No such file: c:\\none.mac\nNo such file: c:\\none2.mac\n",
       two,
       "<missing>",
       "delete",
       before},
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
  EXPECT_EQ(output({"effect", one}), "Size set\t+50.0%\tQMF2.ME1.SIZE\n") << "from an unknown value";
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

}  // namespace
}  // namespace tessaly
