#pragma once

#include <QAbstractItemView>
#include <QFrame>
#include <QPersistentModelIndex>

class QLabel;
class QLineEdit;

namespace tessaly {

// A small field over the foot of a list: what is typed leads to the next row that holds it. Nothing is
// chosen on the way, because choosing may open a macro or fetch one; Enter chooses the row that was found.
// Ctrl+F opens it on the list that has the keyboard, F3 and Shift+F3 go on, Escape leaves. A list of rows
// (RowsView) marks what was found itself; over any other view a mark is laid. The field is made when it is
// opened first, as few lists are ever searched.
class ListFinder : public QObject {
  Q_OBJECT

 public:
  explicit ListFinder(QAbstractItemView& list);

  // The row that was found last, for the list to mark; none while the field is closed.
  [[nodiscard]] QModelIndex mark() const { return isOpen() ? QModelIndex(found_) : QModelIndex(); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  [[nodiscard]] bool isOpen() const { return field_ != nullptr && field_->isVisible(); }
  void makeField();
  void open();
  void close(bool choose);
  // From `start` on in steps of `step`, past the end to the other end.
  void find(int start, int step);
  void goOn(int step);
  void place();
  void placeMark();

  QAbstractItemView& list_;
  QFrame* field_ = nullptr;  // of the list, made and gone after this, with what is in it
  QLineEdit* text_ = nullptr;
  QLabel* count_ = nullptr;
  QPersistentModelIndex found_;
  QWidget* mark_ = nullptr;  // over the row, unless the list marks it itself
};

}  // namespace tessaly
