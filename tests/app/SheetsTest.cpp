// "Print..." and "Export..." of the menu "Macro", for what the pane with the keyboard shows.
#include <gmock/gmock.h>

#include <QFileDialog>
#include <QLabel>

#include "tests/app/WindowFixture.h"
#include "windows/ScopeBox.h"
#include "windows/SheetPreview.h"
#include "windows/SheetWindow.h"

namespace tessaly {
namespace {

using testing::HasSubstr;

class SheetsTest : public WindowTest {};

TEST_F(SheetsTest, MenuPutsThePanesMacroOnPaper) {
  open(a_);
  shortcut(Qt::Key_P, Qt::ControlModifier);
  auto* window = fixture_.window->findChild<SheetWindow*>();
  ASSERT_NE(window, nullptr);
  auto& preview = *window->findChild<SheetPreview*>();
  WindowDriver::waitFor([&] { return preview.pageCount() > 0; }, "the pages");
  EXPECT_THAT(window->findChild<ScopeBox*>()->currentText().toStdString(), HasSubstr("001 - "));
  window->close();
  WindowDriver::waitFor([&] { return fixture_.window->findChild<SheetWindow*>() == nullptr; }, "its end");
  // The other entry asks for a file once the pages are there.
  bool asked = false;
  WindowDriver::answerNext([&](QDialog& dialog) {
    asked = qobject_cast<QFileDialog*>(&dialog) != nullptr;
    dialog.reject();
  });
  action("export").trigger();
  WindowDriver::waitFor([&] { return asked; }, "the question for a file");
}

}  // namespace
}  // namespace tessaly
