#include "editors/CreateCommandDialog.h"

#include <QKeyEvent>
#include <QMenu>
#include <QShortcut>
#include <QToolButton>

#include "editors/DataUpdate.h"
#include "ui_CreateCommandDialog.h"
#include "widgets/ButtonIcon.h"
#include "widgets/DialogText.h"
#include "widgets/EditedText.h"
#include "widgets/KeyboardWay.h"
#include "widgets/ListFinder.h"
#include "widgets/PostTo.h"

namespace tessaly {

namespace {

constexpr const char* kWorkplace = "Workplace";
constexpr const char* kReady = "COMMAND READY FOR INSERTION";
constexpr const char* kMissing = "Parameters are missing...";
constexpr int kLineWatchMilliseconds = 250;

bool isEnter(int key) { return key == Qt::Key_Return || key == Qt::Key_Enter; }

}  // namespace

CreateCommandDialog::CreateCommandDialog(const EditorContext& context, int workplace, bool commandSelected,
                                         QWidget* parent, Beep beep)
    : QDialog(parent),
      context_(context),
      workplace_(workplace),
      commandSelected_(commandSelected),
      ui_(std::make_unique<Ui::CreateCommandDialog>()),
      chooser_(context.dictionary, context.words),
      found_(context.dictionary),
      question_(context.client, postTo(this),
                [this](const std::vector<PanelAnswer>& answers) {
                  question_.cancel();  // the first answer is the one that was wanted
                  takeValue(answers.front().value);
                }),
      parameters_(new ParameterPanel(context.inputSources, context.frameRate, std::move(beep))) {
  layOut();
  lastSearch_ = ui_->words;
  connectChoice();
  for (std::size_t i = 0; i < searches_.size(); ++i) connectSearch(i);
  connectCommand();
  addShortcuts();
  chooseDestination(ui_->destination->currentIndex());
  lastSearch_->setFocus();
}

CreateCommandDialog::~CreateCommandDialog() = default;

void CreateCommandDialog::layOut() {
  ui_->setupUi(this);
  subgroups_ = {ui_->subgroup1, ui_->subgroup2, ui_->subgroup3};
  searches_ = {{{ui_->search1, ui_->clear1, ui_->results1},
                {ui_->search2, ui_->clear2, ui_->results2},
                {ui_->search3, ui_->clear3, ui_->results3},
                {ui_->search4, ui_->clear4, ui_->results4},
                {ui_->search5, ui_->clear5, ui_->results5}}};
  nameListsByLabels(*this);
  new ListFinder(*ui_->found);
  ui_->found->setModel(&found_);
  connect(&found_, &QAbstractItemModel::modelReset, ui_->found, &QListView::scrollToTop);
  ui_->words->findChild<QToolButton*>()->setAccessibleName(tr("Clear the words"));
  ui_->parameterRoom->addWidget(parameters_);
  parameters_->tabAfter(ui_->found);
  keepSpaceWhenHidden({ui_->workplace});
  // A workplace beyond the box's rows is none of them and is kept.
  ui_->workplace->setCurrentIndex(workplace_ <= ui_->workplace->count() ? workplace_ - 1 : -1);
  QAbstractButton* const categories[] = {
      ui_->me, ui_->inputCorrection, ui_->aux, ui_->ramRecorder, ui_->machine, ui_->edpm, ui_->emem};
  for (int id = 0; id < CommandChooser::kCategories; ++id) ui_->categories->setId(categories[id], id);
}

void CreateCommandDialog::connectChoice() {
  // The same one again is no change and takes nothing away.
  connect(ui_->destination, &QComboBox::currentIndexChanged, this, &CreateCommandDialog::chooseDestination);
  // Rather than `clicked` here and below: a screen reader's hands toggle.
  connect(ui_->categories, &QButtonGroup::idToggled, this, [this](int category, bool on) {
    if (!on) return;
    chooser_.chooseCategory(category);
    showChoice();
  });
  for (std::size_t level = 0; level < subgroups_.size(); ++level) {
    subgroups_[level]->installEventFilter(this);
    connect(subgroups_[level], &ListBox::chosen, this, [this, level](int row) {
      if (chooser_.subgroup(level).selected == row) return;
      chooser_.chooseSubgroup(level, row);
      showChoice();
    });
  }
  connect(ui_->showIncrements, &QCheckBox::toggled, this, [this](bool on) {
    chooser_.setIncrements(on);
    showChoice();
  });
  connect(ui_->showRaw, &QCheckBox::toggled, this, [this](bool on) {
    found_.setRaw(on);
    if (function_) parameters_->setRaw(on);
  });
}

void CreateCommandDialog::connectSearch(std::size_t search) {
  const SearchColumn& column = searches_[search];
  column.text->installEventFilter(this);
  column.list->installEventFilter(this);
  const auto setText = [this, search](const QString& text) {
    chooser_.setSearchText(search, text.toStdString());
    showChoice();
  };
  whenEdited(*column.text, this, [this, &column, setText](const QString& text) {
    setText(text);
    lastSearch_ = column.text;
  });
  connect(column.clear, &QPushButton::clicked, this, [setText] { setText({}); });
  connect(column.list, &ListBox::chosen, this, [this, search](int row) {
    chooser_.chooseSearchRow(search, row);
    showChoice();
  });
}

void CreateCommandDialog::connectCommand() {
  ui_->words->installEventFilter(this);
  connect(ui_->words, &QLineEdit::textChanged, this, [this](const QString& text) {
    chooser_.setWords(text.toStdString());
    showFound();
    lastSearch_ = ui_->words;
    chosenSinceTyped_ = false;
  });
  ui_->found->installEventFilter(this);
  if (context_.addWhereUsed) {
    ui_->found->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(ui_->found, &QWidget::customContextMenuRequested, this, &CreateCommandDialog::openWhereUsed);
  }
  connect(ui_->found->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          &CreateCommandDialog::followSelection);
  connect(parameters_, &ParameterPanel::changed, this, &CreateCommandDialog::checkReady);
  connect(parameters_, &ParameterPanel::finished, this, [this] { insert(InsertMode::kAppend, true); });
  setIcons({{ui_->updateData, ButtonIcon::kReadAgain}});
  connect(ui_->updateData, &QPushButton::clicked, this, &CreateCommandDialog::updateData);
  lineWatch_.setInterval(kLineWatchMilliseconds);
  connect(&lineWatch_, &QTimer::timeout, this, &CreateCommandDialog::watchLine);
  const std::pair<QPushButton*, InsertMode> inserts[] = {{ui_->insertStart, InsertMode::kAtStart},
                                                         {ui_->insertSelected, InsertMode::kAtPosition},
                                                         {ui_->insertEnd, InsertMode::kAppend}};
  for (const auto& [button, mode] : inserts)
    connect(button, &QPushButton::clicked, this,
            [this, mode = mode] { insert(mode, ui_->keepOpen->isChecked()); });
  connect(ui_->cancel, &QPushButton::clicked, this, &CreateCommandDialog::reject);
}

void CreateCommandDialog::addShortcuts() {
  const auto add = [this](Qt::Key key, QWidget* told, auto action) {
    auto* shortcut = new QShortcut(QKeySequence(Qt::ALT | key), this);
    shortcut->setAutoRepeat(false);  // one press is one command
    connect(shortcut, &QShortcut::activated, this, action);
    KeyboardWay::note(*told, shortcut->key());
  };
  const std::pair<Qt::Key, QAbstractButton*> buttons[] = {
      {Qt::Key_R, ui_->showRaw},     {Qt::Key_I, ui_->showIncrements}, {Qt::Key_U, ui_->updateData},
      {Qt::Key_S, ui_->insertStart}, {Qt::Key_M, ui_->insertSelected}, {Qt::Key_E, ui_->insertEnd},
      {Qt::Key_K, ui_->keepOpen}};
  for (const auto& [key, button] : buttons) add(key, button, [button = button] { button->click(); });
  const std::pair<Qt::Key, QWidget*> rooms[] = {{Qt::Key_D, ui_->destination}, {Qt::Key_W, ui_->workplace},
                                                {Qt::Key_1, ui_->search1},     {Qt::Key_2, ui_->search2},
                                                {Qt::Key_3, ui_->search3},     {Qt::Key_4, ui_->search4},
                                                {Qt::Key_5, ui_->search5},     {Qt::Key_6, ui_->words},
                                                {Qt::Key_G, ui_->subgroup1},   {Qt::Key_F, ui_->found}};
  for (const auto& [key, room] : rooms)
    add(key, room, [room = room] { room->setFocus(Qt::ShortcutFocusReason); });
  // As in the main window.
  connect(new QShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_U), this), &QShortcut::activated, this,
          [this] {
            const QRect row = ui_->found->visualRect(ui_->found->currentIndex());
            openWhereUsed(row.isValid() ? row.bottomLeft() : QPoint());
          });
}

void CreateCommandDialog::chooseDestination(int destination) {
  if (destination < 0) return;
  chooser_.chooseDestination(Destination::at(destination));
  const bool panel = chooser_.onPanel();
  ui_->workplace->setVisible(panel);
  ui_->workplaceLabel->setText(panel ? QLatin1String(kWorkplace) : QString());
  for (QAbstractButton* button : ui_->categories->buttons()) button->setEnabled(!panel);
  // The panel's own functions are all offered at once; nothing narrows them.
  ui_->searchRoom->setEnabled(!panel);
  function_.reset();
  showChoice();
}

void CreateCommandDialog::showChoice() {
  if (QAbstractButton* checked = ui_->categories->checkedButton();
      checked != nullptr && chooser_.category() < 0) {
    ui_->categories->setExclusive(false);
    checked->setChecked(false);
    ui_->categories->setExclusive(true);
  }
  for (std::size_t i = 0; i < subgroups_.size(); ++i) {
    showList(*subgroups_[i], chooser_.subgroup(i));
    subgroups_[i]->setPlaceholder(emptyListText(i));
  }
  for (std::size_t i = 0; i < searches_.size(); ++i) {
    searches_[i].list->setPlaceholder(chooser_.searchText(i).empty() ? tr("type above")
                                                                     : tr("nothing found"));
    putText(*searches_[i].text, QString::fromStdString(chooser_.searchText(i)));
    showList(*searches_[i].list, chooser_.search(i));
  }
  showFound();
}

QString CreateCommandDialog::emptyListText(std::size_t level) const {
  if (level == 0) return tr("choose a category");
  const bool chosenBefore = chooser_.subgroup(level - 1).selected >= 0;
  return chosenBefore ? tr("nothing more to choose") : tr("choose on the left");
}

void CreateCommandDialog::showList(ListBox& box, const CommandChooser::List& list) {
  std::vector<ListRow> rows;
  rows.reserve(list.rows.size());
  for (const CommandChooser::Row& row : list.rows) rows.push_back({row.text, static_cast<int>(rows.size())});
  box.rows().setRows(std::move(rows));
  if (box.selectedRow() != list.selected) box.selectRow(list.selected);
}

// The chosen function stays chosen while it is among those found.
void CreateCommandDialog::showFound() {
  showing_ = true;
  found_.setFunctions(chooser_.found());
  const int row = function_ ? found_.rowOf(listed_) : -1;
  if (row >= 0) {
    ui_->found->setCurrentIndex(found_.index(row));
  } else {
    ui_->found->selectionModel()->clear();
  }
  showing_ = false;
  const int count = found_.rowCount();
  ui_->foundCount->setText(ui_->words->text().isEmpty() ? QString()
                           : count == 0                 ? tr("nothing found")
                                                        : tr("%n found", nullptr, count));
  ui_->words->setAccessibleDescription(ui_->foundCount->text());
  chooseFunction();
}

// A function is exchanged for another one, never taken away by hand: its parameters would go with it.
void CreateCommandDialog::followSelection() {
  if (showing_) return;
  chosenSinceTyped_ = true;
  if (function_ && !ui_->found->selectionModel()->hasSelection())
    showFound();
  else
    chooseFunction();
}

void CreateCommandDialog::chooseFunction() {
  const QModelIndexList selected = ui_->found->selectionModel()->selectedIndexes();
  std::optional<FunctionRecord> chosen;
  if (!selected.isEmpty()) chosen = found_.function(selected.first().row());
  const bool same = chosen && function_ && chosen->index() == listed_;
  if (!same) {
    question_.cancel();
    lineWatch_.stop();
    function_ = chosen ? context_.dictionary.find(chosen->name()) : std::nullopt;
    if (function_) {
      listed_ = chosen->index();
      parameters_->begin(*function_, draftFor(chooser_.destinationPrefix(), *function_));
      parameters_->setRaw(ui_->showRaw->isChecked());
    } else {
      parameters_->clear();
    }
  }
  checkReady();
}

void CreateCommandDialog::checkReady() {
  const bool ready = function_ && parameters_->complete();
  ui_->ready->setText(!function_ ? QString() : QLatin1String(ready ? kReady : kMissing));
  ui_->insertStart->setEnabled(ready);
  ui_->insertEnd->setEnabled(ready);
  ui_->insertSelected->setEnabled(ready && commandSelected_);
}

int CreateCommandDialog::workplace() const {
  const int row = ui_->workplace->currentIndex();
  return row >= 0 ? row + 1 : workplace_;
}

void CreateCommandDialog::updateData() {
  if (!mayAskPanel(context_)) return;
  if (!function_) return;
  const std::string sid = function_->sid();
  askedParameter_ = parameters_->selectedParameter();
  if (sid.empty() || askedParameter_ < 0) return;
  question_.cancel();
  question_.ask({chooser_.destinationPrefix() + sid});
  lineWatch_.start();
}

void CreateCommandDialog::takeValue(const std::string& value) {
  lineWatch_.stop();
  parameters_->setValue(askedParameter_, value);
}

void CreateCommandDialog::watchLine() {
  if (!lineLost(context_)) return;
  lineWatch_.stop();
  tellLineLost(context_);
}

void CreateCommandDialog::insert(InsertMode mode, bool stays) {
  if (!function_ || !parameters_->complete()) return;
  draft_ = parameters_->draft();
  mode_ = mode;
  stays_ = stays;
  if (!context_.taken()) return;
  if (stays)
    goOn();
  else
    accept();
}

// On to the search for the next one. What was inserted last is selected in the macro.
void CreateCommandDialog::goOn() {
  commandSelected_ = true;
  checkReady();
  ui_->inserted->setText(tr("%n inserted", nullptr, ++inserted_));
  lastSearch_->setFocus();
  lastSearch_->selectAll();
}

void CreateCommandDialog::openWhereUsed(const QPoint& at) {
  if (!function_ || !context_.addWhereUsed) return;
  const CommandDraft draft = parameters_->draft();
  MacroCommand command{draft.fid, std::to_string(workplace()), "0", "0", "0", {}};
  for (const auto& parameter : draft.parameters)
    command.parameters.push_back({parameter.name, parameter.value, true});
  auto* menu = new QMenu(tr("Where Used"), this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  context_.addWhereUsed(*menu, command, *this);
  menu->popup(ui_->found->viewport()->mapToGlobal(at));
  menu->setActiveAction(menu->actions().constFirst());
}

void CreateCommandDialog::focusFound() {
  ui_->found->setFocus();
  if (found_.rowCount() > 0 && ui_->found->selectionModel()->selectedIndexes().isEmpty())
    ui_->found->setCurrentIndex(found_.index(0));
}

// What the words find best, unless another one was chosen since they were typed.
void CreateCommandDialog::takeBest() {
  if (!chosenSinceTyped_) ui_->found->setCurrentIndex(found_.index(0));
  focusFound();
  if (parameters_->selectedParameter() >= 0) parameters_->focusEntry();
}

// Enter's way to the end: a function without parameters is inserted as it is.
void CreateCommandDialog::goOnFromFound() {
  if (parameters_->selectedParameter() >= 0)
    parameters_->focusEntry();
  else
    insert(InsertMode::kAppend, true);
}

// From the words to the first value, from a search field down to its list, from a list on to the functions,
// from there to the value; Enter in the last one inserts at the end, and the next command is searched for.
bool CreateCommandDialog::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QDialog::eventFilter(watched, event);
  const int key = static_cast<QKeyEvent*>(event)->key();
  if (isEnter(key)) {
    if (watched == ui_->words)
      takeBest();
    else if (watched == ui_->found && function_)
      goOnFromFound();
    else
      focusFound();
    return true;
  }
  if (watched == ui_->words && key == Qt::Key_Down) {
    focusFound();
    return true;
  }
  for (const SearchColumn& column : searches_) {
    if (watched != column.text || key != Qt::Key_Down || column.list->rows().rowCount() == 0) continue;
    column.list->setFocus();
    if (column.list->selectedRow() < 0) column.list->setCurrentIndex(column.list->rows().index(0));
    return true;
  }
  return QDialog::eventFilter(watched, event);
}

}  // namespace tessaly
