#include "app/CopyMacroDialog.h"

#include <algorithm>

#include <QRegularExpressionValidator>
#include <QTimer>

#include "ui_CopyMacroDialog.h"
#include "widgets/Beep.h"
#include "widgets/DialogText.h"

namespace tessaly {

int freeNumber(const MacroNameTable& names, int wanted) {
  const int count = static_cast<int>(names.size());
  for (int i = 0; i < count; ++i) {
    const int number = (std::max(0, wanted) + i) % count;
    if (names[static_cast<std::size_t>(number)].empty()) return number;
  }
  return -1;
}

CopyMacroDialog::CopyMacroDialog(const std::string& sourceNumber, const std::string& sourceName,
                                 int preselected, MacroNameTable names, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::CopyMacroDialog>()), names_(std::move(names)) {
  ui_->setupUi(this);
  ui_->sourceNumber->setText(shown(sourceNumber));
  ui_->sourceName->setText(shown(sourceName));
  ui_->sourceName->setToolTip(shown(sourceName).toHtmlEscaped());
  ui_->position->setValidator(new QRegularExpressionValidator(digitsOnly(), this));
  connect(ui_->position, &QLineEdit::inputRejected, this, systemBeep());
  connect(ui_->position, &QLineEdit::textChanged, this, &CopyMacroDialog::check);
  connect(ui_->ok, &QPushButton::clicked, this, &CopyMacroDialog::accept);
  connect(ui_->cancel, &QPushButton::clicked, this, &CopyMacroDialog::reject);
  if (preselected >= 0) ui_->position->setText(QString::number(preselected));
  check();
  QTimer::singleShot(0, ui_->position, [this] {
    ui_->position->setFocus();
    ui_->position->selectAll();
  });
}

CopyMacroDialog::~CopyMacroDialog() = default;

void CopyMacroDialog::setAbout(OverwriteWarning::About about) {
  ui_->overwrite->setAbout(std::move(about));
  check();
}

void CopyMacroDialog::check() {
  const PositionCheck result = checkPosition(ui_->position->text().toStdString(), names_);
  if (result.unchanged) return;
  number_ = result.number;
  overwrites_ = !result.existing.empty();
  ui_->ok->setEnabled(result.number >= 0);
  ui_->overwrite->tell(result);
  ui_->position->setAccessibleDescription(ui_->overwrite->spoken());
  ui_->targetName->setText(shown(result.label));
  ui_->targetName->setToolTip(shown(result.label).toHtmlEscaped());
}

void CopyMacroDialog::accept() {
  const PositionCheck result = checkPosition(ui_->position->text().toStdString(), names_);
  if (result.unchanged || result.number < 0) return;
  QDialog::accept();
}

}  // namespace tessaly
