// Operations on whole macros can be taken back.
#include <gmock/gmock.h>

#include "tests/app/PanelWindowFixture.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

constexpr const char* kOther = "<macro name=\"Other\"><data></data></macro>";

// Pane A on the harddisk, pane B on the panel.
class MacroUndoTest : public PanelWindowTest {
 protected:
  MacroUndoTest() {
    open(a_);
    connectPane(Pane::kB, first_);
    chooseWorkplace(Pane::kB, 1, "007 - Two");
    driver().choose(b_.macros, "007");
  }

  using WindowTest::read;
  [[nodiscard]] std::string read(Pane pane, int number) const {
    return pane == Pane::kA ? read(macroPath(number)) : first_.read(1, MacroNumber::textOf(number));
  }
  void write(Pane pane, int number, const std::string& bytes) {
    if (pane == Pane::kA)
      fixture_.site.write(macroPath(number), bytes);
    else
      first_.tree.write(Panel::file(1, MacroNumber::textOf(number)), bytes);
  }
  void awaitHeld(Pane pane, int number, const std::string& bytes, const char* what) {
    WindowDriver::waitFor([&] { return read(pane, number) == bytes; }, what);
  }
  [[nodiscard]] std::string undoText() { return action("undoMacro").text().toStdString(); }
  std::string undo() {
    asked();
    shortcut(Qt::Key_U, Qt::ControlModifier | Qt::AltModifier);
    return told();
  }
  void remove(Pane pane) {
    driver().press(ids(pane).deleteMacro);
    awaitHeld(pane, numberIn(pane), "<missing>", "the deletion");
    awaitGone(ids(pane).macros, pane == Pane::kA ? "001 - Opening titles" : "007 - Two");
  }
  // The newest of the history.
  void putBack() {
    WindowDriver::answerNext([](QDialog& dialog) {
      WindowDriver::click(dialog, "Put Back");
      dialog.reject();
    });
    action("history").trigger();
  }
  void keepAndPutBack(const MacroPlace& place) {
    ASSERT_TRUE(fixture_.history.keep(kOther, place, MacroChange::kSave));
    putBack();
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
      {Pane::kA, 1, "create 001 - Fresh", [&] { create(a_.createMacro, 1); }},
      {Pane::kA, 900, "create 900 - Fresh", [&] { create(a_.createMacro, 900); }},
      {Pane::kA, 1, "copy 007 - Two to 001", [&] { copyTo(a_.copyMacro, 1); }},
      {Pane::kA, 1, "rename 001 - Opening titles to A&&B", [&] { rename(a_.renameMacro, "A&B"); }},
      {Pane::kA, 1, "delete 001 - Opening titles", [&] { remove(Pane::kA); }},
      {Pane::kA, 1, "put back 001 - Other",
       [&] {
         keepAndPutBack({macroPath(1), {}, 0, {}});
       }},
      {Pane::kB, 7, "create 007 - Fresh", [&] { create(b_.createMacro, 7); }},
      {Pane::kB, 500, "create 500 - Fresh", [&] { create(b_.createMacro, 500); }},
      {Pane::kB, 7, "copy 001 - Opening titles to 007", [&] { copyTo(b_.copyMacro, 7); }},
      {Pane::kB, 7, "rename 007 - Two to A&&B", [&] { rename(b_.renameMacro, "A&B"); }},
      {Pane::kB, 7, "delete 007 - Two", [&] { remove(Pane::kB); }},
      {Pane::kB, 7, "put back 007 - Other",
       [&] {
         keepAndPutBack({{}, addressOf(first_), 1, "007"});
       }},
  };
  for (const char* const name : {"Other", "Two"})  // as the panel spells it
    ASSERT_TRUE(first_.simulator.renameMacro(1, 7, name));
  EXPECT_EQ(undoText(), "&Undo");
  EXPECT_FALSE(action("undoMacro").isEnabled());
  for (const Case& one : cases) {
    SCOPED_TRACE(one.name);
    driver().choose(a_.macros, "001");
    driver().choose(b_.macros, "007");
    const std::string before = read(one.pane, one.number);
    const std::vector<std::string> lines = driver().texts(ids(one.pane).commands);
    const std::vector<std::string> others = driver().texts(ids(other(one.pane)).commands);
    one.work();
    WindowDriver::waitFor([&] { return read(one.pane, one.number) != before; }, one.name.c_str());
    if (one.number == 7) awaitGone(b_.macros, "007 - Two");
    EXPECT_EQ(driver().texts(ids(other(one.pane)).commands), others);
    const std::string after = read(one.pane, one.number);
    const bool kept = one.name.rfind("rename 007", 0) != 0;
    if (kept && before != "<missing>") {
      const KeptMacro newest = fixture_.history.list().front();
      EXPECT_EQ(read(newest.file), before);
      EXPECT_EQ(changeWord(newest.change).substr(0, 3), one.name.substr(0, 3));
    }
    EXPECT_EQ(undoText(), "&Undo \"" + one.name + "\"");
    EXPECT_THAT(undo(), testing::AnyOf(StartsWith("undone: "), StartsWith("asked, to undo ")));
    EXPECT_THAT(asked(), ElementsAre()) << "nothing is lost by it";
    awaitHeld(one.pane, one.number, before, told().c_str());
    EXPECT_FALSE(action("undoMacro").isEnabled());
    EXPECT_TRUE(!kept || after == "<missing>" || read(fixture_.history.list().front().file) == after);
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
      EXPECT_THAT(asked(), ElementsAre(HasSubstr("has been changed since")));
      EXPECT_EQ(read(pane, numberIn(pane)), agreed ? before : kOther);
      EXPECT_EQ(action("undoMacro").isEnabled(), !agreed);
    }
    EXPECT_EQ(read(fixture_.history.list().front().file), kOther);
  }
}

// Catches an undo, and a macro put back, that overwrite unasked what a pane has not saved yet.
TEST_F(MacroUndoTest, UnsavedChangesOfAPaneAreAskedAbout) {
  driver().press(b_.connectButton);
  driver().press(b_.harddisk);
  open(b_);
  removeFirst(b_);
  const std::vector<std::string> lines = driver().texts(b_.commands);
  rename(a_.renameMacro, "A&B");
  EXPECT_THAT(undo(), StartsWith("undone: rename 001"));
  EXPECT_THAT(asked(), ElementsAre(HasSubstr("B shows this macro with unsaved")));
  EXPECT_THAT(driver().texts(a_.macros), testing::Contains("001 - Opening titles")) << "pane A follows";
  putBack();
  EXPECT_THAT(asked(), ElementsAre(HasSubstr("B shows this macro with unsaved")));
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
  EXPECT_TRUE(action("undoMacro").isEnabled());
  std::filesystem::remove_all(fixture_.site.root.path() / "history");
  EXPECT_THAT(undo(), HasSubstr("the history no longer has what was there before"));
  EXPECT_EQ(read(Pane::kB, 7), "<missing>");
  EXPECT_FALSE(action("undoMacro").isEnabled());
}

}  // namespace
}  // namespace tessaly
