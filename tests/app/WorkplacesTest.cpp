// Copying many macros from the main window: the panes, the undo and the next start go along.
#include <gmock/gmock.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>

#include "review/BatchJournal.h"
#include "review/Snapshot.h"
#include "tests/app/PanelWindowFixture.h"
#include "windows/CompareWindow.h"
#include "windows/WorkplacesWindow.h"

namespace tessaly {
namespace {

using testing::AllOf;
using testing::HasSubstr;

// Pane A on the harddisk, pane B on the panel, with macro 7 open.
class WorkplacesTest : public PanelWindowTest {
 protected:
  WorkplacesTest() {
    fixture_.site.write(macroPath(7), kCopied);
    WindowTest::open(a_);
    connectPane(Pane::kB, first_);
    chooseWorkplace(Pane::kB, 1, "007 - Two");
    driver().choose(b_.macros, "007");
  }

  WorkplacesWindow& open() {
    shortcut(Qt::Key_W, Qt::ControlModifier | Qt::ShiftModifier);
    auto* const window = fixture_.window->findChild<WorkplacesWindow*>();
    if (window == nullptr) throw std::runtime_error("no window of workplaces");
    settle(*window);
    return *window;
  }
  static void settle(const WorkplacesWindow& window) {
    WindowDriver::waitFor([&] { return !window.busy(); }, "the workplaces");
  }
  static void click(const WorkplacesWindow& window, const char* name) {
    QTest::mouseClick(window.findChild<QPushButton*>(QLatin1String(name)), Qt::LeftButton);
    settle(window);
  }

  const std::string kCopied = Panel::macro("Copied", {"QMF1.ME1.KEY1.ON.SET"});
};

TEST_F(WorkplacesTest, ACopyIsFollowedByThePanesAndUndoneAsOne) {
  const WorkplacesWindow& window = open();
  EXPECT_EQ(window.findChild<QComboBox*>("right")->count(), 7) << "each once";
  click(window, "tickDifferent");
  click(window, "toRight");
  EXPECT_EQ(first_.read(1, "007"), kCopied);
  EXPECT_EQ(first_.read(1, "001"), read(macroPath(1)));
  // It shows the one command of the copy, or nothing where the names that came meanwhile have emptied it.
  WindowDriver::waitFor([&] { return driver().list(b_.commands).rows().rowCount() < 3; }, "pane B to follow");

  EXPECT_THAT(action("undoMacro").text().toStdString(), HasSubstr("copy of "));
  shortcut(Qt::Key_U, Qt::ControlModifier | Qt::AltModifier);
  EXPECT_EQ(first_.read(1, "007"), kTwoFunctions);
  EXPECT_EQ(first_.read(1, "001"), "<missing>");
  EXPECT_THAT(told(), HasSubstr("undone: copy of "));
  // Where the names that came meanwhile have left its row, it shows that; else nothing.
  EXPECT_NE(driver().list(b_.commands).rows().rowCount(), 1) << "the copied macro has one command";
}

// Catches a choice that leads to another place, and a comparison of other macros than those of the row.
TEST_F(WorkplacesTest, AFolderAndASnapshotStandBesideEachOtherAndTheirMacrosAreCompared) {
  const MacroNumber seven = *MacroNumber::parse("007");
  const Snapshot kept{
      {first_.simulator.address(), ""}, {}, {2}, {{2, seven, "Kept", Panel::macro("Kept", {"PANEL.X"})}}};
  ASSERT_TRUE(saveSnapshot(fixture_.site.root, "c:\\kept.zip", kept).written());
  const WorkplacesWindow& window = open();
  const auto choose = [&](const char* list, const QString& entry, const char* path) {
    WindowDriver::answerNext(
        [&](QDialog& dialog) { nameFile(dialog, fixture_.site.root.resolve(path).string()); });
    auto* const box = window.findChild<QComboBox*>(QLatin1String(list));
    box->setCurrentText(entry);
    emit box->activated(box->currentIndex());
    settle(window);
    return box->currentText().toStdString();
  };
  EXPECT_THAT(choose("left", "Folder...", kMacroFolder), HasSubstr("macroWP1"));
  EXPECT_THAT(choose("right", "Snapshot...", "c:\\kept.zip"), HasSubstr("kept.zip: workplace 2"));
  window.findChild<QCheckBox*>()->setChecked(false);
  auto* const table = window.findChild<QTableView*>();
  const auto found = table->model()->match(table->model()->index(0, 0), Qt::DisplayRole, "007", 1,
                                           Qt::MatchContains | Qt::MatchWrap);
  ASSERT_FALSE(found.empty());
  table->setCurrentIndex(found.front());
  click(window, "compare");
  const auto* const compared = fixture_.window->findChild<CompareWindow*>();
  ASSERT_NE(compared, nullptr);
  WindowDriver::waitFor([&] { return compared->findChild<QAbstractItemView*>()->model()->rowCount() > 0; },
                        "the comparison");
  std::string headings;
  for (const QLabel* label : compared->findChildren<QLabel*>())
    headings += label->text().toStdString() + '\n';
  EXPECT_THAT(headings, AllOf(HasSubstr("macroWP1, macro 007"), HasSubstr("workplace 2, macro 007")));
}

// All of it would be the same, and the panel's macros not looked at.
TEST_F(WorkplacesTest, TheDiskDoesNotStandForAPanelThatIsAway) {
  first_.simulator.dropConnections();
  WindowDriver::waitFor([] { return client().state() == kPanelNotConnected; }, "the loss");
  EXPECT_EQ(open().findChild<QComboBox*>(QStringLiteral("right"))->currentIndex(), -1);
}

TEST_F(WorkplacesTest, TheStartEndsWhatWasCutShort) {
  BatchRecord record{"replacement", MacroBatch::Mode::kAllOrNone, MacroChange::kEdit, {}, {}, {}, false};
  const std::string before = read(macroPath(1));
  record.items.push_back({{macroPath(1), {}, 0, {}}, kCopied, HeldContent::of(before)});
  record.olds.emplace_back(before);
  ASSERT_TRUE(BatchJournal::begin(fixture_.site.root, record));
  fixture_.open();
  WindowDriver::waitFor(
      [&] { return fixture_.status().contains("\"replacement\" was cut short, and has been ended"); },
      "the recovery to be told");
  EXPECT_EQ(read(macroPath(1)), kCopied);
}

}  // namespace
}  // namespace tessaly
