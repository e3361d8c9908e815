// The window on a disk site, worked as a person works it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLabel>
#include <QMessageBox>
#include <QRadioButton>

#include "model/MacroFile.h"
#include "tests/app/WindowFixture.h"
#include "tests/support/LoadCommands.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

constexpr const char* kFolder = "c:\\programme\\rv48\\appli\\Evening News\\CP1\\macroWP1\\";
constexpr const char* kTempA = "c:\\programme\\RV48\\bin\\MacroFid\\tempA.mac";

std::string macroPath(int number) { return macroFile(kFolder, number); }

class WindowTest : public testing::Test {
 protected:
  WindowTest() : fixture_(offlineClient()) {}

  [[nodiscard]] std::size_t commandsIn(const std::string& path) {
    MacroCommands commands;
    EXPECT_TRUE(loadCommands(fixture_.site.access(), path, commands)) << path;
    return commands.size();
  }
  [[nodiscard]] std::string nameIn(const std::string& path) {
    std::string name;
    EXPECT_TRUE(readMacroName(fixture_.site.access(), path, name)) << path;
    return name;
  }
  [[nodiscard]] bool enabled(int id) { return driver().control<QWidget>(id).isEnabled(); }
  [[nodiscard]] bool visible(int id) { return driver().control<QWidget>(id).isVisible(); }
  [[nodiscard]] WindowDriver& driver() { return *fixture_.driver; }

  WindowFixture fixture_;
  const PaneDescriptor::ControlIds& a_ = WindowFixture::ids(Pane::kA);
  const PaneDescriptor::ControlIds& b_ = WindowFixture::ids(Pane::kB);
};

TEST_F(WindowTest, TheMainJobFromOpeningToDeleting) {
  driver().choose(a_.applications, "Evening News");
  driver().choose(a_.macros, "001");
  const std::string original = fixture_.site.read(macroPath(1));
  const std::size_t count = commandsIn(macroPath(1));
  EXPECT_EQ(driver().texts(a_.commands).size(), count);
  EXPECT_EQ(fixture_.site.read(kTempA), original);

  driver().clickRow(a_.commands, 1);
  driver().press(a_.deleteCommand);
  EXPECT_EQ(driver().list(a_.commands).selectedRow(), 1) << "the same line stays selected";
  EXPECT_EQ(fixture_.site.read(macroPath(1)), original) << "only the working copy changes before saving";
  EXPECT_EQ(commandsIn(kTempA), count - 1);
  driver().press(a_.saveChanges);
  EXPECT_EQ(commandsIn(macroPath(1)), count - 1);

  const std::string saved = fixture_.site.read(macroPath(1));
  driver().clickRow(a_.commands, 0);
  driver().press(a_.deleteCommand);
  driver().press(a_.discardChanges);
  EXPECT_EQ(driver().texts(a_.commands).size(), count - 1);
  EXPECT_EQ(fixture_.site.read(macroPath(1)), saved);

  driver().press(a_.createMacro, [](QDialog& dialog) {
    WindowDriver::type(dialog, "position", QStringLiteral("13"));
    EXPECT_EQ(dialog.findChild<QLineEdit*>(QStringLiteral("name"))->text(), QString())
        << "001 was but passed on the way";
    WindowDriver::type(dialog, "position", QStringLiteral("888"));
    WindowDriver::type(dialog, "name", QString::fromUtf8("Übergang"));
    WindowDriver::click(dialog, QStringLiteral("OK"));
  });
  EXPECT_EQ(nameIn(macroPath(888)), "Übergang");
  EXPECT_THAT(fixture_.site.read(macroPath(888)), testing::HasSubstr("\"\xDC"
                                                                     "bergang\""))
      << "a file that claims no encoding holds Windows-1252";
  EXPECT_THAT(driver().list(a_.macros).selected()->text, StartsWith("888 - "));
  EXPECT_THAT(driver().texts(a_.commands), ElementsAre("empty macro"));
  EXPECT_FALSE(enabled(a_.commands));

  driver().choose(b_.applications, "Football Live");
  driver().clickRow(b_.macros, 0);
  const std::string source = driver().list(b_.macros).selected()->text;
  driver().press(a_.copyMacro, [&](QDialog& dialog) {
    EXPECT_EQ(dialog.findChild<QLineEdit*>(QStringLiteral("position"))->text(), QStringLiteral("888"));
    EXPECT_EQ(dialog.findChild<QLabel*>(QStringLiteral("overwriteName"))->text(),
              QString::fromUtf8("\"Übergang\""));
    EXPECT_THAT(dialog.findChild<QLabel*>(QStringLiteral("overwritePlace"))->text().toStdString(),
                testing::AllOf(StartsWith("888 in Evening News, "), testing::EndsWith(": 0 commands")));
    WindowDriver::click(dialog, QStringLiteral("OK"));
  });
  EXPECT_EQ(nameIn(macroPath(888)), source.substr(6));

  driver().press(a_.renameMacro, [](QDialog& dialog) {
    WindowDriver::type(dialog, "newName", QStringLiteral("Kick-off"));
    WindowDriver::click(dialog, QStringLiteral("OK"));
  });
  EXPECT_EQ(nameIn(macroPath(888)), "Kick-off");
  EXPECT_EQ(nameIn(workingCopyPath(Pane::kA)), "Kick-off") << "a save must not bring the old name back";

  fixture_.site.messages.answer = false;
  driver().press(a_.deleteMacro);
  EXPECT_NE(fixture_.site.read(macroPath(888)), "<missing>") << "Cancel keeps the macro";
  fixture_.site.messages.answer = true;
  driver().press(a_.deleteMacro);
  EXPECT_THAT(fixture_.site.messages.take(),
              ElementsAre("Delete macro: 888 - Kick-off ?   ", "Delete macro: 888 - Kick-off ?   "));
  EXPECT_EQ(fixture_.site.read(macroPath(888)), "<missing>");
  EXPECT_THAT(driver().texts(a_.macros), testing::Not(testing::Contains(StartsWith("888"))));
}

TEST_F(WindowTest, EditStateKeepsThePaneOnItsMacro) {
  driver().choose(a_.applications, "Evening News");
  driver().choose(a_.macros, "001");
  driver().clickRow(a_.commands, 0);
  driver().press(a_.deleteCommand);
  for (const int id : {a_.harddisk, a_.panel, a_.applications, a_.controlPanels, a_.workplaces, a_.macros})
    EXPECT_FALSE(enabled(id)) << id;
  for (const int id : {a_.createMacro, a_.deleteMacro, a_.renameMacro, a_.copyMacro, a_.connectButton})
    EXPECT_FALSE(visible(id)) << id;
  EXPECT_TRUE(driver().control<QLineEdit>(a_.address).isReadOnly());
  EXPECT_TRUE(visible(a_.saveChanges) && visible(a_.discardChanges));
  EXPECT_TRUE(enabled(b_.applications)) << "the other pane goes on";

  // Closing asks; Cancel stays, Save writes.
  const std::string before = fixture_.site.read(macroPath(1));
  WindowDriver::answerNext([](QDialog& dialog) {
    EXPECT_THAT(qobject_cast<QMessageBox*>(&dialog)->text().toStdString(), HasSubstr("Macro Overview A"));
    WindowDriver::click(dialog, QStringLiteral("Cancel"));
  });
  EXPECT_FALSE(fixture_.window->close());
  EXPECT_EQ(fixture_.site.read(macroPath(1)), before);
  WindowDriver::answerNext([](QDialog& dialog) { WindowDriver::click(dialog, QStringLiteral("Save")); });
  fixture_.driver->close();
  EXPECT_EQ(fixture_.site.read(macroPath(1)), fixture_.site.read(kTempA));
}

TEST_F(WindowTest, LinesFollowTheOptions) {
  fixture_.site.write(macroPath(999), R"(<macro name="lines"><data>
    <cmd fid="QMF2.NCSCOMMAND" workplace="1"><param name="CMD" value=""/></cmd>
    <cmd fid="PANEL.No.Such.Function" workplace="2"><param name="a" value="1"/></cmd></data></macro>)");
  driver().choose(a_.applications, "Evening News");
  EXPECT_FALSE(enabled(a_.showRaw));
  driver().choose(a_.macros, "999");
  EXPECT_THAT(driver().texts(a_.commands),
              ElementsAre("QMF2Classic:  empty command line, use modify to create command...",
                          "??? No.Such.Function"));
  EXPECT_EQ(driver().control<QLabel>(a_.progress).text(), QStringLiteral("2 commands"));
  driver().press(a_.showDestination);
  EXPECT_THAT(driver().texts(a_.commands),
              ElementsAre("Mainframe2 - QMF2Classic:  empty command line, use modify to create command...",
                          "Panel/Workplace2 - ??? No.Such.Function"));
  EXPECT_TRUE(visible(a_.useTabs));
  driver().press(a_.showRaw);
  EXPECT_THAT(driver().texts(a_.commands),
              ElementsAre("QMF2 - QMF2NCSCOMMAND:  empty command line, use modify to create command...",
                          "PANEL - No - Such - Function Parameter: a: \"1\""));
  EXPECT_FALSE(visible(a_.useTabs)) << "the raw form has no separators";
}

TEST_F(WindowTest, OlderFamilyIsViewedAndCopiedOnly) {
  driver().choose(a_.applications, "Evening News");
  spoilKey(fixture_.site);
  driver().choose(a_.controlPanels, "CP7");
  EXPECT_THAT(driver().texts(a_.workplaces), ElementsAre("TarrowCP - no workplaces supported"));
  ASSERT_GT(driver().texts(a_.macros).size(), 1U);
  EXPECT_TRUE(visible(a_.notice));
  const auto& notice = driver().control<QLabel>(a_.notice);
  EXPECT_GE(notice.height(), notice.sizeHint().height()) << "a lower label shows its empty lines alone";
  driver().clickRow(a_.macros, 0);
  EXPECT_EQ(fixture_.status().toStdString(), "opened: " + driver().list(a_.macros).selected()->text);
  EXPECT_THAT(driver().texts(a_.commands).front(), StartsWith("Classic:  "));
  driver().press(a_.showRaw);
  EXPECT_THAT(driver().texts(a_.commands).front(), StartsWith("NCSCOMMAND:  "));
  driver().clickRow(a_.commands, 0);
  for (const int id : {a_.createMacro, a_.renameMacro, a_.deleteMacro, a_.copyMacro, a_.newCorvane,
                       a_.deleteCommand, a_.modifyCommand, a_.updateData})
    EXPECT_FALSE(enabled(id)) << id;

  // A key becomes a macro of the other pane.
  const std::size_t commands = driver().texts(a_.commands).size();
  const std::string name = driver().list(a_.macros).selected()->text.substr(5);
  driver().choose(b_.applications, "Evening News");
  driver().press(b_.copyMacro, [](QDialog& dialog) {
    WindowDriver::type(dialog, "position", QStringLiteral("777"));
    WindowDriver::click(dialog, QStringLiteral("OK"));
  });
  EXPECT_THAT(fixture_.status().toStdString(),
              testing::EndsWith(" to 777 (2 commands of the key cannot be read in a macro)"));
  EXPECT_EQ(commandsIn(macroPath(777)), commands);
  EXPECT_EQ(nameIn(macroPath(777)), name);
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
  EXPECT_THAT(
      fixture_.site.messages.take(),
      ElementsAre("Cannot parse Macro: " + path + "Bro[U+202E]ken[U+000A]\\CP1\\macroWP1\\macro004.mac"));
  driver().choose(a_.macros, "004");
  EXPECT_THAT(driver().texts(a_.commands), IsEmpty());
  driver().choose(a_.workplaces, "Workplace 2");
  EXPECT_THAT(driver().texts(a_.macros), ElementsAre("no macros found"));
  EXPECT_FALSE(enabled(a_.macros));

  auto& edit = driver().control<QLineEdit>(a_.address);
  edit.setFocus();
  edit.selectAll();
  QTest::keyClicks(&edit, QStringLiteral("/no/such/place"));
  QTest::keyClick(&edit, Qt::Key_Return);
  EXPECT_THAT(driver().texts(a_.applications), ElementsAre("no applications found"));
  EXPECT_FALSE(enabled(a_.applications));
}

TEST_F(WindowTest, AFailedOpenLeavesNothingThatCouldBeSavedOverTheChosenMacro) {
  driver().choose(a_.applications, "Evening News");
  driver().choose(a_.macros, "001");
  ASSERT_TRUE(std::filesystem::remove(fixture_.site.root.resolve(macroPath(2))));
  driver().choose(a_.macros, "002");
  EXPECT_EQ(driver().list(a_.macros).selectedRow(), -1)
      << "no macro stands chosen above the commands of another";
  EXPECT_FALSE(driver().texts(a_.commands).empty()) << "the working copy holds what it held";
  driver().clickRow(a_.commands, 0);
  for (const int button : {a_.deleteCommand, a_.modifyCommand, a_.newCorvane, a_.updateData})
    EXPECT_FALSE(driver().control<QPushButton>(button).isEnabled()) << button;
}

TEST_F(WindowTest, UnsavedWorkSurvivesEveryKey) {
  driver().choose(a_.applications, "Evening News");
  driver().choose(a_.macros, "001");
  driver().clickRow(a_.commands, 0);
  auto& commands = driver().list(a_.commands);
  commands.setFocus();
  QTest::keyClick(&commands, Qt::Key_Delete);
  const std::size_t left = driver().texts(a_.commands).size();
  EXPECT_EQ(left + 1, commandsIn(macroPath(1)));
  auto& path = driver().control<QLineEdit>(a_.address);
  path.setFocus();
  QTest::keyClick(&path, Qt::Key_Return);
  EXPECT_TRUE(visible(a_.saveChanges)) << "Enter in the path must not empty the lists under the edits";
  EXPECT_EQ(driver().texts(a_.commands).size(), left);

  // A save that fails keeps the window open; the keyboard stays in its pane.
  const std::filesystem::path file = fixture_.site.root.resolve(macroPath(1));
  std::filesystem::remove(file);
  std::filesystem::create_directory(file);
  WindowDriver::answerNext([](QDialog& dialog) { WindowDriver::click(dialog, QStringLiteral("Save")); });
  EXPECT_FALSE(fixture_.window->close());
  EXPECT_THAT(fixture_.status().toStdString(), HasSubstr("NOT saved"));
}

TEST_F(WindowTest, LeavingThePathAsItWasLeavesTheMacroOpen) {
  driver().choose(a_.applications, "Evening News");
  driver().choose(a_.macros, "001");
  auto& path = driver().control<QLineEdit>(a_.address);
  path.setFocus();
  driver().list(a_.commands).setFocus();
  EXPECT_EQ(driver().texts(a_.commands).size(), commandsIn(macroPath(1)));
  EXPECT_EQ(driver().list(a_.applications).selected()->text, "Evening News");
  path.setFocus();
  QTest::keyClick(&path, Qt::Key_Return);
  EXPECT_THAT(driver().texts(a_.commands), IsEmpty()) << "Enter reads the folder anew";
}

TEST_F(WindowTest, AHalfTypedPathIsNotActedOn) {
  const std::string other = "c:\\programme\\rv48\\appli2\\";
  fixture_.site.write(other + "Evening News\\CP1\\macroWP1\\macro001.mac",
                      "<macro name=\"keep\"><data/></macro>");
  driver().choose(a_.applications, "Evening News");
  driver().choose(a_.macros, "001");
  auto& path = driver().control<QLineEdit>(a_.address);
  path.setFocus();
  path.selectAll();
  QTest::keyClicks(&path, QString::fromStdString(other));
  QTest::keyClick(&path, Qt::Key_T, Qt::AltModifier);
  EXPECT_THAT(fixture_.site.messages.take(), IsEmpty())
      << "nothing may be deleted from the lists of the old path";
  EXPECT_EQ(nameIn(other + "Evening News\\CP1\\macroWP1\\macro001.mac"), "keep");
}

TEST_F(WindowTest, SettingsSurviveUnchanged) {
  const std::string before = fixture_.site.read(kSettingsFile);
  fixture_.driver->close();
  EXPECT_EQ(fixture_.site.read(kSettingsFile), before);
}

TEST_F(WindowTest, EveryControlHasItsNumberOnce) {
  std::map<int, int> seen;
  for (const auto* widget : fixture_.window->findChildren<QWidget*>())
    if (const QVariant id = widget->property("controlId"); id.isValid()) ++seen[id.toInt()];
  for (const int id :
       {2,    1047, 1048, 1049, 1050, 1051, 1052, 1053, 1054, 1055, 1056, 1057, 1058, 1059, 1060, 1061, 1062,
        1063, 1064, 1065, 1066, 1067, 1068, 1069, 1070, 1071, 1072, 1073, 1074, 1075, 1076, 1077, 1078, 1079,
        1080, 1081, 1082, 1083, 1084, 1085, 1086, 1087, 1088, 1089, 1090, 1091, 1092, 1093, 1094, 1095, 1096,
        1098, 1099, 1100, 1101, 1127, 1128, 1129, 1355, 1356, 1357, 1358, 1373, 1374, 1396, 1397})
    EXPECT_EQ(seen[id], 1) << id;
}

TEST(PositionCheckTest, TellsWhatANumberMeans) {
  MacroNameTable names(MacroNumber::kCount);
  names[7] = "Titles";
  struct Case {
    const char* typed;
    bool unchanged;
    int number;
    const char* existing;
    const char* label;
  };
  for (const Case& c :
       {Case{"", false, -1, "", "no postion selected..."}, Case{"7", false, 7, "Titles", "Titles"},
        Case{"007", false, 7, "Titles", "Titles"}, Case{"8", false, 8, "", "position is empty"},
        Case{"999", false, 999, "", "position is empty"}, Case{"1000", true, -1, "", ""},
        Case{"-1", true, -1, "", ""}}) {
    const PositionCheck check = checkPosition(c.typed, names);
    EXPECT_EQ(check.unchanged, c.unchanged) << c.typed;
    EXPECT_EQ(check.number, c.number) << c.typed;
    EXPECT_EQ(check.existing, c.existing) << c.typed;
    EXPECT_EQ(check.label, c.label) << c.typed;
  }
}

}  // namespace
}  // namespace tessaly
