#include "editors/ChoiceDialog.h"

#include <QCheckBox>
#include <QKeyEvent>

#include "ui_ChoiceDialog.h"

namespace tessaly {

ChoiceDialog::ChoiceDialog(const QString& title, const std::vector<std::string>& rows, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::ChoiceDialog>()) {
  ui_->setupUi(this);
  setWindowTitle(title);
  ui_->list->setAccessibleName(title);
  ui_->list->setPlaceholder(tr("nothing to choose from"));
  std::vector<ListRow> listRows;
  listRows.reserve(rows.size());
  for (const std::string& row : rows) listRows.push_back({row, static_cast<int>(listRows.size())});
  ui_->list->rows().setRows(std::move(listRows));
  ui_->list->installEventFilter(this);
  ui_->ok->setEnabled(false);
  connect(ui_->list, &ListBox::chosen, this, [this](int row) { ui_->ok->setEnabled(row >= 0); });
  connect(ui_->list, &QListView::doubleClicked, this, &ChoiceDialog::accept);
  connect(ui_->ok, &QPushButton::clicked, this, &ChoiceDialog::accept);
  connect(ui_->cancel, &QPushButton::clicked, this, &ChoiceDialog::reject);
  ui_->list->setFocus();
}

ChoiceDialog::~ChoiceDialog() = default;

void ChoiceDialog::mark(int row) {
  ui_->list->selectRow(row);
  ui_->ok->setEnabled(ui_->list->selectedRow() >= 0);
}

void ChoiceDialog::ask(QCheckBox& question) {
  ui_->layout->insertWidget(ui_->layout->indexOf(ui_->list) + 1, &question);
  setTabOrder(ui_->list, &question);
  setTabOrder(&question, ui_->ok);
}

bool ChoiceDialog::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
      accept();
      return true;
    }
  }
  return QDialog::eventFilter(watched, event);
}

void ChoiceDialog::accept() {
  if (ui_->list->selectedRow() < 0) return;
  row_ = ui_->list->selectedRow();
  QDialog::accept();
}

}  // namespace tessaly
