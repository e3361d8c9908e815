// The window on a disk site.
#include <gmock/gmock.h>

#include <QCheckBox>
#include <QLabel>
#include <QMessageBox>

#include "tests/app/WindowFixture.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

TEST_F(WindowTest, TheMainJobFromOpeningToDeleting) {
  const auto nameIn = [this](const std::string& path) {
    std::string name;
    EXPECT_TRUE(readMacroName(fixture_.site.access(), path, name)) << path;
    return name;
  };
  open(a_);
  const std::string original = read(macroPath(1));
  const std::size_t count = commandsOf(macroPath(1)).size();
  EXPECT_EQ(driver().texts(a_.commands).size(), count);
  EXPECT_EQ(held(Pane::kA), original);

  driver().clickRow(a_.commands, 1);
  driver().press(a_.deleteCommand);
  EXPECT_EQ(driver().list(a_.commands).selectedRow(), 1) << "the same line stays selected";
  EXPECT_EQ(read(macroPath(1)), original) << "only the working copy changes before saving";
  driver().press(a_.saveChanges);
  EXPECT_EQ(commandsOf(macroPath(1)).size(), count - 1);

  driver().press(a_.createMacro, [](QDialog& dialog) {
    WindowDriver::type(dialog, "position", "13");
    EXPECT_EQ(dialog.findChild<QLineEdit*>("name")->text(), "") << "001 was but passed on the way";
    WindowDriver::filledIn({{"position", "888"}, {"name", "Übergang"}})(dialog);
  });
  EXPECT_THAT(read(macroPath(888)), HasSubstr("\"\xDC"
                                              "bergang\""))
      << "a file that claims no encoding holds Windows-1252";
  EXPECT_THAT(selected(a_.macros), StartsWith("888 - "));
  EXPECT_THAT(driver().texts(a_.commands), ElementsAre("empty macro"));
  EXPECT_FALSE(enabled(a_.commands));

  driver().choose(b_.applications, "Football Live");
  driver().clickRow(b_.macros, 0);
  driver().press(a_.copyMacro, [](QDialog& dialog) {
    const auto text = [&dialog](const char* label) { return dialog.findChild<QLabel*>(label)->text(); };
    EXPECT_EQ(dialog.findChild<QLineEdit*>("position")->text(), "888");
    EXPECT_EQ(text("overwriteName"), "\"Übergang\"");
    EXPECT_THAT(text("overwritePlace").toStdString(),
                testing::AllOf(StartsWith("888 in Evening News, "), testing::EndsWith(": 0 commands")));
    WindowDriver::type(dialog, "position", "0");
    EXPECT_TRUE(dialog.findChild<QWidget*>("ok")->isEnabled());
    WindowDriver::filledIn({{"position", "888"}})(dialog);
  });
  EXPECT_EQ(nameIn(macroPath(888)), selected(b_.macros).substr(6));
  rename(a_.renameMacro, "Kick-off");
  EXPECT_EQ(nameIn(macroPath(888)), "Kick-off");
  EXPECT_EQ(nameIn(workingCopyPath(Pane::kA)), "Kick-off") << "a save must not bring the old name back";

  for (const bool agreed : {false, true}) {
    fixture_.site.messages.answer = agreed;
    driver().press(a_.deleteMacro);
    EXPECT_THAT(asked(), ElementsAre("Delete macro: 888 - Kick-off ?   "));
    EXPECT_EQ(read(macroPath(888)) == "<missing>", agreed);
  }
  EXPECT_THAT(driver().texts(a_.macros), testing::Not(testing::Contains(StartsWith("888"))));
}

TEST_F(WindowTest, EditStateKeepsThePaneOnItsMacro) {
  open(a_);
  removeFirst(a_);
  for (const int id : {a_.harddisk, a_.panel, a_.applications, a_.controlPanels, a_.workplaces, a_.macros})
    EXPECT_FALSE(enabled(id)) << id;
  for (const int id : {a_.createMacro, a_.deleteMacro, a_.renameMacro, a_.copyMacro, a_.connectButton})
    EXPECT_FALSE(visible(id)) << id;
  EXPECT_TRUE(driver().control<QLineEdit>(a_.address).isReadOnly());
  EXPECT_TRUE(visible(a_.saveChanges) && visible(a_.discardChanges));
  EXPECT_TRUE(enabled(b_.applications)) << "the other pane goes on";

  // Changes that are given up for what is no macro are not taken for what the file holds.
  const std::string before = read(macroPath(1));
  fixture_.site.write(macroPath(1), "<macro");
  driver().press(a_.discardChanges);
  EXPECT_THAT(told(), testing::AllOf(StartsWith("NOT opened: 001"), HasSubstr("the history keeps them")));
  fixture_.site.write(macroPath(1), before);
  open(a_);
  removeFirst(a_);

  // Closing asks; Cancel stays, Save writes.
  WindowDriver::answerNext([](QDialog& dialog) {
    EXPECT_THAT(qobject_cast<QMessageBox*>(&dialog)->text().toStdString(), HasSubstr("Macro Overview A"));
    WindowDriver::click(dialog, "Cancel");
  });
  EXPECT_FALSE(fixture_.window->close());
  EXPECT_EQ(read(macroPath(1)), before);
  WindowDriver::answerNext([](QDialog& dialog) { WindowDriver::click(dialog, "Save"); });
  fixture_.driver->close();
  EXPECT_EQ(read(macroPath(1)), held(Pane::kA));
}

TEST_F(WindowTest, LinesFollowTheOptions) {
  fixture_.site.write(macroPath(999), R"(<macro name="lines"><data>
    <cmd fid="PANEL.No.Such.Function" workplace="2"><param name="a" value="1"/></cmd></data></macro>)");
  driver().choose(a_.applications, "Evening News");
  EXPECT_FALSE(enabled(a_.showRaw));
  driver().choose(a_.macros, "999");
  EXPECT_EQ(driver().control<QLabel>(a_.progress).text(), QStringLiteral("1 command"));
  std::vector<std::string> lines = driver().texts(a_.commands);
  for (const int option : {a_.showDestination, a_.showRaw}) {
    driver().control<QCheckBox>(option).toggle();
    EXPECT_EQ(visible(a_.useTabs), option != a_.showRaw) << "the raw form has no separators";
    lines.push_back(driver().texts(a_.commands).front());
  }
  EXPECT_THAT(lines, ElementsAre("??? No.Such.Function", "Panel/Workplace2 - ??? No.Such.Function",
                                 "PANEL - No - Such - Function Parameter: a: \"1\""));
}

TEST_F(WindowTest, OlderFamilyIsViewedAndCopiedOnly) {
  driver().choose(a_.applications, "Evening News");
  spoilKey(fixture_.site);
  driver().choose(a_.controlPanels, "CP7");
  EXPECT_THAT(driver().texts(a_.workplaces), ElementsAre("TarrowCP - no workplaces supported"));
  const auto& notice = driver().control<QLabel>(a_.notice);
  EXPECT_TRUE(notice.isVisible());
  EXPECT_GE(notice.height(), notice.sizeHint().height()) << "a lower label shows its empty lines alone";
  driver().clickRow(a_.macros, 0);
  EXPECT_EQ(told(), "opened: " + selected(a_.macros));
  EXPECT_THAT(driver().texts(a_.commands).front(), StartsWith("Classic:  "));
  driver().clickRow(a_.commands, 0);
  for (const int id : {a_.createMacro, a_.renameMacro, a_.deleteMacro, a_.copyMacro, a_.newCorvane,
                       a_.deleteCommand, a_.modifyCommand, a_.updateData})
    EXPECT_FALSE(enabled(id)) << id;

  // A key becomes a macro of the other pane.
  driver().choose(b_.applications, "Evening News");
  copyTo(b_.copyMacro, 777);
  EXPECT_THAT(told(), testing::EndsWith(" to 777 (2 commands of the key cannot be read in a macro)"));
  EXPECT_EQ(commandsOf(macroPath(777)).size(), driver().texts(a_.commands).size());
  EXPECT_EQ(selected(b_.macros).substr(6), selected(a_.macros).substr(5));
}

TEST_F(WindowTest, WhatIsNotThereIsSaidInTheLists) {
  const std::string path = "c:\\programme\\rv48\\appli\\";
  fixture_.site.write(path + "Bare\\devices.ini", "no panels here");
  const std::string broken = path + "Bro\xE2\x80\xAEken\n";
  fixture_.site.write(broken + "\\devices.ini", "CP1 \"Desk\"");
  fixture_.site.write(broken + "\\CP1\\assign\\contents.cnt", "");
  fixture_.site.write(broken + "\\CP1\\macroWP1\\macro004.mac", "<macro name=");
  fixture_.open();
  driver().choose(a_.applications, "Bare");
  EXPECT_THAT(driver().texts(a_.controlPanels), ElementsAre("no control panel data included"));
  EXPECT_FALSE(enabled(a_.controlPanels));
  driver().choose(a_.applications, "Bro");
  EXPECT_THAT(driver().texts(a_.macros), ElementsAre("004 - ???"));
  EXPECT_THAT(asked(), ElementsAre("Cannot parse Macro: " + path +
                                   "Bro[U+202E]ken[U+000A]\\CP1\\macroWP1\\macro004.mac"));
  driver().choose(a_.macros, "004");
  EXPECT_THAT(driver().texts(a_.commands), IsEmpty());
  driver().choose(a_.workplaces, "Workplace 2");
  EXPECT_THAT(driver().texts(a_.macros), ElementsAre("no macros found"));
  EXPECT_FALSE(enabled(a_.macros));

  auto& edit = driver().control<QLineEdit>(a_.address);
  edit.setFocus();
  edit.selectAll();
  QTest::keyClicks(&edit, "/no/such/place");
  QTest::keyClick(&edit, Qt::Key_Return);
  EXPECT_THAT(driver().texts(a_.applications), ElementsAre("no applications found"));
  EXPECT_FALSE(enabled(a_.applications));
}

TEST_F(WindowTest, UnsavedWorkSurvivesEveryKey) {
  open(a_);
  removeFirst(a_);
  const auto left = driver().texts(a_.commands);
  auto& path = driver().control<QLineEdit>(a_.address);
  path.setFocus();
  QTest::keyClick(&path, Qt::Key_Return);
  fixture_.site.write(macroPath(1), "no macro");
  fixture_.site.messages.answering = [](const std::string& text) {
    return text.find("cannot be opened again") == std::string::npos;
  };
  driver().press(a_.discardChanges);
  EXPECT_TRUE(edited(Pane::kA)) << "neither Enter in the path nor a discard to nothing takes the edits";
  EXPECT_EQ(driver().texts(a_.commands), left);

  // A save that fails keeps the window open; the keyboard stays in its pane.
  const std::filesystem::path file = fixture_.site.root.resolve(macroPath(1));
  std::filesystem::remove(file);
  std::filesystem::create_directory(file);
  WindowDriver::answerNext([](QDialog& dialog) { WindowDriver::click(dialog, "Save"); });
  EXPECT_FALSE(fixture_.window->close());
  EXPECT_THAT(told(), HasSubstr("NOT saved"));
  driver().press(a_.panel);
  EXPECT_THAT(driver().texts(a_.macros), Not(testing::Contains("001 - Opening titles")))
      << "what is there is of the disk";
}

TEST_F(WindowTest, LeavingThePathAsItWasLeavesTheMacroOpen) {
  open(a_);
  auto& path = driver().control<QLineEdit>(a_.address);
  path.setFocus();
  driver().list(a_.commands).setFocus();
  EXPECT_EQ(driver().texts(a_.commands).size(), commandsOf(macroPath(1)).size());
  EXPECT_EQ(selected(a_.applications), "Evening News");
  path.setFocus();
  QTest::keyClick(&path, Qt::Key_Return);
  EXPECT_THAT(driver().texts(a_.commands), IsEmpty()) << "Enter reads the folder anew";
}

TEST_F(WindowTest, AHalfTypedPathIsNotActedOn) {
  const std::string other = "c:\\programme\\rv48\\appli2\\";
  const std::string macro = other + "Evening News\\CP1\\macroWP1\\macro001.mac";
  fixture_.site.write(macro, "keep");
  open(a_);
  auto& path = driver().control<QLineEdit>(a_.address);
  path.setFocus();
  path.selectAll();
  QTest::keyClicks(&path, QString::fromStdString(other));
  QTest::keyClick(&path, Qt::Key_T, Qt::AltModifier);
  EXPECT_THAT(asked(), IsEmpty()) << "nothing may be deleted from the lists of the old path";
  EXPECT_EQ(read(macro), "keep");
}

TEST_F(WindowTest, SettingsSurviveUnchangedAndFollowBothPanes) {
  const std::string before = read(kSettingsFile);
  fixture_.driver->close();
  EXPECT_EQ(read(kSettingsFile), before);
  fixture_.open();
  const auto type = [this](int address, const char* text) {
    auto& edit = driver().control<QLineEdit>(address);
    edit.setFocus();
    edit.selectAll();
    QTest::keyClicks(&edit, QLatin1String(text));
    driver().list(a_.applications).setFocus();
  };
  type(a_.address, "/srv/a"), type(b_.address, "/srv/b");
  driver().press(a_.panel), driver().press(b_.panel);
  type(a_.address, "10.0.0.1"), type(b_.address, "10.0.0.2");
  fixture_.driver->close();
  Settings now;
  EXPECT_TRUE(readSettings(fixture_.site.root, now));
  EXPECT_EQ(now.pathA + ' ' + now.pathB + ' ' + now.addressA + ' ' + now.addressB,
            "/srv/a /srv/b 10.0.0.1 10.0.0.2");
}

TEST_F(WindowTest, EveryControlHasItsNumberOnce) {
  std::map<int, int> seen;
  for (const auto* widget : fixture_.window->findChildren<QWidget*>())
    if (const QVariant id = widget->property("controlId"); id.isValid()) ++seen[id.toInt()];
  const std::pair<int, int> ranges[] = {{2, 2},       {1047, 1096}, {1098, 1101}, {1127, 1129},
                                        {1355, 1358}, {1373, 1374}, {1396, 1397}};
  for (const auto& [first, last] : ranges)
    for (int id = first; id <= last; ++id) EXPECT_EQ(seen[id], 1) << id;
}

// Catches a demonstration that takes the lists from under what is unsaved.
struct DemoTest : WindowTest {
  DemoTest() : WindowTest(offlineClient(), kFtpPort, true) {}
};
TEST_F(DemoTest, LeavesAPaneWithUnsavedChangesAlone) {
  open(a_);
  removeFirst(a_);
  const auto macros = driver().texts(a_.macros);
  driver().press(b_.panel), driver().press(b_.connectButton);
  EXPECT_EQ(driver().texts(b_.workplaces).size(), 2U);
  EXPECT_EQ(driver().texts(a_.macros), macros);
}

TEST(PositionCheckTest, TellsWhatANumberMeans) {
  MacroNameTable names(MacroNumber::kCount);
  names[7] = "Titles";
  const struct {
    const char* typed;
    bool unchanged;
    int number;
    const char *existing, *label;
  } cases[] = {{"", false, -1, "", "no postion selected..."},
               {"7", false, 7, "Titles", "Titles"},
               {"007", false, 7, "Titles", "Titles"},
               {"8", false, 8, "", "position is empty"},
               {"999", false, 999, "", "position is empty"},
               {"1000", true, -1, "", ""},
               {"-1", true, -1, "", ""}};
  for (const auto& c : cases) {
    const PositionCheck check = checkPosition(c.typed, names);
    EXPECT_EQ(std::tie(check.unchanged, check.number), std::tie(c.unchanged, c.number)) << c.typed;
    EXPECT_EQ(check.existing + '|' + check.label, std::string(c.existing) + '|' + c.label) << c.typed;
  }
}

}  // namespace
}  // namespace tessaly
