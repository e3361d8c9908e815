// What a check finds, where people see it: at the lines, in the strip, in the list, before a send.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QTreeView>
#include <QTreeWidget>

#include "model/MacroFile.h"
#include "tests/app/PanelWindowFixture.h"
#include "windows/CheckWindow.h"

namespace tessaly {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr const char* kFolder = "c:\\programme\\rv48\\appli\\Evening News\\CP1\\macroWP1\\";
std::string clip(int key, const char* value) {
  return "<cmd fid=\"QMF1.ME1.KEY" + std::to_string(key) +
         ".CLIP.SET\" workplace=\"1\" group=\"0\" module=\"0\"" +
         " widget=\"0\"><param name=\"VALUE\" value=\"" + value + "\"/></cmd>";
}

// A value beyond its limits, a command twice and a function that there is not, after a sound command.
std::string faulty(const char* name) {
  return "<macro name=\"" + std::string(name) + "\"><data>" + clip(1, "0.25") + clip(2, "7") +
         clip(3, "0.5") + clip(3, "0.5") +
         R"(<cmd fid="QMF1.NOWHERE.TO.GO" workplace="1" group="0" module="0" widget="0"/></data></macro>)";
}

void press(QWidget* widget, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
  QTest::keyClick(widget, static_cast<Qt::Key>(key), modifiers);
}

// The list "Check" as a person works it.
struct CheckList {
  CheckWindow& window;

  [[nodiscard]] QTreeView& view() const { return *window.findChild<QTreeView*>(QStringLiteral("findings")); }
  [[nodiscard]] std::string text(const char* label) const {
    return window.findChild<QLabel*>(QLatin1String(label))->text().toStdString();
  }
  // "error 2 limits" a row.
  [[nodiscard]] std::vector<std::string> rows() const {
    std::vector<std::string> rows;
    const QAbstractItemModel& model = *view().model();
    for (int row = 0; row < model.rowCount(); ++row) {
      const auto cell = [&](int column) { return model.index(row, column).data().toString(); };
      rows.push_back(
          (cell(CheckModel::kSeverity) + ' ' + cell(CheckModel::kCommand) + ' ' + cell(CheckModel::kRule))
              .toStdString());
    }
    return rows;
  }
  void await(const char* outcome) const {
    WindowDriver::waitFor([&] { return text("outcome").find(outcome) != std::string::npos; }, outcome);
  }
  void look(ReviewScope::Kind kind) const {
    window.check(kind);
    await("looked at in");
    WindowDriver::waitFor(
        [&] { return !window.findChild<QWidget*>(QStringLiteral("progress"))->isVisible(); }, "the end");
  }
  void choose(const std::string& row) const {
    const auto all = rows();
    const auto found = std::find(all.begin(), all.end(), row);
    if (found == all.end()) throw std::runtime_error("no row " + row);
    view().setCurrentIndex(view().model()->index(static_cast<int>(found - all.begin()), 0));
  }
};

class CheckingTest : public PanelWindowTest {
 protected:
  CheckingTest() {
    fixture_.site.write(macroFile(kFolder, 1), faulty("Wrong"));
    QApplication::setActiveWindow(fixture_.window.get());
  }
  void open(const char* number = "001") {
    driver().choose(a_.applications, "Evening News");
    driver().choose(a_.macros, number);
    driver().list(a_.commands).setFocus();
  }
  [[nodiscard]] QVariant mark(int row, int role = kRowMarkRole) {
    return driver().list(a_.commands).rows().index(row).data(role);
  }
  void awaitMark(int row, RowMark wanted) {
    WindowDriver::waitFor([&] { return mark(row).toInt() == static_cast<int>(wanted); }, "the mark");
  }
  [[nodiscard]] std::string finding() {
    return fixture_.window->findChild<QLabel*>(QStringLiteral("finding"))->text().toStdString();
  }
  CheckList list() {
    press(fixture_.window.get(), Qt::Key_F7);
    auto* window = fixture_.window->findChild<CheckWindow*>();
    if (window == nullptr) throw std::runtime_error("no list");
    CheckList list{*window};
    list.await("looked at in");
    return list;
  }
  [[nodiscard]] bool edited() { return PanelWindowTest::edited(Pane::kA); }
};

TEST_F(CheckingTest, MarksLinesAndForgetsWhatAChangeHasOutdated) {
  open();
  awaitMark(1, RowMark::kError);
  EXPECT_EQ(mark(0).toInt(), static_cast<int>(RowMark::kNone));
  EXPECT_EQ(mark(3).toInt(), static_cast<int>(RowMark::kWarning));
  EXPECT_THAT(driver().texts(a_.commands)[1], Not(HasSubstr("error")));
  EXPECT_THAT(mark(1, Qt::AccessibleDescriptionRole).toString().toStdString(),
              AllOf(StartsWith("error: VALUE: "), HasSubstr("right: 1")));
  EXPECT_THAT(mark(1, Qt::ToolTipRole).toString().toStdString(), HasSubstr("right: 1"));
  EXPECT_THAT(finding(), HasSubstr("F7"));
  const std::string opened = fixture_.status().toStdString();
  driver().clickRow(a_.commands, 1);
  EXPECT_THAT(finding(), AllOf(StartsWith("error: VALUE: "), HasSubstr("right: 1")));
  EXPECT_THAT(mark(3, Qt::AccessibleDescriptionRole).toString().toStdString(),
              HasSubstr("the same command as 3;"))
      << "numbers as the window counts them";
  EXPECT_EQ(fixture_.status().toStdString(), opened) << "the finding has taken the place of a message";
  // Above the wrong command: until the macro has been looked at again, no line has the mark of another.
  driver().clickRow(a_.commands, 0);
  press(&driver().list(a_.commands), Qt::Key_Delete);
  EXPECT_EQ(mark(1).toInt(), static_cast<int>(RowMark::kNone));
  EXPECT_EQ(finding(), "");
  awaitMark(0, RowMark::kError);
  press(fixture_.window.get(), Qt::Key_Z, Qt::ControlModifier);
  awaitMark(1, RowMark::kError);
}

TEST_F(CheckingTest, ListLeadsToTheCommandAndFixesItAsAStep) {
  open();
  const CheckList list = this->list();
  EXPECT_THAT(list.rows(), ElementsAre("error 2 limits", "error 5 unknown-function", "warning 4 repeated"));
  list.choose("error 2 limits");
  press(&list.view(), Qt::Key_Return);
  auto& commands = driver().list(a_.commands);
  WindowDriver::waitFor([&] { return commands.selectedRow() == 1; }, "the command");
  WindowDriver::click(list.window, QStringLiteral("Fix"));
  awaitEdited(Pane::kA);
  EXPECT_THAT(fixture_.status().toStdString(), StartsWith("fixed: command 2"));
  // The list follows what is in the pane.
  WindowDriver::waitFor([&] { return list.rows().size() == 2; }, "the list");
  QApplication::setActiveWindow(fixture_.window.get());
  press(&commands, Qt::Key_Z, Qt::ControlModifier);
  WindowDriver::waitFor([&] { return list.rows().size() == 3; }, "the list after undo");
  EXPECT_FALSE(edited());
}

// What lies on the disk is opened first; unsaved changes hold their pane, and a macro that has changed since
// is not fixed.
TEST_F(CheckingTest, ListOpensWhatLiesOnTheDiskUnlessThePaneHasUnsavedChanges) {
  open("002");
  const CheckList list = this->list();
  list.look(ReviewScope::Kind::kFolder);
  EXPECT_THAT(list.rows(), testing::Contains("error 2 limits"));
  list.choose("error 2 limits");
  QApplication::setActiveWindow(fixture_.window.get());
  driver().clickRow(a_.commands, 0);
  press(&driver().list(a_.commands), Qt::Key_Delete);
  ASSERT_TRUE(edited());
  press(&list.view(), Qt::Key_Return);
  WindowDriver::waitFor([&] { return list.text("outcome").starts_with("NOT opened: 001 - Wrong"); },
                        "the refusal");
  EXPECT_EQ(fixture_.status().toStdString(), list.text("outcome"));
  EXPECT_EQ(driver().list(a_.macros).selected()->text.substr(0, 3), "002");
  driver().press(a_.discardChanges);
  press(&list.view(), Qt::Key_Return);
  WindowDriver::waitFor([&] { return driver().list(a_.commands).selectedRow() == 1; }, "the command");
  EXPECT_EQ(driver().list(a_.macros).selected()->text, "001 - Wrong");
  // Another program writes it; the pane opens that, but the fix was for something else.
  driver().choose(a_.macros, "002");
  fixture_.site.write(macroFile(kFolder, 1), faulty("Wrong").insert(0, " "));
  WindowDriver::click(list.window, QStringLiteral("Fix"));
  WindowDriver::waitFor([&] { return list.text("outcome").starts_with("NOT fixed: "); }, "the refusal");
  EXPECT_FALSE(edited());
}

TEST_F(CheckingTest, MarksFollowTheRulesOfTheSite) {
  open();
  awaitMark(1, RowMark::kError);
  const CheckList list = this->list();
  WindowDriver::answerNext([](QDialog& dialog) {
    auto* rules = dialog.findChild<QTreeWidget*>();
    rules->setCurrentItem(rules->findItems(QStringLiteral("limits"), Qt::MatchExactly).constFirst());
    press(rules, Qt::Key_Space);
    press(&dialog, Qt::Key_Return);
  });
  WindowDriver::click(list.window, QStringLiteral("Rules..."));
  awaitMark(1, RowMark::kNone);
  awaitMark(4, RowMark::kError);
}

TEST_F(CheckingTest, ListLooksAtAWorkplaceOfThePanel) {
  first_.tree.write(Panel::file(1, "007"), faulty("Two"));
  connectPane(Pane::kA, first_);
  chooseWorkplace(Pane::kA, 1, "007 - Two");
  const CheckList list = this->list();
  list.look(ReviewScope::Kind::kPanel);
  EXPECT_THAT(list.text("outcome"), HasSubstr("workplace 1 on the panel " + addressOf(first_)));
  list.choose("error 2 limits");
  press(&list.view(), Qt::Key_Return);
  WindowDriver::waitFor([&] { return driver().list(a_.commands).selectedRow() == 1; }, "the command");
  EXPECT_EQ(driver().list(a_.macros).selected()->text, "007 - Two");
}

// One key sends, another does not, and nothing has begun before the answer.
TEST_F(CheckingTest, ErrorsAreOfferedBeforeASend) {
  first_.tree.write(Panel::file(1, "007"), faulty("Two"));
  const std::string before = first_.read(1, "007");
  connectPane(Pane::kA, first_);
  chooseWorkplace(Pane::kA, 1, "007 - Two");
  driver().choose(a_.macros, "007");
  driver().clickRow(a_.commands, 0);
  driver().press(a_.deleteCommand);
  RecordingMessages& messages = fixture_.site.messages;
  messages.take();
  messages.sendsAnyway = messages.answer = false;
  driver().press(a_.saveChanges);
  EXPECT_THAT(messages.take(),
              ElementsAre(AllOf(StartsWith("007 - Two has 2 errors."), HasSubstr("command 1: VALUE: "))));
  EXPECT_THAT(fixture_.status().toStdString(), StartsWith("NOT sent: 007 - Two"));
  EXPECT_TRUE(edited());
  EXPECT_EQ(first_.read(1, "007"), before);
  messages.chooseOther = true;
  driver().press(a_.saveChanges);
  ASSERT_NE(fixture_.window->findChild<CheckWindow*>(), nullptr);
  EXPECT_EQ(first_.read(1, "007"), before);
  messages.chooseOther = false;
  messages.answer = true;
  driver().press(a_.saveChanges);
  EXPECT_THAT(fixture_.status().toStdString(), StartsWith("saved: 007 - Two"));
  EXPECT_NE(first_.read(1, "007"), before);

  // Before what stands there is looked at, which is the last thing.
  driver().choose(b_.applications, "Evening News");
  driver().choose(b_.macros, "001");
  first_.tree.write(Panel::file(1, "007"), faulty("Third"));
  messages.take();
  copyTo(a_.copyMacro, 7);
  EXPECT_THAT(messages.take(), ElementsAre(StartsWith("001 - Wrong has"), StartsWith("What stands at 007")));
}

TEST_F(CheckingTest, WhereUsedOfACommandThatNamesNothingIsToldOnly) {
  fixture_.site.write(macroFile(kFolder, 1), R"(<macro name="M"><data><cmd fid=""/></data></macro>)");
  open();
  driver().clickRow(a_.commands, 0);
  press(fixture_.window.get(), Qt::Key_U, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_THAT(fixture_.status().toStdString(), StartsWith("the selected command names nothing"));
}

}  // namespace
}  // namespace tessaly
