#pragma once

#include <QKeySequence>
#include <QObject>
#include <QWidget>

class QDialog;

namespace tessaly {

// The way of the keyboard, and of a screen reader, through all windows of the program: Enter presses the
// button that has the keyboard, Enter and Esc are for one dialog however long they are held, and every
// control of a dialog has a key of its own, which its tool tip names whatever else it says. What has no key
// in its caption, in the language of the program, is given one when the dialog is shown. GUI thread.
class KeyboardWay : public QObject {
 public:
  // For the life of the application; once more does nothing.
  static void open();

  // A key that a dialog has given to a control itself.
  static void note(QWidget& control, const QKeySequence& key);
  // The key that leads to the control, or presses it.
  [[nodiscard]] static QKeySequence keyOf(const QWidget& control);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  using QObject::QObject;
};

}  // namespace tessaly
