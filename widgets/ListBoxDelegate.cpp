#include "widgets/ListBoxDelegate.h"

#include <algorithm>

#include <QApplication>
#include <QPainter>

#include "widgets/RowMark.h"
#include "widgets/RowsView.h"

namespace tessaly {

namespace {

constexpr float kDimmedInk = 0.7F;   // of the text colour; the rest is the ground's
constexpr int kMarkMargin = 2;       // pixels left and right of a row's mark
constexpr float kMarkAlpha = 0.35F;  // of the highlight behind a found row

}  // namespace

QColor dimmed(const QPalette& palette) {
  const QColor ink = palette.color(QPalette::Active, QPalette::Text);
  const QColor ground = palette.color(QPalette::Active, QPalette::Base);
  const auto mix = [](float a, float b) { return kDimmedInk * a + (1 - kDimmedInk) * b; };
  return QColor::fromRgbF(mix(ink.redF(), ground.redF()), mix(ink.greenF(), ground.greenF()),
                          mix(ink.blueF(), ground.blueF()));
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
  const auto* model = qobject_cast<const ListRows*>(index.model());
  const QModelIndex longest = model != nullptr ? model->index(std::max(0, model->longestRow())) : index;
  const QFontMetrics metrics(option.font);
  const int width =
      option.textElideMode == Qt::ElideNone ? textWidth(longest.data().toString(), metrics) + 2 : 0;
  return {width, metrics.height() + kRowGap};
}

int ListBoxDelegate::textWidth(const QString& text, const QFontMetrics& metrics) const {
  return markRoom(metrics) + layOut(text, metrics, [](int, const QString&) {}) + 2 * kTextMargin;
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

  const auto* list = qobject_cast<const RowsView*>(widget);
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
  const int before = markRoom(metrics);
  const auto mark = static_cast<RowMark>(index.data(kRowMarkRole).toInt());
  const QRect markPlace(style.rect.left() + kMarkMargin, style.rect.top(), before - 2 * kMarkMargin,
                        style.rect.height());
  if (marks_) drawRowMark(*painter, mark, markPlace, painter->pen().color());
  layOut(text, metrics, [&](int x, const QString& cell) {
    const QRect room = style.rect.adjusted(before + kTextMargin + x, 0, -kTextMargin, 0);
    const QString fitting = style.textElideMode == Qt::ElideNone
                                ? cell
                                : metrics.elidedText(cell, style.textElideMode, room.width());
    painter->drawText(room.adjusted(0, 0, kTextMargin, 0), Qt::AlignVCenter | Qt::TextSingleLine, fitting);
  });
  painter->restore();
}

}  // namespace tessaly
