#include "windows/SheetPreview.h"

#include <algorithm>
#include <cmath>

#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

#include "windows/SheetPainting.h"

namespace tessaly {

namespace {

constexpr double kGap = 12;  // pixels, around each page
constexpr double kPointsOfInch = 72;
constexpr double kZoomStep = 1.15, kLeastZoom = 0.25, kMostZoom = 4;

}  // namespace

SheetPreview::SheetPreview(QWidget* parent) : QAbstractScrollArea(parent) {
  setFocusPolicy(Qt::StrongFocus);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);  // else the width would follow the pages' and they it
  viewport()->setBackgroundRole(QPalette::Mid);
  viewport()->setAutoFillBackground(true);
}

void SheetPreview::setPages(std::shared_ptr<const SheetPages> pages) {
  const int before = std::max(page(), 0);
  pages_ = std::move(pages);
  place();
  showPage(std::min(before, pageCount() - 1));
  told_ = -1;
  tell();
  viewport()->update();
}

void SheetPreview::setZoom(std::optional<double> zoom) {
  const double part = pages_ ? verticalScrollBar()->value() / stride() : 0;
  zoom_ = zoom;
  place();
  if (pages_) verticalScrollBar()->setValue(static_cast<int>(std::lround(part * stride())));
  viewport()->update();
}

int SheetPreview::pageCount() const { return pages_ ? static_cast<int>(pages_->pages.size()) : 0; }

double SheetPreview::scale() const {
  if (zoom_) return *zoom_ * logicalDpiX() / kPointsOfInch;
  return std::max(1.0, viewport()->width() - 2 * kGap) / pages_->width;
}

double SheetPreview::stride() const { return pages_->height * scale() + kGap; }

int SheetPreview::page() const {
  if (!pages_) return -1;
  const double middle = verticalScrollBar()->value() + viewport()->height() / 2.0;
  return std::clamp(static_cast<int>(middle / stride()), 0, pageCount() - 1);
}

void SheetPreview::showPage(int page) {
  if (pages_) verticalScrollBar()->setValue(static_cast<int>(std::lround(page * stride())));
}

void SheetPreview::place() {
  const int height = pages_ ? static_cast<int>(std::ceil(stride() * pageCount() + kGap)) : 0;
  const int width = pages_ ? static_cast<int>(std::ceil(pages_->width * scale() + 2 * kGap)) : 0;
  verticalScrollBar()->setRange(0, std::max(0, height - viewport()->height()));
  verticalScrollBar()->setPageStep(viewport()->height());
  verticalScrollBar()->setSingleStep(fontMetrics().height() * 2);
  horizontalScrollBar()->setRange(0, zoom_ ? std::max(0, width - viewport()->width()) : 0);
  horizontalScrollBar()->setPageStep(viewport()->width());
  tell();
}

void SheetPreview::paintEvent(QPaintEvent* event) {
  if (!pages_) return;
  QPainter painter(viewport());
  painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
  const double width = pages_->width * scale(), height = pages_->height * scale();
  const double top = verticalScrollBar()->value();
  const double left = std::max(kGap, (viewport()->width() - width) / 2) - horizontalScrollBar()->value();
  const int first = std::max(0, static_cast<int>((top + event->rect().top()) / stride()) - 1);
  for (int i = first; i < pageCount(); ++i) {
    const QRectF paper(left, kGap + i * stride() - top, width, height);
    if (paper.top() > event->rect().bottom()) break;
    painter.fillRect(paper, Qt::white);
    painter.save();
    painter.translate(paper.topLeft());
    painter.scale(scale(), scale());
    paintSheetPage(painter, pages_->pages[static_cast<std::size_t>(i)]);
    painter.restore();
  }
  if (hasFocus()) {
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.drawRect(viewport()->rect().adjusted(1, 1, -1, -1));
  }
}

void SheetPreview::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  place();
}

void SheetPreview::wheelEvent(QWheelEvent* event) {
  if (!event->modifiers().testFlag(Qt::ControlModifier)) return QAbstractScrollArea::wheelEvent(event);
  zoomBy(event->angleDelta().y() > 0 ? kZoomStep : 1 / kZoomStep);
  event->accept();
}

void SheetPreview::keyPressEvent(QKeyEvent* event) {
  const bool control = event->modifiers().testFlag(Qt::ControlModifier);
  if (event->key() == Qt::Key_Home)
    verticalScrollBar()->setValue(0);
  else if (event->key() == Qt::Key_End)
    verticalScrollBar()->setValue(verticalScrollBar()->maximum());
  else if (control && (event->key() == Qt::Key_Plus || event->key() == Qt::Key_Equal))
    zoomBy(kZoomStep);
  else if (control && event->key() == Qt::Key_Minus)
    zoomBy(1 / kZoomStep);
  else
    QAbstractScrollArea::keyPressEvent(event);
}

void SheetPreview::scrollContentsBy(int dx, int dy) {
  viewport()->scroll(dx, dy);
  viewport()->update();
  tell();
}

void SheetPreview::zoomBy(double factor) {
  if (!pages_) return;
  setZoom(std::clamp(scale() * kPointsOfInch / logicalDpiX() * factor, kLeastZoom, kMostZoom));
  emit zoomChanged(*zoom_);
}

void SheetPreview::tell() {
  const int now = page();
  setAccessibleDescription(
      now < 0 ? QString() : tr("page %1 of %2").arg(QString::number(now + 1), QString::number(pageCount())));
  if (now == std::exchange(told_, now)) return;
  emit pageChanged(now);
}

}  // namespace tessaly
