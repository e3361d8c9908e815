// Lists under the hand: what is pointed at is what is chosen.
#include <gmock/gmock.h>

#include <QSignalSpy>

#include "app/CommandList.h"
#include "tests/app/WindowFixture.h"
#include "tests/support/Hand.h"

namespace tessaly {
namespace {

using testing::StartsWith;

class ListPlaceTest : public WindowTest {
 protected:
  ListPlaceTest() {
    fixture_.window->resize(1000, 600);
    driver().choose(a_.applications, "Evening News");
  }
  [[nodiscard]] RowsView& macros() { return driver().list(a_.macros); }
};

TEST_F(ListPlaceTest, AnEditedMacroStaysInSightAndItsCommandsInPlace) {
  std::string commands = R"(<macro name="Long"><data>)";
  for (int i = 0; i < 200; ++i)
    commands += R"(<cmd fid="QMF1.N)" + std::to_string(i) + R"(" workplace="1"/>)";
  fixture_.site.write(macroPath(999), commands + "</data></macro>");
  fixture_.site.write(macroPath(998), R"(<macro name="Short"><data><cmd fid="QMF1.N"/></data></macro>)");
  driver().choose(a_.workplaces, "Workplace 1");
  Hand::doubleClickOn(macros(), QStringLiteral("999"));
  EXPECT_THAT(told(), StartsWith("opened: 999"));
  const std::string place = Hand::firstSeen(macros());
  open(b_);
  EXPECT_EQ(Hand::firstSeen(macros()), place) << "a choice in the other pane";
  RowsView& lines = driver().list(a_.commands);
  const int top = lines.verticalScrollBar()->value();
  EXPECT_EQ(top, 0);
  Hand::turnWheel(lines, [&] { return lines.verticalScrollBar()->value() == 120; });
  QTest::mouseClick(lines.viewport(), Qt::LeftButton, Qt::NoModifier,
                    {20, lines.visualRect(lines.rows().index(123)).center().y()});
  driver().press(a_.deleteCommand);
  EXPECT_FALSE(macros().isEnabled());
  EXPECT_EQ(Hand::firstSeen(macros()), place);
  EXPECT_EQ(lines.verticalScrollBar()->value(), 120);
  EXPECT_EQ(lines.selectedRow(), 123);
  driver().press(a_.discardChanges);
  EXPECT_EQ(lines.verticalScrollBar()->value(), 120) << "the same macro again";
  driver().press(a_.newCorvane, [](QDialog& dialog) { dialog.reject(); });
  QTest::mouseClick(lines.viewport(), Qt::LeftButton, Qt::NoModifier, {20, 5});
  ASSERT_EQ(lines.selectedRow(), 120);
  driver().choose(a_.macros, "998");
  EXPECT_EQ(lines.verticalScrollBar()->value(), 0) << "another macro";
  QTest::mouseClick(lines.viewport(), Qt::LeftButton, Qt::NoModifier, {20, 5});
  ASSERT_EQ(lines.selectedRow(), 0);
  QTest::mouseClick(lines.viewport(), Qt::LeftButton, Qt::NoModifier, {20, lines.viewport()->height() - 3});
  EXPECT_EQ(lines.selectedRow(), -1) << "beside the commands";
  QTest::mouseClick(macros().viewport(), Qt::LeftButton, Qt::ControlModifier,
                    macros().visualRect(macros().currentIndex()).center());
  EXPECT_GT(lines.rows().rowCount(), 0) << "the macro stays open";
  driver().choose(a_.workplaces, "Workplace 2");
  driver().choose(a_.workplaces, "Workplace 1");
  EXPECT_THAT(Hand::firstSeen(macros()), StartsWith("000")) << "another folder begins at its top";
}

TEST(CommandListModelTest, LinesAreMadeWhenSomebodyLooksOrTheProgramIsIdle) {
  constexpr std::size_t kLines = 10'000, kLongest = 7'000;
  const auto commands = std::make_shared<MacroCommands>(kLines);
  CommandList list;
  QSignalSpy widened(&list.rows(), &ListRows::widened);
  std::size_t made = 0;
  const auto line = [&made, first = commands->data()](const MacroCommand& command, const LineOptions&,
                                                      bool updated) {
    ++made;
    const auto at = static_cast<std::size_t>(&command - first);
    return at == kLongest ? std::string(200, 'x') : std::to_string(at) + (updated ? " updated" : "");
  };
  list.rows().showMacro("macro", {commands, {false, true}, {}, line});
  EXPECT_LT(made, 200U) << "what nobody can see waits";
  EXPECT_EQ(list.rows().row(9'999)->text, "9999");
  EXPECT_EQ(list.rows().row(1)->text, "1 updated");
  ASSERT_TRUE(QTest::qWaitFor([&made] { return made == kLines; }));
  ASSERT_TRUE(QTest::qWaitFor([&widened] { return widened.count() == 1; }));
  EXPECT_EQ(made, kLines) << "each line once";
  EXPECT_EQ(list.rows().columns().front().last.size(), 200U);
  list.rows().showMacro("macro", {commands, {}, {}, line});
  list.rows().showNotice("macro", "empty macro");
  QCoreApplication::processEvents();
  EXPECT_EQ(list.rows().rowCount(), 1) << "lines of before come no more";
  EXPECT_FALSE(list.isEnabled());
}

}  // namespace
}  // namespace tessaly
