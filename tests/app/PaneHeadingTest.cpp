#include <gmock/gmock.h>

#include "tests/app/WindowFixture.h"

namespace tessaly {
namespace {

class PaneHeadingTest : public WindowTest {};

// Catches a heading that nobody has told: each row is done by hand in the pane, and read at once.
TEST_F(PaneHeadingTest, FollowsWhatThePaneShows) {
  const std::string place = ", On the disk, Evening News/CP1, workplace 1, " + macroPath(1);
  const struct {
    std::function<void()> act;
    std::string heading;
  } rows[] = {{[] {}, "No macro is open, On the disk"},
              {[&] { open(a_); }, "001 - Opening titles" + place},
              {[&] { removeFirst(a_); },
               "001 - Opening titles" + place + ", unsaved changes, last change: delete 1 command"},
              {[&] { driver().press(a_.saveChanges); },
               "001 - Opening titles" + place + ", last change: delete 1 command"},
              {[&] { rename(a_.renameMacro, "Elsewhere"), driver().choose(a_.macros, "001"); },
               "001 - Elsewhere" + place},
              {[&] { driver().choose(a_.controlPanels, "CP7"), driver().clickRow(a_.macros, 0); }, "00 - "}};
  const auto* heading = driver().control<QWidget>(a_.commands).parent()->findChild<QLabel*>("subject");
  for (const auto& row : rows) {
    row.act();
    EXPECT_THAT(heading->accessibleName().toStdString(), testing::StartsWith(row.heading));
  }
}

}  // namespace
}  // namespace tessaly
