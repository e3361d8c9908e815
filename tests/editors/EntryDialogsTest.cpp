#include <gmock/gmock.h>

#include <QClipboard>

#include "editors/EnterTextDialog.h"
#include "editors/EnterTimecodeDialog.h"
#include "editors/EnterValueDialog.h"
#include "editors/LoadClipDialog.h"
#include "editors/SelectInputDialog.h"
#include "tests/editors/DialogDriver.h"

namespace tessaly {
namespace {

using testing::ElementsAre;

struct ValueCase {
  const char* typed;  // nullptr erases
  std::int64_t min, max;
  bool accepted;
  int beeps;
};

TEST(EnterValueDialogTest, ChecksTheWholeTextAtEveryKey) {
  const ValueCase cases[] = {
      {"100", 0, 100, true, 0},
      {"101", 0, 100, false, 1},
      {"x", 0, 9, true, 0},  // no number: 0
      {"x", 1, 9, false, 1},
      {nullptr, 0, 9, false, 0},
      {nullptr, 1, 9, false, 1},
      {"7", 7, 7, true, 0},
      {"8", 7, 7, false, 1},
      {"-1", 0, 9, false, 1},
      {"12", 10, 20, false, 2},  // each digit alone is out of range, and the second replaces the first
      {"4294967295", 0, 4294967295, true, 0},
      {"99999999999999999999", 0, 5, false, 20},
  };
  for (const ValueCase& test : cases) {
    SCOPED_TRACE(test.typed == nullptr ? "erased" : test.typed);
    BeepCount beeps;
    EnterValueDialog dialog(7, "min: 0   max: 9", test.min, test.max, nullptr, beeps.sound());
    DialogDriver user(dialog);
    EXPECT_EQ(user.control<QLineEdit>("value").selectedText() + user.label("hint").c_str(),
              "7min: 0   max: 9");
    test.typed == nullptr ? user.erase("value") : user.type("value", test.typed);
    EXPECT_EQ(beeps.heard, test.beeps);
    EXPECT_EQ(user.enabled("ok"), test.accepted);
    user.key(Qt::Key_Return);
    EXPECT_EQ(dialog.result() == QDialog::Accepted, test.accepted);
    EXPECT_EQ(dialog.value(), test.accepted && test.typed != nullptr ? QString(test.typed).toLongLong() : 7);
  }
  // A screen reader's hands put the text in whole.
  BeepCount beeps;
  EnterValueDialog dialog(77, "", 0, 9, nullptr, beeps.sound());
  const DialogDriver user(dialog);
  for (const auto& [text, taken] : {std::pair{"78", false}, {"77", true}, {"", false}, {"5", true}}) {
    user.control<QLineEdit>("value").setText(text);
    EXPECT_EQ(user.enabled("ok"), taken) << text << ": 77 stood there, and is not judged";
  }
  user.key(Qt::Key_Return);
  EXPECT_EQ(dialog.value() + beeps.heard, 5 + 1);
}

TEST(EnterValueDialogTest, OffersEveryRowOfAnEnumeration) {
  std::vector<std::string> rows;
  for (int i = 0; i < 40; ++i)
    rows.push_back(std::to_string(i) + "\tName " + std::to_string(i) + "\t" + std::to_string(100 + i));
  BeepCount beeps;
  EnterValueDialog dialog(3, "Range: 0 / 39", 0, 39, nullptr, beeps.sound());
  dialog.offerRows(rows);
  DialogDriver user(dialog);
  EXPECT_EQ(user.selectedRow("rows"), 3);
  user.type("value", "2");
  EXPECT_EQ(user.selectedRow("rows"), 2);
  user.key(Qt::Key_Down);
  EXPECT_EQ(user.field("value"), "3");
  user.choose("rows", "38\tName 38\t138");
  EXPECT_EQ(user.field("value"), "38");
  user.control<QLineEdit>("value").setFocus();
  user.key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(user.field("value"), "3");
  EXPECT_EQ(beeps.heard, 0);
  user.type("value", "40");
  EXPECT_EQ(beeps.heard, 1);
  EXPECT_EQ(user.selectedRow("rows"), -1);
  user.control<QListView>("rows").setFocus();
  user.key(Qt::Key_Return);
  EXPECT_TRUE(dialog.isVisible());
  user.choose("rows", "38");
  user.key(Qt::Key_Return);
  EXPECT_EQ(dialog.value(), 38);
}

struct TextCase {
  const char *stored, *typed;
  std::size_t room;
  const char *field, *result;
  int beeps;
};

TEST(EnterTextDialogTest, RefusesAtTheKeyWhatCannotBeStored) {
  const TextCase cases[] = {
      {"", "Bühne €", 7, "Bühne €", "B\xFChne \x80", 0},
      {"", "aЖb?", 9, "ab?", "ab?", 1},
      {"", "abcd", 3, "abc", "abc", 1},
      {"too long", nullptr, 3, "too long", "too long", 0},
      {"\xC3\xBC", nullptr, 9, "ü", "\xC3\xBC", 0},
  };
  for (const TextCase& c : cases) {
    SCOPED_TRACE(c.field);
    BeepCount beeps;
    EnterTextDialog dialog(c.stored, "s", c.room, nullptr, beeps.sound());
    DialogDriver user(dialog);
    if (c.typed != nullptr) user.type("text", c.typed);
    EXPECT_EQ(user.field("text"), c.field);
    EXPECT_EQ(beeps.heard, c.beeps);
    const std::string count = std::to_string(QString(c.field).size()) + " of " + std::to_string(c.room);
    EXPECT_EQ(user.label("hint") + ' ' + user.label("count"), "s " + count + " characters");
    user.key(Qt::Key_Return);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(dialog.text(), c.result);
  }
  // A loaded text that does not fit can be shortened, and is not taken before it fits.
  BeepCount beeps;
  EnterTextDialog dialog("abcde", "s", 3, nullptr, beeps.sound());
  DialogDriver user(dialog);
  user.key(Qt::Key_End);
  user.key(Qt::Key_Backspace);
  user.key(Qt::Key_Return);
  EXPECT_TRUE(dialog.isVisible() && !user.enabled("ok"));
  user.key(Qt::Key_Backspace);
  EXPECT_TRUE(user.enabled("ok"));
  EXPECT_EQ(beeps.heard, 0);
  user.control<QLineEdit>("text").setText("xy");
  user.key(Qt::Key_Return);
  EXPECT_EQ(dialog.text(), "xy");
}

TEST(EnterTimecodeDialogTest, LocksTheOtherFieldsUntilTheInvalidOneIsMended) {
  BeepCount beeps;
  EnterTimecodeDialog dialog({10, 20, 30, 5, true, true}, nullptr, beeps.sound());
  DialogDriver user(dialog);
  EXPECT_EQ(user.field("hours") + user.field("minutes") + user.field("seconds") + user.field("frames"),
            "10203005");
  const std::pair<const char*, std::pair<const char*, const char*>> limits[] = {{"hours", {"24", "23"}},
                                                                                {"minutes", {"60", "59"}},
                                                                                {"seconds", {"60", "59"}},
                                                                                {"frames", {"30", "29"}}};
  for (const auto& [name, texts] : limits) {
    SCOPED_TRACE(name);
    user.control<QLineEdit>(name).setText(texts.first);  // as a screen reader's hands do
    EXPECT_EQ(beeps.take(), 1);
    EXPECT_EQ(user.control<QLineEdit>(name).selectedText(), texts.first);
    user.key(Qt::Key_Return);
    EXPECT_TRUE(dialog.isVisible() && !user.enabled("ok"));
    for (const auto& [other, unused] : limits) EXPECT_EQ(user.enabled(other), std::string(other) == name);
    user.type(name, texts.second);
    EXPECT_EQ(beeps.take(), 0);
    for (const auto& [other, unused] : limits) EXPECT_TRUE(user.enabled(other));
    // An emptied field counts whichever is edited after it.
    user.erase(name);
    const char* const other = name == limits[0].first ? "frames" : "hours";
    user.type(other, "07");
    EXPECT_FALSE(user.enabled("ok"));
    user.type(name, texts.second);
    EXPECT_TRUE(user.enabled("ok"));
  }
  user.type("hours", "-1");
  EXPECT_EQ(beeps.take(), 1);
  user.type("hours", "12");
  user.key(Qt::Key_Tab);
  QApplication::processEvents();
  EXPECT_EQ(user.control<QLineEdit>("minutes").selectedText(), "59");
  user.click("ok");
  EXPECT_EQ(dialog.timecode(), (Timecode{12, 59, 59, 29, true, true}));
}

TEST(EnterTimecodeDialogTest, TakesATimecodeTypedOrPastedInOnePiece) {
  BeepCount beeps;
  EnterTimecodeDialog dialog({1, 2, 3, 4, true, false}, nullptr, beeps.sound());
  DialogDriver user(dialog);
  const auto shown = [&user] {
    return user.field("hours") + user.field("minutes") + user.field("seconds") + user.field("frames");
  };
  for (const Qt::Key key :
       {Qt::Key_1, Qt::Key_0, Qt::Key_2, Qt::Key_0, Qt::Key_3, Qt::Key_0, Qt::Key_0, Qt::Key_5})
    user.key(key);
  EXPECT_EQ(shown(), "10203005");
  user.key(Qt::Key_9);  // there is no field behind the last one
  EXPECT_EQ(shown(), "10203005");
  user.key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(user.field("frames"), "04");
  for (const auto& [text, result] : {std::pair{"3006", "00003006"}, {"11:22:33.08", "11223308"}}) {
    QApplication::clipboard()->setText(QLatin1String(text));
    user.key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(shown(), result);
  }
  QApplication::clipboard()->setText(QStringLiteral("09"));
  user.control<QLineEdit>("frames").setFocus();
  user.control<QLineEdit>("frames").selectAll();
  user.key(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(shown(), "11223309") << "of one field";
  EXPECT_EQ(beeps.heard, 0);
  user.click("ok");
  EXPECT_EQ(dialog.timecode(), (Timecode{11, 22, 33, 9, true, false}));
}

TEST(EnterTimecodeDialogTest, LeavesADamagedNumberAlone) {
  BeepCount beeps;
  const Timecode damaged{45, 85, 165, 99, false, false};
  EnterTimecodeDialog dialog(damaged, nullptr, beeps.sound());
  DialogDriver user(dialog);
  user.type("minutes", "07");
  user.key(Qt::Key_Return);
  EXPECT_EQ(beeps.heard, 0);
  EXPECT_EQ(dialog.timecode(), (Timecode{45, 7, 165, 99, false, false}));
}

TEST(ChoiceDialogTest, TakesASelectedRowOnly) {
  SelectInputDialog empty("Select Input", {});
  const DialogDriver none(empty);
  EXPECT_FALSE(none.enabled("ok"));
  const auto& list = none.control<QListView>("list");
  EXPECT_EQ(list.accessibleName() + ": " + list.accessibleDescription(),
            "Select Input: nothing to choose from");

  SelectInputDialog dialog("Select Input", {{"Input 1", "INPUT1", {}}, {"Color 1", "INPUT144", {}}});
  DialogDriver user(dialog);
  EXPECT_THAT(user.rows("list"), ElementsAre("Input 1", "Color 1"));
  user.key(Qt::Key_Return);
  EXPECT_TRUE(dialog.isVisible());
  EXPECT_FALSE(user.enabled("ok"));
  user.choose("list", "Input 1");
  user.click("ok");
  EXPECT_FALSE(dialog.isVisible());
  EXPECT_EQ(dialog.selectedRow(), 0);

  LoadClipDialog clips({"opener",
                        "b\xFC"
                        "hne"});
  DialogDriver clipUser(clips);
  EXPECT_EQ(clips.windowTitle(), "Load Clip");
  EXPECT_EQ(clipUser.rows("list")[1], "b\xC3\xBChne");
  clipUser.key(Qt::Key_Down);
  clipUser.key(Qt::Key_End);
  clipUser.key(Qt::Key_Return);
  EXPECT_EQ(clips.clip(),
            "b\xFC"
            "hne");
  clips.show();
  clipUser.choose("list", "opener");
  auto& names = clipUser.control<QListView>("list");
  QTest::mouseDClick(names.viewport(), Qt::LeftButton, Qt::NoModifier,
                     names.visualRect(names.currentIndex()).center());
  EXPECT_EQ(clips.clip(), "opener");
  EXPECT_FALSE(clips.isVisible());
}

}  // namespace
}  // namespace tessaly
