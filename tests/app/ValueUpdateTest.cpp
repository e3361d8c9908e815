// The value update of the window against a simulated panel, which tells a value only once a test has set it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QProgressDialog>

#include "app/MessageBoxes.h"
#include "tests/app/PanelWindowFixture.h"

namespace tessaly {
namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

constexpr const char* kClassic = "QMF1.NCSCOMMAND";
constexpr const char* kUnknown = "QMF1.NO.SUCH.FUNCTION.SET";
constexpr const char* kNumber = "020";
constexpr const char* kBusy = "Update is busy... ";
constexpr const char* kChanged =
    "update ended: the macro was changed meanwhile, the values that came are gone";
constexpr qint64 kQuiet = 500;  // milliseconds

class ValueUpdateTest : public PanelWindowTest {
 protected:
  // Names of values that no update has asked for yet.
  void takeFreshKeys() { ++mixEffect_; }
  [[nodiscard]] std::string key(int number) const {
    return "QMF1.ME" + std::to_string(mixEffect_) + ".KEY" + std::to_string(number) + ".ON";
  }
  [[nodiscard]] std::string setter(int number) const { return key(number) + ".SET"; }

  void connectBoth() {
    choosePanel(Pane::kB, addressOf(first_));
    connectPane(Pane::kA, first_);
    driver().press(b_.connectButton);
  }
  // Opens a macro of the panel with commands of these functions, in place of the one before.
  void open(Pane pane, const std::vector<std::string>& fids) {
    before_ = "<macro name=\"Values\"><data>";
    for (const std::string& fid : fids)
      before_ += "<cmd fid=\"" + fid + "\" workplace=\"1\"><param name=\"state\" value=\"0\"/></cmd>";
    before_ += "</data></macro>";
    first_.tree.write(Panel::file(1, kNumber), before_);
    first_.simulator.reload();
    if (driver().list(ids(pane).macros).selectedRow() < 0) chooseWorkplace(pane, 1, "020 - Values");
    driver().choose(ids(pane).macros, kNumber);
    ASSERT_EQ(driver().texts(ids(pane).commands).size(), fids.size()) << fixture_.status().toStdString();
    fixture_.site.messages.take();
  }
  // Of a macro that sets the first key twice.
  void startOnKeys(Pane pane) {
    open(pane, {setter(1), setter(2), setter(1)});
    driver().press(ids(pane).updateData);
    ASSERT_THAT(fixture_.site.messages.take(), ElementsAre(StartsWith("Update ALL")));
  }
  // The panel tells a key's value; that many commands have theirs by then.
  void tell(Pane pane, int number, int commands) {
    first_.simulator.set(key(number), "1");
    const std::string text = std::to_string(commands) + " of 3 Commands updated...";
    WindowDriver::waitFor([&] { return progress(pane) == text; }, text.c_str());
  }
  void awaitStatus(const std::string& text) {
    WindowDriver::waitFor([&] { return fixture_.status().toStdString() == text; }, text.c_str());
  }

  static const PaneDescriptor::ControlIds& ids(Pane pane) { return WindowFixture::ids(pane); }
  [[nodiscard]] std::string progress(Pane pane) {
    return driver().control<QLabel>(ids(pane).progress).text().toStdString();
  }
  [[nodiscard]] bool edited(Pane pane) {
    return driver().control<QAbstractButton>(ids(pane).saveChanges).isVisible();
  }
  [[nodiscard]] std::vector<std::string> valuesInFile(Pane pane) {
    return values(fixture_.site.read(std::string("c:\\programme\\RV48\\bin\\MacroFid\\temp") +
                                     kPaneDescriptors[index(pane)].letter + ".mac"));
  }
  [[nodiscard]] EventGate& gate() { return fixture_.window->gate(); }
  [[nodiscard]] bool transferShown() {
    const auto* progress = fixture_.window->findChild<QProgressDialog*>();
    return progress != nullptr && progress->isVisible();
  }

  std::string before_;  // the macro as the panel holds it
  int mixEffect_ = 1;
};

// Catches values that miss the file, and an end that keeps them or marks lines.
TEST_F(ValueUpdateTest, PaneBShowsTheStateFromBefore) {
  connectPane(Pane::kB, first_);
  startOnKeys(Pane::kB);
  const auto lines = driver().texts(b_.commands);
  {
    const EventGate::Hold untilLookedAt(&gate());
    tell(Pane::kB, 1, 2);
    WindowDriver::waitFor(
        [&] {
          return valuesInFile(Pane::kB) == std::vector<std::string>{"1", "0", "1"};
        },
        "the values of one key in the file");
    tell(Pane::kB, 2, 3);
    WindowDriver::waitFor([&] { return valuesInFile(Pane::kB) == std::vector<std::string>(3, "1"); },
                          "all values in the file");
    driver().press(b_.updateData);
    EXPECT_THAT(fixture_.site.messages.take(), ElementsAre(kBusy));
    EXPECT_FALSE(edited(Pane::kB));
  }
  awaitStatus("3 values came; pane B shows the state before the update; use pane A");
  EXPECT_TRUE(edited(Pane::kB));
  EXPECT_EQ(driver().texts(b_.commands), lines);
  EXPECT_THAT(valuesInFile(Pane::kB), ElementsAre("0", "0", "0"));
  EXPECT_EQ(progress(Pane::kB), "3 commands");
}

// Catches marks and counts of the wrong commands, and values that do not reach the panel with one save.
TEST_F(ValueUpdateTest, PaneAHoldsTheValues) {
  connectPane(Pane::kA, first_);
  open(Pane::kA, {setter(1), kClassic, setter(2)});
  first_.simulator.set(key(1), "1");
  first_.simulator.set(key(2), "0");
  driver().press(a_.updateData);
  awaitStatus("2 commands updated; 1 of them changed");
  EXPECT_TRUE(edited(Pane::kA));
  EXPECT_THAT(driver().texts(a_.commands),
              ElementsAre(EndsWith(" ==> updated"), Not(EndsWith("updated")), EndsWith(" ==> updated")));
  EXPECT_EQ(first_.read(1, kNumber), before_) << "nothing is sent before it is saved";
  driver().press(a_.saveChanges);
  EXPECT_FALSE(edited(Pane::kA));
  EXPECT_THAT(values(first_.read(1, kNumber)), ElementsAre("1", "0", "0"));
}

// Catches a wait that the next value does not begin anew: after 400 ms, or behind a handler that has kept the
// update from its end.
TEST_F(ValueUpdateTest, EachValueBeginsTheWaitAnew) {
  connectPane(Pane::kA, first_);
  for (const bool held : {false, true}) {
    QElapsedTimer silence;
    bool inTime = false;  // a machine that stood still is given another chance
    for (int attempt = 0; attempt < 2 && !inTime; ++attempt, takeFreshKeys()) {
      startOnKeys(Pane::kA);
      std::optional<EventGate::Hold> hold;
      if (held) hold.emplace(&gate());
      tell(Pane::kA, 1, 2);
      QElapsedTimer pause;
      pause.start();
      WindowDriver::waitFor([&] { return pause.elapsed() >= (held ? kQuiet + 100 : kQuiet - 100); },
                            "a pause");
      silence.start();
      first_.simulator.set(key(2), "1");
      WindowDriver::waitFor(
          [&] { return edited(Pane::kA) || progress(Pane::kA) == "3 of 3 Commands updated..."; }, "a value");
      inTime = !edited(Pane::kA);
      if (!inTime) driver().press(a_.discardChanges);
    }
    ASSERT_TRUE(inTime) << "held: " << held;
    awaitStatus("3 commands updated; 3 of them changed");
    EXPECT_GE(silence.elapsed(), kQuiet - 5) << "held: " << held;
    driver().press(a_.discardChanges);
  }
}

// Catches a wrong count, and a macro without values that is asked for or edited all the same.
TEST_F(ValueUpdateTest, CommandsWithoutValuesAreReported) {
  connectPane(Pane::kA, first_);
  const std::pair<std::vector<std::string>, const char*> rows[] = {
      {{kClassic}, "Classic Commands will not be updated \n"},
      {{kUnknown, kUnknown}, "2 commands do not have a value which can be updated "},
      {{kUnknown, kClassic, setter(1)},
       "Classic Commands will not be updated \n1 commands do not have a value which can be updated "}};
  first_.simulator.set(key(1), "1");
  for (const auto& [fids, report] : rows) {
    open(Pane::kA, fids);
    driver().press(a_.updateData);
    EXPECT_THAT(fixture_.site.messages.take(), ElementsAre(StartsWith("Update ALL"), report));
    EXPECT_FALSE(edited(Pane::kA)) << report;
  }
  WindowDriver::waitFor([&] { return edited(Pane::kA); }, "the value of the last row's last command");
  EXPECT_THAT(valuesInFile(Pane::kA), ElementsAre("0", "0", "1"));
}

// Catches an end that writes values into a pane that has left the panel, and one that blames somebody's edit.
TEST_F(ValueUpdateTest, ADisconnectedPaneGetsNoValues) {
  connectPane(Pane::kA, first_);
  startOnKeys(Pane::kA);
  {
    const EventGate::Hold untilDisconnected(&gate());
    tell(Pane::kA, 1, 2);
    driver().press(a_.connectButton);
  }
  awaitStatus("update ended: the pane is no longer connected, the values that came are gone");
  EXPECT_FALSE(edited(Pane::kA));
  EXPECT_THAT(driver().texts(a_.commands), IsEmpty());
  EXPECT_EQ(progress(Pane::kA), "");
  EXPECT_EQ(first_.read(1, kNumber), before_);
}

// Catches values that land on commands which have moved, whether the update learns of the edit from the next
// value or from its own end.
TEST_F(ValueUpdateTest, AnEditDropsTheUpdate) {
  connectBoth();
  for (const Pane pane : kPanes)
    for (const bool another : {false, true}) {
      startOnKeys(pane);
      {
        const EventGate::Hold untilEdited(&gate());
        tell(pane, 1, 2);
        driver().clickRow(ids(pane).commands, 0);
        driver().press(ids(pane).deleteCommand);
        if (another) first_.simulator.set(key(2), "1");
        if (another) awaitStatus(kChanged);
      }
      awaitStatus(kChanged);
      EXPECT_EQ(progress(pane), "2 commands");
      EXPECT_THAT(valuesInFile(pane), ElementsAre("0", "0"));
      EXPECT_THAT(driver().texts(ids(pane).commands), Each(Not(EndsWith("updated"))));
      driver().press(ids(pane).discardChanges);
      takeFreshKeys();
    }
}

// Catches an end in the middle of a transfer, which would send the values instead of the new macro.
TEST_F(ValueUpdateTest, TheEndWaitsForATransfer) {
  connectBoth();
  for (const Pane pane : kPanes) {
    // The old content stands still until it is given up; then the new macro travels freely.
    first_.tree.write(Panel::file(1, "040"), before_);
    startOnKeys(pane);
    PanelFaults faults;
    faults.ftp.stallTransfer = true;
    ASSERT_TRUE(first_.simulator.setFaults(faults));
    const QString said = fixture_.status();
    bool looked = false;
    driver().press(ids(pane).createMacro, [&](QDialog& dialog) {
      WindowDriver::type(dialog, "position", QStringLiteral("40"));
      WindowDriver::type(dialog, "name", QStringLiteral("Fresh"));
      tell(pane, 1, 2);
      QTimer::singleShot(kQuiet + 100, Qt::PreciseTimer, fixture_.window.get(), [&] {
        looked = true;
        EXPECT_TRUE(transferShown());
        EXPECT_EQ(fixture_.status(), said);
        EXPECT_EQ(progress(pane), "2 of 3 Commands updated...");
        EXPECT_TRUE(first_.simulator.setFaults({}));
      });
      WindowDriver::click(dialog, QStringLiteral("OK"));
    });
    EXPECT_TRUE(looked);
    EXPECT_THAT(fixture_.status().toStdString(), StartsWith("created on the panel: 040 - Fresh"));
    EXPECT_THAT(first_.read(1, "040"), AllOf(HasSubstr("Fresh"), Not(HasSubstr("<cmd"))));
    awaitStatus(kChanged);
    EXPECT_FALSE(edited(pane));
    takeFreshKeys();
  }
}

// Catches an end behind a box that a handler still waits for.
TEST_F(ValueUpdateTest, TheEndWaitsForABox) {
  connectPane(Pane::kA, first_);
  startOnKeys(Pane::kA);
  MessageBoxes boxes;
  boxes.setWindow(fixture_.window.get());
  boxes.setGate(&gate());
  const auto lines = driver().texts(a_.commands);
  bool looked = false;
  WindowDriver::answerNext([&](QDialog& box) {
    tell(Pane::kA, 1, 2);
    QElapsedTimer open;
    open.start();
    WindowDriver::waitFor([&] { return open.elapsed() > kQuiet + 100; }, "the time of the end");
    EXPECT_FALSE(edited(Pane::kA));
    EXPECT_EQ(driver().texts(a_.commands), lines);
    EXPECT_EQ(progress(Pane::kA), "2 of 3 Commands updated...");
    looked = true;
    WindowDriver::click(box, QStringLiteral("OK"));
  });
  boxes.show("A box that somebody leaves open.", MessageIcon::kExclamation);
  EXPECT_TRUE(looked);
  awaitStatus("2 commands updated; 2 of them changed");
  EXPECT_TRUE(edited(Pane::kA));
}

// Catches a window that closes under its transfer, one that waits until the transfer ends by itself, and one
// that stays open.
TEST_F(ValueUpdateTest, ClosingCancelsATransferFirst) {
  connectPane(Pane::kA, first_);
  open(Pane::kA, {setter(1)});
  PanelFaults faults;
  faults.ftp.stallTransfer = true;
  ASSERT_TRUE(first_.simulator.setFaults(faults));
  QTimer user;
  QObject::connect(&user, &QTimer::timeout, &user, [&] {
    if (!transferShown()) return;
    user.stop();
    fixture_.window->close();
    EXPECT_TRUE(fixture_.window->isVisible());
  });
  user.start(5);
  driver().choose(a_.macros, kNumber);
  EXPECT_THAT(fixture_.status().toStdString(),
              StartsWith("NOT opened: 020 - Values (the transfer was cancelled)"));
  WindowDriver::waitFor([&] { return !fixture_.window->isVisible() && first_.simulator.connections() == 0; },
                        "the end of the window and of its connection");
}

}  // namespace
}  // namespace tessaly
