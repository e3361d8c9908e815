#include "app/CommandList.h"

#include <algorithm>

#include <QDrag>
#include <QDropEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QScopedValueRollback>

namespace tessaly {

namespace {

constexpr const char* kSource = "source";  // property of what is dragged: the list
constexpr int kLineWidth = 2;              // pixels of the line that shows where a drop goes
constexpr int kArrow = 5;                  // pixels of its ends
constexpr int kScrollMargin = 16;          // pixels from the edge where a drag scrolls the list

// What hangs on the pointer.
QPixmap dragPicture(const QWidget& list, const QString& text) {
  constexpr int kMargin = 4;
  const QSize size = list.fontMetrics().size(0, text) + QSize(2 * kMargin, 2 * kMargin);
  QPixmap picture(size * list.devicePixelRatio());
  picture.setDevicePixelRatio(list.devicePixelRatio());
  picture.fill(list.palette().color(QPalette::Active, QPalette::Highlight));
  QPainter painter(&picture);
  painter.setFont(list.font());
  painter.setPen(list.palette().color(QPalette::Active, QPalette::HighlightedText));
  painter.drawText(QRect(QPoint(), size), Qt::AlignCenter, text);
  return picture;
}

}  // namespace

CommandList::CommandList(QWidget* parent) : RowsView(parent) {
  take(rows_);
  setSelectionMode(QAbstractItemView::ExtendedSelection);
  leaveRoomForMarks();
  connect(&rows_, &CommandListModel::marked, this, [this] { viewport()->update(); });
  setClearable(true);
  setDragEnabled(true);
  setAcceptDrops(true);
}

void CommandList::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  RowsView::currentChanged(current, previous);
  if (!extending_) anchor_ = current;
}

// The view knows no beginning of a selection that the program has made, and would go on from an old one.
void CommandList::extendTo(const QModelIndex& end) {
  const QScopedValueRollback extending(extending_, true);
  const bool begun = anchor_.isValid() && selectionModel()->isSelected(anchor_);
  const QModelIndex begin = begun ? QModelIndex(anchor_) : currentIndex().isValid() ? currentIndex() : end;
  anchor_ = begin;
  const auto [first, last] = std::minmax({begin.row(), end.row()});
  selectionModel()->select(QItemSelection(rows_.index(first), rows_.index(last)),
                           QItemSelectionModel::ClearAndSelect);
  selectionModel()->setCurrentIndex(end, QItemSelectionModel::NoUpdate);
}

// Where a key with Shift takes the end of the selection.
QModelIndex CommandList::endOfKey(const QKeyEvent& event) {
  if (event.modifiers() != Qt::ShiftModifier || selectedRow() < 0) return {};
  switch (event.key()) {
    case Qt::Key_Up:
      return moveCursor(MoveUp, event.modifiers());
    case Qt::Key_Down:
      return moveCursor(MoveDown, event.modifiers());
    case Qt::Key_PageUp:
      return moveCursor(MovePageUp, event.modifiers());
    case Qt::Key_PageDown:
      return moveCursor(MovePageDown, event.modifiers());
    case Qt::Key_Home:
      return moveCursor(MoveHome, event.modifiers());
    case Qt::Key_End:
      return moveCursor(MoveEnd, event.modifiers());
    default:
      return {};
  }
}

void CommandList::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (const QModelIndex end = endOfKey(*event); end.isValid()) {
    event->accept();
    extendTo(end);
  } else if (enter && selectedRow() >= 0) {
    event->accept();
    emit opened();
  } else if (event->matches(QKeySequence::Copy)) {
    event->ignore();  // commands are copied, and not the text of a line
  } else {
    RowsView::keyPressEvent(event);
  }
}

void CommandList::mousePressEvent(QMouseEvent* event) {
  const QModelIndex index = indexAt(event->position().toPoint());
  const bool extends =
      event->button() == Qt::LeftButton && event->modifiers() == Qt::ShiftModifier && index.isValid();
  {
    const QScopedValueRollback extending(extending_, extends);
    RowsView::mousePressEvent(event);
  }
  if (extends) extendTo(index);
}

void CommandList::mouseDoubleClickEvent(QMouseEvent* event) {
  RowsView::mouseDoubleClickEvent(event);
  const QModelIndex index = indexAt(event->position().toPoint());
  if (event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier && index.isValid() &&
      selectedRow() == index.row())
    emit opened();
}

void CommandList::startDrag(Qt::DropActions) {
  std::unique_ptr<QMimeData> carried = carrier_ ? carrier_() : nullptr;
  if (!carried) return;
  auto* drag = new QDrag(this);
  carried->setProperty(kSource, QVariant::fromValue<QObject*>(this));
  drag->setMimeData(carried.release());
  const int count = static_cast<int>(selectedRows().size());
  drag->setPixmap(dragPicture(*this, tr("%n commands", nullptr, count)));
  // Who takes them away from here is the one that they are dropped on.
  drag->exec(Qt::CopyAction | Qt::MoveAction, Qt::CopyAction);
}

int CommandList::placeAt(const QPoint& at) const {
  const QModelIndex index = indexAt({viewport()->rect().center().x(), at.y()});
  if (!index.isValid()) return at.y() < 0 ? 0 : rows_.rowCount();
  return index.row() + (at.y() > visualRect(index).center().y() ? 1 : 0);
}

const CommandList* CommandList::sourceOf(const QDropEvent& event) const {
  return qobject_cast<const CommandList*>(event.mimeData()->property(kSource).value<QObject*>());
}

bool CommandList::moves(const QDropEvent& event) const {
  const CommandList* from = sourceOf(event);
  if (from == this) return !event.modifiers().testFlag(Qt::ControlModifier);
  return from != nullptr && event.modifiers().testFlag(Qt::ShiftModifier);
}

void CommandList::showPlace(int place) {
  if (std::exchange(place_, place) != place) viewport()->update();
}

void CommandList::dragEnterEvent(QDragEnterEvent* event) { event->setAccepted(takes(*event->mimeData())); }

void CommandList::dragMoveEvent(QDragMoveEvent* event) {
  const QPoint at = event->position().toPoint();
  event->setDropAction(moves(*event) ? Qt::MoveAction : Qt::CopyAction);
  event->accept();
  showPlace(placeAt(at));
  if (!viewport()->rect().adjusted(0, kScrollMargin, 0, -kScrollMargin).contains(at)) startAutoScroll();
}

void CommandList::dragLeaveEvent(QDragLeaveEvent*) {
  stopAutoScroll();
  showPlace(-1);
}

void CommandList::dropEvent(QDropEvent* event) {
  stopAutoScroll();
  showPlace(-1);
  event->setDropAction(moves(*event) ? Qt::MoveAction : Qt::CopyAction);
  event->accept();
  emit dropped({*event->mimeData(), placeAt(event->position().toPoint()), sourceOf(*event), moves(*event)});
}

void CommandList::paintEvent(QPaintEvent* event) {
  RowsView::paintEvent(event);
  if (place_ < 0) return;
  const bool behind = place_ >= rows_.rowCount();
  const QRect row = visualRect(rows_.index(behind ? rows_.rowCount() - 1 : place_));
  const int y = std::max(1, rows_.rowCount() == 0 ? 0 : behind ? row.bottom() + 1 : row.top());
  const int right = viewport()->width() - 1;
  QPainter painter(viewport());
  painter.setRenderHint(QPainter::Antialiasing);
  const QColor ink = palette().color(QPalette::Active, QPalette::Text);
  painter.setPen(QPen(ink, kLineWidth));
  painter.drawLine(0, y, right, y);
  painter.setBrush(ink);
  painter.setPen(Qt::NoPen);
  painter.drawPolygon(QPolygon({{0, y - kArrow}, {kArrow, y}, {0, y + kArrow}}));
  painter.drawPolygon(QPolygon({{right, y - kArrow}, {right - kArrow, y}, {right, y + kArrow}}));
}

}  // namespace tessaly
