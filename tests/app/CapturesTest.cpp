// A capture from the main window against a simulated panel, which tells a value only once a test has set it.
#include <gmock/gmock.h>

#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTreeView>

#include "tests/app/PanelWindowFixture.h"
#include "windows/CaptureWindow.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class CapturesTest : public PanelWindowTest {
 protected:
  [[nodiscard]] std::string value(int key) const {
    return "QMF1.ME" + std::to_string(mixEffect_) + ".KEY" + std::to_string(key) + ".ON";
  }
  void open(Pane pane) {
    std::vector<std::string> fids{"QMF1.NCSCOMMAND"};
    for (const int key : {1, 2, 3}) fids.push_back(value(key) + ".SET");
    first_.tree.write(Panel::file(1, "020"), Panel::macro("Values", fids));
    first_.simulator.reload();
    connectPane(pane, first_);
    chooseWorkplace(pane, 1, "020 - Values");
    driver().choose(ids(pane).macros, "020");
    driver().list(ids(pane).commands).setFocus();
  }
  void set(int key, const char* text) { first_.simulator.set(value(key), text); }
  CaptureWindow& capture() {
    shortcut(Qt::Key_F5, Qt::ShiftModifier);
    auto* window = fixture_.window->findChild<CaptureWindow*>();
    if (window == nullptr) throw std::runtime_error("no window of a capture");
    return *window;
  }
  static std::string state(const CaptureWindow& window, int row) {
    const auto* model = window.findChild<QTreeView*>("values")->model();
    return model->index(row, CaptureModel::kState).data().toString().toStdString();
  }
  static void awaitState(const CaptureWindow& window, int row, const std::string& text) {
    WindowDriver::waitFor([&] { return state(window, row) == text; }, text.c_str());
  }
  [[nodiscard]] bool offered() {
    QTest::qWait(0);
    return action("capture").isEnabled();
  }
  static QPushButton& button(const CaptureWindow& window, const char* name) {
    return *window.findChild<QPushButton*>(name);
  }

  int mixEffect_ = 2;  // of the keys; the next one has values that nobody has asked for yet
};

// Catches an offer without a panel or a macro, a change before "Take Over", more than one step, and values
// that are not those of the update.
TEST_F(CapturesTest, OneStepTakesWhatTheUpdateWouldWriteInEitherPane) {
  for (const Pane pane : kPanes) {
    SCOPED_TRACE(kPaneDescriptors[index(pane)].letter);
    EXPECT_FALSE(offered());
    open(pane);
    EXPECT_TRUE(offered());
    set(1, "1");
    set(2, "0");
    auto& window = capture();
    awaitState(window, 1, "differs");
    awaitState(window, 2, "same");
    EXPECT_EQ(state(window, 0), "cannot be asked: a classic command");
    EXPECT_EQ(state(window, 3), "waiting");
    EXPECT_FALSE(edited(pane));
    QTest::mouseClick(&button(window, "takeOver"), Qt::LeftButton);
    WindowDriver::waitFor([&] { return edited(pane); }, "the values in the macro");
    EXPECT_THAT(valuesInFile(pane), ElementsAre("0", "1", "0", "0"));
    EXPECT_EQ(state(window, 1), "same");
    set(3, "1");
    awaitState(window, 3, "differs");
    driver().list(ids(pane).commands).setFocus();
    QApplication::setActiveWindow(fixture_.window.get());
    QTest::keyClick(&driver().list(ids(pane).commands), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_THAT(valuesInFile(pane), ElementsAre("0", "0", "0", "0"));
    EXPECT_FALSE(edited(pane)) << "one step was all";
    EXPECT_EQ(state(window, 1), "differs");
    delete &window;
    driver().press(ids(pane).connectButton);
    ++mixEffect_;
  }
}

// Catches values of one line that are waited for on the next, and a window that a loss leaves of no use.
TEST_F(CapturesTest, AfterALossTheNextConnectionIsAsked) {
  choosePanel(Pane::kB, addressOf(first_));
  open(Pane::kA);
  auto& window = capture();
  first_.simulator.dropConnections();
  awaitState(window, 2, "did not come");
  const auto counts = [&] { return window.findChild<QLabel*>("counts")->text().toStdString(); };
  EXPECT_THAT(counts(), HasSubstr("the connection to the panel was lost"));
  EXPECT_FALSE(button(window, "askAgain").isEnabled());
  driver().press(a_.connectButton);
  choosePanel(Pane::kA, "127.00.0.1:" + std::to_string(first_.simulator.controlPort()));  // spelt anew
  driver().press(a_.connectButton);
  awaitGone(a_.macros, "020 - Values");
  awaitRow(a_.workplaces, "Workplace 1");
  driver().press(b_.connectButton);
  chooseWorkplace(Pane::kA, 1, "020 - Values");
  driver().choose(a_.macros, "020");
  WindowDriver::waitFor([&] { return button(window, "askAgain").isEnabled(); }, "the same macro again");
  set(2, "1");
  QTest::mouseClick(&button(window, "askAgain"), Qt::LeftButton);
  awaitState(window, 2, "differs");
  driver().press(a_.connectButton);
  driver().press(b_.connectButton);
  connectPane(Pane::kB, second_);
  driver().press(a_.connectButton);
  WindowDriver::waitFor([&] { return counts().find("on another panel") != std::string::npos; }, "the other");
}

}  // namespace
}  // namespace tessaly
