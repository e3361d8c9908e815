#include "widgets/ListFinder.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QShortcut>

#include "widgets/RowsView.h"

namespace tessaly {

namespace {

constexpr int kMargin = 3;           // pixels around the field
constexpr float kMarkAlpha = 0.35F;  // of the highlight over a found row

// Of the view; nothing over the keyboard and the mouse.
QWidget* markOver(QAbstractItemView& list) {
  auto* mark = new QWidget(list.viewport());
  mark->setAttribute(Qt::WA_TransparentForMouseEvents);
  mark->setAutoFillBackground(true);
  mark->hide();
  return mark;
}

}  // namespace

ListFinder::ListFinder(QAbstractItemView& list) : QObject(&list), list_(list) {
  list_.installEventFilter(this);
  const auto key = [this](const QKeySequence& keys, auto action) {
    auto* shortcut = new QShortcut(keys, &list_);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    connect(shortcut, &QShortcut::activated, this, action);
  };
  key(QKeySequence::Find, [this] { open(); });
  key(QKeySequence(Qt::Key_F3), [this] { goOn(1); });
  key(Qt::SHIFT | Qt::Key_F3, [this] { goOn(-1); });
}

void ListFinder::makeField() {
  field_ = new QFrame(&list_);
  text_ = new QLineEdit(field_);
  count_ = new QLabel(field_);
  auto* layout = new QHBoxLayout(field_);
  layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  layout->addWidget(text_, 1);
  layout->addWidget(count_);
  field_->setFrameShape(QFrame::StyledPanel);
  field_->setAutoFillBackground(true);
  text_->setPlaceholderText(tr("find"));
  text_->setAccessibleName(tr("Find in the list"));
  text_->setToolTip(tr("F3: next, Shift+F3: the one before, Enter: choose, Esc: leave"));
  text_->installEventFilter(this);
  connect(text_, &QLineEdit::textChanged, this, [this] { find(std::max(0, found_.row()), 1); });
  field_->hide();
  QWidget::setTabOrder(&list_, text_);
  if (qobject_cast<RowsView*>(&list_) != nullptr) return;
  mark_ = markOver(list_);
  for (const QScrollBar* bar : {list_.verticalScrollBar(), list_.horizontalScrollBar()})
    connect(bar, &QScrollBar::valueChanged, this, &ListFinder::placeMark);
}

void ListFinder::open() {
  if (field_ == nullptr) makeField();
  if (!isOpen()) {
    found_ = list_.currentIndex();
    place();
    field_->show();
    field_->raise();
  }
  text_->setFocus(Qt::ShortcutFocusReason);
  text_->selectAll();
  if (!text_->text().isEmpty()) find(std::max(0, found_.row()), 1);
}

void ListFinder::goOn(int step) {
  if (!isOpen()) {
    open();
    if (text_->text().isEmpty()) return;
  }
  find(found_.isValid() ? found_.row() + step : 0, step);
}

void ListFinder::find(int start, int step) {
  const QAbstractItemModel& model = *list_.model();
  const int rows = model.rowCount();
  const QString wanted = text_->text();
  const auto holds = [&](int row) {
    for (int column = 0; column < model.columnCount(); ++column)
      if (model.index(row, column).data().toString().contains(wanted, Qt::CaseInsensitive)) return true;
    return false;
  };
  found_ = QModelIndex();
  int count = 0;
  if (!wanted.isEmpty())
    for (int row = 0; row < rows; ++row) count += holds(row) ? 1 : 0;
  for (int i = 0; count > 0 && !found_.isValid(); ++i) {
    const int row = ((start + i * step) % rows + rows) % rows;
    if (holds(row)) found_ = model.index(row, 0);
  }
  count_->setText(wanted.isEmpty() ? QString()
                  : count == 0     ? tr("not found")
                                   : tr("%n found", nullptr, count));
  if (found_.isValid()) list_.scrollTo(found_, QAbstractItemView::PositionAtCenter);
  list_.viewport()->update();
  placeMark();
}

void ListFinder::placeMark() {
  if (mark_ == nullptr) return;
  const QRect row = mark().isValid() ? list_.visualRect(found_) : QRect();
  QColor colour = list_.palette().color(QPalette::Active, QPalette::Highlight);
  colour.setAlphaF(kMarkAlpha);
  mark_->setPalette(colour);
  mark_->setGeometry(0, row.top(), list_.viewport()->width(), row.height());
  mark_->setVisible(row.isValid());
}

void ListFinder::close(bool choose) {
  if (!isOpen()) return;
  const QModelIndex found = mark();
  list_.setFocus(Qt::OtherFocusReason);
  field_->hide();
  list_.viewport()->update();
  placeMark();
  if (!found.isValid()) return;
  const QModelIndexList selected = list_.selectionModel()->selectedRows();
  if (choose && (selected.size() != 1 || selected.front().row() != found.row())) {
    list_.setCurrentIndex(found);
  } else {
    list_.selectionModel()->setCurrentIndex(found, QItemSelectionModel::NoUpdate);
    list_.scrollTo(found);
  }
}

void ListFinder::place() {
  const QRect room = list_.viewport()->geometry();
  const int height = field_->sizeHint().height();
  field_->setGeometry(room.left(), room.bottom() - height + 1, room.width(), height);
}

bool ListFinder::eventFilter(QObject* watched, QEvent* event) {
  if (watched == &list_) {
    if (!isOpen()) return false;
    if (event->type() == QEvent::Resize) {
      place();
      placeMark();
    }
    if (event->type() == QEvent::EnabledChange && !list_.isEnabled()) field_->hide();
    return false;
  }
  if (event->type() == QEvent::FocusOut && isOpen() && !text_->hasFocus()) {
    field_->hide();
    if (mark_ != nullptr) mark_->hide();
    // The keyboard also goes while the list is being destroyed.
    if (auto* list = qobject_cast<QAbstractScrollArea*>(parent())) list->viewport()->update();
    return false;
  }
  if (event->type() != QEvent::KeyPress) return false;
  switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Escape:
      close(false);
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      close(true);
      return true;
    case Qt::Key_Down:
      goOn(1);
      return true;
    case Qt::Key_Up:
      goOn(-1);
      return true;
    default:
      return false;
  }
}

}  // namespace tessaly
