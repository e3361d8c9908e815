// Two macros beside each other, worked by keys as a person does it.
#include <atomic>
#include <future>

#include <QPainter>
#include <QPointer>
#include <QScrollBar>
#include <QTableView>

#include "tests/windows/ReviewFixture.h"
#include "windows/CompareDelegate.h"
#include "windows/CompareWindow.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

std::string bytesOf(const Commands& commands) { return macroOf("M", textOf(commands)); }

class CompareWindowTest : public WindowFixture {
 protected:
  ~CompareWindowTest() override { delete window_; }
  QWidget& top() override { return *window_; }

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
    macros_ = {*Macro::read(a), *Macro::read(b)};
    window_ = new CompareWindow(
        {[this](Side which) { return side(which); }, [this](const CompareTake& taken) { return take(taken); },
         [this] { ++readAgain_; }, [](const Failure&) { return QString("unreadable"); }},
        {none_, lists}, {.raw = true}, pool_);
    window_->present();
    QApplication::setActiveWindow(window_);
    table_ = &child<QTableView>("table");
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

  const FunctionDictionary none_;
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

// Catches a key that skips a difference, a wrong sign, a filter that drops one, and marks beside what
// differs.
TEST_F(CompareWindowTest, KeysLeadFromDifferenceToDifference) {
  open(bytesOf(kHere), bytesOf(kThere));
  EXPECT_THAT(signs(), ElementsAre("1||1", "2|changed|2", "3||3", "4|only in A|", "5|moved to 8|",
                                   "6|moved to 9|", "7||4", "|only in the target|5", "8||6", "9||7",
                                   "|moved from 5|8", "|moved from 6|9"));
  EXPECT_EQ(said("counts"),
            "1 changed, 1 only in A, 1 only in the target, 2 moved, 5 alike \u2013 difference 1 of 5");
  const std::vector<std::string> rows = toldBy(*table_->model());
  const std::string take = " | [Take this difference into A; of what is selected: Alt+Left] (take into A) | ";
  const std::string takeB =
      " ^ | [Take this difference into the target; of what is selected: Alt+Right] (take into the target) | ";
  EXPECT_EQ(
      rows[0],
      R"(1 [] > | F0 Parameter: VALUE: "0" [] |  | (alike) ^ |  | 1 [] > | F0 Parameter: VALUE: "0" [])");
  EXPECT_EQ(rows[1], R"(2 [] > | F1 Parameter: VALUE: "1" [] (changed: F1 Parameter: VALUE: "1"))" + take +
                         R"(changed [VALUE: "1" | "11"] (changed; VALUE: "1" | "11"))" + takeB +
                         R"(2 [] > | F1 Parameter: VALUE: "11" [] (changed: F1 Parameter: VALUE: "11"))");
  EXPECT_EQ(rows[3], R"(4 [] > | F3 Parameter: VALUE: "3" [] (only in A: F3 Parameter: VALUE: "3"))" + take +
                         "only in A" + takeB + "> | (only in A; nothing here)");
  EXPECT_EQ(headingsOf(*table_->model()), "number | A |  | difference |  | number | the target");
  EXPECT_EQ(window_->windowTitle(), "Compare A with the target");
  EXPECT_EQ(said("headingA") + ", " + said("headingB"), "Where A is, Where the target is");
  EXPECT_EQ(shutIn(*window_), "; notes");
  EXPECT_THAT(cutOff(*table_), ElementsAre());
  const auto left = [this](const QWidget& widget, int x) { return widget.mapTo(window_, QPoint(x, 0)).x(); };
  EXPECT_TRUE(QTest::qWaitFor([&] {
    return left(child<QLabel>("headingB"), 0) ==
           left(*table_->viewport(), table_->columnViewportPosition(CompareModel::kNumberB));
  })) << "over its column";
  press(Qt::Key_F5);
  EXPECT_EQ(readAgain_, 1);
  tick("showDestination");
  EXPECT_EQ(cell(1, CompareModel::kLineA), "QMF1 - F1 Parameter: VALUE: \"1\"");
  tick("showRaw");
  EXPECT_EQ(cell(1, CompareModel::kLineA), "Mainframe1 - ??? F1");
  for (const char* box : {"showDestination", "showRaw"}) child<QCheckBox>(box).toggle();
  EXPECT_EQ(cell(1, CompareModel::kLineA), "F1 Parameter: VALUE: \"1\"");
  EXPECT_EQ(said("details"), "VALUE: \"1\" | \"11\"");
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
    EXPECT_EQ(said("outcome"), "There is no difference before.");
    press(Qt::Key_F8), press(Qt::Key_F7);
    EXPECT_EQ(said("outcome"), "");
  }
  child<QCheckBox>("onlyDifferences").toggle();
  table_->setCurrentIndex(table_->model()->index(6, CompareModel::kLineA));
  for (const int row : {4, 7}) {
    tick("onlyDifferences");
    EXPECT_EQ(table_->currentIndex().row(), row) << "beside a row that is alike";
  }
}

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
  click(*table_, table_->model()->index(1, CompareModel::kTakeB));
  awaitSteps(3);
  EXPECT_THAT(values(Side::kB), ElementsAre("0", "1", "2", "4", "5", "7", "8", "9")) << "by the row's arrow";
  click("takeAllA");
  awaitSteps(4);
  EXPECT_EQ(values(Side::kA), values(Side::kB));
  EXPECT_EQ(steps_.size(), 4U);
  press(Qt::Key_Left, Qt::AltModifier);
  EXPECT_EQ(said("outcome"), "NOT taken into A: no difference is selected");
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

TEST_F(CompareWindowTest, RefusesASideThatCannotBeChanged) {
  refusals_[1] = "a key file cannot be changed";
  open(bytesOf(kHere), bytesOf(kThere));
  press(Qt::Key_Right, Qt::AltModifier);
  EXPECT_EQ(said("outcome"), "NOT taken into the target: a key file cannot be changed");
  EXPECT_TRUE(steps_.empty());
  EXPECT_THAT(cell(1, CompareModel::kTakeA, Qt::ToolTipRole), HasSubstr("Take this difference into"));
  EXPECT_THAT(cell(1, CompareModel::kTakeB, Qt::ToolTipRole), HasSubstr("a key file cannot be changed"));
  const char* const texts[][2] = {
      {"takeA", "Take into A: Take what is selected into A (Alt+Left)"},
      {"takeAllA", "Take All into A: Take all commands into A"},
      {"takeB", "Take into the target: Nothing can be taken into the target: a key file cannot be changed."},
      {"takeAllB", "Take All into the target: Nothing can be taken into the target: a key file cannot be"}};
  for (const auto& [name, text] : texts) {
    const auto& button = child<QPushButton>(name);
    EXPECT_THAT((button.text() + ": " + button.toolTip()).toStdString(), StartsWith(text));
  }
  table_->clearSelection();
  EXPECT_EQ(shutIn(*window_), "takeA takeAllB takeB; notes");
  unreadable_ = true;
  window_->follow();
  const char* const trouble =
      "There is nothing to compare in A: unreadable.\nThere is nothing to compare in the target: unreadable.";
  ASSERT_TRUE(QTest::qWaitFor([&] { return said("counts") == trouble; })) << said("counts");
  EXPECT_EQ(said("details"), "");
  EXPECT_EQ(shutIn(*window_), "takeA takeAllA takeAllB takeB; notes");
}

// Catches a view that jumps when a row comes in front of the one that is looked at.
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
    macros_[sideIndex(side)] = *Macro::read(bytesOf(more));
    window_->follow();
    await();
    EXPECT_EQ(table_->currentIndex().row(), 152);
    EXPECT_EQ(top(), before);
  }
  click(*table_, table_->model()->index(152, CompareModel::kTakeA));
  awaitSteps(1);
  EXPECT_EQ(values(Side::kA)[152] + values(Side::kA)[153], "11") << "the whole difference";
}

// What is wide enough is in the kept pictures; here the line is longer than its cell, and the mark is in it.
TEST_F(CompareWindowTest, PaintsWhatDiffersWhereTheLineIsCutOff) {
  open(bytesOf(kHere), bytesOf(kThere));
  const auto marked = [&](int width, QStyle::State state = {}) {
    QImage image(width, 24, QImage::Format_RGB32);
    QPainter painter(&image);
    QStyleOptionViewItem option;
    option.rect = image.rect();
    option.font = table_->font();
    option.palette = table_->palette();
    option.state = state | QStyle::State_Enabled | QStyle::State_Active;
    table_->itemDelegate()->paint(&painter, option, table_->model()->index(1, CompareModel::kLineB));
    const QRgb ground = compareGround(option.palette, DiffRow::Kind::kChanged, true).rgb();
    std::vector<int> places;
    for (int x = 0; x < width; ++x)
      if (image.pixelColor(x, 0) == QColor::fromRgb(ground)) places.push_back(x);
    return places;
  };
  const std::vector<int> whole = marked(400), cut = marked(80);
  ASSERT_FALSE(whole.empty());
  EXPECT_EQ(whole.back() - whole.front() + 1, static_cast<int>(whole.size())) << "in one piece";
  EXPECT_EQ(cut.size(), whole.size());
  EXPECT_GT(cut.front(), 10) << "behind what stands before it";
  EXPECT_THAT(marked(400, QStyle::State_Selected), testing::IsEmpty());
}

TEST_F(CompareWindowTest, SaysTrulyWhatDiffersBesideTheCommands) {
  const std::string same = bytesOf({{"F0", "0"}});
  std::string spaced = same;
  spaced.insert(spaced.find("<data>"), "\n  ");
  const std::tuple<std::string, std::string, std::string> cases[] = {
      {same, "No difference: both hold the same bytes.", ""},
      {macroOf("N", textOf({{"F0", "0"}})), "1 alike", "The names differ: \"M\" | \"N\"."},
      {macroOf("M", "<!-- x -->" + textOf({{"F0", "0"}})), "1 alike",
       "Comments, attributes or something else beside the commands differ."},
      {spaced, "1 alike", "Only the layout differs: white space, quotes, references or the encoding."},
      {std::string(same).replace(same.find("place=\"1"), 8,
                                 "place=\"2\" group=\"1\" module=\"1\" widget=\"1\" x=\"1"),
       "1 changed \u2013 difference 1 of 1", ""},
  };
  for (const auto& [other, counts, notes] : cases) {
    open(same, other);
    EXPECT_EQ(said("counts"), counts);
    EXPECT_EQ(said("notes"), notes);
    EXPECT_EQ(child<QLabel>("notes").isVisible(), !notes.empty());
  }
  EXPECT_EQ(said("details"),
            "workplace: \"1\" | \"2\"; group: \"\" | \"1\"; module: \"\" | \"1\"; widget: \"\" | \"1\"; and "
            "1 more");
}

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
                      {none_, lists}, {}, pool_);
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
