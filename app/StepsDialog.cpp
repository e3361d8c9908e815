#include "app/StepsDialog.h"

#include "ui_StepsDialog.h"
#include "widgets/DialogText.h"
#include "widgets/ListFinder.h"

namespace tessaly {

StepsDialog::StepsDialog(const EditHistory& row, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::StepsDialog>()) {
  ui_->setupUi(this);
  new ListFinder(*ui_->steps);
  for (std::size_t position = 0; position <= row.size(); ++position) {
    QString text = position > 0
                       ? tr("%1: %2").arg(QString::number(position), shown(row.step(position - 1).name))
                   : row.cut() ? tr("before the oldest step that is kept")
                               : tr("as it was opened");
    if (row.savedAt(position)) text = tr("%1 (saved)").arg(text);
    if (position == row.position()) text = tr("%1 (now)").arg(text);
    ui_->steps->addItem(text);
  }
  auto* const now = ui_->steps->item(static_cast<int>(row.position()));
  QFont bold = now->font();
  bold.setBold(true);
  now->setFont(bold);
  ui_->steps->setCurrentItem(now);
  ui_->steps->scrollToItem(now, QAbstractItemView::PositionAtCenter);
  ui_->steps->setFocus();
  connect(ui_->goThere, &QPushButton::clicked, this, &StepsDialog::accept);
  connect(ui_->steps, &QListWidget::itemDoubleClicked, this, &StepsDialog::accept);
  connect(ui_->close, &QPushButton::clicked, this, &StepsDialog::reject);
}

StepsDialog::~StepsDialog() = default;

std::size_t StepsDialog::position() const { return static_cast<std::size_t>(ui_->steps->currentRow()); }

}  // namespace tessaly
