#include <gmock/gmock.h>

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
    EXPECT_EQ(user.control<QLineEdit>("value").selectedText(), "7");
    test.typed == nullptr ? user.erase("value") : user.type("value", test.typed);
    EXPECT_EQ(beeps.heard, test.beeps);
    EXPECT_EQ(user.enabled("ok"), test.accepted);
    user.key(Qt::Key_Return);
    EXPECT_EQ(dialog.result() == QDialog::Accepted, test.accepted);
    EXPECT_EQ(dialog.value(), test.accepted && test.typed != nullptr ? QString(test.typed).toLongLong() : 7);
  }
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
    user.type(name, texts.first);
    EXPECT_EQ(beeps.take(), 1);
    EXPECT_EQ(user.control<QLineEdit>(name).selectedText(), texts.first);
    EXPECT_FALSE(user.enabled("ok"));
    for (const auto& [other, unused] : limits) EXPECT_EQ(user.enabled(other), std::string(other) == name);
    user.type(name, texts.second);
    EXPECT_EQ(beeps.take(), 0);
    for (const auto& [other, unused] : limits) EXPECT_TRUE(user.enabled(other));
    user.erase(name);
    EXPECT_FALSE(user.enabled("ok"));
    user.type(name, texts.second);
  }
  user.type("hours", "-1");
  EXPECT_EQ(beeps.take(), 1);
  user.type("hours", "123");
  EXPECT_EQ(user.field("hours"), "12");
  user.click("ok");
  EXPECT_EQ(dialog.timecode(), (Timecode{12, 59, 59, 29, true, true}));
}

TEST(ChoiceDialogTest, TakesASelectedRowOnly) {
  SelectInputDialog empty("Select Input", {});
  EXPECT_FALSE(DialogDriver(empty).enabled("ok"));

  SelectInputDialog dialog("Select Input", {{"Input 1", "INPUT1", {}}, {"Color 1", "INPUT144", {}}});
  DialogDriver user(dialog);
  EXPECT_THAT(user.rows("list"), ElementsAre("Input 1", "Color 1"));
  user.key(Qt::Key_Return);
  EXPECT_TRUE(dialog.isVisible());
  EXPECT_FALSE(user.enabled("ok"));
  user.choose("list", "Color 1");
  user.click("ok");
  EXPECT_EQ(dialog.selectedRow(), 1);

  LoadClipDialog clips({"opener",
                        "b\xFC"
                        "hne"});
  DialogDriver clipUser(clips);
  EXPECT_EQ(clipUser.rows("list")[1], "b\xC3\xBChne");
  clipUser.key(Qt::Key_Down);
  clipUser.key(Qt::Key_End);
  clipUser.key(Qt::Key_Return);
  EXPECT_EQ(clips.clip(),
            "b\xFC"
            "hne");
  clips.show();
  clipUser.key(Qt::Key_Escape);
  EXPECT_EQ(clips.result(), QDialog::Rejected);
}

}  // namespace
}  // namespace tessaly
