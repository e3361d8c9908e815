// The window against simulated panels on two loopback addresses.
#include <gmock/gmock.h>
#include <pthread.h>

#include <QCheckBox>

#include "app/StatusStrip.h"
#include "tests/app/PanelWindowFixture.h"
#include "tests/editors/DialogDriver.h"

namespace tessaly {
namespace {

using testing::Contains;
using testing::ContainsRegex;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

TEST_F(PanelWindowTest, MacrosOfThePanelAreEditedAndSaved) {
  connectPane(Pane::kB, first_);
  EXPECT_EQ(fixture_.window->focusWidget(), &driver().control<QWidget>(b_.connectButton))
      << "the keyboard comes back to the button that was taken away while connecting";
  chooseWorkplace(Pane::kB, 1, "007 - Two");
  EXPECT_THAT(driver().texts(b_.macros), ElementsAre("000 - Zero", "007 - Two"));
  driver().choose(b_.macros, "007");
  EXPECT_EQ(driver().texts(b_.commands).size(), 3U);
  driver().clickRow(b_.commands, 1);
  driver().press(b_.deleteCommand);
  EXPECT_EQ(first_.read(1, "007"), kTwoFunctions);
  // A name that comes while the macro is edited leaves the work alone.
  first_.simulator.set("PANEL.MACRO1.REG7.NAME", "Two!");
  awaitRow(b_.macros, "007 - Two!");
  EXPECT_EQ(driver().texts(b_.commands).size(), 2U);
  driver().press(b_.saveChanges);
  EXPECT_THAT(values(first_.read(1, "007")), ElementsAre("0", "0"));
  awaitRow(b_.macros, "007 - Two");
  EXPECT_THAT(told(), StartsWith("renamed: 007 - Two!"));

  for (const char* name : {"Fresh", "Fresher"}) {
    create(b_.createMacro, 33, name);
    awaitRow(b_.macros, std::string("033 - ") + name);
    EXPECT_THAT(first_.read(1, "033"), HasSubstr(name));
    EXPECT_EQ(selected(b_.macros), std::string("033 - ") + name) << "what was created is at hand";
  }
}

TEST_F(PanelWindowTest, EveryWayOfCopying) {
  connectPane(Pane::kB, first_);
  chooseWorkplace(Pane::kB, 1, "007 - Two");

  // Harddisk to panel, then panel to harddisk.
  open(a_);
  const std::string source = read(macroPath(1));
  copyTo(b_.copyMacro, 101);
  EXPECT_EQ(first_.read(1, "101"), source);
  removeFirst(a_);
  copyTo(b_.copyMacro, 101);
  EXPECT_THAT(told(), EndsWith("(verified); without the unsaved changes that are shown there"));
  EXPECT_EQ(first_.read(1, "101"), source);
  driver().press(a_.discardChanges);
  driver().choose(b_.macros, "007");
  copyTo(a_.copyMacro, 102);
  EXPECT_EQ(read(macroPath(102)), kTwoFunctions);

  // A key file becomes a macro on the panel.
  spoilKey(fixture_.site);
  driver().choose(a_.controlPanels, "CP7");
  driver().clickRow(a_.macros, 0);
  const std::size_t commands = driver().texts(a_.commands).size();
  copyTo(b_.copyMacro, 103);
  EXPECT_THAT(fixture_.window->findChild<QLabel*>("statusStrip")->accessibleName().toStdString(),
              ContainsRegex("^Warning: .* to 103 .verified. .2 commands of the key cannot be read"));
  EXPECT_EQ(values(first_.read(1, "103")).size(), commands);

  // Panel to panel: pane A joins at once, and both transfers use its own address.
  driver().press(a_.harddisk);
  choosePanel(Pane::kA, addressOf(second_));
  EXPECT_EQ(button(Pane::kA), "disconnect") << "choosing the panel joins the other pane's connection";
  EXPECT_THAT(label(a_.sourceLabel), HasSubstr("functions go to " + addressOf(first_)))
      << "said before anything is sent";
  EXPECT_THAT(label(b_.sourceLabel), Not(HasSubstr("functions go")));
  driver().choose(a_.workplaces, "Workplace 1");
  awaitRow(a_.macros, "007 - Two");
  EXPECT_EQ(selected(b_.workplaces), "Workplace 1") << "one workplace serves both panes";
  driver().choose(b_.macros, "007");
  copyTo(a_.copyMacro, 104);
  EXPECT_THAT(driver().texts(b_.commands), IsEmpty()) << "its working copy was the buffer";
  EXPECT_EQ(selected(b_.macros), "");
  EXPECT_EQ(first_.read(1, "104"), "<missing>");
}

// The files of pane A are on the second panel, its line and its list are the first one's: what it asks for
// strikes that one, and is kept and undone there. Nothing of the other is deleted, listed or saved as if it
// were one panel.
TEST_F(PanelWindowTest, APaneThatHasJoinedTheLineToAnotherPanel) {
  choosePanel(Pane::kA, addressOf(second_));
  connectPane(Pane::kB, first_);
  driver().press(a_.connectButton);
  chooseWorkplace(Pane::kA, 1, "007 - Two");
  const auto undo = [&] { shortcut(Qt::Key_U, Qt::ControlModifier | Qt::AltModifier); };
  create(a_.createMacro, 104);
  EXPECT_THAT(told(), HasSubstr("could not be told"));
  EXPECT_THAT(second_.read(1, "104"), HasSubstr("Fresh"));
  first_.tree.write(Panel::file(1, "104"), kTwoFunctions);
  undo();
  EXPECT_THAT(told(), HasSubstr("no pane is connected to the panel " + addressOf(second_)));
  EXPECT_EQ(first_.read(1, "104"), kTwoFunctions);
  driver().choose(a_.macros, "007");
  driver().press(a_.deleteMacro);
  awaitGone(a_.macros, "007 - Two");
  EXPECT_EQ(first_.read(1, "007"), "<missing>");
  EXPECT_EQ(second_.read(1, "007"), kTwoFunctions);
  undo();
  EXPECT_EQ(first_.read(1, "007"), kTwoFunctions) << told();
}

TEST_F(PanelWindowTest, UnsavedChangesHoldThePaneAtItsWorkplace) {
  connectBoth(first_);
  chooseWorkplace(Pane::kB, 1, "007 - Two");
  driver().choose(b_.macros, "007");
  copyTo(a_.copyMacro, 104);
  awaitRow(b_.macros, "104 - Two");
  EXPECT_EQ(driver().texts(b_.commands).size(), 3U) << "what went through its working copy is what it shows";

  const std::function<void()> ends[] = {[this] { driver().press(b_.discardChanges); },
                                        [&] { driver().clickRow(b_.commands, 0), action("undo").trigger(); },
                                        [this] { driver().press(b_.saveChanges); }};
  for (const auto& end : ends) {
    removeFirst(b_);
    driver().choose(a_.macros, "007");
    rename(a_.renameMacro, "Two");
    EXPECT_EQ(selected(b_.macros), "007 - Two");
    chooseWorkplace(Pane::kA, 2, "500 - Elsewhere");
    fixture_.window->repaint();
    EXPECT_EQ(selected(b_.workplaces), "Workplace 1");
    EXPECT_THAT(driver().texts(b_.macros), Contains("007 - Two")) << "not the macros of the other workplace";
    end();
    EXPECT_EQ(selected(b_.workplaces), "Workplace 2");
    EXPECT_EQ(driver().texts(b_.macros), driver().texts(a_.macros));
    EXPECT_EQ(selected(b_.macros), "") << "so that nothing is done to the wrong macro";
    chooseWorkplace(Pane::kB, 1, "007 - Two");
    driver().choose(b_.macros, "007");
  }
  EXPECT_EQ(values(first_.read(1, "007")).size(), 2U);
}

TEST_F(PanelWindowTest, ManyCommandsAreMadeAndUpdatedAtOnce) {
  std::size_t made = 0, valued = 0;
  for (std::size_t i = 0; i < siteDictionary().functionCount(); ++i) {
    const FunctionRecord function = siteDictionary().function(i);
    if (function.group() != "YUV_CORR.ME0") continue;
    ++made;
    if (function.sid().empty() || draftFor("", function).parameters.empty()) continue;
    ++valued;
    first_.simulator.set("QMF1." + function.sid(), "7");
  }
  connectPane(Pane::kA, first_);
  chooseWorkplace(Pane::kA, 1, "007 - Two");
  driver().choose(a_.macros, "007");
  driver().press(a_.newMultiple, [&](QDialog& dialog) {
    const DialogDriver user(dialog);
    user.click("YUV_CORR.ME0");
    user.click("updateParameters");
    WindowDriver::waitFor([&user] { return user.enabled("insertEnd"); }, "the values of all commands");
    user.click("insertEnd");
    EXPECT_FALSE(dialog.isVisible());
  });
  const MacroCommands commands = commandsOf(workingCopyPath(Pane::kA));
  EXPECT_EQ(commands.size(), 3 + made);
  EXPECT_EQ(told(), std::to_string(made) + " commands inserted");
  EXPECT_EQ(driver().list(a_.commands).selectedRows().size(), made);
  const auto seven = [](const MacroCommand& command) {
    return !command.parameters.empty() && command.parameters.front().value == "7";
  };
  EXPECT_EQ(std::count_if(commands.begin(), commands.end(), seven), static_cast<int>(valued));
  EXPECT_GT(valued, 1U);
  action("undo").trigger();
  EXPECT_EQ(commandsOf(workingCopyPath(Pane::kA)).size(), 3U) << "one step";
}

TEST_F(PanelWindowTest, WhatAsksThePanelNeedsOne) {
  open(a_);
  driver().press(a_.updateData);
  driver().press(a_.newMultiple);
  EXPECT_THAT(
      asked(),
      ElementsAre("Data Update is only possible when you are connected to a Corvane XL Control Panel \n",
                  "Creating Multiple Commands is only possible when you are connected to a Corvane XL "
                  "Control Panel \n"));
}

TEST_F(PanelWindowTest, ALostLineIsToldAndANewConnectionWorks) {
  const QObject& frame = *driver().control<QWidget>(b_.commands).parent();
  const auto heading = [&frame] {
    return frame.findChild<QLabel*>("subject")->accessibleName().toStdString();
  };
  auto* again = frame.findChild<QPushButton*>("connectAgain");
  const auto& address = driver().control<QLineEdit>(b_.address);
  connectPane(Pane::kB, first_);
  chooseWorkplace(Pane::kB, 1, "007 - Two");
  driver().choose(b_.macros, "007");
  EXPECT_THAT(heading(), StartsWith("007 - Two, On the panel, workplace 1 on " + addressOf(first_)));
  EXPECT_FALSE(again->isVisible());
  removeFirst(b_);
  first_.simulator.dropConnections();
  // The heading may be drawn anew, and know it, before the line is looked at.
  WindowDriver::waitFor([&] { return told().find("lost") != std::string::npos; }, "word of the loss");
  EXPECT_TRUE(again->isVisible());
  EXPECT_THAT(heading(), StartsWith("007 - Two, Line lost, "));
  EXPECT_EQ(button(Pane::kB), "disconnect") << "the pane stays as it is until the user leaves";
  EXPECT_TRUE(address.font().strikeOut() && !address.toolTip().isEmpty());
  EXPECT_THAT(label(b_.sourceLabel), EndsWith("line lost"));
  driver().press(b_.saveChanges);
  EXPECT_EQ(values(first_.read(1, "007")).size(), 2U) << "files still travel by FTP";
  removeFirst(b_);
  QTest::mouseClick(again, Qt::LeftButton);
  WindowDriver::waitFor([&] { return told() == "connected to the panel again"; }, "the line");
  EXPECT_THAT(heading(), StartsWith("007 - Two, On the panel, "));
  EXPECT_FALSE(address.font().strikeOut());
  EXPECT_THAT(label(b_.sourceLabel), Not(EndsWith("line lost")));
  EXPECT_THAT(heading(), HasSubstr("unsaved changes, last change: delete 1 command"));
  awaitRow(b_.macros, "007 - Two");  // as its place stays chosen
  EXPECT_EQ(selected(b_.workplaces), "Workplace 1");
  driver().press(b_.saveChanges);
  EXPECT_EQ(values(first_.read(1, "007")).size(), 1U);
  ASSERT_TRUE(first_.simulator.renameMacro(1, 7, "Two!"));
  awaitRow(b_.macros, "007 - Two!");
}

TEST_F(PanelWindowTest, AFailedTransferLosesNothing) {
  PanelFaults faults;
  faults.ftp.refuseLogin = true;
  const auto* strip = fixture_.window->findChild<StatusStrip*>();
  connectPane(Pane::kB, first_);
  chooseWorkplace(Pane::kB, 1, "007 - Two");
  driver().choose(b_.macros, "007");
  std::size_t left = 3;
  const std::function<void()> again[] = {
      [&] { QTest::mouseClick(strip->findChild<QAbstractButton*>("owed1Button"), Qt::LeftButton); },
      [&] { QTest::keyClick(&driver().list(b_.macros), Qt::Key_S, Qt::ControlModifier); }};
  for (const auto& saveAgain : again) {
    removeFirst(b_);
    ASSERT_TRUE(first_.simulator.setFaults(faults));
    fixture_.site.messages.answer = false;
    for (const int button : {b_.saveChanges, b_.discardChanges}) {
      driver().press(button);
      EXPECT_TRUE(edited(Pane::kB)) << "what cannot be looked at is neither overwritten nor gone back to";
    }
    EXPECT_THAT(asked(), testing::AllOf(Contains(HasSubstr("cannot be seen whether")),
                                        Contains(HasSubstr("cannot be opened again"))));
    fixture_.site.messages.answer = true;
    driver().press(b_.saveChanges);
    driver().choose(a_.applications, "Football Live");
    for (const char* name : {"007 - Two!", "007 - Two"}) {
      first_.simulator.set("PANEL.MACRO1.REG7.NAME", name + 6);
      awaitRow(b_.macros, name);
      EXPECT_EQ(selected(b_.macros), name);
    }
    create(b_.createMacro, 33);
    EXPECT_EQ(selected(b_.macros), "007 - Two");
    EXPECT_EQ(values(first_.read(1, "007")).size(), left);
    EXPECT_FALSE(edited(Pane::kB));
    ASSERT_TRUE(first_.simulator.setFaults({}));
    driver().clickRow(a_.macros, 0);
    copyTo(b_.copyMacro, 7);
    EXPECT_THAT(strip->owed(Pane::kB).toStdString(), StartsWith("NOT saved: 007")) << "whatever comes next";
    QApplication::setActiveWindow(fixture_.window.get());
    driver().list(b_.macros).setFocus();
    saveAgain();
    EXPECT_EQ(strip->owed(Pane::kB), "") << told();
    EXPECT_EQ(values(first_.read(1, "007")).size(), --left);
  }
  // Neither the other pane nor another line takes it away, nor does the window go without a question.
  removeFirst(b_);
  ASSERT_TRUE(first_.simulator.setFaults(faults));
  driver().press(b_.saveChanges);
  const std::string heldStill = held(Pane::kB);
  choosePanel(Pane::kA, addressOf(first_));
  chooseWorkplace(Pane::kA, 2, "500 - Elsewhere");
  EXPECT_FALSE(driver().control<QWidget>(a_.copyMacro).isEnabled())
      << "it would go through that working copy";
  first_.simulator.dropConnections();
  WindowDriver::waitFor([&] { return told().find("lost") != std::string::npos; }, "word of the loss");
  auto* line = driver().control<QWidget>(b_.commands).parent()->findChild<QPushButton*>("connectAgain");
  QTest::mouseClick(line, Qt::LeftButton);
  WindowDriver::waitFor([&] { return told() == "connected to the panel again"; }, "the line");
  EXPECT_EQ(held(Pane::kB), heldStill);
  EXPECT_EQ(selected(b_.workplaces), "Workplace 1");
  EXPECT_THAT(strip->owed(Pane::kB).toStdString(), StartsWith("NOT saved: 007"));
  WindowDriver::answerNext([](QDialog& dialog) { WindowDriver::click(dialog, "Cancel"); });
  EXPECT_FALSE(fixture_.window->close());

  awaitRow(a_.workplaces, "Workplace 2");
  chooseWorkplace(Pane::kA, 2, "500 - Elsewhere");
  driver().choose(b_.macros, "000");
  EXPECT_EQ(driver().texts(b_.commands).size(), 1U) << "the working copy holds what it held";
  EXPECT_EQ(selected(b_.macros), "") << "which is of no macro in the list";
  EXPECT_EQ(selected(a_.workplaces), "Workplace 1") << "whose names are known again";
  EXPECT_THAT(told(), HasSubstr("NOT opened: 000"));
}

// Catches a transfer that ends the program, or leaves it busy for good, where no thread is to be had.
TEST_F(PanelWindowTest, ATransferWithoutAThreadFails) {
  connectPane(Pane::kB, first_);
  chooseWorkplace(Pane::kB, 1, "007 - Two");
  driver().choose(b_.macros, "007");
  pthread_attr_t usual, none;
  ASSERT_EQ(pthread_getattr_default_np(&usual), 0);
  pthread_attr_init(&none);
  pthread_attr_setstacksize(&none, std::size_t{1} << 47);  // more than there are addresses
  ASSERT_EQ(pthread_setattr_default_np(&none), 0);
  create(b_.createMacro, 33);
  EXPECT_EQ(selected(b_.macros), "") << "nothing is shown";
  driver().choose(b_.macros, "007");
  pthread_setattr_default_np(&usual);
  EXPECT_THAT(told(), StartsWith("NOT opened: 007 - Two (the transfer failed)"));
  fixture_.driver->close();
}

// Catches work of somebody else's on the panel that is overwritten unseen, a save that goes on although the
// user has given up the look at the panel, and a panel that is told to read its macros before one is there.
TEST_F(PanelWindowTest, AMacroThatChangedOnThePanelIsAskedAbout) {
  connectPane(Pane::kB, first_);
  chooseWorkplace(Pane::kB, 1, "007 - Two");
  const std::string elsewhere = "<macro name=\"Elsewhere\"><data></data></macro>";
  for (const bool deleted : {false, true}) {
    first_.tree.write(Panel::file(1, "007"), kTwoFunctions);
    driver().choose(b_.macros, "007");
    removeFirst(b_);
    for (const int button : {b_.discardChanges, b_.saveChanges}) {
      stallTransfers(first_);
      waitedFor([&] { driver().press(button); },
                [&](QProgressDialog& progress) {
                  EXPECT_TRUE(first_.simulator.setFaults({}));
                  cancel(progress);
                });
      EXPECT_THAT(told(), EndsWith("ed: 007 - Two (the transfer was cancelled)"));
    }
    EXPECT_EQ(first_.read(1, "007"), kTwoFunctions);

    if (deleted)
      std::filesystem::remove(first_.tree.root.resolve(Panel::file(1, "007")));
    else
      first_.tree.write(Panel::file(1, "007"), elsewhere);
    first_.simulator.reload();
    awaitGone(b_.macros, "007 - Two");
    for (const bool over : {false, true}) {
      fixture_.site.messages.answer = over;
      driver().press(b_.saveChanges);
      EXPECT_THAT(asked(),
                  ElementsAre(HasSubstr(deleted ? "deleted by somebody else" : "changed by somebody else")));
      EXPECT_EQ(edited(Pane::kB), !over);
      EXPECT_TRUE(over || first_.read(1, "007") == (deleted ? "<missing>" : elsewhere));
    }
    EXPECT_EQ(values(first_.read(1, "007")).size(), 2U);
    awaitRow(b_.macros, "007 - Two");
  }
}

// Catches a window that closes under its transfer, waits until that ends by itself, or stays open after it.
TEST_F(PanelWindowTest, ClosingCancelsATransferFirst) {
  connectPane(Pane::kB, first_);
  chooseWorkplace(Pane::kB, 1, "007 - Two");
  stallTransfers(first_);
  waitedFor([&] { driver().choose(b_.macros, "007"); },
            [&](QProgressDialog&) { EXPECT_FALSE(fixture_.window->close()); });
  EXPECT_THAT(told(), StartsWith("NOT opened: 007 - Two (the transfer was cancelled)"));
  WindowDriver::waitFor([&] { return !fixture_.window->isVisible() && first_.simulator.connections() == 0; },
                        "the end of the window and of its connection");
}

}  // namespace
}  // namespace tessaly
