// The window of a capture by its own events, over a panel that answers when the test lets it.
#include <QComboBox>
#include <QTreeView>

#include "tests/link/FakeTransport.h"
#include "tests/windows/ReviewFixture.h"
#include "windows/CaptureWindow.h"

namespace tessaly {
namespace {

using testing::_;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using Column = CaptureModel::Column;
using Strings = std::vector<std::string>;

const Commands kThree = {{"QMF1.A", "1"}, {"QMF1.B", "2"}, {"QMF1.A", "3"}};

Macro macroWith(const Commands& commands) { return *Macro::read(macroOf("M", textOf(commands, ""))); }

class CaptureWindowTest : public WindowFixture {
 protected:
  CaptureWindowTest() {
    for (const auto& [name, sid] : {std::pair{"A", "a"}, {"B", "b"}, {"SHARED", "a"}, {"STEP", ""}}) {
      FunctionTemplate definition;
      definition.name = name;
      definition.sid = sid;
      definition.description = name;
      definition.integers.emplace_back().name = "VALUE";
      dictionary_.add(std::move(definition));
    }
    dictionary_.finish();
    now_.macro = macroWith(kThree);
    now_.heading = "the macro";
    line_.connection = 1;
    panel_.status(kPanelConnected);
  }
  ~CaptureWindowTest() override { window_.reset(); }
  QWidget& top() override { return *window_; }

  void open(std::chrono::milliseconds patience = std::chrono::seconds(30)) {
    const auto post = [this](std::function<void()> step) {
      QMetaObject::invokeMethod(&context_, std::move(step), Qt::QueuedConnection);
    };
    window_ = std::make_unique<CaptureWindow>(
        CaptureWays{.subject = [this] { return now_; },
                    .selected = [this] { return selected_; },
                    .line = [this] { return line_; },
                    .questions =
                        [this, post](PanelQuestions::Taker taker) {
                          return std::make_unique<PanelQuestions>(*panel_.client, post, std::move(taker));
                        },
                    .take = [this](const CaptureTake& taken) { return take(taken); },
                    .failureText = words,
                    .patience = patience},
        LineContext{dictionary_, lists}, LineOptions{});
    window_->setAttribute(Qt::WA_DeleteOnClose, false);
    window_->show();
    tree_ = &child<QTreeView>("values");
    QCoreApplication::processEvents();
  }
  QString take(const CaptureTake& taken) {
    if (!refusal_.isEmpty()) return refusal_;
    if (taken.shown.check() != now_.macro->check()) return "changed meanwhile";
    taken_.push_back(taken.edit.values);
    change(*taken.taken);
    return {};
  }
  void takeOver() {
    press("takeOver");
    await([&] { return !said("outcome").empty(); });
  }
  void change(Macro macro) {
    now_.macro = std::move(macro);
    window_->follow();
  }
  void tell(const std::string& name, const std::string& value) {
    panel_.value(name, value);
    QCoreApplication::processEvents();
  }
  void line(const QString& trouble, unsigned connection) {
    line_.trouble = trouble;
    line_.connection = connection;
    panel_.status(trouble.isEmpty() ? kPanelConnected : kPanelNotConnected);
    window_->look();
  }
  [[nodiscard]] Strings column(int column) const { return WindowFixture::column(*tree_->model(), column); }
  [[nodiscard]] Strings states() const { return column(Column::kState); }
  // "x" ticked, "-" not, "." without a box.
  [[nodiscard]] std::string ticks() const {
    std::string text;
    for (int row = 0; row < tree_->model()->rowCount(); ++row) {
      const QVariant tick = tree_->model()->index(row, 0).data(Qt::CheckStateRole);
      text += !tick.isValid() ? '.' : tick.toInt() == Qt::Checked ? 'x' : '-';
    }
    return text;
  }
  void press(const char* name) {
    ASSERT_TRUE(enabled(name)) << name;
    click(name);
    QCoreApplication::processEvents();
  }
  void space(int row) {
    click(*tree_, tree_->model()->index(row, Column::kState));
    QTest::keyClick(tree_, Qt::Key_Space);
  }
  void await(const std::function<bool()>& condition) const { ASSERT_TRUE(QTest::qWaitFor(condition, 10000)); }
  Strings subscribed() { return panel_.transport->take(); }

  FunctionDictionary dictionary_;
  FakePanel panel_;
  QObject context_;
  CaptureSubject now_;
  CaptureLine line_;
  std::vector<int> selected_;
  QString refusal_;
  std::vector<std::vector<std::pair<int, std::string>>> taken_;
  std::unique_ptr<CaptureWindow> window_;
  QTreeView* tree_ = nullptr;
};

// Catches values beside another command, a later value in the place of the one that was looked at.
TEST_F(CaptureWindowTest, WhatIsTickedIsTakenInOneEditAndCanBeTakenBack) {
  open();
  EXPECT_THAT(subscribed(), ElementsAre("subscribe QMF1.a", "subscribe QMF1.b"));
  EXPECT_EQ(headingsOf(*tree_->model()), "Step | Command | In the macro | On the panel | State");
  EXPECT_EQ(shutIn(*window_), "askAgain scope selectAll selectNone takeOver; ");
  EXPECT_EQ(said("heading"), "the macro");
  EXPECT_EQ(said("counts"), "0 of 3 values have come; 0 differ, 0 are ticked. Waiting for the others.");
  EXPECT_EQ(tree_->currentIndex().row(), 0);
  tell("QMF1.b", "");  // what is told of a name that was asked for twice
  EXPECT_THAT(states(), ElementsAre("waiting", "waiting", "waiting"));
  EXPECT_FALSE(enabled("takeOver"));
  tell("QMF1.a", "1");
  EXPECT_EQ(ticks(), "..x");
  tell("QMF1.a", "7");
  tell("QMF1.b", "4");
  EXPECT_THAT(states(), ElementsAre("same", "differs", "differs"));
  EXPECT_THAT(column(Column::kOld), ElementsAre("1", "2", "3"));
  EXPECT_THAT(toldBy(*tree_->model()), ElementsAre("1 [] > | A ==> 1 [] | 1 [] | 1 [] | same []",
                                                   "2 [] x > | B ==> 2 [] | 2 [] | 4 [] | differs []",
                                                   "3 [] x > | A ==> 3 [] | 3 [] | 1 [] | differs []"));
  EXPECT_THAT(cutOff(*tree_), IsEmpty());
  EXPECT_EQ(said("counts"), "3 of 3 values have come; 2 differ, 2 are ticked.");
  space(1);
  space(0);
  EXPECT_EQ(ticks(), ".-x");
  press("selectNone");
  EXPECT_EQ(ticks(), ".--");
  EXPECT_EQ(shutIn(*window_), "askAgain scope selectNone takeOver; ");
  press("selectAll");
  EXPECT_EQ(ticks(), ".xx");
  EXPECT_EQ(shutIn(*window_), "askAgain scope selectAll; ");
  space(1);
  const Macro before = *now_.macro;
  takeOver();
  EXPECT_THAT(taken_, ElementsAre(ElementsAre(std::pair(2, std::string("1")))));
  EXPECT_THAT(states(), ElementsAre("same", "differs", "same"));
  EXPECT_THAT(column(Column::kCommand), ElementsAre(_, HasSubstr("2"), Not(HasSubstr("3"))));
  EXPECT_EQ(said("outcome"), "1 values taken over; \"Undo\" in the pane takes them back.");
  change(before);
  EXPECT_THAT(states(), ElementsAre("same", "differs", "differs"));
  EXPECT_THAT(column(Column::kOld), ElementsAre("1", "2", "3"));
}

// Catches an "Ask Again" that asks for what is there.
TEST_F(CaptureWindowTest, WhatDoesNotComeIsToldTakenLateAndAskedForAgain) {
  open(std::chrono::milliseconds(50));
  subscribed();
  int moving = 3;
  await([&] {
    tell("QMF1.b", std::to_string(++moving));
    return states()[0] == "did not come";
  });
  EXPECT_THAT(states(), ElementsAre("did not come", "differs", "did not come"));
  const Macro before = *now_.macro;
  change(macroWith({}));
  change(before);
  EXPECT_EQ(said("counts"),
            "1 of 3 values have come; 1 differ, 1 are ticked. 2 did not come; \"Ask Again\" asks for them.");
  EXPECT_TRUE(enabled("takeOver")) << "what came can be taken meanwhile";
  press("askAgain");
  EXPECT_THAT(subscribed(), ElementsAre("subscribe QMF1.a"));
  EXPECT_EQ(states()[0], "waiting");
  EXPECT_FALSE(enabled("askAgain"));
  await([&] { return states()[0] == "did not come"; });
  tell("QMF1.a", "3");
  EXPECT_THAT(states(), ElementsAre("differs", "differs", "same"));
  EXPECT_EQ(ticks(), "xx.");
  EXPECT_FALSE(enabled("askAgain"));
}

TEST_F(CaptureWindowTest, ALostLineIsToldAndAskedAgainOnTheNextOne) {
  open();
  tell("QMF1.b", "4");
  line("the line is lost", 1);
  EXPECT_THAT(states(), ElementsAre("did not come", "differs", "did not come"));
  EXPECT_THAT(said("counts"), EndsWith(" The panel cannot be asked: the line is lost."));
  EXPECT_FALSE(enabled("askAgain"));
  line({}, 2);
  subscribed();
  press("askAgain");
  EXPECT_THAT(subscribed(), ElementsAre("subscribe QMF1.a"));
  line({}, 3);
  EXPECT_EQ(states()[0], "did not come") << "a loss that nobody saw is one, too";
  press("askAgain");
  tell("QMF1.a", "9");
  EXPECT_EQ(ticks(), "xxx");
}

TEST_F(CaptureWindowTest, CommandsThatHaveChangedAreToldAndLeftAlone) {
  open();
  tell("QMF1.a", "9");
  tell("QMF1.b", "9");
  const Macro before = *now_.macro;
  change(macroWith({{"QMF1.B", "1"}, {"QMF1.B", "2"}}));
  EXPECT_THAT(states(),
              ElementsAre("changed in the macro meanwhile", "differs", "changed in the macro meanwhile"));
  takeOver();
  EXPECT_THAT(taken_, ElementsAre(ElementsAre(std::pair(1, std::string("9")))));
  now_.place = "another";
  change(before);
  EXPECT_EQ(ticks(), "...");
  EXPECT_FALSE(enabled("takeOver"));
  EXPECT_EQ(said("counts"),
            "3 of 3 values have come; 0 differ, 0 are ticked. 3 commands were changed meanwhile and stay as "
            "they are; \"Capture Anew\" begins with the macro as it is now. Nothing can be taken over: "
            "another macro was opened in the pane.");
  QTest::keyClick(window_.get(), Qt::Key_F5);
  EXPECT_THAT(column(Column::kOld), ElementsAre("1", "2", "3"));
}

// Catches a take that Esc behind it loses.
TEST_F(CaptureWindowTest, ARefusalIsToldAndLeavesAllAsItIs) {
  open();
  tell("QMF1.b", "4");
  refusal_ = "the disk is full";
  takeOver();
  EXPECT_EQ(said("outcome"), "NOTHING was taken over: the disk is full");
  refusal_.clear();
  now_.refusal = "a transfer is using the macro";
  takeOver();
  EXPECT_THAT(said("outcome"), HasSubstr("a transfer is using the macro"));
  now_.refusal.clear();
  click("takeOver");
  change(macroWith({{"QMF1.A", "8"}, {"QMF1.B", "2"}}));
  await([&] { return !said("outcome").empty(); });
  EXPECT_THAT(said("outcome"), HasSubstr("changed meanwhile"));
  EXPECT_THAT(taken_, IsEmpty());
  EXPECT_EQ(ticks(), ".x.");
  click("takeOver");
  QTest::keyClick(window_.get(), Qt::Key_Escape);
  await([&] { return !window_->isVisible(); });
  EXPECT_THAT(taken_, SizeIs(1));
}

// Catches questions for commands that take no value, or whose value the update would give to others.
TEST_F(CaptureWindowTest, WhatCannotBeAskedSaysWhy) {
  const Commands odd = {{"QMF1.NCSCOMMAND", "23 10"},
                        {"A", "1"},
                        {"QMF1.STEP", "1"},
                        {"QMF1.UNKNOWN", "1"},
                        {"QMF1.SHARED", "1"}};
  now_.macro = *Macro::read(macroOf("M", textOf(odd, "") + "<cmd fid='QMF1.A'/>"));
  open();
  EXPECT_THAT(states(), ElementsAre("cannot be asked: a classic command", "cannot be asked: no destination",
                                    "cannot be asked: the function has no value",
                                    "cannot be asked: the function has no value",
                                    "cannot be asked: the value is that of another function",
                                    "cannot be asked: the command has no value"));
  EXPECT_THAT(subscribed(), IsEmpty());
}

TEST_F(CaptureWindowTest, SeveralSelectedAreCapturedAloneUnlessAllAreWanted) {
  selected_ = {1, 2};
  open();
  EXPECT_THAT(column(Column::kStep), ElementsAre("2", "3"));
  auto& scope = child<QComboBox>("scope");
  scope.setFocus();
  QTest::keyClick(&scope, Qt::Key_Down);
  EXPECT_THAT(column(Column::kStep), ElementsAre("1", "2", "3"));
  window_->beginAgain();
  EXPECT_THAT(column(Column::kStep), SizeIs(3)) << "it shows what is wanted already";
  selected_ = {0};
  window_->beginAgain();
  EXPECT_THAT(column(Column::kStep), SizeIs(3));
  EXPECT_FALSE(scope.isEnabled());
}

TEST_F(CaptureWindowTest, ChosenAgainItAsksForTheValuesAsTheyAreNow) {
  open();
  for (const auto& [address, found] : {std::pair{"", "x-x"}, {"another panel", "xxx"}}) {
    for (const char* name : {"QMF1.a", "QMF1.b"}) tell(name, "9");
    space(1);
    line_.address = address;
    window_->beginAgain();
    EXPECT_THAT(states(), testing::Each("waiting"));
    for (const char* name : {"QMF1.a", "QMF1.b"}) tell(name, "8");
    EXPECT_EQ(ticks(), found);
    if (!*address) space(1);  // ticked again
  }
}

TEST_F(CaptureWindowTest, DifferencesAloneFollowAndTheListStaysInPlace) {
  Commands many;
  for (int number = 0; number < 400; ++number) many.emplace_back(number % 2 == 0 ? "QMF1.A" : "QMF1.B", "1");
  now_.macro = macroWith(many);
  open();
  tick("onlyDifferences");
  EXPECT_THAT(column(Column::kStep), IsEmpty());
  tell("QMF1.b", "2");
  ASSERT_THAT(column(Column::kStep), SizeIs(200));
  tree_->scrollTo(tree_->model()->index(150, 0), QAbstractItemView::PositionAtTop);
  const QModelIndex seen = tree_->indexAt({5, 5});
  click(*tree_, seen);
  const QString step = seen.data().toString();
  tell("QMF1.a", "2");
  ASSERT_THAT(column(Column::kStep), SizeIs(400));
  EXPECT_EQ(tree_->indexAt({5, 5}).data().toString(), step);
  EXPECT_EQ(tree_->currentIndex().siblingAtColumn(0).data().toString(), step);
}

}  // namespace
}  // namespace tessaly
