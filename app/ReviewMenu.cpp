#include "app/ReviewMenu.h"

namespace tessaly {

// All letters of its title are keys of the panes, or of another menu.
ReviewMenu::ReviewMenu(QWidget* parent) : QMenu(tr("Review"), parent) {
  QAction* check = addAction(tr("&Check..."));
  check->setShortcut(Qt::Key_F7);
  connect(check, &QAction::triggered, this, &ReviewMenu::checkPressed);
  QAction* replace = addAction(tr("&Replace in Macros..."));
  replace->setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_H);
  connect(replace, &QAction::triggered, this, &ReviewMenu::replacePressed);
}

}  // namespace tessaly
