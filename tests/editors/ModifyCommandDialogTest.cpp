#include <gmock/gmock.h>

#include <QComboBox>

#include "editors/ModifyCommandDialog.h"
#include "tests/editors/EditorFixture.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

MacroCommand command(const char* fid, std::vector<MacroParameter> parameters = {},
                     const char* workplace = "1") {
  MacroCommand result;
  result.fid = fid;
  result.workplace = workplace;
  result.parameters = std::move(parameters);
  return result;
}

struct ModifyCommand : EditorFixture {
  explicit ModifyCommand(const MacroCommand& given, const FunctionDictionary& functions = smallDictionary())
      : EditorFixture(functions), dialog(context, given, nullptr, beeps.sound()), user(dialog) {}

  [[nodiscard]] std::vector<std::string> values() const {
    std::vector<std::string> result;
    for (const auto& parameter : dialog.draft().parameters)
      result.push_back(parameter.name + '=' + parameter.value);
    return result;
  }
  [[nodiscard]] std::string destination() const {
    return user.control<QComboBox>("destination").currentText().toStdString();
  }

  ModifyCommandDialog dialog;
  DialogDriver user;
};

TEST(ModifyCommandDialogTest, FunctionDestinationAndValueChange) {
  ModifyCommand modify(command("QMF3.ME1.KEY10.CLIP.SET", {{"LEVEL", "51.000000"}, {"STRAY", "1"}}, "7"));
  const DialogDriver& user = modify.user;
  EXPECT_EQ(user.label("destinationLabel") + ' ' + modify.destination(), "Command Destination Mainframe-3");
  EXPECT_EQ(user.label("functionText"), "ME 1 Key 10 Clip Set");
  EXPECT_EQ(user.field("value"), "20.0");
  EXPECT_THAT(user.rows("segment1"), ElementsAre("PP", "ME 1", "ME h"));
  EXPECT_EQ(user.selectedRow("segment2"), 9);
  EXPECT_THAT(user.rows("segment3"), ElementsAre("CLIP"));
  EXPECT_THAT(user.rows("segment5"), IsEmpty());
  EXPECT_FALSE(user.visible("fromScratch"));
  EXPECT_EQ(user.focus(), "value");
  EXPECT_EQ(user.control<QLineEdit>("value").selectedText(), "20.0");
  user.toggle("showRaw");
  EXPECT_THAT(user.rows("parameters"), ElementsAre("LEVEL\t51.000000"));
  user.click("showRaw");

  user.choose("segment1", "PP");
  user.control<QListView>("segment2").setFocus();
  user.key(Qt::Key_Down);
  EXPECT_EQ(user.label("functionText"), "PP Key 11 Clip Set");
  EXPECT_EQ(user.field("value"), "20.0");
  user.control<QComboBox>("destination").setFocus();
  user.key(Qt::Key_Up);
  user.type("value", "40");
  user.key(Qt::Key_Return);
  EXPECT_EQ(modify.dialog.result(), QDialog::Accepted);
  EXPECT_EQ(modify.dialog.draft().fid, "QMF2.ME0.KEY11.CLIP.SET");
  EXPECT_THAT(modify.values(), ElementsAre("LEVEL=102.000000"));
  EXPECT_EQ(modify.dialog.workplace(), 7);
}

TEST(ModifyCommandDialogTest, ANameThatNoFunctionHasChangesNothing) {
  ModifyCommand modify(command("QMF1.ME1.KEY5.CLIP.SET", {{"LEVEL", "51"}}));
  const DialogDriver& user = modify.user;
  user.choose("segment1", "ME h");  // which has no key 5
  EXPECT_EQ(user.label("functionText"), "FID not found!!!");
  EXPECT_FALSE(user.enabled("modify"));
  EXPECT_EQ(user.field("value"), "20.0");
  user.choose("segment2", "KEY4");
  EXPECT_EQ(user.label("functionText"), "ME h Key 4 Clip Set");
  EXPECT_TRUE(user.enabled("modify"));
  user.type("value", "30");
  user.click("fromScratch");
  EXPECT_EQ(user.field("value"), "20.0");
  EXPECT_EQ(user.label("functionText"), "ME 1 Key 5 Clip Set");
  EXPECT_EQ(user.selectedRow("segment1"), 1);
  EXPECT_FALSE(user.visible("fromScratch"));
  // Increment functions carry their level in fixed point, so a level of the other form is not taken over.
  user.choose("segment4", "Increment");
  EXPECT_EQ(user.field("value"), "");
  EXPECT_FALSE(user.enabled("modify"));
  user.type("value", "0.5");
  user.choose("segment4", "Set");
  EXPECT_EQ(user.field("value"), "20.0");
  user.choose("segment4", "Increment");
  EXPECT_EQ(user.field("value"), "0.5000");
}

TEST(ModifyCommandDialogTest, WhatIsNotTypedIntoStays) {
  ModifyCommand modify(command("QMF1.ME1.RATE", {{"RATE", "abc"}, {"EASE", "128"}}));
  modify.user.choose("parameters", "Ease");
  modify.user.type("value", "5");
  modify.user.key(Qt::Key_Return);
  EXPECT_THAT(modify.values(), ElementsAre("RATE=abc", "EASE=13"));
}

// A segment that a click had emptied was written as the command had it at first.
TEST(ModifyCommandDialogTest, NoClickEmptiesASegment) {
  ModifyCommand modify(command("QMF1.ME1.KEY4.CLIP.SET", {{"LEVEL", "51.1"}}));
  auto& list = modify.user.control<QListView>("segment1");
  modify.user.choose("segment1", "ME h");
  const QPoint row = list.visualRect(list.currentIndex()).center();
  QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::ControlModifier, row);
  QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, {5, list.viewport()->height() - 2});
  EXPECT_EQ(modify.user.label("functionText"), "ME h Key 4 Clip Set");
  modify.refusal = "The macro is gone";
  modify.user.click("modify");
  EXPECT_THAT(modify.site.messages.take(), ElementsAre(modify.refusal));
  EXPECT_TRUE(modify.dialog.isVisible());
  modify.refusal.clear();
  modify.user.type("value", "40");
  modify.user.key(Qt::Key_Z, Qt::ControlModifier);
  modify.user.click("modify");
  EXPECT_EQ(modify.dialog.draft().fid, "QMF1.ME4.KEY4.CLIP.SET");
  EXPECT_THAT(modify.values(), ElementsAre("LEVEL=51.1")) << "undone to the value, not to its shown digits";
}

TEST(ModifyCommandDialogTest, ValuesThatAreMissingMustBeFilled) {
  ModifyCommand modify(command("QMF1.ME1.KEY2.TYPE.SET", {{"TYPE", "odd"}}));
  EXPECT_THAT(modify.user.rows("parameters"), ElementsAre("Type\todd", "Source\t"));
  EXPECT_FALSE(modify.user.enabled("modify"));
  modify.user.key(Qt::Key_Return);
  modify.user.choose("choices", "Camera 1");
  modify.user.key(Qt::Key_Enter);
  EXPECT_THAT(modify.values(), ElementsAre("TYPE=odd", "SOURCE=1"));
}

TEST(ModifyCommandDialogTest, PanelCommandsChooseAWorkplace) {
  for (const auto& [workplace, shown, kept] :
       {std::tuple{"4", "Workplace-4", 4}, {"5", "", 5}, {"", "", 0}}) {
    ModifyCommand modify(command("PANEL.MACRO.RUN", {{"REG", "12"}}, workplace));
    EXPECT_EQ(modify.user.label("destinationLabel"), "Panel");
    EXPECT_EQ(modify.destination(), shown);
    EXPECT_EQ(modify.dialog.workplace(), kept);
    modify.user.control<QComboBox>("destination").setFocus();
    modify.user.key(Qt::Key_Home);
    modify.user.click("modify");
    EXPECT_EQ(modify.dialog.workplace(), 1);
    EXPECT_EQ(modify.dialog.draft().fid, "PANEL.MACRO.RUN");
  }
}

TEST(ModifyCommandDialogTest, OddCommandsOpenAndCancel) {
  for (const char* fid : {"QMF1.NO.SUCH.FUNCTION", "", ".", "NODOT", "QMF1.ME0.KEY1.CLIP.SET."}) {
    ModifyCommand modify(command(fid, {{"A", "1"}}));
    EXPECT_EQ(modify.user.label("functionText"), "FID not found!!!") << fid;
    EXPECT_FALSE(modify.user.enabled("modify"));
    EXPECT_FALSE(modify.user.visible("parameters"));
    modify.user.key(Qt::Key_Escape);
    EXPECT_EQ(modify.dialog.result(), QDialog::Rejected);
  }
  // A destination of its own stays until another one is chosen, and so do the segments behind the fifth.
  ModifyCommand twelve(command("OTHER.A.B.C.D.E.F.G.H.INC.J.K.L"));
  EXPECT_EQ(twelve.destination(), "Mainframe-1");
  twelve.user.control<QComboBox>("destination").setFocus();
  twelve.user.key(Qt::Key_Down);
  twelve.user.click("fromScratch");
  twelve.user.choose("segment5", "E");
  twelve.user.click("modify");
  EXPECT_EQ(twelve.dialog.draft().fid, "OTHER.A.B.C.D.E.F.G.H.INC.J.K.L");
}

}  // namespace
}  // namespace tessaly
