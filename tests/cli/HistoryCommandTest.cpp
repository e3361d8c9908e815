#include <future>
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "model/MacroFile.h"
#include "model/MacroHistory.h"
#include "tests/cli/Ran.h"

namespace tessaly {
namespace {

using testing::HasSubstr;

constexpr const char* kMacro = "c:\\appli\\macro007.mac";

class HistoryCommands : public Runs {
 protected:
  nlohmann::json rows() {
    EXPECT_EQ(run({"history", "--json"}), 0);
    return nlohmann::json::parse(last.out);
  }
};

TEST_F(HistoryCommands, EveryCommandThatOverwritesAFileKeepsIt) {
  site.write(kEmptyMacro, R"(<macro name=""><data></data></macro>)");
  site.write("c:\\appli\\key03.upk", "#UPK\r\n");
  const std::pair<std::vector<std::string>, const char*> cases[] = {
      {{"insert-classic", kMacro, "23 10 05 01 "}, "edit"},
      {{"set", kMacro, "0", "23 10 05 02 "}, "edit"},
      {{"insert-classic", kMacro, "e3 10 05 01 "}, "edit"},
      {{"move", kMacro, "0", "--to", "2"}, "edit"},
      {{"remove", kMacro, "0"}, "edit"},
      {{"rename", kMacro, "Renamed"}, "rename"},
      {{"create", kMacro, "Anew"}, "create"},
      {{"convert", "c:\\appli\\key03.upk", kMacro, "Key"}, "convert"},
  };
  EXPECT_EQ(run({"create", kMacro, "First"}), 0);
  std::size_t kept = 0;
  for (const auto& [words, change] : cases) {
    const std::string before = site.read(kMacro);
    EXPECT_EQ(run(words), 0) << words.front() << last.errors;
    const nlohmann::json now = rows();
    ASSERT_EQ(now.size(), ++kept) << words.front();
    EXPECT_EQ(now[0]["change"], change);
    EXPECT_EQ(now[0]["place"], kMacro);
    EXPECT_EQ(run({"history", "restore", now[0]["id"], "c:\\appli\\check.mac"}), 0);
    EXPECT_EQ(site.read("c:\\appli\\check.mac"), before);
    std::filesystem::remove(site.root.resolve("c:\\appli\\check.mac"));
  }
}

TEST_F(HistoryCommands, ListShowAndRestore) {
  site.write(
      kMacro,
      R"(<macro name="Old"><data><cmd fid="QMF1.NCSCOMMAND"><param name="CMD" value=""/></cmd></data></macro>)");
  const std::string old = site.read(kMacro);
  EXPECT_EQ(run({"rename", kMacro, "New"}), 0);
  EXPECT_EQ(run({"history"}), 0);
  EXPECT_THAT(last.out, HasSubstr("\trename\tOld\tc:\\appli\\macro007.mac\n"));
  const std::string id = last.out.substr(0, last.out.find('\t'));
  EXPECT_EQ(run({"history", "show", id}), 0);
  EXPECT_THAT(last.out, HasSubstr("empty command line"));
  EXPECT_EQ(run({"history", "restore", id}), 0);
  EXPECT_EQ(site.read(kMacro), old);
  EXPECT_THAT(rows()[0]["change"], "put-back");
  EXPECT_EQ(run({"history", "restore", id, "-"}), 0);
  EXPECT_EQ(last.out, old);
  const std::size_t kept = rows().size();
  EXPECT_EQ(run({"set", kMacro, "0", "no classic command"}), 1);
  EXPECT_EQ(rows().size(), kept) << "what is refused changes nothing that would have to be kept";
  site.write(kMacro, old + "<!--another layout-->");
  for (const std::vector<std::string>& words : {std::vector<std::string>{"move", kMacro, "0", "--to", "0"},
                                                {"set", kMacro, "0", ""},
                                                {"rename", kMacro, "Old"}})
    EXPECT_EQ(run(words), 0) << words.front();
  EXPECT_EQ(site.read(kMacro), old + "<!--another layout-->");
  EXPECT_EQ(rows().size(), kept) << "nor does what changes nothing";
  EXPECT_EQ(run({"history", "restore", "2000-01-01/000000-000"}), 1);
  for (const std::vector<std::string>& words :
       {std::vector<std::string>{"history", "melt"}, {"history", "show"}, {"history", "show", id, "x"}})
    EXPECT_EQ(run(words), 2);
  // Without the interface files nothing is known of a function, and nobody is told so at each value.
  site.write("c:\\b.mac", "<macro><data><cmd fid='QMF1.A'><param name='P' value='1'/></cmd></data></macro>");
  EXPECT_EQ(run({"set", "c:\\b.mac", "0", "any"}), 0);
  EXPECT_EQ(last.errors, "");
  // A folder in the way: said, and the command does what it does.
  std::filesystem::remove_all(site.root.path() / "history");
  site.write("history", "");
  EXPECT_EQ(run({"rename", kMacro, "Newer"}), 0);
  EXPECT_THAT(last.errors, HasSubstr("could not keep"));
}

// Each reads, keeps and writes: without the lock most of what they insert is written over.
TEST_F(HistoryCommands, ParallelChangesOfOneFileFollowOneAnother) {
  site.write(kMacro, "<macro name=\"Shared\"><data/></macro>");
  std::vector<std::future<int>> runs;
  for (int i = 0; i < 24; ++i) {
    runs.push_back(std::async(std::launch::async, [&] {
      return ranOver(site, {"insert-classic", kMacro, "23 10 05 01 "}).code;
    }));
  }
  for (auto& each : runs) EXPECT_EQ(each.get(), 0);
  EXPECT_EQ(readMacro(site.root, kMacro)->commands().size(), runs.size());
}

TEST_F(HistoryCommands, RestoresOutsideTheSiteOnlyWhereItIsTold) {
  const TestSite elsewhere;
  elsewhere.write("x.mac", "<macro name=\"Old\"><data/></macro>");
  const std::string outside = elsewhere.root.resolve("x.mac").string();
  // One was changed there, of the other a link leads there.
  std::filesystem::create_directory_symlink(elsewhere.root.path(), site.root.path() / "c");
  for (const std::string& path : {outside, std::string("c:\\x.mac")}) {
    EXPECT_EQ(run({"rename", path, "New " + path}), 0) << last.errors;
    const std::string changed = elsewhere.read("x.mac");
    const std::string id = rows()[0]["id"];
    EXPECT_EQ(run({"history", "restore", id}), 1);
    EXPECT_THAT(last.errors, HasSubstr("outside the site"));
    EXPECT_EQ(elsewhere.read("x.mac"), changed);
    EXPECT_EQ(run({"history", "restore", id, path}), 0);
    EXPECT_NE(elsewhere.read("x.mac"), changed);
  }
}

}  // namespace
}  // namespace tessaly
