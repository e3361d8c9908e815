// A panel in one file: saved, shown in a pane and copied from.
#include <gmock/gmock.h>

#include "platform/Text.h"
#include "review/Snapshot.h"
#include "tests/app/PanelWindowFixture.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class SnapshotWindowTest : public PanelWindowTest {
 protected:
  SnapshotWindowTest() { fixture_.site.write("c:\\saved\\x", ""); }

  [[nodiscard]] std::string file() const {
    return (fixture_.site.root.path() / "c/saved/panel.zip").string();
  }

  // What the menus have, with the keyboard in the pane.
  void choose(Pane pane, const char* act, const std::function<void(QDialog&)>& answer = {}) {
    QApplication::setActiveWindow(fixture_.window.get());  // a dialog may have been it
    driver().control<QAbstractButton>(ids(pane).harddisk).setFocus();
    if (answer) WindowDriver::answerNext(answer);
    if (!action(act).isEnabled()) throw std::runtime_error(std::string("grey: ") + act);
    action(act).trigger();
  }
  [[nodiscard]] std::function<void(QDialog&)> named() const {
    return [name = file()](QDialog& dialog) { nameFile(dialog, name); };
  }
  [[nodiscard]] std::string path(Pane pane) {
    return driver().control<QLineEdit>(ids(pane).address).text().toStdString();
  }
};

TEST_F(SnapshotWindowTest, APanelIsSavedAndShownToBeCopiedFrom) {
  connectPane(Pane::kA, first_);
  choose(Pane::kA, "saveSnapshot", named());
  ASSERT_EQ(told(), "saved and verified: 3 macros in panel.zip");
  first_.tree.write(Panel::file(1, "007"), "<macro name=\"Other\"><data></data></macro>");

  const std::string before = path(Pane::kB);
  choose(Pane::kB, "openSnapshot", named());
  EXPECT_EQ(path(Pane::kB), file());
  EXPECT_EQ(driver().texts(b_.workplaces).size(), 8U);
  driver().choose(b_.workplaces, "Workplace 1");
  EXPECT_THAT(driver().texts(b_.macros), ElementsAre("000 - Zero", "007 - Two"));
  driver().choose(b_.macros, "007");
  EXPECT_EQ(driver().texts(b_.commands).size(), 3U);

  // It is there to be viewed, whatever is pressed.
  driver().clickRow(b_.commands, 0);
  for (const int button : {b_.createMacro, b_.copyMacro, b_.renameMacro, b_.deleteMacro, b_.newCorvane,
                           b_.newClassic, b_.newMultiple, b_.modifyCommand, b_.deleteCommand, b_.updateData})
    EXPECT_FALSE(driver().control<QAbstractButton>(button).isEnabled()) << button;
  QTest::keyClick(&driver().list(b_.commands), Qt::Key_Delete);
  EXPECT_FALSE(edited(Pane::kB));
  EXPECT_TRUE(driver().control<QLabel>(b_.notice).isVisible());

  chooseWorkplace(Pane::kA, 1, "000 - Zero");
  copyTo(a_.copyMacro, 8);
  EXPECT_EQ(first_.read(1, "008"), kTwoFunctions);

  // A line that is lost meanwhile is made anew, and the other pane is on it.
  const std::string other = first_.read(1, "007");
  choose(Pane::kB, "restoreSnapshot", [this, &other](QDialog& dialog) {
    first_.simulator.dropConnections();
    WindowDriver::waitFor([] { return client().state() == kPanelNotConnected; }, "the loss");
    fixture_.site.messages.answer = false;
    WindowDriver::click(dialog, QStringLiteral("Restore"));
    EXPECT_THAT(asked(), testing::Contains(HasSubstr("1 of 1 macros have errors")));
    EXPECT_EQ(first_.read(1, "007"), other);
    fixture_.site.messages.answer = true;
    WindowDriver::click(dialog, QStringLiteral("Restore"));
    WindowDriver::click(dialog, QStringLiteral("Close"));
  });
  EXPECT_EQ(told(), "1 macros are restored");
  EXPECT_EQ(first_.read(1, "007"), kTwoFunctions);
  chooseWorkplace(Pane::kA, 1, "007 - Two");
  shortcut(Qt::Key_U, Qt::ControlModifier | Qt::AltModifier);
  EXPECT_EQ(first_.read(1, "007"), other);
  EXPECT_EQ(told(), "undone: restore of 1 macros");

  // A next start begins without it.
  fixture_.window->keepState();
  EXPECT_EQ(windows1252ToUtf8(fixture_.window->settings().pathB), before);
  choose(Pane::kB, "closeSnapshot");
  EXPECT_EQ(path(Pane::kB), before);
  EXPECT_THAT(driver().texts(b_.applications), testing::Contains("Evening News"));
}

TEST_F(SnapshotWindowTest, AFolderIsSaved) {
  driver().choose(a_.applications, "Evening News");
  const std::size_t count = driver().texts(a_.macros).size();
  choose(Pane::kA, "saveSnapshot", named());
  choose(Pane::kB, "openSnapshot", named());
  EXPECT_EQ(driver().texts(b_.workplaces), std::vector<std::string>{"Folder"});
  EXPECT_EQ(driver().texts(b_.macros), driver().texts(a_.macros));
  EXPECT_GT(count, 1U);
}

TEST_F(SnapshotWindowTest, ABadFileAndACancelChangeNothing) {
  connectPane(Pane::kA, first_);
  choose(Pane::kA, "saveSnapshot", named());
  const std::string good = read("c:\\saved\\panel.zip");
  stallTransfers(first_);
  const auto overwrite = [this](QDialog& dialog) {
    WindowDriver::answerNext([](QDialog& question) { WindowDriver::click(question, "Yes"); });
    named()(dialog);
  };
  waitedFor([&] { choose(Pane::kA, "saveSnapshot", overwrite); }, &cancel);
  EXPECT_EQ(told(), "NOT saved: panel.zip (it was cancelled)");
  EXPECT_EQ(read("c:\\saved\\panel.zip"), good);

  // Its names would be another panel's.
  EXPECT_TRUE(first_.simulator.setFaults({}));
  driver().press(a_.connectButton);
  choosePanel(Pane::kB, addressOf(second_));
  driver().press(a_.connectButton);
  awaitRow(a_.workplaces, "Workplace 2");
  driver().press(b_.connectButton);
  choose(Pane::kB, "saveSnapshot");
  EXPECT_EQ(told(), "NOT saved: the line leads to another panel, " + addressOf(first_));
  EXPECT_EQ(read("c:\\saved\\panel.zip"), good);
  choose(Pane::kA, "openSnapshot", named());
  choose(Pane::kA, "restoreSnapshot");
  EXPECT_EQ(told(), "NOT restored: the line leads to another panel, " + addressOf(first_))
      << "that of the files could not be told of what it has";
  driver().press(b_.harddisk);

  const auto shown = driver().texts(b_.applications);
  fixture_.site.write("c:\\saved\\panel.zip", good.substr(0, good.size() / 2));
  choose(Pane::kB, "openSnapshot", named());
  EXPECT_THAT(told(), HasSubstr("NOT opened: panel.zip (the snapshot: is no archive"));
  EXPECT_EQ(driver().texts(b_.applications), shown);
}

}  // namespace
}  // namespace tessaly
