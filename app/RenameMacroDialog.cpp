#include "app/RenameMacroDialog.h"

#include <QTimer>

#include "ui_RenameMacroDialog.h"
#include "widgets/DialogText.h"

namespace tessaly {

RenameMacroDialog::RenameMacroDialog(const std::string& oldName, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::RenameMacroDialog>()) {
  ui_->setupUi(this);
  const auto check = [this] { ui_->ok->setEnabled(!ui_->newName->text().isEmpty()); };
  connect(ui_->newName, &QLineEdit::textChanged, this, check);
  connect(ui_->ok, &QPushButton::clicked, this, &RenameMacroDialog::accept);
  connect(ui_->cancel, &QPushButton::clicked, this, &RenameMacroDialog::reject);
  ui_->oldName->setText(shown(oldName));
  ui_->oldName->setToolTip(shown(oldName).toHtmlEscaped());
  ui_->newName->setText(editable(oldName));
  check();
  QTimer::singleShot(0, ui_->newName, [this] {
    ui_->newName->setFocus();
    ui_->newName->selectAll();
  });
}

RenameMacroDialog::~RenameMacroDialog() = default;

std::string RenameMacroDialog::newName() const { return ui_->newName->text().toStdString(); }

}  // namespace tessaly
