#include "app/MessagesDialog.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QShortcut>

#include "app/MessageLog.h"
#include "ui_MessagesDialog.h"
#include "widgets/ListFinder.h"

namespace tessaly {

namespace {

constexpr int kTextWidth = 440;  // pixels, to start with; the last column takes the rest

// As wide as what comes later needs, too.
void fitShortColumns(QHeaderView& header) {
  for (const int column : {MessageLog::kTime, MessageLog::kGrade})
    header.setSectionResizeMode(column, QHeaderView::ResizeToContents);
}

}  // namespace

MessagesDialog::MessagesDialog(MessageLog& log, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::MessagesDialog>()), log_(log) {
  ui_->setupUi(this);
  ui_->messages->setModel(&log_);
  new ListFinder(*ui_->messages);
  auto* copies = new QShortcut(QKeySequence::Copy, ui_->messages);
  copies->setContext(Qt::WidgetShortcut);
  connect(copies, &QShortcut::activated, this, &MessagesDialog::copy);
  connect(ui_->copy, &QPushButton::clicked, this, &MessagesDialog::copy);
  connect(ui_->close, &QPushButton::clicked, this, &QDialog::accept);
  fitShortColumns(*ui_->messages->header());
  ui_->messages->header()->resizeSection(MessageLog::kText, kTextWidth);
}

MessagesDialog::~MessagesDialog() = default;

void MessagesDialog::present() {
  ui_->messages->selectionModel()->setCurrentIndex(
      log_.index(0, 0), QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  ui_->messages->setFocus();
  show();
  fitShortColumns(*ui_->messages->header());  // whatever widths were kept
  raise();
  activateWindow();
}

void MessagesDialog::copy() const {
  const QModelIndexList rows = ui_->messages->selectionModel()->selectedRows();
  if (!rows.isEmpty()) QGuiApplication::clipboard()->setText(log_.copyOf(rows));
}

}  // namespace tessaly
