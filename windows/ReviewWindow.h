#pragma once

#include <QDialog>

namespace tessaly {

// What the windows that look at macros from above have in common: they stand beside the main window and hold
// nothing up, can be made as large as the screen, and go, for good, with Esc, Ctrl+W or their title bar. GUI
// thread.
class ReviewWindow : public QDialog {
  Q_OBJECT

 public:
  explicit ReviewWindow(const QString& title, QWidget* owner = nullptr);

  // Shows it, or brings it before the others.
  void present();
};

}  // namespace tessaly
