#include "app/EditMenu.h"

#include "app/StatusStrip.h"

namespace tessaly {

namespace {

QString nameInMenu(const std::string& name) { return textInMenu(nameInStrip(name)); }

}  // namespace

QString textInMenu(QString text) { return text.replace(QLatin1Char('&'), QLatin1String("&&")); }

// All letters of its title are keys of the panes.
EditMenu::EditMenu(QWidget* parent)
    : QMenu(tr("Edit"), parent),
      undo_(addAction(QString())),
      redo_(addAction(QString())),
      steps_(addAction(tr("&Steps..."))) {
  undo_->setShortcut(Qt::CTRL | Qt::Key_Z);
  redo_->setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_Z);
  steps_->setShortcut(Qt::CTRL | Qt::ALT | Qt::Key_Z);
  connect(undo_, &QAction::triggered, this, &EditMenu::undoPressed);
  connect(redo_, &QAction::triggered, this, &EditMenu::redoPressed);
  connect(steps_, &QAction::triggered, this, &EditMenu::stepsPressed);
  addSeparator();
  showSteps(EditHistory());
}

void EditMenu::showSteps(const EditHistory& row) {
  const std::size_t position = row.position();
  undo_->setText(row.canUndo() ? tr("&Undo \"%1\"").arg(nameInMenu(row.step(position - 1).name))
                               : tr("&Undo"));
  redo_->setText(row.canRedo() ? tr("&Redo \"%1\"").arg(nameInMenu(row.step(position).name)) : tr("&Redo"));
  undo_->setEnabled(row.canUndo());
  redo_->setEnabled(row.canRedo());
  steps_->setEnabled(row.size() > 0);
}

void EditMenu::showActions(const QList<QAction*>& actions) {
  if (actions == shown_) return;
  for (QAction* action : shown_) removeAction(action);
  addActions(actions);
  shown_ = actions;
}

}  // namespace tessaly
