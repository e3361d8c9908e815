#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "review/BatchJournal.h"
#include "tests/cli/PanelCommandFixture.h"

namespace tessaly {
namespace {

using testing::HasSubstr;

TEST_F(PanelCommands, AFolderIsComparedAndSent) {
  constexpr const char* kFolder = "c:\\macros";
  site.write("c:\\macros\\macro007.mac", macro("New &amp; seven"));
  site.write("c:\\macros\\macro999.mac", tree.read(remote(2, "999")));
  const Ran compared = run({"compare", "2", kFolder});
  EXPECT_EQ(compared.code, 1);
  EXPECT_EQ(compared.out,
            "001\tonly-folder\t\tOpener\n007\trenamed\tSeven\tNew & seven\n#\tsame: 1, not the same: 2\n");
  EXPECT_EQ(run({"compare", "2", "c:\\none"}).code, 2);

  EXPECT_TRUE(panel.setFaults({.control = {}, .ftp = {.flipByte = 3}}));
  const Ran flipped = run({"send", "2", kFolder, "7"});
  EXPECT_EQ(flipped.code, 3) << "it stores what is put back as wrongly";
  EXPECT_THAT(flipped.out, HasSubstr("007 - New & seven\tunknown: "));
  EXPECT_TRUE(panel.setFaults({}));
  site.write("c:\\macros\\macro010.mac", "<mfd/>");
  const Ran sent = run({"send", "2", kFolder});
  EXPECT_EQ(sent.code, 1);
  EXPECT_EQ(sent.out,
            "010\tas before: the file it holds no macro that takes commands\n001 - Opener\tsent\n"
            "007 - New & seven\tsent\n999 - Last & least\tsent\n");
  std::filesystem::remove(site.root.resolve("c:\\macros\\macro010.mac"));
  const auto json = nlohmann::json::parse(run({"compare", "2", kFolder, "--json"}).out);
  EXPECT_EQ(json.at("same"), true);
  EXPECT_EQ(json.at("sameCount"), 3);
  EXPECT_EQ(run({"list", "2"}).out, "001 - Opener\n007 - New & seven\n999 - Last & least\n");
}

// Catches macros that were not named, and a garbled one that counts as replaced.
TEST_F(PanelCommands, ARuleReplacesInTheMacrosOfAWorkplace) {
  writeFunctions(site, R"(<fid name="A.SET" sid="A" description="Size"/>)");
  const auto goal = [](const std::string& destination) {
    return macro("Goal", "<cmd fid=\"" + destination + ".A.SET\"/>");
  };
  tree.write(remote(2, "001"), goal("QMF1"));
  tree.write(remote(2, "002"), goal("QMF1"));
  panel.reload();
  const std::string rule = "destination:QMF1->QMF2";
  EXPECT_EQ(run({"replace", "2", rule, "--dry-run"}).code, 0);
  EXPECT_EQ(tree.read(remote(2, "001")), goal("QMF1"));
  const Ran one = run({"replace", "2", rule, "2"});
  EXPECT_EQ(one.code, 0) << one.errors;
  EXPECT_EQ(one.out,
            "002 - Goal\t0\t-\tMainframe1 - Size\n002 - Goal\t0\t+\tMainframe2 - Size\n"
            "002 - Goal\treplaced\n#\tcommands: 1, that cannot be changed: 0, written: yes\n");
  EXPECT_EQ(tree.read(remote(2, "001")) + tree.read(remote(2, "002")), goal("QMF1") + goal("QMF2"));
  EXPECT_EQ(run({"replace", "2", rule, "1", "3"}).code, 1) << "there is no macro 3";
  EXPECT_EQ(tree.read(remote(2, "001")), goal("QMF1"));
  EXPECT_TRUE(panel.setFaults({.control = {}, .ftp = {.flipByte = 3}}));
  const Ran flipped = run({"replace", "2", rule, "--json"});
  EXPECT_TRUE(panel.setFaults({}));
  EXPECT_EQ(flipped.code, 3);
  const auto json = nlohmann::json::parse(flipped.out);
  EXPECT_EQ(json.at("written"), false);
  EXPECT_EQ(json.at("macros").at(0).at("path"), "127.0.0.1 workplace 2 macro 001");
  EXPECT_THAT(std::string(json.at("macros").at(0).at("result")), HasSubstr("unknown: "));
  EXPECT_EQ(run({"replace", "2", rule, "x"}).code, 2);
  EXPECT_EQ(run({"replace", "2", "nonsense"}).code, 2);
}

// A program was killed while it sent the second of three macros.
TEST_F(PanelCommands, TheNextCommandAtThePanelEndsWhatWasCutShort) {
  BatchRecord record{"copy", MacroBatch::Mode::kAsManyAsGo, MacroChange::kCopy, {}, {}, {}, false};
  for (const char* number : {"001", "002", "003"})
    record.items.push_back({{{}, "127.0.0.1", 2, number}, macro(number), HeldContent::nothing()});
  {
    auto journal = BatchJournal::begin(site.root, record);
    ASSERT_TRUE(journal);
    EXPECT_TRUE(journal->noteBegun(1, Failure{Failure::Kind::kMissing, ""}, true));
  }
  tree.write(remote(2, "001"), macro("later"));
  tree.write(remote(2, "002"), macro("002").substr(0, 9));
  const Ran elsewhere = ranOver(site, {"name", kLocal});
  EXPECT_EQ(elsewhere.code, 0);
  EXPECT_THAT(elsewhere.errors, HasSubstr("\"copy\", which was cut short, waits for its panel"));
  EXPECT_THAT(run({"list", "2"}).errors, HasSubstr("has been ended"));
  EXPECT_EQ(tree.read(remote(2, "001")), macro("later")) << "it was settled before";
  EXPECT_EQ(tree.read(remote(2, "002")), macro("002"));
  EXPECT_EQ(tree.read(remote(2, "003")), macro("003"));
  EXPECT_EQ(run({"list", "2"}).errors, "");
}

}  // namespace
}  // namespace tessaly
