#include "editors/EnterValueDialog.h"

#include "ui_EnterValueDialog.h"

namespace tessaly {

EnterValueDialog::EnterValueDialog(std::int64_t value, const QString& hint, std::int64_t min,
                                   std::int64_t max, QWidget* parent, Beep beep)
    : QDialog(parent),
      ui_(std::make_unique<Ui::EnterValueDialog>()),
      range_{min, max},
      beep_(std::move(beep)),
      value_(value) {
  ui_->setupUi(this);
  ui_->hint->setText(hint);
  ui_->value->setText(QString::number(value));
  ui_->value->setFocus();
  ui_->value->selectAll();
  showState();
  connect(ui_->value, &QLineEdit::textChanged, this, &EnterValueDialog::check);
  connect(ui_->ok, &QPushButton::clicked, this, &EnterValueDialog::accept);
  connect(ui_->cancel, &QPushButton::clicked, this, &EnterValueDialog::reject);
}

EnterValueDialog::~EnterValueDialog() = default;

EntryState EnterValueDialog::showState() {
  const EntryState state = checkEntry(ui_->value->text().toStdString(), range_);
  ui_->ok->setEnabled(state == EntryState::kValid);
  return state;
}

void EnterValueDialog::check() {
  if (showState() != EntryState::kInvalid) return;
  beep_();
  ui_->value->selectAll();
}

void EnterValueDialog::accept() {
  if (showState() != EntryState::kValid) return;
  value_ = wholeNumber(ui_->value->text().toStdString());
  QDialog::accept();
}

}  // namespace tessaly
