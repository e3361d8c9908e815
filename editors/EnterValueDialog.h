#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <QDialog>

#include "editors/EntryCheck.h"
#include "widgets/Beep.h"

namespace Ui {
class EnterValueDialog;
}

namespace tessaly {

// Asks for a whole number within a range. An invalid value sounds the beep and is selected whole at every
// keystroke. What the dialog opens with is not judged: until the user changes it OK takes it as it is.
class EnterValueDialog : public QDialog {
  Q_OBJECT

 public:
  // Without a value the field is empty at first. `hint` is shown over the field, such as a range text.
  EnterValueDialog(std::optional<std::int64_t> value, const QString& hint, std::int64_t min, std::int64_t max,
                   QWidget* parent = nullptr, Beep beep = systemBeep());
  ~EnterValueDialog() override;

  // A list that stands beside the number: row i is number i, with its name and its panel value behind it,
  // parted by tabs.
  void offerRows(const std::vector<std::string>& rows);

  // The number given at the opening until OK was pressed; 0 without one.
  [[nodiscard]] std::int64_t value() const { return value_.value_or(0); }
  void accept() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  [[nodiscard]] EntryState state() const;
  void check();

  std::unique_ptr<Ui::EnterValueDialog> ui_;
  NumberRange range_;
  Beep beep_;
  std::optional<std::int64_t> value_;
};

}  // namespace tessaly
