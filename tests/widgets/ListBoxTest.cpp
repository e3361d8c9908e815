#include <gtest/gtest.h>
#include <thread>

#include <QSignalSpy>
#include <QTest>

#include "widgets/ListBox.h"

namespace tessaly {
namespace {

std::vector<ListRow> numbered(int count) {
  std::vector<ListRow> rows;
  for (int i = 0; i < count; ++i) rows.push_back({"row " + std::to_string(i), i});
  return rows;
}

TEST(ListBoxTest, ABurstFromAnotherThreadIsOneRefresh) {
  ListBox list;
  QSignalSpy resets(&list.rows(), &QAbstractItemModel::modelReset);
  std::thread writer([&list] {
    for (int i = 1; i <= 1000; ++i) list.rows().setRows(numbered(i));
  });
  writer.join();
  EXPECT_EQ(list.rows().rowCount(), 0) << "the view follows on its own thread only";
  EXPECT_EQ(list.rows().rows().size(), 1000U) << "but the latest rows can be read at once";
  QCoreApplication::processEvents();
  EXPECT_EQ(list.rows().rowCount(), 1000);
  EXPECT_EQ(resets.count(), 1);
}

TEST(ListBoxTest, LinesAreMadeWhenSomebodyLooksOrTheProgramIsIdle) {
  constexpr int kLines = 10'000, kLongest = 7'000;
  ListBox list;
  list.rows().setRows(numbered(3));
  std::thread([&list] { list.rows().setRows(numbered(4)); }).join();
  QSignalSpy widened(&list.rows(), &ListBoxModel::widened);
  int made = 0;
  list.rows().setLines(kLines, [&made](int row) {
    ++made;
    return row == kLongest ? std::string(200, 'x') : "line " + std::to_string(row);
  });
  EXPECT_LT(made, 200) << "what nobody can see waits";
  EXPECT_EQ(list.rows().row(9'999)->text, "line 9999");
  ASSERT_TRUE(QTest::qWaitFor([&made] { return made == kLines; }));
  QCoreApplication::processEvents();
  EXPECT_EQ(made, kLines) << "each line once, and rows from before come no more";
  EXPECT_EQ(list.rows().rowCount(), kLines);
  EXPECT_EQ(list.rows().longestRow(), kLongest);
  EXPECT_EQ(widened.count(), 1);
  list.rows().setRows(numbered(2));
  EXPECT_EQ(list.rows().rows(), numbered(2));
}

TEST(ListBoxTest, ChoosingTellsUserClicksOnly) {
  ListBox list;
  list.resize(200, 200);
  list.rows().setRows(numbered(5));
  list.show();
  QSignalSpy chosen(&list, &ListBox::chosen);
  list.selectRow(2);
  EXPECT_EQ(chosen.count(), 0);
  const auto click = [&list](int row) {
    QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier,
                      list.visualRect(list.rows().index(row)).center());
  };
  click(3);
  EXPECT_EQ(chosen.count(), 1);
  click(3);
  EXPECT_EQ(chosen.count(), 2) << "a click on the selected row runs its step again, once";
  QTest::keyClick(&list, Qt::Key_Down);
  EXPECT_EQ(chosen.takeLast().at(0).toInt(), 4);
  QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, {50, 190});
  EXPECT_EQ(list.selectedRow(), -1);
  EXPECT_EQ(chosen.takeLast().at(0).toInt(), -1);
}

TEST(ListBoxTest, RowsStayDisabledWhileThePaneForbids) {
  ListBox list;
  list.setAllowed(false);
  list.rows().setRows(numbered(3), true);
  EXPECT_FALSE(list.isEnabled());
  list.setAllowed(true);
  EXPECT_TRUE(list.isEnabled());
  list.rows().setRows({{"no macros found"}}, false);
  EXPECT_FALSE(list.isEnabled());
}

}  // namespace
}  // namespace tessaly
