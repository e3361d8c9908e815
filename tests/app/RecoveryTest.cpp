// What a window that is dropped without closing leaves, and what the next one makes of it.
#include <gmock/gmock.h>

#include <QLabel>

#include "platform/Files.h"
#include "tests/app/PanelWindowFixture.h"

namespace tessaly {
namespace {

using testing::HasSubstr;

constexpr const char* kTempA = "c:\\programme\\RV48\\bin\\MacroFid\\tempA.mac";
constexpr const char* kRecordA = "recovery\\paneA.txt";

class RecoveryTest : public WindowTest {
 protected:
  // Deletes the first command of macro 001.
  void edit(Pane pane) {
    open(ids(pane));
    removeFirst(ids(pane));
  }
  static void ok(QDialog& dialog) { WindowDriver::click(dialog, "OK"); }
  static void leave(QDialog& dialog) {
    WindowDriver::click(dialog, "Leave it");
    ok(dialog);
  }
  static void later(QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); }
  static std::string label(QDialog& dialog, const char* name) {
    const auto* found = dialog.findChild<QLabel*>(QLatin1String(name));
    return found->isVisible() ? found->text().toStdString() : std::string();
  }
  // The newest that the history holds.
  [[nodiscard]] std::string newest() {
    const auto kept = fixture_.history.list();
    return kept.empty() ? std::string() : read(kept.front().file);
  }

  const std::string macro_ = macroPath(1);
};

TEST_F(RecoveryTest, ChangesOfBothPanesAreTakenUpAndSaved) {
  edit(Pane::kA);
  driver().press(a_.saveChanges);
  EXPECT_EQ(read(kRecordA), "<missing>") << "nothing is unsaved";
  edit(Pane::kA);
  edit(Pane::kB);
  const std::string original = read(macro_), changed = held(Pane::kA);
  startAgain([](QDialog& dialog) {
    EXPECT_THAT(label(dialog, "macroA"), testing::StartsWith("001 - "));
    EXPECT_THAT(label(dialog, "placeB"), HasSubstr("macro001.mac"));
    EXPECT_EQ(label(dialog, "warningA"), "");
    ok(dialog);
  });
  for (const Pane pane : kPanes) EXPECT_TRUE(edited(pane));
  EXPECT_EQ(selected(a_.macros).substr(0, 3), "001") << "the lists show where it belongs";
  EXPECT_EQ(read(macro_), original);
  driver().press(a_.saveChanges);
  EXPECT_EQ(read(macro_), changed);
  EXPECT_EQ(newest(), original);
  driver().press(b_.discardChanges);
  EXPECT_EQ(driver().texts(b_.commands), driver().texts(a_.commands));
  fixture_.open();
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << "there is nothing left to ask";
}

TEST_F(RecoveryTest, WhateverTheAnswerNothingIsLost) {
  edit(Pane::kA);
  const std::string changed = held(Pane::kA);
  for (int start = 0; start < 2; ++start) {
    startAgain(later);
    // The pane is free meanwhile.
    open(a_, "002");
    EXPECT_NE(held(Pane::kA), changed);
    EXPECT_EQ(newest(), changed);
  }
  startAgain(ok);
  EXPECT_EQ(held(Pane::kA), changed);
  EXPECT_EQ(fixture_.history.list().size(), 1U);
  startAgain(leave);
  EXPECT_FALSE(edited(Pane::kA));
  EXPECT_THAT(told(), HasSubstr("history"));
  EXPECT_EQ(fixture_.history.list().size(), 1U);
  EXPECT_EQ(fixture_.history.list().front().change, MacroChange::kUnsaved);
  EXPECT_EQ(read(kRecordA), "<missing>");

  // New changes take the place of what was set aside.
  edit(Pane::kA);
  startAgain(later);
  edit(Pane::kA);
  EXPECT_EQ(read("recovery\\paneA.mac"), "<missing>");
  WindowDriver::answerNext([](QDialog& dialog) { WindowDriver::click(dialog, "Discard"); });
  fixture_.driver->close();
  EXPECT_EQ(read(kRecordA), "<missing>") << "discarded at the end is no crash";
}

TEST_F(RecoveryTest, FilesThatAreNotAsTheyWereLeft) {
  struct Case {
    const char* what;
    std::function<void()> harm;
    const char* warning;  // of the offer; null when there is none
    const char* status;
  };
  const Case cases[] = {
      {"another program wrote",
       [&] { fixture_.site.write(kTempA, R"(<macro name="Other"><data></data></macro>)"); }, "has changed it",
       "taken up"},
      {"no macro any more", [&] { fixture_.site.write(kTempA, "<macro"); }, "cannot be read", "history"},
      {"no file any more", [&] { std::filesystem::remove(fixture_.site.root.resolve(kTempA)); }, nullptr,
       "gone"},
      {"an empty record", [&] { fixture_.site.write(kRecordA, ""); }, nullptr, "damaged"},
      {"saved, and no record removed", [&] { fixture_.site.write(macro_, held(Pane::kA)); }, nullptr, ""},
  };
  for (const Case& one : cases) {
    edit(Pane::kA);
    fixture_.window.reset();
    one.harm();
    const std::string bytes = held(Pane::kA);
    if (one.warning != nullptr)
      startAgain([&](QDialog& dialog) {
        EXPECT_THAT(label(dialog, "warningA"), HasSubstr(one.warning)) << one.what;
        ok(dialog);
      });
    else
      fixture_.open();
    EXPECT_THAT(told(), HasSubstr(one.status)) << one.what;
    if (one.status == std::string("history") || one.status == std::string("damaged")) {
      EXPECT_EQ(newest(), bytes) << one.what;
    }
    if (edited(Pane::kA)) driver().press(a_.discardChanges);
    EXPECT_EQ(read(kRecordA), "<missing>") << one.what;
    EXPECT_EQ(asked(), std::vector<std::string>{}) << one.what;
  }
}

TEST_F(RecoveryTest, WhatCannotBeReadNowIsOfferedByALaterStart) {
  edit(Pane::kA);
  fixture_.window.reset();
  const std::string bytes = held(Pane::kA), record = read(kRecordA);
  std::filesystem::resize_file(fixture_.site.root.resolve(kTempA), kLargestFile + 1);
  fixture_.open();
  EXPECT_THAT(told(), HasSubstr("cannot be read now"));
  EXPECT_EQ(read(kRecordA), record);
  fixture_.window.reset();
  fixture_.site.write(kTempA, bytes);
  startAgain([&](QDialog& dialog) { ok(dialog); });
  EXPECT_TRUE(edited(Pane::kA));
}

// Else the next edit in the pane would take the place of the only copy.
TEST_F(RecoveryTest, WhatTheHistoryCannotKeepIsTakenUpWhateverTheAnswer) {
  edit(Pane::kA);
  fixture_.window.reset();
  const std::string edited = read(kTempA);
  fixture_.site.write("history", "in the way");
  for (const auto answer : {later, leave}) {
    startAgain(answer);
    EXPECT_TRUE(visible(a_.saveChanges));
    EXPECT_EQ(read(kTempA), edited);
    EXPECT_THAT(fixture_.status().toStdString(), HasSubstr("the history cannot keep the changes"));
  }
}

TEST_F(RecoveryTest, AHistoryThatCannotBeWrittenStopsNothing) {
  fixture_.site.write("history", "in the way");
  fixture_.site.write("recovery", "in the way");
  edit(Pane::kA);
  driver().press(a_.saveChanges);
  EXPECT_EQ(read(macro_), held(Pane::kA));
  EXPECT_THAT(told(), HasSubstr("; the history could not"));
}

class PanelRecoveryTest : public PanelWindowTest {};

TEST_F(PanelRecoveryTest, ChangesOfAPanelsMacroFindTheirPanel) {
  // As a crash leaves them.
  fixture_.window.reset();
  fixture_.site.write(kTempA, Panel::macro("Two", {"QMF1.A"}));
  fixture_.site.write(
      kRecordA, "panel=" + addressOf(first_) + "\nworkplace=1\nnumber=007\nname=Two\nsince=1\nedited=2\n");
  // The panel is away: the changes wait, and the way to it stays open.
  PanelFaults faults;
  faults.control.neverAnswer = true;
  ASSERT_TRUE(first_.simulator.setFaults(faults));
  startAgain([](QDialog& dialog) { WindowDriver::click(dialog, "OK"); });
  EXPECT_EQ(driver().texts(a_.commands).size(), 1U);
  EXPECT_EQ(button(Pane::kA), "connecting");
  EXPECT_FALSE(enabled(a_.address));
  WindowDriver::waitFor([this] { return button(Pane::kA) == "connect"; }, "the end of the attempt");
  EXPECT_THAT(asked(), testing::ElementsAre("Connection failed....."));
  EXPECT_THAT(driver().texts(a_.applications), testing::ElementsAre("not connected"));
  EXPECT_TRUE(edited(Pane::kA));
  ASSERT_TRUE(first_.simulator.setFaults({}));
  // The attempt that was given up may still hold the library for a while; then the next one works.
  for (int attempt = 0; attempt < 5 && button(Pane::kA) != "disconnect"; ++attempt) {
    driver().press(a_.connectButton);
    WindowDriver::waitFor([this] { return button(Pane::kA) != "connecting"; }, "an answer");
  }
  // The record does not tell what the panel held.
  for (const bool answer : {false, true}) {
    fixture_.site.messages.answer = answer;
    driver().press(a_.saveChanges);
    EXPECT_THAT(asked(), testing::ElementsAre(HasSubstr("not known whether 007 - Two has been changed")));
    EXPECT_THAT(told(), HasSubstr(answer ? "saved: 007 - Two" : "NOT saved: 007 - Two is as it was"));
    EXPECT_EQ(values(first_.read(1, "007")).size(), answer ? 1U : 3U);
  }
  EXPECT_EQ(read(fixture_.history.list().front().file), kTwoFunctions);
  EXPECT_EQ(driver().texts(a_.applications).front(), "connected to " + addressOf(first_));
  awaitRow(a_.workplaces, "Workplace 1");
}

// Catches a save of recovered changes that overwrites what came to their place since, also without the steps.
TEST_F(RecoveryTest, WhatCameMeanwhileIsNotOverwrittenUnseen) {
  edit(Pane::kA);
  fixture_.window.reset();
  std::filesystem::remove(fixture_.site.root.resolve("recovery\\paneA.steps"));
  fixture_.site.write(macroPath(1), "<macro name=\"Else\"><data></data></macro>");
  startAgain(ok);
  fixture_.site.messages.chooseOther = true;
  driver().press(a_.saveChanges);
  EXPECT_THAT(asked(), testing::ElementsAre(HasSubstr("changed by somebody else")));
  EXPECT_THAT(read(macroPath(1)), HasSubstr("Else"));
}

}  // namespace
}  // namespace tessaly
