#include <QSignalSpy>
#include <QTreeView>

#include "review/DiskShelf.h"
#include "tests/windows/ReviewFixture.h"
#include "windows/SnapshotRestoreDialog.h"

namespace tessaly {
namespace {

using testing::StartsWith;

class SnapshotRestoreDialogTest : public WindowFixture {
 protected:
  SnapshotRestoreDialogTest() {
    site.write(file(0), macroOf("M"));
    site.write(file(1), macroOf("Other"));
    site.write(file(3), macroOf("Other"));
    protect(true);
    static_cast<void>(restore_.add(Snapshot::kFolder, Snapshot::kFolder));
    static_cast<void>(restore_.look([](std::size_t) {}));
    dialog_ = std::make_unique<SnapshotRestoreDialog>(
        QStringLiteral("To the folder"), restore_,
        [this](const QString&, const auto& work) {
          work([this](int thousandths) { done_.push_back(thousandths); });
        },
        [this](const auto&) { return mayWrite_; }, words);
    dialog_->show();
  }
  QWidget& top() override { return *dialog_; }

  static std::string file(int number) { return "c:\\show\\macro" + MacroNumber::textOf(number) + ".mac"; }
  static std::shared_ptr<const Snapshot> snapshot() {
    Snapshot made{{{}, "c:\\show"}, {}, {Snapshot::kFolder}, {}};
    for (const int number : {0, 1, 2, 3})
      made.macros.push_back({Snapshot::kFolder, *MacroNumber::of(number), "M", macroOf("M")});
    return std::make_shared<const Snapshot>(std::move(made));
  }
  void protect(bool on) const {
    using std::filesystem::perms;
    std::filesystem::permissions(site.root.resolve(file(3)),
                                 on ? perms::owner_read : perms::owner_read | perms::owner_write);
  }

  QTreeView& list() { return *dialog_->findChild<QTreeView*>(); }
  std::string row(int number) { return toldBy(*list().model())[static_cast<std::size_t>(number)]; }

  MacroHistory history_{site.root};
  DiskShelf shelf_{site.root, history_, "c:\\show"};
  SnapshotRestore restore_{snapshot(), site.root, history_, [this](int) { return &shelf_; }, {}};
  bool mayWrite_ = true;
  std::vector<int> done_;
  std::unique_ptr<SnapshotRestoreDialog> dialog_;
};

TEST_F(SnapshotRestoreDialogTest, WritesWhatIsTickedAndTellsWhatBecameOfIt) {
  EXPECT_EQ(headingsOf(*list().model()), "Workplace | Macro | State");
  EXPECT_THAT(toldBy(*list().model()),
              testing::ElementsAre(" | 000 - M [] | same: it stands there as it is in the snapshot []",
                                   "x | 001 - M [] | changed: something else stands there []",
                                   "x | 002 - M [] | new: nothing stands there []",
                                   "x | 003 - M [] | changed: something else stands there []"));
  EXPECT_EQ(said("outcome"), "3 of 4 macros are ticked");
  EXPECT_EQ(shutIn(*dialog_), "; ");
  click("tickNone");
  EXPECT_EQ(said("outcome"), "0 of 4 macros are ticked");
  EXPECT_EQ(shutIn(*dialog_), "restore; ");
  click("tickAll");
  mayWrite_ = false;
  click("restore");
  EXPECT_THAT(row(1), StartsWith("x | 001 - M [] | changed")) << "not wanted";
  EXPECT_EQ(said("outcome"), "Nothing was restored.");
  mayWrite_ = true;
  const QSignalSpy written(dialog_.get(), &SnapshotRestoreDialog::written);
  const QSignalSpy spoken(dialog_.get(), &SnapshotRestoreDialog::said);
  list().setCurrentIndex(list().model()->index(2, 0));
  QTest::keyClick(&list(), Qt::Key_Space);
  click("restore");
  EXPECT_EQ(said("outcome"), "1 macros are restored; 1 macros are NOT");
  EXPECT_THAT(done_, testing::ElementsAre(500, 1000));
  EXPECT_THAT(toldBy(*list().model()),
              testing::ElementsAre(
                  testing::_, " | 001 - M [] | RESTORED and verified []",
                  "- | 002 - M [] | new: nothing stands there []",
                  "x | 003 - M [] | NOT restored: cannot be written: the file is write-protected []"));
  ASSERT_EQ(written.size(), 1);
  EXPECT_EQ(written[0][0].value<std::vector<MacroPlace>>().size(), 2U);
  EXPECT_EQ(spoken[0][0].value<Message>().grade, Grade::kFailure);
  EXPECT_EQ(site.read(file(1)), macroOf("M"));
  EXPECT_EQ(site.read(file(2)), "<missing>");
  EXPECT_EQ(site.read(file(3)), macroOf("Other"));

  // What failed can be tried again, once its reason is gone.
  protect(false);
  click("tickAll");
  click("restore");
  for (const int number : {1, 2, 3}) EXPECT_EQ(site.read(file(number)), macroOf("M")) << number;
  EXPECT_FALSE(enabled("restore"));
}

TEST_F(SnapshotRestoreDialogTest, LetsAloneWhatHasChangedMeanwhile) {
  site.write(file(1), macroOf("Third"));
  click("restore");
  EXPECT_THAT(row(1), StartsWith("x | 001 - M [] | NOT restored"));
  EXPECT_EQ(site.read(file(1)), macroOf("Third"));
  EXPECT_EQ(row(2), " | 002 - M [] | RESTORED and verified []");
  auto looked = restore_.rows();
  looked[3].state = RestoreRow::State::kUnread;
  SnapshotRows rows(words);
  rows.setRows(looked);
  EXPECT_THAT(rows.ticked(), testing::ElementsAre(1)) << "not what is unknown";
  EXPECT_THAT(toldBy(rows)[3], StartsWith("- | 003 - M [] | unknown what stands there"));
}

}  // namespace
}  // namespace tessaly
