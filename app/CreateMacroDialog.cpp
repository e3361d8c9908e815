#include "app/CreateMacroDialog.h"

#include <QRegularExpressionValidator>
#include <QTimer>

#include "ui_CreateMacroDialog.h"
#include "widgets/Beep.h"
#include "widgets/DialogText.h"
#include "widgets/EditedText.h"

namespace tessaly {

CreateMacroDialog::CreateMacroDialog(int preselected, MacroNameTable names, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::CreateMacroDialog>()), names_(std::move(names)) {
  ui_->setupUi(this);
  ui_->position->setValidator(new QRegularExpressionValidator(digitsOnly(), this));
  connect(ui_->position, &QLineEdit::inputRejected, this, systemBeep());
  connect(ui_->position, &QLineEdit::textChanged, this, &CreateMacroDialog::checkNumber);
  connect(ui_->name, &QLineEdit::textChanged, this, &CreateMacroDialog::checkName);
  whenEdited(*ui_->name, this, [this](const QString& name) { ownName_ = name; });
  connect(ui_->ok, &QPushButton::clicked, this, &CreateMacroDialog::accept);
  connect(ui_->cancel, &QPushButton::clicked, this, &CreateMacroDialog::reject);
  if (preselected >= 0) ui_->position->setText(QString::number(preselected));
  checkNumber();
  QLineEdit* first = preselected >= 0 ? ui_->name : ui_->position;
  QTimer::singleShot(0, first, [first] {
    first->setFocus();
    first->selectAll();
  });
}

CreateMacroDialog::~CreateMacroDialog() = default;

void CreateMacroDialog::setAbout(OverwriteWarning::About about) {
  ui_->overwrite->setAbout(std::move(about));
  checkNumber();
}

std::string CreateMacroDialog::name() const { return ui_->name->text().toStdString(); }

void CreateMacroDialog::checkNumber() {
  const PositionCheck result = checkPosition(ui_->position->text().toStdString(), names_);
  if (result.unchanged) return;
  number_ = result.number;
  overwrites_ = !result.existing.empty();
  ui_->overwrite->tell(result);
  ui_->position->setAccessibleDescription(ui_->overwrite->spoken());
  ui_->targetName->setText(shown(result.label));
  ui_->targetName->setToolTip(shown(result.label).toHtmlEscaped());
  proposeName(result.existing);
  checkName();
}

// Proposed when the number changes only, so that the user's own name is never typed over. A name that was but
// passed on the way to another number does not stay; the user's own one comes back.
void CreateMacroDialog::proposeName(const std::string& existing) {
  const QString name = existing.empty() ? ownName_ : editable(existing);
  putText(*ui_->name, name);
  if (!existing.empty()) ui_->name->selectAll();
}

void CreateMacroDialog::checkName() { ui_->ok->setEnabled(number_ >= 0 && !ui_->name->text().isEmpty()); }

void CreateMacroDialog::accept() {
  const PositionCheck result = checkPosition(ui_->position->text().toStdString(), names_);
  if (result.unchanged || result.number < 0 || ui_->name->text().isEmpty()) return;
  QDialog::accept();
}

}  // namespace tessaly
