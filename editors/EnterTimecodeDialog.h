#pragma once

#include <array>
#include <memory>

#include <QDialog>
#include <QLineEdit>

#include "editors/EntryCheck.h"
#include "values/Timecode.h"
#include "widgets/Beep.h"

class QKeyEvent;

namespace Ui {
class EnterTimecodeDialog;
}

namespace tessaly {

// Asks for the four numbers of a timecode. While one is invalid the other fields are locked. A third digit
// goes on in the next field, and a timecode that is pasted fills them all. What the dialog opens with is not
// judged until the user changes it.
class EnterTimecodeDialog : public QDialog {
  Q_OBJECT

 public:
  explicit EnterTimecodeDialog(const Timecode& timecode, QWidget* parent = nullptr, Beep beep = systemBeep());
  ~EnterTimecodeDialog() override;

  // As given at the opening until OK was pressed; its marks, and numbers that the user left alone, never
  // change.
  [[nodiscard]] const Timecode& timecode() const { return timecode_; }
  void accept() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  [[nodiscard]] EntryState state(std::size_t field) const;
  void check(std::size_t changed);
  bool typeOn(const QLineEdit& field, QKeyEvent& key);
  bool paste();
  void lockOthers(const QLineEdit* field, bool locked);

  std::unique_ptr<Ui::EnterTimecodeDialog> ui_;
  std::array<QLineEdit*, 4> fields_;  // hours, minutes, seconds, frames
  std::array<QString, 4> opened_;     // as they were filled at first
  bool typingOn_ = false;             // the next field gets the focus in the middle of a number
  Timecode timecode_;
  Beep beep_;
};

}  // namespace tessaly
