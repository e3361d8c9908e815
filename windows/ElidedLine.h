#pragma once

#include <QLabel>

namespace tessaly {

// A label of one line that is as wide as there is room, with dots where that is not enough; its tool tip has
// the whole text then. Plain text.
class ElidedLine : public QLabel {
  Q_OBJECT

 public:
  explicit ElidedLine(QWidget* parent = nullptr, Qt::TextElideMode dots = Qt::ElideRight);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] QString elided() const;

  Qt::TextElideMode dots_;
};

}  // namespace tessaly
