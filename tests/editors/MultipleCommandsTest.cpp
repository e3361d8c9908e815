#include <gmock/gmock.h>
#include <thread>

#include <QComboBox>
#include <QPushButton>
#include <QSignalSpy>

#include "editors/MultipleCommandsDialog.h"
#include "model/MacroFile.h"
#include "tests/editors/EditorFixture.h"
#include "tests/support/LoadCommands.h"
#include "tests/support/Told.h"

namespace tessaly {
namespace {

using testing::ElementsAre;

constexpr const char* kMacro = R"(c:\macro.mac)";
constexpr const char* kNoneReady = "0 COMMANDS READY FOR INSERTION. . .. . .";
constexpr const char* kOneMissing = "The parameters of one command is not yet updated. . .  ( ----> )";

FunctionTemplate function(const char* name, const char* sid, const char* group) {
  FunctionTemplate made;
  made.name = made.description = name;
  made.sid = sid;
  made.group = group;
  made.source = FunctionSource::kOlderFamily;
  return made;
}

// AUX1 owns a source, a level and a function without parameters; RAM1 one of the panel's own functions.
const FunctionDictionary& fewFunctions() {
  static const std::unique_ptr<FunctionDictionary> kMade = [] {
    auto dictionary = std::make_unique<FunctionDictionary>();
    FunctionTemplate source = function("AUX1.SOURCE.SET", "AUX1.SOURCE", "AUX1");
    source.inputs = {{"source", "Source", ""}};
    source.enums = {{"shift", "Shift", "", false, {{"3", "Third"}}}};
    FunctionTemplate level = function("AUX1.LEVEL.SET", "AUX1.LEVEL", "AUX1");
    level.integers = {{"level", "Level ", ""}};
    FunctionTemplate ram = function("RAM1.LOOP.SET", "RAM1.LOOP", "RAM1");
    ram.source = FunctionSource::kPanel;
    ram.enums = {{"loop", "Loop", "", false, {{"1", "On"}}}};
    for (FunctionTemplate made :
         {source, function("INC.STEP", "", ""), level, function("AUX1.CUT", "AUX1.CUT", "AUX1"), ram,
          function("INPUT7.GAIN", "INPUT7.GAIN", "RGB_INP_CORR.INPUT7"),
          function("INPUT7.LUMA", "INPUT7.LUMA", "YUV_INP_CORR.INPUT7"),
          function("ME1.AUTO", "", "ME1.TRANSI")})
      dictionary->add(std::move(made));
    return dictionary;
  }();
  return *kMade;
}

struct MultipleCommandsTest : testing::Test, EditorFixture {
  MultipleCommandsTest() : EditorFixture(fewFunctions()) {
    sources = {{"Six", "INPUT6", ""}, {"Seven", "INPUT7", ""}};
    connected = true;
    panel.status(kPanelConnected);
  }

  void write(const std::string& commands) {
    site.write(kMacro, "<macro name=\"m\"><data>" + commands + "</data></macro>");
  }
  std::vector<std::string> written() {
    MacroCommands commands;
    EXPECT_TRUE(loadCommands(site.access(), kMacro, commands));
    std::vector<std::string> texts;
    for (const MacroCommand& command : commands) {
      texts.push_back(command.fid + "/" + command.workplace);
      for (const MacroParameter& parameter : command.parameters)
        texts.back() += " " + parameter.name + "=" + parameter.value;
    }
    return texts;
  }

  // Into the macro file, unless there is a refusal.
  EditorContext taking(const MultipleCommandsDialog& from) {
    EditorContext made = context;
    made.take = [this, &from] {
      told = from.findChild<QLabel*>(QStringLiteral("status"))->text().toStdString();
      for (const InsertCommands& run : refusal.empty() ? from.runs() : std::vector<InsertCommands>())
        for (int i = 0; const CommandDraft& draft : run.drafts)
          EXPECT_TRUE(
              insertCommand(site.access(), kMacro, run.position + i++, draft, run.workplace, run.mode));
      return refusal;
    };
    return made;
  }
  std::string status() { return driver.label("status"); }
  std::string caption(const char* name) {
    return driver.control<QPushButton>(name).text().remove(QLatin1Char('&')).toStdString();
  }
  void select(const std::vector<int>& rows) { select(driver, rows); }
  static void select(const DialogDriver& user, const std::vector<int>& rows) {
    auto& list = user.control<QListView>("commands");
    list.clearSelection();
    for (const int row : rows)
      QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::ControlModifier, placeOf(list, row));
  }
  static QPoint placeOf(const QListView& list, int row) {
    return {10, list.visualRect(list.model()->index(row, 0)).center().y()};
  }
  // Picks the last source of the dialog that is about to open, then presses `key`.
  void answerNext(QDialog& parent, Qt::Key key) {
    QTimer::singleShot(0, &parent, [this, key] {
      QWidget* asking = QApplication::activeModalWidget();
      title = asking->windowTitle();
      auto* list = asking->findChild<QListView*>();
      QTest::keyClick(list, Qt::Key_End);
      QTest::keyClick(list, key);
    });
  }
  // In the "Modify command" that `open` brings up: gives the source and presses the button.
  template <class Open>
  void completeSource(Open open, const char* button) {
    DialogDriver::answerNext([this, button](QDialog& asking, const DialogDriver& user) {
      title = asking.windowTitle();
      user.choose("parameters", "Source");
      user.choose("choices", "Seven");
      user.click(button);
    });
    QApplication::setActiveWindow(&dialog);
    auto& list = driver.control<QListView>("commands");
    list.setFocus();
    open(list);
  }
  // From the panel's own thread.
  void answer(const char* name, const char* value) {
    std::thread([&] { panel.value(name, value); }).join();
    QApplication::processEvents();
  }
  bool until(const std::string& text) {
    return QTest::qWaitFor([&] { return status() == text; }, 10000);
  }
  // Has every question sent to the panel.
  void update(const char* lastName) {
    driver.click("updateParameters");
    const std::string wanted = std::string("subscribe ") + lastName;
    EXPECT_TRUE(QTest::qWaitFor([&] {
      for (const std::string& call : panel.transport->take()) asked.push_back(call);
      return std::count(asked.begin(), asked.end(), wanted) > 0;
    }));
  }
  bool closed() {
    return QTest::qWaitFor([this] { return !dialog.isVisible(); });
  }

  std::vector<std::string> asked;
  std::string told;
  QString title;
  MultipleCommandsDialog dialog{taking(dialog), 3, 1};
  DialogDriver driver{dialog};
};

TEST_F(MultipleCommandsTest, DestinationsAddWhatTheyOwn) {
  EXPECT_EQ(caption("insertEnd"), "Insert Selected at End");
  EXPECT_EQ(status(), kNoneReady);
  EXPECT_EQ(shutIn(dialog),
            "deselectAll insertEnd insertPosition insertStart removeSelected selectAll updateParameters; ");
  driver.click("AUX1");
  EXPECT_EQ(shutIn(dialog), "deselectAll insertEnd insertPosition insertStart removeSelected; ");
  EXPECT_THAT(toldBy(*driver.control<QListView>("commands").model()),
              ElementsAre("AUX1.SOURCE.SET [] /", "AUX1.LEVEL.SET [] /",
                          "! AUX1.CUT [! AUX1.CUT\nacts at once when the macro is run]"));
  driver.click("RAMCHAN1");
  driver.click("AUX2");
  driver.click("AUX1");
  EXPECT_THAT(driver.rows("commands"),
              ElementsAre("AUX1.SOURCE.SET", "AUX1.LEVEL.SET", "! AUX1.CUT", "RAM1.LOOP.SET",
                          "AUX1.SOURCE.SET", "AUX1.LEVEL.SET", "! AUX1.CUT"));
  EXPECT_EQ(driver.label("total"), "Total commands: 7");
  select({0, 2, 4, 6});
  EXPECT_EQ(shutIn(dialog), "insertEnd insertPosition insertStart; ");
  QTest::keyClick(&driver.control<QListView>("commands"), Qt::Key_Delete);
  driver.click("raw");
  EXPECT_THAT(driver.rows("commands"), ElementsAre("AUX1 - LEVEL - SET Parameter: level: \"\"",
                                                   "RAM1 - LOOP - SET Parameter: loop: \"\"",
                                                   "AUX1 - LEVEL - SET Parameter: level: \"\""));
}

TEST_F(MultipleCommandsTest, CorrectionsAskForTheInput) {
  const char *const rgb = "Select Input for RGB Correction", *const yuv = "Select Input for YUV Correction";
  for (const auto& [button, wanted, key, total] :
       {std::tuple{"RGB Input Correction", rgb, Qt::Key_Escape, 0U},
        {"RGB Input Correction", rgb, Qt::Key_Return, 1U},
        {"YUV Input Correction", yuv, Qt::Key_Return, 2U}}) {
    answerNext(dialog, key);
    driver.click(button);
    EXPECT_EQ(title, wanted);
    EXPECT_EQ(driver.rows("commands").size(), total) << wanted;
    EXPECT_EQ(driver.enabled("updateParameters") && driver.enabled("selectAll"), total > 0);
  }
}

TEST(MultipleCommandTexts, StatusFollowsSelectionAndMissingValues) {
  const std::pair<Chosen, const char*> cases[] = {
      {{false, 0, 0}, kNoneReady},
      {{false, 40, 0}, "40 COMMANDS READY FOR INSERTION. . .. . ."},
      {{true, 2, 0}, "2 SELECTED COMMANDS READY FOR INSERTION. . .. . ."},
      {{true, 1, 1}, "The parameters of the selected command is not yet updated. . .  ( ----> )"},
      {{true, 3, 1}, "The parameters of one selected command are not yet updated. . .  ( ----> )"},
      {{true, 3, 2}, "The parameters of 2 selected commands are not yet updated. . .  ( ----> )"},
      {{false, 1, 1}, kOneMissing},
      {{false, 3, 1}, kOneMissing},
      {{false, 9, 7}, "The parameters of 7 commands are not yet updated. . .  ( ----> )"},
  };
  for (const auto& [chosen, text] : cases) EXPECT_EQ(statusText(chosen), text);
  EXPECT_EQ(insertingText(1, 2), "Inserting No. 1 of 2...");
}

// READY was once said with a mandatory parameter empty, since the value had gone to another one.
TEST(MultipleCommandValues, TheFirstMandatoryParameterTakesTheAnswer) {
  FunctionTemplate parameters[6];
  const EnumParameter hold{"hold", "", "", false, {}}, mayHold{"hold", "", "", true, {}};
  const IntegerParameter rate{"rate", "", "", true}, clip{"clip", "", "", false};
  const InputParameter input{"input", "", "", false};
  parameters[0].enums = {mayHold}, parameters[0].inputs = {input};
  parameters[1].enums = {hold}, parameters[1].inputs = {input};
  parameters[2].enums = {mayHold}, parameters[2].integers = {rate};
  parameters[3].integers = {clip}, parameters[3].timecodes = {{"start", "", "", true}};
  parameters[4].integers = {clip};
  struct Case {
    const char* sid;
    std::vector<std::string> filled;  // by the answers "7" and "8"
    bool missingBefore, missingAfter;
  };
  const Case cases[] = {{"SID", {"", "8"}, true, false}, {"SID", {"8", ""}, true, true},
                        {"SID", {"8", ""}, true, false}, {"SID", {"8", ""}, true, true},
                        {"", {""}, true, true},          {"SID", {}, false, false}};
  for (std::size_t i = 0; i < std::size(cases); ++i) {
    SCOPED_TRACE(i);
    FunctionDictionary dictionary;
    parameters[i].name = "F";
    parameters[i].source = FunctionSource::kOlderFamily;
    parameters[i].sid = cases[i].sid;
    dictionary.add(parameters[i]);
    MultipleCommands commands(dictionary, 1);
    commands.append({dictionary.function(0)});
    EXPECT_EQ(commands.at(0).missing(), cases[i].missingBefore);
    const bool takes = *cases[i].sid != '\0' && !cases[i].filled.empty();
    for (const char* value : {"7", "8"}) EXPECT_EQ(commands.takeAnswer(0, value), takes);
    std::vector<std::string> values;
    for (const auto& parameter : commands.at(0).draft.parameters) values.push_back(parameter.value);
    EXPECT_EQ(values, cases[i].filled);
    EXPECT_EQ(commands.at(0).missing(), cases[i].missingAfter);
    commands.setDestination(Destination::mainframe(2));
    EXPECT_EQ(commands.at(0).missing(), cases[i].missingBefore) << "what another mainframe told";
    CommandDraft whole = commands.at(0).draft;
    for (auto& parameter : whole.parameters) parameter.value = "9";
    commands.complete(0, whole, 5);
    EXPECT_TRUE(!commands.at(0).missing() && commands.at(0).workplace == 5) << "what the user has filled in";
  }
}

TEST_F(MultipleCommandsTest, AnswersAndTheUserCompleteTheCommands) {
  auto& destination = driver.control<QComboBox>("destination");
  destination.setCurrentIndex(1);
  driver.click("AUX1");
  driver.click("RAMCHAN1");
  EXPECT_EQ(status(), "The parameters of 3 commands are not yet updated. . .  ( ----> )");
  connected = false;
  driver.click("updateParameters");
  EXPECT_THAT(
      site.messages.take(),
      ElementsAre("Data Update is only possible when you are connected to a Corvane XL Control Panel \n"));
  connected = true;
  update("PANEL.RAM1.LOOP");
  EXPECT_THAT(asked, ElementsAre("subscribe QMF2.AUX1.SOURCE", "subscribe QMF2.AUX1.LEVEL",
                                 "subscribe PANEL.RAM1.LOOP"));
  EXPECT_EQ(status(), "Updating No 2 of 4...");
  answer("QMF2.AUX1.SOURCE", "3");
  EXPECT_EQ(status(), "Updating No 3 of 4...");
  answer("QMF2.AUX1.LEVEL", "loud");  // not a number: still awaited
  answer("PANEL.RAM1.LOOP", "");
  EXPECT_EQ(status(), "Updating No 3 of 4...");
  EXPECT_FALSE(driver.enabled("insertEnd"));
  EXPECT_TRUE(until("The parameters of 3 commands are not yet updated. . .  ( ----> )"));
  answer("QMF2.AUX1.LEVEL", "12");  // late, still welcome
  answer("PANEL.RAM1.LOOP", "1");
  EXPECT_EQ(status(), kOneMissing) << "the source has its shift only";
  EXPECT_FALSE(driver.enabled("insertEnd"));

  completeSource(
      [](QListView& list) {
        QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, placeOf(list, 0));
        QTest::mouseDClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, placeOf(list, 0));
      },
      "cancel");
  EXPECT_EQ(title, "Modify selected command  (Corvane XL Panel style)");
  select({});
  EXPECT_EQ(status(), kOneMissing);
  completeSource([](QListView& list) { QTest::keyClick(&list, Qt::Key_Return); }, "modify");
  QKeyEvent held(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier, QString(), true);
  QApplication::sendEvent(&driver.control<QListView>("commands"), &held);
  EXPECT_TRUE(dialog.isVisible()) << "an Esc that has closed the other one";
  EXPECT_EQ(status(), "4 COMMANDS READY FOR INSERTION. . .. . .");
  answer("QMF2.AUX1.SOURCE", "9");  // what the user has completed is not overwritten
  driver.click("tabs");
  EXPECT_THAT(driver.rows("commands"), ElementsAre("AUX1.SOURCE.SET\t Third\t", "AUX1.LEVEL.SET\tLevel 12",
                                                   "! AUX1.CUT", "RAM1.LOOP.SET\t On"));

  destination.setCurrentIndex(2);
  EXPECT_EQ(status(), "The parameters of 2 commands are not yet updated. . .  ( ----> )")
      << "what came from another mainframe";
  update("QMF3.AUX1.LEVEL");
  destination.setCurrentIndex(3);
  answer("QMF3.AUX1.LEVEL", "1");
  EXPECT_EQ(driver.rows("commands")[1], "AUX1.LEVEL.SET") << "an answer of the destination before";
  update("QMF4.AUX1.LEVEL");
  answer("QMF4.AUX1.SOURCE", "3");
  answer("QMF4.AUX1.LEVEL", "5");
  write("");
  refusal = "The macro is gone";
  driver.click("insertEnd");
  EXPECT_THAT(site.messages.take(), ElementsAre(refusal));
  EXPECT_TRUE(driver.enabled("work"));
  refusal.clear();
  driver.click("insertEnd");
  EXPECT_TRUE(closed());
  EXPECT_THAT(written(),
              ElementsAre("QMF4.AUX1.SOURCE.SET/3 shift=3 source=7", "QMF4.AUX1.LEVEL.SET/3 level=5",
                          "QMF4.AUX1.CUT/3", "PANEL.RAM1.LOOP.SET/3 loop=1"));
}

TEST_F(MultipleCommandsTest, EveryChangeIsSeenAtOnce) {
  driver.click("RAMCHAN1");
  QSignalSpy drawn(driver.control<QListView>("commands").model(), &QAbstractItemModel::dataChanged);
  const std::function<void()> changes[] = {
      [this] { driver.click("raw"); }, [this] { update("PANEL.RAM1.LOOP"); },
      [this] { answer("PANEL.RAM1.LOOP", "1"); },
      [this] { driver.control<QComboBox>("destination").setCurrentIndex(1); },
      [this] {
        DialogDriver::answerNext([](QDialog& /*asking*/, const DialogDriver& user) {
          user.control<QComboBox>("destination").setCurrentIndex(3);
          user.click("modify");
        });
        driver.control<QListView>("commands").setFocus();
        driver.key(Qt::Key_Down);
        driver.key(Qt::Key_Enter);
      }};
  for (const auto& change : changes) {
    drawn.clear();
    change();
    EXPECT_FALSE(drawn.isEmpty()) << &change - changes;
  }
  driver.click("AUX1");
  select({0, 3});
  write("");
  driver.click("insertStart");
  EXPECT_TRUE(closed());
  EXPECT_THAT(written(), ElementsAre("PANEL.RAM1.LOOP.SET/4 loop=1", "QMF2.AUX1.CUT/3"));
}

TEST_F(MultipleCommandsTest, ALostLineIsTold) {
  driver.click("AUX1");
  update("QMF1.AUX1.LEVEL");
  panel.status(kPanelNotConnected);
  EXPECT_TRUE(QTest::qWaitFor([this] { return !site.messages.texts.empty(); }, 10000)) << "while it waits";
  driver.click("updateParameters");
  EXPECT_THAT(site.messages.take(), testing::SizeIs(2));
}

TEST_F(MultipleCommandsTest, OnlySelectedCommandsAreUpdated) {
  driver.click("AUX1");
  driver.click("AUX1");
  select({1});
  EXPECT_EQ(status(), "The parameters of the selected command is not yet updated. . .  ( ----> )");
  update("QMF1.AUX1.LEVEL");
  driver.click("deselectAll");
  answer("QMF1.AUX1.LEVEL", "5");
  EXPECT_THAT(asked, ElementsAre("subscribe QMF1.AUX1.LEVEL"));
  EXPECT_THAT(driver.rows("commands"),
              ElementsAre("AUX1.SOURCE.SET", "AUX1.LEVEL.SET ==> Level 5", "! AUX1.CUT", "AUX1.SOURCE.SET",
                          "AUX1.LEVEL.SET", "! AUX1.CUT"));
  driver.click("updateParameters");
  dialog.reject();  // with questions open
  EXPECT_TRUE(dialog.runs().empty());
}

TEST_F(MultipleCommandsTest, BlocksKeepTheOrderOfTheList) {
  const std::string a = "QMF1.A/1", b = "QMF1.B/1", cut = "QMF1.AUX1.CUT/3", gain = "QMF1.INPUT7.GAIN/3";
  struct Case {
    const char* button;
    const char* caption;
    std::vector<std::string> expected;
  };
  const Case cases[] = {{"insertStart", "insert selected at start", {cut, gain, a, b}},
                        {"insertPosition", "insert selected at current selection", {a, cut, gain, b}},
                        {"insertEnd", "insert selected at end", {a, b, cut, gain}}};
  for (const Case& chosen : cases) {
    SCOPED_TRACE(chosen.caption);
    write(R"(<cmd fid="QMF1.A" workplace="1"/><cmd fid="QMF1.B" workplace="1"/>)");
    MultipleCommandsDialog fresh(taking(fresh), 3, 1);
    const DialogDriver user(fresh);
    user.click("AUX1");
    answerNext(fresh, Qt::Key_Return);
    user.click("RGB Input Correction");
    select(user, {3, 2});
    EXPECT_EQ(user.control<QPushButton>(chosen.button).text(), chosen.caption);
    user.click(chosen.button);
    EXPECT_EQ(fresh.result(), QDialog::Accepted);
    EXPECT_EQ(written(), chosen.expected);
  }
  MultipleCommandsDialog unselected(context, 1, -1);
  const DialogDriver user(unselected);
  answerNext(unselected, Qt::Key_Return);
  user.click("RGB Input Correction");
  EXPECT_TRUE(user.enabled("insertStart"));
  EXPECT_FALSE(user.enabled("insertPosition"));
}

// One by one, or in pieces, they would be as many steps of undo.
TEST_F(MultipleCommandsTest, ALongRunIsTakenAllTogether) {
  write("");
  for (int i = 0; i < 130; ++i) driver.click("ME1.TRANSI");
  driver.click("insertStart");
  EXPECT_THAT(dialog.runs(), testing::SizeIs(1));
  EXPECT_THAT(written(), testing::SizeIs(130));
  EXPECT_EQ(told, "Inserting No. 130 of 130...");
}

}  // namespace
}  // namespace tessaly
