#include "widgets/InkIcon.h"

#include <utility>

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>

namespace tessaly {

namespace {

class InkEngine : public QIconEngine {
 public:
  InkEngine(QPalette::ColorRole role, InkDrawing draw) : role_(role), draw_(std::move(draw)) {}

  void paint(QPainter* painter, const QRect& room, QIcon::Mode mode, QIcon::State) override {
    const auto role = mode == QIcon::Selected ? QPalette::HighlightedText : role_;
    const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
    draw_(*painter, room, QGuiApplication::palette().color(group, role));
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    if (size.isEmpty()) return {};
    QPixmap drawn(size);
    drawn.fill(Qt::transparent);
    QPainter painter(&drawn);
    paint(&painter, QRect(QPoint(), size), mode, state);
    return drawn;
  }

  [[nodiscard]] QIconEngine* clone() const override { return new InkEngine(*this); }

 private:
  QPalette::ColorRole role_;
  InkDrawing draw_;
};

}  // namespace

QIcon inkIcon(QPalette::ColorRole role, InkDrawing draw) {
  return QIcon(new InkEngine(role, std::move(draw)));
}

}  // namespace tessaly
