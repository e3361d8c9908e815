#include <filesystem>
#include <gtest/gtest.h>
#include <utility>

#include <QComboBox>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTreeView>

#include "dictionary/InterfaceFile.h"
#include "tests/support/TestSite.h"
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

class ReplaceWindowTest : public testing::Test {
 protected:
  ReplaceWindowTest() {
    FunctionTemplate definition;
    definition.name = "A.SET";
    definition.description = "Size";
    definition.integers.emplace_back().name = "P";
    dictionary_.add(std::move(definition));
    dictionary_.finish();
    for (const char* file : {kOne, kTwo, kOpen}) site_.write(file, macro("QMF1", "QMF1"));
    site_.write("c:\\w\\macro004.mac", "no macro");
    window_ = new ReplaceWindow(
        {.root = site_.root,
         .knowledge =
             [this] {
               RulesOff off;
               off.set(off_);
               return CheckContext{dictionary_, lists_, 25, off};
             },
         .scopes =
             [] {
               return std::vector{
                   ReviewScope{ReviewScope::Kind::kFolder, "the folder", FolderContent{"c:\\w"}}};
             },
         .leftOut = [](const MacroPlace& place) { return place.file == kOpen ? "unsaved" : QString(); },
         .job = [this](const std::string& title) -> ReplaceJob {
           return [this, title](std::vector<BatchItem> items, const std::stop_token&) {
             MacroHistory history(site_.root);
             BatchPlaces places(site_.root, history);
             MacroBatch batch(places, title, MacroChange::kEdit, MacroBatch::Mode::kAllOrNone,
                              std::move(items));
             return replacedBy(batch);
           };
         },
         .failureText = [](const Failure& failure) { return QString::fromStdString(failure.text); }});
    window_->show();
    tree_ = window_->findChild<QTreeView*>("changes");
  }
  ~ReplaceWindowTest() override { delete window_; }

  void type(const char* field, const char* text) {
    auto* edit = window_->findChild<QLineEdit*>(field);
    edit->selectAll();
    QTest::keyClicks(edit, text);
  }
  void preview(const char* from, const char* to) {
    type("from", from);
    type("to", to);
    QTest::keyClick(window_->findChild<QLineEdit*>("to"), Qt::Key_Return);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !told().isEmpty(); }));
  }
  QString told() { return window_->findChild<QLabel*>("outcome")->text(); }
  QPushButton& button(const char* name) { return *window_->findChild<QPushButton*>(name); }
  QModelIndex command(int macro, int row, int column = 0) {
    return tree_->model()->index(row, column, tree_->model()->index(macro, 0));
  }
  void replace() {
    QTest::mouseClick(&button("replace"), Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !window_->writing(); }));
  }

  TestSite site_;
  FunctionDictionary dictionary_;
  DecodingLists lists_{site_.root};
  CheckRule off_ = CheckRule::kRepeated;
  ReplaceWindow* window_;
  QTreeView* tree_;
};

TEST_F(ReplaceWindowTest, WritesWhatIsTickedAndNothingElse) {
  QStringList kinds;
  const auto& kind = *window_->findChild<QComboBox*>("kind");
  for (int i = 0; i < kind.count(); ++i) kinds += kind.itemText(i);
  EXPECT_EQ(kinds.join('|').toStdString(), "Destination|Segment|Source|Value");
  preview("QMF1", "QMF2");
  ASSERT_EQ(tree_->model()->rowCount(), 4) << "with the file that cannot be read";
  EXPECT_TRUE(told().startsWith("4 ") && told().endsWith("Off for this site: repeated"))
      << told().toStdString();
  EXPECT_EQ(command(0, 0, 2).data().toString(), "Mainframe2 - Size ==> 5");
  EXPECT_FALSE(command(2, 0).data(Qt::CheckStateRole).isValid()) << "what has unsaved changes is left out";
  tree_->setFocus();
  QTest::mouseClick(tree_->viewport(), Qt::LeftButton, Qt::NoModifier,
                    tree_->visualRect(command(0, 1, 1)).center());
  QTest::keyClick(tree_, Qt::Key_Space);
  EXPECT_EQ(command(0, 1).parent().data(Qt::CheckStateRole), Qt::PartiallyChecked);
  QSignalSpy replaced(window_, &ReplaceWindow::replaced);
  replace();
  EXPECT_EQ(site_.read(kOne), macro("QMF2", "QMF1"));
  EXPECT_EQ(site_.read(kTwo), macro("QMF2", "QMF2"));
  EXPECT_EQ(site_.read(kOpen), macro("QMF1", "QMF1"));
  ASSERT_EQ(replaced.size(), 1);
  EXPECT_EQ(replaced[0][1].value<std::vector<BatchTrace>>().size(), 2U) << "one undo for all";
  EXPECT_FALSE(button("replace").isEnabled()) << "it is done";
}

// Else nothing could undo it.
TEST_F(ReplaceWindowTest, GoesOnlyOnceItHasToldWhatItHasWritten) {
  preview("QMF1", "QMF2");
  QSignalSpy replaced(window_, &ReplaceWindow::replaced);
  const QPointer window = std::exchange(window_, nullptr);
  QTest::mouseClick(window->findChild<QPushButton*>("replace"), Qt::LeftButton);
  window->close();
  EXPECT_TRUE(QTest::qWaitFor([&] { return window.isNull(); }));
  EXPECT_EQ(replaced.size(), 1);
  EXPECT_EQ(site_.read(kOne), macro("QMF2", "QMF2"));
}

// Catches findings of changes that are not made.
TEST_F(ReplaceWindowTest, FindingsAreThoseOfWhatIsTicked) {
  off_ = CheckRule::kNameTwice;
  preview("QMF1", "QMF2");
  const auto findings = [this] { return command(0, 0, ReplaceModel::kFindings).data().toString(); };
  EXPECT_EQ(findings(), "") << "a command repeats the one before it, now as before";
  for (const bool mends : {true, false}) {
    QTest::mouseClick(tree_->viewport(), Qt::LeftButton, Qt::NoModifier,
                      tree_->visualRect(command(0, 1, 1)).center());
    QTest::keyClick(tree_, Qt::Key_Space);
    EXPECT_TRUE(QTest::qWaitFor([&] { return findings().startsWith("mends in command 2") == mends; }))
        << findings().toStdString();
  }
}

TEST_F(ReplaceWindowTest, SomebodyElsesChangeKeepsAllAsItWas) {
  preview("QMF1", "QMF2");
  site_.write(kTwo, macro("QMF1", "QMF3"));
  QSignalSpy replaced(window_, &ReplaceWindow::replaced);
  replace();
  EXPECT_TRUE(told().contains("NOTHING")) << told().toStdString();
  EXPECT_EQ(site_.read(kOne), macro("QMF1", "QMF1"));
  EXPECT_EQ(site_.read(kTwo), macro("QMF1", "QMF3"));
  EXPECT_TRUE(replaced.isEmpty());
  type("rule", "segment:A");
  QTest::keyClick(window_->findChild<QLineEdit*>("rule"), Qt::Key_Return);
  EXPECT_FALSE(window_->findChild<QLabel*>("problem")->text().isEmpty());
}

}  // namespace
}  // namespace tessaly
