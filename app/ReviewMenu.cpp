#include "app/ReviewMenu.h"

namespace tessaly {

// All letters of its title are keys of the panes, or of another menu.
ReviewMenu::ReviewMenu(QWidget* parent) : QMenu(tr("Review"), parent) {
  const auto add = [this](const QString& text, const QKeySequence& keys, auto signal) {
    QAction* action = addAction(text);
    action->setShortcut(keys);
    connect(action, &QAction::triggered, this, signal);
  };
  add(tr("&Check..."), Qt::Key_F7, &ReviewMenu::checkPressed);
  add(tr("&Search..."), Qt::CTRL | Qt::SHIFT | Qt::Key_F, &ReviewMenu::searchPressed);
  add(tr("&Where Used..."), Qt::CTRL | Qt::SHIFT | Qt::Key_U, &ReviewMenu::whereUsedPressed);
  add(tr("&Replace in Macros..."), Qt::CTRL | Qt::SHIFT | Qt::Key_H, &ReviewMenu::replacePressed);
}

}  // namespace tessaly
