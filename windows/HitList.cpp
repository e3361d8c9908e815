#include "windows/HitList.h"

#include <QKeyEvent>

namespace tessaly {

HitList::HitList(QWidget* parent) : RowsView(parent) { take(rows_); }

void HitList::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (enter && selectedRow() >= 0) {
    event->accept();
    emit opened();
  } else {
    RowsView::keyPressEvent(event);
  }
}

void HitList::mouseDoubleClickEvent(QMouseEvent* event) {
  RowsView::mouseDoubleClickEvent(event);
  const QModelIndex index = indexAt(event->position().toPoint());
  if (event->button() == Qt::LeftButton && index.isValid() && index.row() == selectedRow()) emit opened();
}

}  // namespace tessaly
