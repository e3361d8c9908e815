#include <gmock/gmock.h>

#include "editors/ClassicEditorDialog.h"
#include "platform/Text.h"
#include "tests/editors/EditorFixture.h"
#include "tests/support/Told.h"
#include "widgets/ListBox.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class ClassicEditorDialogTest : public testing::Test {
 protected:
  // The functions of "Video input - Input1", all with the keyword 1.
  void list(const std::string& entries) {
    fixture_.site.write("c:\\Programme\\RV48\\bin\\MacroCdCo_Tarrow\\Cd-0x11\\Cd-0x11-Co-0x01.ini",
                        "CD 0x11\nCO 0x01\n" + entries);
    fixture_.site.write("c:\\Programme\\RV48\\bin\\MPoolList.txt", "Opener\r\nB\xFChne\r\n");
    lists_ = std::make_unique<DecodingLists>(fixture_.site.root);
    context_ = std::make_unique<EditorContext>(EditorContext{
        fixture_.site.access(), fixture_.dictionary, *lists_, fixture_.sources, *fixture_.panel.client,
        [] { return false; }, fixture_.frameRate, [this] { return fixture_.refusal; }});
  }
  // Modifies the command "20 11 01 01" with these parameter bytes.
  std::unique_ptr<ClassicEditorDialog> modifying(const std::string& bytes) {
    ClassicCommand command;
    const std::string head = format("%02x 11 01 01 ", static_cast<unsigned>(0x23 + bytes.size() / 3));
    EXPECT_TRUE(command.decodeText(head + bytes)) << bytes;
    return std::make_unique<ClassicEditorDialog>(*context_, command, Destination());
  }
  static std::string bytesOf(const ClassicEditorDialog& dialog) { return dialog.command().text().substr(12); }

  EditorFixture fixture_;
  std::unique_ptr<DecodingLists> lists_;
  std::unique_ptr<EditorContext> context_;
};

TEST_F(ClassicEditorDialogTest, OpeningAParameterAndPressingOkChangesNoByte) {
  const char* const bi = "pt_AnalogBi \"v\"\n:0x00 0x00 \"\"\n:0x00 0x01 \"\"\n:0xff 0x01 \"\"\n";
  const std::pair<const char*, const char*> cases[] = {
      {"pt_Byte \"0\"\n:0x00\n:0x64\n", "c8 "},
      {"pt_Word \"0\"\n:0x00 0x00\n:0x67 0x01\n", "01 02 "},  // a hue of 513 degrees
      {"pt_Long \"0\"\n:0xff 0xff 0xff 0xff\n:0x01 0x00 0x00 0x00\n", "05 00 00 80 "},
      {"pt_ByteEnum \"e\"\n:0x01 \"on\"\n:0x02 \"off\"\n", "07 "},
      {"pt_WordEnum \"e\"\n:0x01 0x00 \"on\"\n:0x01 0x00 \"again\"\n", "01 00 "},
      {"pt_Analog \"v\"\n:0x00 0x00 \"\"\n:0xe8 0x03 \"\"\n", "05 00 "},
      {"pt_Analog \"v\"\n:0x00 0x00 \"\"\n:0xe8 0x03 \"\"\n", "ff 7f "},
      {bi, "01 01 "},
      {"pt_AnalogBi \"v\"\n:0x00 0x00 \"\"\n:0x05 0x00 \"\"\n:0x05 0x00 \"\"\n", "09 00 "},
      {"pt_Timecode \"t\"\n", "05 30 20 d0 "},
      {"pt_Timecode \"t\"\n", "0f ff 7f ff "},
      {"pt_Input \"i\"\n", "07 "},
      {"pt_Input \"i\"\n", "61 05 "},
      {"pt_Input \"i\"\n", "ff 01 02 03 "},
      {"pt_String \"s\"\n", "fc 41 "},
      {"pt_String \"s\"\n", "c3 bc 00 99 "},
      {"pt_Clipname \"c\"\n", "42 fc 68 6e 65 "},
      {"pt_Clipname \"c\"\n", "7a 00 "},
  };
  for (const auto& [parameter, bytes] : cases) {
    SCOPED_TRACE(std::string(parameter) + bytes);
    list(std::string("[0x01] 0x01 \"F\"\n") + parameter);
    const auto editor = modifying(bytes);
    const DialogDriver user(*editor);
    bool opened = false;
    DialogDriver::answerNext([&opened](QDialog& /*dialog*/, const DialogDriver& entry) {
      opened = true;
      entry.key(Qt::Key_Return);
    });
    user.choose("parameters", "");
    EXPECT_TRUE(opened);
    EXPECT_EQ(bytesOf(*editor), bytes);
    EXPECT_FALSE(editor->changed());
    EXPECT_TRUE(user.enabled("insertSelected"));
  }
}

TEST_F(ClassicEditorDialogTest, ArrowsLeadThroughTheParametersAndEscClosesOneDialog) {
  list("[0x01] 0x01 \"F\"\npt_Word \"0\"\npt_Byte \"0\"\n");
  const auto editor = modifying("01 00 02 ");
  const DialogDriver user(*editor);
  user.control<ListBox>("parameters").setFocus();
  for (const int row : {0, 1, 1}) {
    user.key(Qt::Key_Down);
    EXPECT_EQ(user.selectedRow("parameters"), row);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  }
  int opened = 0;
  const auto leave = [&opened](QDialog& /*dialog*/, const DialogDriver& entry) {
    ++opened;
    entry.key(Qt::Key_Escape);
  };
  DialogDriver::answerNext(leave);
  user.key(Qt::Key_Return);
  EXPECT_EQ(opened, 1);
  DialogDriver::answerNext(leave);
  for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return}) {
    QKeyEvent held(QEvent::KeyPress, key, Qt::NoModifier, QString(), true);
    QApplication::sendEvent(editor->focusWidget(), &held);
    EXPECT_TRUE(editor->isVisible());
    ASSERT_EQ(opened, 1) << "a held Enter would store what is proposed";
  }
  EXPECT_EQ(user.selectedRow("parameters"), 1);
  user.key(Qt::Key_Up);
  EXPECT_EQ(user.selectedRow("parameters"), 0);
  user.choose("parameters", "");
  QApplication::processEvents();
  EXPECT_EQ(opened, 2);
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  user.key(Qt::Key_Escape);
  EXPECT_FALSE(editor->isVisible());
  EXPECT_EQ(editor->outcome(), ClassicEditorDialog::Outcome::kCancel);
}

TEST_F(ClassicEditorDialogTest, StaysOpenWithAllThatWasBuiltWhileTheMacroTakesNothing) {
  list("[0x01] 0x04 \"Cut\"\n");
  ClassicEditorDialog editor(*context_, true, Destination());
  const DialogDriver user(editor);
  for (const auto& [name, row] :
       {std::pair{"mainGroups", "Video"}, {"subgroups", "Input1"}, {"functions", "Cut"}})
    user.choose(name, row);
  user.choose("actions", "trigger");
  EXPECT_EQ(user.label("byteText"), "e3 11 01 01 ");
  EXPECT_EQ(user.label("path") + '|' + user.label("stateLine") + '|' + user.label("description") + '|' +
                user.label("debugText"),
            "Video input - Input1 - Cut - trigger|READY TO INSERT|Trigger - Video input - Input1 - Cut|ac: "
            "e0 | cd: 11 | co: 01 | kw: 01");
  EXPECT_EQ(shutIn(editor), "actions; ");
  user.toggle("standard60");
  EXPECT_EQ(fixture_.frameRate, 30);
  EXPECT_EQ(user.control<ListBox>("functions").accessibleName(), "Function");
  fixture_.refusal = "The panel has deleted the macro.";
  for (const char* button : {"insertStart", "insertSelected", "insertEnd"}) {
    user.click(button);
    EXPECT_THAT(fixture_.site.messages.take(), ElementsAre(fixture_.refusal)) << button;
    EXPECT_TRUE(editor.isVisible());
    EXPECT_TRUE(user.enabled(button));
  }
  fixture_.refusal.clear();
  user.click("insertStart");
  EXPECT_EQ(editor.outcome(), ClassicEditorDialog::Outcome::kAtStart);
  EXPECT_EQ(editor.command().text(), "e3 11 01 01 ");
}

TEST_F(ClassicEditorDialogTest, AnEmptyListTellsWhy) {
  list("[0x01] 0x01 \"F\" \"\"\n");  // without a long name
  ClassicEditorDialog editor(*context_, true, Destination());
  const DialogDriver user(editor);
  const auto why = [&user](const char* name) {
    return user.control<ListBox>(name).accessibleDescription().toStdString();
  };
  user.choose("mainGroups", "Video");
  EXPECT_EQ(why("functions"), "choose on the left");
  user.choose("subgroups", "Input2");
  EXPECT_THAT(why("functions"), HasSubstr("\"Cd-0x11-Co-0x02.ini\""));
  EXPECT_EQ(why("actions"), "");
  user.choose("subgroups", "Input1");
  EXPECT_EQ(why("functions"), "");
  user.choose("functions", "");
  user.choose("actions", "set");
  EXPECT_THAT(why("parameters"), HasSubstr("no parameters"));
}

TEST_F(ClassicEditorDialogTest, EverySourceAndItsHoldCanBeChosen) {
  list("[0x01] 0x01 \"F\"\npt_Input \"i\"\npt_Byte \"0\"\n");
  const struct {
    const char *bytes, *marked, *row;
    bool toggleHold;
    const char* result;
  } cases[] = {
      {"01 00 09 ", "Camera 1", "White", false, "f0 00 09 "},
      {"f0 01 09 ", "White", "Black", false, "00 01 09 "},
      {"01 00 09 ", "Camera 1", "eDpm Chan2 Key", true, "84 01 09 "},
      {"fe 07 09 ", "unknown input", nullptr, true, "fe 00 09 "},
      {"ff 00 00 09 ", "extended input", "Color 1", true, "90 01 09 "},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.bytes);
    const auto editor = modifying(c.bytes);
    const DialogDriver user(*editor);
    DialogDriver::answerNext([&c](QDialog& /*dialog*/, const DialogDriver& entry) {
      EXPECT_EQ(entry.rows("list").at(static_cast<std::size_t>(entry.selectedRow("list"))), c.marked);
      EXPECT_GT(entry.control<QWidget>("hold").y(), entry.control<QWidget>("list").y());
      if (c.row != nullptr) entry.choose("list", c.row);
      if (c.toggleHold) entry.click("hold");
      entry.click("ok");
    });
    user.choose("parameters", "i");
    EXPECT_EQ(bytesOf(*editor), c.result);
    EXPECT_TRUE(editor->changed());
  }
}

}  // namespace
}  // namespace tessaly
