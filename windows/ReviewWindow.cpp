#include "windows/ReviewWindow.h"

#include <QShortcut>

namespace tessaly {

ReviewWindow::ReviewWindow(const QString& title, QWidget* owner) : QDialog(owner) {
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowFlag(Qt::WindowMinMaxButtonsHint);
  setWindowTitle(title);
  connect(new QShortcut(QKeySequence::Close, this), &QShortcut::activated, this, &QWidget::close);
}

void ReviewWindow::present() {
  setWindowState(windowState() & ~Qt::WindowMinimized);
  show();
  raise();
  activateWindow();
}

}  // namespace tessaly
