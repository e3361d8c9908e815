#pragma once

#include <QComboBox>
#include <QWheelEvent>

namespace tessaly {

// A combo box that the wheel turns only while it has the keyboard, and to which the wheel does not give it: a
// hand that scrolls the dialog changes no value by the way.
class ChoiceBox : public QComboBox {
 public:
  explicit ChoiceBox(QWidget* parent = nullptr) : QComboBox(parent) { setFocusPolicy(Qt::StrongFocus); }

 protected:
  void wheelEvent(QWheelEvent* event) override {
    if (hasFocus())
      QComboBox::wheelEvent(event);
    else
      event->ignore();
  }
};

}  // namespace tessaly
