#pragma once

#include <QObject>
#include <QWidget>

namespace tessaly {

// Keeps each window that opens on its screen, the frame included: one that is too large becomes smaller, and
// a dialog that cannot scrolls what is in it. Works while it lives; GUI thread.
class ScreenFit : public QObject {
 public:
  ScreenFit();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
};

// `room` is what the screen has for windows, in its pixels.
void fitInto(QWidget& window, const QRect& room);

}  // namespace tessaly
