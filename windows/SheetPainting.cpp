#include "windows/SheetPainting.h"

#include <algorithm>
#include <array>

#include <QFont>
#include <QFontMetricsF>
#include <QPrinter>

#include "platform/Text.h"

namespace tessaly {

namespace {

constexpr int kFacePixels = 64;  // of the letters that are scaled to their size
constexpr double kPointsOfInch = 72;

QFont faceOf(PdfFace face) {
  QFont font;
  font.setFamilies({QStringLiteral("Helvetica"), QStringLiteral("Arial"), QStringLiteral("Liberation Sans"),
                    QStringLiteral("Nimbus Sans"), QStringLiteral("DejaVu Sans")});
  font.setStyleHint(QFont::SansSerif);
  font.setPixelSize(kFacePixels);
  font.setBold(face == PdfFace::kBold);
  font.setHintingPreference(QFont::PreferNoHinting);
  return font;
}

QColor grayOf(double gray) { return QColor::fromRgbF(float(gray), float(gray), float(gray)); }

void paintText(QPainter& painter, const SheetText& text, const QFont& font) {
  const QString letters = QString::fromStdString(windows1252ToUtf8(text.text));
  const double advance = QFontMetricsF(font, painter.device()).horizontalAdvance(letters);
  if (advance <= 0) return;
  painter.save();
  painter.translate(text.x, text.y);
  painter.scale(text.width / advance, text.size / kFacePixels);
  painter.setFont(font);
  painter.setPen(grayOf(text.gray));
  painter.drawText(QPointF(0, 0), letters);
  painter.restore();
}

}  // namespace

void paintSheetPage(QPainter& painter, const SheetPage& page) {
  const std::array faces{faceOf(PdfFace::kPlain), faceOf(PdfFace::kBold)};
  for (const SheetRule& rule : page.rules) {
    painter.setPen(QPen(grayOf(rule.gray), rule.width));
    painter.drawLine(QPointF(rule.x, rule.y), QPointF(rule.x + rule.length, rule.y));
  }
  for (const SheetText& text : page.texts)
    paintText(painter, text, faces[static_cast<std::size_t>(text.face)]);
}

Outcome printSheet(QPrinter& printer, const SheetPages& pages, const std::stop_token& stop) {
  const int count = static_cast<int>(pages.pages.size());
  const bool some = printer.printRange() == QPrinter::PageRange && printer.fromPage() > 0;
  const int first = some ? std::clamp(printer.fromPage(), 1, count) : 1;
  const int last = some ? std::clamp(printer.toPage(), first, count) : count;
  QPainter painter;
  if (!painter.begin(&printer)) return Failure{Failure::Kind::kDiskError, "the printer takes nothing"};
  for (int i = first; i <= last; ++i) {
    if (stop.stop_requested()) {
      printer.abort();
      return Failure{Failure::Kind::kCancelled, "cancelled"};
    }
    if (i > first && !printer.newPage())
      return Failure{Failure::Kind::kDiskError, "the printer takes no more pages"};
    const double dots = printer.resolution() / kPointsOfInch;
    const QRectF paper = printer.paperRect(QPrinter::DevicePixel);
    const double scale = std::min({dots, paper.width() / pages.width, paper.height() / pages.height});
    painter.save();
    painter.scale(scale, scale);
    paintSheetPage(painter, pages.pages[static_cast<std::size_t>(i - 1)]);
    painter.restore();
  }
  if (!painter.end() || printer.printerState() == QPrinter::Error)
    return Failure{Failure::Kind::kDiskError, "the printer failed"};
  return {};
}

}  // namespace tessaly
