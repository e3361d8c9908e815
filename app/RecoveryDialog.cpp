#include "app/RecoveryDialog.h"

#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>

#include "ui_RecoveryDialog.h"

namespace tessaly {

RecoveryDialog::RecoveryDialog(QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::RecoveryDialog>()) {
  ui_->setupUi(this);
  for (const PaneDescriptor& pane : kPaneDescriptors) {
    part<QGroupBox>("offer", pane)->setTitle(QLatin1String(pane.title));
    part<QGroupBox>("offer", pane)->hide();
  }
  connect(ui_->ok, &QPushButton::clicked, this, &RecoveryDialog::accept);
  connect(ui_->later, &QPushButton::clicked, this, &RecoveryDialog::reject);
  ui_->ok->setFocus();
}

RecoveryDialog::~RecoveryDialog() = default;

void RecoveryDialog::offer(const PaneDescriptor& pane, const RecoveryOffer& offer) {
  part<QLabel>("macro", pane)->setText(offer.macro);
  part<QLabel>("place", pane)->setText(offer.place);
  part<QLabel>("changes", pane)->setText(offer.changes);
  part<QLabel>("warning", pane)->setText(offer.warning);
  part<QLabel>("warning", pane)->setVisible(!offer.warning.isEmpty());
  part<QRadioButton>("takeUp", pane)->setEnabled(offer.readable);
  part<QRadioButton>(offer.readable ? "takeUp" : "leave", pane)->setChecked(true);
  part<QGroupBox>("offer", pane)->show();
}

bool RecoveryDialog::takenUp(const PaneDescriptor& pane) const {
  return part<QRadioButton>("takeUp", pane)->isChecked();
}

}  // namespace tessaly
