// Two macros beside each other, worked by keys as a person does it.
#include <future>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QTableView>
#include <QTest>

#include "tests/support/TestSite.h"
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
    return {name, "Where " + name + " is", refusals_[sideIndex(which)], {}, [macro] {
              return Expected<Macro>(macro);
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
    window_ = new CompareWindow({[this](Side which) { return side(which); },
                                 [this](const CompareTake& taken) { return take(taken); },
                                 {},
                                 [](const Failure&) { return QString("unreadable"); }},
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
  EXPECT_THAT(cell(1, CompareModel::kLineA, Qt::AccessibleTextRole), StartsWith("changed: "));
  EXPECT_EQ(cell(3, CompareModel::kLineB, Qt::AccessibleTextRole), "only in A; nothing here");
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
    EXPECT_THAT(button->toolTip().toStdString(), HasSubstr("a key file cannot be changed"));
  }
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
  };
  for (const auto& [other, counts, notes] : cases) {
    open(same, other);
    EXPECT_EQ(told("counts"), counts);
    EXPECT_EQ(told("notes"), notes);
    EXPECT_EQ(window_->findChild<QLabel*>("notes")->isVisible(), !notes.empty());
  }
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
