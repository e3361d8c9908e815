#include <gmock/gmock.h>

#include "review/DiskShelf.h"
#include "review/SnapshotRestore.h"
#include "review/WorkplaceCopy.h"
#include "tests/review/BatchFixture.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

using SnapshotRestoreTest = MacroBatchTest;

TEST_F(SnapshotRestoreTest, ARestoreLooksWritesAndTriesOn) {
  using Restored = RestoreRow::State;
  const auto macro = [](const std::string& name) { return "<macro name=\"" + name + "\"><data/></macro>"; };
  const auto snapshot = std::make_shared<Snapshot>();
  snapshot->workplaces = {1};
  for (const int at : {0, 1, 2, 3, 4})
    snapshot->macros.push_back(
        {1, *MacroNumber::of(at), "", at == 4 ? "no macro" : macro(std::to_string(at))});
  panel.files = {{0, macro("0")}, {2, macro("x")}, {3, macro("x")}, {4, macro("x")}};
  const auto shelfOf = [this](int) { return connected ? &panel : nullptr; };
  SnapshotRestore restore(snapshot, site.root, history, shelfOf,
                          {.tries = {3, std::chrono::milliseconds(1)}});
  std::vector<std::size_t> told;
  const auto tell = [&](std::size_t row) { told.push_back(row); };
  const auto states = [&] {
    std::vector<Restored> all;
    for (const RestoreRow& row : restore.rows()) all.push_back(row.state);
    return all;
  };
  EXPECT_EQ(restore.add(1, 1, {0, 9}).failure().kind, Failure::Kind::kMissing);
  ASSERT_TRUE(restore.rows().empty() && restore.add(1, 1));
  connected = false;
  EXPECT_TRUE(restore.look(tell));
  EXPECT_THAT(std::exchange(told, {}), ElementsAre(0, 1, 2, 3, 4));
  EXPECT_THAT(states(), testing::Each(Restored::kUnread));
  connected = true;
  EXPECT_TRUE(restore.write({1}, tell)) << "it is looked at now";
  EXPECT_TRUE(restore.look(tell));
  EXPECT_THAT(states(), ElementsAre(Restored::kSame, Restored::kSame, Restored::kChanged, Restored::kChanged,
                                    Restored::kChanged));
  panel.files[3] = macro("foreign");
  panel.losses = 2;
  panel.writes = 0;
  told.clear();
  EXPECT_TRUE(restore.write({0, 1, 2, 3, 4}, [&](std::size_t row) {
    tell(row);
    EXPECT_EQ(restore.rows()[row].state == Restored::kRestored, row == 2) << row;
  }));
  EXPECT_THAT(states(), ElementsAre(Restored::kSame, Restored::kSame, Restored::kRestored,
                                    Restored::kAsBefore, Restored::kAsBefore));
  EXPECT_THAT(told, testing::UnorderedElementsAre(2, 3, 4));
  EXPECT_EQ(panel.files[2], macro("2"));
  EXPECT_EQ(panel.files[3], macro("foreign"));
  EXPECT_THAT(restore.traces(), SizeIs(1));
  EXPECT_TRUE(restore.write({2}, tell));
  EXPECT_EQ(panel.writes, 3) << "what is restored is not written again";
  EXPECT_THAT(restore.traces(), IsEmpty());

  SnapshotRestore endless(snapshot, site.root, history, shelfOf, {.tries = {9, std::chrono::hours(1)}});
  ASSERT_TRUE(endless.add(1, 1, {3}) && endless.look(tell));
  panel.losses = 9;
  panel.onWrite = [&] { endless.cancel(); };
  EXPECT_EQ(endless.write({0}, tell).failure().kind, Failure::Kind::kCancelled);
  EXPECT_EQ(endless.look(tell).failure().kind, Failure::Kind::kCancelled);
  EXPECT_EQ(panel.files[3], macro("foreign"));
}

TEST_F(SnapshotRestoreTest, ACopyOfAWorkplaceWritesWhatWasCompared) {
  panel.files = {{1, "<x/>"}, {2, "<y/>"}};
  const auto of = [](const char* bytes) { return HeldContent::of(bytes); };
  const auto number = [](int value) { return *MacroNumber::of(value); };
  WorkplaceCopy copy(
      site.root, [this] { return std::make_shared<DiskShelf>(site.root, history, "c:\\wp"); },
      [this] { return std::shared_ptr<MacroShelf>(std::shared_ptr<MacroShelf>(), &panel); }, "copy",
      {{number(0), of(kOld), HeldContent::nothing()},
       {number(1), of("<was/>"), of("<x/>")},
       {number(2), of(kOld), of("<z/>")}});
  std::map<std::size_t, MacroBatch::Row> rows;
  const auto tell = [&](std::size_t index, const MacroBatch::Row& row) { rows[index] = row; };
  panel.able = Failure{Failure::Kind::kPanel, "nothing is sent"};
  EXPECT_FALSE(copy.run(tell));
  panel.able = {};
  copy.cancel();
  EXPECT_EQ(copy.run(tell).failure().kind, Failure::Kind::kCancelled);
  EXPECT_THAT(rows, IsEmpty());
  EXPECT_TRUE(copy.run(tell));
  EXPECT_TRUE(rows[0].done());
  EXPECT_EQ(rows[1].why.kind, Failure::Kind::kChanged);
  EXPECT_EQ(rows[2].why.kind, Failure::Kind::kChanged);
  EXPECT_THAT(panel.files, ElementsAre(std::pair(0, kOld), std::pair(1, "<x/>"), std::pair(2, "<y/>")));
  EXPECT_THAT(copy.traces(), SizeIs(1));
  panel.files[2] = "<z/>";
  EXPECT_TRUE(copy.run(tell));
  EXPECT_EQ(panel.files[2], kOld);
  EXPECT_THAT(copy.traces(), SizeIs(1)) << "what was written before is an entry of its own";

  // A cancel under the last thing that is read.
  panel.writes = 0;
  const auto shelf = [this] { return std::shared_ptr<MacroShelf>(std::shared_ptr<MacroShelf>(), &panel); };
  WorkplaceCopy ended(site.root, shelf, shelf, "copy", {{number(2), of(kOld), of(kOld)}});
  panel.onRead = [&] { ended.cancel(); };
  EXPECT_EQ(ended.run(tell).failure().kind, Failure::Kind::kCancelled);
  EXPECT_EQ(panel.writes, 0);
}

}  // namespace
}  // namespace tessaly
