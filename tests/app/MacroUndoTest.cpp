// Operations on whole macros can be taken back.
#include <gmock/gmock.h>

#include <QMenu>
#include <QMenuBar>
#include <QTreeView>

#include "tests/app/PanelWindowFixture.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

constexpr const char* kFolder = "c:\\programme\\rv48\\appli\\Evening News\\CP1\\macroWP1\\";
constexpr const char* kOther = "<macro name=\"Other\"><data></data></macro>";

// Pane A on the harddisk, pane B on the panel.
class MacroUndoTest : public PanelWindowTest {
 protected:
  MacroUndoTest() {
    driver().choose(a_.applications, "Evening News");
    driver().choose(a_.macros, "001");
    connectPane(Pane::kB, first_);
    chooseWorkplace(Pane::kB, 1, "007 - Two");
    driver().choose(b_.macros, "007");
  }

  [[nodiscard]] std::string read(Pane pane, int number) const {
    return pane == Pane::kA ? fixture_.site.read(macroFile(kFolder, number))
                            : first_.read(1, MacroNumber::textOf(number));
  }
  void write(Pane pane, int number, const std::string& bytes) {
    if (pane == Pane::kA)
      fixture_.site.write(macroFile(kFolder, number), bytes);
    else
      first_.tree.write(Panel::file(1, MacroNumber::textOf(number)), bytes);
  }
  void awaitHeld(Pane pane, int number, const std::string& bytes, const char* what) {
    WindowDriver::waitFor([&] { return read(pane, number) == bytes; }, what);
  }
  [[nodiscard]] QAction* action(const char* name) {
    return fixture_.window->menuBar()->findChild<QAction*>(QLatin1String(name));
  }
  [[nodiscard]] std::string undoText() { return action("undoMacro")->text().toStdString(); }
  std::string undo() {
    fixture_.site.messages.take();
    QApplication::setActiveWindow(fixture_.window.get());  // a dialog had it
    QTest::keyClick(fixture_.window.get(), Qt::Key_U, Qt::ControlModifier | Qt::AltModifier);
    return fixture_.status().toStdString();
  }
  void answer(int button, int number, const char* name = nullptr) {
    driver().press(button, [=](QDialog& dialog) {
      WindowDriver::type(dialog, "position", QString::number(number));
      if (name != nullptr) WindowDriver::type(dialog, "name", QLatin1String(name));
      WindowDriver::click(dialog, QStringLiteral("OK"));
    });
  }
  void rename(int button) {
    driver().press(button, [](QDialog& dialog) {
      WindowDriver::type(dialog, "newName", QStringLiteral("A&B"));
      WindowDriver::click(dialog, QStringLiteral("OK"));
    });
  }
  void remove(Pane pane) {
    driver().press(ids(pane).deleteMacro);
    awaitHeld(pane, numberIn(pane), "<missing>", "the deletion");
    awaitGone(ids(pane).macros, pane == Pane::kA ? "001 - Opening titles" : "007 - Two");
  }
  // The newest of the history.
  void putBack() {
    WindowDriver::answerNext([](QDialog& dialog) {
      WindowDriver::click(dialog, QStringLiteral("Put Back"));
      dialog.reject();
    });
    action("history")->trigger();
  }
  [[nodiscard]] static int numberIn(Pane pane) { return pane == Pane::kA ? 1 : 7; }
};

// Catches an operation that cannot be undone, undoes another one, loses what stands there, or leaves a pane
// with what is there no more.
TEST_F(MacroUndoTest, EachOperationIsUndone) {
  struct Case {
    Pane pane;
    int number;
    std::string name;  // as in the menu
    std::function<void()> work;
  };
  const Case cases[] = {
      {Pane::kA, 1, "create 001 - Fresh", [&] { answer(a_.createMacro, 1, "Fresh"); }},
      {Pane::kA, 900, "create 900 - Fresh", [&] { answer(a_.createMacro, 900, "Fresh"); }},
      {Pane::kA, 1, "copy 007 - Two to 001", [&] { answer(a_.copyMacro, 1); }},
      {Pane::kA, 1, "rename 001 - Opening titles to A&&B", [&] { rename(a_.renameMacro); }},
      {Pane::kA, 1, "delete 001 - Opening titles", [&] { remove(Pane::kA); }},
      {Pane::kA, 1, "put back 001 - Other",
       [&] {
         ASSERT_TRUE(fixture_.history.keep(kOther, {macroFile(kFolder, 1), {}, 0, {}}, MacroChange::kSave));
         putBack();
       }},
      {Pane::kB, 7, "create 007 - Fresh", [&] { answer(b_.createMacro, 7, "Fresh"); }},
      {Pane::kB, 500, "create 500 - Fresh", [&] { answer(b_.createMacro, 500, "Fresh"); }},
      {Pane::kB, 7, "copy 001 - Opening titles to 007", [&] { answer(b_.copyMacro, 7); }},
      {Pane::kB, 7, "rename 007 - Two to A&&B", [&] { rename(b_.renameMacro); }},
      {Pane::kB, 7, "delete 007 - Two", [&] { remove(Pane::kB); }},
      {Pane::kB, 7, "put back 007 - Other",
       [&] {
         ASSERT_TRUE(fixture_.history.keep(kOther, {{}, addressOf(first_), 1, "007"}, MacroChange::kSave));
         putBack();
       }},
  };
  for (const char* const name : {"Other", "Two"})  // as the panel spells it
    ASSERT_TRUE(first_.simulator.renameMacro(1, 7, name));
  EXPECT_EQ(undoText(), "&Undo");
  EXPECT_FALSE(action("undoMacro")->isEnabled());
  for (const Case& one : cases) {
    SCOPED_TRACE(one.name);
    driver().choose(a_.macros, "001");
    driver().choose(b_.macros, "007");
    const std::string before = read(one.pane, one.number);
    const std::vector<std::string> lines = driver().texts(ids(one.pane).commands);
    one.work();
    WindowDriver::waitFor([&] { return read(one.pane, one.number) != before; }, one.name.c_str());
    if (one.number == 7) awaitGone(b_.macros, "007 - Two");
    const std::string after = read(one.pane, one.number);
    EXPECT_EQ(undoText(), "&Undo \"" + one.name + "\"");
    EXPECT_THAT(undo(), testing::AnyOf(StartsWith("undone: "), StartsWith("asked, to undo ")));
    EXPECT_THAT(fixture_.site.messages.take(), ElementsAre()) << "nothing is lost by it";
    awaitHeld(one.pane, one.number, before, fixture_.status().toStdString().c_str());
    EXPECT_FALSE(action("undoMacro")->isEnabled());
    const bool keeps = after != "<missing>" && one.name.rfind("rename 007", 0) != 0;
    EXPECT_TRUE(!keeps || fixture_.site.read(fixture_.history.list().front().file) == after);
    awaitRow(b_.macros, "007 - Two");
    driver().choose(ids(one.pane).macros, one.pane == Pane::kA ? "001" : "007");
    EXPECT_EQ(driver().texts(ids(one.pane).commands), lines);
  }
}

// Catches work of somebody else's that is overwritten unasked, and an entry that goes with a "no".
TEST_F(MacroUndoTest, WhatHasChangedSinceIsAskedAboutAndKept) {
  for (const Pane pane : kPanes) {
    const std::string before = read(pane, numberIn(pane));
    remove(pane);
    write(pane, numberIn(pane), kOther);
    for (const bool agreed : {false, true}) {
      fixture_.site.messages.answer = agreed;
      EXPECT_THAT(undo(), StartsWith(agreed ? "undone: delete 0" : "NOT undone: delete 0"));
      EXPECT_THAT(fixture_.site.messages.take(), ElementsAre(HasSubstr("has been changed since")));
      EXPECT_EQ(read(pane, numberIn(pane)), agreed ? before : kOther);
      EXPECT_EQ(action("undoMacro")->isEnabled(), !agreed);
    }
    EXPECT_EQ(fixture_.site.read(fixture_.history.list().front().file), kOther);
  }
}

// Catches an undo that overwrites, unasked, what a pane has not saved yet.
TEST_F(MacroUndoTest, UnsavedChangesOfAPaneAreAskedAbout) {
  driver().press(b_.connectButton);
  driver().press(b_.harddisk);
  driver().choose(b_.applications, "Evening News");
  driver().choose(b_.macros, "001");
  driver().clickRow(b_.commands, 0);
  driver().press(b_.deleteCommand);
  const std::vector<std::string> lines = driver().texts(b_.commands);
  rename(a_.renameMacro);
  EXPECT_THAT(undo(), StartsWith("undone: rename 001"));
  EXPECT_THAT(fixture_.site.messages.take(), ElementsAre(HasSubstr("B shows this macro with unsaved")));
  EXPECT_THAT(driver().texts(a_.macros), testing::Contains("001 - Opening titles")) << "pane A follows";
  EXPECT_EQ(driver().texts(b_.commands), lines);
}

// Catches an entry that is lost with the panel, and one that stays though nothing can come of it.
TEST_F(MacroUndoTest, AnEntryStaysWhileItsPanelIsAwayAndGoesWithItsContent) {
  remove(Pane::kB);
  driver().press(b_.connectButton);
  EXPECT_EQ(undo(),
            "NOT undone: delete 007 - Two (no pane is connected to the panel " + addressOf(first_) + ")");
  connectPane(Pane::kB, first_);
  PanelFaults faults;
  faults.ftp.refuseLogin = true;
  ASSERT_TRUE(first_.simulator.setFaults(faults));
  EXPECT_THAT(undo(), StartsWith("NOT undone: delete 007 - Two (the panel refused the login)"));
  ASSERT_TRUE(first_.simulator.setFaults({}));
  EXPECT_TRUE(action("undoMacro")->isEnabled());
  std::filesystem::remove_all(fixture_.site.root.path() / "history");
  EXPECT_THAT(undo(), HasSubstr("the history no longer has what was there before"));
  EXPECT_EQ(read(Pane::kB, 7), "<missing>");
  EXPECT_FALSE(action("undoMacro")->isEnabled());
}

}  // namespace
}  // namespace tessaly
