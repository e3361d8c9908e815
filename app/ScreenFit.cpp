#include "app/ScreenFit.h"

#include <algorithm>

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QPointer>
#include <QScreen>
#include <QScrollArea>
#include <QTimer>
#include <QVBoxLayout>

namespace tessaly {

namespace {

// Until a window manager has put a frame around the window.
constexpr int kFrameMilliseconds = 150;

// Under Wayland nobody tells what the desktop's own bars leave, nor where a window is.
QRect roomOn(const QScreen& screen) {
  constexpr int kBars = 44;  // pixels
  const bool untold = QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
  return screen.availableGeometry().adjusted(0, 0, 0, untold ? -kBars : 0);
}

// The row of buttons at the foot of a dialog, taken out of its layout; null where there is none, or no room
// for it.
QLayout* takeFoot(QLayout& layout, int width) {
  const int last = layout.count() - 1;
  auto* const foot = qobject_cast<QHBoxLayout*>(last < 1 ? nullptr : layout.itemAt(last)->layout());
  const QMargins margins = layout.contentsMargins();
  if (foot == nullptr || foot->minimumSize().width() + margins.left() + margins.right() > width)
    return nullptr;
  layout.takeAt(last);
  foot->setContentsMargins(margins.left(), 0, margins.right(), margins.bottom());
  return foot;
}

// What a dialog holds goes into an area that scrolls, and its buttons stay in sight; the controls stay the
// same.
void letScroll(QDialog& dialog, int width) {
  auto* content = new QWidget;
  QLayout* const foot = takeFoot(*dialog.layout(), width);
  content->setLayout(dialog.layout());  // taken from the dialog, with all in it
  auto* area = new QScrollArea(&dialog);
  area->setFrameShape(QFrame::NoFrame);
  area->setWidgetResizable(true);
  area->setWidget(content);
  auto* around = new QVBoxLayout(&dialog);
  around->setContentsMargins(0, 0, 0, 0);
  around->addWidget(area);
  if (foot != nullptr) around->addLayout(foot);
}

bool scrolls(const QDialog& dialog) {
  const QLayoutItem* const first = dialog.layout()->itemAt(0);
  return first != nullptr && qobject_cast<QScrollArea*>(first->widget()) != nullptr;
}

}  // namespace

void fitInto(QWidget& window, const QRect& room) {
  const QRect frame = window.frameGeometry(), inside = window.geometry();
  const QSize most = room.size() - (frame.size() - inside.size());
  const QSize least = window.minimumSizeHint().expandedTo(window.minimumSize());
  if (least.width() > most.width() || least.height() > most.height()) {
    auto* const dialog = qobject_cast<QDialog*>(&window);
    if (dialog != nullptr && dialog->layout() != nullptr && !scrolls(*dialog))
      letScroll(*dialog, most.width());
    window.setMinimumSize(window.minimumSize().boundedTo(most));
  }
  window.resize(window.size().boundedTo(most));
  const QSize now = window.size() + (frame.size() - inside.size());
  const int x = std::clamp(frame.x(), room.x(), std::max(room.x(), room.right() + 1 - now.width()));
  const int y = std::clamp(frame.y(), room.y(), std::max(room.y(), room.bottom() + 1 - now.height()));
  if (QPoint(x, y) != frame.topLeft()) window.move(x, y);
}

ScreenFit::ScreenFit() { qApp->installEventFilter(this); }

bool ScreenFit::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::Show || !watched->isWidgetType()) return false;
  auto& window = static_cast<QWidget&>(*watched);
  const auto kind = window.windowType();
  if (!window.isWindow() || (kind != Qt::Window && kind != Qt::Dialog)) return false;
  const auto fit = [at = QPointer(&window)] {
    if (at != nullptr && !at->isMaximized() && !at->isFullScreen()) fitInto(*at, roomOn(*at->screen()));
  };
  fit();
  QTimer::singleShot(kFrameMilliseconds, this, fit);
  return false;
}

}  // namespace tessaly
