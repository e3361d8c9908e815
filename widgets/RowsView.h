#pragma once

#include <vector>

#include <QListView>
#include <QPersistentModelIndex>

#include "widgets/KeptChoice.h"
#include "widgets/ListBoxDelegate.h"
#include "widgets/ListRows.h"

namespace tessaly {

class ListFinder;

// A list of one choice (KeptChoice), or of many where the class derived from it allows them, over rows of any
// kind, which that class owns. Ctrl+F finds in it. With an elide mode (QAbstractItemView) long rows are cut
// to the width of the list and told by a tool tip; without one the list scrolls sideways.
//
// A list keeps its place: beside the user only a selection by program that would be out of sight, or another
// list (ListRows), moves it. When rows come or go, the first visible one stays.
class RowsView : public KeptChoice<QListView> {
  Q_OBJECT

 public:
  explicit RowsView(QWidget* parent = nullptr);

  [[nodiscard]] virtual ListRows& rows() = 0;
  [[nodiscard]] int selectedRow() const;                // the first one; -1 when none
  [[nodiscard]] std::vector<int> selectedRows() const;  // in ascending order
  [[nodiscard]] const ListRow* selected() const;

  // Selects without telling `chosen`; -1 selects nothing.
  void selectRow(int row);
  // The same for many, in ascending order; those beyond the rows are left out.
  void selectRows(const std::vector<int>& rows);
  // As many of them as fit, the first one in any case, whoever scrolled them away.
  void bringIntoSight(const std::vector<int>& rows);
  // The list takes clicks and keys while it is allowed to and its rows are enabled.
  void setAllowed(bool allowed);
  // Where the keyboard goes on from, without selecting; the last row when the list has become shorter.
  void makeCurrent(int row);
  // Small, so that layouts decide: a list takes the room that it is given.
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;
  // No column begins before these dialog units; the list gets a horizontal scroll bar when its rows are
  // wider.
  void setTabStops(std::vector<int> dialogUnits);
  // Leaves room for marks before the text of each row.
  void leaveRoomForMarks() { delegate_->leaveRoomForMarks(); }
  // What is to be done while the list has no rows, or a notice in place of them: shown in grey, under the
  // notice, and the list's description meanwhile.
  void setPlaceholder(const QString& text);
  // The row that the finder stands on; it is marked without being selected.
  [[nodiscard]] QModelIndex found() const;

  void reset() override;
  void keyboardSearch(const QString& search) override;

 signals:
  // The user chose a row, also the one that was selected already; -1 when the selection was taken away, as in
  // a clearable list.
  void chosen(int row);

 protected:
  // To be called once, before anything else.
  void take(ListRows& rows);

  void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
  void paintEvent(QPaintEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void followEnabled();
  void tellPlaceholder();
  void keepPlace();
  void restorePlace();
  void select(const std::vector<int>& rows);
  [[nodiscard]] QModelIndex firstChoice(int key) const;
  [[nodiscard]] QSize sizeOfRows(int rows) const;

  ListRows* rows_ = nullptr;
  ListBoxDelegate* delegate_;
  ListFinder* finder_;
  QString placeholder_;
  // While rows come and go: the first visible one, the row it was, and those that are selected.
  QPersistentModelIndex first_;
  QList<QPersistentModelIndex> selected_;
  int firstRow_ = 0;
  bool allowed_ = true;
  bool quiet_ = false;      // the program changes the selection
  bool chosenNow_ = false;  // the press that is being released has chosen already
};

}  // namespace tessaly
