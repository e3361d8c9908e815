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
  // What a snapshot is made of, and whether the pane with the keyboard shows one.
  void showSnapshot(bool ofPanel, bool open);
  // Whether the values of the pane with the keyboard can be captured.
  void showCapture(bool possible);

 signals:
  void undoPressed();
  void historyPressed();
  void saveAsPressed();
  void rehearsePressed();
  void capturePressed();
  void printPressed();
  void exportPressed();
  void saveSnapshotPressed();
  void openSnapshotPressed();
  void restoreSnapshotPressed();
  void closeSnapshotPressed();
  void sitePressed();

 private:
  QAction* undo_;
  QAction* capture_;
  QAction *saveSnapshot_, *openSnapshot_, *restoreSnapshot_, *closeSnapshot_;
};

}  // namespace tessaly
