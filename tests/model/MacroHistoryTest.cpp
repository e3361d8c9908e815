#include <gmock/gmock.h>

#include "model/MacroHistory.h"
#include "model/RecordText.h"
#include "platform/Files.h"
#include "tests/support/TestSite.h"

namespace tessaly {
namespace {

using std::chrono::hours;
using std::chrono::system_clock;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kMacro = "c:\\appli\\macro007.mac";

class MacroHistoryTest : public testing::Test {
 protected:
  std::vector<std::string> contents(MacroHistory& from) const {
    std::vector<std::string> result;
    for (const KeptMacro& kept : from.list()) result.push_back(site.read(kept.file));
    return result;
  }
  void overwrite(MacroHistory& into, std::string_view bytes) const { overwrite(into, kMacro, bytes); }
  void overwrite(MacroHistory& into, const std::string& file, std::string_view bytes) const {
    EXPECT_TRUE(into.keepFile(file, MacroChange::kSave));
    site.write(file, bytes);
  }

  TestSite site;
  system_clock::time_point now{hours(24 * 20000 + 23)};
  MacroHistory::Clock clock = [this] { return now; };
  MacroHistory history{site.root, {}, clock};
};

TEST_F(MacroHistoryTest, EveryVersionIsKeptOnceWithWhereItCameFrom) {
  EXPECT_TRUE(history.keepFile(kMacro, MacroChange::kSave)) << "what is not there need not be kept";
  EXPECT_THAT(history.list(), IsEmpty());
  site.write(kMacro, "<!-- <macro> --><macro  name='A &amp; &quot;B&quot;'><data/></macro>");
  overwrite(history, "two");
  EXPECT_EQ(history.takeKept(), history.list().front().id);
  for (const char* bytes : {"two", "three"}) overwrite(history, bytes);
  EXPECT_EQ(history.takeKept(), history.list().front().id);
  EXPECT_TRUE(history.keepFile((site.root.path() / "c/appli/macro007.mac").string(), MacroChange::kDelete));
  overwrite(history, "two");  // "three" has just been kept
  EXPECT_EQ(history.takeKept(), history.list().front().id) << "kept before, but there";
  EXPECT_FALSE(history.takeKept());
  overwrite(history, "two");
  EXPECT_TRUE(history.keepFile("c:\\appli", MacroChange::kSave)) << "a folder is nothing to keep";
  EXPECT_FALSE(history.takeKept());
  EXPECT_TRUE(history.keepFile(kMacro, MacroChange::kSave))
      << "an older version that came back is kept again";
  EXPECT_THAT(contents(history),
              ElementsAre("two", "three", "two",
                          "<!-- <macro> --><macro  name='A &amp; &quot;B&quot;'><data/></macro>"));
  const std::vector<KeptMacro> kept = history.list();
  EXPECT_EQ(kept[3].id, "2024-10-04/230000-000");
  EXPECT_EQ(kept[3].when, std::int64_t{20000 * 24 + 23} * 3600 * 1000);
  EXPECT_EQ(kept[3].name, "A & \"B\"");
  EXPECT_EQ(kept[1].placeText(), kMacro) << "one spelling, however the file was named";
  EXPECT_EQ(kept[1].change, MacroChange::kDelete);
  EXPECT_FALSE(history.takeFailure());
}

// Two programs at one site, and two versions within one tick of the clock.
TEST_F(MacroHistoryTest, WhatAnotherProgramKeptCountsHere) {
  MacroHistory other{site.root, {}, clock};
  site.write(kMacro, "one");
  EXPECT_TRUE(history.keepFile(kMacro, MacroChange::kSave));
  site.write(kMacro, "two");
  EXPECT_TRUE(other.keepFile(kMacro, MacroChange::kSave));
  now += hours(1);
  EXPECT_TRUE(history.keepFile(kMacro, MacroChange::kSave)) << "the other has just kept it";
  EXPECT_THAT(contents(history), ElementsAre("two", "one"));
  const std::vector<KeptMacro> kept = history.list();
  EXPECT_NE(kept[0].id, kept[1].id) << "each can be named";
}

TEST_F(MacroHistoryTest, OddNamesAndHostileBytesStayWhatTheyAre) {
  const MacroPlace places[] = {{"c:\\a%\n=b\x7F\xFC\\" + std::string(300, 'x') + ".mac", {}, 0, {}},
                               {"/srv/a=b/%41.mac", {}, 0, {}},
                               {{}, "10.0.0.1\n:5000", 8, "999"}};
  const std::string hostile("\0<macro name=\"\xFC%0A\n\"\xFF\0", 22);
  for (const MacroPlace& place : places) {
    ASSERT_TRUE(history.keep(hostile, place, MacroChange::kPutBack));
    const KeptMacro kept = history.list().front();
    EXPECT_EQ(kept.place, place);
    EXPECT_EQ(site.read(kept.file), hostile);
    EXPECT_EQ(MacroHistory(site.root).find(kept.id)->size, hostile.size());
    EXPECT_EQ(history.isOfSite(kept), &place == places) << kept.placeText();
  }
  EXPECT_EQ(history.list().front().placeText(), "10.0.0.1\n:5000 workplace 8 macro 999");
  EXPECT_FALSE(history.isOfSite({}));
  EXPECT_TRUE(history.holds("history\\2024-10-04\\x.mac"));
  for (const char* other : {"", kMacro, "historyX\\x"}) EXPECT_FALSE(history.holds(other)) << other;
  for (const char* id : {"", "..", "2024-10-04", "2024-10-04/230000-999", "../../etc/passwd"})
    EXPECT_FALSE(history.find(id)) << id;
}

TEST_F(MacroHistoryTest, TheOldestGoFirstByCountAndByBytes) {
  MacroHistory three(site.root, {3, 100, 0}, clock);
  for (const char* bytes : {"1", "2", "3", "4"}) {
    overwrite(three, bytes);
    now += hours(24);
  }
  EXPECT_THAT(contents(three), ElementsAre("3", "2", "1"));
  overwrite(three, std::string(25, 'x'));
  EXPECT_THAT(*listFolder(site.root, "history"),
              ElementsAre("2024-10-06", "2024-10-07", "2024-10-08", "lock"))
      << "an empty day goes, too";
  // Another process counts what it finds; the oldest can be put back although keeping drives it out.
  MacroHistory next(site.root, {9, 100, 0}, clock);
  overwrite(next, (site.root.path() / "outside.mac").string(), "");
  for (const char c : {'a', 'b', 'c', 'd', 'e'}) overwrite(next, std::string(25, c));
  const auto four = [](const std::string& letters) {
    std::vector<std::string> contents;
    for (const char c : letters) contents.emplace_back(25, c);
    return contents;
  };
  EXPECT_EQ(contents(next), four("dcba"));
  EXPECT_TRUE(next.putBack(next.list().back(), kMacro));
  EXPECT_EQ(site.read(kMacro), std::string(25, 'a'));
  EXPECT_EQ(contents(next), four("edcb"));
  site.write(kMacro, std::string(26, 'y'));
  EXPECT_FALSE(next.keepFile(kMacro, MacroChange::kSave)) << "one macro must not drive out all others";
  EXPECT_TRUE(next.takeFailure());
}

TEST_F(MacroHistoryTest, ADamagedRecordLeavesTheBytes) {
  site.write(kMacro, "bytes");
  ASSERT_TRUE(history.keepFile(kMacro, MacroChange::kSave));
  const std::string record =
      history.list().front().file.substr(0, history.list().front().file.size() - 4) + ".txt";
  const std::string whole = site.read(record);
  site.write("history\\2024-10-04\\mine.mac", "a stranger");
  site.write("history\\notes\\230000-000-00000000-1-x.mac", "a stranger");
  for (const std::string& damaged : {std::string(), std::string("\0\0\0", 3), std::string("disk"),
                                     whole.substr(0, whole.size() - 1), std::string("workplace=9\n")}) {
    site.write(record, damaged);
    ASSERT_EQ(history.list().size(), 1U);
    EXPECT_FALSE(history.list().front().place) << damaged;
    EXPECT_EQ(site.read(history.list().front().file), "bytes");
  }
  std::filesystem::remove(site.root.resolve(record));
  EXPECT_EQ(history.list().size(), 1U) << "nor does a lost one take them along";
}

// A clock that was wrong has dated what was kept, and is set right, or wrong again.
TEST_F(MacroHistoryTest, TheClockDoesNotDecideWhatIsNewest) {
  // Kept by an earlier version of the program, which had only the clock.
  site.write("history\\2099-01-01\\000000-000-" + historyKey({kMacro, {}, 0, {}}) + "-8-macro007.mac",
             "none");
  MacroHistory four(site.root, {4}, clock);
  site.write(kMacro, "1");
  for (const char* bytes : {"2", "3", "4", "5", "6"}) {
    now += hours(*bytes == '3' ? 24 * 9000 : -24 * 3000);
    overwrite(four, bytes);
  }
  EXPECT_THAT(contents(four), ElementsAre("5", "4", "3", "2"));
  MacroHistory next(site.root, {4}, clock);
  overwrite(next, "7");
  EXPECT_THAT(contents(next), ElementsAre("6", "5", "4", "3"));
}

TEST_F(MacroHistoryTest, TheCountGoesOnWhateverIsLost) {
  site.write("history\\lock", "40");
  site.write(kMacro, "1");
  for (const char* bytes : {"2", "3"}) overwrite(history, bytes);
  EXPECT_EQ(site.read("history\\lock"), "42") << "what had the other numbers is gone";
  std::filesystem::remove(site.root.path() / "history/lock");
  now -= hours(1);
  MacroHistory other(site.root, {}, clock);
  overwrite(other, "4");
  EXPECT_THAT(contents(other), ElementsAre("3", "2", "1")) << "the lock file";
  for (const auto& file : std::filesystem::directory_iterator(site.root.path() / "history/2024-10-04"))
    if (file.path().string().find("-43-macro007") != std::string::npos) std::filesystem::remove(file.path());
  overwrite(history, "5");
  overwrite(other, "5");
  EXPECT_THAT(contents(history), ElementsAre("5", "4", "2", "1")) << "the newest version, and no two are one";
}

// Other copies of the program find what this one keeps, and the other way round.
TEST(HistoryEntry, NamesAreAsDocumented) {
  constexpr std::int64_t kMoment = 1'956'314'096'789;  // 2031-12-29 12:34:56.789
  const struct {
    MacroPlace place;
    bool outside;
    const char* stem;
  } names[] = {{{"/:09@A", {}, 0, {}}, true, "123456-789-e8bc4ee9-6-7x-_09_A"},
               {{"[Z`a{z.MAC", {}, 0, {}}, false, "123456-789-aa273b9b-6-7-_Z_a_z"},
               {{{}, "10.000.0.01:7", 8, "999"}, false, "123456-789-6daf16e3-6-7-panel8-macro999"},
               {{std::string(41, 'n'), {}, 0, {}},
                false,
                "123456-789-34ec5bba-6-7-nnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnn"}};
  for (const auto& [place, outside, stem] : names) {
    const HistoryEntry made(kMoment, 6, 7, place, outside);
    EXPECT_EQ(made.day + ' ' + made.stem, std::string("2031-12-29 ") + stem);
    const auto read = HistoryEntry::parse(made.day, stem);
    ASSERT_TRUE(read) << stem;
    EXPECT_EQ(std::tie(read->when, read->size, read->number, read->outsideRoot),
              std::tie(made.when, made.size, made.number, outside));
    EXPECT_EQ(read->key(), historyKey(place));
  }
  const struct {
    const char* end;
    bool ours;
    std::uint64_t number;
    bool outside;
  } cases[] = {{"6-1-x", true, 1, false},           {"6-1x-x", true, 1, true},
               {"6x-1-x", false, 0, false},         {"6-2147483647-x", true, 2147483647, false},
               {"6-2147483648-x", false, 0, false}, {"6-macro007", true, 0, false},  // of an earlier version
               {"6-0x-x", true, 0, false},          {"-1-x", false, 0, false},
               {"6y1-x", false, 0, false},          {"6", false, 0, false}};
  for (const auto& c : cases) {
    const std::string stem = std::string("230000-000-00000000-") + c.end;
    const auto entry = HistoryEntry::parse("2024-10-04", stem);
    ASSERT_EQ(entry.has_value(), c.ours) << c.end;
    for (const char* day : {"", "2024-10-4", "2024_10-04", "2024-1:-04", "2024-1/-04"})
      EXPECT_FALSE(HistoryEntry::parse(day, stem)) << day;
    if (!entry) continue;
    EXPECT_EQ(entry->number, c.number) << c.end;
    EXPECT_EQ(entry->outsideRoot, c.outside) << c.end;
  }
}

TEST_F(MacroHistoryTest, FilesElsewhereAreCountedApart) {
  const std::string outside = (site.root.path() / "outside.mac").string();
  MacroHistory three(site.root, {3}, clock);
  for (const char* bytes : {"1", "2", "3", "4", "5"}) overwrite(three, outside, bytes);
  for (const char* bytes : {"1", "2", "3", "4", "5"}) overwrite(three, kMacro, bytes);
  EXPECT_THAT(contents(three), ElementsAre("4", "3", "2", "4", "3", "2"));
}

// A script that changes one file in a loop meets the versions that people have made.
TEST(NextToGo, NoMacroDrivesOutTheLastVersionsOfAnother) {
  const MacroPlace scratch{"c:\\scratch.mac", {}, 0, {}}, show{"c:\\show.mac", {}, 0, {}};
  std::deque<HistoryEntry> entries;
  for (const MacroPlace& place : {show, scratch, show, scratch, scratch})
    entries.emplace_back(0, 1, entries.size() + 1, place, false);
  EXPECT_EQ(nextToGo(entries, false, false), 1U) << "of the macro that has most";
  EXPECT_FALSE(nextToGo(entries, true, false));
  // The one between the closest neighbours, the older of two such, and never the last ones.
  for (const auto& [times, expected] : {std::pair(std::vector<std::int64_t>{0, 10, 14, 18, 30}, 2U),
                                        {{0, 5, 20, 21, 40}, 2U},
                                        {{40, 30, 0, 21, 50}, 2U},
                                        {{0, 1, 2}, 1U},
                                        {{0}, 0U}}) {
    std::deque<HistoryEntry> versions;
    for (const std::int64_t when : times) versions.emplace_back(when, 1, versions.size() + 1, show, false);
    for (std::size_t i = 0; i < kLastVersions; ++i)
      versions.emplace_back(1000, 1, versions.size() + 1, show, false);
    EXPECT_EQ(nextToGo(versions, false, true).value_or(99), expected);
    versions.pop_back();
    if (times.size() == 1) {
      EXPECT_FALSE(nextToGo(versions, false, true)) << "none of the last ones can be spared";
      EXPECT_EQ(nextToGo(versions, false, false), 0U);
    }
  }
  for (const auto& [first, second] : {std::pair(scratch, show), std::pair(show, scratch)}) {
    const std::deque<HistoryEntry> two = {{0, 1, 1, first, false}, {1, 1, 2, second, false}};
    EXPECT_EQ(nextToGo(two, false, false), 0U) << "of as many, the oldest";
  }
}

TEST_F(MacroHistoryTest, ANearlyFullDiskIsLeftToOthers) {
  site.write(kMacro, "");
  for (int i = 1; i < 23; ++i)
    for (const char* outside : {"", "x"})
      site.write("history\\2024-10-04\\000000-000-00000000-0-" + std::to_string(i) + outside + "-x.mac", "");
  ASSERT_EQ(history.list().size(), 44U);
  MacroHistory::Limits limits;
  limits.reserve = std::uint64_t{1} << 60;
  MacroHistory full(site.root, limits, clock);
  EXPECT_EQ(full.keepFile(kMacro, MacroChange::kSave).failure().kind, Failure::Kind::kFull);
  EXPECT_EQ(full.takeFailure()->kind, Failure::Kind::kFull);
  EXPECT_EQ(full.list().size(), 2 * kLastVersions) << "it gives what it can spare, and no more";
}

TEST_F(MacroHistoryTest, WaitingForAnotherProgramEnds) {
  site.write(kMacro, "held");
  std::filesystem::create_directory_symlink(site.root.resolve("c:\\appli"), site.root.path() / "c/way");
  MacroHistory::Limits limits;
  limits.patience = std::chrono::milliseconds(1);
  MacroHistory other(site.root, limits);
  int done = 0;
  const auto work = [&done]() -> Outcome {
    ++done;
    return {};
  };
  EXPECT_TRUE(history.change(kMacro, MacroChange::kSave, [&]() -> Outcome {
    const Outcome late = other.change("c:\\way\\macro007.mac", MacroChange::kSave, work);
    EXPECT_EQ(late.failure().kind, Failure::Kind::kInUse) << "whichever way leads to the file";
    EXPECT_EQ(done, 0) << "what somebody else is changing is left alone";
    EXPECT_TRUE(other.change("c:\\appli\\macro008.mac", MacroChange::kSave, work));
    EXPECT_FALSE(other.putBack(other.list().front(), kMacro));
    return {};
  }));
  EXPECT_TRUE(other.change(kMacro, MacroChange::kSave, work));
  EXPECT_EQ(done, 2);
}

TEST_F(MacroHistoryTest, NothingIsKeptOrFoundThroughLinks) {
  site.write(kMacro, "old");
  site.write("c:\\secret.mac", "secret");
  site.write("elsewhere\\x", "");
  std::filesystem::create_directory_symlink(site.root.resolve("elsewhere"), site.root.path() / "history");
  EXPECT_EQ(history.keepFile(kMacro, MacroChange::kSave).failure().kind, Failure::Kind::kInTheWay);
  EXPECT_THAT(*listFolder(site.root, "elsewhere"), ElementsAre("x"));
  std::filesystem::remove(site.root.path() / "history");
  site.write("history\\2024-10-04\\x", "");
  std::filesystem::create_symlink(site.root.resolve("c:\\secret.mac"),
                                  site.root.resolve("history\\2024-10-04\\000000-000-00000000-6-1-x.mac"));
  site.write("elsewhere\\000000-000-00000000-6-1-x.mac", "theirs");
  std::filesystem::create_directory_symlink(site.root.resolve("elsewhere"),
                                            site.root.resolve("history\\2024-10-06"));
  EXPECT_THAT(history.list(), IsEmpty());
  site.write("elsewhere\\000000-000-00000000-6-2-x.txt", "disk=theirs\n");
  overwrite(history, "new");
  EXPECT_THAT(*listFolder(site.root, "elsewhere"), testing::SizeIs(3)) << "nor tidied up";
}

TEST_F(MacroHistoryTest, WhatAKilledProgramLeftIsRemoved) {
  site.write("history\\2024-10-04\\000000-000-00000000-6-1-x.txt", "disk=x\n");
  site.write("history\\2024-10-04\\.tessaly-1-1-1.tmp", "half");
  site.write("history\\2024-10-05\\mine.txt", "a stranger's");
  overwrite(history, "first");
  overwrite(history, "second");
  EXPECT_THAT(*listFolder(site.root, "history\\2024-10-05"), ElementsAre("mine.txt"));
  EXPECT_THAT(*listFolder(site.root, "history\\2024-10-04"), testing::SizeIs(2)) << "a macro and its record";
  EXPECT_EQ(site.read("history\\2024-10-04\\.tessaly-1-1-1.tmp"), "<missing>");
  site.write("history\\2024-10-04\\.tessaly-1-1-2.tmp", "half");
  site.write("history\\lock", "7");
  overwrite(history, "third");
  EXPECT_EQ(site.read("history\\2024-10-04\\.tessaly-1-1-2.tmp"), "<missing>") << "another one died since";
  MacroHistory next(site.root, {}, clock);
  overwrite(next, "fourth");
  for (const KeptMacro& kept : next.list()) EXPECT_TRUE(kept.place) << "whole ones stay as they are";
}

TEST_F(MacroHistoryTest, AFolderThatCannotBeWrittenIsNoHindrance) {
  site.write(kMacro, "old");
  site.write("history", "in the way");
  EXPECT_FALSE(history.keepFile(kMacro, MacroChange::kSave));
  EXPECT_TRUE(history.takeFailure());
  EXPECT_FALSE(history.takeFailure());
  EXPECT_THAT(history.list(), IsEmpty());
  // Unless somebody says no.
  for (const int mayLose : {-1, 0, 1}) {
    bool done = false;
    const Outcome changed = history.change(
        kMacro, MacroChange::kSave,
        [&]() -> Outcome {
          done = true;
          return {};
        },
        mayLose < 0 ? MacroHistory::MayLose() : [&](const Failure&) { return mayLose == 1; });
    EXPECT_EQ(done, mayLose != 0);
    EXPECT_EQ(changed ? std::nullopt : std::optional(changed.failure().kind),
              mayLose != 0 ? std::nullopt : std::optional(Failure::Kind::kCancelled));
    EXPECT_EQ(history.takeFailure().has_value(), mayLose != 0) << "nothing is lost";
  }
}

}  // namespace
}  // namespace tessaly
