// What a check finds, where people see it: at the lines, in the strip, in the list, before a send.
#include <gmock/gmock.h>

#include <QTreeView>
#include <QTreeWidget>

#include "tests/app/PanelWindowFixture.h"
#include "windows/CheckWindow.h"

namespace tessaly {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

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
    WindowDriver::waitFor([&] { return !window.findChild<QWidget*>("progress")->isVisible(); }, "the end");
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
  CheckingTest() { fixture_.site.write(macroPath(1), faulty("Wrong")); }
  void open(const char* number = "001") {
    PanelWindowTest::open(a_, number);
    driver().list(a_.commands).setFocus();
  }
  void openOnPanel() {
    first_.tree.write(Panel::file(1, "007"), faulty("Two"));
    connectPane(Pane::kA, first_);
    chooseWorkplace(Pane::kA, 1, "007 - Two");
  }
  [[nodiscard]] std::string mark(int row, int role) {
    return driver().list(a_.commands).rows().index(row).data(role).toString().toStdString();
  }
  [[nodiscard]] RowMark mark(int row) {
    return static_cast<RowMark>(driver().list(a_.commands).rows().index(row).data(kRowMarkRole).toInt());
  }
  void awaitMark(int row, RowMark wanted) {
    WindowDriver::waitFor([&] { return mark(row) == wanted; }, "the mark");
  }
  void awaitCommand(int row) {
    WindowDriver::waitFor([&] { return driver().list(a_.commands).selectedRow() == row; }, "the command");
  }
  [[nodiscard]] std::string finding() {
    return fixture_.window->findChild<QLabel*>("finding")->text().toStdString();
  }
  CheckList list() {
    shortcut(Qt::Key_F7);
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
  EXPECT_EQ(mark(0), RowMark::kNone);
  EXPECT_EQ(mark(3), RowMark::kWarning);
  EXPECT_THAT(driver().texts(a_.commands)[1], Not(HasSubstr("error")));
  EXPECT_THAT(mark(1, Qt::AccessibleDescriptionRole),
              AllOf(StartsWith("error: VALUE: "), HasSubstr("right: 1")));
  EXPECT_THAT(mark(1, Qt::ToolTipRole), HasSubstr("right: 1"));
  EXPECT_THAT(finding(), HasSubstr("F7"));
  driver().clickRow(a_.commands, 1);
  EXPECT_THAT(finding(), AllOf(StartsWith("error: VALUE: "), HasSubstr("right: 1")));
  EXPECT_THAT(mark(3, Qt::AccessibleDescriptionRole), HasSubstr("the same command as 3;"))
      << "numbers as the window counts them";
  // Above the wrong command: until the macro has been looked at again, no line has the mark of another.
  driver().clickRow(a_.commands, 0);
  press(&driver().list(a_.commands), Qt::Key_Delete);
  EXPECT_EQ(mark(1), RowMark::kNone);
  EXPECT_EQ(finding(), "");
  awaitMark(0, RowMark::kError);
  shortcut(Qt::Key_Z, Qt::ControlModifier);
  awaitMark(1, RowMark::kError);
}

TEST_F(CheckingTest, ListLeadsToTheCommandAndFixesItAsAStep) {
  open();
  const CheckList list = this->list();
  EXPECT_THAT(list.rows(), ElementsAre("error 2 limits", "error 5 unknown-function", "warning 4 repeated"));
  list.choose("error 2 limits");
  press(&list.view(), Qt::Key_Return);
  awaitCommand(1);
  WindowDriver::click(list.window, "Fix");
  awaitEdited(Pane::kA);
  EXPECT_THAT(told(), StartsWith("fixed: command 2"));
  // The list follows what is in the pane.
  WindowDriver::waitFor([&] { return list.rows().size() == 2; }, "the list");
  shortcut(Qt::Key_Z, Qt::ControlModifier);
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
  removeFirst(a_);
  ASSERT_TRUE(edited());
  press(&list.view(), Qt::Key_Return);
  WindowDriver::waitFor([&] { return list.text("outcome").starts_with("NOT opened: 001 - Wrong"); },
                        "the refusal");
  EXPECT_EQ(told(), list.text("outcome"));
  EXPECT_EQ(selected(a_.macros).substr(0, 3), "002");
  driver().press(a_.discardChanges);
  press(&list.view(), Qt::Key_Return);
  awaitCommand(1);
  EXPECT_EQ(selected(a_.macros), "001 - Wrong");
  // Another program writes it; the pane opens that, but the fix was for something else.
  driver().choose(a_.macros, "002");
  fixture_.site.write(macroPath(1), faulty("Wrong").insert(0, " "));
  WindowDriver::click(list.window, "Fix");
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
  openOnPanel();
  const CheckList list = this->list();
  list.look(ReviewScope::Kind::kPanel);
  EXPECT_THAT(list.text("outcome"), HasSubstr("workplace 1 on the panel " + addressOf(first_)));
  list.choose("error 2 limits");
  press(&list.view(), Qt::Key_Return);
  awaitCommand(1);
  EXPECT_EQ(selected(a_.macros), "007 - Two");
}

// One key sends, another does not, and nothing has begun before the answer.
TEST_F(CheckingTest, ErrorsAreOfferedBeforeASend) {
  choosePanel(Pane::kB, addressOf(first_));
  openOnPanel();
  const std::string before = first_.read(1, "007");
  driver().choose(a_.macros, "007");
  removeFirst(a_);
  RecordingMessages& messages = fixture_.site.messages;
  messages.take();
  messages.sendsAnyway = messages.answer = false;
  driver().press(a_.saveChanges);
  EXPECT_THAT(messages.take(),
              ElementsAre(AllOf(StartsWith("007 - Two has 2 errors."), HasSubstr("command 1: VALUE: "))));
  EXPECT_THAT(told(), StartsWith("NOT sent: 007 - Two"));
  EXPECT_TRUE(edited());
  EXPECT_EQ(first_.read(1, "007"), before);
  messages.chooseOther = true;
  driver().press(a_.saveChanges);
  ASSERT_NE(fixture_.window->findChild<CheckWindow*>(), nullptr);
  EXPECT_EQ(first_.read(1, "007"), before);
  messages.chooseOther = false;
  messages.answer = true;
  driver().press(a_.saveChanges);
  EXPECT_THAT(told(), StartsWith("saved: 007 - Two"));
  EXPECT_NE(first_.read(1, "007"), before);

  // Of what is sent, which is another by now than the pane shows; what stands there is looked at last.
  driver().press(b_.connectButton);
  chooseWorkplace(Pane::kB, 1, "000 - Zero");
  driver().choose(b_.macros, "000");
  for (const char* number : {"000", "007"}) first_.tree.write(Panel::file(1, number), faulty("Third"));
  messages.take();
  for (const bool shows : {true, false}) {
    messages.chooseOther = shows;
    copyTo(a_.copyMacro, 7);
  }
  EXPECT_THAT(messages.take(), ElementsAre(StartsWith("000 - Zero has"), StartsWith("000 - Zero has"),
                                           StartsWith("What stands at 007")));
}

TEST_F(CheckingTest, MarksFollowTheFrameRateThatAnEditorSetsAndAListThatIsWritten) {
  fixture_.site.write(macroPath(1), R"(<macro name="M"><data><cmd fid="QMF1.ME2.TRANSI.DURATION.SET">
    <param name="TIMECODE" value="39"/></cmd><cmd fid="QMF1.NCSCOMMAND">
    <param name="CMD" value="24 10 05 77 01 "/></cmd><cmd fid="QMF1.NONE"/></data></macro>)");
  const std::string list = decodingListPath(0x10, 0x05), before = fixture_.site.read(list);
  fixture_.site.write(list, before + "[0x77] 0x01 \"New\"\n");
  open();
  awaitMark(0, RowMark::kError);
  driver().press(a_.newCorvane, [](QDialog& dialog) {
    WindowDriver::click(dialog, "60Hz");
    dialog.reject();
  });
  awaitMark(0, RowMark::kNone);
  awaitMark(2, RowMark::kError);
  fixture_.site.write(list, before);
  awaitMark(1, RowMark::kError);
  EXPECT_THAT(driver().texts(a_.commands)[1], HasSubstr("kw: 77")) << "and so does the line";
}

}  // namespace
}  // namespace tessaly
