// Many commands at once: selected, moved, carried and pasted with the events of a hand and of keys.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAccessible>
#include <QClipboard>
#include <QDrag>
#include <QDropEvent>
#include <QLabel>
#include <QMenu>

#include "model/MacroFile.h"
#include "tests/app/WindowFixture.h"
#include "tests/editors/DialogDriver.h"
#include "tests/support/Hand.h"
#include "tests/support/LoadCommands.h"

namespace tessaly {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

constexpr const char* kFolder = "c:\\programme\\rv48\\appli\\Evening News\\CP1\\macroWP1\\";
constexpr const char* kTemp[] = {"c:\\programme\\RV48\\bin\\MacroFid\\tempA.mac",
                                 "c:\\programme\\RV48\\bin\\MacroFid\\tempB.mac"};

// A command a letter, told by its function.
std::string macroOf(const std::string& letters, const char* encoding = "UTF-8") {
  std::string text =
      std::string("<?xml version=\"1.0\" encoding=\"") + encoding + "\"?><macro name=\"m\"><data>";
  for (const char letter : letters)
    text += std::string("<cmd fid=\"QMF1.") + letter + "\" workplace=\"1\" own=\"kept\"/>";
  return text + "</data></macro>";
}

class ManyCommandsTest : public testing::Test {
 protected:
  ManyCommandsTest() : fixture_(offlineClient()) {
    fixture_.site.write(macroFile(kFolder, 990), macroOf("abcdefgh"));
    fixture_.site.write(macroFile(kFolder, 991), macroOf("uvwx", "ISO-8859-1"));
    fixture_.site.write(macroFile(kFolder, 992), macroOf(""));
    for (const Pane pane : kPanes) driver().choose(ids(pane).applications, "Evening News");
    open(Pane::kA, "990");
    open(Pane::kB, "991");
    QApplication::setActiveWindow(fixture_.window.get());
  }

  [[nodiscard]] static const PaneDescriptor::ControlIds& ids(Pane pane) { return WindowFixture::ids(pane); }
  [[nodiscard]] WindowDriver& driver() { return *fixture_.driver; }
  [[nodiscard]] RowsView& list(Pane pane) { return driver().list(ids(pane).commands); }
  void open(Pane pane, const char* number) { driver().choose(ids(pane).macros, number); }
  [[nodiscard]] std::string told() { return fixture_.status().toStdString(); }

  [[nodiscard]] std::string letters(Pane pane) {
    MacroCommands commands;
    EXPECT_TRUE(loadCommands(fixture_.site.access(), kTemp[index(pane)], commands));
    std::string letters;
    for (const MacroCommand& command : commands) letters += command.fid.back();
    return letters;
  }
  [[nodiscard]] std::string selected(Pane pane) {
    const std::string all = letters(pane);
    std::string chosen;
    for (const int row : list(pane).selectedRows()) chosen += all[static_cast<std::size_t>(row)];
    return chosen;
  }
  [[nodiscard]] QPoint middle(Pane pane, int row) {
    return {20, list(pane).visualRect(list(pane).rows().index(row)).center().y()};
  }
  // Clicks them, all but the first with Ctrl; none: beside the rows.
  void select(Pane pane, const std::string& wanted) {
    QWidget* viewport = list(pane).viewport();
    QTest::mouseClick(viewport, Qt::LeftButton, Qt::NoModifier, {20, viewport->height() - 3});
    const std::string all = letters(pane);
    for (const char letter : wanted)
      QTest::mouseClick(viewport, Qt::LeftButton, Qt::ControlModifier,
                        middle(pane, static_cast<int>(all.find(letter))));
    list(pane).setFocus();
  }
  void press(Pane pane, int key, Qt::KeyboardModifiers modifiers) {
    driver().bringToFront();
    QTest::keyClick(&list(pane), static_cast<Qt::Key>(key), modifiers);
  }
  // Drags what is selected at a row to the border above another one; how it is accepted.
  Qt::DropAction drag(Pane from, int row, Pane to, int before, Qt::KeyboardModifiers modifiers = {}) {
    QWidget* source = list(from).viewport();
    const QPoint start = middle(from, row);
    QTest::mousePress(source, Qt::LeftButton, Qt::NoModifier, start);
    for (const int distance : {5, 30}) {
      QMouseEvent move(QEvent::MouseMove, start + QPoint(distance, 0), source->mapToGlobal(start),
                       Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
      QApplication::sendEvent(source, &move);
    }
    auto* held = list(from).findChild<QDrag*>();
    QTest::mouseRelease(source, Qt::LeftButton, Qt::NoModifier, start);
    if (held == nullptr) return Qt::IgnoreAction;
    if (meanwhile_) meanwhile_();
    const Qt::DropActions both = Qt::CopyAction | Qt::MoveAction;
    QWidget* target = list(to).viewport();
    const QPoint at(20, before == 0 ? 1 : middle(to, before - 1).y() + 5);
    QDragEnterEvent enter(at, both, held->mimeData(), Qt::LeftButton, modifiers);
    QApplication::sendEvent(target, &enter);
    if (!enter.isAccepted()) return Qt::IgnoreAction;
    QDragMoveEvent move(at, both, held->mimeData(), Qt::LeftButton, modifiers);
    QApplication::sendEvent(target, &move);
    QDropEvent drop(at, both, held->mimeData(), Qt::LeftButton, modifiers);
    QApplication::sendEvent(target, &drop);
    return drop.dropAction();
  }

  WindowFixture fixture_;
  std::function<void()> meanwhile_;  // between a drag and its drop
  const PaneDescriptor::ControlIds& a_ = ids(Pane::kA);
  const PaneDescriptor::ControlIds& b_ = ids(Pane::kB);
};

// Catches commands at wrong places, a selection that stays behind, and changes of more steps than one.
TEST_F(ManyCommandsTest, EachKeyIsOneStepAndTakesTheSelectionAlong) {
  const Qt::Key up = Qt::Key_Up, down = Qt::Key_Down;
  const struct {
    const char* chosen;
    std::vector<std::pair<Qt::Key, Qt::KeyboardModifier>> keys;
    const char* order;
    const char* selected;
  } cases[] = {{"cd", {{up, Qt::AltModifier}}, "acdbefgh", "cd"},
               {"cd", {{down, Qt::AltModifier}}, "abecdfgh", "cd"},
               {"bdf", {{up, Qt::AltModifier}}, "abdfcegh", "bdf"},
               {"bdf", {{down, Qt::AltModifier}}, "acebdfgh", "bdf"},
               {"ac", {{up, Qt::AltModifier}}, "acbdefgh", "ac"},
               {"fh", {{down, Qt::AltModifier}}, "abcdegfh", "fh"},
               {"bd", {{Qt::Key_D, Qt::ControlModifier}}, "abcdbdefgh", "bd"},
               {"bcf", {{Qt::Key_Delete, Qt::NoModifier}}, "adegh", "d"},
               {"gh", {{Qt::Key_Delete, Qt::NoModifier}}, "abcdef", ""},
               {"ce", {{Qt::Key_X, Qt::ControlModifier}}, "abdfgh", "d"},
               {"h", {{Qt::Key_Delete, Qt::NoModifier}}, "abcdefg", ""}};
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.chosen) + " -> " + c.order);
    select(Pane::kA, c.chosen);
    for (const auto& [key, modifier] : c.keys) press(Pane::kA, key, modifier);
    EXPECT_EQ(letters(Pane::kA), c.order);
    EXPECT_EQ(selected(Pane::kA).substr(0, 3), c.selected);
    press(Pane::kA, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(letters(Pane::kA), "abcdefgh") << "one step";
    EXPECT_EQ(selected(Pane::kA), c.chosen);
    EXPECT_FALSE(driver().control<QWidget>(a_.saveChanges).isVisible());
  }
  for (const auto& [chosen, key] : {std::pair("ab", up), std::pair("gh", down)}) {
    select(Pane::kA, chosen);
    press(Pane::kA, key, Qt::AltModifier);
    EXPECT_FALSE(driver().control<QWidget>(a_.saveChanges).isVisible()) << "it is there already: " << chosen;
  }
}

// Catches a key held down that goes on through the macro, and a move that a held key does not go on with.
TEST_F(ManyCommandsTest, AKeyHeldDownDeletesOnce) {
  const auto hold = [this](Qt::Key key, Qt::KeyboardModifiers modifiers) {
    for (const bool again : {false, true, true})
      QTest::simulateEvent(&list(Pane::kA), true, key, modifiers, {}, again);
  };
  select(Pane::kA, "bc");
  hold(Qt::Key_Delete, Qt::NoModifier);
  EXPECT_EQ(letters(Pane::kA), "adefgh");
  hold(Qt::Key_E, Qt::AltModifier);
  EXPECT_EQ(letters(Pane::kA), "aefgh");
  hold(Qt::Key_D, Qt::ControlModifier);
  EXPECT_EQ(letters(Pane::kA), "aeefgh");
  hold(Qt::Key_Down, Qt::AltModifier);
  EXPECT_EQ(letters(Pane::kA), "aefghe");
}

// Catches Shift that goes on from where a selection began long ago.
TEST_F(ManyCommandsTest, ShiftGoesOnFromWhereTheSelectionBegan) {
  QWidget* viewport = list(Pane::kA).viewport();
  const auto click = [&](int row, Qt::KeyboardModifiers keys) {
    QTest::mouseClick(viewport, Qt::LeftButton, keys, middle(Pane::kA, row));
    return selected(Pane::kA);
  };
  const auto key = [&](Qt::Key pressed, Qt::KeyboardModifiers keys = Qt::ShiftModifier) {
    press(Pane::kA, pressed, keys);
    return selected(Pane::kA);
  };
  list(Pane::kA).setFocus();
  EXPECT_EQ(click(2, {}), "c");
  EXPECT_EQ(click(4, Qt::ShiftModifier), "cde");
  EXPECT_EQ(click(1, Qt::ShiftModifier), "bc");
  EXPECT_EQ(key(Qt::Key_Up), "abc");
  EXPECT_EQ(key(Qt::Key_End), "cdefgh");
  EXPECT_EQ(click(6, Qt::ControlModifier), "cdefh");
  EXPECT_EQ(key(Qt::Key_Down, {}), "h");
  select(Pane::kA, "ab");
  key(Qt::Key_Down, Qt::AltModifier);
  EXPECT_EQ(key(Qt::Key_Down), "ab") << "from the first of those that the program has selected";
  EXPECT_EQ(key(Qt::Key_A, Qt::ControlModifier), "cabdefgh");
  QTest::mouseClick(viewport, Qt::LeftButton, Qt::NoModifier, {20, viewport->height() - 3});
  EXPECT_EQ(selected(Pane::kA), "");
  EXPECT_EQ(key(Qt::Key_End), "h") << "nothing is left of what was selected before";
}

// Catches commands that lose what nobody knows on their way, and a clipboard that only this window can read.
TEST_F(ManyCommandsTest, WhatIsCopiedComesWholeWhereItIsWanted) {
  select(Pane::kA, "bd");
  press(Pane::kA, Qt::Key_C, Qt::ControlModifier);
  EXPECT_FALSE(driver().control<QWidget>(a_.saveChanges).isVisible());
  select(Pane::kB, "w");
  press(Pane::kB, Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(letters(Pane::kB), "uvbdwx") << "in front of the selected one";
  EXPECT_EQ(selected(Pane::kB), "bd");
  const std::string bytes = fixture_.site.read(kTemp[1]);
  EXPECT_THAT(bytes, testing::ContainsRegex("QMF1.b\"[^>]*own=\"kept\""));
  // As another program hands it over.
  QGuiApplication::clipboard()->setText(QGuiApplication::clipboard()->text());
  select(Pane::kB, "");
  press(Pane::kB, Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(letters(Pane::kB), "uvbdwxbd");
  EXPECT_THAT(told(), StartsWith("2 commands pasted"));
  driver().press(b_.discardChanges);
  open(Pane::kB, "992");
  driver().control<QWidget>(b_.macros).setFocus();
  QTest::keyClick(WindowDriver::keyboard(), Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(letters(Pane::kB), "bd") << "an empty macro takes them, too";
}

// Catches a paste that leaves a part, or a refusal without a word.
TEST_F(ManyCommandsTest, WhatCannotBeTakenOverChangesNothing) {
  std::string many;
  for (int i = 0; i <= 5000; ++i) many += "<cmd fid=\"QMF1.n\"/>";
  select(Pane::kA, "a");
  press(Pane::kA, Qt::Key_C, Qt::ControlModifier);
  const std::string good = QGuiApplication::clipboard()->text().toStdString();
  const auto with = [&](const std::string& old, const std::string& text) {
    std::string changed = good;
    return changed.replace(changed.find(old), old.size(), text);
  };
  const std::string command = good.substr(good.find("<cmd"), good.find("</data>") - good.find("<cmd"));
  const std::pair<const char*, std::string> cases[] = {
      {"other text", "three commands, please"},
      {"nothing", ""},
      {"cut off", good.substr(0, good.size() / 2)},
      {"of another version", with("version=\"1\"", "version=\"2\"")},
      {"too many", with(command, many)},
      {"a letter that the target lacks", with("kept", "\xE2\x86\x92")}};
  const std::string before = fixture_.site.read(kTemp[1]);
  select(Pane::kB, "w");
  for (const auto& [what, text] : cases) {
    QGuiApplication::clipboard()->setText(QString::fromStdString(text));
    press(Pane::kB, Qt::Key_V, Qt::ControlModifier);
    EXPECT_THAT(told(), StartsWith("NOT pasted (")) << what;
    EXPECT_EQ(fixture_.site.read(kTemp[1]), before) << what;
    EXPECT_EQ(selected(Pane::kB), "w") << what;
  }
  EXPECT_FALSE(driver().control<QWidget>(b_.saveChanges).isVisible());
}

// Catches drops at wrong places, a source that keeps what was moved, and one that gives away what was copied.
TEST_F(ManyCommandsTest, ADragGoesToTheExactPlace) {
  const struct {
    Pane to;
    int before;
    Qt::KeyboardModifiers modifiers;
    Qt::DropAction action;
    const char *orderA, *orderB;
  } cases[] = {{Pane::kA, 7, {}, Qt::MoveAction, "adefgbch", "uvwx"},
               {Pane::kA, 0, {}, Qt::MoveAction, "bcadefgh", "uvwx"},
               {Pane::kA, 8, Qt::ControlModifier, Qt::CopyAction, "abcdefghbc", "uvwx"},
               {Pane::kB, 1, {}, Qt::CopyAction, "abcdefgh", "ubcvwx"},
               {Pane::kB, 4, Qt::ShiftModifier, Qt::MoveAction, "adefgh", "uvwxbc"}};
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.orderA) + ' ' + c.orderB);
    select(Pane::kA, "bc");
    EXPECT_EQ(drag(Pane::kA, 1, c.to, c.before, c.modifiers), c.action);
    EXPECT_EQ(letters(Pane::kA), c.orderA) << told();
    EXPECT_EQ(letters(Pane::kB), c.orderB) << told();
    EXPECT_EQ(selected(c.to), "bc");
    for (const Pane pane : kPanes) {
      list(pane).setFocus();
      press(pane, Qt::Key_Z, Qt::ControlModifier);
    }
    EXPECT_EQ(letters(Pane::kA) + letters(Pane::kB), "abcdefghuvwx") << "one step a pane";
  }
  meanwhile_ = [this] { press(Pane::kA, Qt::Key_Delete, {}); };
  select(Pane::kA, "bc");
  drag(Pane::kA, 1, Pane::kB, 1, Qt::ShiftModifier);
  EXPECT_EQ(letters(Pane::kA) + letters(Pane::kB), "adefghuvwx") << "others stand there now";
}

// Catches commands that change while somebody looks for others.
TEST_F(ManyCommandsTest, KeysInAFieldForTextAreNotForTheCommands) {
  select(Pane::kA, "b");
  press(Pane::kA, Qt::Key_F, Qt::ControlModifier);
  QWidget* const field = QApplication::focusWidget();
  ASSERT_NE(field, &list(Pane::kA));
  const std::pair<Qt::Key, Qt::KeyboardModifier> keys[] = {{Qt::Key_D, Qt::ControlModifier},
                                                           {Qt::Key_Up, Qt::AltModifier},
                                                           {Qt::Key_Down, Qt::AltModifier},
                                                           {Qt::Key_X, Qt::ControlModifier}};
  for (const auto& [key, modifiers] : keys) QTest::keyClick(field, key, modifiers);
  EXPECT_EQ(letters(Pane::kA), "abcdefgh") << told();
}

// Catches a refusal that does not tell why.
TEST_F(ManyCommandsTest, MoreThanCanBeCarriedIsSaidToBeTooMany) {
  fixture_.site.write(macroFile(kFolder, 994), macroOf(std::string(5001, 'n')));
  driver().choose(a_.workplaces, "Workplace 1");
  open(Pane::kA, "994");
  press(Pane::kA, Qt::Key_A, Qt::ControlModifier);
  press(Pane::kA, Qt::Key_C, Qt::ControlModifier);
  EXPECT_THAT(told(), HasSubstr("more than 5000 commands"));
  drag(Pane::kA, 0, Pane::kB, 0);
  EXPECT_THAT(told(), testing::AllOf(StartsWith("NOT copied"), HasSubstr("more than 5000 commands")));
  EXPECT_EQ(letters(Pane::kB), "uvwx");
}

// Catches a file that takes another macro's place, a save that goes nowhere, and edits that a drop replaces.
TEST_F(ManyCommandsTest, ADroppedFileHasNoPlaceUntilItIsGivenOne) {
  const QString file = QString::fromStdString((fixture_.site.root.path() / "loose.mac").string());
  fixture_.site.write(file.toStdString(), macroOf("xyz"));
  const auto drop = [&] {
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(file)});
    QWidget* pane = &list(Pane::kA);
    while (qobject_cast<MacroPane*>(pane) == nullptr) pane = pane->parentWidget();
    QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(pane, &enter);
    QDropEvent dropped({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, {});
    if (enter.isAccepted()) QApplication::sendEvent(pane, &dropped);
  };
  drop();
  EXPECT_EQ(letters(Pane::kA), "xyz") << told();
  EXPECT_EQ(list(Pane::kA).rows().rowCount(), 3);
  EXPECT_EQ(driver().list(a_.macros).selectedRow(), -1);
  select(Pane::kA, "y");
  press(Pane::kA, Qt::Key_Delete, {});
  drop();
  EXPECT_THAT(told(), StartsWith("NOT opened"));
  const auto startAgain = [&] {
    fixture_.open();
    WindowDriver::waitFor([] { return QApplication::activeModalWidget() == nullptr; }, "no offer");
    QApplication::setActiveWindow(fixture_.window.get());
  };
  std::string place;
  WindowDriver::answerNext([&](QDialog& dialog) {
    for (const auto* label : dialog.findChildren<QLabel*>()) place += label->text().toStdString() + '\n';
    WindowDriver::click(dialog, QStringLiteral("OK"));
  });
  startAgain();
  WindowDriver::waitFor([&] { return !place.empty(); }, "the offer");
  EXPECT_THAT(place, HasSubstr(file.toStdString())) << "a crash takes nothing";
  EXPECT_EQ(letters(Pane::kA), "xz");
  for (const char* const left : {"xyz", "xz", "xyz"}) {
    if (letters(Pane::kA) == "xz")
      driver().press(a_.discardChanges);
    else
      press(Pane::kA, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(letters(Pane::kA), left) << told();
    list(Pane::kA).setFocus();
  }
  EXPECT_FALSE(driver().control<QWidget>(a_.saveChanges).isVisible());
  driver().choose(a_.applications, "Evening News");
  drop();
  select(Pane::kA, "y");
  press(Pane::kA, Qt::Key_Delete, {});
  driver().press(a_.saveChanges);
  auto* places = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_NE(places, nullptr) << told();
  WindowDriver::answerNext([](QDialog& dialog) {
    WindowDriver::type(dialog, "position", QStringLiteral("995"));
    WindowDriver::click(dialog, QStringLiteral("OK"));
  });
  QTest::keyClick(places, Qt::Key_Down);
  QTest::keyClick(places, Qt::Key_Return);
  EXPECT_THAT(told(), StartsWith("saved: 995"));
  EXPECT_EQ(fixture_.site.read(macroFile(kFolder, 995)), fixture_.site.read(kTemp[0]));
  EXPECT_EQ(driver().list(a_.macros).selected()->text, "995 - m");
  EXPECT_FALSE(driver().control<QWidget>(a_.saveChanges).isVisible());
  startAgain();
  driver().choose(a_.applications, "Evening News");
  open(Pane::kA, "995");
  list(Pane::kA).setFocus();
  press(Pane::kA, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(letters(Pane::kA), "xyz") << "the steps go with the macro to its new place";
}

// Catches the bytes of one macro saved under the place that was chosen for another.
TEST_F(ManyCommandsTest, APlaceThatIsChosenForAnotherMacroIsNotUsed) {
  driver().choose(a_.applications, "Evening News");
  open(Pane::kA, "990");
  const std::string before = fixture_.site.read(macroFile(kFolder, 995));
  WindowDriver::answerNext([&](QDialog& dialog) {
    open(Pane::kA, "991");
    WindowDriver::type(dialog, "position", QStringLiteral("995"));
    WindowDriver::click(dialog, QStringLiteral("OK"));
  });
  press(Pane::kA, Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
  auto* places = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_NE(places, nullptr) << told();
  QTest::keyClick(places, Qt::Key_Down);
  QTest::keyClick(places, Qt::Key_Return);
  EXPECT_THAT(told(), StartsWith("NOT saved: the pane shows another macro"));
  EXPECT_EQ(fixture_.site.read(macroFile(kFolder, 995)), before);
}

// Catches a key file, or a macro that cannot be saved whole, that is offered more than to be copied from.
TEST_F(ManyCommandsTest, WhatCannotBeEditedOffersCopyOnly) {
  fixture_.site.write(macroFile(kFolder, 993),
                      "<macro name=\"m\"><data><cmd fid='QMF1.y'workplace='1'/></data></macro>");
  const auto offered = [this] {
    QString texts;
    WindowDriver::waitFor([] { return QApplication::activePopupWidget() == nullptr; }, "no menu");
    QContextMenuEvent wanted(QContextMenuEvent::Mouse, middle(Pane::kA, 0),
                             list(Pane::kA).viewport()->mapToGlobal(middle(Pane::kA, 0)));
    QApplication::sendEvent(list(Pane::kA).viewport(), &wanted);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    for (const QAction* action : menu == nullptr ? QList<QAction*>() : menu->actions())
      if (action->isEnabled() && !action->isSeparator()) texts += action->text() + QLatin1Char(',');
    if (menu != nullptr) menu->close();
    return texts.remove(QLatin1Char('&')).toStdString();
  };
  select(Pane::kA, "bc");
  EXPECT_EQ(offered(), "delete,update data,Cut,Copy,Paste,Duplicate,Move Up,Move Down,Select All,");
  select(Pane::kA, "b");
  EXPECT_THAT(offered(), StartsWith("modify,delete,update data,"));
  driver().choose(a_.workplaces, "Workplace 1");
  open(Pane::kA, "993");
  driver().clickRow(a_.commands, 0);
  EXPECT_THAT(offered(), HasSubstr("data,Copy,Select All,"));
  drag(Pane::kA, 0, Pane::kB, 1, Qt::ShiftModifier);
  EXPECT_THAT(told(), StartsWith("NOT moved"));
  EXPECT_EQ(letters(Pane::kB), "uvwx") << "refused before anything changes";
  select(Pane::kB, "v");
  EXPECT_EQ(drag(Pane::kB, 1, Pane::kA, 0), Qt::IgnoreAction);
}

// Catches a dialog that closes, forgets what was chosen, or reverses what one button inserts one after
// another.
TEST_F(ManyCommandsTest, TheDialogThatIsKeptOpenGoesOnBehindTheLastOne) {
  select(Pane::kA, "c");
  driver().press(a_.newCorvane, [this](QDialog& dialog) {
    const DialogDriver user(dialog);
    user.click("keepOpen");
    user.type("search1", "ME2");
    user.choose("results1", "ME2");
    user.type("search2", "ON");
    user.choose("results2", "ON");
    for (const auto& [key, button] :
         {std::pair("ME 2 Key 1 On", "insertSelected"), std::pair("ME 2 Key 2 On", "insertSelected"),
          std::pair("ME 2 Key 3 On", "insertEnd"), std::pair("ME 2 Key 4 On", "insertSelected")}) {
      user.choose("found", key);
      user.choose("choices", "On");
      user.click(button);
      EXPECT_TRUE(dialog.isVisible());
      EXPECT_EQ(user.field("search2"), "ON");
    }
    EXPECT_EQ(list(Pane::kA).selectedRows(), std::vector<int>{4});
    dialog.reject();
  });
  MacroCommands commands;
  ASSERT_TRUE(loadCommands(fixture_.site.access(), kTemp[0], commands));
  ASSERT_EQ(commands.size(), 12U);
  EXPECT_EQ(commands[2].fid + commands[3].fid + commands[4].fid + commands[5].fid + commands[11].fid,
            "QMF1.ME2.KEY1.ON.SETQMF1.ME2.KEY2.ON.SETQMF1.ME2.KEY4.ON.SETQMF1.cQMF1.ME2.KEY3.ON.SET");
}

// Catches work that a mouse is needed for, and a move that only eyes are told.
TEST_F(ManyCommandsTest, KeysAloneCarryCommandsFromPaneToPane) {
  const auto key = [](int pressed, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(WindowDriver::keyboard(), static_cast<Qt::Key>(pressed), modifiers);
  };
  driver().control<QWidget>(a_.macros).setFocus();
  key(Qt::Key_5, Qt::ControlModifier);
  key(Qt::Key_Home);
  key(Qt::Key_Down, Qt::ShiftModifier);
  key(Qt::Key_Down, Qt::AltModifier);
  auto* strip = fixture_.window->findChild<QLabel*>(QStringLiteral("statusStrip"));
  EXPECT_THAT(QAccessible::queryAccessibleInterface(strip)->text(QAccessible::Name).toStdString(),
              StartsWith("2 commands moved; they are commands 2 to 3 now"));
  EXPECT_EQ(list(Pane::kA).currentIndex().row(), 1) << "the row that a screen reader reads goes along";
  key(Qt::Key_X, Qt::ControlModifier);
  key(Qt::Key_F6);
  key(Qt::Key_5, Qt::ControlModifier);
  key(Qt::Key_End);
  key(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(letters(Pane::kA) + ' ' + letters(Pane::kB), "cdefgh uvwabx");
  WindowDriver::answerNext([](QDialog& dialog) { dialog.reject(); });
  key(Qt::Key_Home);
  key(Qt::Key_Return);  // opens "modify", which the answer leaves
}

}  // namespace
}  // namespace tessaly
