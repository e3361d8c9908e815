#include <gmock/gmock.h>
#include <thread>

#include <QComboBox>

#include "editors/CreateCommandDialog.h"
#include "tests/editors/EditorFixture.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr const char* kReady = "COMMAND READY FOR INSERTION";
constexpr const char* kMissing = "Parameters are missing...";

struct CreateCommand : EditorFixture {
  explicit CreateCommand(bool commandSelected = true, int workplace = 1,
                         const FunctionDictionary& functions = smallDictionary())
      : EditorFixture(functions),
        dialog(context, workplace, commandSelected, nullptr, beeps.sound()),
        user(dialog) {}

  void chooseDestination(int row) const {
    auto& box = user.control<QComboBox>("destination");
    box.setFocus();
    user.key(Qt::Key_Home);
    for (int i = 0; i < row; ++i) user.key(Qt::Key_Down);
  }
  // Chooses the only function that both texts leave.
  void chooseFunction(const char* first, const char* second, const char* description) const {
    user.type("search1", first);
    user.type("search2", second);
    user.choose("found", description);
  }
  [[nodiscard]] std::vector<std::string> values() const {
    std::vector<std::string> result;
    for (const auto& parameter : dialog.draft().parameters) result.push_back(parameter.value);
    return result;
  }

  CreateCommandDialog dialog;
  DialogDriver user;
};

// Beside the five fields, which stay empty; of a destination's functions alone.
TEST(CreateCommandDialogTest, WordsFindFunctionsAndTellPlainlyThatThereIsNone) {
  CreateCommand create;
  const DialogDriver& user = create.user;
  user.type("words", "clip key 3");
  ASSERT_THAT(user.rows("found"), testing::Not(IsEmpty()));
  EXPECT_EQ(user.rows("found").front(), "PP Key 3 Clip Set");
  EXPECT_EQ(user.field("search1"), "");
  user.key(Qt::Key_Return);
  EXPECT_EQ(user.focus(), "value") << "of the best one";
  EXPECT_EQ(user.label("ready"), kMissing);
  user.type("words", "clip key 3 zzz");
  EXPECT_THAT(user.rows("found"), IsEmpty());
  EXPECT_EQ(user.label("foundCount"), "nothing found");
  user.type("words", "run");
  EXPECT_THAT(user.rows("found"), IsEmpty()) << "a function of the panel, for a mainframe";
  create.chooseDestination(4);
  EXPECT_THAT(user.rows("found"), ElementsAre("Macro Run"));
}

TEST(CreateCommandDialogTest, KeyboardAloneChoosesFillsAndInserts) {
  CreateCommand create;
  const DialogDriver& user = create.user;
  QObject::connect(&create.dialog, &CreateCommandDialog::insertPressed, &create.dialog,
                   &CreateCommandDialog::goOn);
  EXPECT_EQ(user.focus(), "words");
  EXPECT_EQ(user.label("ready"), "");
  EXPECT_FALSE(user.visible("value"));
  user.key(Qt::Key_1, Qt::AltModifier);
  QTest::keyClicks(create.dialog.focusWidget(), "key1");
  user.key(Qt::Key_Down);  // into the list, where KEY1 is selected
  user.key(Qt::Key_Down);  // KEY10
  EXPECT_EQ(user.focus(), "results1");
  user.key(Qt::Key_Return);
  EXPECT_EQ(user.focus(), "found");
  EXPECT_EQ(user.label("ready"), kMissing);
  user.key(Qt::Key_Return);
  EXPECT_EQ(user.focus(), "value");
  QTest::keyClicks(create.dialog.focusWidget(), "50");
  EXPECT_EQ(user.label("ready"), kReady);
  user.key(Qt::Key_Return);
  EXPECT_TRUE(create.dialog.isVisible()) << "for the next one";
  EXPECT_EQ(user.focus(), "search1");
  EXPECT_EQ(user.label("inserted"), "1 inserted");
  EXPECT_EQ(create.dialog.draft().fid, "QMF1.ME0.KEY10.CLIP.SET");
  EXPECT_THAT(create.values(), ElementsAre("127.500000"));
  EXPECT_EQ(create.dialog.mode(), InsertMode::kAppend);
}

TEST(CreateCommandDialogTest, ChoicesAreStoredAsTheirValues) {
  CreateCommand create;
  create.chooseFunction("key2", "type", "ME 1 Key 2 Type");
  create.user.choose("choices", "Linear");
  auto& choices = create.user.control<QListView>("choices");
  QTest::mouseClick(choices.viewport(), Qt::LeftButton, Qt::NoModifier,
                    {5, choices.viewport()->height() - 2});
  create.user.choose("choices", "Linear");
  EXPECT_EQ(create.user.rows("parameters")[0], "Type\tLinear")
      << "a click beside the rows, and one more on the row";
  create.user.choose("choices", "Luminance");
  EXPECT_EQ(create.user.label("ready"), kMissing);
  auto& found = create.user.control<QListView>("found");
  QTest::mouseClick(found.viewport(), Qt::LeftButton, Qt::NoModifier, {5, found.viewport()->height() - 2});
  create.user.choose("parameters", "Source");
  create.user.choose("choices", "Color 1");
  EXPECT_EQ(create.user.field("value"), "Color 1");
  create.user.click("showRaw");
  EXPECT_THAT(create.user.rows("parameters"), ElementsAre("TYPE\tLUM", "SOURCE\t144"));
  EXPECT_EQ(create.user.rows("found")[1], "ME1 - KEY2 - TYPE - SET");
  QTest::mouseClick(found.viewport(), Qt::LeftButton, Qt::ControlModifier,
                    found.visualRect(found.currentIndex()).center());
  create.refusal = "The macro is gone";
  create.user.click("insertSelected");
  EXPECT_THAT(create.site.messages.take(), ElementsAre(create.refusal));
  EXPECT_TRUE(create.dialog.isVisible());
  create.refusal.clear();
  create.user.click("insertSelected");
  EXPECT_THAT(create.values(), ElementsAre("LUM", "144"));
  EXPECT_EQ(create.dialog.mode(), InsertMode::kAtPosition);
}

TEST(CreateCommandDialogTest, TypedTextIsFilteredAndStoredAtEveryKey) {
  CreateCommand create(false);
  const DialogDriver& user = create.user;
  create.chooseFunction("rate", "me1", "ME 1 Rate");
  EXPECT_FALSE(user.enabled("insertStart"));
  struct Case {
    const char* parameter;
    const char* pasted;
    const char* field;
    int beeps;
    const char* stored;
  };
  const Case cases[] = {{"Rate", "1a2b", "12", 2, "12"},
                        {"Rate", "1000", "999", 1, "999"},
                        {"Rate", "-60", "-50", 1, "-50"},
                        {"Rate", "", "", 0, "0"},
                        {"Ease", ",5", "0.5", 0, "1"},
                        {"Ease", "50", "50", 0, "128"},
                        {"Ease", "-5", "5", 1, "13"},
                        {"Ease",
                         "\xC3\xA4"
                         "7",
                         "7", 1, "18"}};
  for (const Case& test : cases) {
    SCOPED_TRACE(test.pasted);
    user.choose("parameters", test.parameter);
    user.paste("value", test.pasted);
    EXPECT_EQ(user.field("value"), test.field);
    EXPECT_EQ(create.beeps.take(), test.beeps);
    user.click("showRaw");
    EXPECT_EQ(user.rows("parameters")[*test.parameter == 'R' ? 0 : 1].substr(5), test.stored);
    user.click("showRaw");
  }
  user.choose("parameters", "Rate");
  const std::pair<const char*, const char*> typed[] = {{"7", "7"}, {"1000", "999"}, {"5x", "5"}};
  for (const auto& [keys, field] : typed) {
    const std::string before = user.field("value");
    user.type("value", keys);
    EXPECT_EQ(user.field("value"), field);
    user.key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(user.field("value"), before) << "undone: " << keys;
    EXPECT_EQ(user.rows("parameters")[0], "Rate\t" + before);
  }
  create.beeps.take();
  user.type("value", "-");
  EXPECT_FALSE(user.enabled("insertSelected"));  // no command is selected
  user.key(Qt::Key_S, Qt::AltModifier);
  EXPECT_EQ(create.dialog.mode(), InsertMode::kAtStart);
  EXPECT_THAT(create.values(), ElementsAre("0", "18"));  // a lone "-" is 0
}

TEST(CreateCommandDialogTest, TimecodesFollowTheVideoStandard) {
  CreateCommand create;
  create.chooseFunction("cue", "machine", "Machine 1 Cue");
  EXPECT_EQ(create.user.label("ready"), kMissing);  // optional, and still needed
  EXPECT_TRUE(create.user.visible("timecodeHelp"));
  create.user.type("value", "10:20:30:29x");
  EXPECT_EQ(create.user.field("value"), "10:20:30:24");
  EXPECT_EQ(create.beeps.take(), 2);
  create.user.click("standard60");
  EXPECT_EQ(create.frameRate, 30);
  create.user.type("value", "10:20:30.29");
  EXPECT_EQ(create.beeps.take(), 0);
  create.user.click("insertEnd");
  EXPECT_THAT(create.values(), ElementsAre(std::to_string(0x50203029)));
}

TEST(CreateCommandDialogTest, CategoriesAndSubgroupsNarrowStepByStep) {
  CreateCommand create;
  const DialogDriver& user = create.user;
  user.click("me");
  EXPECT_THAT(user.rows("found"), IsEmpty());
  user.choose("subgroup1", "ME 1");
  EXPECT_THAT(user.rows("found"), SizeIs(25));
  user.choose("subgroup2", "KEY3");
  EXPECT_THAT(user.rows("subgroup3"), ElementsAre("CLIP", "TYPE"));
  user.choose("subgroup3", "CLIP");
  EXPECT_THAT(user.rows("found"), ElementsAre("ME 1 Key 3 Clip Set"));
  user.choose("found", "ME 1");
  user.type("search5", "set");  // what was chosen is still among those found
  EXPECT_EQ(user.label("ready"), kMissing);
  user.click("me");  // again: nothing is begun anew
  EXPECT_EQ(user.label("ready"), kMissing);
  user.click("showIncrements");
  EXPECT_THAT(user.rows("subgroup3"), ElementsAre("CLIP"));
  EXPECT_THAT(user.rows("found"), IsEmpty());
  EXPECT_EQ(user.label("ready"), "");
  user.click("clear5");
  EXPECT_EQ(user.field("search5"), "");
  EXPECT_THAT(user.rows("found"), ElementsAre("ME 1 Key 3 Clip Increment"));
  user.click("aux");
  EXPECT_THAT(user.rows("subgroup1"), SizeIs(48));
  EXPECT_THAT(user.rows("subgroup2"), IsEmpty());
}

TEST(CreateCommandDialogTest, ADestinationStartsTheChoiceAnew) {
  CreateCommand create(true, 9);
  const DialogDriver& user = create.user;
  EXPECT_FALSE(user.visible("workplace"));
  user.click("me");
  user.choose("subgroup1", "PP");
  user.type("search3", "rate");
  create.chooseDestination(4);
  EXPECT_EQ(user.label("workplaceLabel"), "Workplace");
  EXPECT_EQ(user.control<QComboBox>("workplace").currentIndex(), -1);
  EXPECT_EQ(create.dialog.workplace(), 9);
  EXPECT_FALSE(user.enabled("me") || user.enabled("searchRoom"));
  EXPECT_FALSE(user.control<QAbstractButton>("me").isChecked());
  EXPECT_EQ(user.field("search3"), "");
  EXPECT_THAT(user.rows("found"), ElementsAre("Macro Run"));
  user.control<QComboBox>("workplace").setFocus();
  user.key(Qt::Key_Down);
  user.key(Qt::Key_Down);
  user.choose("found", "Macro Run");
  user.type("value", "7");
  user.click("insertStart");
  EXPECT_EQ(create.dialog.draft().fid, "PANEL.MACRO.RUN");
  EXPECT_EQ(create.dialog.workplace(), 2);
}

TEST(CreateCommandDialogTest, UpdateTakesThePanelsValue) {
  CreateCommand create;
  const DialogDriver& user = create.user;
  user.click("updateData");
  EXPECT_THAT(
      create.site.messages.take(),
      ElementsAre("Data Update is only possible when you are connected to a Corvane XL Control Panel \n"));
  ASSERT_TRUE(create.client.connect("panel"));
  create.connected = true;
  user.click("updateData");  // no function is chosen
  create.chooseDestination(1);
  create.chooseFunction("key4", "type", "ME 1 Key 4 Type");
  user.choose("parameters", "Source");
  create.transport->take();
  user.click("updateData");
  EXPECT_THAT(create.transport->take(), ElementsAre("subscribe QMF2.ME1.KEY4.TYPE"));
  user.choose("parameters", "Type");
  std::thread([&] {
    create.client.subscribedValueReceived("QMF2.ME1.KEY4.TYPE", ParameterValue("nonsense"));
  }).join();
  QTRY_COMPARE(user.rows("parameters")[1], "Source\tnonsense");
  // One question, one answer; the user's own entry is not overwritten by what the panel says later.
  user.choose("parameters", "Source");
  user.choose("choices", "Camera 1");
  std::thread([&] {
    create.client.subscribedValueReceived("QMF2.ME1.KEY4.TYPE", ParameterValue("5"));
  }).join();
  QApplication::processEvents();
  EXPECT_EQ(user.rows("parameters")[1], "Source\tCamera 1");
  // The value is known by now and comes at once; another function gives the question up.
  user.click("updateData");
  user.choose("found", "PP Key 4 Type");
  QApplication::processEvents();
  EXPECT_THAT(user.rows("parameters"), ElementsAre("Type\t", "Source\t"));
  // Of a line that is gone nothing is waited for in silence.
  user.click("updateData");
  create.client.connectionStatusChanged(kPanelNotConnected);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !create.site.messages.texts.empty(); }));
  user.click("updateData");
  EXPECT_THAT(create.site.messages.take(), SizeIs(2));
}

TEST(CreateCommandDialogTest, OddDictionariesOpenAndCancel) {
  const FunctionDictionary nothing;
  CreateCommand empty(true, 1, nothing);
  empty.user.click("me");
  empty.user.choose("subgroup1", "PP");
  empty.user.type("search1", "x");
  empty.user.key(Qt::Key_Return);
  empty.user.key(Qt::Key_Escape);
  EXPECT_EQ(empty.dialog.result(), QDialog::Rejected);

  CreateCommand many;
  many.chooseFunction("many", "many", "Many");
  EXPECT_EQ(many.user.label("ready"), kReady);  // all are optional
  EXPECT_EQ(many.user.control<QLineEdit>("value").placeholderText(), "(optional)");
  many.user.key(Qt::Key_V, Qt::AltModifier);
  QTest::keyClicks(many.dialog.focusWidget(), "1");
  EXPECT_EQ(many.user.field("value"), "10");  // the limit comes at once
  many.user.key(Qt::Key_Down);
  EXPECT_EQ(many.user.selectedRow("parameters"), 1);
  many.user.click("insertEnd");
  EXPECT_THAT(many.values(), SizeIs(40));

  CreateCommand twelve;
  twelve.chooseFunction("k", "l", "Twelve");
  EXPECT_EQ(twelve.user.label("ready"), kReady);  // without parameters
  twelve.user.control<QListView>("found").setFocus();
  twelve.user.key(Qt::Key_Return);
  EXPECT_EQ(twelve.dialog.draft().parameters.size(), 0U);
  EXPECT_FALSE(twelve.dialog.draft().fid.empty());
}

TEST(CreateCommandDialogTest, AKeyOverTheWholeSiteFindsAtOnce) {
  CreateCommand create(true, 1, siteDictionary());
  create.user.click("me");
  create.user.choose("subgroup1", "ME 2");
  create.user.type("search2", "thres");
  create.user.type("search4", "k");  // of what begins so, one that ME 2 has with a threshold
  ASSERT_THAT(create.user.rows("found"), testing::Not(IsEmpty()));
  create.user.choose("found", "ME 2");
  create.user.key(Qt::Key_V, Qt::AltModifier);
  EXPECT_EQ(create.user.focus(), "value");
}

}  // namespace
}  // namespace tessaly
