// The classic editor from the window's buttons.
#include <gmock/gmock.h>

#include <QComboBox>

#include "editors/ClassicEditorDialog.h"
#include "tests/app/WindowFixture.h"
#include "tests/editors/DialogDriver.h"

namespace tessaly {
namespace {

using testing::ElementsAre;

constexpr const char* kList =
    "CD 0x00\nCO 0x20\n"
    "[0x01 0x07 \"Clip\"\npt_Word \"5\"\n: 0x00 0x00\n: 0xe8 0x03\n"
    "[0x02 0x03 \"Type\"\npt_ByteEnum \"Type\"\n: 0x00 \"Luma\"\n: 0x01 \"Chroma\"\n: 0x02 \"Linear\"\n"
    "[0x05 0x01 \"Start\"\npt_Timecode \"At\"\n"
    "[0x06 0x01 \"Load\"\npt_Clipname \"Clip\"\n"
    "[0x07 0x04 \"Cut\"\n";

class ClassicEditingTest : public WindowTest {
 protected:
  ClassicEditingTest() {
    fixture_.site.write("c:\\Programme\\RV48\\bin\\MacroCdCo_Tarrow\\Cd-0x00\\Cd-0x00-Co-0x20.ini", kList);
    fixture_.site.write("c:\\Programme\\RV48\\bin\\MPoolList.txt", "Opener\r\n\r\nCloser\r\n");
    fixture_.site.write(macroPath(990), R"(<macro name="m"><data>
      <cmd fid="QMF1.NCSCOMMAND" workplace="1"><param name="CMD" value="e3 00 20 07 "/></cmd>
      <cmd fid="QMF2.NCSCOMMAND" workplace="1"><param name="CMD" value=""/></cmd></data></macro>)");
    open(a_, "990");
  }

  static void choose(QDialog& dialog, const char* function, const char* action) {
    const DialogDriver user(dialog);
    const std::pair<const char*, const char*> rows[] = {
        {"mainGroups", "PP"}, {"subgroups", "Key1"}, {"functions", function}, {"actions", action}};
    for (const auto& [list, row] : rows) user.choose(list, row);
  }
  static void chooseGroup(QDialog& dialog, const char* group) {
    DialogDriver(dialog).choose("mainGroups", group);
  }
  // Selects the one command of a macro.
  void openCommand(const std::string& value) {
    fixture_.site.write(macroPath(991),
                        "<macro name=\"m\"><data><cmd fid=\"QMF1.NCSCOMMAND\"><param "
                        "name=\"CMD\" value=\"" +
                            value + "\"/></cmd></data></macro>");
    driver().choose(a_.workplaces, "Workplace 1");
    driver().choose(a_.macros, "991");
    driver().clickRow(a_.commands, 0);
  }
  // The text forms of the working copy's commands.
  [[nodiscard]] std::vector<std::string> stored() {
    std::vector<std::string> result;
    for (const MacroCommand& command : commandsOf(workingCopyPath(Pane::kA)))
      result.push_back(command.fid + " " + command.parameters.front().value);
    return result;
  }
};

TEST_F(ClassicEditingTest, WhatIsEnteredIsBuilt) {
  const struct {
    const char* function;
    std::function<void(const DialogDriver&)> enter;
    const char* bytes;
  } cases[] = {{"Clip", [](const DialogDriver& user) { user.type("value", "300"); }, "25 00 20 01 2c 01 "},
               {"Type", [](const DialogDriver& user) { user.type("value", "2"); }, "24 00 20 02 02 "},
               {"Start",
                [](const DialogDriver& user) {
                  for (const auto& [field, text] :
                       {std::pair("hours", "10"), {"minutes", "11"}, {"seconds", "12"}, {"frames", "13"}})
                    user.type(field, text);
                },
                "27 00 20 05 13 12 11 10 "},
               {"Load", [](const DialogDriver& user) { user.choose("list", "Closer"); },
                "2a 00 20 06 43 6c 6f 73 65 72 00 "}};
  std::vector<std::string> expected = stored();
  for (const auto& c : cases) {
    driver().press(a_.newClassic, [&c](QDialog& dialog) {
      choose(dialog, c.function, "set by value");
      const DialogDriver user(dialog);
      DialogDriver::answerNext([&c](QDialog& /*dialog*/, const DialogDriver& entry) {
        c.enter(entry);
        entry.click("ok");
      });
      user.choose("parameters", "");
      dialog.findChild<QComboBox*>()->setCurrentIndex(2);
      WindowDriver::click(dialog, "insert at end");
    });
    expected.push_back(std::string("QMF3.NCSCOMMAND ") + c.bytes);
    EXPECT_EQ(stored(), expected) << c.function;
  }
}

// Catches a wrong place, a command that is put in instead of its change, and a cancelled change.
TEST_F(ClassicEditingTest, CommandsArePlacedAndModified) {
  const std::string cut = "QMF1.NCSCOMMAND e3 00 20 07 ", toggled = "QMF1.NCSCOMMAND 44 00 20 02 01 ";
  const std::string stepped = "QMF1.NCSCOMMAND 44 01 20 02 01 ", empty = "QMF2.NCSCOMMAND ";
  using Choice = std::function<void(QDialog&)>;
  const Choice trigger = [](QDialog& dialog) { choose(dialog, "Cut", "trigger"); };
  const Choice up = [](QDialog& dialog) { choose(dialog, "Type", "toggle up"); };
  const Choice me1 = [](QDialog& dialog) { chooseGroup(dialog, "Me1"); };
  const Choice me2 = [](QDialog& dialog) { chooseGroup(dialog, "Me2"); };
  const struct {
    int row;  // selected before; -1 for a new command
    Choice choose;
    const char* button;
    std::vector<std::string> stored;
  } steps[] = {{-1, up, "insert at selected command", {cut, toggled, empty}},
               {-1, trigger, "insert at start", {cut, cut, toggled, empty}},
               {2, me1, "cancel", {cut, cut, toggled, empty}},
               {2, me1, "Modify Command", {cut, cut, stepped, empty}},
               // An empty line is filled in its place, on its own mainframe.
               {3, trigger, "insert at selected command", {cut, cut, stepped, empty + "e3 00 20 07 "}},
               // A changed copy in front leaves the command that it was made of.
               {2,
                me2,
                "insert at start",
                {"QMF1.NCSCOMMAND 44 02 20 02 01 ", cut, cut, stepped, empty + "e3 00 20 07 "}}};
  driver().clickRow(a_.commands, 1);
  for (const auto& step : steps) {
    if (step.row >= 0) driver().clickRow(a_.commands, step.row);
    driver().press(step.row < 0 ? a_.newClassic : a_.modifyCommand, [&step](QDialog& dialog) {
      const bool filled = step.row < 0 || step.row == 3;
      EXPECT_EQ(dialog.windowTitle(), QLatin1String(filled ? "Create new" : "Modify selected") +
                                          " command (Classic - Sidepanel/Tarrow panel style)");
      step.choose(dialog);
      WindowDriver::click(dialog, step.button);
    });
    EXPECT_EQ(stored(), step.stored) << &step - steps;
  }
}

TEST_F(ClassicEditingTest, ACommandThatWasNotChangedIsNotStoredAnew) {
  // Its text form could not be read back, or is another than the one that stands there.
  for (const std::string value : {"3f 00 04 00 20 02 01 ", "24 00 20 02 01 1", "E3 00 20 07 "}) {
    openCommand(value);
    driver().press(a_.modifyCommand, [](QDialog& dialog) { WindowDriver::click(dialog, "Modify Command"); });
    EXPECT_THAT(stored(), ElementsAre("QMF1.NCSCOMMAND " + value));
    driver().press(a_.modifyCommand, [](QDialog& dialog) { WindowDriver::click(dialog, "insert at start"); });
    EXPECT_EQ(told(), value[0] == '3' ? "one command inserted; it cannot be read back from the macro"
                                      : "one command inserted");
    driver().press(a_.discardChanges);
  }
}

TEST_F(ClassicEditingTest, WhatTheListsDoNotKnowIsRefused) {
  for (const char* value : {"e3 00 20 77 ", "e3 f0 20 07 "}) {
    openCommand(value);
    driver().press(a_.modifyCommand);
  }
  EXPECT_THAT(asked(), ElementsAre("This command is not in the command decoding list.\nModification is not "
                                   "possible - sorry...",
                                   "This Menu Command is not valid"));
}

}  // namespace
}  // namespace tessaly
