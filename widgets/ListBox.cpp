#include "widgets/ListBox.h"

#include <algorithm>

#include <QApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QThread>

#include "platform/Text.h"
#include "widgets/ListFinder.h"

namespace tessaly {

namespace {

constexpr int kRowGap = 3;      // pixels between the text lines of two rows
constexpr int kTextMargin = 3;  // pixels left and right of a row's text

constexpr int kFirstLines = 100;  // that are made at once: what may be seen, and a first idea of the width
constexpr int kLinesMeanwhile = 500;  // that are made in one go while the program has nothing else to do

constexpr float kDimmedInk = 0.7F;   // of the text colour; the rest is the ground's
constexpr float kMarkAlpha = 0.35F;  // of the highlight behind a found row

// Grey that can still be read with ease, on a light and on a dark ground: what a list says in place of rows,
// and the rows of a list that takes no input.
QColor dimmed(const QPalette& palette) {
  const QColor ink = palette.color(QPalette::Active, QPalette::Text);
  const QColor ground = palette.color(QPalette::Active, QPalette::Base);
  const auto mix = [](float a, float b) { return kDimmedInk * a + (1 - kDimmedInk) * b; };
  return QColor::fromRgbF(mix(ink.redF(), ground.redF()), mix(ink.greenF(), ground.greenF()),
                          mix(ink.blueF(), ground.blueF()));
}

QString shownText(const ListRow& row) { return QString::fromStdString(displayUtf8(row.text)); }

}  // namespace

ListBoxModel::ListBoxModel(QObject* parent) : QAbstractListModel(parent) {
  connect(&meanwhile_, &QTimer::timeout, this, &ListBoxModel::makeLinesMeanwhile);
}

void ListBoxModel::setRows(std::vector<ListRow> rows, bool enabled) {
  bool queue = false;
  {
    const std::lock_guard guard(mutex_);
    latest_ = std::move(rows);
    latestEnabled_ = enabled;
    queue = !pending_;
    pending_ = true;
  }
  if (QThread::currentThread() == thread())
    takeOver();
  else if (queue)
    QMetaObject::invokeMethod(this, &ListBoxModel::takeOver, Qt::QueuedConnection);
}

void ListBoxModel::setLines(int count, std::function<std::string(int row)> line) {
  beginResetModel();
  {
    const std::lock_guard guard(mutex_);
    pending_ = false;  // rows from before, if any are still waiting
    latest_.clear();
    shown_.assign(static_cast<std::size_t>(count), {});
  }
  for (int row = 0; row < count; ++row) shown_[static_cast<std::size_t>(row)].number = row;
  line_ = std::move(line);
  made_.assign(static_cast<std::size_t>(count), false);
  longest_ = -1;
  longestRoom_ = 0;
  for (nextLine_ = 0; nextLine_ < std::min(count, kFirstLines); ++nextLine_) makeLine(nextLine_);
  measuredLongest_ = longest_;
  endResetModel();
  shownEnabled_ = true;
  emit rowsChanged();
  if (nextLine_ < count) meanwhile_.start();
}

void ListBoxModel::makeLine(int row) const {
  const auto at = static_cast<std::size_t>(row);
  if (!line_ || made_[at]) return;
  made_[at] = true;
  shown_[at].text = line_(row);
  measure(row);
}

void ListBoxModel::measure(int row) const {
  constexpr std::size_t kColumn = 60;  // characters that a tab may stand for
  const std::string& text = shown_[static_cast<std::size_t>(row)].text;
  const std::size_t room =
      text.size() + kColumn * static_cast<std::size_t>(std::count(text.begin(), text.end(), '\t'));
  if (longest_ >= 0 && room <= longestRoom_) return;
  longest_ = row;
  longestRoom_ = room;
}

void ListBoxModel::makeLinesMeanwhile() {
  const int end = std::min(rowCount(), nextLine_ + kLinesMeanwhile);
  for (; nextLine_ < end; ++nextLine_) makeLine(nextLine_);
  if (nextLine_ < rowCount()) return;
  meanwhile_.stop();
  if (std::exchange(measuredLongest_, longest_) != longest_) emit widened();
}

std::vector<ListRow> ListBoxModel::rows() const {
  if (line_)
    for (int row = 0; row < rowCount(); ++row) makeLine(row);
  const std::lock_guard guard(mutex_);
  return pending_ ? latest_ : shown_;
}

void ListBoxModel::takeOver() {
  std::vector<ListRow> rows;
  bool enabled = true;
  {
    const std::lock_guard guard(mutex_);
    if (!pending_) return;
    pending_ = false;
    rows.swap(latest_);
    enabled = latestEnabled_;
  }
  const bool sameRows = !line_ && rows == shown_;
  if (!sameRows) {
    beginResetModel();
    {
      const std::lock_guard guard(mutex_);
      shown_ = std::move(rows);
    }
    line_ = {};
    meanwhile_.stop();
    longest_ = -1;
    longestRoom_ = 0;
    for (int row = 0; row < rowCount(); ++row) measure(row);
    endResetModel();
  }
  shownEnabled_ = enabled;
  emit rowsChanged();
}

const ListRow* ListBoxModel::row(int index) const {
  if (index < 0 || index >= rowCount()) return nullptr;
  makeLine(index);
  return &shown_[static_cast<std::size_t>(index)];
}

int ListBoxModel::rowOfNumber(int number) const {
  const auto found =
      std::find_if(shown_.begin(), shown_.end(), [number](const auto& row) { return row.number == number; });
  return found == shown_.end() ? -1 : static_cast<int>(found - shown_.begin());
}

int ListBoxModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(shown_.size());
}

Qt::ItemFlags ListBoxModel::flags(const QModelIndex& index) const {
  const bool choosable = index.isValid() && shown_[static_cast<std::size_t>(index.row())].choosable;
  return choosable ? QAbstractListModel::flags(index) : Qt::NoItemFlags;
}

QVariant ListBoxModel::data(const QModelIndex& index, int role) const {
  const ListRow* shown = row(index.row());
  if (shown == nullptr) return {};
  if (role == Qt::DisplayRole) return shownText(*shown);
  if (role == Qt::ToolTipRole) return shownText(*shown).toHtmlEscaped();
  return {};
}

int ListBoxDelegate::layOut(const QString& text, const QFontMetrics& metrics,
                            const std::function<void(int, const QString&)>& cell) const {
  const int unit = std::max(1, metrics.averageCharWidth());
  int x = 0;
  std::size_t stop = 0;
  const QStringList cells = text.split(QLatin1Char('\t'));
  for (qsizetype i = 0; i < cells.size(); ++i) {
    if (i > 0) {
      while (stop < tabStops_.size() && tabStops_[stop] * unit / 4 <= x) ++stop;
      x = stop < tabStops_.size() ? tabStops_[stop] * unit / 4 : x + 8 * unit;
    }
    cell(x, cells[i]);
    x += metrics.horizontalAdvance(cells[i]);
  }
  return x;
}

QSize ListBoxDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  // All rows report the width of the longest one: the view asks for one row only and scrolls by its width.
  const auto* model = qobject_cast<const ListBoxModel*>(index.model());
  const QModelIndex longest = model != nullptr ? model->index(std::max(0, model->longestRow())) : index;
  const QFontMetrics metrics(option.font);
  const int width =
      option.textElideMode == Qt::ElideNone ? textWidth(longest.data().toString(), metrics) + 2 : 0;
  return {width, metrics.height() + kRowGap};
}

int ListBoxDelegate::textWidth(const QString& text, const QFontMetrics& metrics) const {
  return layOut(text, metrics, [](int, const QString&) {}) + 2 * kTextMargin;
}

void ListBoxDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const {
  QStyleOptionViewItem style = option;
  initStyleOption(&style, index);
  const QString text = style.text;
  style.text.clear();
  const QWidget* widget = style.widget;
  (widget != nullptr ? widget->style() : QApplication::style())
      ->drawControl(QStyle::CE_ItemViewItem, &style, painter, widget);

  const auto* list = qobject_cast<const ListBox*>(widget);
  if (list != nullptr && list->found() == index) {
    QColor mark = style.palette.color(QPalette::Active, QPalette::Highlight);
    mark.setAlphaF(kMarkAlpha);
    painter->fillRect(style.rect, mark);
  }
  const bool enabled = (style.state & QStyle::State_Enabled) != 0;
  const bool selected = (style.state & QStyle::State_Selected) != 0;
  const QPalette::ColorGroup group = !enabled                                    ? QPalette::Disabled
                                     : (style.state & QStyle::State_Active) != 0 ? QPalette::Active
                                                                                 : QPalette::Inactive;
  painter->save();
  painter->setClipRect(style.rect);
  painter->setPen(selected  ? style.palette.color(group, QPalette::HighlightedText)
                  : enabled ? style.palette.color(group, QPalette::Text)
                            : dimmed(style.palette));
  painter->setFont(style.font);
  const QFontMetrics metrics(style.font);
  layOut(text, metrics, [&](int x, const QString& cell) {
    const QRect room = style.rect.adjusted(kTextMargin + x, 0, -kTextMargin, 0);
    const QString fitting = style.textElideMode == Qt::ElideNone
                                ? cell
                                : metrics.elidedText(cell, style.textElideMode, room.width());
    painter->drawText(room.adjusted(0, 0, kTextMargin, 0), Qt::AlignVCenter | Qt::TextSingleLine, fitting);
  });
  painter->restore();
}

ListBox::ListBox(QWidget* parent)
    : QListView(parent), delegate_(new ListBoxDelegate(this)), finder_(new ListFinder(*this)) {
  setModel(&model_);
  setItemDelegate(delegate_);
  setUniformItemSizes(true);
  setSelectionMode(QAbstractItemView::SingleSelection);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  setTextElideMode(Qt::ElideNone);
  setTabKeyNavigation(false);
  connect(&model_, &QAbstractItemModel::modelAboutToBeReset, this, &ListBox::keepPlace);
  connect(&model_, &ListBoxModel::rowsChanged, this, &ListBox::followModel);
  connect(&model_, &ListBoxModel::widened, this, &ListBox::scheduleDelayedItemsLayout);
}

int ListBox::selectedRow() const {
  const QModelIndexList selected = selectionModel()->selectedIndexes();
  return selected.isEmpty() ? -1 : selected.first().row();
}

const ListRow* ListBox::selected() const { return model_.row(selectedRow()); }

QSize ListBox::sizeHint() const { return sizeOfRows(6); }

QSize ListBox::minimumSizeHint() const { return sizeOfRows(2); }

QSize ListBox::sizeOfRows(int rows) const {
  const QFontMetrics metrics(font());
  return {metrics.averageCharWidth() * 18, rows * (metrics.height() + kRowGap) + 2 * frameWidth()};
}

void ListBox::keepPlace() { place_ = verticalScrollBar()->value(); }

void ListBox::makeCurrent(int row) {
  const int last = model_.rowCount() - 1;
  if (row < 0 || last < 0) return;
  const QModelIndex index = model_.index(std::min(row, last));
  selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
  scrollTo(index);
}

void ListBox::selectRow(int row) {
  quiet_ = true;
  if (row < 0 || row >= model_.rowCount()) {
    selectionModel()->clear();
  } else {
    setCurrentIndex(model_.index(row));
    scrollTo(model_.index(row));
  }
  quiet_ = false;
}

void ListBox::setTabStops(std::vector<int> dialogUnits) {
  delegate_->setTabStops(std::move(dialogUnits));
  scheduleDelayedItemsLayout();
  viewport()->update();
}

void ListBox::setPlaceholder(const QString& text) {
  placeholder_ = text;
  viewport()->update();
}

QModelIndex ListBox::found() const { return finder_->mark(); }

void ListBox::paintEvent(QPaintEvent* event) {
  QListView::paintEvent(event);
  if (model_.rowCount() > 0 || placeholder_.isEmpty()) return;
  QPainter painter(viewport());
  painter.setPen(dimmed(palette()));
  painter.drawText(viewport()->rect().adjusted(kTextMargin, kTextMargin, -kTextMargin, -kTextMargin),
                   Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, placeholder_);
}

bool ListBox::viewportEvent(QEvent* event) {
  // A row that is seen whole needs no tool tip.
  if (event->type() == QEvent::ToolTip) {
    const QModelIndex index = indexAt(static_cast<QHelpEvent*>(event)->pos());
    const int needed = delegate_->textWidth(index.data().toString(), QFontMetrics(font()));
    if (index.isValid() && needed <= viewport()->width()) {
      event->ignore();
      return true;
    }
  }
  return QListView::viewportEvent(event);
}

void ListBox::setAllowed(bool allowed) {
  allowed_ = allowed;
  followModel();
}

void ListBox::followModel() {
  setEnabled(allowed_ && model_.enabled());
  // A list that is drawn anew stays where it was scrolled to.
  if (verticalScrollBar()->value() != place_ && model_.rowCount() > 0) {
    executeDelayedItemsLayout();
    verticalScrollBar()->setValue(place_);
  }
}

void ListBox::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
  QListView::selectionChanged(selected, deselected);
  if (quiet_) return;
  changedByPress_ = true;
  emit chosen(selectedRow());
}

void ListBox::mousePressEvent(QMouseEvent* event) {
  changedByPress_ = false;
  // Asked first: what the press starts may fill this list anew.
  const bool beside = !indexAt(event->pos()).isValid();
  QListView::mousePressEvent(event);
  if (beside) selectionModel()->clear();
}

void ListBox::mouseReleaseEvent(QMouseEvent* event) {
  QListView::mouseReleaseEvent(event);
  const QModelIndex index = indexAt(event->pos());
  if (event->button() == Qt::LeftButton && !changedByPress_ && index.isValid() &&
      index.row() == selectedRow())
    emit chosen(index.row());
  changedByPress_ = false;
}

void ListBox::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  const bool arrow = event->key() == Qt::Key_Down || event->key() == Qt::Key_Up;
  if ((enter || arrow) && selectedRow() < 0 && currentIndex().isValid()) {
    // The first key selects the row that the keyboard stands on.
    selectionModel()->select(currentIndex(), QItemSelectionModel::ClearAndSelect);
    event->accept();
    return;
  }
  if (enter && selectedRow() >= 0) {
    emit chosen(selectedRow());
    event->accept();
    return;
  }
  QListView::keyPressEvent(event);
}

}  // namespace tessaly
