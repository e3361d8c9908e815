#include "widgets/ListBoxDelegate.h"

#include <algorithm>
#include <functional>

#include <QApplication>
#include <QPainter>

#include "widgets/DialogText.h"
#include "widgets/RowsView.h"

namespace tessaly {

namespace {

constexpr float kDimmedInk = 0.7F;   // of the text colour; the rest is the ground's
constexpr int kUnitsACharacter = 4;  // dialog units
constexpr int kColumnGap = 2;        // characters between two columns
constexpr int kStripe = 3;           // pixels, and one of the ground beside it
constexpr int kMarkMargin = 2;       // pixels left and right of a row's mark
constexpr float kMarkAlpha = 0.35F;  // of the highlight behind a found row

// As it is drawn: the blanks that texts of values may begin with would put them beside their column.
QString shownCell(const std::string& cell, bool isValue) {
  const QString text = shown(cell);
  return isValue ? text.trimmed() : text;
}

// Calls `cell` with each tab-separated cell, its offset and its width in pixels. What follows a cell that
// runs over gives way.
void layOut(const QString& text, const QFontMetrics& metrics, const std::vector<int>& starts,
            const std::function<void(int x, const QString& text, int width)>& cell) {
  int x = 0;
  const QStringList cells = text.split(QLatin1Char('\t'));
  for (qsizetype i = 0; i < cells.size(); ++i) {
    const QString shownText = i == 0 ? cells[i] : cells[i].trimmed();
    const auto column = static_cast<std::size_t>(i);
    if (i > 0) x += kColumnGap * metrics.averageCharWidth();
    if (column < starts.size()) x = std::max(x, starts[column]);
    const int width = metrics.horizontalAdvance(shownText);
    cell(x, shownText, width);
    x += width;
  }
}

}  // namespace

QColor dimmed(const QPalette& palette) {
  const QColor ink = palette.color(QPalette::Active, QPalette::Text);
  const QColor ground = palette.color(QPalette::Active, QPalette::Base);
  const auto mix = [](float a, float b) { return kDimmedInk * a + (1 - kDimmedInk) * b; };
  return QColor::fromRgbF(mix(ink.redF(), ground.redF()), mix(ink.greenF(), ground.greenF()),
                          mix(ink.blueF(), ground.blueF()));
}

std::vector<int> ListBoxDelegate::columnStarts(const ListRows* rows, const QFontMetrics& metrics) const {
  const int unit = std::max(1, metrics.averageCharWidth());
  const std::size_t known = rows != nullptr ? rows->columns().size() : 0;
  std::vector<int> starts{0};
  for (std::size_t next = 1; next < std::max(known, tabStops_.size() + 1); ++next) {
    const int told = next <= tabStops_.size() ? tabStops_[next - 1] * unit / kUnitsACharacter : 0;
    const QString widest = next <= known ? shownCell(rows->columns()[next - 1].inner, next > 1) : QString();
    starts.push_back(std::max(told, starts.back() + metrics.horizontalAdvance(widest) + kColumnGap * unit));
  }
  return starts;
}

int ListBoxDelegate::widestRow(const ListRows& rows, const QFontMetrics& metrics) const {
  const std::vector<int> starts = columnStarts(&rows, metrics);
  int widest = 0;
  for (std::size_t i = 0; i < rows.columns().size(); ++i)
    widest =
        std::max(widest, starts[i] + metrics.horizontalAdvance(shownCell(rows.columns()[i].last, i > 0)));
  return markRoom(metrics) + widest + 2 * kTextMargin;
}

QSize ListBoxDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  // All rows report the width of the widest one: the view asks for one row only and scrolls by its width.
  const auto* rows = qobject_cast<const ListRows*>(index.model());
  const QFontMetrics metrics(option.font);
  const int width = option.textElideMode != Qt::ElideNone ? 0
                    : rows != nullptr                     ? widestRow(*rows, metrics) + 2
                                                          : rowWidth(index, metrics) + 2;
  return {width, metrics.height() + kRowGap};
}

int ListBoxDelegate::rowWidth(const QModelIndex& index, const QFontMetrics& metrics) const {
  int end = 0;
  layOut(index.data().toString(), metrics,
         columnStarts(qobject_cast<const ListRows*>(index.model()), metrics),
         [&end](int x, const QString&, int width) { end = x + width; });
  return markRoom(metrics) + end + 2 * kTextMargin;
}

void ListBoxDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const {
  QStyleOptionViewItem style = option;
  initStyleOption(&style, index);
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
  if (const auto stripe = index.data(kRowStripeRole).value<QColor>(); stripe.isValid()) {
    const QRect edge(style.rect.left(), style.rect.top(), kStripe + 1, style.rect.height());
    painter->fillRect(edge, style.palette.color(QPalette::Active, QPalette::Base));
    painter->fillRect(edge.adjusted(0, 0, -1, 0), stripe);
  }
  painter->save();
  drawText(*painter, style, index);
  painter->restore();
}

void ListBoxDelegate::drawText(QPainter& painter, const QStyleOptionViewItem& style,
                               const QModelIndex& index) const {
  const bool enabled = (style.state & QStyle::State_Enabled) != 0;
  const bool selected = (style.state & QStyle::State_Selected) != 0;
  const QPalette::ColorGroup group = !enabled                                    ? QPalette::Disabled
                                     : (style.state & QStyle::State_Active) != 0 ? QPalette::Active
                                                                                 : QPalette::Inactive;
  painter.setClipRect(style.rect);
  painter.setPen(selected  ? style.palette.color(group, QPalette::HighlightedText)
                 : enabled ? style.palette.color(group, QPalette::Text)
                           : dimmed(style.palette));
  painter.setFont(style.font);
  const QFontMetrics metrics(style.font);
  const int before = markRoom(metrics);
  const auto mark = static_cast<RowMark>(index.data(kRowMarkRole).toInt());
  const QRect markPlace(style.rect.left() + kMarkMargin, style.rect.top(), before - 2 * kMarkMargin,
                        style.rect.height());
  if (marks_) drawRowMark(painter, mark, markPlace, painter.pen().color());
  const std::vector<int> starts = columnStarts(qobject_cast<const ListRows*>(index.model()), metrics);
  layOut(index.data().toString(), metrics, starts, [&](int x, const QString& cell, int) {
    const QRect room = style.rect.adjusted(before + kTextMargin + x, 0, -kTextMargin, 0);
    const QString fitting = style.textElideMode == Qt::ElideNone
                                ? cell
                                : metrics.elidedText(cell, style.textElideMode, room.width());
    painter.drawText(room.adjusted(0, 0, kTextMargin, 0), Qt::AlignVCenter | Qt::TextSingleLine, fitting);
  });
}

}  // namespace tessaly
