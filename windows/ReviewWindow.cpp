#include "windows/ReviewWindow.h"

#include <QShortcut>
#include <QWindow>

namespace tessaly {

ReviewWindow::ReviewWindow(const QString& title, QWidget* owner, Stands stands)
    : QDialog(owner, stands == Stands::kBeside ? Qt::Window : Qt::Dialog), stands_(stands) {
  setAttribute(Qt::WA_DeleteOnClose);
  setAttribute(Qt::WA_QuitOnClose, false);
  setWindowFlag(Qt::WindowMinMaxButtonsHint);
  setWindowTitle(title);
  connect(new QShortcut(QKeySequence::Close, this), &QShortcut::activated, this, &QWidget::close);
}

void ReviewWindow::leadDown(QWidget& field, QWidget& list) {
  connect(new QShortcut(Qt::Key_Down, &field, nullptr, nullptr, Qt::WidgetShortcut), &QShortcut::activated,
          &list, qOverload<>(&QWidget::setFocus));
}

void ReviewWindow::present() {
  setWindowState(windowState() & ~Qt::WindowMinimized);
  // Screens keep what belongs to a window in front of it, over the macro that was opened from here.
  const bool apart = stands_ == Stands::kBeside && !(parentWidget() && parentWidget()->isModal());
  if (apart && winId() != 0) windowHandle()->setTransientParent(nullptr);
  show();
  raise();
  activateWindow();
}

}  // namespace tessaly
