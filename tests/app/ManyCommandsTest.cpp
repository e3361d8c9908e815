// Many commands at once: selected, moved, carried and pasted with the events of a hand and of keys.
#include <gmock/gmock.h>

#include <QClipboard>
#include <QDrag>
#include <QDropEvent>
#include <QLabel>
#include <QMenu>

#include "tests/app/WindowFixture.h"
#include "tests/editors/DialogDriver.h"
#include "tests/support/Hand.h"

namespace tessaly {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

// A command a letter, told by its function.
std::string macroOf(const std::string& letters, const char* encoding = "UTF-8") {
  std::string text =
      std::string("<?xml version=\"1.0\" encoding=\"") + encoding + "\"?><macro name=\"m\"><data>";
  for (const char letter : letters)
    text += std::string("<cmd fid=\"QMF1.") + letter + "\" workplace=\"1\" own=\"kept\"/>";
  return text + "</data></macro>";
}

class ManyCommandsTest : public WindowTest {
 protected:
  ManyCommandsTest() {
    fixture_.site.write(macroPath(990), macroOf("abcdefgh"));
    fixture_.site.write(macroPath(991), macroOf("uvwx", "ISO-8859-1"));
    fixture_.site.write(macroPath(992), macroOf(""));
    open(a_, "990");
    open(b_, "991");
  }

  [[nodiscard]] RowsView& list(Pane pane) { return driver().list(ids(pane).commands); }
  [[nodiscard]] std::string letters(Pane pane) {
    std::string letters;
    for (const MacroCommand& command : commandsOf(workingCopyPath(pane))) letters += command.fid.back();
    return letters;
  }
  // The same, and the keys' numbers of those that switch a key.
  [[nodiscard]] std::string keys(Pane pane) {
    std::string keys;
    for (const MacroCommand& command : commandsOf(workingCopyPath(pane)))
      keys += command.fid.ends_with(".ON.SET") ? command.fid[command.fid.size() - 8] : command.fid.back();
    return keys;
  }
  [[nodiscard]] std::string bothLetters() { return letters(Pane::kA) + ' ' + letters(Pane::kB); }
  using WindowTest::selected;
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
  void press(Pane pane, QKeyCombination key) {
    driver().bringToFront();
    QTest::keyClick(&list(pane), key.key(), key.keyboardModifiers());
  }
  // By a line with an arrow at each end.
  bool showsPlace(Pane pane, int before) {
    const int last = list(pane).rows().rowCount() - 1;
    const QRect row = list(pane).visualRect(list(pane).rows().index(std::min(before, last)));
    const int line = before == 0 ? 1 : before > last ? row.bottom() + 1 : row.top();
    const QImage seen = list(pane).viewport()->grab().toImage();
    const QRgb ink = list(pane).palette().color(QPalette::Active, QPalette::Text).rgb();
    return seen.pixel(seen.width() / 2, line) == ink && seen.pixel(1, line + 2) == ink &&
           seen.pixel(seen.width() - 2, line + 2) == ink;
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
    for (const bool again : {false, true}) {
      QDragEnterEvent enter(at, both, held->mimeData(), Qt::LeftButton, modifiers);
      QApplication::sendEvent(target, &enter);
      if (!enter.isAccepted()) return Qt::IgnoreAction;
      QDragMoveEvent move(at, both, held->mimeData(), Qt::LeftButton, modifiers);
      QApplication::sendEvent(target, &move);
      EXPECT_TRUE(showsPlace(to, before));
      QDragLeaveEvent leave;
      if (!again) QApplication::sendEvent(target, &leave);
      EXPECT_EQ(showsPlace(to, before), again);
    }
    QDropEvent drop(at, both, held->mimeData(), Qt::LeftButton, modifiers);
    QApplication::sendEvent(target, &drop);
    return drop.dropAction();
  }

  std::function<void()> meanwhile_;  // between a drag and its drop
};

// Catches commands at wrong places, a selection that stays behind, and changes of more steps than one.
TEST_F(ManyCommandsTest, EachKeyIsOneStepAndTakesTheSelectionAlong) {
  const auto up = Qt::ALT | Qt::Key_Up, down = Qt::ALT | Qt::Key_Down;
  const QKeyCombination twice = Qt::CTRL | Qt::Key_D, cut = Qt::CTRL | Qt::Key_X, remove = Qt::Key_Delete;
  const struct {
    const char* chosen;
    QKeyCombination key;
    const char *order, *selected;
  } cases[] = {{"cd", up, "acdbefgh", "cd"},      {"cd", down, "abecdfgh", "cd"},
               {"bdf", up, "abdfcegh", "bdf"},    {"bdf", down, "acebdfgh", "bdf"},
               {"ac", up, "acbdefgh", "ac"},      {"fh", down, "abcdegfh", "fh"},
               {"bd", twice, "abcdbdefgh", "bd"}, {"bcf", remove, "adegh", "d"},
               {"gh", remove, "abcdef", ""},      {"ce", cut, "abdfgh", "d"}};
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.chosen) + " -> " + c.order);
    select(Pane::kA, c.chosen);
    press(Pane::kA, c.key);
    EXPECT_EQ(letters(Pane::kA), c.order);
    EXPECT_EQ(selected(Pane::kA).substr(0, 3), c.selected);
    press(Pane::kA, Qt::CTRL | Qt::Key_Z);
    EXPECT_EQ(letters(Pane::kA), "abcdefgh") << "one step";
    EXPECT_EQ(selected(Pane::kA), c.chosen);
    EXPECT_FALSE(edited(Pane::kA));
  }
  for (const auto& [chosen, key] : {std::pair("ab", up), std::pair("gh", down)}) {
    select(Pane::kA, chosen);
    press(Pane::kA, key);
    EXPECT_FALSE(edited(Pane::kA)) << "it is there already: " << chosen;
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
  const auto key = [&](QKeyCombination pressed) {
    press(Pane::kA, pressed);
    return selected(Pane::kA);
  };
  list(Pane::kA).setFocus();
  EXPECT_EQ(click(2, {}), "c");
  EXPECT_EQ(click(4, Qt::ShiftModifier), "cde");
  EXPECT_EQ(click(1, Qt::ShiftModifier), "bc");
  EXPECT_EQ(key(Qt::SHIFT | Qt::Key_Up), "abc");
  for (const auto& [start, end] :
       {std::pair{Qt::Key_Home, Qt::Key_End}, {Qt::Key_PageUp, Qt::Key_PageDown}}) {
    EXPECT_EQ(key(Qt::SHIFT | start), "abc");
    EXPECT_EQ(key(Qt::SHIFT | end), "cdefgh");
  }
  EXPECT_EQ(click(6, Qt::ControlModifier), "cdefh");
  EXPECT_EQ(key(Qt::Key_Down), "h");
  select(Pane::kA, "ab");
  key(Qt::ALT | Qt::Key_Down);
  EXPECT_EQ(key(Qt::SHIFT | Qt::Key_Down), "ab") << "from the first of those that the program has selected";
  EXPECT_EQ(key(Qt::CTRL | Qt::Key_A), "cabdefgh");
  QTest::mouseClick(viewport, Qt::LeftButton, Qt::NoModifier, {20, viewport->height() - 3});
  EXPECT_EQ(selected(Pane::kA), "");
  EXPECT_EQ(key(Qt::SHIFT | Qt::Key_End), "h") << "nothing is left of what was selected before";
}

// Catches commands that lose what nobody knows on their way, and a clipboard that only this window can read.
TEST_F(ManyCommandsTest, WhatIsCopiedComesWholeWhereItIsWanted) {
  select(Pane::kA, "bd");
  press(Pane::kA, Qt::CTRL | Qt::Key_C);
  EXPECT_FALSE(edited(Pane::kA));
  select(Pane::kB, "w");
  press(Pane::kB, Qt::CTRL | Qt::Key_V);
  EXPECT_EQ(letters(Pane::kB), "uvbdwx") << "in front of the selected one";
  EXPECT_EQ(selected(Pane::kB), "bd");
  const std::string bytes = held(Pane::kB);
  EXPECT_THAT(bytes, testing::ContainsRegex("QMF1.b\"[^>]*own=\"kept\""));
  // As another program hands it over.
  QGuiApplication::clipboard()->setText(QGuiApplication::clipboard()->text());
  select(Pane::kB, "");
  press(Pane::kB, Qt::CTRL | Qt::Key_V);
  EXPECT_EQ(letters(Pane::kB), "uvbdwxbd");
  EXPECT_THAT(told(), StartsWith("2 commands pasted"));
  driver().press(b_.discardChanges);
  driver().choose(b_.macros, "992");
  driver().control<QWidget>(b_.macros).setFocus();
  QTest::keyClick(WindowDriver::keyboard(), Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(letters(Pane::kB), "bd") << "an empty macro takes them, too";
}

// Catches a paste that leaves a part, or a refusal without a word.
TEST_F(ManyCommandsTest, WhatCannotBeTakenOverChangesNothing) {
  select(Pane::kA, "a");
  press(Pane::kA, Qt::CTRL | Qt::Key_C);
  const std::string good = QGuiApplication::clipboard()->text().toStdString();
  std::string foreign = good;
  foreign.replace(foreign.find("kept"), 4, "\xE2\x86\x92");
  const std::pair<const char*, std::string> cases[] = {{"other text", "three commands, please"},
                                                       {"nothing", ""},
                                                       {"cut off", good.substr(0, good.size() / 2)},
                                                       {"a letter that the target lacks", foreign}};
  const std::string before = held(Pane::kB);
  select(Pane::kB, "w");
  for (const auto& [what, text] : cases) {
    QGuiApplication::clipboard()->setText(QString::fromStdString(text));
    press(Pane::kB, Qt::CTRL | Qt::Key_V);
    EXPECT_THAT(told(), StartsWith("NOT pasted (")) << what;
    EXPECT_EQ(held(Pane::kB), before) << what;
    EXPECT_EQ(selected(Pane::kB), "w") << what;
  }
  EXPECT_FALSE(edited(Pane::kB));
}

// Catches drops at wrong places, a source that keeps what was moved, and one that gives away what was copied.
TEST_F(ManyCommandsTest, ADragGoesToTheExactPlace) {
  const struct {
    Pane to;
    int before;
    Qt::KeyboardModifiers modifiers;
    Qt::DropAction action;
    const char* order;
  } cases[] = {{Pane::kA, 7, {}, Qt::MoveAction, "adefgbch uvwx"},
               {Pane::kA, 0, {}, Qt::MoveAction, "bcadefgh uvwx"},
               {Pane::kA, 8, Qt::ControlModifier, Qt::CopyAction, "abcdefghbc uvwx"},
               {Pane::kB, 1, {}, Qt::CopyAction, "abcdefgh ubcvwx"},
               {Pane::kB, 4, Qt::ShiftModifier, Qt::MoveAction, "adefgh uvwxbc"}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.order);
    select(Pane::kA, "bc");
    EXPECT_EQ(drag(Pane::kA, 1, c.to, c.before, c.modifiers), c.action);
    EXPECT_EQ(bothLetters(), c.order) << told();
    EXPECT_EQ(selected(c.to), "bc");
    for (const Pane pane : kPanes) {
      list(pane).setFocus();
      press(pane, Qt::CTRL | Qt::Key_Z);
    }
    EXPECT_EQ(bothLetters(), "abcdefgh uvwx") << "one step a pane";
  }
  meanwhile_ = [this] { press(Pane::kA, Qt::Key_Delete); };
  select(Pane::kA, "bc");
  drag(Pane::kA, 1, Pane::kB, 1, Qt::ShiftModifier);
  EXPECT_EQ(bothLetters(), "adefgh uvwx") << "others stand there now";
}

// Catches commands that change, and steps that are undone, while somebody types elsewhere.
TEST_F(ManyCommandsTest, KeysInAFieldForTextAreNotForTheCommands) {
  removeFirst(a_);
  list(Pane::kA).setFocus();
  press(Pane::kA, Qt::CTRL | Qt::Key_F);
  auto* const field = qobject_cast<QLineEdit*>(QApplication::focusWidget());
  ASSERT_NE(field, nullptr);
  QTest::keyClicks(field, "x");
  for (const QKeyCombination key : {Qt::CTRL | Qt::Key_D, Qt::ALT | Qt::Key_Up, Qt::ALT | Qt::Key_Down,
                                    Qt::CTRL | Qt::Key_X, Qt::CTRL | Qt::Key_Z})
    QTest::keyClick(field, key.key(), key.keyboardModifiers());
  EXPECT_EQ(field->text(), "") << "it has an undo of its own";
  EXPECT_EQ(letters(Pane::kA), "bcdefgh") << told();
}

// Catches a refusal that does not tell why.
TEST_F(ManyCommandsTest, MoreThanCanBeCarriedIsSaidToBeTooMany) {
  fixture_.site.write(macroPath(994), macroOf(std::string(5001, 'n')));
  driver().choose(a_.workplaces, "Workplace 1");
  driver().choose(a_.macros, "994");
  press(Pane::kA, Qt::CTRL | Qt::Key_A);
  press(Pane::kA, Qt::CTRL | Qt::Key_C);
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
  EXPECT_EQ(selected(a_.macros), "");
  select(Pane::kA, "y");
  press(Pane::kA, Qt::Key_Delete);
  drop();
  EXPECT_THAT(told(), StartsWith("NOT opened"));
  std::filesystem::remove(file.toStdString());
  std::string place;
  const auto takeUp = [&](QDialog& dialog) {
    for (const auto* label : dialog.findChildren<QLabel*>()) place += label->text().toStdString() + '\n';
    WindowDriver::click(dialog, "OK");
  };
  startAgain(takeUp);
  EXPECT_THAT(place, HasSubstr(file.toStdString())) << "a crash takes nothing";
  fixture_.site.messages.answer = false;
  driver().press(a_.discardChanges);
  EXPECT_EQ(letters(Pane::kA), "xz") << "what it was is gone";
  fixture_.site.messages.answer = true;
  driver().press(a_.discardChanges);
  EXPECT_EQ(told(), "changes discarded: the open macro; the history keeps them");
  fixture_.site.write(file.toStdString(), macroOf("xyz"));
  drop();
  select(Pane::kA, "y");
  press(Pane::kA, Qt::Key_Delete);
  startAgain(takeUp);
  for (const char* const left : {"xyz", "xz", "xyz"}) {
    if (letters(Pane::kA) == "xz")
      driver().press(a_.discardChanges);
    else
      press(Pane::kA, Qt::CTRL | Qt::Key_Z);
    EXPECT_EQ(letters(Pane::kA), left) << told();
    list(Pane::kA).setFocus();
  }
  EXPECT_FALSE(edited(Pane::kA));
  driver().choose(a_.applications, "Evening News");
  drop();
  select(Pane::kA, "y");
  press(Pane::kA, Qt::Key_Delete);
  driver().press(a_.saveChanges);
  WindowDriver::answerNext(filledIn({{"position", "995"}}));
  takeFromMenu(Qt::Key_Down);
  EXPECT_THAT(told(), StartsWith("saved: 995"));
  EXPECT_EQ(read(macroPath(995)), held(Pane::kA));
  EXPECT_EQ(selected(a_.macros), "995 - m");
  EXPECT_FALSE(edited(Pane::kA));
  startAgain();
  open(a_, "995");
  list(Pane::kA).setFocus();
  press(Pane::kA, Qt::CTRL | Qt::Key_Z);
  EXPECT_EQ(letters(Pane::kA), "xyz") << "the steps go with the macro to its new place";
}

// Catches the bytes of one macro saved under the place that was chosen for another.
TEST_F(ManyCommandsTest, APlaceThatIsChosenForAnotherMacroIsNotUsed) {
  open(a_, "990");
  const std::string before = read(macroPath(995));
  WindowDriver::answerNext([&](QDialog& dialog) {
    driver().choose(a_.macros, "991");
    WindowDriver::filledIn({{"position", "995"}})(dialog);
  });
  press(Pane::kA, Qt::CTRL | Qt::SHIFT | Qt::Key_S);
  takeFromMenu(Qt::Key_Down);
  EXPECT_THAT(told(), StartsWith("NOT saved: the pane shows another macro"));
  EXPECT_EQ(read(macroPath(995)), before);
}

// Catches a key file, or a macro that cannot be saved whole, that is offered more than to be copied from.
TEST_F(ManyCommandsTest, WhatCannotBeEditedOffersCopyOnly) {
  fixture_.site.write(macroPath(993), "<macro name=''><data><cmd fid='QMF1.y'workplace='1'/></data></macro>");
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
  driver().choose(a_.macros, "993");
  driver().clickRow(a_.commands, 0);
  EXPECT_THAT(offered(), StartsWith("delete,update data,Copy,Select All,"));
  drag(Pane::kA, 0, Pane::kB, 1, Qt::ShiftModifier);
  EXPECT_THAT(told(), StartsWith("NOT moved"));
  EXPECT_EQ(letters(Pane::kB), "uvwx") << "refused before anything changes";
  select(Pane::kB, "v");
  EXPECT_EQ(drag(Pane::kB, 1, Pane::kA, 0), Qt::IgnoreAction);
}

// Catches a dialog that closes, forgets what was chosen, or reverses what one button inserts one after
// another; and a last one, with which it closes, that goes elsewhere.
TEST_F(ManyCommandsTest, TheDialogThatIsKeptOpenGoesOnBehindTheLastOne) {
  select(Pane::kA, "a");
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
    EXPECT_EQ(list(Pane::kA).selectedRows(), std::vector<int>{2});
    user.choose("found", "ME 2 Key 1 On");
    user.choose("choices", "On");
    user.click("insertStart");
    user.click("keepOpen");
    user.click("insertSelected");
    EXPECT_FALSE(dialog.isVisible());
  });
  EXPECT_EQ(keys(Pane::kA), "11241abcdefgh3");
  list(Pane::kA).clearSelection();
  driver().press(a_.newCorvane, [](QDialog& dialog) {
    const DialogDriver user(dialog);
    user.type("words", "ME2.KEY4.ON.SET");
    user.key(Qt::Key_Return);
    user.choose("choices", "On");
    user.click("keepOpen");
    EXPECT_FALSE(user.enabled("insertSelected"));
    for (const char* button : {"insertEnd", "insertSelected", "insertSelected"}) user.click(button);
    dialog.reject();
  });
  EXPECT_EQ(keys(Pane::kA), "11241abcdefgh3444");
  EXPECT_EQ(list(Pane::kA).selectedRow(), 15) << "in front of the one that was inserted first";
}

}  // namespace
}  // namespace tessaly
