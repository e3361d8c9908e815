// What a window that is dropped without closing leaves, and what the next one makes of it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QLabel>
#include <QRadioButton>

#include "model/MacroFile.h"
#include "panelsim/PanelSimulator.h"
#include "platform/Files.h"
#include "tests/app/WindowFixture.h"

namespace tessaly {
namespace {

using testing::HasSubstr;

constexpr const char* kFolder = "c:\\programme\\rv48\\appli\\Evening News\\CP1\\macroWP1\\";
constexpr const char* kTempA = "c:\\programme\\RV48\\bin\\MacroFid\\tempA.mac";
constexpr const char* kRecordA = "recovery\\paneA.txt";

class RecoveryTest : public testing::Test {
 protected:
  RecoveryTest() : fixture_(offlineClient()) {}

  [[nodiscard]] WindowDriver& driver() { return *fixture_.driver; }
  [[nodiscard]] std::string read(const std::string& path) const { return fixture_.site.read(path); }
  [[nodiscard]] bool visible(int id) { return driver().control<QWidget>(id).isVisible(); }

  // Deletes the first command of macro 001.
  void edit(Pane pane) {
    const auto& ids = WindowFixture::ids(pane);
    driver().choose(ids.applications, "Evening News");
    driver().choose(ids.macros, "001");
    driver().clickRow(ids.commands, 0);
    driver().press(ids.deleteCommand);
  }
  // The program dies, and the next start makes an offer.
  void startAgain(const std::function<void(QDialog&)>& answer) {
    bool asked = false;
    WindowDriver::answerNext([&](QDialog& dialog) {
      asked = true;
      answer(dialog);
    });
    fixture_.open();
    WindowDriver::waitFor([&] { return asked && QApplication::activeModalWidget() == nullptr; }, "the offer");
  }
  static void ok(QDialog& dialog) { WindowDriver::click(dialog, QStringLiteral("OK")); }
  static void leave(QDialog& dialog) {
    WindowDriver::click(dialog, QStringLiteral("Leave it"));
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

  WindowFixture fixture_;
  const PaneDescriptor::ControlIds& a_ = WindowFixture::ids(Pane::kA);
  const PaneDescriptor::ControlIds& b_ = WindowFixture::ids(Pane::kB);
  const std::string macro_ = macroFile(kFolder, 1);
};

TEST_F(RecoveryTest, ChangesOfBothPanesAreTakenUpAndSaved) {
  edit(Pane::kA);
  driver().press(a_.saveChanges);
  EXPECT_EQ(read(kRecordA), "<missing>") << "nothing is unsaved";
  edit(Pane::kA);
  edit(Pane::kB);
  const std::string original = read(macro_), edited = read(kTempA);
  startAgain([](QDialog& dialog) {
    EXPECT_THAT(label(dialog, "macroA"), testing::StartsWith("001 - "));
    EXPECT_THAT(label(dialog, "placeB"), HasSubstr("macro001.mac"));
    EXPECT_EQ(label(dialog, "warningA"), "");
    ok(dialog);
  });
  for (const auto* ids : {&a_, &b_}) EXPECT_TRUE(visible(ids->saveChanges));
  EXPECT_EQ(driver().list(a_.macros).selected()->text.substr(0, 3), "001")
      << "the lists show where it belongs";
  EXPECT_EQ(read(macro_), original);
  driver().press(a_.saveChanges);
  EXPECT_EQ(read(macro_), edited);
  EXPECT_EQ(newest(), original);
  driver().press(b_.discardChanges);
  EXPECT_EQ(driver().texts(b_.commands), driver().texts(a_.commands));
  fixture_.open();
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << "there is nothing left to ask";
}

TEST_F(RecoveryTest, WhateverTheAnswerNothingIsLost) {
  edit(Pane::kA);
  const std::string edited = read(kTempA);
  for (int start = 0; start < 2; ++start) {
    startAgain(later);
    // The pane is free meanwhile.
    driver().choose(a_.applications, "Evening News");
    driver().choose(a_.macros, "002");
    EXPECT_NE(read(kTempA), edited);
    EXPECT_EQ(newest(), edited);
  }
  startAgain(ok);
  EXPECT_EQ(read(kTempA), edited);
  EXPECT_EQ(fixture_.history.list().size(), 1U);
  startAgain(leave);
  EXPECT_FALSE(visible(a_.saveChanges));
  EXPECT_THAT(fixture_.status().toStdString(), HasSubstr("history"));
  EXPECT_EQ(fixture_.history.list().size(), 1U);
  EXPECT_EQ(fixture_.history.list().front().change, MacroChange::kUnsaved);
  EXPECT_EQ(read(kRecordA), "<missing>");

  // New changes take the place of what was set aside.
  edit(Pane::kA);
  startAgain(later);
  edit(Pane::kA);
  EXPECT_EQ(read("recovery\\paneA.mac"), "<missing>");
  WindowDriver::answerNext([](QDialog& dialog) { WindowDriver::click(dialog, QStringLiteral("Discard")); });
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
      {"a record of nowhere",
       [&] { fixture_.site.write(kRecordA, "panel=x\nworkplace=1\nnumber=../\nsince=1\nedited=1\n"); },
       nullptr, "damaged"},
      {"saved, and no record removed", [&] { fixture_.site.write(macro_, read(kTempA)); }, nullptr, ""},
  };
  for (const Case& one : cases) {
    edit(Pane::kA);
    fixture_.window.reset();
    one.harm();
    const std::string bytes = read(kTempA);
    if (one.warning != nullptr)
      startAgain([&](QDialog& dialog) {
        EXPECT_THAT(label(dialog, "warningA"), HasSubstr(one.warning)) << one.what;
        ok(dialog);
      });
    else
      fixture_.open();
    EXPECT_THAT(fixture_.status().toStdString(), HasSubstr(one.status)) << one.what;
    if (one.status == std::string("history") || one.status == std::string("damaged")) {
      EXPECT_EQ(newest(), bytes) << one.what;
    }
    if (visible(a_.saveChanges)) driver().press(a_.discardChanges);
    EXPECT_EQ(read(kRecordA), "<missing>") << one.what;
    EXPECT_EQ(fixture_.site.messages.take(), std::vector<std::string>{}) << one.what;
  }
}

TEST_F(RecoveryTest, WhatCannotBeReadNowIsOfferedByALaterStart) {
  edit(Pane::kA);
  fixture_.window.reset();
  const std::string bytes = read(kTempA), record = read(kRecordA);
  std::filesystem::resize_file(fixture_.site.root.resolve(kTempA), kLargestFile + 1);
  fixture_.open();
  EXPECT_THAT(fixture_.status().toStdString(), HasSubstr("cannot be read now"));
  EXPECT_EQ(read(kRecordA), record);
  fixture_.window.reset();
  fixture_.site.write(kTempA, bytes);
  startAgain([&](QDialog& dialog) { ok(dialog); });
  EXPECT_TRUE(visible(a_.saveChanges));
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
  EXPECT_EQ(read(macro_), read(kTempA));
  EXPECT_THAT(fixture_.status().toStdString(), HasSubstr("; the history could not"));
}

TEST(PanelRecoveryTest, ChangesOfAPanelsMacroFindTheirPanel) {
  TestSite tree;
  const std::string file = "flash/data/PANEL/macro/workplace1/macro007.mac";
  const std::string original = R"(<macro name="Two"><data><cmd fid="A.B"/><cmd fid="A.C"/></data></macro>)";
  tree.write(file, original);
  PanelOptions options;
  options.root = tree.root.path().string();
  options.controlPort = 0;
  options.ftpPort = 0;
  PanelSimulator panel(options, [](const std::string&) {});
  std::string reason;
  ASSERT_TRUE(panel.start(reason)) << reason;
  static auto* client = new PanelClient;
  WindowFixture fixture(*client, panel.ftpPort());
  const auto& ids = WindowFixture::ids(Pane::kA);
  const auto connectionIs = [&](const char* text) {
    return fixture.driver->control<QAbstractButton>(ids.connectButton).text() == QLatin1String(text);
  };
  const std::string address = panel.address() + ":" + std::to_string(panel.controlPort());
  // As a crash leaves them.
  fixture.window.reset();
  fixture.site.write(kTempA, R"(<macro name="Two"><data><cmd fid="A.C"/></data></macro>)");
  fixture.site.write(kRecordA,
                     "panel=" + address + "\nworkplace=1\nnumber=007\nname=Two\nsince=1\nedited=2\n");
  const auto takeUp = [&] {
    bool asked = false;
    WindowDriver::answerNext([&](QDialog& dialog) {
      asked = true;
      WindowDriver::click(dialog, QStringLiteral("OK"));
    });
    fixture.open();
    WindowDriver::waitFor([&] { return asked && QApplication::activeModalWidget() == nullptr; }, "the offer");
    EXPECT_EQ(fixture.driver->texts(ids.commands).size(), 1U);
  };
  // The panel is away: the changes wait, and the way to it stays open.
  PanelFaults faults;
  faults.control.neverAnswer = true;
  ASSERT_TRUE(panel.setFaults(faults));
  takeUp();
  WindowDriver::waitFor([&] { return connectionIs("connect"); }, "the end of the attempt");
  EXPECT_TRUE(fixture.driver->control<QWidget>(ids.saveChanges).isVisible());
  ASSERT_TRUE(panel.setFaults({}));
  for (int attempt = 0; attempt < 5 && !connectionIs("disconnect"); ++attempt) {
    fixture.driver->press(ids.connectButton);
    WindowDriver::waitFor([&] { return !connectionIs("connecting"); }, "an answer");
  }
  ASSERT_TRUE(connectionIs("disconnect"));
  fixture.driver->press(ids.saveChanges);
  EXPECT_THAT(fixture.status().toStdString(), HasSubstr("saved: 007 - Two"));
  EXPECT_THAT(tree.read(file), testing::Not(HasSubstr("A.B")));
  EXPECT_EQ(fixture.site.read(fixture.history.list().front().file), original);
  EXPECT_EQ(fixture.driver->texts(ids.applications).front(), "connected to " + address);
  WindowDriver::waitFor([&] { return !fixture.driver->texts(ids.workplaces).empty(); }, "the workplaces");
  fixture.window.reset();
  client->disconnect();
}

// Catches a save of recovered changes that overwrites what came to their place since, also without the steps.
TEST_F(RecoveryTest, WhatCameMeanwhileIsNotOverwrittenUnseen) {
  edit(Pane::kA);
  fixture_.window.reset();
  std::filesystem::remove(fixture_.site.root.resolve("recovery\\paneA.steps"));
  fixture_.site.write(macroFile(kFolder, 1), "<macro name=\"Else\"><data></data></macro>");
  startAgain(ok);
  fixture_.site.messages.chooseOther = true;
  driver().press(WindowFixture::ids(Pane::kA).saveChanges);
  EXPECT_THAT(fixture_.site.messages.take(), testing::ElementsAre(HasSubstr("changed by somebody else")));
  EXPECT_THAT(read(macroFile(kFolder, 1)), HasSubstr("Else"));
}

}  // namespace
}  // namespace tessaly
