// Panel-style commands created and changed from the window's buttons, on the functions of the sample site.
#include <gmock/gmock.h>

#include <QLabel>
#include <QMenu>

#include "tests/app/WindowFixture.h"
#include "tests/editors/DialogDriver.h"
#include "windows/HitList.h"
#include "windows/SearchWindow.h"

namespace tessaly {
namespace {

class PanelStyleEditingTest : public WindowTest {
 protected:
  PanelStyleEditingTest() {
    fixture_.site.write(macroPath(990), R"(<macro name="m"><data>
      <cmd fid="QMF1.ME1.KEY1.ON.SET" workplace="1"><param name="STATE" value="0"/></cmd></data></macro>)");
    open(a_, "990");
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

}  // namespace
}  // namespace tessaly
