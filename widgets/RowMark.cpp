#include "widgets/RowMark.h"

#include <algorithm>

#include <QPainter>

#include "widgets/InkIcon.h"

namespace tessaly {

namespace {

constexpr QRgb kRed = 0xFFC62828;
constexpr QRgb kAmber = 0xFFF9A825;

// All in a square of the side 1.
void drawError(QPainter& painter, const QPen& outline) {
  painter.setPen(outline);
  painter.setBrush(QColor(kRed));
  painter.drawRect(QRectF(0.08, 0.08, 0.84, 0.84));
  painter.setPen(QPen(Qt::white, 0.14, Qt::SolidLine, Qt::RoundCap));
  painter.drawLine(QPointF(0.3, 0.3), QPointF(0.7, 0.7));
  painter.drawLine(QPointF(0.7, 0.3), QPointF(0.3, 0.7));
}

void drawWarning(QPainter& painter, const QPen& outline) {
  painter.setPen(outline);
  painter.setBrush(QColor(kAmber));
  painter.drawPolygon(QPolygonF({{0.5, 0.06}, {0.96, 0.92}, {0.04, 0.92}}));
  painter.setPen(QPen(Qt::black, 0.13, Qt::SolidLine, Qt::RoundCap));
  painter.drawLine(QPointF(0.5, 0.38), QPointF(0.5, 0.6));
  painter.drawLine(QPointF(0.5, 0.77), QPointF(0.5, 0.78));
}

void drawNote(QPainter& painter, const QPen& outline) {
  painter.setPen(QPen(outline.color(), 0.13));
  painter.setBrush(Qt::NoBrush);
  painter.drawEllipse(QRectF(0.22, 0.22, 0.56, 0.56));
}

void drawDone(QPainter& painter, const QPen& outline) {
  painter.setPen(QPen(outline.color(), 0.15, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.setBrush(Qt::NoBrush);
  painter.drawPolyline(QPolygonF({{0.16, 0.54}, {0.4, 0.8}, {0.86, 0.22}}));
}

}  // namespace

void drawRowMark(QPainter& painter, RowMark mark, const QRectF& room, const QColor& ink) {
  if (mark == RowMark::kNone) return;
  const qreal side = std::min(room.width(), room.height());
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(room.center() - QPointF(side / 2, side / 2));
  painter.scale(side, side);
  const QPen outline(ink, 0.07);
  switch (mark) {
    case RowMark::kNone:
      break;
    case RowMark::kNote:
      drawNote(painter, outline);
      break;
    case RowMark::kWarning:
      drawWarning(painter, outline);
      break;
    case RowMark::kError:
      drawError(painter, outline);
      break;
    case RowMark::kDone:
      drawDone(painter, outline);
      break;
  }
  painter.restore();
}

QIcon rowMarkIcon(RowMark mark) {
  return inkIcon(QPalette::Text, [mark](QPainter& painter, const QRectF& room, const QColor& ink) {
    drawRowMark(painter, mark, room, ink);
  });
}

}  // namespace tessaly
