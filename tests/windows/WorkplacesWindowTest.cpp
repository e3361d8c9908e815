// Two workplaces beside each other, worked by keys and clicks as a person does it.
#include <atomic>
#include <thread>

#include <QComboBox>
#include <QPointer>
#include <QTableView>

#include "review/DiskShelf.h"
#include "tests/windows/ReviewFixture.h"
#include "windows/WorkplacesWindow.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::SizeIs;

// A folder that, while the test says so, is read by nobody before a cancel, or not at one number.
class HangingShelf final : public MacroShelf {
 public:
  HangingShelf(const SiteRoot& root, MacroHistory& history, const std::atomic<bool>& hangs,
               const std::atomic<int>& unreadable)
      : disk_(root, history, "c:\\left"), hangs_(hangs), unreadable_(unreadable) {}
  std::string title() const override { return disk_.title(); }
  MacroPlace place(MacroNumber number) const override { return disk_.place(number); }
  Expected<std::vector<Held>> list() override { return disk_.list(); }
  Expected<std::string> read(MacroNumber number) override {
    if (hangs_) {
      std::unique_lock guard(mutex_);
      changed_.wait(guard, [this] { return cancelled_; });
    }
    if (number.value() == unreadable_) return Failure{Failure::Kind::kPanel, "the line was lost"};
    return disk_.read(number);
  }
  Outcome writable() const override { return disk_.writable(); }
  ShelfWrite write(MacroNumber number, std::string_view bytes, MacroChange change,
                   const BeforeWrite& before) override {
    return disk_.write(number, bytes, change, before);
  }
  ShelfWrite remove(MacroNumber number, const BeforeWrite& before) override {
    return disk_.remove(number, before);
  }
  void cancel() override {
    disk_.cancel();
    const std::scoped_lock guard(mutex_);
    cancelled_ = true;
    changed_.notify_all();
  }

 private:
  DiskShelf disk_;
  const std::atomic<bool>& hangs_;
  const std::atomic<int>& unreadable_;
  std::mutex mutex_;
  std::condition_variable changed_;
  bool cancelled_ = false;
};

class WorkplacesWindowTest : public WindowFixture {
 protected:
  WorkplacesWindowTest() {
    write("left", 1, "One");
    write("left", 2, "Two");
    write("left", 3, "Three");
    write("right", 1, "One");
    write("right", 2, "Zwei");
    write("right", 4, "Vier");
    std::filesystem::create_directories(site.root.resolve("c:\\right"));
  }
  ~WorkplacesWindowTest() override { delete window_; }
  QWidget& top() override { return *window_; }

  void write(const std::string& folder, int number, const std::string& name) const {
    site.write(file(folder, number), macroOf(name));
  }
  static std::string file(const std::string& folder, int number) {
    return "c:\\" + folder + "\\" + macroFileName(MacroNumber::textOf(number));
  }
  std::vector<WorkplaceChoice> choices() {
    return {
        {"left", [this] { return std::make_shared<HangingShelf>(site.root, history_, hangs_, unreadable_); }},
        {"right", [this] { return std::make_shared<DiskShelf>(site.root, other_, "c:\\right"); }},
        {"other...", {}, [this](QWidget*) { return answer_; }}};
  }
  void open() {
    window_ = new WorkplacesWindow({.root = site.root,
                                    .choices = [this] { return choices(); },
                                    .mayWrite =
                                        [this](const std::vector<MacroPlace>& places) {
                                          asked_ = places.size();
                                          return mayWrite_;
                                        },
                                    .knowledge = {},
                                    .maySend = {},
                                    .whenFree = {},
                                    .failureText = words});
    QObject::connect(window_, &WorkplacesWindow::written,
                     [this](const MacroPlace& place) { written_.push_back(place.file); });
    QObject::connect(window_, &WorkplacesWindow::copied,
                     [this](const QString&, const std::vector<BatchTrace>& traces) { traces_ = traces; });
    QObject::connect(window_, &WorkplacesWindow::compareWanted,
                     [this](const WorkplaceChoice&, const WorkplaceChoice&, MacroNumber number) {
                       compared_ = number.value();
                     });
    window_->present();
    QApplication::setActiveWindow(window_);
    settle();
  }
  void settle() const {
    ASSERT_TRUE(QTest::qWaitFor([this] { return !window_->busy(); }, 20'000));
  }
  QTableView& table() { return child<QTableView>("table"); }
  std::vector<std::string> rows() {
    std::vector<std::string> texts;
    const QAbstractItemModel& model = *table().model();
    for (int row = 0; row < model.rowCount(); ++row) {
      QStringList cells;
      for (int column = 0; column < model.columnCount(); ++column)
        cells << model.index(row, column).data().toString();
      texts.push_back(cells.join('|').toStdString());
    }
    return texts;
  }
  // Presses a key in the row.
  void press(int row, Qt::Key key) {
    click(table(), table().model()->index(row, WorkplacesModel::kState));
    QTest::keyClick(&table(), key);
  }

  MacroHistory history_{site.root}, other_{site.root};
  std::atomic<bool> hangs_ = false;
  std::atomic<int> unreadable_ = -1;
  std::optional<WorkplaceChoice> answer_;  // to what is asked for another one
  bool mayWrite_ = true;
  std::size_t asked_ = 0;
  std::vector<std::string> written_;
  std::vector<BatchTrace> traces_;
  int compared_ = -1;
  QPointer<WorkplacesWindow> window_;
};

TEST_F(WorkplacesWindowTest, WhatIsTickedIsCopiedAndNothingElse) {
  open();
  EXPECT_THAT(rows(), ElementsAre("001|One|= same|One|", "002|Two|≈ renamed only|Zwei|",
                                  "003|Three|← only left||", "004||→ only right|Vier|"));
  EXPECT_EQ(toldBy(*table().model())[1], "002 - | Two | ≈ renamed only | Zwei | ");
  EXPECT_EQ(headingsOf(*table().model()), "Number | left | State | right | Result");
  EXPECT_THAT(cutOff(table()), ElementsAre());
  EXPECT_EQ(shutIn(*window_), "cancel retry toLeft toRight; progress");
  EXPECT_EQ(said("told"), "4 macros: 1 the same, 3 not the same");
  tick("onlyDifferences");
  EXPECT_THAT(rows(), SizeIs(3));
  press(0, Qt::Key_Return);
  EXPECT_EQ(compared_, 2);
  EXPECT_FALSE(enabled("toRight"));
  press(1, Qt::Key_Space);
  mayWrite_ = false;
  click("toRight");
  settle();
  EXPECT_EQ(asked_, 1U);
  EXPECT_EQ(site.read(file("right", 3)), "<missing>") << "the user said no";
  mayWrite_ = true;
  click("tickDifferent");
  write("right", 2, "Changed since");
  click("toRight");
  settle();
  EXPECT_EQ(site.read(file("right", 3)), macroOf("Three"));
  EXPECT_EQ(site.read(file("right", 2)), macroOf("Changed since"));
  EXPECT_EQ(site.read(file("right", 4)), macroOf("Vier")) << "what is only there stays";
  EXPECT_THAT(written_, ElementsAre(file("right", 3)));
  EXPECT_THAT(traces_, SizeIs(1));
  EXPECT_EQ(said("told"), "1 macros copied, 1 NOT copied");
  EXPECT_THAT(
      rows(),
      ElementsAre("002|Two|≈ renamed only|Zwei|NOT copied: holds something else by now: it was let alone",
                  "003|Three|= same|Three|copied, verified",
                  "004||→ only right|Vier|not copied: there is nothing to be copied"));
  EXPECT_EQ(shutIn(*window_), "cancel; progress");
  write("right", 2, "Zwei");
  for (const bool may : {false, true}) {
    mayWrite_ = may;
    click("retry");
    settle();
    EXPECT_EQ(asked_, 1U) << "of what failed";
    EXPECT_EQ(site.read(file("right", 2)), macroOf(may ? "Two" : "Zwei")) << "a pane may show it by now";
  }
  EXPECT_THAT(traces_, SizeIs(1)) << "what was written before is an entry of its own";
  click("again");
  settle();
  EXPECT_THAT(rows(), ElementsAre("004||→ only right|Vier|"));
}

TEST_F(WorkplacesWindowTest, AWorkplaceThatIsAskedForStandsThereOnceItIsGiven) {
  std::filesystem::create_directories(site.root.resolve("c:\\none"));
  open();
  auto& box = child<QComboBox>("right");
  for (const bool given : {false, true}) {
    if (given)
      answer_ = {"a long name of a third workplace, which is told apart by its end",
                 [this] { return std::make_shared<DiskShelf>(site.root, other_, "c:\\none"); }};
    QTest::keyClick(&box, Qt::Key_Down);
    settle();
    EXPECT_EQ(box.currentText(), given ? answer_->text : "right");
    EXPECT_EQ(rows()[0], given ? "001|One|← only left||" : "001|One|= same|One|");
  }
  EXPECT_EQ(box.count(), 4);
  const QAbstractItemModel& model = *table().model();
  EXPECT_EQ(model.headerData(WorkplacesModel::kRight, Qt::Horizontal, Qt::ToolTipRole), answer_->text);
  const QString cut = model.headerData(WorkplacesModel::kRight, Qt::Horizontal).toString();
  EXPECT_TRUE(cut.contains(QChar(0x2026)) && cut.endsWith("end")) << cut.toStdString();
  click("tickDifferent");
  click("toLeft");
  EXPECT_EQ(said("told"), "Nothing is ticked that differs and can be copied this way.");
  EXPECT_THAT(rows()[0], EndsWith("not copied: there is nothing to be copied"));
}

TEST_F(WorkplacesWindowTest, WhatCouldNotBeReadIsNotWrittenOver) {
  unreadable_ = 2;
  open();
  EXPECT_EQ(toldBy(*table().model())[1], "002 - |  | ? unreadable [the line was lost] | Zwei | ");
  press(1, Qt::Key_Space);
  unreadable_ = -1;
  click("toLeft");
  settle();
  EXPECT_EQ(site.read(file("left", 2)), macroOf("Two"));
  EXPECT_THAT(rows()[1], EndsWith("not copied: what stands there could not be read; read again"));
  click("again");
  settle();
  press(1, Qt::Key_Space);
  click("toLeft");
  settle();
  EXPECT_EQ(site.read(file("left", 2)), macroOf("Zwei"));
}

TEST_F(WorkplacesWindowTest, ClosingEndsWhatRunsFirst) {
  open();
  hangs_ = true;
  click("again");
  EXPECT_TRUE(window_->busy());
  EXPECT_EQ(said("told"), "Reading...");
  EXPECT_EQ(shutIn(*window_), "compare retry tickDifferent toLeft toRight; ");
  click("again");  // in place of what runs
  hangs_ = false;
  settle();
  EXPECT_THAT(rows(), SizeIs(4));
  click("tickDifferent");
  click("toRight");
  std::this_thread::sleep_for(
      std::chrono::milliseconds(50));  // all is read, which nobody has told the window
  click("cancel");
  settle();
  EXPECT_EQ(site.read(file("right", 3)), "<missing>");
  hangs_ = true;
  click("toRight");
  EXPECT_TRUE(window_->busy());
  EXPECT_EQ(said("told"), "Reading what is to be copied...");
  EXPECT_EQ(shutIn(*window_), "again left retry right toLeft toRight; ");
  window_->close();
  EXPECT_EQ(said("told"), "Ending what is being read or copied...");
  EXPECT_TRUE(QTest::qWaitFor([this] { return window_.isNull(); }, 20'000));
  EXPECT_EQ(site.read(file("right", 2)), macroOf("Zwei"));
  EXPECT_EQ(site.read(file("right", 3)), "<missing>");
}

}  // namespace
}  // namespace tessaly
