// Two macros beside each other, worked by keys as a person does it.
#include <atomic>
#include <future>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLabel>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QTest>

#include "tests/support/TestSite.h"
#include "tests/support/Told.h"
#include "windows/CompareDelegate.h"
#include "windows/CompareWindow.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

using Commands = std::vector<std::pair<std::string, std::string>>;  // function and value

std::string bytesOf(const Commands& commands, const std::string& name = "M", const std::string& more = {}) {
  std::string text = "<macro name=\"" + name + "\"><data>" + more;
  for (const auto& [function, value] : commands)
    text += "<cmd fid=\"QMF1." + function + "\" workplace=\"1\"><param name=\"V\" value=\"" + value +
            "\"/></cmd>";
  return text + "</data></macro>";
}

Macro macroOf(const std::string& bytes) { return *Macro::read(bytes); }

class CompareWindowTest : public testing::Test {
 protected:
  ~CompareWindowTest() override { delete window_; }

  CompareSide side(Side which) {
    const Macro macro = *macros_[sideIndex(which)];
    const QString name = which == Side::kA ? "A" : "the target";
    return {
        name, "Where " + name + " is", refusals_[sideIndex(which)], {}, [this, macro]() -> Expected<Macro> {
          if (unreadable_) return Failure{Failure::Kind::kDiskError, "lost"};
          return macro;
        }};
  }
  QString take(const CompareTake& taken) {
    auto& macro = macros_[sideIndex(taken.into)];
    if (!taken.taken || taken.shown.check() != macro->check()) return "refused";
    macro = *taken.taken;
    steps_.push_back(taken.step.toStdString());
    window_->follow();
    return {};
  }
  void open(const std::string& a, const std::string& b) {
    delete window_;
    macros_ = {macroOf(a), macroOf(b)};
    window_ = new CompareWindow(
        {[this](Side which) { return side(which); }, [this](const CompareTake& taken) { return take(taken); },
         [this] { ++readAgain_; }, [](const Failure&) { return QString("unreadable"); }},
        {none_, lists_}, {.raw = true}, pool_);
    window_->present();
    QApplication::setActiveWindow(window_);
    table_ = window_->findChild<QTableView*>("table");
    await();
  }
  // Until what the macros are now has been compared.
  void await() {
    ASSERT_TRUE(QTest::qWaitFor([this] {
      const auto* diff = static_cast<CompareModel*>(table_->model())->diff();
      return diff != nullptr && diff->a().check() == macros_[0]->check() &&
             diff->b().check() == macros_[1]->check();
    }));
  }
  void awaitSteps(std::size_t count) {
    ASSERT_TRUE(QTest::qWaitFor([&] { return steps_.size() == count; }));
    await();
  }
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(window_, key, modifiers); }
  [[nodiscard]] std::string told(const char* label) const {
    return window_->findChild<QLabel*>(QLatin1String(label))->text().toStdString();
  }
  [[nodiscard]] std::string cell(int row, int column, int role = Qt::DisplayRole) const {
    return table_->model()->index(row, column).data(role).toString().toStdString();
  }
  [[nodiscard]] std::vector<std::string> signs() const {
    std::vector<std::string> result;
    for (int row = 0; row < table_->model()->rowCount(); ++row)
      result.push_back(cell(row, CompareModel::kNumberA) + '|' + cell(row, CompareModel::kSign) + '|' +
                       cell(row, CompareModel::kNumberB));
    return result;
  }
  [[nodiscard]] std::vector<std::string> values(Side which) const {
    std::vector<std::string> result;
    for (const MacroCommand& command : macros_[sideIndex(which)]->commands())
      result.push_back(command.parameters.front().value);
    return result;
  }

  TestSite site_;
  const FunctionDictionary none_;
  DecodingLists lists_{site_.root};
  QThreadPool pool_;
  std::array<std::optional<Macro>, 2> macros_;
  std::array<QString, 2> refusals_;
  std::atomic<bool> unreadable_ = false;
  int readAgain_ = 0;
  std::vector<std::string> steps_;
  CompareWindow* window_ = nullptr;
  QTableView* table_ = nullptr;
};

const Commands kHere = {{"F0", "0"}, {"F1", "1"}, {"F2", "2"}, {"F3", "3"}, {"F8", "8"},
                        {"F9", "9"}, {"F4", "4"}, {"F5", "5"}, {"F7", "7"}};
const Commands kThere = {{"F0", "0"}, {"F1", "11"}, {"F2", "2"}, {"F4", "4"}, {"F6", "6"},
                         {"F5", "5"}, {"F7", "7"},  {"F8", "8"}, {"F9", "9"}};

// Catches a key that skips a difference or stays in one, a row under a wrong sign or number, a sign that a
// screen reader does not get, a filter that drops a difference, and marks that are not what differs.
TEST_F(CompareWindowTest, KeysLeadFromDifferenceToDifference) {
  open(bytesOf(kHere), bytesOf(kThere));
  EXPECT_THAT(signs(), ElementsAre("1||1", "2|changed|2", "3||3", "4|only in A|", "5|moved to 8|",
                                   "6|moved to 9|", "7||4", "|only in the target|5", "8||6", "9||7",
                                   "|moved from 5|8", "|moved from 6|9"));
  EXPECT_EQ(told("counts"),
            "1 changed, 1 only in A, 1 only in the target, 2 moved, 5 alike \u2013 difference 1 of 5");
  const std::vector<std::string> rows = toldBy(*table_->model());
  const std::string take = " | [Take this difference into A; of what is selected: Alt+Left] (take into A) | ";
  const std::string takeB =
      " ^ | [Take this difference into the target; of what is selected: Alt+Right] (take into the target) | ";
  EXPECT_EQ(rows[0],
            R"(1 [] > | F0 Parameter: V: "0" [] |  | (alike) ^ |  | 1 [] > | F0 Parameter: V: "0" [])");
  EXPECT_EQ(rows[1], R"(2 [] > | F1 Parameter: V: "1" [] (changed: F1 Parameter: V: "1"))" + take +
                         R"(changed [V: "1" | "11"] (changed; V: "1" | "11"))" + takeB +
                         R"(2 [] > | F1 Parameter: V: "11" [] (changed: F1 Parameter: V: "11"))");
  EXPECT_EQ(rows[3], R"(4 [] > | F3 Parameter: V: "3" [] (only in A: F3 Parameter: V: "3"))" + take +
                         "only in A" + takeB + "> | (only in A; nothing here)");
  EXPECT_EQ(headingsOf(*table_->model()), "number | A |  | difference |  | number | the target");
  EXPECT_EQ(window_->windowTitle(), "Compare A with the target");
  EXPECT_EQ(told("headingA") + ", " + told("headingB"), "Where A is, Where the target is");
  EXPECT_EQ(shutIn(*window_), "; notes");
  EXPECT_THAT(cutOff(*table_), ElementsAre());
  const auto* heading = window_->findChild<QLabel*>("headingB");
  EXPECT_TRUE(QTest::qWaitFor(
      [&] {
        return heading->mapTo(window_, QPoint()).x() ==
               table_->viewport()
                   ->mapTo(window_, QPoint(table_->columnViewportPosition(CompareModel::kNumberB), 0))
                   .x();
      },
      1000))
      << heading->x() << " over its column";
  press(Qt::Key_F5);
  EXPECT_EQ(readAgain_, 1);
  window_->findChild<QCheckBox*>("showDestination")->click();
  EXPECT_EQ(cell(1, CompareModel::kLineA), "QMF1 - F1 Parameter: V: \"1\"");
  window_->findChild<QCheckBox*>("showRaw")->click();
  EXPECT_EQ(cell(1, CompareModel::kLineA), "Mainframe1 - ??? F1");
  window_->findChild<QCheckBox*>("showDestination")->click();
  window_->findChild<QCheckBox*>("showRaw")->click();
  EXPECT_EQ(told("details"), "V: \"1\" | \"11\"");
  const auto* model = static_cast<CompareModel*>(table_->model());
  ASSERT_EQ(model->marks(1, Side::kB).size(), 1U);
  const TextPart mark = model->marks(1, Side::kB).front();
  EXPECT_EQ(cell(1, CompareModel::kLineB).substr(mark.begin, mark.end - mark.begin), "11");
  for (const bool only : {false, true}) {
    if (only) press(Qt::Key_D, Qt::AltModifier);
    ASSERT_TRUE(QTest::qWaitFor([&] { return table_->model()->rowCount() == (only ? 7 : 12); }));
    std::vector<std::string> visited = {cell(table_->currentIndex().row(), CompareModel::kSign)};
    for (const Qt::Key key :
         {Qt::Key_F8, Qt::Key_F8, Qt::Key_F8, Qt::Key_F8, Qt::Key_F8, Qt::Key_F7, Qt::Key_F7}) {
      press(key);
      visited.push_back(cell(table_->currentIndex().row(), CompareModel::kSign));
    }
    EXPECT_THAT(visited, ElementsAre("changed", "only in A", "moved to 8", "only in the target",
                                     "moved from 5", "moved from 5", "only in the target", "moved to 8"));
    press(Qt::Key_F7);
    press(Qt::Key_F7);
    press(Qt::Key_F7);
    EXPECT_EQ(told("outcome"), "There is no difference before.");
    press(Qt::Key_F8), press(Qt::Key_F7);
    EXPECT_EQ(told("outcome"), "");
  }
  window_->findChild<QCheckBox*>("onlyDifferences")->click();
  table_->setCurrentIndex(table_->model()->index(6, CompareModel::kLineA));
  for (const int row : {4, 7}) {
    window_->findChild<QCheckBox*>("onlyDifferences")->click();
    EXPECT_EQ(table_->currentIndex().row(), row) << "beside a row that is alike";
  }
}

// Catches a take of other rows than those that are selected, one that is several steps, and a view that
// jumps.
TEST_F(CompareWindowTest, TakesWhatIsSelectedOrAllAsOneStepAndStaysThere) {
  open(bytesOf(kHere), bytesOf(kThere));
  press(Qt::Key_F8);
  press(Qt::Key_F8);
  press(Qt::Key_Left, Qt::AltModifier);  // the moved block
  awaitSteps(1);
  EXPECT_THAT(values(Side::kA), ElementsAre("0", "1", "2", "3", "4", "5", "7", "8", "9"));
  EXPECT_THAT(steps_, ElementsAre("take 1 differences from the target"));
  EXPECT_EQ(cell(table_->currentIndex().row(), CompareModel::kNumberB), "4") << "the row that followed";
  press(Qt::Key_F8);
  EXPECT_EQ(cell(table_->currentIndex().row(), CompareModel::kSign), "only in the target");
  press(Qt::Key_Right, Qt::AltModifier);
  awaitSteps(2);
  EXPECT_THAT(values(Side::kB), ElementsAre("0", "11", "2", "4", "5", "7", "8", "9"));
  const int arrow = CompareModel::kTakeB;
  QTest::mouseClick(table_->viewport(), Qt::LeftButton, {},
                    table_->visualRect(table_->model()->index(1, arrow)).center());
  awaitSteps(3);
  EXPECT_THAT(values(Side::kB), ElementsAre("0", "1", "2", "4", "5", "7", "8", "9"))
      << "by the arrow in the row";
  QTest::mouseClick(window_->findChild<QPushButton*>("takeAllA"), Qt::LeftButton);
  awaitSteps(4);
  EXPECT_EQ(values(Side::kA), values(Side::kB));
  EXPECT_EQ(steps_.size(), 4U);
  press(Qt::Key_Left, Qt::AltModifier);
  EXPECT_EQ(told("outcome"), "NOT taken into A: no difference is selected");
}

TEST_F(CompareWindowTest, GoesOnlyOnceItHasHandedOverWhatItTakes) {
  open(bytesOf(kHere), bytesOf(kThere));
  press(Qt::Key_Left, Qt::AltModifier);
  const QPointer window = window_;
  press(Qt::Key_Escape);
  EXPECT_TRUE(QTest::qWaitFor([&] { return window.isNull(); }));
  window_ = nullptr;
  EXPECT_EQ(steps_.size(), 1U);
}

// Catches a side that is changed although it must not be, and a refusal without a reason.
TEST_F(CompareWindowTest, RefusesASideThatCannotBeChanged) {
  refusals_[1] = "a key file cannot be changed";
  open(bytesOf(kHere), bytesOf(kThere));
  press(Qt::Key_Right, Qt::AltModifier);
  EXPECT_EQ(told("outcome"), "NOT taken into the target: a key file cannot be changed");
  EXPECT_TRUE(steps_.empty());
  EXPECT_THAT(cell(1, CompareModel::kTakeA, Qt::ToolTipRole), HasSubstr("Take this difference into"));
  EXPECT_THAT(cell(1, CompareModel::kTakeB, Qt::ToolTipRole), HasSubstr("a key file cannot be changed"));
  for (const char* name : {"takeB", "takeAllB"}) {
    const auto* button = window_->findChild<QPushButton*>(name);
    EXPECT_FALSE(button->isEnabled());
    EXPECT_THAT(button->toolTip().toStdString(),
                StartsWith("Nothing can be taken into the target: a key file cannot be changed."));
  }
  const auto* take = window_->findChild<QPushButton*>("takeA");
  EXPECT_THAT((take->text() + ": " + take->toolTip()).toStdString(),
              StartsWith("Take into A: Take what is selected into A (Alt+Left)"));
  const auto* all = window_->findChild<QPushButton*>("takeAllA");
  EXPECT_THAT((all->text() + ": " + all->toolTip()).toStdString(),
              StartsWith("Take All into A: Take all commands into A"));
  table_->clearSelection();
  EXPECT_EQ(shutIn(*window_), "takeA takeAllB takeB; notes");
  unreadable_ = true;
  window_->follow();
  const char* const trouble =
      "There is nothing to compare in A: unreadable.\nThere is nothing to compare in the target: unreadable.";
  ASSERT_TRUE(QTest::qWaitFor([&] { return told("counts") == trouble; })) << told("counts");
  EXPECT_EQ(told("details"), "");
  EXPECT_EQ(shutIn(*window_), "takeA takeAllA takeAllB takeB; notes");
}

// Catches a view that jumps when a row comes in front of the one that is looked at, and a difference out of
// sight.
TEST_F(CompareWindowTest, StaysWhereItIsLookedAt) {
  Commands many;
  for (int i = 0; i < 300; ++i) many.emplace_back("F" + std::to_string(i), "0");
  Commands other = many;
  other[150].second = other[151].second = other[290].second = "1";
  open(bytesOf(many), bytesOf(other));
  const auto top = [this] { return table_->visualRect(table_->currentIndex()).top(); };
  const auto middle = [&] { return std::abs(2 * top() - table_->viewport()->height()); };
  EXPECT_EQ(table_->currentIndex().row(), 150);
  EXPECT_LT(middle(), 100);
  press(Qt::Key_F8);
  EXPECT_EQ(table_->currentIndex().row(), 290);
  press(Qt::Key_F7);
  EXPECT_LT(middle(), 100);
  table_->verticalScrollBar()->setValue(table_->verticalScrollBar()->value() - 3);
  const int before = top();
  for (const Side side : kSides) {
    Commands more = side == Side::kA ? many : other;
    more.insert(more.begin(), 2, {"G", "9"});
    macros_[sideIndex(side)] = macroOf(bytesOf(more));
    window_->follow();
    await();
    EXPECT_EQ(table_->currentIndex().row(), 152);
    EXPECT_EQ(top(), before);
  }
  QTest::mouseClick(table_->viewport(), Qt::LeftButton, {},
                    table_->visualRect(table_->model()->index(152, CompareModel::kTakeA)).center());
  awaitSteps(1);
  EXPECT_EQ(values(Side::kA)[152] + values(Side::kA)[153], "11") << "the whole difference";
}

// Catches a mark beside the letters that differ, one that is cut off, a gap like an empty line, and arrows
// the wrong way or where nothing begins.
TEST_F(CompareWindowTest, PaintsWhatDiffers) {
  open(bytesOf(kHere), bytesOf(kThere));
  const auto* model = static_cast<CompareModel*>(table_->model());
  constexpr int kHeight = 24;
  const auto painted = [&](int row, int column, int width, QStyle::State state = {}) {
    QImage image(width, kHeight, QImage::Format_RGB32);
    QPainter painter(&image);
    QStyleOptionViewItem option;
    option.rect = image.rect();
    option.font = table_->font();
    option.palette = table_->palette();
    option.state = state | QStyle::State_Enabled | QStyle::State_Active;
    table_->itemDelegate()->paint(&painter, option, model->index(row, column));
    return image;
  };
  // Where the colour stands in a line of pixels: "from" and "behind".
  const auto run = [](const QImage& image, int y, const QColor& colour) {
    std::pair<int, int> found(-1, -1);
    for (int x = 0; x < image.width(); ++x) {
      if (image.pixelColor(x, y) != colour) continue;
      if (found.first < 0) found.first = x;
      found.second = x + 1;
    }
    return found;
  };
  const QPalette palette = table_->palette();
  const auto ground = [&](DiffRow::Kind kind, bool marked) {
    return QColor::fromRgb(compareGround(palette, kind, marked).rgb());
  };
  const QColor marked = ground(DiffRow::Kind::kChanged, true), plain = ground(DiffRow::Kind::kChanged, false);
  QFont bold = table_->font();
  bold.setBold(true);
  bold.setUnderline(true);
  const QString line = model->index(1, CompareModel::kLineB).data().toString();
  const TextPart mark = model->marks(1, Side::kB).front();
  const int before = QFontMetrics(table_->font()).horizontalAdvance(line.left(mark.begin));
  const int width = QFontMetrics(bold).horizontalAdvance(line.mid(mark.begin, mark.end - mark.begin));
  const int begin = before + CompareDelegate::kMargin;
  const QImage wide = painted(1, CompareModel::kLineB, 400);
  EXPECT_EQ(run(wide, 0, marked), std::pair(begin, begin + width));
  EXPECT_EQ(wide.pixelColor(399, 0), plain);
  EXPECT_EQ(run(painted(1, CompareModel::kLineB, 400, QStyle::State_Selected), 0, marked), std::pair(-1, -1));
  const auto cut = run(painted(1, CompareModel::kLineB, 80), 0, marked);
  EXPECT_EQ(cut.second - cut.first, width) << "the mark is in sight";
  EXPECT_GT(cut.first, 10) << "behind what stands before it";
  EXPECT_NE(painted(3, CompareModel::kLineB, 80), painted(2, CompareModel::kLineB, 80)) << "a gap is hatched";
}

// Catches "no difference" where there is one beside the commands.
TEST_F(CompareWindowTest, SaysTrulyWhatDiffersBesideTheCommands) {
  const std::string same = bytesOf({{"F0", "0"}});
  std::string spaced = same;
  spaced.insert(spaced.find("<data>"), "\n  ");
  const std::tuple<std::string, std::string, std::string> cases[] = {
      {same, "No difference: both hold the same bytes.", ""},
      {bytesOf({{"F0", "0"}}, "N"), "1 alike", "The names differ: \"M\" | \"N\"."},
      {bytesOf({{"F0", "0"}}, "M", "<!-- x -->"), "1 alike",
       "Comments, attributes or something else beside the commands differ."},
      {spaced, "1 alike", "Only the layout differs: white space, quotes, references or the encoding."},
      {std::string(same).replace(same.find("place=\"1"), 8,
                                 "place=\"2\" group=\"1\" module=\"1\" widget=\"1\" x=\"1"),
       "1 changed \u2013 difference 1 of 1", ""},
  };
  for (const auto& [other, counts, notes] : cases) {
    open(same, other);
    EXPECT_EQ(told("counts"), counts);
    EXPECT_EQ(told("notes"), notes);
    EXPECT_EQ(window_->findChild<QLabel*>("notes")->isVisible(), !notes.empty());
  }
  EXPECT_EQ(told("details"),
            "workplace: \"1\" | \"2\"; group: \"\" | \"1\"; module: \"\" | \"1\"; widget: \"\" | \"1\"; and "
            "1 more");
}

// Catches a comparison that shows what the sides were when it began, or that waits for it on the GUI thread.
TEST_F(CompareWindowTest, DropsWhatComesOfSidesThatHaveChangedMeanwhile) {
  open(bytesOf(kHere), bytesOf(kThere));
  std::promise<void> slow;
  const std::shared_future<void> held = slow.get_future().share();
  pool_.setMaxThreadCount(2);
  CompareWindow other({[&](Side which) {
                         CompareSide here = side(which);
                         if (held.wait_for(std::chrono::seconds(0)) == std::future_status::ready) return here;
                         here.content = [held, content = here.content] {
                           held.wait();
                           return content();
                         };
                         return here;
                       },
                       {},
                       {},
                       {}},
                      {none_, lists_}, {}, pool_);
  const auto* model = static_cast<CompareModel*>(other.findChild<QTableView*>("table")->model());
  EXPECT_EQ(other.findChild<QLabel*>("counts")->text(), "Comparing...");
  macros_[1] = macros_[0];
  other.follow();
  QCoreApplication::processEvents();
  slow.set_value();
  ASSERT_TRUE(pool_.waitForDone(10000));
  ASSERT_TRUE(QTest::qWaitFor([&] { return model->diff() != nullptr; }));
  EXPECT_TRUE(model->diff()->identical());
}

}  // namespace
}  // namespace tessaly
