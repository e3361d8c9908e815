#include <gmock/gmock.h>
#include <thread>

#include <QComboBox>
#include <QPushButton>

#include "editors/MultipleCommandsDialog.h"
#include "model/MacroFile.h"
#include "tests/editors/DialogDriver.h"
#include "tests/link/FakeTransport.h"
#include "tests/support/TestSite.h"
#include "tests/support/LoadCommands.h"

namespace tessaly {
namespace {

using testing::ElementsAre;

constexpr const char* kMacro = R"(c:\macro.mac)";

FunctionTemplate function(const char* name, const char* sid, const char* group) {
  FunctionTemplate made;
  made.name = made.description = name;
  made.sid = sid;
  made.group = group;
  made.source = FunctionSource::kOlderFamily;
  return made;
}

// AUX1 owns a source, a level and a function without parameters; RAM1 one of the panel's own functions.
struct MultipleCommandsTest : testing::Test {
  MultipleCommandsTest() {
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
          function("INPUT7.LUMA", "INPUT7.LUMA", "YUV_INP_CORR.INPUT7")})
      dictionary.add(std::move(made));
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

  // Into the macro file; fails from call `failAt` on.
  MultipleCommandsDialog::Inserter inserter() {
    return [this](const CommandDraft& draft, int workplace, int position, InsertMode mode) {
      return calls++ < failAt && insertCommand(site.access(), kMacro, position, draft, workplace, mode);
    };
  }
  std::string status() { return driver.label("status"); }
  std::string caption(const char* name) { return driver.control<QPushButton>(name).text().toStdString(); }
  void select(const std::vector<int>& rows) { select(driver, rows); }
  static void select(const DialogDriver& user, const std::vector<int>& rows) {
    auto& list = user.control<QListView>("commands");
    list.clearSelection();
    for (const int row : rows)
      QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::ControlModifier,
                        list.visualRect(list.model()->index(row, 0)).center());
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

  TestSite site;
  FunctionDictionary dictionary;
  DecodingLists lists{site.root};
  std::vector<PanelSource> sources{{"Six", "INPUT6", ""}, {"Seven", "INPUT7", ""}};
  FakePanel panel;
  bool connected = true;
  int frameRate = 25, calls = 0, failAt = 1000;
  std::vector<std::string> asked;
  QString title;
  EditorContext context{
      site.access(), dictionary, lists, sources, *panel.client, [this] { return connected; }, frameRate};
  MultipleCommandsDialog dialog{context, 3, 1, inserter()};
  DialogDriver driver{dialog};
};

TEST_F(MultipleCommandsTest, DestinationsAddWhatTheyOwn) {
  EXPECT_EQ(caption("insertEnd"), "Insert Selected at End");
  driver.click("AUX1");
  driver.click("RAMCHAN1");
  driver.click("AUX2");
  driver.click("AUX1");
  EXPECT_THAT(driver.rows("commands"),
              ElementsAre("AUX1.SOURCE.SET", "AUX1.LEVEL.SET", "AUX1.CUT", "RAM1.LOOP.SET", "AUX1.SOURCE.SET",
                          "AUX1.LEVEL.SET", "AUX1.CUT"));
  EXPECT_EQ(driver.label("total"), "Total commands: 7");
  select({0, 2, 4, 6});
  driver.click("removeSelected");
  driver.click("raw");
  EXPECT_THAT(driver.rows("commands"), ElementsAre("AUX1 - LEVEL - SET Parameter: level: \"\"",
                                                   "RAM1 - LOOP - SET Parameter: loop: \"\"",
                                                   "AUX1 - LEVEL - SET Parameter: level: \"\""));
}

TEST_F(MultipleCommandsTest, CorrectionsAskForTheInput) {
  struct Case {
    const char* button;
    const char* title;
    Qt::Key key;
    std::size_t total;
  };
  for (const Case& c : {Case{"RGB Input Correction", "Select Input for RGB Correction", Qt::Key_Escape, 0},
                        Case{"RGB Input Correction", "Select Input for RGB Correction", Qt::Key_Return, 1},
                        Case{"YUV Input Correction", "Select Input for YUV Correction", Qt::Key_Return, 2}}) {
    answerNext(dialog, c.key);
    driver.click(c.button);
    EXPECT_EQ(title, c.title);
    EXPECT_EQ(driver.rows("commands").size(), c.total) << c.title;
  }
}

TEST(MultipleCommandTexts, StatusFollowsSelectionAndMissingValues) {
  const std::pair<Chosen, const char*> cases[] = {
      {{false, 0, 0}, ""},
      {{false, 40, 0}, "40 COMMANDS READY FOR INSERTION. . .. . ."},
      {{true, 2, 0}, "2 SELECTED COMMANDS READY FOR INSERTION. . .. . ."},
      {{true, 1, 1}, "The parameters of the selected command is not yet updated. . .  ( ----> )"},
      {{true, 3, 1}, "The parameters of one selected command are not yet updated. . .  ( ----> )"},
      {{true, 3, 2}, "The parameters of 2 selected commands are not yet updated. . .  ( ----> )"},
      {{false, 1, 1}, "The parameters of one command is not yet updated. . .  ( ----> )"},
      {{false, 3, 1}, "The parameters of one command is not yet updated. . .  ( ----> )"},
      {{false, 9, 7}, "The parameters of 7 commands are not yet updated. . .  ( ----> )"},
  };
  for (const auto& [chosen, text] : cases) EXPECT_EQ(statusText(chosen), text);
  EXPECT_EQ(insertingText(1, 2), "Inserting No. 1 of 2...");
}

TEST_F(MultipleCommandsTest, AnswersFillTheFirstParameter) {
  driver.control<QComboBox>("destination").setCurrentIndex(1);
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
  EXPECT_TRUE(until("The parameters of 2 commands are not yet updated. . .  ( ----> )"));
  answer("QMF2.AUX1.LEVEL", "12");  // late, still welcome
  answer("PANEL.RAM1.LOOP", "1");
  EXPECT_EQ(status(), "4 COMMANDS READY FOR INSERTION. . .. . .");
  driver.click("tabs");
  EXPECT_THAT(driver.rows("commands"), ElementsAre("AUX1.SOURCE.SET\t Third", "AUX1.LEVEL.SET\tLevel 12",
                                                   "AUX1.CUT", "RAM1.LOOP.SET\t On"));
  write("");
  driver.click("insertEnd");
  EXPECT_TRUE(QTest::qWaitFor([this] { return !dialog.isVisible(); }));
  EXPECT_THAT(written(),
              ElementsAre("QMF2.AUX1.SOURCE.SET/3 shift=3 source=", "QMF2.AUX1.LEVEL.SET/3 level=12",
                          "QMF2.AUX1.CUT/3", "PANEL.RAM1.LOOP.SET/3 loop=1"));
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
              ElementsAre("AUX1.SOURCE.SET", "AUX1.LEVEL.SET ==> Level 5", "AUX1.CUT", "AUX1.SOURCE.SET",
                          "AUX1.LEVEL.SET", "AUX1.CUT"));
  driver.click("updateParameters");
  dialog.reject();  // with questions open
  EXPECT_EQ(dialog.insertedCount(), 0);
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
    write(R"(<cmd fid="QMF1.A" workplace="1"/><cmd fid="QMF1.B" workplace="1"/>)");
    MultipleCommandsDialog fresh(context, 3, 1, inserter());
    const DialogDriver user(fresh);
    user.click("AUX1");
    answerNext(fresh, Qt::Key_Return);
    user.click("RGB Input Correction");
    select(user, {3, 2});
    EXPECT_EQ(user.control<QPushButton>(chosen.button).text(), chosen.caption);
    user.click(chosen.button);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !fresh.isVisible(); }));
    EXPECT_EQ(fresh.result(), QDialog::Accepted);
    EXPECT_EQ(fresh.insertedCount(), 2);
    EXPECT_EQ(written(), chosen.expected) << chosen.button;
  }
}

TEST_F(MultipleCommandsTest, FailedInsertionKeepsTheRest) {
  write("");
  driver.click("AUX1");
  driver.click("AUX1");
  select({2, 5});
  EXPECT_TRUE(driver.enabled("insertPosition"));
  failAt = 1;
  driver.click("insertEnd");
  EXPECT_TRUE(QTest::qWaitFor([this] { return driver.enabled("work"); }));
  EXPECT_TRUE(dialog.isVisible());
  EXPECT_EQ(dialog.insertedCount(), 1);
  EXPECT_EQ(driver.rows("commands").size(), 5U);
  EXPECT_EQ(written().size(), 1U);
  MultipleCommandsDialog unselected(context, 1, -1, inserter());
  const DialogDriver user(unselected);
  user.click("RAMCHAN1");
  EXPECT_FALSE(user.enabled("insertPosition"));
}

}  // namespace
}  // namespace tessaly
