#include <functional>
#include <gmock/gmock.h>
#include <map>
#include <memory>
#include <set>

#include "platform/Text.h"
#include "platform/ZipArchive.h"
#include "review/Snapshot.h"
#include "review/SnapshotShelf.h"
#include "review/SnapshotTaking.h"
#include "tests/review/BatchFixture.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr std::chrono::sys_seconds kTime{std::chrono::seconds{1'795'615'201}};  // 2026-11-25T14:00:01Z

MacroNumber number(int value) { return *MacroNumber::of(value); }

Snapshot sample() {
  return {{"10.0.0.5", {}},
          kTime,
          {1, 2, 3},
          {{1, number(0), "Öffnen", "<macro/>"}, {2, number(999), "", std::string("\0\xff", 2)}}};
}

std::string packed() { return *packSnapshot(sample()); }

// The files of a good archive after a change.
std::string repacked(const std::function<void(std::vector<ZipFile>&)>& change) {
  auto files = *unpackZip(packed(), 100);
  change(files);
  return *packZip(files, kTime);
}

std::string withList(const std::string& from, const std::string& to) {
  return repacked([&](auto& files) {
    const auto at = files[0].bytes.find(from);
    ASSERT_NE(at, std::string::npos) << from;
    files[0].bytes.replace(at, from.size(), to);
  });
}

// Sets a field of a file's two headers, `local` bytes into the one before it and `central` into the one in
// the archive's directory; -1 where it has none.
std::string patched(int file, int local, int central, const std::string& bytes) {
  std::string archive = packed();
  std::size_t first = 0, second = 0;
  for (int i = 0; i <= file; ++i) {
    first = archive.find("PK\3\4", i == 0 ? 0 : first + 1);
    second = archive.find("PK\1\2", second + 1);
  }
  if (local >= 0) archive.replace(first + local, bytes.size(), bytes);
  archive.replace(second + central, bytes.size(), bytes);
  return archive;
}

TEST(SnapshotTest, HoldsWhatItWasMadeOfInTheSameBytes) {
  const auto read = unpackSnapshot(packed());
  ASSERT_TRUE(read);
  EXPECT_EQ(read->origin.address, "10.0.0.5");
  EXPECT_EQ(utcText(read->time), "2026-11-25T14:00:01Z");
  EXPECT_THAT(read->workplaces, ElementsAre(1, 2, 3));
  ASSERT_EQ(read->macros.size(), 2U);
  EXPECT_EQ(read->of(1)[0].name, "Öffnen");
  EXPECT_EQ(read->of(2)[0].number.value(), 999);
  EXPECT_EQ(read->of(2)[0].bytes, std::string("\0\xff", 2));
  EXPECT_TRUE(read->of(3).empty());
  EXPECT_EQ(unpackSnapshot(packed(), [] { return false; }).failure().kind, Failure::Kind::kCancelled);
  // Neither the place nor the hour of the computer that packs it counts.
  static char elsewhereZone[] = "TZ=JST-9", noZone[] = "TZ=";
  ASSERT_EQ(putenv(elsewhereZone), 0);
  tzset();
  const std::string elsewhere = packed();
  putenv(noZone);
  tzset();
  EXPECT_EQ(elsewhere, packed());
  EXPECT_NE(packed().find("workplace2/macro999.mac"), std::string::npos);
}

TEST(SnapshotTest, RefusesWhatIsNoWholeSnapshot) {
  const auto add = [](std::string name) {
    return repacked([&](auto& files) { files.push_back({name, "x"}); });
  };
  const std::string sum(64, '0');
  const struct {
    const char* what;
    std::string archive;
    const char* reason;
  } cases[] = {
      {"nothing", "", "is no snapshot"},
      {"text", "<macro/>", "is no archive"},
      {"cut", packed().substr(0, packed().size() - 30), "is no archive"},
      {"a byte", replaceAll(packed(), "<macro/>", "<Macro/>"), "damaged"},
      {"no list", repacked([](auto& files) { files.erase(files.begin()); }), "is no snapshot"},
      {"leads up", add("../macro001.mac"), "\"../macro001.mac\", a name that leads out"},
      {"absolute", add("/etc/x"), "leads out"},
      {"drive", add("c:\\x"), "leads out"},
      {"hidden direction", add("workplace1/\u202Ecam.mac"),
       "[U+202E]cam.mac\", which its list does not name"},
      {"unlisted macro", add("workplace1/macro001.mac"), "does not name"},
      {"folder", add("workplace3/"), "no file but a folder"},
      {"missing macro", repacked([](auto& files) { files.pop_back(); }), "lacks \"workplace2/macro999.mac\""},
      {"changed macro", repacked([](auto& files) { files[1].bytes = "<Macro/>"; }), "is not what was stored"},
      {"link", patched(1, -1, 38, std::string("\0\0\xff\xa1", 4)), "no file but a folder, a link"},
      {"compressed", patched(1, 8, 10, std::string("\x08\0", 2)), "compressed"},
      {"encrypted", patched(1, 6, 8, std::string("\1\0", 2)), "encrypted"},
      {"twice", patched(2, 30, 46, "workplace1/macro000.mac"), "is no archive"},
      {"declared longer", patched(2, 22, 24, std::string("\xff\xff\xff\x7f", 4)), "larger than its archive"},
      {"no JSON", withList("{", "<"), "list that cannot be read"},
      {"deep", withList("{", std::string(100'000, '[')), "list that cannot be read"},
      {"other format", withList("tessaly-snapshot", "other"), "list that cannot be read"},
      {"next version", withList("\"version\": 1", "\"version\": 2"), "another version"},
      {"no such day", withList("2026-11-25", "2026-11-31"), "list that cannot be read"},
      {"no origin", withList("\"panel\"", "\"panels\""), "list that cannot be read"},
      {"both origins", withList("\"panel\"", "\"folder\": \"c:\\\\\", \"panel\""),
       "list that cannot be read"},
      {"workplace 9", withList("\"workplace\": 2", "\"workplace\": 9"), "list that cannot be read"},
      {"workplace not read", withList("\"workplace\": 2", "\"workplace\": 4"), "list that cannot be read"},
      {"workplaces in wrong order", withList("  1,\n  2,", "  2,\n  1,"), "list that cannot be read"},
      {"wrong order", withList("\"workplace\": 1", "\"workplace\": 3"), "list that cannot be read"},
      {"number", withList("\"999\"", "\"../\""), "list that cannot be read"},
      {"sum", withList("\"sha256\": \"", "\"sha256\": \"" + sum + "\",\"x\":\""), "is not what was stored"},
      {"size", withList("\"size\": 8", "\"size\": 9"), "is not what was stored"},
      {"no size", withList("\"size\": 8", "\"size\": -8"), "list that cannot be read"},
  };
  for (const auto& [what, archive, reason] : cases) {
    const auto read = unpackSnapshot(archive);
    ASSERT_FALSE(read) << what;
    EXPECT_EQ(read.failure().kind, Failure::Kind::kNoSnapshot) << what;
    EXPECT_THAT(read.failure().text, HasSubstr(reason)) << what;
  }
}

TEST(SnapshotTest, IsWrittenWholeOrNotAtAll) {
  TestSite site;
  site.write("c:\\a.zip", "old");
  Snapshot twice = sample();
  twice.macros.push_back(twice.macros.back());
  EXPECT_FALSE(saveSnapshot(site.root, "c:\\a.zip", twice));
  EXPECT_EQ(site.read("c:\\a.zip"), "old");
  EXPECT_TRUE(saveSnapshot(site.root, "c:\\a.zip", sample()));
  EXPECT_EQ(site.read("c:\\a.zip"), packed());
  EXPECT_TRUE(openSnapshot(site.root, "c:\\a.zip"));
}

TEST(SnapshotShelfTest, ShowsOneWorkplaceAndTakesNothing) {
  SnapshotShelf shelf(std::make_shared<Snapshot>(sample()), 2, "c:\\shows\\a.zip");
  EXPECT_EQ(shelf.title(), "workplace 2 in a.zip");
  ASSERT_EQ(shelf.list()->size(), 1U);
  EXPECT_EQ(shelf.read(number(999)), std::string("\0\xff", 2));
  EXPECT_EQ(shelf.read(number(0)).failure().kind, Failure::Kind::kMissing);  // that is workplace 1's
  EXPECT_FALSE(shelf.writable());
  EXPECT_EQ(shelf.write(number(999), "x", MacroChange::kCopy, {}).state, ShelfWrite::State::kAsBefore);
  EXPECT_EQ(shelf.remove(number(999), {}).state, ShelfWrite::State::kAsBefore);
  shelf.cancel();
  EXPECT_EQ(shelf.read(number(999)).failure().kind, Failure::Kind::kCancelled);
}

// What a panel holds, and how often it does not give it.
struct Panel {
  std::map<std::pair<int, int>, std::string> macros;
  std::map<std::pair<int, int>, int> lost;  // so many reads fail
  Failure::Kind how = Failure::Kind::kPanel;
  int unreachable = 0;  // so many shelves are not to be had
  std::function<void()> onRead = [] {};
  std::set<std::pair<int, int>> gone;  // listed, but not there
  std::string name;                    // that each is listed with
};

class PanelShelf final : public FakeShelf {
 public:
  PanelShelf(Panel& panel, int workplace) : panel_(panel), workplace_(workplace) {}
  Expected<std::vector<Held>> list() override {
    std::vector<Held> held;
    for (const auto& [key, bytes] : panel_.macros)
      if (key.first == workplace_) held.push_back({number(key.second), panel_.name});
    return held;
  }
  Expected<std::string> read(MacroNumber number) override {
    panel_.onRead();
    const std::pair key{workplace_, number.value()};
    if (cancelled) return Failure{Failure::Kind::kCancelled, "was cancelled"};
    if (panel_.lost[key]-- > 0) return Failure{panel_.how, "the connection was cut"};
    if (panel_.gone.contains(key)) return Failure{Failure::Kind::kMissing, "is not there"};
    return panel_.macros[key];
  }

 private:
  Panel& panel_;
  int workplace_;
};

class SnapshotTakingTest : public testing::Test {
 protected:
  SnapshotTakingTest() {
    for (int workplace : {1, 3})
      for (int at : {0, 7, 999}) panel_.macros[{workplace, at}] = "<macro name=\"N\"><data/></macro>";
  }

  Expected<Snapshot> take() {
    return taking_.take(kTime,
                        [this](const auto& now) { told_ += now.done == 0 && now.place < 3 ? now.all : 0; });
  }

  Panel panel_;
  std::size_t told_ = 0;
  int made_ = 0;
  SnapshotTaking taking_{{"10.0.0.5", {}},
                         {1, 2, 3},
                         [this](int workplace) {
                           ++made_;
                           const bool reached = panel_.unreachable-- <= 0;
                           return reached ? std::make_unique<PanelShelf>(panel_, workplace) : nullptr;
                         },
                         {.onlyMacros = true, .tries = {3, std::chrono::milliseconds{1}}}};
};

TEST_F(SnapshotTakingTest, GoesOnAfterALostLineAndLeavesOutWhatIsGone) {
  panel_.unreachable = 2;
  panel_.lost[{1, 7}] = 2;
  panel_.gone.insert({3, 0});
  const auto taken = take();
  ASSERT_TRUE(taken);
  EXPECT_EQ(taken->of(1).size(), 3U);
  EXPECT_EQ(taken->of(3).size(), 2U);
  EXPECT_EQ(taken->of(1)[2].name, "N");
  EXPECT_EQ(told_, 6U);
  EXPECT_EQ(made_, 7) << "a shelf whose line was lost is not used again";
  EXPECT_TRUE(packSnapshot(*taken));
}

TEST_F(SnapshotTakingTest, EndsWithTheMacroThatCannotBeRead) {
  panel_.lost[{3, 7}] = 1;
  panel_.how = Failure::Kind::kTooLarge;  // asking again does not help
  EXPECT_EQ(take().failure().text, "macro 007 of workplace 3: the connection was cut");
  panel_.lost[{3, 7}] = 3;
  panel_.how = Failure::Kind::kPanel;
  EXPECT_EQ(take().failure().text, "macro 007 of workplace 3: the connection was cut");
  const std::string whole = std::exchange(panel_.macros[{1, 999}], "<macro name=\"N\">#~#");
  EXPECT_THAT(take().failure().text, HasSubstr("macro 999 of workplace 1: what came is no macro"));
  panel_.macros[{1, 999}] = whole;
  EXPECT_TRUE(take());
  panel_.name = "N";
  panel_.gone.insert({3, 0});
  EXPECT_EQ(take().failure().text, "macro 000 of workplace 3: is not there") << "what has a name is there";
}

TEST_F(SnapshotTakingTest, EndsWhenItIsCancelled) {
  panel_.onRead = [this, count = 0]() mutable {
    if (++count == 4) taking_.cancel();
  };
  EXPECT_EQ(take().failure().kind, Failure::Kind::kCancelled);
}

}  // namespace
}  // namespace tessaly
