#include <atomic>
#include <chrono>
#include <future>
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <thread>

#include "review/BatchJournal.h"
#include "tests/cli/PanelCommandFixture.h"

namespace tessaly {
namespace {

using testing::HasSubstr;

TEST_F(PanelCommands, WorkOnTheMacrosOfAWorkplace) {
  EXPECT_EQ(run({"list", "2"}).out, "007 - Seven\n999 - Last & least\n");
  EXPECT_EQ(nlohmann::json::parse(run({"list", "2", "--json"}).out).dump(),
            R"([{"name":"Seven","number":7},{"name":"Last & least","number":999}])");
  const Ran none = run({"list", "3"});
  EXPECT_EQ(none.out + none.errors + std::to_string(none.code), "0");

  const Ran put = run({"put", "2", "12", kLocal});
  EXPECT_EQ(put.out + put.errors, "012 - Opener\n");
  EXPECT_EQ(run({"get", "2", "12", "c:\\macros\\back.mac"}).code, 0);
  EXPECT_EQ(site.read("c:\\macros\\back.mac"), kOpener);

  EXPECT_EQ(run({"rename", "2", "12", "Closer"}).code, 0);
  const int before = calls;
  EXPECT_EQ(run({"rename", "2", "12", "Closer"}).code, 0);
  EXPECT_EQ(calls, before) << "it has that name";
  EXPECT_THAT(run({"rename", "2", "12", "K\xFC"}).errors, HasSubstr("no UTF-8"));
  EXPECT_EQ(run({"delete", "2", "999"}).code, 0);
  EXPECT_EQ(run({"list", "2"}).out, "007 - Seven\n012 - Closer\n");
  // Every run ends its connection; the panel hears of the last end on its own thread.
  for (const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
       panel.connections() > 0 && std::chrono::steady_clock::now() < end;) {
    std::this_thread::yield();
  }
  EXPECT_EQ(panel.connections(), 0U);
}

TEST_F(PanelCommands, WorkplacesAreThoseThatThePanelReports) {
  for (int workplace = 1; workplace <= 8; ++workplace)
    panel.set("PANEL.WP" + std::to_string(workplace) + ".MFDCOUNT", workplace % 3 == 0 ? "2" : "0");
  EXPECT_EQ(run({"list"}).out, "3\n6\n");
  EXPECT_EQ(run({"list", "--json"}).out, "[\n  3,\n  6\n]\n");
}

// The values of a macro's text, in their order.
std::string valuesIn(const std::string& xml) {
  std::string values;
  for (std::size_t at = xml.find("value="); at != xml.npos; at = xml.find("value=", at + 1))
    values += xml[at + 7];
  return values;
}

TEST_F(PanelCommands, AMacroIsFilledWithWhatThePanelHolds) {
  writeFunctions(site, R"(<fidsegment_enum name="dir"><v fidseg="SET"/><v fidseg="INC"/></fidsegment_enum>)"
                       R"(<fid name="A.$dir" sid="A"><int_parameter name="P" min="0" max="9"/></fid>)"
                       R"(<fid name="B.SET" sid="B"><int_parameter name="P" min="0" max="9"/></fid>)");
  const auto command = [](const std::string& fid, const std::string& value) {
    return "<cmd fid=\"" + fid + "\"><param name=\"P\" value=\"" + value + "\"/></cmd>";
  };
  const std::string before =
      macro("M", command("QMF1.A.SET", "1") + command("QMF2.A.SET", "2") + command("QMF1.NCSCOMMAND", "5") +
                     command("QMF1.A.INC", "4") + command("QMF1.A.SET", "3"));
  panel.set("QMF1.A", "7");
  panel.set("QMF2.A", "8");
  const struct {
    std::vector<std::string> ranges;
    int code;
    std::string after, out, errors;
  } cases[] = {
      {{}, 0, "78547", "3 of 3 commands updated\n", ""},
      {{"1", "3-4"}, 0, "18547", "2 of 2 commands updated\n", ""},
      {{"2"}, 0, "12543", "0 of 0 commands updated\n", ""},
      {{"5"}, 1, "12543", "", "No command 5\n"},
  };
  for (auto [words, code, after, out, errors] : cases) {
    site.write(kLocal, before);
    words.insert(words.begin(), {"update", kLocal});
    const Ran told = run(words);
    EXPECT_EQ(told.code, code) << words.back();
    EXPECT_EQ(valuesIn(site.read(kLocal)), after) << words.back();
    EXPECT_EQ(told.out, out);
    EXPECT_THAT(told.errors, HasSubstr(errors));
  }
  const Ran piped = run({"update", "-"}, before);
  EXPECT_EQ(valuesIn(piped.out), "78547");
  EXPECT_THAT(piped.out, testing::StartsWith("<macro")) << "the macro alone";
  site.write(kLocal, macro("M", command("QMF1.B.SET", "1") + command("QMF1.A.SET", "1")));
  const Ran partly = run({"update", kLocal});
  EXPECT_EQ(partly.code, 1);
  EXPECT_EQ(partly.out + partly.errors, "1 of 2 commands updated\nthe panel sent no value for QMF1.B\n");
  EXPECT_EQ(valuesIn(site.read(kLocal)), "17") << "what came is not lost";
  panel.stop();
  EXPECT_THAT(run({"update", kLocal}).errors, HasSubstr("cannot connect"));
}

TEST_F(PanelCommands, AMacroRunsToItsEnd) {
  EXPECT_EQ(run({"run", "2", "7"}).out, "007 - Seven runs\n007 has run\n");
  EXPECT_EQ(run({"run", "2", "8"}).errors, "workplace 2 has no macro 008\n");
  tree.write(remote(2, "007"), "<macro name=");
  EXPECT_EQ(run({"run", "2", "7"}).errors, "the panel did not say that the macro runs\n");
}

TEST_F(PanelCommands, FailuresHaveAReasonAndChangeNothing) {
  const Ran missing = run({"get", "2", "8", kLocal});
  EXPECT_EQ(missing.code, 1);
  EXPECT_THAT(missing.errors, HasSubstr("no such file"));
  EXPECT_EQ(site.read(kLocal), kOpener) << "the old file stays";
  EXPECT_EQ(run({"delete", "2", "8"}).errors, "workplace 2 has no macro 008\n");
  EXPECT_EQ(run({"rename", "2", "8", "Name"}).errors, "workplace 2 has no macro 008\n");
  EXPECT_EQ(run({"put", "2", "8", "c:\\macros\\none.mac"}).code, 1);
  EXPECT_TRUE(panel.setFaults({.control = {}, .ftp = {.refuseLogin = true}}));
  EXPECT_THAT(run({"put", "2", "8", kLocal}).errors, HasSubstr("refused the login"));
  EXPECT_EQ(run({"list", "2"}).out, "007 - Seven\n999 - Last & least\n");
  panel.stop();
  EXPECT_EQ(run({"list", "2"}).errors,
            "cannot connect to the panel at 127.0.0.1:" + std::to_string(panel.controlPort()) + "\n");
}

TEST_F(PanelCommands, OnlyWhatReadsAsAMacroIsSent) {
  const std::string before = tree.read(remote(2, "007"));
  const Ran refused = run({"put", "2", "7", "-"}, "<macro name=\"x\"/>");
  EXPECT_EQ(refused.code, 1);
  EXPECT_NE(refused.errors, "");
  EXPECT_EQ(tree.read(remote(2, "007")), before);
  EXPECT_EQ(run({"put", "2", "7", "-"}, kOpener).out, "007 - Opener\n");
  EXPECT_EQ(run({"get", "2", "7", "-"}).out, kOpener);
  run({"put", "2", "7", "-", "--force"}, "<macro name=\"Forced\"/>");
  EXPECT_EQ(tree.read(remote(2, "007")), "<macro name=\"Forced\"/>");
}

TEST_F(PanelCommands, WhatIsNotKnownOfThePanelIsSaid) {
  EXPECT_TRUE(panel.setFaults({.control = {}, .ftp = {.refuseDownload = true}}));
  const Ran unread = run({"put", "2", "12", kLocal});
  EXPECT_EQ(unread.code, 0);
  EXPECT_EQ(unread.out, "012 - Opener\n");
  EXPECT_THAT(unread.errors, HasSubstr("not verified"));
  EXPECT_TRUE(panel.setFaults({.control = {}, .ftp = {.flipByte = 10}}));  // whatever is sent
  const Ran unknown = run({"put", "2", "12", kLocal});
  EXPECT_EQ(unknown.code, 3);
  EXPECT_THAT(unknown.errors, HasSubstr("is unknown"));
}

TEST_F(PanelCommands, WatchEndsThoughNothingComes) {
  const std::string known = "PANEL.MACRO2.REG7.NAME";
  const Ran silent = run({"watch", "PANEL.NO.SUCH", "--for=0.1"});
  EXPECT_EQ(silent.code, 1);
  EXPECT_EQ(silent.errors, "no value came of PANEL.NO.SUCH\n");
  EXPECT_EQ(run({"watch", known, "--for", "0.1", "--count", "2"}).code, 1) << "one value only";
  EXPECT_EQ(run({"watch", known, "--for", "86400", "--count", "1"}).out, known + ": Seven\n");
  EXPECT_EQ(run({"watch", known, "--for", "2"}).code, 0);
}

TEST_F(PanelCommands, WatchPrintsValuesUntilTheEnd) {
  EXPECT_EQ(run({"watch", "PANEL.WP1.MFDCOUNT", "PANEL.MACRO2.REG7.NAME", "--count", "2"}).out,
            "PANEL.WP1.MFDCOUNT: 4\nPANEL.MACRO2.REG7.NAME: Seven\n");
  auto watching = std::async(std::launch::async, [&] {
    return run({"watch", "PANEL.WP1.MFDCOUNT", "--count", "3"});
  });
  for (int i = 0; watching.wait_for(std::chrono::milliseconds(5)) == std::future_status::timeout; ++i)
    panel.set("PANEL.WP1.MFDCOUNT", std::to_string(i));
  EXPECT_EQ(watching.get().code, 0);

  EXPECT_TRUE(panel.setFaults({.control = {.dropAfter = 1}}));
  EXPECT_EQ(run({"watch", "PANEL.WP1.MFDCOUNT"}).errors, "the connection to the panel was lost\n");
}

TEST_F(PanelCommands, WrongWordsAreToldBeforeAnythingIsDone) {
  std::istringstream lines(
      "update x.mac 1-0,update,list 0,list 9,list 1 1,list 1 --all,get 1 1,get 1 1 x 1,get 1 1000 x,get 1 -1 "
      "x,"
      "delete 1 1 1,run 1 1 1,compare 1 x 1,watch,watch A --count 0,watch A --for 1x,watch A --for 0,"
      "watch A --for 86401,send 9 x,send 1 x 1000,replace 1 x 1000,snapshot x 1,snapshot -,restore x 0,"
      "restore x 9,restore x 1 1000,melt 1");
  for (std::string line; std::getline(lines, line, ',');) {
    std::istringstream words(line);
    EXPECT_EQ(run({std::istream_iterator<std::string>(words), {}}).code, 2) << line;
  }
  EXPECT_EQ(run({"rename", "1", "1", ""}).code, 2);
  EXPECT_EQ(panel.accepted(), 0U);
}

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
