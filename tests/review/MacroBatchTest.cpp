#include <gmock/gmock.h>

#include "platform/Files.h"
#include "review/BatchJournal.h"
#include "review/BatchRecovery.h"
#include "review/BatchText.h"
#include "review/DiskShelf.h"
#include "review/MacroBatch.h"
#include "review/WorkplaceComparison.h"
#include "tests/review/BatchFixture.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Mode = MacroBatch::Mode;
using State = MacroBatch::Row::State;
using How = BatchRecovery::How;

TEST_F(MacroBatchTest, AsManyRowsAsGoAreWrittenAndUndoneAsOne) {
  site.write(file(1), "<foreign/>");
  MacroBatch batch =
      batchOf({item(0), item(1), item(2, std::nullopt), item(3, kNew, HeldContent::nothing())});
  EXPECT_TRUE(batch.run());
  EXPECT_THAT(statesOf(batch), ElementsAre(State::kDone, State::kAsBefore, State::kDone, State::kDone));
  EXPECT_EQ(batch.rows()[1].why.kind, Failure::Kind::kChanged);
  EXPECT_THAT(disk(), ElementsAre(kNew, "<foreign/>", "<missing>", kNew));
  site.write(file(1), kOld);
  EXPECT_TRUE(batch.run());
  EXPECT_EQ(batch.doneCount(), 4U);
  EXPECT_THAT(*BatchJournal::namesIn(site.root), IsEmpty());

  site.write(file(0), "<later/>");
  std::size_t lost = 0;
  MacroBatch undo = batchOf(*undoing(tracesOf(batch), site.root, history, lost));
  EXPECT_TRUE(undo.run());
  EXPECT_EQ(lost, 0U);
  EXPECT_THAT(disk(), ElementsAre("<later/>", kOld, kOld, "<missing>"));
}

// What a cut line has left of this batch's own is written over, what somebody else has put there is not; and
// the old macro is what an undo brings back.
TEST_F(MacroBatchTest, OnlyItsOwnPartIsWrittenOver) {
  const std::vector<BatchItem> onThePanel{{onPanel(0), kNew, HeldContent::of(kOld)}};
  const auto tear = [this](MacroBatch& batch) {
    panel.files[0] = kOld;
    panel.tears = true;
    EXPECT_TRUE(batch.run());
    panel.tears = false;
  };
  struct Case {
    const char* found;  // at the second try; null: the part as it was left
    bool done;
  };
  for (const auto& [found, done] :
       {Case{nullptr, true}, {"<ol", true}, {kOld, true}, {kNew, true}, {"<x/>", false}}) {
    SCOPED_TRACE(found ? found : "its own part");
    MacroBatch batch = batchOf(onThePanel);
    tear(batch);
    EXPECT_EQ(batch.rows()[0].state, State::kUnknown);
    if (found) panel.files[0] = found;
    EXPECT_TRUE(batch.run());
    EXPECT_EQ(batch.rows()[0].done(), done);
    EXPECT_EQ(panel.files[0], done ? kNew : found);
    EXPECT_EQ(batch.rows()[0].before, HeldContent::of(kOld));
  }
  // What cannot be read at the second try is still not known, rather than as before.
  MacroBatch blind = batchOf(onThePanel);
  tear(blind);
  for (const bool read : {false, true}) {
    panel.unreadable = read ? -1 : 0;
    panel.refused = read ? 0 : -1;
    EXPECT_TRUE(blind.run());
    EXPECT_EQ(blind.rows()[0].state, State::kUnknown) << read;
  }
  panel.refused = -1;
  EXPECT_TRUE(blind.run());
  EXPECT_EQ(panel.files[0], kNew);
  // Also by the next start, when the program ends before the second try has begun anything.
  MacroBatch batch = batchOf(onThePanel);
  tear(batch);
  panel.tears = true;
  panel.onAsked = [] { throw 1; };
  EXPECT_ANY_THROW(static_cast<void>(batch.run()));
  panel.onAsked = {};
  EXPECT_EQ(recoverBatches(places)[0].how, How::kWaits) << "the panel holds a part yet";
  panel.tears = false;
  EXPECT_EQ(recoverBatches(places)[0].how, How::kEnded);
  EXPECT_EQ(panel.files[0], kNew);
  MacroBatch twice = batchOf({item(0), {{"C:/wp/MACRO000.mac", {}, 0, {}}, kNew}});
  EXPECT_EQ(twice.run().failure().kind, Failure::Kind::kInTheWay);
}

TEST_F(MacroBatchTest, AllOrNonePutsBackWhatItHasWritten) {
  enum class Stop { kProtected, kCancel, kForeign, kChangedBefore, kPanel };
  for (const Stop stop :
       {Stop::kProtected, Stop::kCancel, Stop::kForeign, Stop::kChangedBefore, Stop::kPanel}) {
    SCOPED_TRACE(static_cast<int>(stop));
    for (const int number : {0, 1, 2}) site.write(file(number), kOld);
    std::vector<BatchItem> items{item(0), item(3, kNew, HeldContent::nothing()), item(1, std::nullopt),
                                 item(2)};
    if (stop == Stop::kPanel) items.push_back({onPanel(1), kNew});
    if (stop == Stop::kChangedBefore) items[3].expected = HeldContent::of("<other/>");
    if (stop == Stop::kForeign) items[3].expected = {};  // as it was read counts
    protect(2, stop == Stop::kProtected);
    MacroBatch batch = batchOf(std::move(items), Mode::kAllOrNone);
    int told = 0;
    const Outcome ran = batch.run([&](std::size_t index, const MacroBatch::Row&) {
      if (++told > 3) return;
      if (stop == Stop::kCancel && index == 2) batch.cancel();
      if (stop == Stop::kForeign && index == 2) site.write(file(2), "<foreign/>");
    });
    EXPECT_EQ(ran.done(), stop != Stop::kChangedBefore && stop != Stop::kPanel);
    EXPECT_EQ(batch.doneCount(), 0U);
    const char* const last = stop == Stop::kForeign ? "<foreign/>" : kOld;
    EXPECT_THAT(disk(), ElementsAre(kOld, kOld, last, "<missing>"));
    EXPECT_THAT(*BatchJournal::namesIn(site.root), IsEmpty());
    protect(2, false);
  }
  MacroBatch batch = batchOf({item(0), item(1)}, Mode::kAllOrNone);
  EXPECT_TRUE(batch.run());
  EXPECT_THAT(disk(), ElementsAre(kNew, kNew, kOld, "<missing>"));
  EXPECT_THAT(*BatchJournal::namesIn(site.root), IsEmpty());
}

TEST_F(MacroBatchTest, WhatSomebodyElseHasWrittenMeanwhileIsNotPutBack) {
  MacroBatch batch = batchOf({item(0), item(1)}, Mode::kAllOrNone);
  int told = 0;
  EXPECT_TRUE(batch.run([&](std::size_t, const MacroBatch::Row&) {
    if (++told > 1) return;
    site.write(file(0), "<foreign/>");
    batch.cancel();
  }));
  EXPECT_THAT(statesOf(batch), ElementsAre(State::kUnknown, State::kAsBefore));
  EXPECT_EQ(site.read(file(0)), "<foreign/>");
  EXPECT_THAT(*BatchJournal::namesIn(site.root), SizeIs(1));
}

TEST_F(MacroBatchTest, WhatTheHistoryCannotKeepIsNotWrittenOver) {
  site.write("history", "in the way");
  MacroBatch batch = batchOf({item(0)});
  EXPECT_TRUE(batch.run());
  EXPECT_THAT(statesOf(batch), ElementsAre(State::kAsBefore));
  EXPECT_EQ(site.read(file(0)), kOld);
}

TEST_F(MacroBatchTest, WhatABatchHasWrittenIsPutBackWithoutRoomInTheHistory) {
  MacroHistory small(site.root, {.bytes = 40});  // keeps the old macros, and not the new one
  BatchPlaces tight(site.root, small);
  const std::string large(11, 'n');
  MacroBatch batch(tight, "copy", MacroChange::kCopy, Mode::kAllOrNone, {item(0, large), item(1, large)});
  protect(1, true);
  EXPECT_TRUE(batch.run());
  EXPECT_THAT(statesOf(batch), ElementsAre(State::kAsBefore, State::kAsBefore));
  EXPECT_EQ(site.read(file(0)), kOld);
  site.write(file(0), large);
  BatchRecord cut{"copy", Mode::kAllOrNone, MacroChange::kCopy, {item(0, large)}, {kOld}, {}, false};
  ASSERT_TRUE(BatchJournal::begin(site.root, cut)->noteUndoing());
  EXPECT_EQ(recoverBatches(tight)[0].how, How::kUndone);
}

TEST_F(MacroBatchTest, TheNextStartEndsOrUndoesABatch) {
  using Held = HeldContent;
  // What a place holds: by the old, new, torn and foreign bytes that a letter stands for.
  const std::map<char, std::string> bytes{{'O', kOld}, {'N', kNew}, {'o', "<ol"}, {'n', "<n"}, {'x', "<x/>"}};
  const std::vector<MacroPlace> files{disk(0), disk(1), disk(2)};
  const std::vector<MacroPlace> macros{onPanel(0), onPanel(1), onPanel(2)};
  enum class Noted { kNothing, kBegun, kUndoing };  // kBegun: the second one
  using enum Noted;
  const struct {
    Mode mode;
    std::vector<MacroPlace> places;
    Noted noted;
    std::string_view found, left;
    How how;
    const char* told;
  } cases[] = {
      {Mode::kAllOrNone, files, kNothing, "OOO", "NNN", How::kEnded, "has been ended"},
      {Mode::kAllOrNone, files, kNothing, "NOO", "NNN", How::kEnded, "has been ended"},
      {Mode::kAllOrNone, files, kUndoing, "NNO", "OOO", How::kUndone, "has been undone"},
      {Mode::kAllOrNone, files, kNothing, "NxO", "NxN", How::kEnded,
       "has been ended; it has let alone what somebody else has written: c:\\wp\\macro001.mac"},
      {Mode::kAsManyAsGo, files, kBegun, "xOO", "xNN", How::kEnded, "has been ended"},
      {Mode::kAsManyAsGo, files, kBegun, "NnO", "NnN", How::kEnded,
       "has been ended; it has let alone what somebody else has written: c:\\wp\\macro001.mac"},
      {Mode::kAsManyAsGo, macros, kBegun, "NnO", "NNN", How::kEnded, "has been ended"},
      {Mode::kAsManyAsGo, macros, kBegun, "NoO", "NNN", How::kEnded, "has been ended"},
      {Mode::kAsManyAsGo, macros, kBegun, "NxO", "NxN", How::kEnded,
       "has been ended; it has let alone what somebody else has written: 10.0.0.1 workplace 1 macro 001"},
      {Mode::kAsManyAsGo, macros, kBegun, "NnO", "NnO", How::kWaits, "waits for its panel"},
  };
  for (const auto& [mode, stand, noted, found, left, how, words] : cases) {
    SCOPED_TRACE(testing::Message() << found << ' ' << words);
    BatchRecord record{"copy", mode, MacroChange::kCopy, {}, {}, {}, false};
    for (std::size_t i = 0; i < stand.size(); ++i) {
      record.items.push_back({stand[i], kNew, Held::of(kOld)});
      record.olds.emplace_back(kOld);
      if (BatchPlaces::onPanel(stand[i])) panel.files[static_cast<int>(i)] = bytes.at(found[i]);
      if (!BatchPlaces::onPanel(stand[i])) site.write(stand[i].file, bytes.at(found[i]));
    }
    {
      auto journal = BatchJournal::begin(site.root, record);
      ASSERT_TRUE(journal);
      EXPECT_TRUE(noted != kBegun || journal->noteBegun(1, std::string(kOld), true));
      EXPECT_TRUE(noted != kUndoing || journal->noteUndoing());
      EXPECT_THAT(recoverBatches(places), IsEmpty()) << "its program lives";
    }
    connected = how != How::kWaits;
    const auto told = recoverBatches(places);
    ASSERT_THAT(told, SizeIs(1));
    EXPECT_EQ(told[0].how, how);
    EXPECT_EQ(told[0].describe(), std::string("the batch \"copy\", which was cut short, ") + words);
    EXPECT_EQ(told[0].written, connected ? stand : std::vector<MacroPlace>());
    connected = true;
    for (std::size_t i = 0; i < stand.size(); ++i) EXPECT_EQ(places.read(stand[i]), bytes.at(left[i])) << i;
    static_cast<void>(recoverBatches(places));
    EXPECT_THAT(*BatchJournal::namesIn(site.root), IsEmpty());
  }
  BatchRecord torn{"replacement", Mode::kAllOrNone, MacroChange::kEdit, {item(0)}, {kOld}, {}, false};
  site.write(file(0), kNew);
  ASSERT_TRUE(BatchJournal::begin(site.root, torn)->noteUndoing());
  protect(0, true);
  EXPECT_THAT(recoverBatches(places)[0].failed, SizeIs(1));
  protect(0, false);
  EXPECT_EQ(recoverBatches(places)[0].how, How::kUndone) << "what could not be undone is undone another time";
  EXPECT_EQ(site.read(file(0)), kOld);
  panel.refused = 1;
  for (int number : {0, 1, 2}) panel.files[number] = kOld;
  BatchRecord record{"copy", Mode::kAsManyAsGo, MacroChange::kCopy, {}, {}, {}, false};
  for (const MacroPlace& place : macros) record.items.push_back({place, kNew, {}});
  ASSERT_TRUE(BatchJournal::begin(site.root, record));
  EXPECT_EQ(recoverBatches(places)[0].how, How::kWaits);
  panel.refused = -1;
  EXPECT_EQ(recoverBatches(places)[0].how, How::kEnded);
  EXPECT_EQ(panel.files[2], kNew);
}

TEST(WorkplaceComparisonTest, OnlyANewNameIsARenaming) {
  const std::string whole =
      R"(<?xml version="1.0"?><macro name="One" x="1"><data><cmd fid="A" /></data></macro>)";
  struct Case {
    const char *from, *to;
    bool renamed;
  };
  const Case cases[] = {{"One", "Two &amp; more", true},
                        {"One", "", true},
                        {"\" x", "\"  x", false},
                        {"x=\"1", "x=\"2", false},
                        {"\"A", "\"B", false},
                        {"name=", "nome=", false},
                        {" />", "/>", false},
                        {"One", "a\" b=\"c", false}};
  for (const Case& row : cases) {
    std::string other = whole;
    const std::size_t at = other.find(row.from);
    ASSERT_NE(at, other.npos) << row.from;
    other.replace(at, std::string(row.from).size(), row.to);
    EXPECT_EQ(differInNameOnly(whole, other), row.renamed) << row.to;
    EXPECT_EQ(differInNameOnly(other, whole), row.renamed) << row.to;
  }
}

TEST_F(MacroBatchTest, AWorkplaceStandsBesideAnother) {
  using Row = WorkplaceRow::State;
  DiskShelf left(site.root, history, "c:\\wp"), right(site.root, history, "c:\\other\\");
  const std::string one = "<macro name=\"One\"><data/></macro>", two = "<macro name=\"Two\"><data/></macro>";
  site.write(file(0), one);
  site.write(file(1), one);
  site.write(file(2), one);
  site.write("c:\\other\\MACRO000.MAC", one);
  site.write("c:\\other\\macro001.mac", two);
  site.write("c:\\other\\macro003.mac", two);
  site.write("c:\\other\\macro1000.mac", two);
  std::filesystem::create_directory(site.root.resolve("c:\\other\\macro002.mac"));
  std::vector<std::pair<int, Row>> rows;
  WorkplaceComparison comparison(left, right);
  EXPECT_TRUE(comparison.run([&](const WorkplaceRow& row, std::size_t all) {
    rows.emplace_back(row.number.value(), row.state);
    EXPECT_EQ(all, 4U);
    EXPECT_EQ(row.left + row.right, row.state == Row::kSame       ? "OneOne"
                                    : row.state == Row::kRenamed  ? "OneTwo"
                                    : row.state == Row::kOnlyLeft ? "One"
                                                                  : "Two");
  }));
  EXPECT_THAT(rows, ElementsAre(std::pair(0, Row::kSame), std::pair(1, Row::kRenamed),
                                std::pair(2, Row::kOnlyLeft), std::pair(3, Row::kOnlyRight)));
  comparison.cancel();
  EXPECT_EQ(comparison.run({}).failure().kind, Failure::Kind::kCancelled);
}

// Catches two unreadable macros that are called the same, and a reason of the wrong side.
TEST_F(MacroBatchTest, WhatIsNotKnownIsToldAsSuch) {
  FakeShelf other;
  panel.listed = other.listed = {0, 1, 2, 3, 4};
  const std::string one = "<macro  name='One'/>", chips = "<macro name=\"Fish &amp; chips\"/>";
  panel.files = {{1, one}, {3, one}, {4, chips}};
  other.files = {{1, one}, {3, one}, {4, chips}};
  panel.unreadable = 1;
  other.unreadable = 2;
  std::vector<std::string> told;
  EXPECT_TRUE(WorkplaceComparison(panel, other).run([&](const WorkplaceRow& row, std::size_t) {
    const bool unreadable = row.state == WorkplaceRow::State::kUnreadable;
    told.push_back(row.number.text() + (unreadable ? ' ' + row.trouble : ' ' + row.left));
  }));
  EXPECT_THAT(told, ElementsAre("001 cannot be read", "002 cannot be read", "003 One", "004 Fish & chips"));
  WorkplaceComparison ended(panel, other);
  panel.onRead = [&] { ended.cancel(); };
  EXPECT_EQ(ended.run([](const WorkplaceRow&, std::size_t) { ADD_FAILURE(); }).failure().kind,
            Failure::Kind::kCancelled);
  EXPECT_TRUE(panel.cancelled && other.cancelled);
}

TEST_F(MacroBatchTest, AJournalIsReadAsFarAsItIsWhole) {
  BatchRecord record{"copy \n of",
                     Mode::kAllOrNone,
                     MacroChange::kCopy,
                     {item(0), item(1, std::nullopt)},
                     {std::string(kOld), std::nullopt},
                     {},
                     false};
  const std::string whole = batchText(record);
  const std::string text = whole + batchBegunText({1, HeldContent::of("x"), "x"}) + batchUndoingText();
  std::size_t end = 0;
  const auto read = readBatch(text, end);
  ASSERT_TRUE(read && read->begun);
  EXPECT_EQ(end, text.size());
  EXPECT_TRUE(read->undoing);
  EXPECT_EQ(read->begun->oldBytes, "x");
  EXPECT_EQ(batchText(*read), whole);
  for (std::size_t size = 0; size < text.size(); ++size) {
    const auto part = readBatch(text.substr(0, size), end);
    EXPECT_EQ(part.has_value(), size >= whole.size()) << size;
    EXPECT_TRUE(!part || end <= size);
    std::string altered = text;
    altered[size] = static_cast<char>(altered[size] ^ 1);
    EXPECT_EQ(readBatch(altered, end).has_value(), size >= whole.size()) << size;
  }
  // A link could lead to what only we may read, or name places that only we may write.
  ASSERT_TRUE(BatchJournal::begin(site.root, record));
  const std::string name = BatchJournal::namesIn(site.root)->at(0);
  const auto folder = site.root.path() / "batches";
  std::filesystem::rename(folder / name, folder / "moved");
  std::filesystem::create_symlink(folder / "moved", folder / name);
  EXPECT_EQ(recoverBatches(places)[0].how, How::kRefused);
  EXPECT_THAT(disk(), ElementsAre(kOld, kOld, kOld, "<missing>"));
}

}  // namespace
}  // namespace tessaly
