#include "windows/CompareDelegate.h"

#include <algorithm>

#include <QApplication>
#include <QPainter>

namespace tessaly {

namespace {

using Kind = DiffRow::Kind;

constexpr float kRowTint = 0.14F;  // of the hue; the rest is the palette's ground
constexpr float kMarkTint = 0.34F;
constexpr float kHatchInk = 0.35F;  // of the text colour, in a gap
constexpr int kArrowMargin = 3;     // pixels between the frame of an arrow and the arrow
const QString kEllipsis = QStringLiteral("\u2026");

QColor hue(Kind kind) {
  switch (kind) {
    case Kind::kSame:
    case Kind::kSameMeaning:
      return {0x80, 0x80, 0x80};
    case Kind::kChanged:
      return {0xE0, 0xA0, 0x00};
    case Kind::kOnlyA:
    case Kind::kOnlyB:
      return {0x20, 0x90, 0xD0};
    case Kind::kMovedFrom:
    case Kind::kMovedTo:
      return {0x90, 0x60, 0xD0};
  }
  return {};
}

QPalette::ColorGroup groupOf(const QStyleOptionViewItem& style) {
  if ((style.state & QStyle::State_Enabled) == 0) return QPalette::Disabled;
  return (style.state & QStyle::State_Active) != 0 ? QPalette::Active : QPalette::Inactive;
}

// A piece of a line that is written in one font.
struct Piece {
  QString text;
  bool marked = false;
};

std::vector<Piece> piecesOf(const QString& line, const std::vector<TextPart>& marks, qsizetype from) {
  std::vector<Piece> pieces;
  const auto add = [&](qsizetype begin, qsizetype end, bool marked) {
    begin = std::max(begin, from);
    if (begin < end) pieces.push_back({line.mid(begin, end - begin), marked});
  };
  qsizetype at = 0;
  for (const TextPart& mark : marks) {
    add(at, mark.begin, false);
    add(mark.begin, mark.end, true);
    at = mark.end;
  }
  add(at, line.size(), false);
  return pieces;
}

// Where a line begins to be shown so that its first mark fits in.
qsizetype firstShown(const QString& line, const std::vector<TextPart>& marks, const QFontMetrics& bold,
                     int room) {
  if (marks.empty() || bold.horizontalAdvance(line.left(marks.front().end)) <= room) return 0;
  const qsizetype end = marks.front().end;
  const int half = room / 2 - bold.horizontalAdvance(kEllipsis);
  qsizetype begin = marks.front().begin;
  while (begin > 0 && bold.horizontalAdvance(line.mid(begin - 1, end - begin + 1)) < half) --begin;
  return begin;
}

}  // namespace

QColor compareGround(const QPalette& palette, Kind kind, bool marked) {
  const QColor base = palette.color(QPalette::Active, QPalette::Base);
  if (kind == Kind::kSame) return base;
  const QColor tint = hue(kind);
  const float share = marked ? kMarkTint : kRowTint;
  const auto mix = [share](float a, float b) { return share * a + (1 - share) * b; };
  return QColor::fromRgbF(mix(tint.redF(), base.redF()), mix(tint.greenF(), base.greenF()),
                          mix(tint.blueF(), base.blueF()));
}

void CompareDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const {
  QStyleOptionViewItem style = option;
  initStyleOption(&style, index);
  const int column = index.column();
  const DiffRow& row = model_.at(index.row());
  style.backgroundBrush = compareGround(style.palette, row.kind, false);
  const bool line = column == CompareModel::kLineA || column == CompareModel::kLineB;
  if (line) style.text.clear();
  const QStyle& look = style.widget != nullptr ? *style.widget->style() : *QApplication::style();
  look.drawControl(QStyle::CE_ItemViewItem, &style, painter, style.widget);
  painter->save();
  painter->setClipRect(style.rect);
  if (line)
    paintLine(*painter, style, index.row(), column == CompareModel::kLineA ? Side::kA : Side::kB);
  else if ((column == CompareModel::kTakeA || column == CompareModel::kTakeB) && model_.begins(index.row()))
    paintArrow(*painter, style, column == CompareModel::kTakeA ? Side::kA : Side::kB);
  painter->restore();
}

void CompareDelegate::paintLine(QPainter& painter, const QStyleOptionViewItem& style, int row,
                                Side side) const {
  const QPalette::ColorGroup group = groupOf(style);
  const bool selected = (style.state & QStyle::State_Selected) != 0;
  const DiffRow& here = model_.at(row);
  if (!here.shows(side)) {
    QColor hatch = style.palette.color(group, QPalette::Text);
    hatch.setAlphaF(kHatchInk);
    painter.fillRect(style.rect, QBrush(hatch, Qt::BDiagPattern));
    return;
  }
  const QString line =
      model_.index(row, side == Side::kA ? CompareModel::kLineA : CompareModel::kLineB).data().toString();
  const std::vector<TextPart>& marks = model_.marks(row, side);
  QFont bold = style.font;
  bold.setBold(true);
  bold.setUnderline(true);
  const QFontMetrics plainRoom(style.font), boldRoom(bold);
  const QRect room = style.rect.adjusted(kMargin, 0, -kMargin, 0);
  const qsizetype from = firstShown(line, marks, boldRoom, room.width());
  std::vector<Piece> pieces = piecesOf(line, marks, from);
  if (from > 0) pieces.insert(pieces.begin(), {kEllipsis, false});
  painter.setPen(style.palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text));
  int x = room.left();
  for (const Piece& piece : pieces) {
    if (x > room.right()) break;
    const QFontMetrics& metrics = piece.marked ? boldRoom : plainRoom;
    const QString text = metrics.elidedText(piece.text, Qt::ElideRight, room.right() - x + 1);
    const QRect place(x, room.top(), metrics.horizontalAdvance(text), room.height());
    if (piece.marked && !selected) painter.fillRect(place, compareGround(style.palette, here.kind, true));
    painter.setFont(piece.marked ? bold : style.font);
    painter.drawText(place.adjusted(0, 0, kMargin, 0), Qt::AlignVCenter | Qt::TextSingleLine, text);
    if (text != piece.text) break;  // cut
    x += place.width();
  }
}

void CompareDelegate::paintArrow(QPainter& painter, const QStyleOptionViewItem& style, Side side) const {
  const QStyle& look = style.widget != nullptr ? *style.widget->style() : *QApplication::style();
  QStyleOption button;
  button.palette = style.palette;
  button.rect = style.rect.adjusted(1, 1, -1, -1);
  button.state = model_.refuses(side) ? QStyle::State_None : QStyle::State_Enabled | QStyle::State_Raised;
  look.drawPrimitive(QStyle::PE_PanelButtonCommand, &button, &painter, style.widget);
  const int size = std::min(button.rect.width(), button.rect.height()) - 2 * kArrowMargin;
  QRect arrow(0, 0, size, size);
  arrow.moveCenter(button.rect.center());
  const QPalette::ColorGroup group = model_.refuses(side) ? QPalette::Disabled : QPalette::Active;
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(style.palette.color(group, QPalette::ButtonText));
  const bool left = side == Side::kA;
  painter.drawPolygon(
      QPolygonF({left ? arrow.topRight() : arrow.topLeft(), left ? arrow.bottomRight() : arrow.bottomLeft(),
                 QPointF(left ? arrow.left() : arrow.right(), arrow.center().y())}));
}

}  // namespace tessaly
