#include "app/HistoryDialog.h"

#include <QHeaderView>
#include <QToolButton>

#include "ui_HistoryDialog.h"
#include "widgets/ListFinder.h"

namespace tessaly {

namespace {

constexpr int kNameWidth = 180;  // pixels, to start with; the last column takes the rest
constexpr int kListShare = 3;    // of the height, beside the preview
constexpr int kPreviewShare = 2;

}  // namespace

HistoryDialog::HistoryDialog(Preview preview, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::HistoryDialog>()), preview_(std::move(preview)) {
  ui_->setupUi(this);
  ui_->filter->findChild<QToolButton*>()->setAccessibleName(tr("Clear the filter"));
  new ListFinder(*ui_->macros);
  ui_->macros->setModel(&model_);
  ui_->macros->header()->resizeSection(HistoryModel::kName, kNameWidth);
  ui_->splitter->setStretchFactor(0, kListShare);
  ui_->splitter->setStretchFactor(1, kPreviewShare);
  ui_->outcome->setForegroundRole(QPalette::PlaceholderText);
  connect(ui_->filter, &QLineEdit::textChanged, this,
          [this](const QString& text) { fill([&] { model_.setFilter(text); }); });
  connect(ui_->macros->selectionModel(), &QItemSelectionModel::currentChanged, this,
          &HistoryDialog::showCurrent);
  connect(ui_->putBack, &QPushButton::clicked, this, [this] {
    // A copy: what comes of it fills the list anew.
    if (const KeptMacro* macro = current()) emit putBackPressed(KeptMacro(*macro));
  });
  connect(ui_->saveAs, &QPushButton::clicked, this, [this] {
    if (const KeptMacro* macro = current()) emit saveAsPressed(KeptMacro(*macro));
  });
  connect(ui_->compare, &QPushButton::clicked, this, [this] {
    if (const KeptMacro* macro = current()) emit comparePressed(KeptMacro(*macro));
  });
  connect(ui_->close, &QPushButton::clicked, this, &HistoryDialog::accept);
  ui_->macros->setFocus();
}

HistoryDialog::~HistoryDialog() = default;

const KeptMacro* HistoryDialog::current() const { return model_.macro(ui_->macros->currentIndex().row()); }

void HistoryDialog::setMacros(std::vector<KeptMacro> macros, const QString& shortfall) {
  shortfall_ = shortfall;
  fill([&] { model_.setMacros(std::move(macros)); });
  for (const int column : {HistoryModel::kWhen, HistoryModel::kWhat})
    ui_->macros->resizeColumnToContents(column);
}

void HistoryDialog::showOutcome(const QString& text) { ui_->outcome->setText(text); }

QPoint HistoryDialog::menuPlace() const { return ui_->saveAs->mapToGlobal(QPoint(0, ui_->saveAs->height())); }

QPoint HistoryDialog::compareMenuPlace() const {
  return ui_->compare->mapToGlobal(QPoint(0, ui_->compare->height()));
}

void HistoryDialog::fill(const std::function<void()>& change) {
  const std::string id = current() != nullptr ? current()->id : std::string();
  change();
  int chosen = 0;
  for (int row = 0; row < model_.rowCount(); ++row)
    if (model_.macro(row)->id == id) chosen = row;
  ui_->macros->setCurrentIndex(model_.index(chosen, 0));
  showCurrent();
  if (model_.rowCount() > 0 || !shortfall_.isEmpty())
    ui_->outcome->setText(shortfall_);
  else if (model_.holdsNone())
    ui_->outcome->setText(tr("Nothing has been overwritten or deleted yet."));
  else
    ui_->outcome->setText(tr("Nothing matches the filter."));
}

void HistoryDialog::showCurrent() {
  const KeptMacro* macro = current();
  HistoryPreview preview = macro != nullptr ? preview_(*macro) : HistoryPreview();
  ui_->putBack->setEnabled(macro != nullptr && macro->place && preview.readable);
  ui_->compare->setEnabled(preview.readable);
  ui_->saveAs->setEnabled(macro != nullptr);
  std::vector<ListRow> rows;
  for (std::string& line : preview.rows) rows.push_back({std::move(line)});
  ui_->commands->rows().setRows(std::move(rows));
}

}  // namespace tessaly
