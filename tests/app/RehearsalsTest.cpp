// Rehearsing from the main window: the macro of a pane, followed, beside a simulated panel.
#include <gmock/gmock.h>

#include <QLabel>
#include <QTableView>

#include "tests/app/PanelWindowFixture.h"
#include "windows/RehearseWindow.h"

namespace tessaly {
namespace {

using testing::StartsWith;

class RehearsalsTest : public PanelWindowTest {
 protected:
  [[nodiscard]] QList<RehearseWindow*> windows() const {
    return fixture_.window->findChildren<RehearseWindow*>();
  }
  void await(const char* label, const std::string& text) {
    const auto& window = *windows().front();
    WindowDriver::waitFor(
        [&] {
          return window.findChild<QLabel*>(QLatin1String(label))->text().toStdString().find(text) !=
                 std::string::npos;
        },
        text.c_str());
  }
};

// Catches a window that shows what the pane held, opens twice, asks no panel or the one that is gone, and a
// "now" that is not the panel's.
TEST_F(RehearsalsTest, FollowsItsPaneAndItsPanel) {
  const std::string clip =
      R"(<cmd fid="QMF1.ME1.KEY1.CLIP.SET" workplace="1"><param name="VALUE" value="0.5"/></cmd>)";
  for (const TestSite* tree : {&first_.tree, &second_.tree})
    tree->write(Panel::file(1, "020"),
                "<macro name=\"Clips\"><data>" + clip + clip + clip + "</data></macro>");
  first_.simulator.reload();
  choosePanel(Pane::kA, addressOf(second_));  // joins the line to the other one, which is asked then
  connectPane(Pane::kB, first_);
  driver().press(a_.connectButton);
  chooseWorkplace(Pane::kA, 1, "020 - Clips");
  driver().choose(a_.macros, "020");
  driver().clickRow(a_.commands, 0);
  first_.simulator.set("QMF1.ME1.KEY1.CLIP", "0.25");
  for (int time = 0; time < 2; ++time) {
    shortcut(Qt::Key_R, Qt::ControlModifier | Qt::ShiftModifier);
    ASSERT_EQ(windows().size(), 1);
  }
  EXPECT_THAT(windows().front()->windowTitle().toStdString(), StartsWith("Rehearse 020"));
  await("place", "step 0 of 3");
  await("now", addressOf(first_) + " has told all 1 values. After this macro: 1 not as now");
  driver().press(a_.deleteCommand);
  await("place", "step 0 of 2");
  first_.simulator.dropConnections();
  await("now", "The panel is gone");
  windows().front()->close();
  WindowDriver::waitFor([&] { return windows().isEmpty(); }, "its end");
}

}  // namespace
}  // namespace tessaly
