#include <filesystem>
#include <functional>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QSignalSpy>

#include "app/EventGate.h"
#include "app/PaneControls.h"
#include "app/WorkingCopy.h"
#include "platform/Files.h"
#include "tests/support/TestSite.h"

namespace tessaly {
namespace {

constexpr const char* kWorking = "c:\\work\\tempA.mac";
constexpr const char* kFolder = "c:\\macros\\";
constexpr const char* kTwo =
    "<macro name=\"M\"><data><cmd fid=\"QMF1.A\"><param name=\"P\" value=\"1\"/></cmd><cmd "
    "fid=\"QMF1.B\"/></data></macro>";
const MacroTarget kTarget{PaneSource::kHarddisk, kFolder, {}, 0, "007", "M"};

struct WorkingCopyTest : testing::Test, TestSite {
  WorkingCopyTest() {
    write(kWorking, "");
    write(kTarget.file(), kTwo);
    open();
  }
  void open() {
    write(kWorking, kTwo);
    auto loan = copy.lend();
    ASSERT_TRUE(loan);
    EXPECT_TRUE(loan->show(kTarget, true));
  }
  [[nodiscard]] bool recorded() const { return copy.recovery().read().has_value(); }
  [[nodiscard]] std::string valueIn(const char* path) {
    const auto macro = readMacro(root, path);
    return macro ? macro->commands().at(0).parameters.at(0).value : "none";
  }

  // As the window saves to the disk.
  [[nodiscard]] bool save() {
    const auto loan = copy.lendToSave();
    return loan && writeFile(root, kTarget.file(), copy.bytes());
  }

  WorkingCopy copy{access(), kWorking, RecoveryFile(root, 'A')};
};

TEST_F(WorkingCopyTest, NothingForeignGetsInWhileThereAreUnsavedChanges) {
  ASSERT_TRUE(copy.apply(RemoveCommands{{1}}));
  const std::string held = copy.bytes();
  QSignalSpy changes(&copy, &WorkingCopy::changed);
  EXPECT_FALSE(copy.clear());
  EXPECT_FALSE(copy.showKeyFile({}));
  EXPECT_FALSE(copy.lend());
  EXPECT_FALSE(copy.takeUp({}, kTwo));
  EXPECT_EQ(changes.count(), 0);
  EXPECT_TRUE(copy.edited() && recorded());
  EXPECT_EQ(copy.bytes(), held);
  EXPECT_EQ(read(kWorking), held);
  copy.leaveEditState();
  EXPECT_FALSE(recorded());
  if (const auto loan = copy.lend()) write(kWorking, "what a transfer has left");
  EXPECT_EQ(read(kWorking), held) << "the changes are of the save that is owed, and so is the file";
  ASSERT_TRUE(copy.undo());
  copy.leaveEditState();
  EXPECT_TRUE(copy.lend());
  EXPECT_EQ(copy.content(), WorkingCopy::Content::kNothing) << "a loan that is not filled shows nothing";
}

TEST_F(WorkingCopyTest, ALentFileIsTouchedByNobodyElse) {
  const auto commands = CommandFragment::of(*copy.macro(), {0});
  ASSERT_TRUE(copy.apply(SetValues{{{0, "2"}}}));
  {
    const auto loan = copy.lendToSave();
    ASSERT_TRUE(loan);
    write(kWorking, "what a transfer has made of it");
    const MacroEdit edits[] = {RemoveCommands{{0}}, MoveCommands{{1}, 0},
                               InsertFragment{*commands, 0, InsertMode::kAppend}};
    for (const MacroEdit& edit : edits) EXPECT_FALSE(copy.apply(edit)) << edit.index();
    EXPECT_FALSE(copy.rewrite());
    EXPECT_FALSE(copy.undo());
    EXPECT_TRUE(copy.restoreFile());
    EXPECT_FALSE(save());
    EXPECT_EQ(read(kWorking), "what a transfer has made of it");
  }
  EXPECT_TRUE(copy.edited()) << "reading takes nothing away";
  EXPECT_TRUE(copy.apply(RemoveCommands{{0}}));
}

TEST_F(WorkingCopyTest, WhatIsShownIsWhatIsSavedWhateverBecameOfTheFile) {
  for (const bool removed : {false, true}) {
    ASSERT_TRUE(copy.apply(SetValues{{{0, removed ? "3" : "2"}}}));
    if (removed)
      std::filesystem::remove(root.resolve(kWorking));
    else
      write(kWorking, "<macro name=\"Other\"><data/></macro>");
    EXPECT_TRUE(copy.fileChanged());
    EXPECT_TRUE(save());
    copy.noteSaved();
    EXPECT_EQ(valueIn(kTarget.file().c_str()), removed ? "3" : "2");
    EXPECT_EQ(read(kWorking), copy.bytes());
    EXPECT_FALSE(copy.edited() || copy.differs() || recorded());
  }
}

TEST_F(WorkingCopyTest, AnEditThatCannotBeWrittenHasNotHappened) {
  std::filesystem::remove(root.resolve(kWorking));
  std::filesystem::create_directory(root.resolve(kWorking));
  const int revision = copy.revision();
  const Outcome done = copy.apply(RemoveCommands{{0}});
  ASSERT_FALSE(done);
  EXPECT_EQ(done.failure().kind, Failure::Kind::kInTheWay);
  EXPECT_EQ(copy.commandCount(), 2);
  EXPECT_EQ(copy.revision(), revision);
  EXPECT_FALSE(copy.edited() || recorded());
  const auto loan = copy.lendToSave();
  EXPECT_TRUE(loan && !loan->putRight()) << "nobody could put right what stands in its way";
}

TEST_F(WorkingCopyTest, ASaveThatFailedIsOwedUntilItIsSettled) {
  EXPECT_FALSE(copy.saveOwed());
  ASSERT_TRUE(copy.apply(RemoveCommands{{1}}));
  copy.leaveEditState(WorkingCopy::Record::kKeep);
  EXPECT_TRUE(copy.saveOwed() && recorded());
  ASSERT_TRUE(save());
  copy.noteSaved();
  EXPECT_FALSE(copy.saveOwed() || recorded()) << "what is saved is not offered at the next start";
  ASSERT_TRUE(copy.undo());
  copy.leaveEditState(WorkingCopy::Record::kKeep);
  copy.close();
  EXPECT_TRUE(recorded());
  ASSERT_TRUE(copy.redo());
  EXPECT_FALSE(copy.saveOwed() || recorded()) << "nor what is undone";
  ASSERT_TRUE(copy.apply(RemoveCommands{{0}}));
  copy.leaveEditState();
  ASSERT_TRUE(copy.saveOwed());
  open();
  EXPECT_FALSE(copy.saveOwed()) << "another opening leaves it";
}

TEST_F(WorkingCopyTest, ValuesRunAheadInTheFileAlone) {
  ASSERT_TRUE(copy.apply(SetValues{{{0, "5"}}}));
  EXPECT_TRUE(copy.recovery().read()->check);
  ASSERT_TRUE(copy.writeAhead({{{0, "6"}}}));
  while (!copy.writeAhead({{{0, "7"}}})) QCoreApplication::processEvents();
  EXPECT_FALSE(copy.recovery().read()->check)
      << "a start after a crash is told that the file is not as it was left";
  for (const bool foreign : {false, true}) {
    if (foreign) write(kWorking, "<macro name=\"Other\"><data/></macro>");
    const auto loan = copy.lendToSave();
    ASSERT_TRUE(loan);
    EXPECT_EQ(loan->putRight(), foreign) << "what this program has written is no other's";
    EXPECT_EQ(valueIn(kWorking), "5");
  }
  ASSERT_TRUE(copy.writeAhead({{{0, "7"}}}));
  ASSERT_TRUE(copy.rewrite());
  EXPECT_EQ(valueIn(kWorking), "5") << "the end waits for what is still being written";
  EXPECT_EQ(copy.commands()[0].parameters[0].value, "5");
}

// Catches a start that takes the old content for what the target holds, after a save that was cut off.
TEST_F(WorkingCopyTest, WhatIsSavedIsUnknownWhileItIsBeingSaved) {
  const auto known = [this] {
    StepsFile start(root, copy.recovery().stepsPath());
    start.begin(placeOf(kTarget), copy.macro()->check());
    return start.row().saved().has_value();
  };
  ASSERT_TRUE(copy.apply(RemoveCommands{{copy.commandCount() - 1}}, {{}, {copy.commandCount() - 1}}));
  EXPECT_TRUE(copy.selectedAfterChange().empty()) << "that command has gone";
  EXPECT_TRUE(known());
  EXPECT_TRUE(save());
  EXPECT_FALSE(known());
  copy.noteSaved();
  EXPECT_TRUE(known());

  ASSERT_TRUE(copy.apply(SetValues{{{0, "2"}}}));
  EXPECT_TRUE(save());
  WorkingCopy next(access(), kWorking, RecoveryFile(root, 'A'));
  ASSERT_TRUE(next.takeUp(*next.recovery().read(), read(kWorking)));
  ASSERT_TRUE(next.undo());
  EXPECT_TRUE(next.edited()) << "the target holds what was saved last, or nobody knows";
}

// Catches a discard that goes back behind the last save.
TEST_F(WorkingCopyTest, ALooseMacroGoesBackToWhatWasSavedLast) {
  ASSERT_TRUE(copy.showLoose(kTwo, "c:\\elsewhere.mac"));
  ASSERT_TRUE(copy.apply(RemoveCommands{{0}}));
  copy.noteSavedAs(std::nullopt);
  const std::string saved = copy.bytes();
  ASSERT_TRUE(copy.apply(RemoveCommands{{0}}));
  copy.leaveEditState();
  ASSERT_TRUE(copy.showLooseAgain("discard"));
  EXPECT_EQ(copy.bytes(), saved);
}

TEST(EventGateTest, WhatWouldChangeAPaneWaitsForTheHandler) {
  EventGate gate;
  std::string log;
  const auto add = [&log](const char* what) { return [&log, what] { log += what; }; };
  gate.whenFree("b", add("now "));
  {
    const EventGate::Hold box(&gate);
    {
      const EventGate::Hold transfer(&gate);
      gate.whenFree("b", add("old "));
      gate.whenFree("b", add("b "));
      gate.whenFree("a", [&] {
        log += "a ";
        gate.whenFree("c", add("c "));
      });
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(log, "now ") << "the outer loop still holds";
  }
  EXPECT_EQ(log, "now ") << "the handler has still to return";
  QCoreApplication::processEvents();
  EXPECT_EQ(log, "now a b c ");
}

// Enabled and shown: create, copy, rename, delete; new, modify, delete, update; save; the selection lists;
// copy, move, paste commands.
TEST(PaneControlsTest, FollowTheSituation) {
  const auto shown = [](const PaneSituation& now) {
    const PaneControls is = paneControls(now);
    std::string text;
    for (const bool on :
         {is.create, is.copy, is.rename, is.remove, is.newCommand, is.modify, is.removeCommand, is.update,
          is.saveShown, is.selectionEnabled, is.macroButtonsShown, is.noticeShown, is.copyCommands,
          is.moveCommands, is.pasteCommands})
      text += on ? '1' : '0';
    return text;
  };
  PaneSituation ready;
  ready.loaded = ready.folderChosen = ready.macroSelected = ready.otherMacroSelected = ready.keepable = true;
  ready.commandsSelected = 1;
  const auto with = [&ready](auto change) {
    PaneSituation now = ready;
    change(now);
    return now;
  };
  const struct {
    const char* what;
    PaneSituation now;
    const char* shown;
  } rows[] = {{"all chosen", ready, "111111110110111"},
              {"loading", with([](auto& now) { now.loaded = false; }), "000000000010000"},
              {"edited", with([](auto& now) { now.edited = true; }), "111111111000111"},
              {"no command", with([](auto& now) { now.commandsSelected = 0; }), "111110010110001"},
              {"two commands", with([](auto& now) { now.commandsSelected = 2; }), "111110110110111"},
              {"saving would lose a part", with([](auto& now) { now.keepable = false; }), "111100110110100"},
              {"no macro", with([](auto& now) { now.macroSelected = false; }), "110000000110100"},
              {"no folder", with([](auto& now) { now.folderChosen = false; }), "001111110110111"},
              {"nothing to copy", with([](auto& now) { now.otherMacroSelected = false; }), "101111110110111"},
              {"older family", with([](auto& now) { now.olderFamily = true; }), "000000000111100"},
              {"the buffer of a copy on the panel holds edits", with([](auto& now) {
                 now.source = PaneSource::kPanel;
                 now.otherIsPanel = now.otherUnsaved = true;
               }),
               "101111110110111"},
              {"edits beside a disk hold no buffer", with([](auto& now) { now.otherUnsaved = true; }),
               "111111110110111"}};
  for (const auto& row : rows) EXPECT_EQ(shown(row.now), row.shown) << row.what;
}

}  // namespace
}  // namespace tessaly
