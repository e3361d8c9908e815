#include <gmock/gmock.h>

#include "tests/app/WindowFixture.h"

namespace tessaly {
namespace {

// Catches a heading that nobody has told: each row is done by hand in the pane, and read at once.
TEST(PaneHeadingTest, FollowsWhatThePaneShows) {
  WindowFixture fixture(offlineClient());
  const auto& a = WindowFixture::ids(Pane::kA);
  WindowDriver& driver = *fixture.driver;
  const std::string place =
      ", On the disk, Evening News/CP1, workplace 1, "
      "c:\\programme\\rv48\\appli\\Evening News\\CP1\\macroWP1\\macro001.mac";
  const struct {
    std::function<void()> act;
    std::string heading;
  } rows[] = {{[] {}, "No macro is open, On the disk"},
              {[&] {
                 driver.choose(a.applications, "Evening News");
                 driver.choose(a.macros, "001");
               },
               "001 - Opening titles" + place},
              {[&] {
                 driver.clickRow(a.commands, 0);
                 driver.press(a.deleteCommand);
               },
               "001 - Opening titles" + place + ", unsaved changes, last change: delete 1 command"},
              {[&] { driver.press(a.saveChanges); },
               "001 - Opening titles" + place + ", last change: delete 1 command"},
              {[&] {
                 driver.press(a.renameMacro, [](QDialog& dialog) {
                   WindowDriver::type(dialog, "newName", QStringLiteral("Elsewhere"));
                   WindowDriver::click(dialog, QStringLiteral("OK"));
                 });
                 driver.choose(a.macros, "001");
               },
               "001 - Elsewhere" + place},
              {[&] {
                 driver.choose(a.controlPanels, "CP7");
                 driver.clickRow(a.macros, 0);
               },
               "00 - "}};
  const auto* heading =
      driver.control<QWidget>(a.commands).parent()->findChild<QLabel*>(QStringLiteral("subject"));
  for (const auto& row : rows) {
    row.act();
    EXPECT_THAT(heading->accessibleName().toStdString(), testing::StartsWith(row.heading));
  }
}

}  // namespace
}  // namespace tessaly
