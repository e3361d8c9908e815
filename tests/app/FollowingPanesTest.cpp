#include <gmock/gmock.h>

#include <QTest>

#include "tests/app/WindowFixture.h"

namespace tessaly {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

// Both panes on one folder of the harddisk, and both on its macro 001.
class FollowingPanesTest : public WindowTest {
 protected:
  FollowingPanesTest() { openBoth(); }
  void openBoth() {
    for (const Pane pane : kPanes) open(ids(pane));
  }
};

TEST_F(FollowingPanesTest, APaneShowsWhatItsMacroHoldsAfterTheOtherPaneChangedIt) {
  const std::string original = read(macroPath(1));
  const auto count = driver().texts(b_.commands).size();
  const struct {
    const char* what;
    std::function<void()> run;
    const char* row;  // of pane B's macro afterwards; none when it is gone
    std::size_t commands;
  } operations[] = {{"save", [this] { removeFirst(a_), driver().press(a_.saveChanges); },
                     "001 - Opening titles", count - 1},
                    {"rename", [this] { rename(a_.renameMacro, "Elsewhere"); }, "001 - Elsewhere", count},
                    {"create", [this] { create(a_.createMacro, 1); }, "001 - Fresh", 1},
                    {"delete", [this] { driver().press(a_.deleteMacro); }, "", 0}};
  for (const auto& operation : operations) {
    for (const bool edited : {false, true}) {
      SCOPED_TRACE(std::string(operation.what) + (edited ? ", B edited" : ""));
      fixture_.site.write(macroPath(1), original);
      openBoth();
      if (edited) removeFirst(b_);
      operation.run();
      if (edited) {
        EXPECT_EQ(driver().texts(b_.commands).size(), count - 1) << "unsaved work is nobody else's";
        asked();
        fixture_.site.messages.answer = false;
        const std::string written = read(macroPath(1));
        driver().press(b_.saveChanges);
        EXPECT_THAT(asked(), testing::ElementsAre(HasSubstr("by somebody else")));
        EXPECT_EQ(read(macroPath(1)), written);
        fixture_.site.messages.answer = true;
        driver().press(b_.discardChanges);
        continue;
      }
      EXPECT_EQ(selected(b_.macros), operation.row);
      EXPECT_EQ(driver().texts(b_.commands).size(), operation.commands);
    }
  }
}

TEST_F(FollowingPanesTest, AClickOnTheSourceThatIsShownIsNoChoice) {
  const auto count = driver().texts(a_.commands).size();
  driver().press(a_.harddisk);
  EXPECT_EQ(driver().texts(a_.commands).size(), count);
  EXPECT_NE(driver().list(a_.macros).selected(), nullptr);
}

}  // namespace
}  // namespace tessaly
