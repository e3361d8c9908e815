// The menus, what finds their entries, and the guide that they lead to.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDir>
#include <QScrollArea>
#include <QScrollBar>
#include <QTextBrowser>
#include <QTreeWidget>

#include "app/ActFinder.h"
#include "app/Acts.h"
#include "app/Appearance.h"
#include "app/GuideWindow.h"
#include "app/HelpTopics.h"
#include "app/ScreenFit.h"
#include "app/WindowPlaces.h"
#include "tests/app/EveryDialog.h"

namespace tessaly {
namespace {

class ActsTest : public testing::Test {
 protected:
  [[nodiscard]] QAction& action(const char* name) {
    return *fixture_.window->menuBar()->findChild<QAction*>(QLatin1String(name));
  }
  [[nodiscard]] std::string whyNot(const char* name) { return obstacleOf(action(name)).toStdString(); }

  WindowFixture fixture_{offlineClient()};
  const PaneDescriptor::ControlIds& a_ = WindowFixture::ids(Pane::kA);
  const PaneDescriptor::ControlIds& b_ = WindowFixture::ids(Pane::kB);
};

// Catches a need that says otherwise than the control of the pane, an entry that acts on the other pane, and
// a grey entry without a reason.
TEST_F(ActsTest, EntriesFollowThePaneAndSayWhatIsMissing) {
  WindowDriver& driver = *fixture_.driver;
  const struct {
    std::function<void()> work;
    const char* act;
    const char* whyNot;
  } steps[] = {
      {[] {}, "createMacro", "no workplace is chosen"},
      {[&] { driver.choose(a_.applications, "Evening News"); }, "renameMacro", "no macro is chosen"},
      {[&] { driver.choose(a_.macros, "001"); }, "cut", "no command is selected"},
      {[&] { driver.clickRow(a_.commands, 0); }, "save", "there are no unsaved changes"},
      {[&] { action("deleteCommand").trigger(); }, "createMacro",
       "the pane has unsaved changes: save or discard them first"},
      {[&] { driver.choose(b_.applications, "Evening News"); }, "save", "there are no unsaved changes"},
      {[&] { driver.choose(b_.macros, "002"); }, "undo", "there is no step to undo"},
      {[&] { action("otherPane").trigger(); }, "save", ""},
      {[&] { action("save").trigger(); }, "renameMacro", ""},
  };
  for (const auto& step : steps) {
    step.work();
    EXPECT_EQ(whyNot(step.act), step.whyNot) << step.act;
    for (const Act& act : acts())
      EXPECT_NE(whyNot(act.name), "it is not possible in this pane now") << act.name << " at " << step.act;
  }
  EXPECT_EQ(fixture_.status().left(6), QStringLiteral("saved:"));
}

// Catches words that lead elsewhere, a language that is not asked, and a grey act that Enter runs.
TEST_F(ActsTest, AnActIsFoundByItsWordsAndRunOnlyWhenItIsPossible) {
  ActFinder finder(*fixture_.window);
  auto& words = *finder.findChild<QLineEdit*>();
  auto& found = *finder.findChild<QTreeWidget*>();
  const std::pair<const char*, const char*> cases[] = {{"sa as", "saveAs"},
                                                       {"as sav", "saveAs"},
                                                       {"all macros find", "search"},

                                                       {"what changed", "whatChanged"},

                                                       {"edit undo", "undo"},
                                                       {"macro undo", "undoMacro"}};
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

// Catches a topic that leads nowhere, and a link within the guide that is dead.
TEST_F(ActsTest, EveryPlaceOfTheGuideIsThere) {
  fixture_.window->showGuide(QStringLiteral("keys.html"));
  auto* guide = fixture_.window->findChild<GuideWindow*>();
  ASSERT_NE(guide, nullptr);
  auto& pages = *guide->findChild<QTextBrowser*>();
  EXPECT_TRUE(pages.toPlainText().startsWith(QLatin1String("Keys")));
  EXPECT_EQ(helpFor(&fixture_.driver->list(a_.commands)),
            QStringLiteral("guide.html#delete-move-and-copy-commands"));
  EXPECT_EQ(helpFor(guide->focusWidget()), QStringLiteral("guide.html"));
  std::map<QString, QString> texts;
  for (const QString& page : QDir(QStringLiteral(":/guide")).entryList({QStringLiteral("*.html")})) {
    QFile file(QStringLiteral(":/guide/") + page);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    texts[page] = QString::fromUtf8(file.readAll());
  }
  const auto there = [&](const QString& place) {
    const QString page = place.section(QLatin1Char('#'), 0, 0), anchor = place.section(QLatin1Char('#'), 1);
    return texts.contains(page) &&
           (anchor.isEmpty() || texts[page].contains(QStringLiteral("name=\"%1\"").arg(anchor)));
  };
  for (const HelpTopic& topic : helpTopics())
    EXPECT_TRUE(there(QLatin1String(topic.place))) << topic.about << ": " << topic.place;
  static const QRegularExpression kLink(QStringLiteral("href=\"([^\":/]+)\""));
  for (const auto& [page, text] : texts)
    for (auto links = kLink.globalMatch(text); links.hasNext();) {
      const QString link = links.next().captured(1);
      const bool within = link.startsWith(QLatin1Char('#'));
      if (!within && !link.contains(QLatin1String(".html"))) continue;
      EXPECT_TRUE(there(within ? page + link : link)) << page.toStdString() << ": " << link.toStdString();
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

// Catches a pane that opens elsewhere than it was left, and a panel that is connected by a start.
TEST_F(ActsTest, ThePanesComeBackWhereTheyWereLeft) {
  Preferences preferences(QString::fromStdString((fixture_.site.root.path() / "tessaly.ini").string()));
  fixture_.setPreferences(preferences);
  const WindowPlaces places(preferences);
  fixture_.open();
  fixture_.driver->choose(a_.applications, "Evening News");
  fixture_.driver->choose(a_.workplaces, "Workplace 1");
  fixture_.driver->choose(a_.macros, "002");
  const auto lines = fixture_.driver->texts(a_.commands);
  fixture_.driver->press(b_.panel);
  action("rehearse").trigger();
  fixture_.driver->close();
  EXPECT_FALSE(preferences.place("RehearseWindow").isEmpty()) << "it was open to the end";
  fixture_.open();
  EXPECT_EQ(fixture_.driver->texts(a_.commands), lines);
  EXPECT_TRUE(fixture_.driver->control<QAbstractButton>(b_.panel).isChecked());
  EXPECT_EQ(fixture_.driver->control<QPushButton>(b_.connectButton).text(), QStringLiteral("connect"));
}

}  // namespace
}  // namespace tessaly
