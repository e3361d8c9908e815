// A macro played through without a panel and beside one, worked by keys, clicks and the slider.
#include <atomic>
#include <semaphore>

#include <QHeaderView>
#include <QScrollBar>
#include <QSlider>
#include <QTableView>

#include "tests/link/FakeTransport.h"
#include "tests/windows/ReviewFixture.h"
#include "windows/RehearseWindow.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;
using testing::UnorderedElementsAre;

using Command = Commands::value_type;

const Command kSet{"ME1.KEY1.CLIP.SET", "0.25"}, kSetAgain{"ME1.KEY1.CLIP.SET", "0.250000"},
    kMore{"ME1.KEY1.CLIP.INC", "256"}, kOther{"ME2.KEY1.CLIP.INC", "256"}, kNothing{"NO.SUCH.FUNCTION", "1"};
constexpr const char* kClipName = "QMF1.ME1.KEY1.CLIP";
constexpr const char* kOtherName = "QMF1.ME2.KEY1.CLIP";

class RehearseWindowTest : public WindowFixture {
 protected:
  ~RehearseWindowTest() override {
    window_.reset();
    if (panel_.client->state() == kPanelConnected) panel_.client->disconnect();
  }
  QWidget& top() override { return *window_; }

  void open(const Commands& commands) {
    commands_ = commands;
    window_ = std::make_unique<RehearseWindow>(
        RehearseWays{
            [this] { return source(); },
            [this] { return panel_.client->state() == kPanelConnected ? QString("the desk") : QString(); },
            words, patience_},
        *panel_.client, LineContext{siteDictionary(), siteLists_}, LineOptions());
    window_->present();
    QApplication::setActiveWindow(window_.get());
    awaitCommands();
  }
  RehearseSource source() {
    if (!commands_) return {"A", "The pane shows no macro.", opening_};
    return {"A", {}, opening_, [this, macro = *Macro::read(macroOf("M", textOf(*commands_)))] {
              begun_ = true;
              if (held_) held_->acquire();
              return Expected<Macro>(macro);
            }};
  }
  void change(const Commands& commands) {
    commands_ = commands;
    window_->follow();
    awaitCommands();
  }
  void awaitCommands() {
    const QString all = QString("of %1").arg(commands_->size());
    await([&] {
      return grid().columnCount() == static_cast<int>(commands_->size()) &&
             said("place").ends_with(all.toStdString());
    });
  }
  void await(const std::function<bool()>& condition) {
    ASSERT_TRUE(QTest::qWaitFor(condition)) << said("now");
  }
  void connectPanel() {
    ASSERT_TRUE(panel_.client->connect("10.0.0.1"));
    window_->look();
  }

  [[nodiscard]] QAbstractItemModel& values() { return *child<QTableView>("values").model(); }
  [[nodiscard]] QAbstractItemModel& grid() { return *child<QTableView>("grid").model(); }
  void press(Qt::Key key, QWidget* on = nullptr) {
    QTest::keyClick(on != nullptr ? on : &child<QTableView>("values"), key);
  }
  [[nodiscard]] static std::string text(const QAbstractItemModel& model, int row, int column,
                                        int role = Qt::DisplayRole) {
    return model.index(row, column).data(role).toString().toStdString();
  }
  // Of each value at the step: its signs and what it is.
  [[nodiscard]] std::vector<std::string> atStep() {
    std::vector<std::string> rows;
    for (int row = 0; row < values().rowCount(); ++row) {
      const std::string signs = text(values(), row, RehearseModel::kSigns);
      const std::string state = text(values(), row, RehearseModel::kState);
      if (!state.empty()) rows.push_back(signs + '|' + state);
    }
    return rows;
  }
  [[nodiscard]] std::string now(int row) { return text(values(), row, RehearseModel::kNow); }
  [[nodiscard]] int step() { return child<QSlider>("slider").value(); }

  FakePanel panel_;
  const SiteRoot siteRoot_{sourcePath("site")};
  DecodingLists siteLists_{siteRoot_};
  std::optional<Commands> commands_;
  int opening_ = 1;
  std::atomic<bool> begun_ = false;              // a replay
  std::optional<std::binary_semaphore> held_{};  // that it waits for
  std::chrono::milliseconds patience_ = kPanelPatience;
  std::unique_ptr<RehearseWindow> window_;
};

// Catches a sign or a value of another step or row, and an end that forgets what only acts or cannot be told.
TEST_F(RehearseWindowTest, EveryStepTellsWhatItDoes) {
  open({kOther, kMore, kSet, kSetAgain, kOther, kNothing, kMore});
  EXPECT_EQ(window_->windowTitle(), "Rehearse A");
  EXPECT_THAT(column(values(), RehearseModel::kName), ElementsAre("Mainframe1 - ME2", "ME 2 Key 1 Clip Set",
                                                                  "Mainframe1 - ME1", "ME 1 Key 1 Clip Set"));
  const struct {
    const char *me2, *me1, *cell, *done;
  } steps[] = {
      {"?|unknown", "?|unknown", "", "Nothing is known of the values."},
      {"● ±|changed by +25.0%", "?|unknown", "", "ME 2 Key 1 Clip Set: unknown → changed by +25.0%"},
      {"±|changed by +25.0%", "● ±|changed by +25.0%", "● ± +25.0%",
       "ME 1 Key 1 Clip Set: unknown → changed by +25.0%"},
      {"±|changed by +25.0%", "●|25.0%", "● 25.0%", "ME 1 Key 1 Clip Set: changed by +25.0% → 25.0%"},
      {"±|changed by +25.0%", "=|25.0%", "= 25.0%", "ME 1 Key 1 Clip Set is 25.0% already"},
      {"● ±|changed by +50.0%", "|25.0%", "", "ME 2 Key 1 Clip Set: changed by +25.0% → changed by +50.0%"},
      {"±|changed by +50.0%", "|25.0%", "",
       "what it does cannot be told: the function is not in the dictionary"},
      {"±|changed by +50.0%", "●|50.0%", "● 50.0%", "ME 1 Key 1 Clip Set: 25.0% → 50.0%"},
  };
  for (int step = 0; step < static_cast<int>(std::size(steps)); ++step) {
    if (step > 0) press(Qt::Key_Right);
    EXPECT_THAT(atStep(), ElementsAre(steps[step].me2, steps[step].me1)) << step;
    EXPECT_EQ(said("done"), steps[step].done) << step;
    EXPECT_EQ(said("line").substr(0, 2), step == 0 ? "Be" : std::to_string(step) + ":");
    EXPECT_EQ(text(grid(), 3, step - 1), steps[step].cell) << step;
  }
  const std::vector<std::string> rows = toldBy(values());
  EXPECT_EQ(rows[2], "Mainframe1 - ME1 [] * = | * = | ^ * = | * =");
  EXPECT_EQ(rows[3],
            "ME 1 Key 1 Clip Set [ME 1 Key 1 Clip Set\nQMF1.ME1.KEY1.CLIP] | – [It has not come.] | ● "
            "[50.0%\nchanged by this command] (changed by this command) ^ = | 50.0% [50.0%\nchanged by this "
            "command] =");
  EXPECT_EQ(headingsOf(values()), "Value | Now |  | At step 7");
  EXPECT_EQ(headingsOf(grid()), "1 | 2 | 3 | 4 | 5 | 6 | ▾ 7");
  EXPECT_EQ(grid().headerData(6, Qt::Horizontal, Qt::ToolTipRole).toString(),
            "7: ME 1 Key 1 Clip Increment ==&gt; 0.2500");
  EXPECT_EQ(toldBy(grid().index(0, 6)), "=");
  EXPECT_EQ(toldBy(grid().index(3, 0)),
            "[ME 1 Key 1 Clip Set\nunknown\nunknown\n1: ME 2 Key 1 Clip Increment ==> 0.2500] (unknown) #");
  EXPECT_EQ(toldBy(grid().index(3, 3)),
            "= 25.0% [ME 1 Key 1 Clip Set\n25.0%\nwas so already\n4: ME 1 Key 1 Clip Set ==> 25.0%] (was so "
            "already) =");
  EXPECT_THAT(cutOff(child<QTableView>("values")), testing::IsEmpty());
  EXPECT_THAT(cutOff(child<QTableView>("grid")), testing::IsEmpty());
  EXPECT_EQ(shutIn(*window_), "askAgain startFromNow; after afterTab notice");
  QTest::keyClick(window_.get(), Qt::Key_A, Qt::AltModifier);
  auto& after = child<QTableView>("after");
  ASSERT_TRUE(after.isVisible());
  EXPECT_THAT(toldBy(*after.model()),
              ElementsAre(rows[0], rows[1], rows[2],
                          "ME 1 Key 1 Clip Set [ME 1 Key 1 Clip Set\nQMF1.ME1.KEY1.CLIP] | – [It has not "
                          "come.] | [50.0%] ^ | 50.0% []",
                          "What it does cannot be told [] * = | * = | ^ * = | * =",
                          "6: ??? NO.SUCH.FUNCTION – the function is not in the dictionary [] |  | ^ | "));
  EXPECT_EQ(headingsOf(*after.model()), "Value | Now |  | After this macro");
  const auto twice = [&after](const QModelIndex& cell) {
    click(after, cell);
    QTest::mouseDClick(after.viewport(), Qt::LeftButton, {}, after.visualRect(cell).center());
  };
  twice(after.model()->index(4, 0));
  EXPECT_TRUE(after.isVisible()) << "a heading leads nowhere";
  twice(after.model()->index(5, 0));
  EXPECT_EQ(step(), 6);
  ASSERT_TRUE(child<QTableView>("values").isVisible());
  QTest::keyClick(window_.get(), Qt::Key_A, Qt::AltModifier);
  twice(after.model()->index(3, 0));
  EXPECT_EQ(child<QTableView>("values").currentIndex().row(), 3);
  change({kSet, {"NCSCOMMAND", "25 01 08 02 64 00 "}, kOther});
  EXPECT_EQ(values().rowCount(), 5) << "a classic command has the heading of its mix effect";
}

// Catches a key that is lost in a table, a jump to a step that changes nothing, and a column out of sight.
TEST_F(RehearseWindowTest, KeysSliderAndClicksLeadToAnyStep) {
  Commands commands(40, kSet);
  commands[9] = commands[25] = kMore;
  open(commands);
  auto& slider = child<QSlider>("slider");
  auto& columns = child<QTableView>("grid");
  const struct {
    Qt::Key key;
    int step;
  } keys[] = {{Qt::Key_Left, 0},      {Qt::Key_Right, 1},     {Qt::Key_F8, 10},  {Qt::Key_F8, 11},
              {Qt::Key_F8, 26},       {Qt::Key_F8, 27},       {Qt::Key_F8, 27},  {Qt::Key_F7, 26},
              {Qt::Key_PageDown, 36}, {Qt::Key_PageDown, 40}, {Qt::Key_F7, 27},  {Qt::Key_PageUp, 17},
              {Qt::Key_Home, 0},      {Qt::Key_F7, 0},        {Qt::Key_End, 40}, {Qt::Key_Right, 40},
              {Qt::Key_F7, 27},       {Qt::Key_Left, 26}};
  for (QWidget* on : {static_cast<QWidget*>(&child<QTableView>("values")), static_cast<QWidget*>(&slider)}) {
    press(Qt::Key_Home, on);
    for (const auto& [key, step] : keys) {
      press(key, on);
      EXPECT_EQ(said("place"), "step " + std::to_string(step) + " of 40") << key;
      EXPECT_EQ(slider.value(), step);
      if (step > 0) {
        const int x = columns.columnViewportPosition(step - 1);
        EXPECT_TRUE(x >= 0 && x + columns.columnWidth(step - 1) <= columns.viewport()->width()) << step;
      }
    }
  }
  click(columns, grid().index(1, 24));
  EXPECT_EQ(step(), 25);
  EXPECT_EQ(child<QTableView>("values").currentIndex().row(), 1);
  slider.setFocus();
  QTest::mouseClick(&slider, Qt::LeftButton, {}, QPoint(2, slider.height() / 2));
  EXPECT_EQ(step(), 15) << "a page of the slider";
  QTest::mouseClick(columns.horizontalHeader()->viewport(), Qt::LeftButton, {},
                    {columns.horizontalHeader()->sectionViewportPosition(15) + 5, 5});
  EXPECT_EQ(step(), 16);
  click(columns, grid().index(0, 14));
  press(Qt::Key_Down);
  EXPECT_EQ(step(), 15) << "keys of the rows";
}

TEST_F(RehearseWindowTest, BringsWhatChangesIntoSight) {
  Commands commands;
  for (int key = 0; key < 40; ++key)
    commands.push_back({"ME" + std::to_string(key % 4 + 1) + ".KEY" + std::to_string(key / 4 % 4 + 1) +
                            (key < 16   ? ".CLIP.SET"
                             : key < 32 ? ".GAIN.SET"
                                        : ".BORDER.WIDTH.SET"),
                        "0.5"});
  open(commands);
  auto& table = child<QTableView>("values");
  const int last = grid().columnCount() - 1;
  int row = values().rowCount() - 1;
  ASSERT_FALSE(table.viewport()->rect().contains(table.visualRect(values().index(row, 0))));
  for (int command = 0; command <= last; ++command) {
    press(Qt::Key_Right);
    for (row = 0; row < values().rowCount(); ++row)
      if (text(values(), row, RehearseModel::kSigns).starts_with("●")) break;
    if (row == values().rowCount()) continue;
    EXPECT_TRUE(table.viewport()->rect().contains(table.visualRect(values().index(row, 0)))) << command;
  }
  const int at = table.verticalScrollBar()->value();
  ASSERT_GT(at, 0);
  EXPECT_EQ(child<QTableView>("grid").verticalScrollBar()->value(), at) << "one table";
}

// Catches a wait without an end, late values that are dropped, and old ones that count when the line is gone.
TEST_F(RehearseWindowTest, AsksThePanelForWhatItHasNow) {
  patience_ = std::chrono::milliseconds(500);
  open({kMore, kOther});
  EXPECT_TRUE(child<QTableView>("values").isColumnHidden(RehearseModel::kNow));
  EXPECT_THAT(said("now"), StartsWith("No panel is connected"));
  connectPanel();
  EXPECT_THAT(panel_.transport->take(),
              UnorderedElementsAre("connect 10.0.0.1:56662", std::string("subscribe ") + kClipName,
                                   std::string("subscribe ") + kOtherName));
  await([&] { return said("now").starts_with("Asking the desk: 0 of 2"); });
  EXPECT_FALSE(child<QTableView>("values").isColumnHidden(RehearseModel::kNow));
  EXPECT_FALSE(child<QPushButton>("askAgain").isEnabled());
  panel_.value(kClipName, "0.5");
  await([&] { return now(1) == "50.0%"; });
  press(Qt::Key_End);
  await([&] { return atStep() == std::vector<std::string>{"≠|75.0%", "● ±|changed by +25.0%"}; });
  EXPECT_EQ(now(3), "–");
  await([&] { return said("now").starts_with("the desk has told 1 of 2 values"); });
  EXPECT_EQ(said("now"),
            "the desk has told 1 of 2 values, the others have not come: they can be asked for again. After "
            "this macro: 1 not as now (≠), 0 as now.");
  EXPECT_EQ(
      toldBy(values())[1],
      "ME 1 Key 1 Clip Set [ME 1 Key 1 Clip Set\nQMF1.ME1.KEY1.CLIP] | 50.0% [] | ≠ [75.0%\nnot as the panel "
      "has it now] (not as the panel has it now) ^ * = | 75.0% [75.0%\nnot as the panel has it now] * =");
  EXPECT_EQ(shutIn(*window_), "; after afterTab notice");
  EXPECT_TRUE(child<QTableView>("values").isVisible());
  press(Qt::Key_F5);
  panel_.transport->await(std::string("subscribe ") + kOtherName);
  await([&] { return said("now").starts_with("Asking the desk: 1 of 2"); });
  panel_.value(kOtherName, "0.25");
  await([&] {
    return said("now") == "the desk has told all 2 values. After this macro: 2 not as now (≠), 0 as now.";
  });
  await([&] { return atStep() == std::vector<std::string>{"≠|75.0%", "● ≠|50.0%"}; });
  panel_.value(kClipName, "0.1");
  await([&] { return atStep()[0] == "≠|35.0%"; });
  tick("startFromNow");
  await([&] { return atStep()[0] == "±|changed by +25.0%"; });
  EXPECT_EQ(now(1), "10.0%");
  tick("startFromNow");
  await([&] { return atStep()[0] == "≠|35.0%"; });
  panel_.status(kPanelNotConnected);
  window_->look();
  await([&] { return said("now").starts_with("The panel is gone") && atStep()[0] == "±|changed by +25.0%"; });
  EXPECT_TRUE(child<QTableView>("values").isColumnHidden(RehearseModel::kNow));
  connectPanel();
  await([&] { return said("now").starts_with("the desk has told 0 of 2"); });
  panel_.value(kClipName, "");
  panel_.value(kOtherName, "0.25");
  await([&] { return said("now").starts_with("the desk has told 1 of 2"); });
  panel_.status(kPanelNotConnected);
  panel_.status(kPanelConnected);
  window_->look();
  await([&] { return said("now").starts_with("Asking the desk: 0 of 2"); });
}

// Catches a mark where only the spelling differs.
TEST_F(RehearseWindowTest, MarksWhatTheMacroWouldMakeDifferent) {
  open({{"ME1.KEY1.CLIP.SET", "0.250000"}, {"ME2.KEY1.CLIP.SET", "0.5"}});
  connectPanel();
  panel_.value(kClipName, "0.25");
  panel_.value(kOtherName, "0.25");
  await([&] { return said("now").ends_with("After this macro: 1 not as now (≠), 1 as now."); });
  press(Qt::Key_End);
  await([&] { return atStep() == std::vector<std::string>{"|25.0%", "● ≠|50.0%"}; });
  await([&] { return said("done") == "ME 2 Key 1 Clip Set: 25.0% → 50.0%"; });
  EXPECT_THAT(text(values(), 3, RehearseModel::kSigns, Qt::AccessibleTextRole),
              HasSubstr("not as the panel has it now"));
  EXPECT_TRUE(values().index(3, RehearseModel::kState).data(Qt::FontRole).value<QFont>().bold());
  press(Qt::Key_Left);
  EXPECT_THAT(atStep(), ElementsAre("=|25.0%", "|25.0%"));
}

// Catches a step that slides off its command or stays in another macro, and an old macro that comes late.
TEST_F(RehearseWindowTest, FollowsTheMacroAndKeepsItsPlace) {
  open({kOther, kSet, kMore, kOther});
  for (int i = 0; i < 4; ++i) press(Qt::Key_Down);
  const auto row = [&] {
    return text(values(), child<QTableView>("values").currentIndex().row(), RehearseModel::kName);
  };
  ASSERT_EQ(row(), "ME 1 Key 1 Clip Set");
  for (int i = 0; i < 3; ++i) press(Qt::Key_Right);
  const struct {
    const char* what;
    Commands commands;
    int step;
  } changes[] = {{"inserted in front", {kNothing, kSetAgain, kOther, kSet, kMore, kOther}, 5},
                 {"removed in front", {kOther, kSet, kMore, kOther}, 3},
                 {"added behind", {kOther, kSet, kMore, kOther, kSet}, 3},
                 {"itself replaced", {kOther, kSet, kSet, kOther, kSet}, 3},
                 {"nearly all removed", {kOther, kSet}, 2}};
  for (const auto& [what, commands, step] : changes) {
    change(commands);
    EXPECT_EQ(this->step(), step) << what;
    EXPECT_EQ(row(), "ME 1 Key 1 Clip Set") << what;
  }
  held_.emplace(0);
  begun_ = false;
  commands_ = {{kMore}};
  window_->follow();
  await([&] { return begun_.load(); });
  commands_ = {{kOther, kSet}};
  window_->follow();
  QApplication::processEvents();
  held_->release(1);
  await([&] { return grid().columnCount() == 1; });
  held_->release(1);
  awaitCommands();
  held_.reset();
  connectPanel();
  panel_.transport->take();
  ++opening_;
  change({kMore, {"ME3.KEY1.CLIP.SET", "0.5"}, kMore});
  EXPECT_EQ(step(), 0);
  panel_.transport->await("subscribe QMF1.ME3.KEY1.CLIP");
}

TEST_F(RehearseWindowTest, SaysWhyThereIsNothing) {
  open({kSet});
  const auto notice = [&](const char* expected, bool tabs) {
    await([&] { return said("notice") == expected; });
    EXPECT_EQ(
        shutIn(*window_),
        !tabs ? "askAgain next previous slider startFromNow; after afterTab grid legend stepsTab tabs values"
              : std::string("askAgain startFromNow; after afterTab") + (*expected == '\0' ? " notice" : ""));
  };
  notice("", true);
  change({});
  notice("The macro has no command.", false);
  change({kNothing});
  notice("No command changes a value that could be told: \"After This Macro\" lists what they do.", true);
  commands_.reset();
  window_->follow();
  notice("The pane shows no macro.", false);
  press(Qt::Key_Right, &child<QSlider>("slider"));
  EXPECT_EQ(said("place"), "step 0 of 0");
}

}  // namespace
}  // namespace tessaly
