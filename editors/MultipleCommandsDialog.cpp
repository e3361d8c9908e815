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

constexpr std::size_t kPiece = 128;  // commands that are inserted between two looks at the user's clicks
const std::vector<int> kTabStops{180, 260, 340, 420};  // dialog units

}  // namespace

MultipleCommandsDialog::MultipleCommandsDialog(const EditorContext& context, int workplace, int position,
                                               Inserter inserter, QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::MultipleCommandsDialog>()),
      context_(context),
      position_(position),
      inserter_(std::move(inserter)),
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
  inserting_.setInterval(0);
  connect(&inserting_, &QTimer::timeout, this, &MultipleCommandsDialog::insertNext);
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
  connect(ui_->insertStart, &QPushButton::clicked, this, [this] { startInsertion(InsertMode::kAtStart); });
  connect(ui_->insertPosition, &QPushButton::clicked, this,
          [this] { startInsertion(InsertMode::kAtPosition); });
  connect(ui_->insertEnd, &QPushButton::clicked, this, [this] { startInsertion(InsertMode::kAppend); });
  connect(ui_->cancel, &QPushButton::clicked, this, &MultipleCommandsDialog::reject);
}

void MultipleCommandsDialog::done(int result) {
  inserting_.stop();
  QDialog::done(result);
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

void MultipleCommandsDialog::startInsertion(InsertMode mode) {
  if (!context_.taken()) return;
  insertion_ = {chosenRows(), 0, mode};
  ui_->work->setEnabled(false);
  ui_->insertButtons->setEnabled(false);
  inserting_.start();
}

std::vector<int> MultipleCommandsDialog::nextPiece() const {
  std::vector<int> piece;
  for (std::size_t place = insertion_.next; place < insertion_.rows.size() && piece.size() < kPiece;
       ++place) {
    const int row = insertion_.rows[place];
    const MultipleCommands& commands = model_->commands();
    if (!piece.empty() && commands.at(row).workplace != commands.at(piece.front()).workplace) break;
    piece.push_back(row);
  }
  return piece;
}

void MultipleCommandsDialog::insertNext() {
  const std::vector<int> piece = nextPiece();
  if (piece.empty()) {
    inserting_.stop();
    accept();
    return;
  }
  const int before = static_cast<int>(insertion_.next);
  std::vector<CommandDraft> drafts;
  for (const int row : piece) {
    drafts.push_back(model_->commands().at(row).draft);
    ui_->status->setText(shown(
        insertingText(before + static_cast<int>(drafts.size()), static_cast<int>(insertion_.rows.size()))));
    ui_->status->repaint();
  }
  // The block keeps the order of the list: each further piece goes behind the one before it.
  const int position = before + (insertion_.mode == InsertMode::kAtPosition ? position_ : start_);
  const bool append = insertion_.mode == InsertMode::kAppend;
  const int inserted = inserter_(drafts, model_->commands().at(piece.front()).workplace, position,
                                 append ? InsertMode::kAppend : InsertMode::kAtPosition);
  insertion_.next += static_cast<std::size_t>(inserted);
  insertedCount_ += inserted;
  if (static_cast<std::size_t>(inserted) < drafts.size()) endInsertion();
}

// What is in the macro already leaves the list, so that another attempt does not insert it again.
void MultipleCommandsDialog::endInsertion() {
  inserting_.stop();
  insertion_.rows.resize(insertion_.next);
  const auto in = static_cast<int>(insertion_.next);
  if (insertion_.mode == InsertMode::kAtStart) start_ += in;
  if (position_ >= 0 && insertion_.mode != InsertMode::kAppend) position_ += in;
  model_->remove(insertion_.rows);
  ui_->work->setEnabled(true);
  ui_->insertButtons->setEnabled(true);
  refresh();
  ui_->status->setText(tr("The next command could not be inserted"));
}

void MultipleCommandsDialog::showOptions() {
  LineOptions options;
  options.raw = ui_->raw->isChecked();
  options.tabs = ui_->tabs->isChecked();
  model_->setOptions(options);
}

void MultipleCommandsDialog::refresh() {
  if (inserting_.isActive()) return;
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
