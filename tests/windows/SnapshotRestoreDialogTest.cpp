#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTreeView>

#include "review/DiskShelf.h"
#include "tests/support/TestSite.h"
#include "tests/support/Told.h"
#include "windows/SnapshotRestoreDialog.h"

namespace tessaly {
namespace {

std::string macro(const std::string& name) { return "<macro name=\"" + name + "\"><data></data></macro>"; }

class SnapshotRestoreDialogTest : public testing::Test {
 protected:
  SnapshotRestoreDialogTest() {
    site_.write(file(0), macro("M"));
    site_.write(file(1), macro("Other"));
    site_.write(file(3), macro("Other"));
    protect(true);
    static_cast<void>(restore_.add(Snapshot::kFolder, Snapshot::kFolder));
    static_cast<void>(restore_.look([](std::size_t) {}));
    dialog_ = std::make_unique<SnapshotRestoreDialog>(
        QStringLiteral("To the folder"), restore_,
        [this](const QString&, const auto& work) {
          work([this](int thousandths) { done_.push_back(thousandths); });
        },
        [this](const auto&) { return mayWrite_; },
        [](const Failure& failure) { return QString::fromStdString(failure.text); });
    dialog_->show();
  }

  static std::string file(int number) { return "c:\\show\\macro" + MacroNumber::textOf(number) + ".mac"; }
  static std::shared_ptr<const Snapshot> snapshot() {
    Snapshot made{{{}, "c:\\show"}, {}, {Snapshot::kFolder}, {}};
    for (const int number : {0, 1, 2, 3})
      made.macros.push_back({Snapshot::kFolder, *MacroNumber::of(number), "M", macro("M")});
    return std::make_shared<const Snapshot>(std::move(made));
  }
  void protect(bool on) const {
    using std::filesystem::perms;
    std::filesystem::permissions(site_.root.resolve(file(3)),
                                 on ? perms::owner_read : perms::owner_read | perms::owner_write);
  }

  void press(const char* name) {
    QTest::mouseClick(dialog_->findChild<QPushButton*>(QLatin1String(name)), Qt::LeftButton);
  }
  QTreeView& list() { return *dialog_->findChild<QTreeView*>(); }
  // "x" for a row that is ticked, "-" for one that is not, " " for one that cannot be, and its state.
  std::string row(int number) {
    const QModelIndex index = list().model()->index(number, SnapshotRows::kWorkplace);
    const QVariant tick = index.data(Qt::CheckStateRole);
    const QString state = index.siblingAtColumn(SnapshotRows::kState).data().toString();
    return (tick.isValid() ? tick.toInt() == Qt::Checked ? "x " : "- " : "  ") +
           state.section(QLatin1Char(':'), 0, 0).toStdString();
  }
  std::string outcome() {
    return dialog_->findChild<QLabel*>(QStringLiteral("outcome"))->text().toStdString();
  }

  TestSite site_;
  MacroHistory history_{site_.root};
  DiskShelf shelf_{site_.root, history_, "c:\\show"};
  SnapshotRestore restore_{snapshot(), site_.root, history_, [this](int) { return &shelf_; }, {}};
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
  EXPECT_EQ(outcome(), "3 of 4 macros are ticked");
  EXPECT_EQ(shutIn(*dialog_), "; ");
  press("tickNone");
  EXPECT_EQ(outcome(), "0 of 4 macros are ticked");
  EXPECT_EQ(shutIn(*dialog_), "restore; ");
  press("tickAll");
  mayWrite_ = false;
  press("restore");
  EXPECT_EQ(row(1), "x changed") << "not wanted";
  EXPECT_EQ(outcome(), "Nothing was restored.");
  mayWrite_ = true;
  const QSignalSpy written(dialog_.get(), &SnapshotRestoreDialog::written);
  const QSignalSpy said(dialog_.get(), &SnapshotRestoreDialog::said);
  list().setCurrentIndex(list().model()->index(2, 0));
  QTest::keyClick(&list(), Qt::Key_Space);
  press("restore");
  EXPECT_EQ(outcome(), "1 macros are restored; 1 macros are NOT");
  EXPECT_THAT(done_, testing::ElementsAre(500, 1000));
  EXPECT_THAT(toldBy(*list().model()),
              testing::ElementsAre(
                  testing::_, " | 001 - M [] | RESTORED and verified []",
                  "- | 002 - M [] | new: nothing stands there []",
                  "x | 003 - M [] | NOT restored: cannot be written: the file is write-protected []"));
  ASSERT_EQ(written.size(), 1);
  EXPECT_EQ(written[0][0].value<std::vector<MacroPlace>>().size(), 2U);
  EXPECT_EQ(said[0][0].value<Message>().grade, Grade::kFailure);
  EXPECT_EQ(site_.read(file(1)), macro("M"));
  EXPECT_EQ(site_.read(file(2)), "<missing>");
  EXPECT_EQ(site_.read(file(3)), macro("Other"));

  // What failed can be tried again, once its reason is gone.
  protect(false);
  press("tickAll");
  press("restore");
  for (const int number : {1, 2, 3}) EXPECT_EQ(site_.read(file(number)), macro("M")) << number;
  EXPECT_FALSE(dialog_->findChild<QPushButton*>(QStringLiteral("restore"))->isEnabled());
}

// What somebody else has written since it was compared is not written over.
TEST_F(SnapshotRestoreDialogTest, LetsAloneWhatHasChangedMeanwhile) {
  site_.write(file(1), macro("Third"));
  press("restore");
  EXPECT_EQ(row(1), "x NOT restored");
  EXPECT_EQ(site_.read(file(1)), macro("Third"));
  EXPECT_EQ(row(2), "  RESTORED and verified");
}

}  // namespace
}  // namespace tessaly
