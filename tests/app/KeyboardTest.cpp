// The window worked by keys alone: no click, no focus set by program.
#include <gmock/gmock.h>

#include <QCheckBox>
#include <QComboBox>
#include <QRadioButton>
#include <QShortcut>
#include <QToolButton>
#include <QWheelEvent>

#include "app/Language.h"
#include "tests/app/EveryDialog.h"
#include "widgets/KeyboardWay.h"

namespace tessaly {
namespace {

using testing::Contains;
using testing::StartsWith;

// A key for whatever has the keyboard.
void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
  QTest::keyClick(WindowDriver::keyboard(), static_cast<Qt::Key>(key), modifiers);
}
void type(const char* text) { QTest::keyClicks(WindowDriver::keyboard(), QString::fromUtf8(text)); }

class KeyboardTest : public WindowTest {
 protected:
  // Presses a key that opens a dialog; afterwards the window is in front again, as any desktop sees to it.
  void answer(int key, Qt::KeyboardModifiers modifiers, const std::function<void()>& keys) {
    WindowDriver::answerNext([keys](QDialog&) { keys(); });
    press(key, modifiers);
    QApplication::setActiveWindow(fixture_.window.get());
  }
  [[nodiscard]] bool at(int id) { return QApplication::focusWidget() == &driver().control<QWidget>(id); }
};

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
  EXPECT_EQ(selected(a_.macros), "321 - Late news") << "a new macro is open";

  // Found, but not opened before Enter.
  for (const char* found : {"Anchor wide", "Late news"}) {
    const std::string before = selected(a_.macros);
    press(Qt::Key_F, Qt::ControlModifier);
    type(found);
    EXPECT_EQ(selected(a_.macros), before);
    press(Qt::Key_Return);
    EXPECT_NE(selected(a_.macros), before);
  }
  ASSERT_TRUE(at(a_.macros));
  EXPECT_EQ(selected(a_.macros), "321 - Late news");
  answer(Qt::Key_F2, Qt::NoModifier, [] {
    type("Early news");
    press(Qt::Key_Return);
  });
  EXPECT_THAT(driver().texts(a_.macros), Contains("321 - Early news"));
  ASSERT_TRUE(at(a_.macros)) << "the list has the keyboard again after the dialog";
  press(Qt::Key_Return);
  press(Qt::Key_Delete);
  EXPECT_THAT(asked(), Contains(StartsWith("Delete macro: 321")));
  EXPECT_THAT(driver().texts(a_.macros), testing::Not(Contains(StartsWith("321"))));

  // The pane that had the keyboard last answers from wherever it is.
  fixture_.window->findChild<QWidget*>("closeButton")->setFocus();
  press(Qt::Key_4, Qt::ControlModifier);
  ASSERT_TRUE(at(a_.macros));

  press(Qt::Key_F5);
  press(Qt::Key_F6);
  EXPECT_TRUE(driver().control<ListBox>(b_.applications).hasFocus());
  press(Qt::Key_F6);
  EXPECT_TRUE(at(a_.macros)) << "each pane remembers where the keyboard was";
}

TEST_F(KeyboardTest, ShiftAndTabGoesBackTheWayThatTabCame) {
  // Once round the window and back, with other sources than the toolkit would go to.
  driver().control<QRadioButton>(b_.panel).toggle();
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

// Of the keys in the tool tips of a dialog: one that is none's or two controls', and one that presses
// nothing.
std::vector<std::string> faultyKeys(QDialog& dialog) {
  QStringList keys;
  for (const QShortcut* shortcut : dialog.findChildren<QShortcut*>()) keys << shortcut->key().toString();
  for (const QLabel* label : dialog.findChildren<QLabel*>())
    if (label->buddy() != nullptr) keys << QKeySequence::mnemonic(label->text()).toString();
  const auto buttons = dialog.findChildren<QAbstractButton*>();
  for (const QAbstractButton* button : buttons) keys << button->shortcut().toString();
  std::vector<std::string> faults;
  const auto fault = [&](const QWidget* of, const char* what) {
    faults.push_back(of->objectName().toStdString() + what + of->toolTip().toStdString());
  };
  QList<QWidget*> controls;
  for (QComboBox* box : dialog.findChildren<QComboBox*>()) controls << box;
  for (QAbstractButton* button : buttons)
    if (qobject_cast<QToolButton*>(button) == nullptr && !button->objectName().isEmpty()) controls << button;
  for (QWidget* control : controls) {
    const QKeySequence key = KeyboardWay::keyOf(*control);
    if (key.isEmpty() || keys.count(key.toString()) != 1) fault(control, " shares its key or has none: ");
    if (!control->toolTip().contains(key.toString(QKeySequence::NativeText))) fault(control, " tells none: ");
    auto* box = qobject_cast<QCheckBox*>(control);
    if (box == nullptr || !box->isVisible() || !box->isEnabled()) continue;
    const bool before = box->isChecked();
    QTest::keyClick(&dialog, key[0].key(), key[0].keyboardModifiers());
    // A key of the caption itself presses slowly, to be seen.
    if (!QTest::qWaitFor([&] { return box->isChecked() != before; }, 2000)) fault(box, " is not pressed by ");
  }
  return faults;
}

// Where the Tab key stops on its way round a dialog, as the toolkit has it.
QList<QWidget*> tabStops(const QDialog& dialog) {
  QList<QWidget*> stops;
  for (QWidget* at = dialog.nextInFocusChain(); at != &dialog; at = at->nextInFocusChain())
    if (at->isVisible() && (at->focusPolicy() & Qt::TabFocus) == Qt::TabFocus && at->window() == &dialog)
      stops << at;
  return stops;
}

// Steps of the Tab key that lead up without leading to the right, or to the left in the same line.
std::vector<std::string> stepsBack(const QDialog& dialog) {
  const QList<QWidget*> way = tabStops(dialog);
  const auto place = [&dialog](const QWidget* of) { return QRect(of->mapTo(&dialog, QPoint()), of->size()); };
  std::vector<std::string> back;
  for (qsizetype i = 1; i < way.size(); ++i) {
    const QRect from = place(way[i - 1]), to = place(way[i]);
    const bool up = to.bottom() < from.top(), down = from.bottom() < to.top();
    if (up ? to.left() <= from.right() : !down && to.right() < from.left())
      back.push_back((way[i - 1]->objectName() + " to " + way[i]->objectName()).toStdString());
  }
  return back;
}

// Controls that the Tab key passes by on its way round the dialog, or never comes round to; not those of a
// group that the arrows go round.
std::vector<std::string> neverReached(const QDialog& dialog) {
  QList<QWidget*> missing = tabStops(dialog);
  missing.removeIf([](const QWidget* stop) {
    return !stop->isEnabled() || qobject_cast<const QRadioButton*>(stop) != nullptr;
  });
  const qsizetype most = 2 * missing.size();
  for (qsizetype step = 0; step < most && !missing.isEmpty(); ++step) {
    QTest::keyClick(WindowDriver::keyboard(), Qt::Key_Tab);
    missing.removeOne(QApplication::focusWidget());
  }
  std::vector<std::string> names;
  for (const QWidget* widget : missing) names.push_back(widget->objectName().toStdString());
  return names;
}

TEST(KeyboardWayTest, EveryControlOfADialogHasItsKeyAndTabReadsOn) {
  for (const QString& language : languages()) {
    speak(language);
    EveryDialog every;
    every.visit([&](QDialog& dialog, const char* name) {
      dialog.show();
      QApplication::setActiveWindow(&dialog);
      QApplication::processEvents();
      EXPECT_THAT(stepsBack(dialog), testing::IsEmpty()) << name;
      EXPECT_THAT(neverReached(dialog), testing::IsEmpty()) << name;
      EXPECT_THAT(faultyKeys(dialog), testing::IsEmpty()) << name << " in " << language.toStdString();
    });
  }
  speak({});
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
  open(a_);
  driver().press(a_.newCorvane, [](QDialog& dialog) {
    auto* box = dialog.findChild<QComboBox*>("destination");
    const auto turn = [box] {
      QWheelEvent wheel({5, 5}, box->mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                        Qt::NoScrollPhase, false);
      QApplication::sendEvent(box, &wheel);
      return box->currentIndex();
    };
    EXPECT_EQ(turn(), 0);
    press(Qt::Key_D, Qt::AltModifier);
    EXPECT_EQ(turn(), 1);
    dialog.reject();
  });
}

}  // namespace
}  // namespace tessaly
