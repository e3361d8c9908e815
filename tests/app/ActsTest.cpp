// The menus, what finds their entries, and the guide that they lead to.
#include <gmock/gmock.h>

#include <QScrollArea>
#include <QScrollBar>
#include <QTextBrowser>
#include <QTreeWidget>

#include "app/ActFinder.h"
#include "app/Acts.h"
#include "app/Appearance.h"
#include "app/GuideWindow.h"
#include "app/HelpTopics.h"
#include "app/Language.h"
#include "app/ScreenFit.h"
#include "tests/app/EveryDialog.h"

namespace tessaly {
namespace {

class ActsTest : public WindowTest {
 protected:
  [[nodiscard]] std::string whyNot(const char* name) { return obstacleOf(action(name)).toStdString(); }
};

// Catches a need that says otherwise than the control of the pane, an entry that acts on the other pane, and
// a grey entry without a reason.
TEST_F(ActsTest, EntriesFollowThePaneAndSayWhatIsMissing) {
  const struct {
    std::function<void()> work;
    const char* act;
    const char* whyNot;
  } steps[] = {
      {[] {}, "createMacro", "no workplace is chosen"},
      {[&] { driver().choose(a_.applications, "Evening News"); }, "renameMacro", "no macro is chosen"},
      {[&] { driver().choose(a_.macros, "001"); }, "cut", "no command is selected"},
      {[&] { driver().clickRow(a_.commands, 0); }, "save", "there are no unsaved changes"},
      {[&] { action("deleteCommand").trigger(); }, "createMacro",
       "the pane has unsaved changes: save or discard them first"},
      {[&] { driver().choose(b_.applications, "Evening News"); }, "save", "there are no unsaved changes"},
      {[&] { driver().choose(b_.macros, "002"); }, "undo", "there is no step to undo"},
      {[&] { action("otherPane").trigger(); }, "save", ""},
      {[&] { action("save").trigger(); }, "renameMacro", ""},
  };
  for (const auto& step : steps) {
    step.work();
    EXPECT_EQ(whyNot(step.act), step.whyNot) << step.act;
    for (const Act& act : acts())
      EXPECT_NE(whyNot(act.name), "it is not possible in this pane now") << act.name << " at " << step.act;
  }
  EXPECT_THAT(told(), testing::StartsWith("saved:"));
}

// Catches words that lead elsewhere, a language that is not asked, and a grey act that Enter runs.
TEST_F(ActsTest, AnActIsFoundByItsWordsAndRunOnlyWhenItIsPossible) {
  ActFinder finder(*fixture_.window);
  auto& words = *finder.findChild<QLineEdit*>();
  auto& found = *finder.findChild<QTreeWidget*>();
  const std::pair<const char*, const char*> cases[] = {
      {"sa as", "saveAs"},           {"as sav", "saveAs"},
      {"all macros find", "search"}, {"what changed", "whatChanged"},
      {"edit undo", "undo"},         {"macro undo", "undoMacro"}};
  for (const auto& [typed, name] : cases) {
    words.setText(QLatin1String(typed));
    ASSERT_NE(finder.chosen(), nullptr) << typed;
    EXPECT_EQ(finder.chosen()->objectName().toStdString(), name) << typed;
  }
  words.setText(QStringLiteral("no such thing"));
  EXPECT_EQ(finder.chosen(), nullptr);
  words.setText(QStringLiteral("rename"));
  EXPECT_EQ(found.topLevelItem(0)->text(2), QStringLiteral("no macro is chosen"));
  QTest::keyClick(&words, Qt::Key_Return);
  EXPECT_EQ(finder.result(), QDialog::Rejected);
  words.setText(QStringLiteral("history..."));
  QTest::keyClick(&words, Qt::Key_Return);
  EXPECT_EQ(finder.result(), QDialog::Accepted);
}

// Catches a choice for the eyes that one pane does not follow, or that is another one at the next start.
TEST_F(ActsTest, WhatTheEyesWantHoldsInBothPanesAndIsKept) {
  Preferences preferences(QString::fromStdString((fixture_.site.root.path() / "tessaly.ini").string()));
  fixture_.setPreferences(preferences);
  const auto seen = [&] {
    QString told =
        paletteName(currentPalette()) + ' ' + QString::number(textSize()) + ' ' + keptLanguage(preferences);
    for (const Pane pane : kPanes) {
      auto& commands = dynamic_cast<CommandList&>(driver().list(ids(pane).commands));
      if (commands.rows().showsDestinations()) told += " stripes";
      if (commands.parent()->findChild<QWidget*>(QStringLiteral("subject"))->isVisible()) told += " heading";
    }
    return told.toStdString();
  };
  fixture_.open();
  EXPECT_EQ(seen(), "desktop 100  heading heading");
  for (const char* act : {"languageGerman", "headings", "destinationStripes", "largerText", "largerText",
                          "smallerText", "coloursDark"})
    action(act).trigger();
  EXPECT_EQ(seen(), "dark 110 de stripes stripes");
  applyPalette(PaletteChoice::kDesktop);
  action("usualText").trigger();
  action("largerText").trigger();
  applyTextSize(kUsualTextSize);
  fixture_.open();
  restoreTextSize(preferences);
  EXPECT_EQ(preferences.palette().toStdString() + ": " + seen(), "dark: desktop 110 de stripes stripes");
  applyTextSize(kUsualTextSize);
}

// Catches a topic that leads nowhere.
TEST_F(ActsTest, EveryPlaceOfTheGuideIsThere) {
  fixture_.window->showGuide(QStringLiteral("keys.html"));
  auto* guide = fixture_.window->findChild<GuideWindow*>();
  ASSERT_NE(guide, nullptr);
  auto& pages = *guide->findChild<QTextBrowser*>();
  EXPECT_TRUE(pages.toPlainText().startsWith(QLatin1String("Keys")));
  const std::pair<const char*, const char*> ways[] = {
      {"contents", "guide"}, {"back", "keys"}, {"forward", "guide"}, {"keys", "keys"}};
  for (const auto& [button, page] : ways) {
    QTest::mouseClick(guide->findChild<QAbstractButton*>(QLatin1String(button)), Qt::LeftButton);
    EXPECT_EQ(pages.source().fileName().toStdString(), std::string(page) + ".html");
  }
  EXPECT_EQ(helpFor(&driver().list(a_.commands)), QStringLiteral("guide.html#delete-move-and-copy-commands"));
  EXPECT_EQ(helpFor(guide->focusWidget()), QStringLiteral("guide.html"));
  for (const HelpTopic& topic : helpTopics()) {
    const QStringList place = QString::fromLatin1(topic.place).split(QLatin1Char('#'));
    QFile page(QStringLiteral(":/guide/") + place.first());
    ASSERT_TRUE(page.open(QIODevice::ReadOnly)) << topic.place;
    const QString anchor = place.size() > 1 ? QStringLiteral("name=\"%1\"").arg(place[1]) : QString();
    EXPECT_TRUE(QString::fromUtf8(page.readAll()).contains(anchor)) << topic.about << ": " << topic.place;
  }
}

// Catches panes that scroll on a screen of full HD at twice the size, a dialog that is cut off on a small
// one, and one that loses its buttons.
TEST(ScreenFitTest, EveryWindowFitsASmallScreen) {
  const QRect screen(0, 0, 958, 510), small(0, 0, 640, 400);  // inside their frames
  applyPalette(PaletteChoice::kLight);
  EveryDialog every;
  const auto within = [](const QRect& room, const QWidget& part) {
    return room.contains(QRect(part.mapToGlobal(QPoint()), part.size()));
  };
  MainWindow& window = *every.fixture.window;
  window.resize(screen.size());
  QApplication::processEvents();
  const auto& panes = *window.findChild<QScrollArea*>(QStringLiteral("panesArea"));
  EXPECT_EQ(panes.horizontalScrollBar()->maximum(), 0);
  EXPECT_EQ(panes.verticalScrollBar()->maximum(), 0);
  fitInto(window, small);
  EXPECT_TRUE(small.contains(window.frameGeometry()));
  EXPECT_TRUE(within(small, *window.findChild<QWidget*>(QStringLiteral("strip"))));
  every.visit([&](QDialog& dialog, const char* name) {
    dialog.show();
    fitInto(dialog, screen);
    QApplication::processEvents();
    for (const QLatin1String last : {QLatin1String("cancel"), QLatin1String("close")}) {
      const auto* const button = dialog.findChild<QPushButton*>(last);
      EXPECT_TRUE(button == nullptr || within(screen, *button)) << name;
    }
    fitInto(dialog, small);
    QApplication::processEvents();
    EXPECT_TRUE(small.contains(dialog.frameGeometry())) << name;
    dialog.hide();
  });
  applyPalette(PaletteChoice::kDesktop);
}

}  // namespace
}  // namespace tessaly
