#include <gmock/gmock.h>
#include <thread>

#include <QComboBox>
#include <QMenu>
#include <QSignalSpy>
#include <QToolButton>

#include "editors/CreateCommandDialog.h"
#include "editors/MultipleCommands.h"
#include "tests/editors/EditorFixture.h"
#include "tests/support/Told.h"
#include "widgets/ListBox.h"

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
    user.control<QLineEdit>("search2").setText(QLatin1String(second));  // as a screen reader's hands do
    user.choose("found", description);
  }
  // Why a list is empty.
  [[nodiscard]] std::string why(const char* list) const {
    return user.control<ListBox>(list).accessibleDescription().toStdString();
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
  for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Down}) user.key(key);
  user.control<QWidget>("words").setFocus();
  user.key(Qt::Key_Enter);
  EXPECT_EQ(user.selectedRow("found"), 1) << "chosen since the words were typed";
  user.type("words", "clip key 3");
  ASSERT_THAT(user.rows("found"), testing::Not(IsEmpty()));
  EXPECT_EQ(toldBy(user.control<QListView>("found").model()->index(0, 0)),
            "PP Key 3 Clip Set [PP Key 3 Clip Set\nME0 - KEY3 - CLIP - SET]");
  EXPECT_EQ(user.label("foundCount"), std::to_string(user.rows("found").size()) + " found");
  EXPECT_EQ(user.control<QLineEdit>("words").accessibleDescription().toStdString(), user.label("foundCount"));
  EXPECT_EQ(user.control<QWidget>("words").findChild<QToolButton*>()->accessibleName(), "Clear the words");
  EXPECT_EQ(user.field("search1"), "");
  user.key(Qt::Key_Return);
  EXPECT_EQ(user.focus(), "value") << "of the best one";
  EXPECT_EQ(user.label("ready"), kMissing);
  create.chooseDestination(1);
  EXPECT_EQ(user.label("ready"), "") << "the same functions, and none is chosen";
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
  EXPECT_EQ(user.focus(), "words");
  EXPECT_EQ(user.label("ready"), "");
  EXPECT_EQ(user.label("foundCount"), "");
  EXPECT_EQ(
      shutIn(create.dialog),
      "insertEnd insertSelected insertStart; choices parameters parametersLabel range timecodeHelp value "
      "valueLabel workplace");
  const std::pair<Qt::Key, const char*> rooms[] = {
      {Qt::Key_D, "destination"}, {Qt::Key_2, "search2"}, {Qt::Key_3, "search3"},   {Qt::Key_4, "search4"},
      {Qt::Key_5, "search5"},     {Qt::Key_6, "words"},   {Qt::Key_G, "subgroup1"}, {Qt::Key_F, "found"}};
  for (const auto& [key, room] : rooms) {
    user.key(key, Qt::AltModifier);
    EXPECT_EQ(user.focus(), room);
    EXPECT_TRUE(user.control<QWidget>(room).toolTip().contains(QKeySequence(Qt::ALT | key).toString()))
        << room;
  }
  for (const auto& [key, box] :
       {std::pair{Qt::Key_R, "showRaw"}, {Qt::Key_I, "showIncrements"}, {Qt::Key_K, "keepOpen"}}) {
    const bool on = user.control<QAbstractButton>(box).isChecked();
    user.key(key, Qt::AltModifier);
    EXPECT_NE(user.control<QAbstractButton>(box).isChecked(), on) << box;
    user.key(key, Qt::AltModifier);
  }
  user.key(Qt::Key_1, Qt::AltModifier);
  QTest::keyClicks(create.dialog.focusWidget(), "key1");
  user.key(Qt::Key_Down);  // into the list, where KEY1 is selected
  user.key(Qt::Key_Down);  // KEY10
  EXPECT_EQ(user.focus(), "results1");
  user.key(Qt::Key_Return);
  EXPECT_EQ(user.focus(), "found");
  EXPECT_EQ(user.label("ready"), kMissing);
  EXPECT_EQ(shutIn(create.dialog), "choices insertEnd insertSelected insertStart; timecodeHelp workplace");
  QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QString(), true);
  QApplication::sendEvent(create.dialog.focusWidget(), &held);
  EXPECT_EQ(user.focus(), "found") << "the key that led here is still held";
  user.key(Qt::Key_Return);
  EXPECT_EQ(user.focus(), "value");
  EXPECT_EQ(user.label("range"), "min:  0%   max: 100%");
  EXPECT_EQ(user.control<ListBox>("parameters").accessibleName(), "Macro Parameter");
  QTest::keyClicks(create.dialog.focusWidget(), "50");
  EXPECT_EQ(user.label("ready"), kReady);
  EXPECT_EQ(shutIn(create.dialog), "choices; timecodeHelp workplace");
  user.key(Qt::Key_Return);
  EXPECT_TRUE(create.dialog.isVisible()) << "for the next one";
  EXPECT_EQ(user.focus(), "search1");
  EXPECT_EQ(user.control<QLineEdit>("search1").selectedText(), "key1");
  EXPECT_EQ(user.label("inserted"), "1 inserted");
  EXPECT_EQ(create.dialog.draft().fid, "QMF1.ME0.KEY10.CLIP.SET");
  EXPECT_THAT(create.values(), ElementsAre("127.500000"));
  EXPECT_EQ(create.dialog.mode(), InsertMode::kAppend);
}

TEST(CreateCommandDialogTest, ChoicesAreStoredAsTheirValues) {
  CreateCommand create;
  create.chooseFunction("key2", "type", "ME 1 Key 2 Type");
  EXPECT_TRUE(create.user.control<QLineEdit>("value").isReadOnly());
  EXPECT_EQ(create.user.control<QLineEdit>("value").placeholderText(), "");
  create.user.control<QLineEdit>("search1").setFocus();
  create.user.key(Qt::Key_P, Qt::AltModifier);
  EXPECT_EQ(create.user.focus(), "parameters");
  create.user.key(Qt::Key_V, Qt::AltModifier);
  EXPECT_EQ(create.user.focus(), "choices");
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
  QSignalSpy drawn(found.model(), &QAbstractItemModel::dataChanged);
  create.user.toggle("showRaw");
  EXPECT_EQ(drawn.count(), 1);
  EXPECT_THAT(create.user.rows("parameters"), ElementsAre("TYPE\tLUM", "SOURCE\t144"));
  EXPECT_EQ(create.user.rows("found")[1], "ME1 - KEY2 - TYPE - SET");
  QTest::mouseClick(found.viewport(), Qt::LeftButton, Qt::ControlModifier,
                    found.visualRect(found.currentIndex()).center());
  create.refusal = "The macro is gone";
  create.user.click("insertSelected");
  EXPECT_THAT(create.site.messages.take(), ElementsAre(create.refusal));
  EXPECT_TRUE(create.dialog.isVisible());
  create.refusal.clear();
  create.user.click("keepOpen");
  create.user.click("insertSelected");
  EXPECT_TRUE(create.dialog.isVisible() && create.dialog.stays());
  EXPECT_THAT(create.values(), ElementsAre("LUM", "144"));
  EXPECT_EQ(create.dialog.mode(), InsertMode::kAtPosition);
}

TEST(CreateCommandDialogTest, TypedTextIsFilteredAndStoredAtEveryKey) {
  CreateCommand create(false);
  const DialogDriver& user = create.user;
  create.chooseFunction("rate", "me1", "ME 1 Rate");
  EXPECT_FALSE(user.enabled("insertStart"));
  const struct {
    const char *parameter, *pasted, *field;
    int beeps;
    const char* stored;
  } cases[] = {{"Rate", "1a2b", "12", 2, "12"}, {"Rate", "-60", "-50", 1, "-50"},
               {"Rate", "", "", 0, "0"},        {"Ease", ",5", "0.5", 0, "1"},
               {"Ease", "50", "50", 0, "128"},  {"Ease", "\u00e47", "7", 1, "18"}};
  for (const auto& test : cases) {
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
  for (const auto& [key, row] :
       {std::pair{Qt::Key_Down, 1}, {Qt::Key_Down, 1}, {Qt::Key_Up, 0}, {Qt::Key_Up, 0}}) {
    user.control<QWidget>("value").setFocus();
    user.key(key);
    EXPECT_EQ(user.selectedRow("parameters"), row);
    EXPECT_EQ(user.control<QLineEdit>("value").selectedText().toStdString(), user.field("value"));
  }
  const std::pair<const char*, const char*> typed[] = {{"7", "7"}, {"1000", "999"}, {"5x", "5"}};
  for (const auto& [keys, field] : typed) {
    const std::string before = user.field("value");
    user.type("value", keys);
    EXPECT_EQ(user.field("value"), field);
    user.key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(user.field("value"), before) << "undone: " << keys;
    EXPECT_EQ(user.rows("parameters")[0], "Rate\t" + before);
  }
  user.type("value", "7");
  user.control<QLineEdit>("value").insert(QStringLiteral("1x"));
  EXPECT_EQ(user.field("value"), "71");
  user.key(Qt::Key_Home);
  QTest::keyClicks(create.dialog.focusWidget(), "2");
  EXPECT_EQ(user.control<QLineEdit>("value").cursorPosition(), 3) << "behind the 271 that the panel is told";
  create.beeps.take();
  user.type("value", "-");
  user.control<QWidget>("found").setFocus();
  EXPECT_EQ(user.field("value"), "0");
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
  EXPECT_TRUE(create.user.control<QAbstractButton>("standard50").isChecked());
  EXPECT_THAT(create.user.label("timecodeHelp"), testing::EndsWith("Frames from 0 to 24"));
  create.user.type("value", "10:20:30:29x");
  EXPECT_EQ(create.user.field("value"), "10:20:30:24");
  EXPECT_EQ(create.beeps.take(), 2);
  create.user.toggle("standard60");
  EXPECT_EQ(create.frameRate, 30);
  EXPECT_THAT(create.user.label("timecodeHelp"), testing::EndsWith("Frames from 0 to 29"));
  create.user.type("value", "10:20:30.29");
  EXPECT_EQ(create.beeps.take(), 0);
  create.user.click("insertEnd");
  EXPECT_THAT(create.values(), ElementsAre(std::to_string(0x50203029)));
}

TEST(CreateCommandDialogTest, CategoriesAndSubgroupsNarrowStepByStep) {
  CreateCommand create;
  const DialogDriver& user = create.user;
  const auto empty = [&create] {
    return create.why("subgroup1") + '|' + create.why("subgroup2") + '|' + create.why("subgroup3");
  };
  EXPECT_EQ(empty(), "choose a category|choose on the left|choose on the left");
  EXPECT_EQ(create.why("results2"), "type above");
  user.type("search2", "zzz");
  EXPECT_EQ(create.why("results2"), "nothing found");
  user.click("clear2");
  user.toggle("me");
  EXPECT_EQ(empty(), "|choose on the left|choose on the left");
  EXPECT_THAT(user.rows("found"), IsEmpty());
  user.choose("subgroup1", "ME 1");
  EXPECT_THAT(user.rows("found"), SizeIs(25));
  EXPECT_EQ(empty(), "||choose on the left");
  user.choose("subgroup2", "RATE");
  EXPECT_EQ(empty(), "||nothing more to choose");
  user.choose("subgroup2", "KEY3");
  EXPECT_THAT(user.rows("subgroup3"), ElementsAre("CLIP", "TYPE"));
  user.choose("subgroup3", "CLIP");
  EXPECT_THAT(user.rows("found"), ElementsAre("ME 1 Key 3 Clip Set"));
  user.choose("found", "ME 1");
  user.type("search5", "set");  // what was chosen is still among those found
  EXPECT_EQ(user.label("ready"), kMissing);
  user.click("me");  // again: nothing is begun anew
  EXPECT_EQ(user.label("ready"), kMissing);
  user.toggle("showIncrements");
  EXPECT_THAT(user.rows("subgroup3"), ElementsAre("CLIP"));
  EXPECT_THAT(user.rows("found"), IsEmpty());
  EXPECT_EQ(user.label("ready"), "");
  user.click("clear5");
  EXPECT_EQ(user.field("search5"), "");
  EXPECT_THAT(user.rows("found"), ElementsAre("ME 1 Key 3 Clip Increment"));
  user.click("aux");
  EXPECT_THAT(user.rows("found"), IsEmpty());
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
  user.click("showRaw");
  user.choose("found", "MACRO - RUN");
  EXPECT_THAT(user.rows("parameters"), ElementsAre("REG\t"));
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
  ASSERT_TRUE(create.panel.client->connect("panel"));
  create.connected = true;
  user.click("updateData");  // no function is chosen
  create.chooseDestination(1);
  create.chooseFunction("key4", "type", "ME 1 Key 4 Type");
  user.choose("parameters", "Source");
  create.panel.transport->take();
  user.click("updateData");
  EXPECT_THAT(create.panel.transport->take(), ElementsAre("subscribe QMF2.ME1.KEY4.TYPE"));
  user.choose("parameters", "Type");
  std::thread([&] { create.panel.value("QMF2.ME1.KEY4.TYPE", "nonsense"); }).join();
  QTRY_COMPARE(user.rows("parameters")[1], "Source\tnonsense");
  // One question, one answer; the user's own entry is not overwritten by what the panel says later.
  user.choose("parameters", "Source");
  user.choose("choices", "Camera 1");
  std::thread([&] { create.panel.value("QMF2.ME1.KEY4.TYPE", "5"); }).join();
  QApplication::processEvents();
  EXPECT_EQ(user.rows("parameters")[1], "Source\tCamera 1");
  // The value is known by now and comes at once; another function gives the question up.
  user.click("updateData");
  user.choose("found", "PP Key 4 Type");
  QApplication::processEvents();
  EXPECT_THAT(user.rows("parameters"), ElementsAre("Type\t", "Source\t"));
  // Of a line that is gone nothing is waited for in silence.
  user.click("updateData");
  create.panel.status(kPanelNotConnected);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !create.site.messages.texts.empty(); }));
  user.click("updateData");
  EXPECT_THAT(create.site.messages.take(), SizeIs(2));
}

// By its key and by a click on the right; of the command as it is filled in by now.
TEST(CreateCommandDialogTest, OffersWhereWhatIsChosenIsUsed) {
  struct Asked : EditorFixture {
    std::vector<std::string> told;
    Asked() {
      context.addWhereUsed = [this](QMenu& menu, const MacroCommand& command, QDialog&) {
        menu.addAction("entry");
        told.push_back(command.fid + '/' + command.workplace);
        for (const auto& parameter : command.parameters)
          told.back() += ' ' + parameter.name + '=' + parameter.value;
      };
    }
  } asked;
  CreateCommandDialog dialog(asked.context, 3, true);
  const DialogDriver user(dialog);
  user.key(Qt::Key_U, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_THAT(asked.told, IsEmpty()) << "nothing is chosen";
  user.type("words", "clip key 3");
  user.key(Qt::Key_Return);
  user.type("value", "50");
  user.key(Qt::Key_U, Qt::ControlModifier | Qt::ShiftModifier);
  auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_NE(menu, nullptr);
  EXPECT_EQ(menu->activeAction(), menu->actions().constFirst());
  menu->close();
  emit user.control<QListView>("found").customContextMenuRequested({5, 5});
  QApplication::activePopupWidget()->close();
  const std::string expected = "QMF1.ME0.KEY3.CLIP.SET/3 LEVEL=127.500000";
  EXPECT_THAT(asked.told, ElementsAre(expected, expected));
}

// The first record of a name is what is written, whichever row of it is chosen.
TEST(CreateCommandDialogTest, ANameOfBothFilesIsTheFirstOnes) {
  FunctionTemplate older, panels;
  older.name = panels.name = "DUP.SET";
  older.description = "Older", panels.description = "Panel";
  older.integers.emplace_back().name = "A";
  panels.floats.emplace_back().name = "B";
  older.source = FunctionSource::kOlderFamily, panels.source = FunctionSource::kPanel;
  FunctionDictionary both;
  both.add(older);
  both.add(panels);
  CreateCommand create(true, 1, both);
  create.chooseDestination(4);
  create.user.choose("found", "Panel");
  create.user.type("value", "0");
  create.user.key(Qt::Key_E, Qt::AltModifier);
  ASSERT_THAT(create.dialog.draft().parameters, SizeIs(1));
  EXPECT_EQ(create.dialog.draft().fid + ' ' + create.dialog.draft().parameters[0].name, "PANEL.DUP.SET A");
  MultipleCommands many(both, 1);
  many.append({both.function(0), both.function(1)});
  many.setDestination(Destination::mainframe(2));
  for (const int row : {0, 1}) EXPECT_EQ(many.at(row).draft.parameters[0].name, "A");
  EXPECT_EQ(many.at(0).draft.fid + ' ' + many.at(1).draft.fid, "QMF2.DUP.SET PANEL.DUP.SET");
}

TEST(CreateCommandDialogTest, OddDictionariesOpenAndCancel) {
  const FunctionDictionary nothing;
  CreateCommand empty(true, 4, nothing);
  EXPECT_EQ(empty.user.control<QComboBox>("workplace").currentIndex(), 3);
  empty.user.click("me");
  empty.user.choose("subgroup1", "PP");
  empty.user.type("search1", "x");
  empty.user.key(Qt::Key_Return);
  empty.user.key(Qt::Key_Escape);
  EXPECT_EQ(empty.dialog.result(), QDialog::Rejected);

  CreateCommand many;
  many.chooseFunction("many", "many", "Many");
  EXPECT_EQ(many.user.label("ready"), kReady);  // all are optional
  const auto& value = many.user.control<QLineEdit>("value");
  EXPECT_EQ(value.placeholderText(), "(optional)");
  EXPECT_EQ(value.accessibleDescription(), "This parameter may stay empty.");
  EXPECT_TRUE(value.toolTip().startsWith(value.accessibleDescription()));
  EXPECT_EQ(many.user.label("range"), "min: 10   max: 20");
  many.user.key(Qt::Key_V, Qt::AltModifier);
  QTest::keyClicks(many.dialog.focusWidget(), "1");
  EXPECT_EQ(many.user.field("value"), "10");  // the limit comes at once
  many.user.key(Qt::Key_V, Qt::AltModifier);
  EXPECT_EQ(value.selectedText(), "10") << "what is typed takes its place";
  many.user.erase("value");
  EXPECT_EQ(value.placeholderText() + value.accessibleDescription(), "") << "emptied, it holds a number";
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

}  // namespace
}  // namespace tessaly
