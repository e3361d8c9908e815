#include "editors/EnterValueDialog.h"

#include <QCoreApplication>
#include <QKeyEvent>

#include "ui_EnterValueDialog.h"
#include "widgets/DialogText.h"

namespace tessaly {

namespace {

constexpr QSize kSizeWithRows{380, 440};  // pixels

bool steps(int key) {
  return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown;
}

}  // namespace

EnterValueDialog::EnterValueDialog(std::optional<std::int64_t> value, const QString& hint, std::int64_t min,
                                   std::int64_t max, QWidget* parent, Beep beep)
    : QDialog(parent),
      ui_(std::make_unique<Ui::EnterValueDialog>()),
      range_{min, max},
      beep_(std::move(beep)),
      value_(value) {
  ui_->setupUi(this);
  ui_->hint->setText(hint);
  nameListsByLabels(*this);
  ui_->rowsHeading->hide();
  ui_->rows->hide();
  if (value) ui_->value->setText(QString::number(*value));
  ui_->value->setFocus();
  ui_->value->selectAll();
  ui_->ok->setEnabled(state() == EntryState::kValid);
  connect(ui_->value, &QLineEdit::textChanged, this, &EnterValueDialog::check);
  connect(ui_->ok, &QPushButton::clicked, this, &EnterValueDialog::accept);
  connect(ui_->cancel, &QPushButton::clicked, this, &EnterValueDialog::reject);
}

EnterValueDialog::~EnterValueDialog() = default;

void EnterValueDialog::offerRows(const std::vector<std::string>& rows) {
  std::vector<ListRow> listRows;
  listRows.reserve(rows.size());
  for (const std::string& row : rows) listRows.push_back({row, static_cast<int>(listRows.size())});
  ui_->rows->rows().setRows(std::move(listRows));
  ui_->rows->selectRow(value_ ? static_cast<int>(*value_) : -1);
  ui_->rowsHeading->show();
  ui_->rows->show();
  resize(kSizeWithRows);
  ui_->value->installEventFilter(this);
  ui_->rows->installEventFilter(this);
  // Put in as if it was typed, so that it can be undone.
  connect(ui_->rows, &ListBox::chosen, this, [this](int row) {
    if (row < 0 || ui_->value->text() == QString::number(row)) return;
    ui_->value->selectAll();
    ui_->value->insert(QString::number(row));
  });
  connect(ui_->rows, &QListView::doubleClicked, this, &EnterValueDialog::accept);
}

bool EnterValueDialog::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (watched == ui_->value && steps(key)) return QCoreApplication::sendEvent(ui_->rows, event);
    if (watched == ui_->rows && (key == Qt::Key_Return || key == Qt::Key_Enter)) {
      accept();
      return true;
    }
  }
  return QDialog::eventFilter(watched, event);
}

EntryState EnterValueDialog::state() const {
  const QString text = ui_->value->text();
  const bool asOpened = value_ && text == QString::number(*value_);
  return asOpened ? EntryState::kValid : checkEntry(text.toStdString(), range_);
}

void EnterValueDialog::check() {
  const EntryState now = state();
  ui_->ok->setEnabled(now == EntryState::kValid);
  const bool number = now == EntryState::kValid;
  ui_->rows->selectRow(number ? static_cast<int>(parseLong(ui_->value->text().toStdString())) : -1);
  if (now != EntryState::kInvalid) return;
  beep_();
  ui_->value->selectAll();
}

void EnterValueDialog::accept() {
  if (state() != EntryState::kValid) return;
  value_ = parseLong(ui_->value->text().toStdString());
  QDialog::accept();
}

}  // namespace tessaly
