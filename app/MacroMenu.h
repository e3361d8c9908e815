#pragma once

#include <QMenu>

namespace tessaly {

// The menu "Macro": what concerns macros as a whole.
class MacroMenu : public QMenu {
  Q_OBJECT

 public:
  explicit MacroMenu(QWidget* parent);

  // The operation on a macro that would be undone; empty for none.
  void showUndo(const QString& name);

 signals:
  void undoPressed();
  void historyPressed();
  void saveAsPressed();
  void sitePressed();

 private:
  QAction* undo_;
};

}  // namespace tessaly
