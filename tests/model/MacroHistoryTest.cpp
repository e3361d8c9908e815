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

constexpr const char* kFile = "c:\\appli\\macro007.mac";

class MacroHistoryTest : public testing::Test {
 protected:
  std::vector<std::string> contents(MacroHistory& from) const {
    std::vector<std::string> result;
    for (const KeptMacro& kept : from.list()) result.push_back(site.read(kept.file));
    return result;
  }
  void overwrite(MacroHistory& into, std::string_view bytes) const {
    EXPECT_TRUE(into.keepFile(kFile, MacroChange::kSave));
    site.write(kFile, bytes);
  }

  TestSite site;
  system_clock::time_point now{hours(24 * 20000 + 23)};
  MacroHistory::Clock clock = [this] { return now; };
  MacroHistory history{site.root, {}, clock};
};

TEST_F(MacroHistoryTest, EveryVersionIsKeptOnceWithWhereItCameFrom) {
  EXPECT_TRUE(history.keepFile(kFile, MacroChange::kSave)) << "what is not there need not be kept";
  EXPECT_THAT(history.list(), IsEmpty());
  site.write(kFile, "<!-- <macro> --><macro  name='A &amp; &quot;B&quot;'><data/></macro>");
  for (const char* bytes : {"two", "two", "three"}) overwrite(history, bytes);
  EXPECT_TRUE(history.keepFile((site.root.path() / "c/APPLI/macro007.mac").string(), MacroChange::kDelete));
  overwrite(history, "two");  // "three" has just been kept
  EXPECT_TRUE(history.keepFile(kFile, MacroChange::kSave)) << "an older version that came back is kept again";
  EXPECT_THAT(contents(history),
              ElementsAre("two", "three", "two",
                          "<!-- <macro> --><macro  name='A &amp; &quot;B&quot;'><data/></macro>"));
  const std::vector<KeptMacro> kept = history.list();
  EXPECT_EQ(kept[3].id, "2024-10-04/230000-000");
  EXPECT_EQ(kept[3].when, std::int64_t{20000 * 24 + 23} * 3600 * 1000);
  EXPECT_EQ(kept[3].name, "A & \"B\"");
  EXPECT_EQ(kept[1].placeText(), kFile) << "one spelling, however the file was named";
  EXPECT_EQ(kept[1].change, MacroChange::kDelete);
  EXPECT_FALSE(history.takeFailure());
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
    EXPECT_EQ(history.find(kept.id)->size, hostile.size());
  }
  for (const char* id : {"", "..", "2024-10-04", "2024-10-04/230000-999", "../../etc/passwd"})
    EXPECT_FALSE(history.find(id)) << id;
}

TEST_F(MacroHistoryTest, TheOldestGoFirstByCountAndByBytes) {
  MacroHistory three(site.root, {3, 100}, clock);
  for (const char* bytes : {"1", "2", "3", "4"}) {
    overwrite(three, bytes);
    now += hours(24);
  }
  EXPECT_THAT(contents(three), ElementsAre("3", "2", "1"));
  overwrite(three, std::string(25, 'x'));
  EXPECT_THAT(listFolder(site.root, "history"), ElementsAre("2024-10-06", "2024-10-07", "2024-10-08"))
      << "an empty day goes, too";
  for (const char c : {'a', 'b', 'c', 'd'}) overwrite(three, std::string(25, c));
  EXPECT_THAT(contents(three), ElementsAre(std::string(25, 'c'), std::string(25, 'b'), std::string(25, 'a')));
  // Another process counts what it finds; the oldest can be put back although keeping drives it out.
  MacroHistory next(site.root, {3, 100}, clock);
  EXPECT_TRUE(next.putBack(next.list().back(), kFile));
  EXPECT_EQ(site.read(kFile), std::string(25, 'a'));
  EXPECT_THAT(contents(next), ElementsAre(std::string(25, 'd'), std::string(25, 'c'), std::string(25, 'b')));
  site.write(kFile, std::string(26, 'y'));
  EXPECT_FALSE(next.keepFile(kFile, MacroChange::kSave)) << "one macro must not drive out all others";
  EXPECT_TRUE(next.takeFailure());
}

TEST_F(MacroHistoryTest, ADamagedRecordLeavesTheBytes) {
  site.write(kFile, "bytes");
  ASSERT_TRUE(history.keepFile(kFile, MacroChange::kSave));
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
}

TEST_F(MacroHistoryTest, AFolderThatCannotBeWrittenIsNoHindrance) {
  site.write(kFile, "old");
  site.write("history", "in the way");
  EXPECT_FALSE(history.keepFile(kFile, MacroChange::kSave));
  EXPECT_TRUE(history.takeFailure());
  EXPECT_FALSE(history.takeFailure());
  EXPECT_EQ(history.fetchFile(), "");
  EXPECT_THAT(history.list(), IsEmpty());
}

}  // namespace
}  // namespace tessaly
