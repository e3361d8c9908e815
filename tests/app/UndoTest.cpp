// Undo and redo in the window, by keys: over edits, saves, discards and starts.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAccessible>
#include <QListWidget>
#include <QMenuBar>

#include "model/MacroFile.h"
#include "tests/app/PanelWindowFixture.h"

namespace tessaly {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

constexpr const char* kFolder = "c:\\programme\\rv48\\appli\\Evening News\\CP1\\macroWP1\\";
constexpr const char* kTempA = "c:\\programme\\RV48\\bin\\MacroFid\\tempA.mac";
constexpr const char* kSteps = "recovery\\paneA.steps";

void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
  QTest::keyClick(WindowDriver::keyboard(), static_cast<Qt::Key>(key), modifiers);
}
void undo() { press(Qt::Key_Z, Qt::ControlModifier); }
void redo() { press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier); }
void save() { press(Qt::Key_S, Qt::ControlModifier); }
void discard() { press(Qt::Key_D, Qt::AltModifier); }

QAction& editAction(const MainWindow& window, const char* beginning) {
  for (const QAction* menu : window.menuBar()->actions())
    for (QAction* action : menu->menu()->actions())
      if (action->text().remove(QLatin1Char('&')).startsWith(QLatin1String(beginning))) return *action;
  throw std::runtime_error(std::string("no action ") + beginning);
}

class UndoTest : public testing::Test {
 protected:
  UndoTest() : fixture_(offlineClient()) { begin(); }

  [[nodiscard]] WindowDriver& driver() { return *fixture_.driver; }
  void begin() {
    QApplication::setActiveWindow(fixture_.window.get());
    driver().choose(a_.applications, "Evening News");
  }
  void open(const char* number = "001") {
    driver().choose(a_.macros, number);
    press(Qt::Key_5, Qt::ControlModifier);  // to the commands
  }
  // Another start of the program after a crash, whose offer is answered, or after an orderly end.
  void startAgain(const std::function<void(QDialog&)>& answer = {}) {
    bool asked = !answer;
    if (answer)
      WindowDriver::answerNext([&](QDialog& dialog) {
        asked = true;
        answer(dialog);
      });
    fixture_.open();
    WindowDriver::waitFor([&] { return asked && QApplication::activeModalWidget() == nullptr; }, "the offer");
    QApplication::setActiveWindow(fixture_.window.get());
  }
  static void takeUp(QDialog& dialog) { WindowDriver::click(dialog, QStringLiteral("OK")); }
  void removeFirst() {
    driver().clickRow(a_.commands, 0);
    press(Qt::Key_Delete);
  }
  [[nodiscard]] std::string held() const { return fixture_.site.read(kTempA); }
  [[nodiscard]] std::string told() const { return fixture_.status().toStdString(); }
  [[nodiscard]] bool edited() { return driver().control<QWidget>(a_.saveChanges).isVisible(); }

  WindowFixture fixture_;
  const PaneDescriptor::ControlIds& a_ = WindowFixture::ids(Pane::kA);
  const PaneDescriptor::ControlIds& b_ = WindowFixture::ids(Pane::kB);
  const std::string macro_ = macroFile(kFolder, 1);
};

TEST_F(UndoTest, GoesOverSavesAndDiscards) {
  open();
  const std::string opened = held();
  removeFirst();
  const std::string once = held();
  removeFirst();
  const std::string twice = held();
  undo();
  EXPECT_EQ(held(), once);
  EXPECT_THAT(told(), StartsWith("undone: delete 1 command"));
  EXPECT_EQ(driver().list(a_.commands).selectedRow(), 0) << "as before the step";
  EXPECT_THAT(editAction(*fixture_.window, "Redo").text().toStdString(), HasSubstr("\"delete 1 command"));
  undo();
  EXPECT_EQ(held(), opened);
  EXPECT_FALSE(edited());
  EXPECT_THAT(told(), HasSubstr("nothing is unsaved"));
  EXPECT_EQ(fixture_.site.read("recovery\\paneA.txt"), "<missing>");
  undo();
  EXPECT_EQ(held(), opened) << "there is nothing more";
  redo();
  EXPECT_TRUE(edited());
  save();
  EXPECT_EQ(fixture_.site.read(macro_), once);
  undo();
  EXPECT_EQ(held(), opened);
  EXPECT_TRUE(edited()) << "that is not what the target holds now";
  redo();
  EXPECT_FALSE(edited());
  redo();
  ASSERT_EQ(held(), twice);
  discard();
  EXPECT_EQ(held(), once);
  EXPECT_FALSE(edited());
  undo();
  EXPECT_EQ(held(), twice) << "a discard is a step";
  EXPECT_TRUE(edited());
  undo();
  undo();
  EXPECT_EQ(held(), opened);
  redo();
  open("002");
  const std::string other = held();
  undo();
  EXPECT_EQ(held(), other) << "another macro ends the row";
  EXPECT_EQ(fixture_.site.read(kSteps), "<missing>");
  EXPECT_FALSE(editAction(*fixture_.window, "Undo").isEnabled());
}

TEST_F(UndoTest, TheListOfStepsIsWorkedByKeysAndToldToAScreenReader) {
  open();
  const std::string opened = held();
  for (int i = 0; i < 3; ++i) removeFirst();
  save();
  const std::string saved = held();
  const auto choose = [&](int key, const QStringList& expected) {
    WindowDriver::answerNext([&](QDialog& dialog) {
      const auto* list = dialog.findChild<QListWidget*>();
      QStringList rows;
      for (int row = 0; row < list->count(); ++row) rows << list->item(row)->text();
      for (int row = 0; row < rows.size(); ++row)
        EXPECT_THAT(rows[row].toStdString(), testing::ContainsRegex(expected.value(row).toStdString()));
      EXPECT_EQ(QApplication::focusWidget(), list);
      press(key);
      press(Qt::Key_Return);
    });
    press(Qt::Key_Z, Qt::ControlModifier | Qt::AltModifier);
    QApplication::setActiveWindow(fixture_.window.get());
  };
  const QString step = QStringLiteral(": delete 1 command");
  choose(Qt::Key_Home, {QStringLiteral("^as it was opened$"), "1" + step, "2" + step,
                        "3" + step + ".*\\(saved\\) \\(now\\)"});
  EXPECT_EQ(held(), opened);
  EXPECT_TRUE(edited());
  auto* strip = fixture_.window->findChild<QLabel*>(QStringLiteral("statusStrip"));
  EXPECT_THAT(QAccessible::queryAccessibleInterface(strip)->text(QAccessible::Name).toStdString(),
              StartsWith("3 steps undone \u2013 pane A, 001 of Evening News/CP1, workplace 1"));
  choose(Qt::Key_End,
         {QStringLiteral("opened \\(now\\)"), "1" + step, "2" + step, "3" + step + ".*\\(saved\\)$"});
  EXPECT_EQ(held(), saved);
  EXPECT_FALSE(edited());
}

// Catches a place that is counted in another row of steps than the one that the list shows.
TEST_F(UndoTest, AListThatIsOutOfDateLeadsNowhere) {
  open();
  removeFirst();
  std::string changed;
  WindowDriver::answerNext([&](QDialog& dialog) {
    driver().press(a_.deleteCommand);
    changed = held();
    dialog.findChild<QListWidget*>()->setFocus();
    press(Qt::Key_Home);
    press(Qt::Key_Return);
  });
  press(Qt::Key_Z, Qt::ControlModifier | Qt::AltModifier);
  EXPECT_THAT(told(), StartsWith("NOT gone to another step"));
  EXPECT_EQ(held(), changed);
}

TEST_F(UndoTest, AFieldForTextHasItsOwn) {
  open();
  removeFirst();
  const std::string edited = held();
  auto& field = driver().control<QLineEdit>(b_.address);
  const QString before = field.text();
  field.setFocus();
  QTest::keyClicks(&field, QStringLiteral("x"));
  ASSERT_NE(field.text(), before);
  undo();
  EXPECT_EQ(field.text(), before);
  EXPECT_EQ(held(), edited);
  press(Qt::Key_F6);
  undo();
  EXPECT_NE(held(), edited);
}

TEST_F(UndoTest, StepsAreThereAgainAfterASaveACrashAndALaterAnswer) {
  const auto later = [](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); };
  open();
  const std::string opened = held();
  removeFirst();
  const std::string once = held();
  save();
  fixture_.window->close();
  startAgain();
  begin();
  open();
  undo();
  EXPECT_EQ(held(), opened) << "over a save and an orderly end";
  EXPECT_TRUE(edited());
  startAgain(takeUp);
  redo();
  EXPECT_EQ(held(), once) << "over a crash";
  EXPECT_FALSE(edited()) << "what the target holds is known again";
  removeFirst();
  const std::string twice = held();
  startAgain(later);
  begin();
  open("002");
  startAgain(takeUp);
  EXPECT_EQ(held(), twice);
  undo();
  undo();
  EXPECT_EQ(held(), opened) << "set aside with the changes";

  // Discarded at the end: the row led to what is gone, and nobody is to be told of it.
  WindowDriver::answerNext([](QDialog& dialog) { WindowDriver::click(dialog, QStringLiteral("Discard")); });
  ASSERT_TRUE(fixture_.window->close());
  startAgain();
  begin();
  open();
  EXPECT_THAT(told(), testing::Not(HasSubstr("steps")));
  undo();
  EXPECT_EQ(held(), once);
}

TEST_F(UndoTest, StepsThatFailStopNothingAndAreToldInOneLine) {
  open();
  removeFirst();
  const std::string once = held();
  save();
  fixture_.site.write(macro_, R"(<macro name="Other"><data><cmd fid="A.B"/><cmd fid="C.D"/></data></macro>)");
  startAgain();
  begin();
  open();
  EXPECT_THAT(told(), HasSubstr("opened: 001"));
  EXPECT_THAT(told(), HasSubstr("the steps of an earlier run were put aside: they do not lead"));
  const std::string other = held();
  undo();
  EXPECT_EQ(held(), other) << "no wrong bytes";
  std::filesystem::remove_all(fixture_.site.root.resolve("recovery"));
  fixture_.site.write("recovery", "in the way");
  removeFirst();
  EXPECT_THAT(told(),
              testing::EndsWith("deleted; it cannot be undone after a restart; what is unsaved would "
                                "be lost if the program died now (something that is no file stands there)"));
  removeFirst();
  EXPECT_THAT(told(), testing::EndsWith("deleted; it cannot be undone after a restart")) << "once";
  undo();
  undo();
  EXPECT_EQ(held(), other);
}

class PanelUndoTest : public PanelWindowTest {};

TEST_F(PanelUndoTest, AnUpdateIsOneStepAndADiscardGoesOverThePanel) {
  const std::string key = "QMF1.ME1.KEY1.ON";
  first_.tree.write(Panel::file(1, "020"), Panel::macro("Values", {key + ".SET", key + ".SET"}));
  first_.simulator.reload();
  connectPane(Pane::kA, first_);
  chooseWorkplace(Pane::kA, 1, "020 - Values");
  driver().choose(a_.macros, "020");
  QApplication::setActiveWindow(fixture_.window.get());
  driver().clickRow(a_.commands, 1);
  press(Qt::Key_Delete);
  undo();
  press(Qt::Key_5, Qt::ControlModifier);
  driver().clickRow(a_.commands, 0);
  driver().press(a_.updateData);
  redo();
  EXPECT_THAT(fixture_.status().toStdString(), StartsWith("NOT redone: values are still coming"));
  first_.simulator.set(key, "1");
  awaitEdited(Pane::kA);
  EXPECT_THAT(valuesInFile(Pane::kA), testing::ElementsAre("1", "0"));
  driver().press(a_.discardChanges);
  EXPECT_THAT(valuesInFile(Pane::kA), testing::ElementsAre("0", "0"));
  undo();
  EXPECT_THAT(valuesInFile(Pane::kA), testing::ElementsAre("1", "0")) << fixture_.status().toStdString();
  EXPECT_TRUE(edited(Pane::kA));
  undo();
  EXPECT_THAT(fixture_.status().toStdString(), StartsWith("undone: update of 1 value"));
  EXPECT_FALSE(edited(Pane::kA));
}

// Catches the names of one workplace beside another one, which a save would go to.
TEST_F(PanelUndoTest, WhatIsUndoneToTheEndFollowsTheOtherPane) {
  connectBoth(first_);
  chooseWorkplace(Pane::kA, 1, "007 - Two");
  driver().choose(a_.macros, "007");
  driver().clickRow(a_.commands, 0);
  driver().press(a_.deleteCommand);
  chooseWorkplace(Pane::kB, 2, "500 - Elsewhere");
  EXPECT_EQ(driver().list(a_.workplaces).selected()->text, "Workplace 1") << "while there are changes";
  driver().list(a_.commands).setFocus();
  undo();
  EXPECT_FALSE(edited(Pane::kA));
  EXPECT_EQ(driver().list(a_.workplaces).selected()->text, "Workplace 2");
}

}  // namespace
}  // namespace tessaly
