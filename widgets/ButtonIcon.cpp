#include "widgets/ButtonIcon.h"

#include <algorithm>
#include <memory>
#include <vector>

#include <QImage>
#include <QLayout>
#include <QPainter>

#include "widgets/AtEach.h"
#include "widgets/InkIcon.h"

static void initButtons() { Q_INIT_RESOURCE(buttons); }

namespace tessaly {

namespace {

// All pictures in a row, from small to large.
const std::vector<QImage>& sheets() {
  static const std::vector<QImage> read = [] {
    initButtons();
    std::vector<QImage> found;
    for (const char* size : {"16", "24", "32", "48"})
      found.emplace_back(QStringLiteral(":/icons/buttons-%1.png").arg(QLatin1String(size)));
    return found;
  }();
  return read;
}

void draw(ButtonIcon icon, QPainter& painter, const QRectF& room, const QColor& ink) {
  const double wanted = room.height() * painter.device()->devicePixelRatioF();
  const auto fits = [&](const QImage& sheet) { return sheet.height() >= wanted; };
  const auto found = std::ranges::find_if(sheets(), fits);
  const QImage& sheet = found != sheets().end() ? *found : sheets().back();
  const int side = sheet.height();
  QImage picture = sheet.copy(static_cast<int>(icon) * side, 0, side, side)
                       .convertToFormat(QImage::Format_ARGB32_Premultiplied);
  QPainter colouring(&picture);
  colouring.setCompositionMode(QPainter::CompositionMode_SourceIn);
  colouring.fillRect(picture.rect(), ink);
  colouring.end();
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.drawImage(QRectF(room.topLeft(), QSizeF(room.height(), room.height())), picture);
}

}  // namespace

void setIcons(ButtonIcons icons) {
  for (const auto& [button, icon] : icons)
    button->setIcon(
        inkIcon(QPalette::ButtonText, [icon = icon](QPainter& painter, const QRectF& room,
                                                    const QColor& ink) { draw(icon, painter, room, ink); }));
}

void setIconsWhereTheyFit(QWidget& area, ButtonIcons icons) {
  setIcons(icons);
  std::vector<std::pair<QAbstractButton*, QIcon>> buttons;
  for (const auto& [button, icon] : icons) buttons.emplace_back(button, button->icon());
  const auto show = [buttons](bool shown) {
    for (const auto& [button, icon] : buttons) button->setIcon(shown ? icon : QIcon());
  };
  const auto needed = std::make_shared<int>(0);  // pixels
  const auto fit = [show, needed, &area] { show(area.width() >= *needed); };
  nowAndAtEach(QEvent::FontChange, area, [buttons, show, needed, fit, &area] {
    show(false);
    for (const auto& [button, icon] : buttons) button->setMinimumWidth(button->sizeHint().width());
    show(true);
    area.layout()->invalidate();
    *needed = area.layout()->sizeHint().width();
    fit();
  });
  nowAndAtEach(QEvent::Resize, area, fit);
}

}  // namespace tessaly
