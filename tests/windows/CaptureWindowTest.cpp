// The window of a capture by its own events, over a panel that answers when the test lets it.
#include <gmock/gmock.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTreeView>

#include "tests/link/FakeTransport.h"
#include "tests/support/Told.h"
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

struct Command {
  const char* fid;
  const char* value;
};
constexpr Command kThree[] = {{"QMF1.A", "1"}, {"QMF1.B", "2"}, {"QMF1.A", "3"}};

Macro macroOf(const std::vector<Command>& commands) {
  std::string text = "<macro name='M'><data>";
  for (const auto& [fid, value] : commands)
    text += "<cmd fid='" + std::string(fid) + "' workplace='1'>" +
            (value == nullptr ? std::string() : "<param name='P' value='" + std::string(value) + "'/>") +
            "</cmd>";
  return *Macro::read(text + "</data></macro>");
}

class CaptureWindowTest : public testing::Test {
 protected:
  CaptureWindowTest() {
    for (const auto& [name, sid] : {std::pair{"A", "a"}, {"B", "b"}, {"SHARED", "a"}, {"STEP", ""}}) {
      FunctionTemplate definition;
      definition.name = name;
      definition.sid = sid;
      definition.description = name;
      definition.integers.emplace_back().name = "P";
      dictionary_.add(std::move(definition));
    }
    dictionary_.finish();
    now_.macro = macroOf({std::begin(kThree), std::end(kThree)});
    now_.heading = "the macro";
    line_.connection = 1;
    panel_.status(kPanelConnected);
  }
  ~CaptureWindowTest() override { window_.reset(); }

  void open(std::chrono::milliseconds patience = std::chrono::seconds(30)) {
    const auto post = [this](std::function<void()> step) {
      QMetaObject::invokeMethod(&context_, std::move(step), Qt::QueuedConnection);
    };
    window_ = std::make_unique<CaptureWindow>(
        CaptureWays{
            .subject = [this] { return now_; },
            .selected = [this] { return selected_; },
            .line = [this] { return line_; },
            .questions =
                [this, post](PanelQuestions::Taker taker) {
                  return std::make_unique<PanelQuestions>(*panel_.client, post, std::move(taker));
                },
            .take = [this](const CaptureTake& taken) { return take(taken); },
            .failureText = [](const Failure& failure) { return QString::fromStdString(failure.text); },
            .patience = patience},
        LineContext{dictionary_, lists_}, LineOptions{});
    window_->setAttribute(Qt::WA_DeleteOnClose, false);
    window_->show();
    tree_ = window_->findChild<QTreeView*>("values");
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
    await([&] { return !label("outcome").empty(); });
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
  [[nodiscard]] Strings column(int column) const {
    Strings texts;
    for (int row = 0; row < tree_->model()->rowCount(); ++row)
      texts.push_back(tree_->model()->index(row, column).data().toString().toStdString());
    return texts;
  }
  // "x" ticked, "-" not, "." without a box.
  [[nodiscard]] std::string ticks() const {
    std::string text;
    for (int row = 0; row < tree_->model()->rowCount(); ++row) {
      const QVariant tick = tree_->model()->index(row, 0).data(Qt::CheckStateRole);
      text += !tick.isValid() ? '.' : tick.toInt() == Qt::Checked ? 'x' : '-';
    }
    return text;
  }
  [[nodiscard]] QPushButton& button(const char* name) const {
    return *window_->findChild<QPushButton*>(name);
  }
  void press(const char* name) const {
    ASSERT_TRUE(button(name).isEnabled()) << name;
    QTest::mouseClick(&button(name), Qt::LeftButton);
    QCoreApplication::processEvents();
  }
  [[nodiscard]] std::string label(const char* name) const {
    return window_->findChild<QLabel*>(name)->text().toStdString();
  }
  void space(int row) {
    const QModelIndex at = tree_->model()->index(row, Column::kState);
    QTest::mouseClick(tree_->viewport(), Qt::LeftButton, {}, tree_->visualRect(at).center());
    QTest::keyClick(tree_, Qt::Key_Space);
  }
  void await(const std::function<bool()>& condition) const { ASSERT_TRUE(QTest::qWaitFor(condition, 10000)); }
  Strings subscribed() { return panel_.transport->take(); }

  FunctionDictionary dictionary_;
  SiteRoot root_{"/nowhere"};
  DecodingLists lists_{root_};
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

// Catches values beside the wrong command, a tick where nothing differs, a later value in the place of the
// one that was looked at, and a take that is not one edit of just what is ticked.
TEST_F(CaptureWindowTest, WhatIsTickedIsTakenInOneEditAndCanBeTakenBack) {
  open();
  EXPECT_THAT(subscribed(), ElementsAre("subscribe QMF1.a", "subscribe QMF1.b"));
  EXPECT_EQ(headingsOf(*tree_->model()), "Step | Command | In the macro | On the panel | State");
  EXPECT_EQ(shutIn(*window_), "askAgain scope selectAll selectNone takeOver; ");
  EXPECT_EQ(label("heading"), "the macro");
  EXPECT_EQ(label("counts"), "0 of 3 values have come; 0 differ, 0 are ticked. Waiting for the others.");
  EXPECT_EQ(tree_->currentIndex().row(), 0);
  tell("QMF1.b", "");  // what is told of a name that was asked for twice
  EXPECT_THAT(column(Column::kState), ElementsAre("waiting", "waiting", "waiting"));
  EXPECT_FALSE(button("takeOver").isEnabled());
  tell("QMF1.a", "1");
  EXPECT_EQ(ticks(), "..x");
  tell("QMF1.a", "7");
  tell("QMF1.b", "4");
  EXPECT_THAT(column(Column::kState), ElementsAre("same", "differs", "differs"));
  EXPECT_THAT(column(Column::kOld), ElementsAre("1", "2", "3"));
  EXPECT_THAT(toldBy(*tree_->model()), ElementsAre("1 [] > | A ==> 1 [] | 1 [] | 1 [] | same []",
                                                   "2 [] x > | B ==> 2 [] | 2 [] | 4 [] | differs []",
                                                   "3 [] x > | A ==> 3 [] | 3 [] | 1 [] | differs []"));
  EXPECT_THAT(cutOff(*tree_), IsEmpty());
  EXPECT_EQ(label("counts"), "3 of 3 values have come; 2 differ, 2 are ticked.");
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
  EXPECT_THAT(column(Column::kState), ElementsAre("same", "differs", "same"));
  EXPECT_THAT(column(Column::kCommand), ElementsAre(_, HasSubstr("2"), Not(HasSubstr("3"))));
  EXPECT_EQ(label("outcome"), "1 values taken over; \"Undo\" in the pane takes them back.");
  change(before);
  EXPECT_THAT(column(Column::kState), ElementsAre("same", "differs", "differs"));
  EXPECT_THAT(column(Column::kOld), ElementsAre("1", "2", "3"));
}

// Catches a wait that hides what never came, late values that are dropped, and an "Ask Again" that asks for
// what is there.
TEST_F(CaptureWindowTest, WhatDoesNotComeIsToldTakenLateAndAskedForAgain) {
  open(std::chrono::milliseconds(50));
  subscribed();
  tell("QMF1.b", "4");
  await([&] { return column(Column::kState)[0] == "did not come"; });
  EXPECT_THAT(column(Column::kState), ElementsAre("did not come", "differs", "did not come"));
  const Macro before = *now_.macro;
  change(macroOf({}));
  change(before);
  EXPECT_EQ(label("counts"),
            "1 of 3 values have come; 1 differ, 1 are ticked. 2 did not come; \"Ask Again\" asks for them.");
  EXPECT_TRUE(button("takeOver").isEnabled()) << "what came can be taken meanwhile";
  press("askAgain");
  EXPECT_THAT(subscribed(), ElementsAre("subscribe QMF1.a"));
  EXPECT_EQ(column(Column::kState)[0], "waiting");
  EXPECT_FALSE(button("askAgain").isEnabled());
  await([&] { return column(Column::kState)[0] == "did not come"; });
  tell("QMF1.a", "3");
  EXPECT_THAT(column(Column::kState), ElementsAre("differs", "differs", "same"));
  EXPECT_EQ(ticks(), "xx.");
  EXPECT_FALSE(button("askAgain").isEnabled());
}

// Catches a window that waits on a line that is gone, or new, and questions to a panel that never saw the
// first ones.
TEST_F(CaptureWindowTest, ALostLineIsToldAndAskedAgainOnTheNextOne) {
  open();
  tell("QMF1.b", "4");
  line("the line is lost", 1);
  EXPECT_THAT(column(Column::kState), ElementsAre("did not come", "differs", "did not come"));
  EXPECT_THAT(label("counts"), EndsWith(" The panel cannot be asked: the line is lost."));
  EXPECT_FALSE(button("askAgain").isEnabled());
  line({}, 2);
  subscribed();
  press("askAgain");
  EXPECT_THAT(subscribed(), ElementsAre("subscribe QMF1.a"));
  line({}, 3);
  EXPECT_EQ(column(Column::kState)[0], "did not come") << "a loss that nobody saw is one, too";
  line_.address = "another panel";
  window_->look();
  EXPECT_FALSE(button("askAgain").isEnabled());
  line_.address = {};
  window_->look();
  press("askAgain");
  tell("QMF1.a", "9");
  EXPECT_EQ(ticks(), "xxx");
}

// Catches values that get into other commands than those that were looked at.
TEST_F(CaptureWindowTest, CommandsThatHaveChangedAreToldAndLeftAlone) {
  const std::vector<Command> edited[] = {{{"QMF1.A", "5"}, {"QMF1.B", "2"}, {"QMF1.A", "3"}},
                                         {{"QMF2.A", "1"}, {"QMF1.B", "2"}, {"QMF1.A", "3"}},
                                         {{"QMF1.B", "1"}, {"QMF1.B", "2"}}};
  const Strings states[] = {{"changed in the macro meanwhile", "differs", "differs"},
                            {"changed in the macro meanwhile", "differs", "differs"},
                            {"changed in the macro meanwhile", "differs", "changed in the macro meanwhile"}};
  open();
  tell("QMF1.a", "9");
  tell("QMF1.b", "9");
  const Macro before = *now_.macro;
  for (std::size_t row = 0; row < std::size(edited); ++row) {
    change(macroOf(edited[row]));
    EXPECT_EQ(column(Column::kState), states[row]) << row;
    change(before);
    EXPECT_EQ(ticks(), "xxx") << row;
  }
  change(macroOf(edited[2]));
  takeOver();
  EXPECT_THAT(taken_, ElementsAre(ElementsAre(std::pair(1, std::string("9")))));
  now_.place = "another";
  change(before);
  EXPECT_EQ(ticks(), "...");
  EXPECT_FALSE(button("takeOver").isEnabled());
  EXPECT_EQ(label("counts"),
            "3 of 3 values have come; 0 differ, 0 are ticked. 3 commands were changed meanwhile and stay as "
            "they are; \"Capture Anew\" begins with the macro as it is now. Nothing can be taken over: "
            "another macro was opened in the pane.");
  QTest::keyClick(window_.get(), Qt::Key_F5);
  EXPECT_THAT(column(Column::kOld), ElementsAre("1", "2", "3"));
}

// Catches a refusal that is not told, or seen too late, and a take that Esc behind it loses.
TEST_F(CaptureWindowTest, ARefusalIsToldAndLeavesAllAsItIs) {
  open();
  tell("QMF1.b", "4");
  refusal_ = "the disk is full";
  takeOver();
  EXPECT_EQ(label("outcome"), "NOTHING was taken over: the disk is full");
  refusal_.clear();
  now_.refusal = "a transfer is using the macro";
  takeOver();
  EXPECT_THAT(label("outcome"), HasSubstr("a transfer is using the macro"));
  now_.refusal.clear();
  QTest::mouseClick(&button("takeOver"), Qt::LeftButton);
  change(macroOf({{"QMF1.A", "8"}, {"QMF1.B", "2"}}));
  await([&] { return !label("outcome").empty(); });
  EXPECT_THAT(label("outcome"), HasSubstr("changed meanwhile"));
  EXPECT_THAT(taken_, IsEmpty());
  EXPECT_EQ(ticks(), ".x.");
  QTest::mouseClick(&button("takeOver"), Qt::LeftButton);
  QTest::keyClick(window_.get(), Qt::Key_Escape);
  await([&] { return !window_->isVisible(); });
  EXPECT_THAT(taken_, SizeIs(1));
}

// Catches questions for commands that take no value, or whose value the update would give to others.
TEST_F(CaptureWindowTest, WhatCannotBeAskedSaysWhy) {
  now_.macro = macroOf({{"QMF1.NCSCOMMAND", "23 10"},
                        {"A", "1"},
                        {"QMF1.STEP", "1"},
                        {"QMF1.UNKNOWN", "1"},
                        {"QMF1.SHARED", "1"},
                        {"QMF1.A", nullptr}});
  open();
  EXPECT_THAT(
      column(Column::kState),
      ElementsAre("cannot be asked: a classic command", "cannot be asked: no destination",
                  "cannot be asked: the function has no value", "cannot be asked: the function has no value",
                  "cannot be asked: the value is that of another function",
                  "cannot be asked: the command has no value"));
  EXPECT_THAT(subscribed(), IsEmpty());
}

// Catches a choice that asks for the others, too, and one that is not offered.
TEST_F(CaptureWindowTest, SeveralSelectedAreCapturedAloneUnlessAllAreWanted) {
  selected_ = {1, 2};
  open();
  EXPECT_THAT(column(Column::kStep), ElementsAre("2", "3"));
  auto& scope = *window_->findChild<QComboBox*>("scope");
  scope.setFocus();
  QTest::keyClick(&scope, Qt::Key_Down);
  EXPECT_THAT(column(Column::kStep), ElementsAre("1", "2", "3"));
  window_->beginIfOther();
  EXPECT_THAT(column(Column::kStep), SizeIs(3)) << "it shows what is wanted already";
  selected_ = {0};
  window_->beginIfOther();
  EXPECT_THAT(column(Column::kStep), SizeIs(3));
  EXPECT_FALSE(scope.isEnabled());
}

// Catches rows that stay or are missed when only differences are shown, and a list that jumps under the hand
// while values come.
TEST_F(CaptureWindowTest, DifferencesAloneFollowAndTheListStaysInPlace) {
  std::vector<Command> many;
  for (int number = 0; number < 400; ++number) many.push_back({number % 2 == 0 ? "QMF1.A" : "QMF1.B", "1"});
  now_.macro = macroOf(many);
  open();
  auto& only = *window_->findChild<QCheckBox*>("onlyDifferences");
  QTest::mouseClick(&only, Qt::LeftButton, {}, {8, only.height() / 2});
  EXPECT_THAT(column(Column::kStep), IsEmpty());
  tell("QMF1.b", "2");
  ASSERT_THAT(column(Column::kStep), SizeIs(200));
  tree_->scrollTo(tree_->model()->index(150, 0), QAbstractItemView::PositionAtTop);
  const QModelIndex seen = tree_->indexAt({5, 5});
  QTest::mouseClick(tree_->viewport(), Qt::LeftButton, {}, tree_->visualRect(seen).center());
  const QString step = seen.data().toString();
  tell("QMF1.a", "2");
  ASSERT_THAT(column(Column::kStep), SizeIs(400));
  EXPECT_EQ(tree_->indexAt({5, 5}).data().toString(), step);
  EXPECT_EQ(tree_->currentIndex().siblingAtColumn(0).data().toString(), step);
}

}  // namespace
}  // namespace tessaly
