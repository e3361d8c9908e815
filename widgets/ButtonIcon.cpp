#include "widgets/ButtonIcon.h"

#include <algorithm>
#include <array>
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

constexpr std::array kSides{16, 24, 32, 48};  // pixels

// All pictures in a row, of the least size that is large enough, if there is one.
const QImage& sheetFor(double wanted) {
  static std::array<QImage, kSides.size()> read;
  const auto fits = [wanted](int side) { return side >= wanted; };
  const auto found = std::min(std::ranges::find_if(kSides, fits), kSides.end() - 1);
  QImage& sheet = read[static_cast<std::size_t>(found - kSides.begin())];
  if (sheet.isNull()) {
    initButtons();
    sheet = QImage(QStringLiteral(":/icons/buttons-%1.png").arg(*found));
  }
  return sheet;
}

void draw(ButtonIcon icon, QPainter& painter, const QRectF& room, const QColor& ink) {
  const double wanted = room.height() * painter.device()->devicePixelRatioF();
  const QImage& sheet = sheetFor(wanted);
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
