#include "widgets/RowsView.h"

#include <algorithm>
#include <utility>

#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>

#include "widgets/ListFinder.h"
#include "widgets/RowMark.h"

namespace tessaly {

RowsView::RowsView(QWidget* parent)
    : KeptChoice(parent), delegate_(new ListBoxDelegate(this)), finder_(new ListFinder(*this)) {
  setItemDelegate(delegate_);
  setUniformItemSizes(true);
  setSelectionMode(QAbstractItemView::SingleSelection);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  setTextElideMode(Qt::ElideNone);
  setTabKeyNavigation(false);
}

void RowsView::take(ListRows& rows) {
  rows_ = &rows;
  setModel(&rows);
  connect(&rows, &QAbstractItemModel::layoutAboutToBeChanged, this, &RowsView::keepPlace);
  connect(&rows, &QAbstractItemModel::layoutChanged, this, &RowsView::restorePlace);
  connect(&rows, &ListRows::enabledChanged, this, &RowsView::followEnabled);
  connect(&rows, &ListRows::enabledChanged, this, &RowsView::tellPlaceholder);
  connect(&rows, &QAbstractItemModel::modelReset, this, &RowsView::tellPlaceholder);
  connect(&rows, &QAbstractItemModel::layoutChanged, this, &RowsView::tellPlaceholder);
  connect(&rows, &QAbstractItemModel::rowsInserted, this, &RowsView::tellPlaceholder);
  connect(&rows, &ListRows::widened, this, &RowsView::scheduleDelayedItemsLayout);
}

int RowsView::selectedRow() const {
  int first = -1;
  for (const QItemSelectionRange& range : selectionModel()->selection())
    if (first < 0 || range.top() < first) first = range.top();
  return first;
}

std::vector<int> RowsView::selectedRows() const {
  std::vector<int> rows;
  for (const QModelIndex& index : selectionModel()->selectedIndexes()) rows.push_back(index.row());
  std::sort(rows.begin(), rows.end());
  return rows;
}

const ListRow* RowsView::selected() const { return rows_->row(selectedRow()); }

QSize RowsView::sizeHint() const { return sizeOfRows(6); }

QSize RowsView::minimumSizeHint() const { return sizeOfRows(2); }

QSize RowsView::sizeOfRows(int rows) const {
  const QFontMetrics metrics(font());
  return {metrics.averageCharWidth() * 18,
          rows * (metrics.height() + ListBoxDelegate::kRowGap) + 2 * frameWidth()};
}

void RowsView::reset() {
  QListView::reset();
  verticalScrollBar()->setValue(0);
  horizontalScrollBar()->setValue(0);
}

void RowsView::keepPlace() {
  quiet_ = true;
  firstRow_ = verticalScrollBar()->value();
  first_ = rows_->index(firstRow_);
  selected_.clear();
  for (const int row : selectedRows()) selected_.append(rows_->index(row));
}

void RowsView::restorePlace() {
  std::vector<int> rows;
  for (const QPersistentModelIndex& index : selected_)
    if (index.isValid()) rows.push_back(index.row());
  std::sort(rows.begin(), rows.end());
  select(rows);
  quiet_ = false;
  const int first = first_.isValid() ? first_.row() : firstRow_;
  first_ = QPersistentModelIndex();
  selected_.clear();
  if (first == verticalScrollBar()->value()) return;
  executeDelayedItemsLayout();
  verticalScrollBar()->setValue(first);
}

void RowsView::makeCurrent(int row) {
  const int last = rows_->rowCount() - 1;
  if (row < 0 || last < 0) return;
  const QModelIndex index = rows_->index(std::min(row, last));
  selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
  scrollTo(index);
}

void RowsView::selectRow(int row) { selectRows({row}); }

void RowsView::selectRows(const std::vector<int>& rows) {
  std::vector<int> present;
  for (const int row : rows)
    if (rows_->index(row).isValid()) present.push_back(row);
  // What is chosen already is where the user put it.
  if (present == selectedRows()) return;
  const QScopedValueRollback quiet(quiet_, true);
  if (present.empty()) {
    selectionModel()->clear();
    return;
  }
  selectionModel()->setCurrentIndex(rows_->index(present.front()), QItemSelectionModel::NoUpdate);
  select(present);
  bringIntoSight(present);
}

// Rows that follow one another are one range: the model works on ranges.
void RowsView::select(const std::vector<int>& rows) {
  QItemSelection selection;
  for (std::size_t begin = 0, end = 0; begin < rows.size(); begin = end) {
    for (end = begin + 1; end < rows.size() && rows[end] == rows[end - 1] + 1;) ++end;
    selection.append(QItemSelectionRange(rows_->index(rows[begin]), rows_->index(rows[end - 1])));
  }
  selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
}

void RowsView::bringIntoSight(const std::vector<int>& rows) {
  if (rows.empty()) return;
  scrollTo(rows_->index(rows.back()));
  scrollTo(rows_->index(rows.front()));
}

void RowsView::setTabStops(std::vector<int> dialogUnits) {
  delegate_->setTabStops(std::move(dialogUnits));
  scheduleDelayedItemsLayout();
  viewport()->update();
}

void RowsView::setPlaceholder(const QString& text) {
  if (std::exchange(placeholder_, text) == text) return;
  tellPlaceholder();
  viewport()->update();
}

void RowsView::tellPlaceholder() {
  const bool empty = rows_->rowCount() == 0 || !rows_->enabled();
  setAccessibleDescription(empty ? placeholder_ : QString());
}

QModelIndex RowsView::found() const { return finder_->mark(); }

void RowsView::paintEvent(QPaintEvent* event) {
  QListView::paintEvent(event);
  if (placeholder_.isEmpty() || (rows_->rowCount() > 0 && rows_->enabled())) return;
  constexpr int kMargin = ListBoxDelegate::kTextMargin;
  const int below = rows_->rowCount() == 0 ? 0 : visualRect(rows_->index(rows_->rowCount() - 1)).bottom() + 1;
  QPainter painter(viewport());
  painter.setPen(dimmed(palette()));
  painter.drawText(viewport()->rect().adjusted(kMargin, below + kMargin, -kMargin, -kMargin),
                   Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, placeholder_);
}

bool RowsView::viewportEvent(QEvent* event) {
  // A row that is seen whole, and has no mark, needs no tool tip.
  if (event->type() == QEvent::ToolTip) {
    const QModelIndex index = indexAt(static_cast<QHelpEvent*>(event)->pos());
    const int needed = delegate_->rowWidth(index, QFontMetrics(font()));
    const bool marked = index.data(kRowMarkRole).toInt() != static_cast<int>(RowMark::kNone) ||
                        index.data(kRowStripeRole).isValid();
    if (index.isValid() && !marked && needed <= viewport()->width()) {
      event->ignore();
      return true;
    }
  }
  return QListView::viewportEvent(event);
}

void RowsView::setAllowed(bool allowed) {
  allowed_ = allowed;
  followEnabled();
}

void RowsView::followEnabled() { setEnabled(allowed_ && rows_->enabled()); }

void RowsView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
  QListView::selectionChanged(selected, deselected);
  if (quiet_) return;
  chosenNow_ = true;
  emit chosen(selectedRow());
}

void RowsView::mousePressEvent(QMouseEvent* event) {
  chosenNow_ = false;
  // Asked first: what the press starts may fill this list anew.
  const bool beside = event->button() == Qt::LeftButton && !indexAt(event->pos()).isValid();
  // A row at the edge that is seen in part would be scrolled away from under a double click.
  setAutoScroll(false);
  QListView::mousePressEvent(event);
  setAutoScroll(true);
  if (beside && clearable()) selectionModel()->clear();
}

void RowsView::mouseReleaseEvent(QMouseEvent* event) {
  QListView::mouseReleaseEvent(event);
  const QModelIndex index = indexAt(event->pos());
  if (event->button() == Qt::LeftButton && !chosenNow_ && index.isValid() && index.row() == selectedRow())
    emit chosen(index.row());
  chosenNow_ = false;
}

// The second click of a double click is none of its own.
void RowsView::mouseDoubleClickEvent(QMouseEvent* event) {
  QListView::mouseDoubleClickEvent(event);
  chosenNow_ = true;
}

// Which row a key chooses while none is chosen: the outermost one, else that on which the keyboard stands.
QModelIndex RowsView::firstChoice(int key) const {
  switch (key) {
    case Qt::Key_Home:
    case Qt::Key_End:
      for (int i = 0, rows = rows_->rowCount(); i < rows; ++i) {
        const QModelIndex index = rows_->index(key == Qt::Key_Home ? i : rows - 1 - i);
        if (index.flags().testFlag(Qt::ItemIsSelectable)) return index;
      }
      return {};
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Down:
    case Qt::Key_Up:
      return currentIndex();
    default:
      return {};
  }
}

void RowsView::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  const QModelIndex first = selectedRow() < 0 ? firstChoice(event->key()) : QModelIndex();
  if (first.isValid()) {
    event->accept();
    setCurrentIndex(first);
  } else if (enter && selectedRow() >= 0) {
    event->accept();
    emit chosen(selectedRow());
  } else {
    QListView::keyPressEvent(event);
  }
}

void RowsView::keyboardSearch(const QString& search) {
  // The row on which the keyboard stands is passed over as the one that is chosen; it must not be when none
  // is.
  const QPersistentModelIndex current = currentIndex();
  if (selectedRow() < 0) selectionModel()->setCurrentIndex({}, QItemSelectionModel::NoUpdate);
  QListView::keyboardSearch(search);
  if (currentIndex().isValid()) return;
  setAutoScroll(false);
  selectionModel()->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
  setAutoScroll(true);
}

}  // namespace tessaly
