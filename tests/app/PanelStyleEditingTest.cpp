// Panel-style commands created and changed from the window's buttons, on the functions of the sample site.
#include <gmock/gmock.h>

#include <QComboBox>
#include <QLabel>
#include <QMenu>

#include "tests/app/WindowFixture.h"
#include "tests/editors/DialogDriver.h"
#include "windows/HitList.h"
#include "windows/SearchWindow.h"

namespace tessaly {
namespace {

using testing::ElementsAre;

class PanelStyleEditingTest : public WindowTest {
 protected:
  PanelStyleEditingTest() {
    fixture_.site.write(macroPath(990), R"(<macro name="m"><data>
      <cmd fid="QMF1.ME1.KEY1.ON.SET" workplace="1"><param name="STATE" value="0"/></cmd></data></macro>)");
    open(a_, "990");
  }
  // fid, workplace and values of the working copy's commands.
  [[nodiscard]] std::vector<std::string> stored() {
    std::vector<std::string> result;
    for (const MacroCommand& command : commandsOf(workingCopyPath(Pane::kA))) {
      result.push_back(command.fid + " " + command.workplace);
      for (const MacroParameter& parameter : command.parameters) result.back() += " " + parameter.value;
    }
    return result;
  }
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
    EXPECT_EQ(selected(a_.macros).substr(0, 3), "990");
    dialog.reject();
  });
  WindowDriver::waitFor([&] { return driver().list(a_.commands).selectedRow() >= 0; }, "the command");
  EXPECT_THAT(selected(a_.commands), testing::HasSubstr("Clip"));
}

TEST_F(PanelStyleEditingTest, CommandsArePlacedAsTheirButtonsSay) {
  const std::pair<const char*, const char*> commands[] = {
      {"10", "insertEnd"}, {"20", "insertSelected"}, {"30", "insertStart"}};
  for (const auto& [value, button] : commands) {
    driver().clickRow(a_.commands, static_cast<int>(stored().size()) - 1);
    driver().press(a_.newCorvane, [value = value, button = button](QDialog& dialog) {
      const DialogDriver user(dialog);
      user.type("words", "ME2.KEY1.CLIP.SET");
      user.key(Qt::Key_Return);
      user.type("value", value);
      user.click(button);
    });
  }
  const std::string clip = "QMF1.ME2.KEY1.CLIP.SET 1 0.";
  EXPECT_THAT(stored(),
              ElementsAre(clip + "300000", "QMF1.ME1.KEY1.ON.SET 1 0", clip + "200000", clip + "100000"));
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

}  // namespace
}  // namespace tessaly
