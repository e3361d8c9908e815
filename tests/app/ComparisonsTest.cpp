// Comparing from the main window: what the panes hold, what stands where it belongs, and the history.
#include <gmock/gmock.h>

#include <QLabel>
#include <QTableView>

#include "tests/app/PanelWindowFixture.h"
#include "windows/CompareWindow.h"

namespace tessaly {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

const std::string kElsewhere = Panel::macro("Else", {"QMF1.ME1.KEY1.ON.SET"});

class ComparisonsTest : public PanelWindowTest {
 protected:
  ComparisonsTest() { open(a_); }

  // The one window that compares, once it has.
  CompareWindow& compared() {
    CompareWindow* found = nullptr;
    WindowDriver::waitFor(
        [&] {
          found = fixture_.window->findChild<CompareWindow*>();
          return found != nullptr && !told("counts").starts_with("Comparing");
        },
        "the comparison");
    QApplication::setActiveWindow(found);
    return *found;
  }
  using WindowTest::told;
  [[nodiscard]] std::string told(const char* label) const {
    return fixture_.window->findChild<CompareWindow*>()
        ->findChild<QLabel*>(QLatin1String(label))
        ->text()
        .toStdString();
  }
  void awaitTold(const char* label, const std::string& text) {
    WindowDriver::waitFor([&] { return told(label).find(text) != std::string::npos; },
                          (text + " in " + label).c_str());
  }
  void key(QWidget& window, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QApplication::setActiveWindow(&window);
    QTest::keyClick(&window, key, modifiers);
  }
  [[nodiscard]] std::string count(const PaneDescriptor::ControlIds& ids) {
    return std::to_string(driver().texts(ids.commands).size());
  }
};

// Catches a take that writes a file, cannot be undone in the pane or comes to the wrong pane, and a window
// that goes on showing what a pane held before.
TEST_F(ComparisonsTest, PanesAreComparedAndFollowed) {
  open(b_);
  removeFirst(b_);
  const std::string before = held(Pane::kB), onDisk = read(macroPath(1));
  shortcut(Qt::Key_B, Qt::ControlModifier | Qt::ShiftModifier);
  CompareWindow& window = compared();
  EXPECT_THAT(told("counts"), StartsWith("1 only in A"));
  EXPECT_THAT(told("headingB"), AllOf(HasSubstr("Macro Overview B: 001"), HasSubstr("unsaved")));
  key(window, Qt::Key_Right, Qt::AltModifier);
  awaitTold("outcome", "1 differences taken into B; nothing is saved yet");
  EXPECT_EQ(count(b_), count(a_));
  EXPECT_EQ(read(macroPath(1)), onDisk);
  driver().list(b_.commands).setFocus();
  shortcut(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(held(Pane::kB), before);
  awaitTold("counts", "1 only in A");
  driver().choose(a_.macros, "002");
  awaitTold("headingA", "002");
}

// Catches a comparison with what the target held once, and a save that overwrites unseen, or after "Compare".
TEST_F(ComparisonsTest, WhatHaveIChangedAndCompareBeforeASave) {
  const std::string file = macroPath(1);
  removeFirst(a_);
  shortcut(Qt::Key_D, Qt::ControlModifier | Qt::ShiftModifier);
  CompareWindow* window = &compared();
  EXPECT_THAT(told("counts"), StartsWith("1 only in the target"));
  fixture_.site.write(file, kElsewhere);
  key(*window, Qt::Key_F5);
  awaitTold("counts", "only in A");
  key(*window, Qt::Key_Escape);
  WindowDriver::waitFor([&] { return fixture_.window->findChild<CompareWindow*>() == nullptr; }, "its end");

  fixture_.site.messages.chooseOther = true;
  driver().press(a_.saveChanges);
  EXPECT_THAT(asked(), ElementsAre(HasSubstr("changed by somebody else")));
  EXPECT_EQ(read(file), kElsewhere);
  EXPECT_TRUE(edited(Pane::kA));
  window = &compared();
  EXPECT_THAT(told("headingB"), StartsWith("Now on the disk: 001"));
  QTest::mouseClick(window->findChild<QPushButton*>("takeAllA"), Qt::LeftButton);
  awaitTold("counts", "1 alike");
  fixture_.site.messages.chooseOther = false;
  driver().press(a_.saveChanges);
  EXPECT_FALSE(edited(Pane::kA));
  awaitTold("counts", "No difference: both hold the same bytes.");
}

// Catches a copy over what nobody has seen, on disk and on a panel, also where no pane shows it, and a
// question about what this window has written itself.
TEST_F(ComparisonsTest, ACopyOverWhatHasChangedSinceItWasReadIsAsked) {
  connectPane(Pane::kB, first_);
  chooseWorkplace(Pane::kB, 1, "007 - Two");
  driver().choose(b_.macros, "007");
  // A file manager's copy beside a macro is not what stands under its number.
  fixture_.site.write(macroPath(2).insert(macroPath(2).size() - 4, " - Copy"), kElsewhere);
  driver().choose(a_.applications, "Evening News");
  driver().choose(a_.macros, "002 - Else");
  driver().choose(a_.macros, "001");
  copyTo(a_.copyMacro, 2);
  EXPECT_THAT(asked(), IsEmpty());
  std::filesystem::remove(
      fixture_.site.root.resolve(macroPath(2).insert(macroPath(2).size() - 4, " - Copy")));
  driver().choose(a_.applications, "Evening News");
  driver().choose(a_.macros, "002");
  removeFirst(a_);
  driver().press(a_.saveChanges);
  const struct {
    int button, number;
    const char *headingLabel, *heading;
  } copies[] = {{a_.copyMacro, 2, "headingA", "Now on the disk"},
                {b_.copyMacro, 7, "headingB", "Now on the panel"}};
  for (const auto& copy : copies) {
    driver().choose(a_.macros, "001");
    copyTo(copy.button, copy.number);
    EXPECT_THAT(asked(), IsEmpty());
  }
  awaitRow(b_.macros, "007 - Opening titles");
  driver().choose(a_.macros, "001");
  driver().choose(b_.macros, "007");
  fixture_.site.write(macroPath(2), kElsewhere);
  first_.tree.write(Panel::file(1, "007"), kElsewhere);
  fixture_.site.messages.chooseOther = true;
  for (const auto& copy : copies) {
    copyTo(copy.button, copy.number);
    EXPECT_EQ(asked().size(), 1U) << copy.heading;
    EXPECT_THAT(told(), StartsWith("NOT written to 00"));
    CompareWindow& window = compared();
    EXPECT_THAT(told(copy.headingLabel), StartsWith(copy.heading));
    delete &window;
  }
  EXPECT_EQ(read(macroPath(2)), kElsewhere);
  EXPECT_EQ(first_.read(1, "007"), kElsewhere);
  // The list tells of nothing at 008, as nothing has been loaded since; what was sent to 009 has been
  // changed.
  for (const int number : {8, 9}) {
    fixture_.site.messages.chooseOther = false;
    for (int left = number == 9 ? 2 : 0; left > 0; --left) copyTo(b_.copyMacro, number);
    EXPECT_THAT(asked(), IsEmpty());
    fixture_.site.messages.chooseOther = true;
    const std::string digits = "00" + std::to_string(number);
    first_.tree.write(Panel::file(1, digits), kElsewhere);
    copyTo(b_.copyMacro, number);
    EXPECT_EQ(asked().size(), 1U) << number;
    EXPECT_EQ(first_.read(1, digits), kElsewhere);
    delete &compared();
  }
}

// Catches a key file that a difference is taken into, and a version that is compared with another pane.
TEST_F(ComparisonsTest, KeyFilesAndVersionsAreOnlyTakenFrom) {
  removeFirst(a_);
  driver().press(a_.saveChanges);
  driver().choose(b_.applications, "Evening News");
  driver().choose(b_.controlPanels, "CP7");
  driver().clickRow(b_.macros, 0);
  shortcut(Qt::Key_B, Qt::ControlModifier | Qt::ShiftModifier);
  CompareWindow* window = &compared();
  key(*window, Qt::Key_Right, Qt::AltModifier);
  EXPECT_EQ(told("outcome"), "NOT taken into B: a key file cannot be changed");
  delete window;

  WindowDriver::answerNext([](QDialog& history) {
    QTimer::singleShot(0, &history, [] { takeFromMenu(Qt::Key_Down); });
    WindowDriver::click(history, "Compare...");
  });
  action("history").trigger();
  window = &compared();
  EXPECT_THAT(told("headingB"), StartsWith("Version of "));
  EXPECT_THAT(told("counts"), StartsWith("1 only in the version"));
  key(*window, Qt::Key_Left, Qt::AltModifier);
  awaitTold("counts", "No difference");
  EXPECT_TRUE(edited(Pane::kA));
}

}  // namespace
}  // namespace tessaly
