// Undo and redo in the window, by keys: over edits, saves, discards and starts.
#include <gmock/gmock.h>

#include <QAccessible>
#include <QListWidget>

#include "tests/app/PanelWindowFixture.h"

namespace tessaly {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
  QTest::keyClick(WindowDriver::keyboard(), static_cast<Qt::Key>(key), modifiers);
}
void undo() { press(Qt::Key_Z, Qt::ControlModifier); }
void redo() { press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier); }
void save() { press(Qt::Key_S, Qt::ControlModifier); }

class UndoTest : public WindowTest {
 protected:
  void open(const char* number = "001") {
    WindowTest::open(a_, number);
    press(Qt::Key_5, Qt::ControlModifier);  // to the commands
  }
  void removeFirst() {
    driver().clickRow(a_.commands, 0);
    press(Qt::Key_Delete);
  }
  [[nodiscard]] std::string held() const { return WindowTest::held(Pane::kA); }
  [[nodiscard]] bool edited() { return WindowTest::edited(Pane::kA); }

  const std::string macro_ = macroPath(1);
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
  EXPECT_THAT(action("redo").text().toStdString(), HasSubstr("\"delete 1 command"));
  undo();
  EXPECT_THAT(told(), HasSubstr("nothing is unsaved"));
  EXPECT_EQ(read("recovery\\paneA.txt"), "<missing>");
  const std::function<void()> discard = [] { press(Qt::Key_D, Qt::AltModifier); };
  const struct {
    std::function<void()> act;
    const std::string& held;
    bool edited;
  } steps[] = {{undo, opened, false},  // there is nothing more
               {redo, once, true},     {save, once, false},
               {undo, opened, true},  // that is not what the target holds now
               {redo, once, false},    {redo, twice, true},
               {discard, once, false}, {undo, twice, true},  // a discard is a step
               {undo, once, false},    {undo, opened, true},
               {redo, once, false}};
  for (const auto& step : steps) {
    step.act();
    EXPECT_TRUE(held() == step.held && edited() == step.edited) << &step - steps;
  }
  EXPECT_EQ(read(macro_), once);
  open("002");
  const std::string other = held();
  undo();
  EXPECT_EQ(held(), other) << "another macro ends the row";
  EXPECT_EQ(read("recovery\\paneA.steps"), "<missing>");
  EXPECT_FALSE(action("undo").isEnabled());
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
  choose(Qt::Key_End, {"opened \\(now\\)", "1" + step, "2" + step, "3" + step + ".*\\(saved\\)$"});
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

TEST_F(UndoTest, StepsAreThereAgainAfterASaveACrashAndALaterAnswer) {
  const auto later = [](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); };
  const auto takeUp = [](QDialog& dialog) { WindowDriver::click(dialog, "OK"); };
  open();
  const std::string opened = held();
  removeFirst();
  const std::string once = held();
  save();
  fixture_.window->close();
  startAgain();
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
  open("002");
  startAgain(takeUp);
  EXPECT_EQ(held(), twice);
  undo();
  undo();
  EXPECT_EQ(held(), opened) << "set aside with the changes";

  // Discarded at the end: the row led to what is gone, and nobody is to be told of it.
  WindowDriver::answerNext([](QDialog& dialog) { WindowDriver::click(dialog, QStringLiteral("Discard")); });
  fixture_.driver->close();
  startAgain();
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
  EXPECT_THAT(told(), StartsWith("NOT redone: values are still coming"));
  first_.simulator.set(key, "1");
  awaitEdited(Pane::kA);
  EXPECT_THAT(valuesInFile(Pane::kA), testing::ElementsAre("1", "0"));
  driver().press(a_.discardChanges);
  EXPECT_THAT(valuesInFile(Pane::kA), testing::ElementsAre("0", "0"));
  undo();
  EXPECT_THAT(valuesInFile(Pane::kA), testing::ElementsAre("1", "0")) << told();
  EXPECT_TRUE(edited(Pane::kA));
  undo();
  EXPECT_THAT(told(), StartsWith("undone: update of 1 value"));
  EXPECT_FALSE(edited(Pane::kA));
}

}  // namespace
}  // namespace tessaly
