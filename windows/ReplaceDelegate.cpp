#include "windows/ReplaceDelegate.h"

#include <QApplication>
#include <QPainter>
#include <QTextLayout>

#include "review/LineChanges.h"
#include "windows/ReplaceModel.h"

namespace tessaly {

namespace {

// Of the line as it is shown, beside the other one of the same row.
QList<QTextLayout::FormatRange> marksOf(const QModelIndex& index, const QString& line) {
  const int other = index.column() == ReplaceModel::kBefore ? ReplaceModel::kAfter : ReplaceModel::kBefore;
  const std::string here = line.toStdString();
  const std::string there = index.siblingAtColumn(other).data().toString().toStdString();
  QTextCharFormat marked;
  marked.setFontWeight(QFont::Bold);
  marked.setFontUnderline(true);
  QList<QTextLayout::FormatRange> marks;
  for (const LinePart& part : changesInside(here, there).a) {
    const auto before = QString::fromStdString(here.substr(0, part.begin)).size();
    const auto size = QString::fromStdString(here.substr(part.begin, part.end - part.begin)).size();
    marks.append({static_cast<int>(before), static_cast<int>(size), marked});
  }
  return marks;
}

bool hasMarks(const QModelIndex& index) {
  const auto* model = qobject_cast<const ReplaceModel*>(index.model());
  const bool line = index.column() == ReplaceModel::kBefore || index.column() == ReplaceModel::kAfter;
  const RetargetProposal* proposal = model != nullptr && line ? model->proposal(index) : nullptr;
  return proposal != nullptr && proposal->possible();
}

}  // namespace

void ReplaceDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const {
  if (!hasMarks(index)) {
    QStyledItemDelegate::paint(painter, option, index);
    return;
  }
  QStyleOptionViewItem style = option;
  initStyleOption(&style, index);
  const QString line = std::exchange(style.text, {});
  const QStyle& look = style.widget != nullptr ? *style.widget->style() : *QApplication::style();
  look.drawControl(QStyle::CE_ItemViewItem, &style, painter, style.widget);
  QTextLayout layout(line, style.font);
  QTextOption onOneLine;
  onOneLine.setWrapMode(QTextOption::NoWrap);
  layout.setTextOption(onOneLine);
  layout.setFormats(marksOf(index, line));
  layout.beginLayout();
  QTextLine only = layout.createLine();
  layout.endLayout();
  const int margin = look.pixelMetric(QStyle::PM_FocusFrameHMargin, &style, style.widget) + 1;
  const bool selected = (style.state & QStyle::State_Selected) != 0;
  const bool active = (style.state & QStyle::State_Active) != 0;
  painter->save();
  painter->setClipRect(style.rect);
  painter->setPen(style.palette.color(active ? QPalette::Active : QPalette::Inactive,
                                      selected ? QPalette::HighlightedText : QPalette::Text));
  const qreal y = style.rect.top() + (style.rect.height() - only.height()) / 2;
  layout.draw(painter, {static_cast<qreal>(style.rect.left() + margin), y});
  painter->restore();
}

}  // namespace tessaly
