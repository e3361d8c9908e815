#include "windows/ElidedLine.h"

#include <QEvent>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace tessaly {

ElidedLine::ElidedLine(QWidget* parent, Qt::TextElideMode dots) : QLabel(parent), dots_(dots) {
  setTextFormat(Qt::PlainText);
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

QSize ElidedLine::sizeHint() const {
  return {fontMetrics().horizontalAdvance(text()) + 1, fontMetrics().height()};  // screens round
}

QSize ElidedLine::minimumSizeHint() const { return {0, fontMetrics().height()}; }

QString ElidedLine::elided() const { return fontMetrics().elidedText(text(), dots_, contentsRect().width()); }

bool ElidedLine::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip || elided() == text()) return QLabel::event(event);
  QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(),
                     QStringLiteral("<p>%1</p>").arg(text().toHtmlEscaped()), this);
  return true;
}

void ElidedLine::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setFont(font());
  painter.setPen(palette().color(foregroundRole()));
  painter.drawText(contentsRect(), static_cast<int>(alignment()) | Qt::TextSingleLine, elided());
}

}  // namespace tessaly
