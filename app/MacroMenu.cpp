#include "app/MacroMenu.h"

#include "app/EditMenu.h"

namespace tessaly {

MacroMenu::MacroMenu(QWidget* parent) : QMenu(tr("Ma&cro"), parent), undo_(addAction(QString())) {
  undo_->setShortcut(Qt::CTRL | Qt::ALT | Qt::Key_U);
  connect(undo_, &QAction::triggered, this, &MacroMenu::undoPressed);
  connect(addAction(tr("&History...")), &QAction::triggered, this, &MacroMenu::historyPressed);
  QAction* saveAs = addAction(tr("Save &As..."));
  saveAs->setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_S);
  connect(saveAs, &QAction::triggered, this, &MacroMenu::saveAsPressed);
  QAction* rehearse = addAction(tr("R&ehearse..."), this, &MacroMenu::rehearsePressed);
  rehearse->setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_R);
  capture_ = addAction(tr("Ca&pture..."), this, &MacroMenu::capturePressed);
  capture_->setShortcut(Qt::SHIFT | Qt::Key_F5);
  QAction* print = addAction(tr("Pr&int..."), this, &MacroMenu::printPressed);
  print->setShortcut(QKeySequence::Print);
  addAction(tr("&Export..."), this, &MacroMenu::exportPressed);
  saveSnapshot_ = addAction(QString(), this, &MacroMenu::saveSnapshotPressed);
  openSnapshot_ = addAction(tr("&Open Snapshot..."), this, &MacroMenu::openSnapshotPressed);
  restoreSnapshot_ = addAction(tr("&Restore Snapshot..."), this, &MacroMenu::restoreSnapshotPressed);
  closeSnapshot_ = addAction(tr("&Close Snapshot"), this, &MacroMenu::closeSnapshotPressed);
  connect(addAction(tr("&Site...")), &QAction::triggered, this, &MacroMenu::sitePressed);
  showUndo({});
  showSnapshot(false, false);
  showCapture(false);
}

void MacroMenu::showCapture(bool possible) { capture_->setEnabled(possible); }

void MacroMenu::showSnapshot(bool ofPanel, bool open) {
  saveSnapshot_->setText(ofPanel ? tr("Save &Panel As...") : tr("Save &Folder As..."));
  saveSnapshot_->setEnabled(!open);
  restoreSnapshot_->setEnabled(open);
  closeSnapshot_->setEnabled(open);
}

void MacroMenu::showUndo(const QString& name) {
  undo_->setText(name.isEmpty() ? tr("&Undo") : tr("&Undo \"%1\"").arg(textInMenu(name)));
  undo_->setEnabled(!name.isEmpty());
}

}  // namespace tessaly
