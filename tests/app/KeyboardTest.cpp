// The window worked by keys alone: no click, no focus set by program.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QComboBox>
#include <QRadioButton>
#include <QWheelEvent>

#include "editors/CreateCommandDialog.h"
#include "model/MacroFile.h"
#include "tests/app/WindowFixture.h"
#include "tests/support/LoadCommands.h"

namespace tessaly {
namespace {

using testing::Contains;
using testing::EndsWith;
using testing::StartsWith;

constexpr const char* kFolder = "c:\\programme\\rv48\\appli\\Evening News\\CP1\\macroWP1\\";

// A key for whatever has the keyboard.
void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, int times = 1) {
  for (int i = 0; i < times; ++i)
    QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key), modifiers);
}
void type(const char* text) { QTest::keyClicks(QApplication::focusWidget(), QString::fromUtf8(text)); }

class KeyboardTest : public testing::Test {
 protected:
  KeyboardTest() : fixture_(offlineClient()) { QApplication::setActiveWindow(fixture_.window.get()); }

  [[nodiscard]] MacroCommands commandsIn(int number) {
    MacroCommands commands;
    EXPECT_TRUE(loadCommands(fixture_.site.access(), macroFile(kFolder, number), commands));
    return commands;
  }
  // Presses a key that opens a dialog; afterwards the window is in front again, as any desktop sees to it.
  void answer(int key, Qt::KeyboardModifiers modifiers, const std::function<void()>& keys) {
    WindowDriver::answerNext([keys](QDialog&) { keys(); });
    press(key, modifiers);
    QApplication::setActiveWindow(fixture_.window.get());
  }
  [[nodiscard]] WindowDriver& driver() { return *fixture_.driver; }
  [[nodiscard]] bool at(int id) { return QApplication::focusWidget() == &driver().control<QWidget>(id); }

  WindowFixture fixture_;
  const PaneDescriptor::ControlIds& a_ = WindowFixture::ids(Pane::kA);
  const PaneDescriptor::ControlIds& b_ = WindowFixture::ids(Pane::kB);
};

TEST_F(KeyboardTest, TheTypicalEditFromEndToEnd) {
  ASSERT_TRUE(at(a_.applications)) << "the keyboard is where the work begins";
  press(Qt::Key_Down);
  EXPECT_THAT(driver().list(a_.applications).selected()->text, "Evening News");
  press(Qt::Key_Tab);
  EXPECT_TRUE(at(a_.controlPanels));
  press(Qt::Key_Tab);
  EXPECT_TRUE(at(a_.workplaces));
  press(Qt::Key_Tab);
  ASSERT_TRUE(at(a_.macros));
  press(Qt::Key_Down, Qt::NoModifier, 2);
  ASSERT_THAT(driver().list(a_.macros).selected()->text, StartsWith("001"));
  const std::size_t before = commandsIn(1).size();

  answer(Qt::Key_O, Qt::AltModifier, [] {
    type("KEY2");
    press(Qt::Key_Return);  // on to the functions found
    press(Qt::Key_Return);  // on to the first parameter of the first one
    if (auto* value = qobject_cast<QLineEdit*>(QApplication::focusWidget())) {
      type("1");
      EXPECT_FALSE(value->text().isEmpty());
    } else {
      press(Qt::Key_Down);
    }
    press(Qt::Key_E, Qt::AltModifier);  // insert at end
  });
  ASSERT_TRUE(driver().control<QWidget>(a_.saveChanges).isVisible());
  EXPECT_EQ(commandsIn(1).size(), before) << "the working copy alone until it is saved";
  press(Qt::Key_S, Qt::ControlModifier);
  ASSERT_EQ(commandsIn(1).size(), before + 1);
  EXPECT_THAT(commandsIn(1).back().fid, testing::HasSubstr("KEY2"));
  EXPECT_TRUE(driver().control<QWidget>(a_.commands).isAncestorOf(QApplication::focusWidget()) ||
              at(a_.commands) || at(a_.macros))
      << "the keyboard stays in the pane";
}

TEST_F(KeyboardTest, StandardKeysDoWhatTheyDoElsewhere) {
  press(Qt::Key_Down);
  press(Qt::Key_4, Qt::ControlModifier);
  ASSERT_TRUE(at(a_.macros));
  answer(Qt::Key_N, Qt::ControlModifier, [] {
    type("321");
    press(Qt::Key_Tab);
    type("Late news");
    press(Qt::Key_Return);
  });
  EXPECT_THAT(driver().texts(a_.macros), Contains("321 - Late news"));

  // Found, but not opened before Enter.
  press(Qt::Key_F, Qt::ControlModifier);
  type("NEWS");
  EXPECT_EQ(driver().list(a_.macros).selectedRow(), -1);
  press(Qt::Key_Return);
  ASSERT_TRUE(at(a_.macros));
  EXPECT_EQ(driver().list(a_.macros).selected()->text, "321 - Late news");
  press(Qt::Key_F, Qt::ControlModifier);
  type("no such macro");
  press(Qt::Key_F3);
  press(Qt::Key_Escape);
  EXPECT_EQ(driver().list(a_.macros).selected()->text, "321 - Late news");

  answer(Qt::Key_F2, Qt::NoModifier, [] {
    type("Early news");
    press(Qt::Key_Return);
  });
  EXPECT_THAT(driver().texts(a_.macros), Contains("321 - Early news"));
  ASSERT_TRUE(at(a_.macros)) << "the list has the keyboard again after the dialog";
  press(Qt::Key_Return);
  press(Qt::Key_Delete);
  EXPECT_THAT(fixture_.site.messages.take(), Contains(StartsWith("Delete macro: 321")));
  EXPECT_THAT(driver().texts(a_.macros), testing::Not(Contains(StartsWith("321"))));

  press(Qt::Key_F5);
  press(Qt::Key_F6);
  EXPECT_TRUE(driver().control<ListBox>(b_.applications).hasFocus());
  press(Qt::Key_F6);
  EXPECT_TRUE(at(a_.macros)) << "each pane remembers where the keyboard was";
}

TEST_F(KeyboardTest, ShiftAndTabGoesBackTheWayThatTabCame) {
  // Once round the window and back.
  std::vector<QWidget*> way{QApplication::focusWidget()};
  do {
    press(Qt::Key_Tab);
    way.push_back(QApplication::focusWidget());
    const auto* button = qobject_cast<QRadioButton*>(way.back());
    EXPECT_TRUE(button == nullptr || button->isChecked());
  } while (way.back() != way.front() && way.size() < 40);
  ASSERT_EQ(way.back(), way.front());
  for (auto step = way.rbegin() + 1; step != way.rend(); ++step) {
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), *step) << QApplication::focusWidget()->objectName().toStdString();
  }
}

TEST_F(KeyboardTest, FindingGoesRoundInBothDirections) {
  ListBox list;
  list.rows().setRows({{"Wipe"}, {"Mix"}, {"wipe back"}, {"Cut"}});
  list.show();
  QApplication::setActiveWindow(&list);
  list.setFocus();
  press(Qt::Key_F, Qt::ControlModifier);
  type("wipe");
  std::vector<int> places{list.found().row()};
  for (const auto modifiers : {Qt::NoModifier, Qt::NoModifier, Qt::ShiftModifier}) {
    press(Qt::Key_F3, modifiers);
    places.push_back(list.found().row());
  }
  EXPECT_THAT(places, testing::ElementsAre(0, 2, 0, 2));
  list.rows().setRows({{"Cut"}});
  press(Qt::Key_F3);
  EXPECT_FALSE(list.found().isValid()) << "no row of the list that was";
  list.setAllowed(false);
  EXPECT_FALSE(list.findChild<QLineEdit*>()->isVisible());
}

TEST_F(KeyboardTest, TheWheelTurnsOnlyABoxThatHasTheKeyboard) {
  DecodingLists lists(fixture_.site.root);
  std::vector<PanelSource> sources;
  int rate = 25;
  const EditorContext context{fixture_.site.access(), sampleDictionary(),   lists, sources,
                              offlineClient(),        [] { return false; }, rate,  {}};
  CreateCommandDialog dialog(context, 1, false);
  dialog.show();
  QApplication::setActiveWindow(&dialog);
  auto* box = dialog.findChild<QComboBox*>(QStringLiteral("destination"));
  const auto turn = [box] {
    QWheelEvent wheel({5, 5}, box->mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(box, &wheel);
    return box->currentIndex();
  };
  EXPECT_EQ(turn(), 0);
  press(Qt::Key_D, Qt::AltModifier);
  EXPECT_EQ(turn(), 1);
}

}  // namespace
}  // namespace tessaly
