// The classic editor from the window's buttons, in both panes.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QComboBox>

#include "classic/ClassicDescription.h"
#include "editors/ClassicEditorDialog.h"
#include "model/MacroFile.h"
#include "tests/app/WindowFixture.h"
#include "tests/support/LoadCommands.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* kFolder = "c:\\programme\\rv48\\appli\\Evening News\\CP1\\macroWP1\\";
constexpr const char* kList =
    "CD 0x00\nCO 0x20\n"
    "[0x01 0x07 \"Clip\"\npt_Word \"5\"\n: 0x00 0x00\n: 0xe8 0x03\n"
    "[0x02 0x03 \"Type\"\npt_ByteEnum \"Type\"\n: 0x00 \"Luma\"\n: 0x01 \"Chroma\"\n: 0x02 \"Linear\"\n"
    "[0x03 0x03 \"Gain\"\npt_AnalogBi \"Gain\"\n: 0x00 0x00 \"low\"\n: 0x80 0x00 \"mid\"\n: 0xff 0x00 "
    "\"high\"\n"
    "[0x04 0x01 \"Source\"\npt_Input \"Input\"\n"
    "[0x05 0x01 \"Start\"\npt_Timecode \"At\"\n"
    "[0x06 0x01 \"Load\"\npt_Clipname \"Clip\"\n"
    "[0x07 0x04 \"Cut\"\n";

class ClassicEditingTest : public testing::Test {
 protected:
  ClassicEditingTest() : fixture_(offlineClient()) {
    fixture_.site.write("c:\\Programme\\RV48\\bin\\MacroCdCo_Tarrow\\Cd-0x00\\Cd-0x00-Co-0x20.ini", kList);
    fixture_.site.write("c:\\Programme\\RV48\\bin\\MPoolList.txt", "Opener\r\n\r\nCloser\r\n");
    fixture_.site.write(macroFile(kFolder, 990), R"(<macro name="m"><data>
      <cmd fid="QMF1.NCSCOMMAND" workplace="1"><param name="CMD" value="e3 00 20 07 "/></cmd>
      <cmd fid="QMF2.NCSCOMMAND" workplace="1"><param name="CMD" value=""/></cmd></data></macro>)");
    driver().choose(a_.applications, "Evening News");
    driver().choose(a_.macros, "990");
  }
  [[nodiscard]] WindowDriver& driver() { return *fixture_.driver; }

  static void pick(QDialog& dialog, const char* list, const std::string& beginning) {
    auto* box = dialog.findChild<ListBox*>(QLatin1String(list));
    for (int row = 0; row < box->rows().rowCount(); ++row) {
      if (box->rows().row(row)->text.rfind(beginning, 0) != 0) continue;
      box->scrollTo(box->rows().index(row));
      QTest::mouseClick(box->viewport(), Qt::LeftButton, Qt::NoModifier,
                        box->visualRect(box->rows().index(row)).center());
      return;
    }
    throw std::runtime_error("no row " + beginning);
  }
  static void pickFunction(QDialog& dialog, const char* function, const char* action) {
    pick(dialog, "mainGroups", "PP");
    pick(dialog, "subgroups", "Key1");
    pick(dialog, "functions", function);
    if (action != nullptr) pick(dialog, "actions", action);
  }
  // The text forms of the working copy's commands.
  [[nodiscard]] std::vector<std::string> stored() {
    MacroCommands commands;
    EXPECT_TRUE(
        loadCommands(fixture_.site.access(), "c:\\programme\\RV48\\bin\\MacroFid\\tempA.mac", commands));
    std::vector<std::string> result;
    for (const MacroCommand& command : commands)
      result.push_back(command.fid + " " + command.parameters.front().value);
    return result;
  }

  WindowFixture fixture_;
  const PaneDescriptor::ControlIds& a_ = WindowFixture::ids(Pane::kA);
};

TEST_F(ClassicEditingTest, EveryKindOfParameterIsBuilt) {
  struct Case {
    const char* function;
    const char* action;
    std::function<void(QDialog&)> enter;  // in the entry dialog of the first parameter
    const char* bytes;
  };
  const auto number = [](const char* text) {
    return [text](QDialog& dialog) {
      auto* edit = dialog.findChild<QLineEdit*>();
      edit->selectAll();
      QTest::keyClicks(edit, QLatin1String(text));
      WindowDriver::click(dialog, QStringLiteral("OK"));
    };
  };
  const Case cases[] = {
      {"Clip", "set by value", number("300"), "25 00 20 01 2c 01 "},
      {"Clip", "increment", number("5"), "45 00 20 01 05 00 "},
      {"Type", "set by value", number("2"), "24 00 20 02 02 "},
      {"Type", "toggle up", {}, "44 00 20 02 01 "},
      {"Type", "toggle down", {}, "44 00 20 02 ff "},
      {"Gain", "set to minimum", {}, "25 00 20 03 00 00 "},
      {"Gain", "set to neutral", {}, "25 00 20 03 80 00 "},
      {"Gain", "set to maximum", {}, "25 00 20 03 ff 00 "},
      {"Gain", "set by value", number("-100"), "25 00 20 03 00 00 "},
      {"Source", "set by value",
       [](QDialog& dialog) {
         auto* list = dialog.findChild<QListView*>();
         QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                           list->visualRect(list->model()->index(4, 0)).center());
         WindowDriver::click(dialog, QStringLiteral("OK"));
       },
       "25 00 20 04 05 00 "},
      {"Start", "set by value",
       [](QDialog& dialog) {
         const auto fields = dialog.findChildren<QLineEdit*>();
         for (int i = 0; i < 4; ++i) {
           fields[i]->setFocus();
           fields[i]->selectAll();
           QTest::keyClicks(fields[i], QString::number(10 + i));
         }
         WindowDriver::click(dialog, QStringLiteral("OK"));
       },
       "27 00 20 05 13 12 11 10 "},
      {"Load", "set by value",
       [](QDialog& dialog) {
         auto* list = dialog.findChild<QListView*>();
         QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                           list->visualRect(list->model()->index(1, 0)).center());
         WindowDriver::click(dialog, QStringLiteral("OK"));
       },
       "2a 00 20 06 43 6c 6f 73 65 72 00 "},
      {"Cut", "trigger", {}, "e3 00 20 07 "},
  };
  std::vector<std::string> expected = stored();
  for (const Case& c : cases) {
    driver().press(a_.newClassic, [&c](QDialog& dialog) {
      EXPECT_EQ(dialog.windowTitle(),
                QStringLiteral("Create new command (Classic - Sidepanel/Tarrow panel style)"));
      pickFunction(dialog, c.function, c.action);
      if (c.enter) {
        WindowDriver::answerNext(c.enter);
        pick(dialog, "parameters", "");
      }
      dialog.findChild<QComboBox*>()->setCurrentIndex(2);
      WindowDriver::click(dialog, QStringLiteral("insert at end"));
      if (dialog.isVisible()) WindowDriver::click(dialog, QStringLiteral("cancel"));
    });
    expected.push_back(std::string("QMF3.NCSCOMMAND ") + c.bytes);
    EXPECT_EQ(stored(), expected) << c.function << " " << c.action;
  }
}

TEST_F(ClassicEditingTest, CommandsArePlacedAndModified) {
  driver().clickRow(a_.commands, 1);
  driver().press(a_.newClassic, [](QDialog& dialog) {
    pickFunction(dialog, "Type", "toggle up");
    WindowDriver::click(dialog, QStringLiteral("insert at selected command"));
  });
  driver().press(a_.newClassic, [](QDialog& dialog) {
    pickFunction(dialog, "Cut", "trigger");
    WindowDriver::click(dialog, QStringLiteral("insert at start"));
  });
  EXPECT_THAT(stored(), ElementsAre("QMF1.NCSCOMMAND e3 00 20 07 ", "QMF1.NCSCOMMAND e3 00 20 07 ",
                                    "QMF1.NCSCOMMAND 44 00 20 02 01 ", "QMF2.NCSCOMMAND "));
  // Another key, the rest kept; cancelling changes nothing.
  driver().clickRow(a_.commands, 2);
  driver().press(a_.modifyCommand, [](QDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(),
              QStringLiteral("Modify selected command (Classic - Sidepanel/Tarrow panel style)"));
    pick(dialog, "mainGroups", "Me1");
    WindowDriver::click(dialog, QStringLiteral("cancel"));
  });
  EXPECT_THAT(stored()[2], "QMF1.NCSCOMMAND 44 00 20 02 01 ");
  driver().press(a_.modifyCommand, [](QDialog& dialog) {
    pick(dialog, "mainGroups", "Me1");
    WindowDriver::click(dialog, QStringLiteral("Modify Command"));
  });
  EXPECT_THAT(stored()[2], "QMF1.NCSCOMMAND 44 01 20 02 01 ");
  EXPECT_EQ(stored().size(), 4U);
  // An empty line is filled in its place, on its own mainframe.
  driver().clickRow(a_.commands, 3);
  driver().press(a_.modifyCommand, [](QDialog& dialog) {
    pickFunction(dialog, "Cut", "trigger");
    WindowDriver::click(dialog, QStringLiteral("insert at selected command"));
  });
  EXPECT_EQ(stored().size(), 4U);
  EXPECT_EQ(stored()[3], "QMF2.NCSCOMMAND e3 00 20 07 ");
  // "insert at start" puts a changed copy in front and leaves the command that it was made of.
  driver().clickRow(a_.commands, 2);
  driver().press(a_.modifyCommand, [](QDialog& dialog) {
    pick(dialog, "mainGroups", "Me2");
    WindowDriver::click(dialog, QStringLiteral("insert at start"));
  });
  EXPECT_THAT(stored(), ElementsAre("QMF1.NCSCOMMAND 44 02 20 02 01 ", "QMF1.NCSCOMMAND e3 00 20 07 ",
                                    "QMF1.NCSCOMMAND e3 00 20 07 ", "QMF1.NCSCOMMAND 44 01 20 02 01 ",
                                    "QMF2.NCSCOMMAND e3 00 20 07 "));
}

TEST_F(ClassicEditingTest, ACommandThatWasNotChangedIsNotStoredAnew) {
  // Its text form could not be read back, or is another than the one that stands there.
  for (const std::string value : {"3f 00 04 00 20 02 01 ", "24 00 20 02 01 1", "E3 00 20 07 "}) {
    fixture_.site.write(macroFile(kFolder, 991),
                        "<macro name=\"m\"><data><cmd fid=\"QMF1.NCSCOMMAND\">"
                        "<param name=\"CMD\" value=\"" +
                            value + "\"/></cmd></data></macro>");
    driver().choose(a_.workplaces, "Workplace 1");
    driver().choose(a_.macros, "991");
    driver().clickRow(a_.commands, 0);
    driver().press(a_.modifyCommand,
                   [](QDialog& dialog) { WindowDriver::click(dialog, QStringLiteral("Modify Command")); });
    EXPECT_THAT(stored(), ElementsAre("QMF1.NCSCOMMAND " + value));
    driver().press(a_.modifyCommand,
                   [](QDialog& dialog) { WindowDriver::click(dialog, QStringLiteral("insert at start")); });
    EXPECT_EQ(fixture_.status().toStdString(),
              value[0] == '3' ? "one command inserted; it cannot be read back from the macro"
                              : "one command inserted");
    driver().press(a_.discardChanges);
  }
}

TEST_F(ClassicEditingTest, WhatTheListsDoNotKnowIsRefused) {
  fixture_.site.write(macroFile(kFolder, 991), R"(<macro name="m"><data>
    <cmd fid="QMF1.NCSCOMMAND"><param name="CMD" value="e3 00 20 77 "/></cmd>
    <cmd fid="QMF1.NCSCOMMAND"><param name="CMD" value="e3 f0 20 07 "/></cmd></data></macro>)");
  driver().choose(a_.workplaces, "Workplace 1");
  driver().choose(a_.macros, "991");
  driver().clickRow(a_.commands, 0);
  driver().press(a_.modifyCommand);
  driver().clickRow(a_.commands, 1);
  driver().press(a_.modifyCommand);
  EXPECT_THAT(
      fixture_.site.messages.take(),
      ElementsAre(
          "This command is not in the command decoding list.\nModification is not possible - sorry...",
          "This Menu Command is not valid"));
}

}  // namespace
}  // namespace tessaly
