#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include <QDialog>

#include "widgets/Beep.h"

namespace Ui {
class EnterTextDialog;
}

namespace tessaly {

// Asks for a text that is stored in Windows-1252 and may have so many characters. What has no place there is
// refused at the key, with the beep.
class EnterTextDialog : public QDialog {
  Q_OBJECT

 public:
  // `text` are the bytes as they are stored; `hint` is shown over the field.
  EnterTextDialog(const std::string& text, const QString& hint, std::size_t room, QWidget* parent = nullptr,
                  Beep beep = systemBeep());
  ~EnterTextDialog() override;

  // As given at the opening until OK was pressed.
  [[nodiscard]] const std::string& text() const { return text_; }
  void accept() override;

 private:
  void showState();

  std::unique_ptr<Ui::EnterTextDialog> ui_;
  std::string text_;
  int room_;
  QString opened_;  // as it was shown at first
};

}  // namespace tessaly
