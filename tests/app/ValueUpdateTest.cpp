// The value update of the window against a simulated panel, which tells a value only once a test has set it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/MessageBoxes.h"
#include "tests/app/PanelWindowFixture.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::Not;
using testing::StartsWith;

constexpr const char* kClassic = "QMF1.NCSCOMMAND";
constexpr const char* kUnknown = "QMF1.NO.SUCH.FUNCTION.SET";
constexpr const char* kChanged =
    "update ended: the macro was changed meanwhile, the values that came are gone";
constexpr const char* kGaveWay = "update ended: a macro was chosen meanwhile, the values that came are gone";
constexpr int kQuiet = 500;  // milliseconds

class ValueUpdateTest : public PanelWindowTest {
 protected:
  [[nodiscard]] std::string key(int number) const {
    return "QMF1.ME" + std::to_string(mixEffect_) + ".KEY" + std::to_string(number) + ".ON";
  }
  [[nodiscard]] std::string setter(int number) const { return key(number) + ".SET"; }

  // Opens a macro of the panel with commands of these functions, in place of the one before.
  void open(Pane pane, const std::vector<std::string>& fids) {
    before_ = Panel::macro("Values", fids);
    first_.tree.write(Panel::file(1, "020"), before_);
    first_.simulator.reload();
    if (driver().list(ids(pane).macros).selectedRow() < 0) chooseWorkplace(pane, 1, "020 - Values");
    driver().choose(ids(pane).macros, "020");
    ASSERT_EQ(driver().texts(ids(pane).commands).size(), fids.size()) << told();
  }
  // Of a macro that sets the first key twice.
  void startOnKeys(Pane pane) {
    open(pane, {setter(1), setter(2), setter(1)});
    driver().press(ids(pane).updateData);
    ASSERT_THAT(asked(), ElementsAre(StartsWith("Update ALL")));
  }
  static std::string counted(int commands) { return std::to_string(commands) + " of 3 Commands updated..."; }
  // The panel tells a key's value; that many commands have theirs by then.
  void tell(Pane pane, int number, int commands) {
    first_.simulator.set(key(number), "1");
    WindowDriver::waitFor([&] { return progress(pane) == counted(commands); }, counted(commands).c_str());
  }

  std::string before_;  // the macro as the panel holds it
  int mixEffect_ = 1;   // of the keys; the next one has values that no update has asked for yet
};

// Catches values that miss the file, and an end that keeps them or marks lines.
TEST_F(ValueUpdateTest, PaneBShowsTheStateFromBefore) {
  connectPane(Pane::kB, first_);
  startOnKeys(Pane::kB);
  const auto lines = driver().texts(b_.commands);
  {
    const EventGate::Hold untilLookedAt(&gate());
    tell(Pane::kB, 1, 2);
    awaitInFile(Pane::kB, {"1", "0", "1"});
    tell(Pane::kB, 2, 3);
    awaitInFile(Pane::kB, {"1", "1", "1"});
    driver().press(b_.updateData);
    EXPECT_THAT(asked(), ElementsAre("Update is busy... "));
    EXPECT_FALSE(edited(Pane::kB));
  }
  awaitStatus(
      "3 values came; pane B shows the state before the update; use pane A, or \"Capture...\" in the "
      "menu \"Macro\"");
  EXPECT_TRUE(edited(Pane::kB));
  EXPECT_EQ(driver().texts(b_.commands), lines);
  EXPECT_THAT(valuesInFile(Pane::kB), ElementsAre("0", "0", "0"));
}

// Catches marks and counts of the wrong commands, and values that do not reach the panel with one save.
TEST_F(ValueUpdateTest, PaneAHoldsTheValues) {
  connectPane(Pane::kA, first_);
  open(Pane::kA, {setter(1), kClassic, setter(2)});
  first_.simulator.set(key(1), "1");
  first_.simulator.set(key(2), "0");
  driver().press(a_.updateData);
  awaitStatus("2 commands updated; 1 of them changed");
  EXPECT_THAT(driver().texts(a_.commands),
              ElementsAre(EndsWith(" ==> updated"), Not(EndsWith("updated")), EndsWith(" ==> updated")));
  EXPECT_EQ(first_.read(1, "020"), before_) << "nothing is sent before it is saved";
  driver().press(a_.saveChanges);
  EXPECT_FALSE(edited(Pane::kA));
  EXPECT_THAT(values(first_.read(1, "020")), ElementsAre("1", "0", "0"));
}

// Catches a question that is asked of those who have chosen already, values that go beyond what they chose,
// and values that do not come because the client knows them from before.
TEST_F(ValueUpdateTest, WhatIsSelectedIsUpdatedAlone) {
  connectPane(Pane::kA, first_);
  for (const int number : {1, 2}) first_.simulator.set(key(number), "1");
  const std::pair<const char*, std::vector<std::string>> ends[] = {
      {"1 of 0 Commands updated...", {"0", "1", "0"}},  // the total of one was never counted
      {"2 of 2 Commands updated...", {"0", "1", "1"}}};
  for (const auto& [count, values] : ends) {
    open(Pane::kA, {setter(1), setter(2), setter(1)});
    driver().clickRow(a_.commands, 1);
    if (values[2] == "1") QTest::keyClick(&driver().list(a_.commands), Qt::Key_Down, Qt::ShiftModifier);
    driver().press(a_.updateData);
    EXPECT_THAT(asked(), testing::IsEmpty());
    WindowDriver::waitFor([&, shown = count] { return progress(Pane::kA) == shown; }, count);
    awaitEdited(Pane::kA);
    EXPECT_EQ(valuesInFile(Pane::kA), values);
    driver().press(a_.discardChanges);
  }
}

// Users know it so.
TEST_F(ValueUpdateTest, ACancelledQuestionKeepsItBusyUntilAMacroIsChosen) {
  const char* const question =
      "Update ALL macro commands in \"Macro Overview A\"? \n(To update a single command, first select it)";
  connectPane(Pane::kA, first_);
  open(Pane::kA, {setter(1)});
  fixture_.site.messages.answer = false;
  for (int press = 0; press < 2; ++press) driver().press(a_.updateData);
  EXPECT_THAT(asked(), ElementsAre(question, "Update is busy... "));
  driver().choose(a_.macros, "020");
  driver().press(a_.updateData);
  EXPECT_THAT(asked(), ElementsAre(question));
}

// Catches a wrong count, and a report that ends the update of the other commands.
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
    EXPECT_THAT(asked(), ElementsAre(StartsWith("Update ALL"), report));
  }
  awaitInFile(Pane::kA, {"0", "0", "1"});
}

// Catches a strip that goes on waiting for values, a pane that goes on counting them and values that get into
// it after their update has ended without a result, whether some had come by then or not.
TEST_F(ValueUpdateTest, NothingWaitsForAnUpdateThatHasEnded) {
  const auto* row = fixture_.window->findChild<QLabel*>(QStringLiteral("waiting"));
  const struct {
    const char* told;
    const char* count;  // of commands
    std::function<void(Pane)> end;
  } ends[] = {
      {"update cancelled: the values that came are gone", "3 commands",
       [&](Pane) { QTest::mouseClick(row->parentWidget()->findChild<QPushButton*>(), Qt::LeftButton); }},
      {kChanged, "2 commands",
       [&](Pane pane) {
         driver().clickRow(ids(pane).commands, 1);
         driver().press(ids(pane).deleteCommand);
         if (pane == Pane::kA) return;
         first_.simulator.set(key(2), "1");  // told by the next value, also behind a box
         awaitStatus(kChanged);
       }},
      {"the connection to the panel was lost, and the values of the update with it", "3 commands",
       [&](Pane) {
         QTest::qWait(kQuiet);  // until then the end of the update is near
         first_.simulator.dropConnections();
         WindowDriver::waitFor([&] { return fixture_.status().contains("lost"); }, "word of the loss");
       }},
      {"update ended: the pane is no longer connected, the values that came are gone", "",
       [&](Pane pane) { driver().press(ids(pane).connectButton); }}};
  for (const Pane pane : kPanes)
    for (const auto& [told, count, end] : ends) {
      SCOPED_TRACE(told);
      const bool came = pane == Pane::kB;
      if (fixture_.status().contains("lost")) driver().press(ids(pane).connectButton);
      if (button(pane) != "disconnect") connectPane(pane, first_);
      startOnKeys(pane);
      std::optional<EventGate::Hold> behindABox(&gate());
      if (came) tell(pane, 1, 2);
      WindowDriver::waitFor([&] { return row->isVisible(); }, "word of the waiting");
      EXPECT_EQ(row->text(), QStringLiteral("waiting for %1 values from the panel").arg(came ? 1 : 2));
      end(pane);
      behindABox.reset();
      awaitStatus(told);
      EXPECT_FALSE(row->isVisible());
      EXPECT_EQ(progress(pane), count);
      EXPECT_EQ(first_.read(1, "020"), before_);
      EXPECT_EQ(edited(pane), told == std::string_view(kChanged));
      if (edited(pane)) {
        EXPECT_THAT(valuesInFile(pane), ElementsAre("0", "0"));
        driver().press(ids(pane).discardChanges);
      }
      if (came) ++mixEffect_;
    }
}

// Catches a count that stays, and values that go without a word, when another macro is chosen meanwhile.
TEST_F(ValueUpdateTest, AnotherMacroEndsTheUpdateWithAWord) {
  connectPane(Pane::kA, first_);
  for (const bool another : {false, true}) {
    ++mixEffect_;
    driver().choose(b_.applications, "Evening News");
    startOnKeys(Pane::kA);
    tell(Pane::kA, 1, 2);
    driver().clickRow(b_.macros, 0);
    if (another)
      driver().press(a_.updateData);
    else
      awaitStatus(kGaveWay);
    EXPECT_EQ(told(), kGaveWay);
    EXPECT_EQ(progress(Pane::kA), "3 commands");
    EXPECT_FALSE(edited(Pane::kA));
  }
}

// Catches an end in the middle of a transfer, which would send the values instead of the new macro.
TEST_F(ValueUpdateTest, TheEndWaitsForATransfer) {
  connectBoth(first_);
  for (const Pane pane : kPanes) {
    // The old content stands still until it is given up; then the new macro travels freely.
    first_.tree.write(Panel::file(1, "040"), before_);
    asked();
    startOnKeys(pane);
    stallTransfers(first_);
    bool looked = false;
    driver().press(ids(pane).createMacro, [&](QDialog& dialog) {
      WindowDriver::type(dialog, "position", QStringLiteral("40"));
      WindowDriver::type(dialog, "name", QStringLiteral("Fresh"));
      tell(pane, 1, 2);
      QTimer::singleShot(
          kQuiet + 100, Qt::PreciseTimer, fixture_.window.get(), [&, said = fixture_.status()] {
            looked = transferShown() && fixture_.status() == said && progress(pane) == counted(2);
            EXPECT_TRUE(first_.simulator.setFaults({}));
          });
      WindowDriver::click(dialog, QStringLiteral("OK"));
    });
    EXPECT_TRUE(looked) << "the update waits while the transfer is shown";
    EXPECT_THAT(told(), StartsWith("created on the panel: 040 - Fresh"));
    EXPECT_THAT(first_.read(1, "040"), AllOf(testing::HasSubstr("Fresh"), Not(testing::HasSubstr("<cmd"))));
    awaitStatus(kChanged);
    ++mixEffect_;
  }
}

// Catches an end behind a box that a handler still waits for, and one right after it although a value has
// come.
TEST_F(ValueUpdateTest, TheEndWaitsForABox) {
  connectPane(Pane::kA, first_);
  startOnKeys(Pane::kA);
  MessageBoxes boxes;
  boxes.setWindow(fixture_.window.get());
  boxes.setGate(&gate());
  const auto lines = driver().texts(a_.commands);
  QElapsedTimer silence;
  bool looked = false;
  WindowDriver::answerNext([&](QDialog& box) {
    tell(Pane::kA, 1, 2);
    QTest::qWait(kQuiet + 100);
    looked = !edited(Pane::kA) && driver().texts(a_.commands) == lines && progress(Pane::kA) == counted(2);
    silence.start();
    tell(Pane::kA, 2, 3);
    WindowDriver::click(box, QStringLiteral("OK"));
  });
  boxes.show("A box that somebody leaves open.", MessageIcon::kExclamation);
  EXPECT_TRUE(looked) << "nothing changes behind the box";
  awaitStatus("3 commands updated; 3 of them changed");
  EXPECT_GE(silence.elapsed(), kQuiet - 5);
}

}  // namespace
}  // namespace tessaly
