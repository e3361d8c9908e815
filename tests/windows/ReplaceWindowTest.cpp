#include <filesystem>
#include <utility>

#include <QComboBox>
#include <QPointer>
#include <QProgressBar>
#include <QSignalSpy>
#include <QTreeView>

#include "tests/windows/ReviewFixture.h"
#include "windows/ReplaceWindow.h"

namespace tessaly {
namespace {

constexpr const char* kOne = "c:\\w\\macro001.mac";
constexpr const char* kTwo = "c:\\w\\macro002.mac";
constexpr const char* kOpen = "c:\\w\\macro003.mac";

std::string macro(const char* first, const char* second) {
  std::string text = "<macro name='M'><data>";
  for (const char* goal : {first, second})
    text += std::string("\r\n<cmd fid='") + goal + ".A.SET'><param name='P' value='5'/></cmd>";
  return text + "</data></macro>";
}

class ReplaceWindowTest : public ReviewFixture {
 protected:
  ReplaceWindowTest() {
    scopes = {{ReviewScope::Kind::kFolder, "the folder", FolderContent{"c:\\w"}}};
    FunctionTemplate definition;
    definition.name = "A.SET";
    definition.description = "Size";
    definition.integers.emplace_back().name = "P";
    dictionary_.add(std::move(definition));
    dictionary_.finish();
    for (const char* file : {kOne, kTwo, kOpen}) site.write(file, macro("QMF1", "QMF1"));
    site.write("c:\\w\\macro004.mac", "no macro");
    site.write("c:\\w\\key01.upk", macro("QMF1", "QMF1"));
    site.write("c:\\w\\macro005.mac", macro("QMF2", "QMF2"));
    window_ = new ReplaceWindow(
        {.root = site.root,
         .knowledge =
             [this] {
               RulesOff off;
               off.set(off_);
               return CheckContext{dictionary_, lists, 25, off};
             },
         .scopes = [this] { return scopes; },
         .leftOut = [](const MacroPlace& place) { return place.file == kOpen ? "unsaved" : QString(); },
         .job = [this](const std::string& title) -> ReplaceJob {
           begun_ = true;
           return [this, title](std::vector<BatchItem> items, const std::stop_token&) {
             MacroHistory history(site.root);
             BatchPlaces places(site.root, history);
             MacroBatch batch(places, title, MacroChange::kEdit, MacroBatch::Mode::kAllOrNone,
                              std::move(items));
             return replacedBy(batch);
           };
         },
         .maySend = {},
         .whenFree = {},
         .failureText = words});
    window_->show();
    tree_ = &child<QTreeView>("changes");
  }
  ~ReplaceWindowTest() override { delete window_; }
  QWidget& top() override { return *window_; }

  void type(const char* field, const char* text) {
    child<QLineEdit>(field).selectAll();
    QTest::keyClicks(&child<QLineEdit>(field), text);
  }
  void preview(const char* from, const char* to) {
    type("from", from);
    type("to", to);
    QTest::keyClick(&child<QLineEdit>("to"), Qt::Key_Return);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !said("outcome").empty(); }));
  }
  QModelIndex command(int macro, int row, int column = 0) {
    return tree_->model()->index(row, column, tree_->model()->index(macro, 0));
  }
  void replace() {
    click("replace");
    ASSERT_TRUE(QTest::qWaitFor([this] { return !window_->writing(); }));
  }

  FunctionDictionary dictionary_;
  CheckRule off_ = CheckRule::kRepeated;
  bool begun_ = false;  // to write
  ReplaceWindow* window_;
  QTreeView* tree_;
};

TEST_F(ReplaceWindowTest, WritesWhatIsTickedAndNothingElse) {
  EXPECT_THAT(column(*child<QComboBox>("kind").model(), 0),
              testing::ElementsAre("Destination", "Segment", "Source", "Value"));
  preview("QMF1", "QMF2");
  ASSERT_EQ(tree_->model()->rowCount(), 4) << "with the file that cannot be read";
  EXPECT_EQ(said("outcome"),
            "4 commands can be changed; 6 macros looked at in the folder. Off for this site: repeated");
  EXPECT_EQ(headingsOf(*tree_->model()),
            "Command | Before | After | Findings, when what is ticked is changed");
  const std::string left = "003 - M [] | macro003.mac [] | unsaved [] | ";
  const std::string unread =
      "004 [] | macro004.mac [] | cannot be read: is not well formed: Error document empty. [] | ";
  EXPECT_THAT(toldBy(*tree_->model()),
              testing::ElementsAre("001 - M [] x | macro001.mac [] |  | ",
                                   "002 - M [] x | macro002.mac [] |  | ", left, unread));
  EXPECT_THAT(toldBy(*tree_->model(), tree_->model()->index(0, 0)),
              testing::ElementsAre("1 [] x | Mainframe1 - Size ==> 5 [] | Mainframe2 - Size ==> 5 [] | ",
                                   "2 [] x | Mainframe1 - Size ==> 5 [] | Mainframe2 - Size ==> 5 [] | "));
  EXPECT_THAT(
      toldBy(*tree_->model(), tree_->model()->index(2, 0)),
      testing::ElementsAre("1 [] | Mainframe1 - Size ==> 5 [] | Mainframe2 - Size ==> 5 [] | ", testing::_))
      << "what has unsaved changes is left out";
  EXPECT_TRUE(tree_->isExpanded(tree_->model()->index(1, 0)));
  EXPECT_THAT(cutOff(*tree_), testing::SizeIs(1)) << "why it cannot be read";
  EXPECT_EQ(shutIn(*window_), "parameter; cancel progress");
  QSignalSpy opened(window_, &ReplaceWindow::openWanted);
  for (const QModelIndex& row : {command(0, 1, 1), command(0, 1, 1).parent()}) {
    tree_->setCurrentIndex(row);
    QTest::keyClick(tree_, Qt::Key_Return);
  }
  ASSERT_EQ(opened.size(), 2);
  EXPECT_EQ(opened[0][0].value<ReviewedPlace>().place.file, kOne);
  EXPECT_EQ(opened[0][1].toInt() * 10 + opened[1][1].toInt(), 9) << "the second command, and the macro";
  tree_->setFocus();
  click(*tree_, command(0, 1, 1));
  QTest::keyClick(tree_, Qt::Key_Space);
  EXPECT_EQ(command(0, 1).parent().data(Qt::CheckStateRole), Qt::PartiallyChecked);
  QSignalSpy replaced(window_, &ReplaceWindow::replaced);
  replace();
  EXPECT_EQ(site.read(kOne), macro("QMF2", "QMF1"));
  EXPECT_EQ(site.read(kTwo), macro("QMF2", "QMF2"));
  EXPECT_EQ(site.read(kOpen), macro("QMF1", "QMF1"));
  ASSERT_EQ(replaced.size(), 1);
  EXPECT_EQ(replaced[0][1].value<std::vector<BatchTrace>>().size(), 2U) << "one undo for all";
  EXPECT_FALSE(enabled("replace")) << "it is done";
  EXPECT_EQ(said("outcome"), "Replaced in 2 macros; \"Undo\" in the menu \"Macro\" takes it back.");
  EXPECT_EQ(replaced[0][0], "replacement in 2 macros");
  EXPECT_THAT(toldBy(*tree_->model()),
              testing::ElementsAre("001 - M [] | macro001.mac [] | replaced [] | ",
                                   "002 - M [] | macro002.mac [] | replaced [] | ", left, unread));
}

// Else nothing could undo it.
TEST_F(ReplaceWindowTest, GoesOnlyOnceItHasToldWhatItHasWritten) {
  site.write(kOne,
             "<macro name='M'><data><cmd fid='QMF1.NONE'/></data></macro>");  // wrong, and asked of none
  preview("QMF1", "QMF2");
  QSignalSpy replaced(window_, &ReplaceWindow::replaced);
  const QPointer window = std::exchange(window_, nullptr);
  QTest::mouseClick(window->findChild<QPushButton*>("replace"), Qt::LeftButton);
  EXPECT_TRUE(QTest::qWaitFor([&] { return begun_; }));
  window->close();
  EXPECT_TRUE(QTest::qWaitFor([&] { return window.isNull(); }));
  EXPECT_EQ(replaced.size(), 1);
  EXPECT_EQ(site.read(kTwo), macro("QMF2", "QMF2"));
}

TEST_F(ReplaceWindowTest, FindingsAreThoseOfWhatIsTicked) {
  off_ = CheckRule::kNameTwice;
  preview("QMF1", "QMF2");
  const auto findings = [this] { return command(0, 0, ReplaceModel::kFindings).data().toString(); };
  EXPECT_EQ(findings(), "") << "a command repeats the one before it, now as before";
  for (const bool mends : {true, false}) {
    click(*tree_, command(0, 1, 1));
    QTest::keyClick(tree_, Qt::Key_Space);
    EXPECT_TRUE(QTest::qWaitFor([&] { return findings().startsWith("mends in command 2") == mends; }))
        << findings().toStdString();
  }
}

TEST_F(ReplaceWindowTest, SomebodyElsesChangeKeepsAllAsItWas) {
  preview("QMF1", "QMF2");
  site.write(kTwo, macro("QMF1", "QMF3"));
  QSignalSpy replaced(window_, &ReplaceWindow::replaced);
  replace();
  EXPECT_THAT(said("outcome"), testing::StartsWith("NOTHING was replaced: c:\\w\\macro002.mac"));
  EXPECT_EQ(toldBy(*tree_->model())[1], "002 - M [] x | macro002.mac [] |  | ");
  EXPECT_EQ(site.read(kOne), macro("QMF1", "QMF1"));
  EXPECT_EQ(site.read(kTwo), macro("QMF1", "QMF3"));
  EXPECT_TRUE(replaced.isEmpty());
  type("rule", "segment:A");
  QTest::keyClick(&child<QLineEdit>("rule"), Qt::Key_Return);
  EXPECT_THAT(said("problem"), testing::StartsWith("a rule has \"->\" between"));
  EXPECT_EQ(child<QLineEdit>("from").text(), "") << "it is no longer put together";
  type("to", "1");
  EXPECT_EQ(said("problem"), "");
}

TEST_F(ReplaceWindowTest, FieldsPutTheRuleTogether) {
  const char* const rules[] = {"destination:1->2 where 3", "segment:1->2 where 3", "source:1->2 where 3",
                               "value:P=1->2 where 3"};
  for (const auto& [field, text] : {std::pair{"from", " 1"}, {"to", "2 "}, {"where", "3"}}) type(field, text);
  auto& kind = child<QComboBox>("kind");
  for (int i = 0; i < kind.count(); ++i) {
    kind.setCurrentIndex(i);
    EXPECT_EQ(child<QLineEdit>("parameter").isEnabled(), i == 3);
    if (i == 3) type("parameter", "P");
    EXPECT_EQ(child<QLineEdit>("rule").text(), rules[i]);
  }
}

TEST_F(ReplaceWindowTest, TellsWhereThereIsNothingToReplace) {
  std::filesystem::remove(site.root.resolve("c:\\w\\macro004.mac"));
  preview("QMF3", "QMF2");
  EXPECT_EQ(said("outcome"), "Nothing found: 5 macros looked at in the folder.");
  EXPECT_FALSE(enabled("replace"));
  const struct {
    std::vector<ReviewScope> scopes;
    const char* told;
  } cases[] = {{{}, "There is nothing to look at: choose a macro or a folder in a pane first."},
               {{panel<LostShelf>()}, "NOT looked at: the panel (the line was lost)"}};
  for (const auto& row : cases) {
    scopes = row.scopes;
    QTest::keyClick(window_, Qt::Key_F5);
    EXPECT_TRUE(QTest::qWaitFor([&] { return said("outcome") == row.told; })) << said("outcome");
  }
  scopes = {panel<StuckShelf>()};
  QTest::keyClick(window_, Qt::Key_F5);
  ASSERT_TRUE(QTest::qWaitFor([&] { return child<QProgressBar>("progress").value() == 1; }));
  EXPECT_EQ(child<QProgressBar>("progress").maximum(), 3);
  EXPECT_EQ(shutIn(*window_), "parameter replace; ");
  click("cancel");
  EXPECT_TRUE(QTest::qWaitFor([&] { return !said("outcome").empty(); }));
  EXPECT_EQ(said("outcome"), "Cancelled. Nothing found: 1 macros looked at in the panel.");
}

}  // namespace
}  // namespace tessaly
