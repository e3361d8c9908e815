#include <gmock/gmock.h>

#include <QTest>

#include "app/StatusStrip.h"
#include "tests/app/WindowFixture.h"

namespace tessaly {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

const std::string kMacro001 = "c:\\programme\\rv48\\appli\\Evening News\\CP1\\macroWP1\\macro001.mac";

// Both panes on one folder of the harddisk, and both on its macro 001.
class FollowingPanesTest : public testing::Test {
 protected:
  FollowingPanesTest() {
    for (const auto* ids : {&a_, &b_}) {
      driver().choose(ids->applications, "Evening News");
      driver().choose(ids->macros, "001");
    }
  }
  WindowDriver& driver() { return *fixture_.driver; }
  void answer(int button, std::vector<std::pair<const char*, QString>> fields) {
    driver().press(button, [fields = std::move(fields)](QDialog& dialog) {
      for (const auto& [field, text] : fields) WindowDriver::type(dialog, field, text);
      WindowDriver::click(dialog, QStringLiteral("OK"));
    });
  }
  void editA() {
    driver().clickRow(a_.commands, 0);
    driver().press(a_.deleteCommand);
  }

  WindowFixture fixture_{offlineClient()};
  const PaneDescriptor::ControlIds& a_ = WindowFixture::ids(Pane::kA);
  const PaneDescriptor::ControlIds& b_ = WindowFixture::ids(Pane::kB);
};

TEST_F(FollowingPanesTest, APaneShowsWhatItsMacroHoldsAfterTheOtherPaneChangedIt) {
  const std::string original = fixture_.site.read(kMacro001);
  const auto count = driver().texts(b_.commands).size();
  const struct {
    const char* what;
    std::function<void()> run;
    const char* row;  // of pane B's macro afterwards; none when it is gone
    std::size_t commands;
  } operations[] = {{"save",
                     [this] {
                       editA();
                       driver().press(a_.saveChanges);
                     },
                     "001 - Opening titles", count - 1},
                    {"rename",
                     [this] {
                       answer(a_.renameMacro, {{"newName", "Elsewhere"}});
                     },
                     "001 - Elsewhere", count},
                    {"create",
                     [this] {
                       answer(a_.createMacro, {{"position", "1"}, {"name", "Fresh"}});
                     },
                     "001 - Fresh", 1},
                    {"delete", [this] { driver().press(a_.deleteMacro); }, nullptr, 0}};
  for (const auto& operation : operations) {
    for (const bool edited : {false, true}) {
      SCOPED_TRACE(std::string(operation.what) + (edited ? ", B edited" : ""));
      fixture_.site.write(kMacro001, original);
      for (const auto* ids : {&a_, &b_}) {
        driver().choose(ids->applications, "Evening News");
        driver().choose(ids->macros, "001");
      }
      if (edited) {
        driver().clickRow(b_.commands, 0);
        driver().press(b_.deleteCommand);
      }
      operation.run();
      if (edited) {
        EXPECT_EQ(driver().texts(b_.commands).size(), count - 1) << "unsaved work is nobody else's";
        fixture_.site.messages.take();
        fixture_.site.messages.answer = false;
        const std::string written = fixture_.site.read(kMacro001);
        driver().press(b_.saveChanges);
        EXPECT_THAT(fixture_.site.messages.take(), testing::ElementsAre(HasSubstr("by somebody else")));
        EXPECT_EQ(fixture_.site.read(kMacro001), written);
        fixture_.site.messages.answer = true;
        driver().press(b_.discardChanges);
        continue;
      }
      const ListRow* row = driver().list(b_.macros).selected();
      EXPECT_EQ(row != nullptr ? row->text : "", operation.row != nullptr ? operation.row : "");
      EXPECT_EQ(driver().texts(b_.commands).size(), operation.commands);
    }
  }
}

TEST_F(FollowingPanesTest, AFailedSaveStaysInSightAndCanBeTriedAgain) {
  editA();
  const std::filesystem::path file = fixture_.site.root.resolve(kMacro001);
  std::filesystem::permissions(file, std::filesystem::perms::owner_read);
  driver().press(a_.saveChanges);
  const auto* strip = fixture_.window->findChild<StatusStrip*>();
  EXPECT_THAT(strip->owed(Pane::kA).toStdString(), StartsWith("NOT saved: 001 - Opening titles"));
  driver().choose(b_.macros, "002");
  EXPECT_FALSE(strip->owed(Pane::kA).isEmpty()) << "what comes next does not take its place";
  std::filesystem::permissions(file, std::filesystem::perms::owner_all);
  auto& commands = driver().list(a_.commands);
  commands.setFocus();
  QTest::keyClick(&commands, Qt::Key_S, Qt::ControlModifier);
  EXPECT_THAT(fixture_.status().toStdString(), StartsWith("saved: 001"));
  EXPECT_TRUE(strip->owed(Pane::kA).isEmpty());
  EXPECT_EQ(fixture_.site.read(kMacro001), fixture_.site.read(workingCopyPath(Pane::kA)));
}

TEST_F(FollowingPanesTest, AClickOnTheSourceThatIsShownIsNoChoice) {
  const auto count = driver().texts(a_.commands).size();
  driver().press(a_.harddisk);
  EXPECT_EQ(driver().texts(a_.commands).size(), count);
  EXPECT_NE(driver().list(a_.macros).selected(), nullptr);
}

}  // namespace
}  // namespace tessaly
