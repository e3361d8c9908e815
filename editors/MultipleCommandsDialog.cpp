#include "editors/MultipleCommandsDialog.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include <QShortcut>

#include "editors/DataUpdate.h"
#include "editors/ModifyCommandDialog.h"
#include "editors/MultipleCommandsModel.h"
#include "editors/ParameterUpdate.h"
#include "editors/SelectInputDialog.h"
#include "ui_MultipleCommandsDialog.h"
#include "widgets/ButtonIcon.h"
#include "widgets/DialogText.h"
#include "widgets/ListBox.h"
#include "widgets/ListFinder.h"

namespace tessaly {

namespace {

const std::vector<int> kTabStops{180, 260, 340, 420};  // dialog units

}  // namespace

MultipleCommandsDialog::MultipleCommandsDialog(const EditorContext& context, int workplace, int position,
                                               QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::MultipleCommandsDialog>()),
      context_(context),
      position_(position),
      model_(std::make_unique<MultipleCommandsModel>(context.dictionary, context.decodingLists, workplace)),
      update_(std::make_unique<ParameterUpdate>(context.client,
                                                [this](std::size_t command, const std::string& value) {
                                                  return model_->takeAnswer(command, value);
                                                })) {
  ui_->setupUi(this);
  new ListFinder(*ui_->commands);
  nameListsByLabels(*this);
  connectList();
  connectButtons();
  chooseDestination(ui_->destination->currentIndex());
  connect(update_.get(), &ParameterUpdate::changed, this, &MultipleCommandsDialog::showUpdate);
  ui_->status->setText(shown(statusText({})));
}

MultipleCommandsDialog::~MultipleCommandsDialog() = default;

void MultipleCommandsDialog::connectList() {
  auto* delegate = new ListBoxDelegate(ui_->commands);
  delegate->setTabStops(kTabStops);
  ui_->commands->setItemDelegate(delegate);
  ui_->commands->setTextElideMode(Qt::ElideNone);
  ui_->commands->setModel(model_.get());
  connect(ui_->commands->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          &MultipleCommandsDialog::refresh);
  const auto onKey = [this](Qt::Key key, auto action) {
    auto* shortcut = new QShortcut(key, ui_->commands);
    shortcut->setContext(Qt::WidgetShortcut);
    connect(shortcut, &QShortcut::activated, this, action);
  };
  onKey(Qt::Key_Delete, &MultipleCommandsDialog::removeSelected);
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter})
    onKey(key, [this] { complete(ui_->commands->currentIndex()); });
  connect(ui_->commands, &QListView::doubleClicked, this, &MultipleCommandsDialog::complete);
}

void MultipleCommandsDialog::connectButtons() {
  connect(ui_->pad, &DestinationPad::pressed, this, &MultipleCommandsDialog::add);
  connect(ui_->pad, &DestinationPad::correctionPressed, this, &MultipleCommandsDialog::addCorrection);
  connect(ui_->selectAll, &QPushButton::clicked, ui_->commands, &QListView::selectAll);
  connect(ui_->deselectAll, &QPushButton::clicked, ui_->commands, &QListView::clearSelection);
  connect(ui_->removeSelected, &QPushButton::clicked, this, &MultipleCommandsDialog::removeSelected);
  setIcons({{ui_->updateParameters, ButtonIcon::kReadAgain}});
  connect(ui_->updateParameters, &QPushButton::clicked, this, &MultipleCommandsDialog::updateParameters);
  connect(ui_->raw, &QCheckBox::toggled, this, &MultipleCommandsDialog::showOptions);
  connect(ui_->tabs, &QCheckBox::toggled, this, &MultipleCommandsDialog::showOptions);
  connect(ui_->destination, &QComboBox::currentIndexChanged, this,
          &MultipleCommandsDialog::chooseDestination);
  connect(ui_->insertStart, &QPushButton::clicked, this, [this] { insert(InsertMode::kAtStart); });
  connect(ui_->insertPosition, &QPushButton::clicked, this, [this] { insert(InsertMode::kAtPosition); });
  connect(ui_->insertEnd, &QPushButton::clicked, this, [this] { insert(InsertMode::kAppend); });
  connect(ui_->cancel, &QPushButton::clicked, this, &MultipleCommandsDialog::reject);
}

void MultipleCommandsDialog::add(const DestinationNames& destination) {
  model_->add(destination);
  ui_->commands->scrollToBottom();
  refresh();
}

void MultipleCommandsDialog::addCorrection(const InputCorrection& correction) {
  const QString title = QString::fromUtf8(correction.title.data(), qsizetype(correction.title.size()));
  SelectInputDialog dialog(title, context_.inputSources, this);
  if (dialog.exec() != QDialog::Accepted) return;
  const auto row = static_cast<std::size_t>(dialog.selectedRow());
  if (row >= context_.inputSources.size()) return;
  add(correction.forInput(inputNumberText(context_.inputSources[row].panelName)));
}

void MultipleCommandsDialog::removeSelected() {
  model_->remove(selectedRows());
  refresh();
}

void MultipleCommandsDialog::chooseDestination(int index) {
  if (index < 0) return;
  model_->setDestination(Destination::at(index));
  update_->start({}, 0);  // what is still to come is of the destination before
}

void MultipleCommandsDialog::updateParameters() {
  if (!mayAskPanel(context_)) return;
  std::vector<ParameterUpdate::Question> questions;
  int nothingToAsk = 0;
  for (const int row : chosenRows()) {
    const ListedCommand& command = model_->commands().at(row);
    if (command.answerable())
      questions.push_back({command.id, command.valueName()});
    else
      ++nothingToAsk;
  }
  update_->start(questions, nothingToAsk);
}

void MultipleCommandsDialog::showUpdate() {
  model_->refresh();
  refresh();
  const bool ended = std::exchange(updating_, update_->running()) && !updating_;
  if (ended && lineLost(context_)) tellLineLost(context_);
}

void MultipleCommandsDialog::complete(const QModelIndex& index) {
  if (!index.isValid()) return;
  EditorContext context = context_;
  context.take = {};  // into the list the command can always go
  const int row = index.row();
  ModifyCommandDialog dialog(context, model_->command(row), this);
  if (dialog.exec() != QDialog::Accepted) return;
  model_->complete(row, dialog.draft(), dialog.workplace());
  refresh();
}

void MultipleCommandsDialog::insert(InsertMode mode) {
  const std::vector<int> rows = chosenRows();
  const bool append = mode == InsertMode::kAppend;
  runs_.clear();
  int in = 0;
  for (const int row : rows) {
    const ListedCommand& command = model_->commands().at(row);
    if (runs_.empty() || runs_.back().workplace != command.workplace)
      runs_.push_back({{},
                       command.workplace,
                       in + (mode == InsertMode::kAtPosition ? position_ : 0),
                       append ? InsertMode::kAppend : InsertMode::kAtPosition});
    runs_.back().drafts.push_back(command.draft);
    ui_->status->setText(shown(insertingText(++in, static_cast<int>(rows.size()))));
    ui_->status->repaint();
  }
  if (context_.taken())
    accept();
  else
    refresh();
}

void MultipleCommandsDialog::showOptions() {
  LineOptions options;
  options.raw = ui_->raw->isChecked();
  options.tabs = ui_->tabs->isChecked();
  model_->setOptions(options);
}

void MultipleCommandsDialog::refresh() {
  const MultipleCommands& commands = model_->commands();
  const std::vector<int> rows = chosenRows();
  const bool selection = ui_->commands->selectionModel()->hasSelection();
  const Chosen chosen{selection, static_cast<int>(rows.size()), commands.missing(rows)};
  const bool updating = update_->running();
  ui_->status->setText(
      shown(updating ? updatingText(update_->number(), update_->count()) : statusText(chosen)));
  ui_->total->setText(shown(totalText(commands.size())));
  const InsertCaptions& captions = insertCaptions(selection);
  ui_->insertStart->setText(QLatin1String(captions.start));
  ui_->insertPosition->setText(QLatin1String(captions.position));
  ui_->insertEnd->setText(QLatin1String(captions.end));
  const bool ready = chosen.ready() && !updating;
  ui_->insertStart->setEnabled(ready);
  ui_->insertPosition->setEnabled(ready && position_ >= 0);
  ui_->insertEnd->setEnabled(ready);
  ui_->selectAll->setEnabled(commands.size() > 0);
  ui_->deselectAll->setEnabled(selection);
  ui_->removeSelected->setEnabled(selection);
  ui_->updateParameters->setEnabled(commands.size() > 0);
}

std::vector<int> MultipleCommandsDialog::selectedRows() const {
  std::vector<int> rows;
  for (const QItemSelectionRange& range : ui_->commands->selectionModel()->selection())
    for (int row = range.top(); row <= range.bottom(); ++row) rows.push_back(row);
  std::sort(rows.begin(), rows.end());
  rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
  return rows;
}

std::vector<int> MultipleCommandsDialog::chosenRows() const {
  std::vector<int> rows = selectedRows();
  if (!rows.empty()) return rows;
  rows.resize(static_cast<std::size_t>(model_->commands().size()));
  std::iota(rows.begin(), rows.end(), 0);
  return rows;
}

}  // namespace tessaly
