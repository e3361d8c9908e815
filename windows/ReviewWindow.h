#pragma once

#include <QDialog>

namespace tessaly {

// What the windows that look at macros from above have in common: they stand beside the main window and hold
// nothing up, can be made as large as the screen, and go, for good, with Esc, Ctrl+W or their title bar. GUI
// thread.
class ReviewWindow : public QDialog {
  Q_OBJECT

 public:
  enum class Stands {
    kInFront,  // of its owner, always
    kBeside    // its owner comes before it when it is worked in; not while that holds up other windows
  };

  explicit ReviewWindow(const QString& title, QWidget* owner = nullptr, Stands stands = Stands::kInFront);

  // Shows it, or brings it before the others.
  void present();

 protected:
  // Down in the field of one line goes there.
  static void leadDown(QWidget& field, QWidget& list);

 private:
  Stands stands_;
};

}  // namespace tessaly
