// Panel-style commands created and changed from the window's buttons, on the functions of the sample site.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>
#include <QMenu>

#include "model/MacroFile.h"
#include "tests/app/WindowFixture.h"
#include "tests/editors/DialogDriver.h"
#include "tests/support/LoadCommands.h"
#include "windows/HitList.h"
#include "windows/SearchWindow.h"

namespace tessaly {
namespace {

using testing::ElementsAre;

constexpr const char* kFolder = "c:\\programme\\rv48\\appli\\Evening News\\CP1\\macroWP1\\";
constexpr const char* kTemp = "c:\\programme\\RV48\\bin\\MacroFid\\tempA.mac";

class PanelStyleEditingTest : public testing::Test {
 protected:
  PanelStyleEditingTest() : fixture_(offlineClient()) {
    fixture_.site.write(macroFile(kFolder, 990), R"(<macro name="m"><data>
      <cmd fid="QMF1.ME1.KEY1.ON.SET" workplace="1"><param name="STATE" value="0"/></cmd></data></macro>)");
    driver().choose(a_.applications, "Evening News");
    driver().choose(a_.macros, "990");
  }
  [[nodiscard]] WindowDriver& driver() { return *fixture_.driver; }
  // fid, workplace and values of the working copy's commands.
  [[nodiscard]] std::vector<std::string> stored() {
    MacroCommands commands;
    EXPECT_TRUE(loadCommands(fixture_.site.access(), kTemp, commands));
    std::vector<std::string> result;
    for (const MacroCommand& command : commands) {
      result.push_back(command.fid + " " + command.workplace);
      for (const MacroParameter& parameter : command.parameters) result.back() += " " + parameter.value;
    }
    return result;
  }

  WindowFixture fixture_;
  const PaneDescriptor::ControlIds& a_ = WindowFixture::ids(Pane::kA);
};

// A search that opened what it found at once would take away the macro that the command is built for.
TEST_F(PanelStyleEditingTest, WhereUsedIsAskedFromTheDialogAndOpensBehindIt) {
  driver().press(a_.newCorvane, [&](QDialog& dialog) {
    const DialogDriver user(dialog);
    user.type("words", "ME1.KEY1.CLIP.SET");
    user.key(Qt::Key_Return);
    QTest::keyClick(&dialog, Qt::Key_U, Qt::ControlModifier | Qt::ShiftModifier);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (menu == nullptr) throw std::runtime_error("no menu");
    QTest::keyClick(menu, Qt::Key_Return);
    auto* search = dialog.findChild<SearchWindow*>();
    if (search == nullptr) throw std::runtime_error("no search");
    EXPECT_EQ(search->findChild<QLineEdit*>("query")->text(), "function:ME1.KEY1.CLIP.SET");
    auto& hits = *search->findChild<HitList*>();
    WindowDriver::waitFor([&] { return hits.rows().hits() > 0; }, "the search");
    QTest::keyClick(&hits, Qt::Key_Return);
    EXPECT_EQ(search->findChild<QLabel*>("outcome")->text(), "It is opened once the dialog is closed.");
    QApplication::processEvents();
    EXPECT_EQ(driver().list(a_.macros).selected()->text.substr(0, 3), "990");
    dialog.reject();
  });
  WindowDriver::waitFor([&] { return driver().list(a_.commands).selectedRow() >= 0; }, "the command");
  EXPECT_THAT(driver().list(a_.commands).selected()->text, testing::HasSubstr("Clip"));
}

TEST_F(PanelStyleEditingTest, CommandsAreFoundFilledAndPlaced) {
  driver().clickRow(a_.commands, 0);
  const auto create = [this](const char* segment, const char* found, const char* button,
                             const std::function<void(const DialogDriver&)>& fill) {
    driver().press(a_.newCorvane, [&](QDialog& dialog) {
      const DialogDriver user(dialog);
      user.type("search1", "ME2");
      user.choose("results1", "ME2");
      user.type("search2", segment);
      user.choose("results2", segment);
      user.choose("found", found);
      EXPECT_EQ(user.label("ready"), "Parameters are missing...");
      fill(user);
      EXPECT_EQ(user.label("ready"), "COMMAND READY FOR INSERTION");
      user.click(button);
    });
  };
  create("CLIP", "ME 2 Key 1 Clip Set", "insertEnd",
         [](const DialogDriver& user) { user.type("value", "150"); });
  EXPECT_THAT(stored().back(), "QMF1.ME2.KEY1.CLIP.SET 1 1.000000")
      << "the limit takes the place of what is above";
  driver().clickRow(a_.commands, 1);
  create("ON", "ME 2 Key 1 On", "insertSelected",
         [](const DialogDriver& user) { user.choose("choices", "On"); });
  create("FILL", "ME 2 Key 1 Fill", "insertStart",
         [](const DialogDriver& user) { user.choose("choices", "Input 7"); });
  EXPECT_THAT(stored(), ElementsAre("QMF1.ME2.KEY1.FILL.SET 1 7", "QMF1.ME1.KEY1.ON.SET 1 0",
                                    "QMF1.ME2.KEY1.ON.SET 1 1", "QMF1.ME2.KEY1.CLIP.SET 1 1.000000"));
  driver().press(a_.discardChanges);
  EXPECT_EQ(driver().texts(a_.commands).size(), 1U);
}

TEST_F(PanelStyleEditingTest, ACommandIsChangedInItsPlace) {
  driver().clickRow(a_.commands, 0);
  driver().press(a_.modifyCommand, [](QDialog& dialog) { DialogDriver(dialog).click("cancel"); });
  EXPECT_THAT(stored(), ElementsAre("QMF1.ME1.KEY1.ON.SET 1 0"));
  driver().press(a_.modifyCommand, [](QDialog& dialog) {
    const DialogDriver user(dialog);
    user.choose("segment1", "ME 3");
    QTest::keyClick(&user.control<QComboBox>("destination"), Qt::Key_End);
    user.choose("choices", "On");
    user.click("modify");
  });
  EXPECT_THAT(stored(), ElementsAre("QMF4.ME3.KEY1.ON.SET 1 1"));
  EXPECT_EQ(driver().list(a_.commands).selectedRow(), 0);
}

TEST_F(PanelStyleEditingTest, ManyAtOnceNeedAPanel) {
  driver().press(a_.newMultiple);
  EXPECT_THAT(
      fixture_.site.messages.take(),
      ElementsAre(
          "Creating Multiple Commands is only possible when you are connected to a Corvane XL Control "
          "Panel \n"));
}

}  // namespace
}  // namespace tessaly
