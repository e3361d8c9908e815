// The window against simulated panels on two loopback addresses.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pthread.h>

#include <QCheckBox>

#include "app/StatusStrip.h"
#include "tests/app/PanelWindowFixture.h"
#include "tests/editors/DialogDriver.h"

namespace tessaly {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

constexpr const char* kDiskFolder = "c:\\programme\\rv48\\appli\\Evening News\\CP1\\macroWP1\\";

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

  for (const char* name : {"Fresh", "Fresher"}) {
    driver().press(b_.createMacro, [name](QDialog& dialog) {
      WindowDriver::type(dialog, "position", QStringLiteral("33"));
      WindowDriver::type(dialog, "name", QString::fromLatin1(name));
      WindowDriver::click(dialog, QStringLiteral("OK"));
    });
    awaitRow(b_.macros, std::string("033 - ") + name);
    EXPECT_THAT(first_.read(1, "033"), HasSubstr(name));
    ASSERT_NE(driver().list(b_.macros).selected(), nullptr) << "what was created is at hand";
    EXPECT_EQ(driver().list(b_.macros).selected()->text, std::string("033 - ") + name);
  }
  driver().press(b_.renameMacro, [](QDialog& dialog) {
    WindowDriver::type(dialog, "newName", QStringLiteral("Renamed"));
    WindowDriver::click(dialog, QStringLiteral("OK"));
  });
  awaitRow(b_.macros, "033 - Renamed");
  EXPECT_THAT(first_.read(1, "033"), HasSubstr("Renamed"));
  driver().choose(b_.macros, "033");
  driver().press(b_.deleteMacro);
  awaitGone(b_.macros, "033 - Renamed");
  EXPECT_EQ(first_.read(1, "033"), "<missing>");
}

TEST_F(PanelWindowTest, EveryWayOfCopying) {
  connectPane(Pane::kB, first_);
  chooseWorkplace(Pane::kB, 1, "007 - Two");

  // Harddisk to panel, then panel to harddisk.
  driver().choose(a_.applications, "Evening News");
  driver().choose(a_.macros, "001");
  const std::string source = fixture_.site.read(macroFile(kDiskFolder, 1));
  copyTo(b_.copyMacro, 101);
  EXPECT_EQ(first_.read(1, "101"), source);
  driver().choose(b_.macros, "007");
  copyTo(a_.copyMacro, 102);
  EXPECT_EQ(fixture_.site.read(macroFile(kDiskFolder, 102)), kTwoFunctions);

  // A key file becomes a macro on the panel.
  spoilKey(fixture_.site);
  driver().choose(a_.controlPanels, "CP7");
  driver().clickRow(a_.macros, 0);
  const std::size_t commands = driver().texts(a_.commands).size();
  copyTo(b_.copyMacro, 103);
  EXPECT_THAT(fixture_.status().toStdString(),
              EndsWith(" to 103 (verified) (2 commands of the key cannot be read in a macro)"));
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
  EXPECT_EQ(driver().list(b_.workplaces).selected()->text, "Workplace 1")
      << "one workplace serves both panes";
  driver().choose(b_.macros, "007");
  copyTo(a_.copyMacro, 104);
  EXPECT_THAT(driver().texts(b_.commands), IsEmpty()) << "its working copy was the buffer";
  EXPECT_EQ(driver().list(b_.macros).selectedRow(), -1);
  EXPECT_EQ(first_.read(1, "104"), "<missing>");
}

TEST_F(PanelWindowTest, UnsavedChangesHoldThePaneAtItsWorkplace) {
  connectBoth(first_);
  chooseWorkplace(Pane::kB, 1, "007 - Two");
  driver().choose(b_.macros, "007");
  copyTo(a_.copyMacro, 104);
  awaitRow(b_.macros, "104 - Two");
  EXPECT_EQ(driver().texts(b_.commands).size(), 3U) << "what went through its working copy is what it shows";

  const auto edit = [this] {
    driver().clickRow(b_.commands, 1);
    driver().press(b_.deleteCommand);
  };
  const int ends[] = {b_.discardChanges, b_.saveChanges};
  for (const int end : ends) {
    edit();
    chooseWorkplace(Pane::kA, 2, "500 - Elsewhere");
    fixture_.window->repaint();
    EXPECT_EQ(driver().list(b_.workplaces).selected()->text, "Workplace 1");
    EXPECT_THAT(driver().texts(b_.macros), Contains("007 - Two")) << "not the macros of the other workplace";
    driver().press(end);
    EXPECT_EQ(driver().list(b_.workplaces).selected()->text, "Workplace 2");
    EXPECT_EQ(driver().texts(b_.macros), driver().texts(a_.macros));
    EXPECT_EQ(driver().list(b_.macros).selectedRow(), -1) << "so that nothing is done to the wrong macro";
    chooseWorkplace(Pane::kB, 1, "007 - Two");
    driver().choose(b_.macros, "007");
  }
  EXPECT_EQ(values(first_.read(1, "007")).size(), 2U);
}

TEST_F(PanelWindowTest, ValuesAreUpdatedInBothPanes) {
  first_.simulator.set("QMF1.ME1.KEY1.ON", "1");
  connectPane(Pane::kA, first_);
  chooseWorkplace(Pane::kA, 1, "007 - Two");
  driver().choose(a_.macros, "007");
  driver().press(a_.updateData);
  EXPECT_THAT(fixture_.site.messages.take(), ElementsAre("Update ALL macro commands in \"Macro Overview A\"? "
                                                         "\n(To update a single command, first select it)",
                                                         "Classic Commands will not be updated \n"));
  driver().press(a_.updateData);
  EXPECT_THAT(fixture_.site.messages.take(), ElementsAre("Update is busy... "));
  awaitEdited(Pane::kA);
  EXPECT_THAT(valuesInFile(Pane::kA), ElementsAre("1", "23 10 05 01 ", "1"));
  EXPECT_THAT(driver().texts(a_.commands),
              ElementsAre(testing::EndsWith(" ==> updated"), Not(testing::EndsWith("updated")),
                          testing::EndsWith(" ==> updated")));
  driver().press(a_.discardChanges);

  // One command only: the total was never counted.
  driver().clickRow(a_.commands, 2);
  driver().press(a_.updateData);
  WindowDriver::waitFor([this] { return progress(Pane::kA) == "1 of 0 Commands updated..."; },
                        "the progress of one command");
  awaitEdited(Pane::kA);
  EXPECT_THAT(valuesInFile(Pane::kA), ElementsAre("0", "23 10 05 01 ", "1"));
  driver().press(a_.discardChanges);

  // A value that the client knows already comes at once, also after an update that was left open.
  driver().clickRow(a_.macros, 1);
  driver().press(a_.updateData);
  awaitEdited(Pane::kA);
  driver().press(a_.discardChanges);

  // A cancelled question keeps the update busy until a macro is selected.
  driver().clickRow(a_.macros, 1);
  fixture_.site.messages.take();
  fixture_.site.messages.answer = false;
  driver().press(a_.updateData);
  driver().press(a_.updateData);
  EXPECT_THAT(fixture_.site.messages.take(), Contains("Update is busy... "));
  fixture_.site.messages.answer = true;
  driver().clickRow(a_.macros, 1);
  driver().press(a_.updateData);
  EXPECT_THAT(fixture_.site.messages.take(), Not(Contains("Update is busy... ")));
}

TEST_F(PanelWindowTest, ManyCommandsAreMadeAndUpdatedAtOnce) {
  std::size_t made = 0, valued = 0;
  const FunctionDictionary& dictionary = sampleDictionary();
  // Each of their functions is ready with the one value that the panel tells.
  std::vector<std::string> buses;
  for (int bus = 0; made < 40; ++bus) {
    buses.push_back((bus % 2 == 0 ? "PGM.ME" : "YUV_CORR.ME") + std::to_string(bus / 2));
    for (std::size_t i = 0; i < dictionary.functionCount(); ++i) {
      const FunctionRecord function = dictionary.function(i);
      if (function.group() != buses.back()) continue;
      ++made;
      if (function.sid().empty() || draftFor("", function).parameters.empty()) continue;
      ++valued;
      first_.simulator.set("QMF1." + function.sid(), "7");
    }
  }
  connectPane(Pane::kA, first_);
  chooseWorkplace(Pane::kA, 1, "007 - Two");
  driver().choose(a_.macros, "007");
  driver().press(a_.newMultiple, [&](QDialog& dialog) {
    const DialogDriver user(dialog);
    for (const std::string& bus : buses) user.click(bus.c_str());
    EXPECT_EQ(user.label("total"), "Total commands: " + std::to_string(made));
    user.click("updateParameters");
    WindowDriver::waitFor([&user] { return user.enabled("insertEnd"); }, "the values of all commands");
    user.click("insertEnd");
    WindowDriver::waitFor([&dialog] { return !dialog.isVisible(); }, "the end of the insertion");
  });
  EXPECT_EQ(driver().texts(a_.commands).size(), 3 + made);
  MacroCommands commands;
  ASSERT_TRUE(
      loadCommands(fixture_.site.access(), "c:\\programme\\RV48\\bin\\MacroFid\\tempA.mac", commands));
  EXPECT_EQ(static_cast<std::size_t>(std::count_if(commands.begin(), commands.end(),
                                                   [](const MacroCommand& command) {
                                                     return !command.parameters.empty() &&
                                                            command.parameters.front().value == "7";
                                                   })),
            valued);
}

TEST_F(PanelWindowTest, AnUpdateNeedsAPanel) {
  driver().choose(a_.applications, "Evening News");
  driver().clickRow(a_.macros, 0);
  driver().press(a_.updateData);
  EXPECT_THAT(
      fixture_.site.messages.take(),
      ElementsAre("Data Update is only possible when you are connected to a Corvane XL Control Panel \n"));
}

TEST_F(PanelWindowTest, APanelThatNeverAnswersEndsInOneBox) {
  PanelFaults faults;
  faults.control.neverAnswer = true;
  ASSERT_TRUE(second_.simulator.setFaults(faults));
  choosePanel(Pane::kA, addressOf(second_));
  EXPECT_EQ(button(Pane::kA), "connect");
  driver().press(a_.connectButton);
  EXPECT_EQ(button(Pane::kA), "connecting");
  EXPECT_FALSE(driver().control<QLineEdit>(a_.address).isEnabled());
  WindowDriver::waitFor([this] { return button(Pane::kA) == "connect"; }, "the end of the attempt");
  EXPECT_THAT(fixture_.site.messages.take(), ElementsAre("Connection failed....."));
  EXPECT_THAT(driver().texts(a_.applications), ElementsAre("not connected"));
  // The attempt that was given up may still hold the library for a while; then the next one works.
  choosePanel(Pane::kB, addressOf(first_));
  for (int attempt = 0; attempt < 5 && button(Pane::kB) != "disconnect"; ++attempt) {
    driver().press(b_.connectButton);
    WindowDriver::waitFor([this] { return button(Pane::kB) != "connecting"; }, "an answer");
  }
  EXPECT_EQ(button(Pane::kB), "disconnect");
  awaitRow(b_.workplaces, "Workplace 1");
}

TEST_F(PanelWindowTest, ALostLineIsToldAndANewConnectionWorks) {
  connectPane(Pane::kB, first_);
  chooseWorkplace(Pane::kB, 1, "007 - Two");
  driver().choose(b_.macros, "007");
  driver().clickRow(b_.commands, 0);
  driver().press(b_.deleteCommand);
  first_.simulator.dropConnections();
  WindowDriver::waitFor([this] { return fixture_.status().contains(QStringLiteral("lost")); },
                        "word of the loss");
  EXPECT_EQ(button(Pane::kB), "disconnect") << "the pane stays as it is until the user leaves";
  const auto& address = driver().control<QLineEdit>(b_.address);
  EXPECT_TRUE(address.font().strikeOut() && !address.toolTip().isEmpty());
  EXPECT_THAT(label(b_.sourceLabel), EndsWith("line lost"));
  EXPECT_EQ(driver().texts(b_.commands).size(), 2U);
  driver().press(b_.saveChanges);
  EXPECT_THAT(values(first_.read(1, "007")).size(), 2U) << "files still travel by FTP";
  driver().press(b_.connectButton);
  EXPECT_EQ(button(Pane::kB), "connect");
  driver().press(b_.connectButton);
  awaitRow(b_.workplaces, "Workplace 1");
  EXPECT_EQ(fixture_.status().toStdString(), "connected to the panel again");
  chooseWorkplace(Pane::kB, 1, "007 - Two");
  EXPECT_FALSE(address.font().strikeOut());
  EXPECT_THAT(label(b_.sourceLabel), Not(EndsWith("line lost")));

  const QObject& frame = *driver().control<QWidget>(b_.commands).parent();
  const auto heading = [&frame] {
    return frame.findChild<QLabel*>("subject")->accessibleName().toStdString();
  };
  auto* again = frame.findChild<QPushButton*>("connectAgain");
  driver().choose(b_.macros, "007");
  EXPECT_THAT(heading(), StartsWith("007 - Two, On the panel, workplace 1 on 127.0.0.1:"));
  EXPECT_FALSE(again->isVisible());
  driver().clickRow(b_.commands, 0);
  driver().press(b_.deleteCommand);
  first_.simulator.dropConnections();
  WindowDriver::waitFor([&] { return again->isVisible(); }, "the button");
  EXPECT_THAT(heading(), StartsWith("007 - Two, Line lost, "));
  QTest::mouseClick(again, Qt::LeftButton);
  WindowDriver::waitFor([&] { return heading().starts_with("007 - Two, On the panel, "); }, "the line");
  EXPECT_THAT(heading(), HasSubstr("unsaved changes, last change: delete 1 command"));
  EXPECT_THAT(driver().texts(b_.macros), testing::Contains("007 - Two")) << "its place stays chosen";
  EXPECT_EQ(driver().list(b_.workplaces).selectedRow(), 0);
  driver().press(b_.saveChanges);
  EXPECT_THAT(values(first_.read(1, "007")).size(), 1U);
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
    driver().clickRow(b_.commands, 0);
    driver().press(b_.deleteCommand);
    ASSERT_TRUE(first_.simulator.setFaults(faults));
    driver().press(b_.saveChanges);
    EXPECT_THAT(strip->owed(Pane::kB).toStdString(), StartsWith("NOT saved: 007"));
    EXPECT_EQ(values(first_.read(1, "007")).size(), left);
    EXPECT_FALSE(edited(Pane::kB));
    ASSERT_TRUE(first_.simulator.setFaults({}));
    QApplication::setActiveWindow(fixture_.window.get());
    driver().list(b_.macros).setFocus();
    saveAgain();
    EXPECT_EQ(strip->owed(Pane::kB), "") << fixture_.status().toStdString();
    EXPECT_EQ(values(first_.read(1, "007")).size(), --left);
  }
  ASSERT_TRUE(first_.simulator.setFaults(faults));
  driver().choose(b_.macros, "000");
  EXPECT_EQ(driver().texts(b_.commands).size(), 1U) << "the working copy holds what it held";
  EXPECT_EQ(driver().list(b_.macros).selectedRow(), -1) << "which is of no macro in the list";
  EXPECT_THAT(fixture_.status().toStdString(), HasSubstr("NOT opened: 000"));
}

// Catches a transfer that ends the program, or leaves it busy for good, where no thread is to be had.
TEST_F(PanelWindowTest, ATransferWithoutAThreadFails) {
  connectPane(Pane::kB, first_);
  chooseWorkplace(Pane::kB, 1, "007 - Two");
  pthread_attr_t usual, none;
  ASSERT_EQ(pthread_getattr_default_np(&usual), 0);
  pthread_attr_init(&none);
  pthread_attr_setstacksize(&none, std::size_t{1} << 47);  // more than there are addresses
  ASSERT_EQ(pthread_setattr_default_np(&none), 0);
  driver().choose(b_.macros, "007");
  pthread_setattr_default_np(&usual);
  EXPECT_THAT(fixture_.status().toStdString(), StartsWith("NOT opened: 007 - Two (the transfer failed)"));
  EXPECT_TRUE(fixture_.window->close()) << "no transfer is under way";
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
    driver().clickRow(b_.commands, 0);
    driver().press(b_.deleteCommand);
    stallTransfers(first_);
    QTimer user;
    QObject::connect(&user, &QTimer::timeout, &user, [&] {
      if (!transferShown()) return;
      user.stop();
      EXPECT_TRUE(first_.simulator.setFaults({}));
      WindowDriver::click(*fixture_.window->findChild<QProgressDialog*>(), QStringLiteral("Cancel"));
    });
    user.start(5);
    driver().press(b_.saveChanges);
    EXPECT_EQ(fixture_.status().toStdString(), "NOT saved: 007 - Two (the transfer was cancelled)");
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
      EXPECT_THAT(fixture_.site.messages.take(),
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
  QTimer user;
  QObject::connect(&user, &QTimer::timeout, &user, [&] {
    if (!transferShown()) return;
    user.stop();
    EXPECT_FALSE(fixture_.window->close());
  });
  user.start(5);
  driver().choose(b_.macros, "007");
  EXPECT_THAT(fixture_.status().toStdString(),
              StartsWith("NOT opened: 007 - Two (the transfer was cancelled)"));
  WindowDriver::waitFor([&] { return !fixture_.window->isVisible() && first_.simulator.connections() == 0; },
                        "the end of the window and of its connection");
}

}  // namespace
}  // namespace tessaly
