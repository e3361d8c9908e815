#pragma once

#include <QMenuBar>

#include "model/EditHistory.h"

namespace tessaly {

// An ampersand in a name is no key.
[[nodiscard]] QString textInMenu(QString text);

// The menu "Edit": undo, redo and the steps of the pane that has the keyboard, and what can be done there. A
// field for text that has the keyboard takes the keys for itself.
class EditMenu : public QMenu {
  Q_OBJECT

 public:
  explicit EditMenu(QWidget* parent);

  // Of the pane that has the keyboard.
  void showSteps(const EditHistory& row);
  void showActions(const QList<QAction*>& actions);

 signals:
  void undoPressed();
  void redoPressed();
  void stepsPressed();

 private:
  QAction* undo_;
  QAction* redo_;
  QAction* steps_;
  QList<QAction*> shown_;
};

}  // namespace tessaly
