// A replacement in many macros, as the panes see it.
#include <gmock/gmock.h>

#include <QPushButton>

#include "tests/app/PanelWindowFixture.h"
#include "windows/ReplaceWindow.h"
#include "windows/ScopeBox.h"

namespace tessaly {
namespace {

using testing::HasSubstr;
using testing::Not;

class ReplacementsTest : public WindowTest {};

TEST_F(ReplacementsTest, PanesFollowUnsavedChangesStayAndOneUndoTakesAllBack) {
  open(a_);
  open(b_, "002");
  removeFirst(b_);
  driver().press(a_.showDestination);
  const std::string before[] = {read(macroPath(0)), read(macroPath(1)), read(macroPath(2))};
  const auto line = [&] { return driver().list(a_.commands).rows().row(0)->text; };
  const std::string shown = line();
  shortcut(Qt::Key_H, Qt::ControlModifier | Qt::ShiftModifier);
  auto& window = *fixture_.window->findChild<ReplaceWindow*>();
  const auto field = [&](const char* name) { return window.findChild<QLineEdit*>(name); };
  QTest::keyClicks(field("from"), "QMF1");
  QTest::keyClicks(field("to"), "QMF4");
  QTest::keyClick(field("to"), Qt::Key_Return);
  auto& replace = *window.findChild<QPushButton*>("replace");
  WindowDriver::waitFor([&] { return replace.isEnabled(); }, "the preview");
  QTest::mouseClick(&replace, Qt::LeftButton);
  WindowDriver::waitFor([&] { return line() != shown; }, "the pane to follow");
  EXPECT_THAT(read(macroPath(0)), HasSubstr("QMF4."));
  EXPECT_THAT(read(macroPath(1)), Not(HasSubstr("QMF1.")));
  EXPECT_EQ(read(macroPath(2)), before[2]) << "pane B has unsaved changes of it";
  window.close();
  shortcut(Qt::Key_U, Qt::ControlModifier | Qt::AltModifier);
  WindowDriver::waitFor([&] { return line() == shown; }, "the pane to follow the undo");
  for (int number = 0; number < 3; ++number) EXPECT_EQ(read(macroPath(number)), before[number]) << number;
}

// What the panel has refused is not called replaced, and one undo takes back what it took.
TEST_F(PanelWindowTest, AReplacementOnAPanelIsVerifiedToldAndUndone) {
  const auto macro = [](const char* goal, std::size_t commands) {
    return Panel::macro("Two", std::vector(commands, std::string(goal) + ".ME1.KEY1.ON.SET"));
  };
  const auto holds = [&](const char* goal) {
    return first_.read(1, "000") == macro(goal, 1) && first_.read(1, "007") == macro(goal, 12);
  };
  first_.tree.write(Panel::file(1, "000"), macro("QMF1", 1));
  first_.tree.write(Panel::file(1, "007"), macro("QMF1", 12));
  connectPane(Pane::kA, first_);
  chooseWorkplace(Pane::kA, 1, "007 - Two");
  shortcut(Qt::Key_H, Qt::ControlModifier | Qt::ShiftModifier);
  auto& window = *fixture_.window->findChild<ReplaceWindow*>();
  static_cast<ScopeBox*>(window.findChild<QComboBox*>("scope"))->choose(ReviewScope::Kind::kPanel);
  QTest::keyClicks(window.findChild<QLineEdit*>("rule"), "destination:QMF1->QMF4");
  const auto replace = [&](bool away) {
    QTest::keyClick(window.findChild<QLineEdit*>("rule"), Qt::Key_Return);
    auto& button = *window.findChild<QPushButton*>("replace");
    WindowDriver::waitFor([&] { return button.isEnabled(); }, "the preview");
    PanelFaults faults;
    faults.ftp.refuseLogin = away;
    ASSERT_TRUE(first_.simulator.setFaults(faults));
    QTest::mouseClick(&button, Qt::LeftButton);
    WindowDriver::waitFor([&] { return !window.writing(); }, "the replacement");
    ASSERT_TRUE(first_.simulator.setFaults({}));
  };
  const auto told = [&] { return window.findChild<QLabel*>("outcome")->text().toStdString(); };
  replace(true);
  EXPECT_THAT(told(), HasSubstr("NOTHING was replaced: 000")) << "which one it was";
  // Not asked while a transfer is waited for, which would keep the answer from the box.
  fixture_.site.messages.answering = [&](const std::string&) { return gate().held(); };
  std::optional<EventGate::Hold> transfer(&gate());
  QTimer::singleShot(500, [&] { transfer.reset(); });
  replace(false);
  EXPECT_THAT(asked(), testing::Each(HasSubstr("2 of 2 macros have errors:")));
  EXPECT_EQ(told(), "NOTHING was replaced: 2 macros have errors.");
  transfer.emplace(&gate());
  QTimer::singleShot(500, [&] { window.findChild<QPushButton*>("cancel")->click(), transfer.reset(); });
  replace(false);
  EXPECT_THAT(asked(), testing::IsEmpty()) << told();
  EXPECT_TRUE(holds("QMF1"));
  fixture_.site.messages.answering = {};
  replace(false);
  EXPECT_THAT(told(), Not(HasSubstr("NOT")));
  EXPECT_TRUE(holds("QMF4"));
  window.close();
  shortcut(Qt::Key_U, Qt::ControlModifier | Qt::AltModifier);
  WindowDriver::waitFor([&] { return holds("QMF1"); }, "the undo of both");
}

}  // namespace
}  // namespace tessaly
