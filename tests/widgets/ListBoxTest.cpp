#include <gtest/gtest.h>

#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include "tests/support/Hand.h"
#include "widgets/ListBox.h"

namespace tessaly {
namespace {

std::vector<ListRow> numbered(int from, int to) {
  std::vector<ListRow> rows;
  for (int i = from; i <= to; ++i) rows.push_back({"row " + std::to_string(i), i});
  return rows;
}

class ListBoxTest : public testing::Test {
 protected:
  ListBoxTest() {
    list_.resize(200, 200);
    list_.show();
    QApplication::setActiveWindow(&list_);
    list_.setFocus();
  }
  // The number of the first row that is seen whole.
  [[nodiscard]] int first() { return list_.rows().row(list_.indexAt({20, 2}).row())->number; }

  ListBox list_;
  QSignalSpy chosen_{&list_, &ListBox::chosen};
};

TEST_F(ListBoxTest, KeepsItsPlace) {
  const auto rows = numbered(0, 99);
  auto without = [&](int number) {
    auto fewer = rows;
    fewer.erase(fewer.begin() + number);
    return fewer;
  };
  struct Case {
    const char* what;
    std::function<void(ListBox&)> change;
    int place;  // of 40 before
  };
  const Case cases[] = {
      {"taking input or not", [](ListBox& list) { list.setAllowed(false); }, 40},
      {"the same rows", [&](ListBox& list) { list.rows().setRows(rows, true, "folder"); }, 40},
      {"a row less above", [&](ListBox& list) { list.rows().setRows(without(3), true, "folder"); }, 40},
      {"the row itself", [&](ListBox& list) { list.rows().setRows(without(40), true, "folder"); }, 41},
      {"a row less below", [&](ListBox& list) { list.rows().setRows(without(70), true, "folder"); }, 40},
      {"another folder", [&](ListBox& list) { list.rows().setRows(rows, true, "another"); }, 0},
      {"other rows", [&](ListBox& list) { list.rows().setRows(numbered(5, 99)); }, 5},
      {"what is chosen already", [](ListBox& list) { list.selectRow(7); }, 40},
      {"a row in sight", [](ListBox& list) { list.selectRow(42); }, 40},
      {"a row out of sight", [](ListBox& list) { list.selectRow(20); }, 20},
      {"nothing", [](ListBox& list) { list.selectRow(-1); }, 40}};
  for (const Case& c : cases) {
    list_.setAllowed(true);
    list_.rows().clear();
    list_.rows().setRows(rows, true, "folder");
    list_.selectRow(7);
    Hand::turnWheel(list_, [&] { return first() == 40; });
    c.change(list_);
    list_.grab();
    EXPECT_EQ(first(), c.place) << c.what;
  }
  EXPECT_EQ(chosen_.count(), 0) << "the program chooses in silence";
}

TEST_F(ListBoxTest, ValuesStandInOneColumn) {
  const auto end = [this](int row) {  // of its ink, from the left
    const QRect place = list_.visualRect(list_.rows().index(row)) & list_.viewport()->rect();
    const QImage drawn = list_.viewport()->grab().toImage();
    int x = place.right();
    const auto blank = [&] {
      for (int y = place.top(); y <= place.bottom(); ++y)
        if (drawn.pixel(x, y) != list_.palette().color(QPalette::Base).rgb()) return false;
      return true;
    };
    while (x > 0 && blank()) --x;
    return x;
  };
  list_.resize(900, 200);
  list_.setTabStops({40});
  for (const int size : {9, 15}) {
    list_.setFont(QFont(list_.font().family(), size));
    list_.rows().setRows(
        {{"iiiiiiiiiiii\tX"}, {"WWWWWWWWWW\tX"}, {"key\t X"}, {std::string(60, 'W') + "\tX"}});
    EXPECT_EQ(end(0), end(1)) << size;
    EXPECT_EQ(end(2), end(1)) << "a value may begin with a blank";
    EXPECT_LT(end(1), 400) << "a cell that is far too long moves nothing but its row";
  }
  list_.setTabStops({200});
  EXPECT_GT(end(1), 400) << "no column begins before its tab stop";
}

TEST_F(ListBoxTest, RowsThatStayKeepWhatHoldsOnToThem) {
  list_.rows().setRows(numbered(0, 9), true, "folder");
  list_.selectRow(4);
  QTest::keyClick(&list_, Qt::Key_F, Qt::ControlModifier);
  QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("row 8"));
  list_.rows().setRows(numbered(2, 12), true, "folder");
  EXPECT_EQ(list_.selected()->number, 4);
  EXPECT_EQ(list_.rows().row(list_.found().row())->number, 8);
  list_.rows().setRows(numbered(5, 12), true, "folder");
  EXPECT_EQ(list_.selectedRow(), -1);
  EXPECT_EQ(chosen_.count(), 0);
}

TEST_F(ListBoxTest, ChoosingTellsUserClicksOnly) {
  list_.rows().setRows(numbered(0, 4));
  const auto click = [this](int row, Qt::KeyboardModifiers keys = Qt::NoModifier) {
    QTest::mouseClick(list_.viewport(), Qt::LeftButton, keys,
                      list_.visualRect(list_.rows().index(row)).center());
    return chosen_.count();
  };
  list_.selectRow(2);
  EXPECT_EQ(click(3), 1);
  EXPECT_EQ(click(3), 2) << "a click on the selected row runs its step again, once";
  click(3, Qt::ControlModifier);
  EXPECT_EQ(list_.selectedRow(), 3);
  chosen_.clear();
  Hand::doubleClick(list_, 1);
  EXPECT_EQ(chosen_.count(), 1) << "a double click is one choice";
  QTest::keyClick(&list_, Qt::Key_Down);
  EXPECT_EQ(chosen_.takeLast().at(0).toInt(), 2);
  chosen_.clear();
  for (const bool clearable : {false, true}) {
    list_.setClearable(clearable);
    QTest::mouseClick(list_.viewport(), Qt::LeftButton, Qt::NoModifier, {50, 190});
    EXPECT_EQ(list_.selectedRow(), clearable ? -1 : 2);
    EXPECT_EQ(chosen_.count(), clearable ? 1 : 0);
  }
}

TEST_F(ListBoxTest, AnyKeyOfAListChoosesWhereNothingIsChosen) {
  const std::vector<ListRow> rows{{"Wipes", 0, false}, {"Wipe"}, {"Mix"}, {"wipe back"}, {"", 4, false}};
  const struct {
    int key;
    int standing;  // where the keyboard is
    int chosen;
  } cases[] = {{Qt::Key_Home, 1, 1}, {Qt::Key_Home, -1, 1}, {Qt::Key_End, 3, 3}, {Qt::Key_End, -1, 3},
               {Qt::Key_W, 1, 1},    {Qt::Key_M, 2, 2},     {Qt::Key_M, -1, 2},  {Qt::Key_Down, 2, 2}};
  for (const auto& c : cases) {
    ListBox list;
    list.rows().setRows(rows);
    list.makeCurrent(c.standing);
    int chosen = -1;
    QObject::connect(&list, &ListBox::chosen, [&chosen](int row) { chosen = row; });
    QTest::keyClick(&list, static_cast<Qt::Key>(c.key));
    EXPECT_EQ(chosen, c.chosen) << c.key << " at " << c.standing;
    EXPECT_EQ(list.selectedRow(), c.chosen);
  }
}

TEST_F(ListBoxTest, RowsStayDisabledWhileThePaneForbids) {
  list_.setAllowed(false);
  list_.rows().setRows(numbered(0, 2), true);
  EXPECT_FALSE(list_.isEnabled());
  list_.setAllowed(true);
  EXPECT_TRUE(list_.isEnabled());
  list_.rows().setRows({{"no macros found"}}, false);
  EXPECT_FALSE(list_.isEnabled());
}

TEST_F(ListBoxTest, ANameCannotHideWhatStandsBesideIt) {
  list_.rows().setRows({{"007 - \xE2\x80\xAEswen\nA\tB"}});
  EXPECT_EQ(list_.rows().index(0).data().toString().toStdString(), "007 - [U+202E]swen[U+000A]A\tB");
}

}  // namespace
}  // namespace tessaly
