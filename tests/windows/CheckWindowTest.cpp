// The list "Check" over a folder of a few macros: what it tells, leads to, follows and switches off.
#include <filesystem>

#include <QMenu>
#include <QProgressBar>
#include <QSignalSpy>
#include <QTimer>
#include <QTreeView>
#include <QTreeWidget>

#include "review/MacroCheck.h"
#include "tests/windows/ReviewFixture.h"
#include "windows/CheckWindow.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* kFile = "c:\\m\\macroWP1\\macro001.mac";

// A value beyond its limits, a command twice, a function that there is not.
std::string faulty(const char* value = "7") {
  const std::string half = kClip;
  std::string wrong = half;
  wrong.replace(wrong.find("0.5"), 3, value);
  wrong.replace(wrong.find("KEY1"), 4, "KEY2");
  return macroOf("One", wrong + half + half + R"(<cmd fid="QMF1.NO.SUCH" workplace="1"/>)");
}

struct CheckWindowTest : ReviewFixture {
  CheckWindowTest() {
    site.write(kFile, faulty());
    site.write("c:\\m\\macroWP1\\macro002.mac", macroOf("One", ""));
    site.write("c:\\m\\macroWP1\\macro003.mac", "no macro");
    std::filesystem::create_directories(site.root.resolve("c:\\empty"));
    std::filesystem::create_directories(site.root.resolve(kCheckFile).parent_path());
    scopes = {{ReviewScope::Kind::kFolder, "the folder", FolderContent{"c:\\m"}}};
    window.present();
    QApplication::setActiveWindow(&window);
  }
  QWidget& top() override { return window; }
  // "error 2 limits" a row.
  [[nodiscard]] std::vector<std::string> rows() {
    std::vector<std::string> rows;
    for (int row = 0; row < view.model()->rowCount(); ++row) {
      const auto cell = [&](int column) { return view.model()->index(row, column).data().toString(); };
      rows.push_back(
          (cell(0) + ' ' + cell(CheckModel::kCommand) + ' ' + cell(CheckModel::kRule)).toStdString());
    }
    return rows;
  }
  void look(ReviewScope::Kind kind = ReviewScope::Kind::kFolder) {
    window.check(kind);
    awaitEnd();
  }
  void choose(int row) { view.setCurrentIndex(view.model()->index(row, 0)); }
  // What a pane shows of macro 001 now.
  void follow(const std::string& bytes, MacroPlace place = {kFile, {}, 0, {}}) {
    const Macro macro = *Macro::read(bytes);
    MacroCheck check({dictionary(), lists});
    window.follow({.place = std::move(place), .shown = {}, .number = {}, .name = {}}, macro.check(),
                  check.check(macro));
  }

  const int frameRate = 25;
  CheckWindow window{{site.root, dictionary(), lists, frameRate, [this] { return scopes; }, words}};
  QTreeView& view = child<QTreeView>("findings");
};

TEST_F(CheckWindowTest, TellsWhatIsWrongTheGravestFirst) {
  EXPECT_EQ(shutIn(window), "fix open; cancel progress");
  window.check(ReviewScope::Kind::kFolder);
  EXPECT_EQ(shutIn(window), "fix open; ");
  awaitEnd();
  EXPECT_EQ(headingsOf(*view.model()),
            "Severity | Macro | Command | Rule | What is wrong | What would be right");
  EXPECT_THAT(rows(), ElementsAre("error 1 limits", "error 4 unknown-function", "error  unreadable",
                                  "warning 3 repeated", "warning  name-twice", "note  empty-macro"));
  EXPECT_THAT(
      toldBy(*view.model())[0],
      testing::StartsWith(
          R"(error [] ! | 001 - One [macroWP1\macro001.mac] | 1 [] > | limits [a value lies beyond its limits] | VALUE: "7" is beyond the limits [] | 1)"));
  EXPECT_THAT(cutOff(view), testing::SizeIs(1)) << "behind the border of the window";
  EXPECT_EQ(said("outcome"), "3 macros looked at in the folder: 3 errors, 2 warnings, 1 notes.");
  EXPECT_EQ(said("off"), "All rules count.");
  EXPECT_EQ(view.currentIndex().row(), 0);
  EXPECT_EQ(child<QProgressBar>("progress").value(), 3);
  scopes = {{ReviewScope::Kind::kFolder, "nowhere", FolderContent{"c:\\empty"}}};
  QTest::keyClick(&window, Qt::Key_F5);
  awaitEnd();
  EXPECT_EQ(said("outcome"), "There are no macros in nowhere.");
  EXPECT_EQ(shutIn(window), "fix open; cancel progress");
  scopes = {panel<LostShelf>()};
  look(ReviewScope::Kind::kPanel);
  EXPECT_EQ(said("outcome"), "NOT checked: the panel (the line was lost)");
  scopes = {panel<StuckShelf>()};
  window.check(ReviewScope::Kind::kPanel);
  ASSERT_TRUE(QTest::qWaitFor([this] { return child<QProgressBar>("progress").value() == 1; }));
  EXPECT_EQ(child<QProgressBar>("progress").maximum(), 3);
  click("cancel");
  awaitEnd();
  EXPECT_EQ(said("outcome"), "Cancelled. Nothing found: 1 macros looked at in the panel.");
  scopes.clear();
  look();
  EXPECT_THAT(said("outcome"), HasSubstr("There is nothing to be checked"));
}

// By Enter, the button and the menu; a row that has no fix offers none.
TEST_F(CheckWindowTest, LeadsToTheCommandAndAsksForItsFix) {
  look();
  QSignalSpy opened(&window, &CheckWindow::openWanted), fixed(&window, &CheckWindow::fixWanted);
  const auto menu = [this](const char* entry) {
    std::string offered;
    QTimer::singleShot(0, &window, [&] {
      auto* shown = qobject_cast<QMenu*>(QApplication::activePopupWidget());
      for (QAction* action : shown->actions()) {
        offered += action->text().toStdString() + (action->isEnabled() ? " " : "- ");
        if (action->text() == QLatin1String(entry)) action->trigger();
      }
      shown->close();
    });
    emit view.customContextMenuRequested({5, 5});
    QCoreApplication::processEvents();
    return offered;
  };
  choose(1);
  QTest::keyClick(&view, Qt::Key_Return);
  EXPECT_EQ(menu("&Open"), "&Open &Fix-  &Switch Off \"unknown-function\" ");
  click("open");
  ASSERT_EQ(opened.count(), 3);
  EXPECT_EQ(opened[0][0].value<ReviewedPlace>().place.file, kFile);
  EXPECT_EQ(opened[0][1].toInt(), 3);
  click("fix");
  menu("&Fix");
  EXPECT_EQ(fixed.count(), 0);
  choose(0);
  EXPECT_EQ(shutIn(window), "; cancel progress");
  EXPECT_EQ(menu("&Fix"), "&Open &Fix  &Switch Off \"limits\" ");
  click("fix");
  ASSERT_EQ(fixed.count(), 2);
  EXPECT_EQ(fixed[0][0].value<FindingRow>().finding.command, 0);
  QSignalSpy changed(&window, &CheckWindow::rulesChanged);
  menu("&Switch Off \"limits\"");
  awaitEnd();
  EXPECT_EQ(site.read(kCheckFile), "off limits\n");
  EXPECT_EQ(changed.count(), 1);
  EXPECT_EQ(said("off"), "Off for this site: limits");
}

TEST_F(CheckWindowTest, FollowsWhatAPaneShowsOfAMacro) {
  look();
  const std::vector<std::string> all = rows();
  choose(1);
  const std::string chosen = toldBy(view.currentIndex().siblingAtColumn(CheckModel::kWrong));
  follow(faulty());
  follow(faulty("0.5"), {"c:\\m\\macroWP1\\macro009.mac", {}, 0, {}});
  follow(faulty("0.5"), {});
  EXPECT_EQ(rows(), all) << "nothing that is listed has changed";
  follow(faulty("0.5"), {"C:\\M\\macroWP1\\macro001.mac", {}, 0, {}});
  EXPECT_THAT(rows(), ElementsAre("error  unreadable", "error 4 unknown-function", "warning  name-twice",
                                  "warning 3 repeated", "note  empty-macro"));
  EXPECT_EQ(toldBy(view.currentIndex().siblingAtColumn(CheckModel::kWrong)), chosen);
  EXPECT_EQ(said("outcome"), "3 macros looked at in the folder: 2 errors, 2 warnings, 1 notes.");
  window.tell("fixed: command 1");
  follow(macroOf("One", kClip));
  EXPECT_EQ(view.currentIndex().row(), 1);
  follow(macroOf("One", kClip), {"c:\\m\\macroWP1\\macro002.mac", {}, 0, {}});
  EXPECT_THAT(rows(), ElementsAre("error  unreadable", "warning  name-twice"));
  EXPECT_EQ(said("outcome"), "fixed: command 1");
}

// What has no place of its own is known by the pane, until that opens something else.
TEST_F(CheckWindowTest, FollowsAPaneByWhatItHasOpened) {
  const auto shown = [this](int opening, const std::string& bytes) {
    const Macro macro = *Macro::read(bytes);
    const ReviewedPlace place{
        .place = {}, .shown = {}, .number = {}, .name = "Loose", .pane = Pane::kA, .opening = opening};
    scopes = {{ReviewScope::Kind::kPane, "the pane", OpenContent{place, macro, true}}};
    MacroCheck check({dictionary(), lists});
    window.follow(place, macro.check(), check.check(macro));
  };
  shown(1, faulty());
  look(ReviewScope::Kind::kPane);
  EXPECT_THAT(rows(), testing::SizeIs(3));
  EXPECT_EQ(said("outcome"), "1 macros looked at in the pane: 2 errors, 1 warnings, 0 notes.");
  shown(2, macroOf("Other", kClip));
  EXPECT_THAT(rows(), testing::SizeIs(3));
  shown(1, macroOf("Other", kClip));
  EXPECT_THAT(rows(), ElementsAre());
}

TEST_F(CheckWindowTest, RulesAreSwitchedForTheSite) {
  site.write(kCheckFile, "# ours\noff limits\noops\n");
  look();
  const std::string file(kCheckFile);
  EXPECT_EQ(said("off"), "Off for this site: limits\n" + file + ": line 3 is no \"off RULE\"");
  const auto turn = [this](const std::function<void(QTreeWidget&)>& work, Qt::Key key) {
    QTimer::singleShot(0, &window, [&] {
      QWidget* dialog = QApplication::activeModalWidget();
      work(*dialog->findChild<QTreeWidget*>());
      QTest::keyClick(dialog, key);
    });
    click("rules");
    awaitEnd();
  };
  turn(
      [](QTreeWidget& rules) {
        EXPECT_EQ(rules.topLevelItemCount(), static_cast<int>(kCheckRules));
        EXPECT_EQ(toldBy(*rules.model())[13], "limits - | error ! | a value lies beyond its limits []");
        EXPECT_EQ(rules.currentItem(), rules.topLevelItem(0));
        QTest::keyClick(&rules, Qt::Key_Space);
      },
      Qt::Key_Escape);
  EXPECT_EQ(site.read(kCheckFile), "# ours\noff limits\noops\n");
  turn(
      [](QTreeWidget& rules) {
        for (const int row : {0, 13}) {
          rules.setCurrentItem(rules.topLevelItem(row));
          QTest::keyClick(&rules, Qt::Key_Space);
        }
      },
      Qt::Key_Return);
  EXPECT_EQ(site.read(kCheckFile), "# ours\noops\noff unreadable\n");
  std::filesystem::remove(site.root.resolve(kCheckFile));
  std::filesystem::create_directories(site.root.resolve(file + "\\x"));
  turn([](QTreeWidget& rules) { QTest::keyClick(&rules, Qt::Key_Space); }, Qt::Key_Return);
  EXPECT_THAT(said("outcome"), testing::StartsWith("The rules could not be written: "));
}

}  // namespace
}  // namespace tessaly
