#pragma once

#include <cstdint>
#include <memory>

#include <QDialog>

#include "editors/EntryCheck.h"
#include "widgets/Beep.h"

namespace Ui {
class EnterValueDialog;
}

namespace tessaly {

// Asks for a whole number within a range. An invalid value sounds the beep and is selected whole at every
// keystroke.
class EnterValueDialog : public QDialog {
  Q_OBJECT

 public:
  // `hint` is shown beside the field, such as a range text.
  EnterValueDialog(std::int64_t value, const QString& hint, std::int64_t min, std::int64_t max,
                   QWidget* parent = nullptr, Beep beep = systemBeep());
  ~EnterValueDialog() override;

  // The number given at the opening until OK was pressed.
  [[nodiscard]] std::int64_t value() const { return value_; }
  void accept() override;

 private:
  EntryState showState();
  void check();

  std::unique_ptr<Ui::EnterValueDialog> ui_;
  NumberRange range_;
  Beep beep_;
  std::int64_t value_;
};

}  // namespace tessaly
