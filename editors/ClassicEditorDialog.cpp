#include "editors/ClassicEditorDialog.h"

#include <algorithm>

#include <QKeyEvent>

#include "classic/ClassicDescription.h"
#include "classic/ClipList.h"
#include "editors/EnterTextDialog.h"
#include "editors/EnterTimecodeDialog.h"
#include "editors/EnterValueDialog.h"
#include "editors/LoadClipDialog.h"
#include "editors/SelectInputDialog.h"
#include "model/Settings.h"
#include "ui_ClassicEditorDialog.h"
#include "widgets/Beep.h"
#include "widgets/DialogText.h"
#include "widgets/ListBox.h"

namespace tessaly {

namespace {

constexpr const char* kCreateTitle = "Create new command (Classic - Sidepanel/Tarrow panel style)";
constexpr const char* kModifyTitle = "Modify selected command (Classic - Sidepanel/Tarrow panel style)";
constexpr const char* kModifyButton = "Modify Command";
constexpr const char* kSelectInput = "Select Input";
constexpr QSize kStartSize{980, 620};  // pixels

// A value that a command has no room for is not taken.
void beepUnless(bool taken) {
  if (!taken) systemBeep()();
}

}  // namespace

ClassicEditorDialog::ClassicEditorDialog(const EditorContext& context, bool commandSelected,
                                         Destination destination, QWidget* parent)
    : QDialog(parent),
      context_(context),
      builder_(context.decodingLists, commandSelected),
      ui_(std::make_unique<Ui::ClassicEditorDialog>()) {
  setUp(destination);
}

ClassicEditorDialog::ClassicEditorDialog(const EditorContext& context, const ClassicCommand& command,
                                         Destination destination, QWidget* parent)
    : QDialog(parent),
      context_(context),
      builder_(context.decodingLists, command),
      ui_(std::make_unique<Ui::ClassicEditorDialog>()) {
  setUp(destination);
}

ClassicEditorDialog::~ClassicEditorDialog() = default;

void ClassicEditorDialog::setUp(Destination destination) {
  ui_->setupUi(this);
  resize(kStartSize);
  const bool modify = builder_.mode() == ClassicBuilder::Mode::kModify;
  setWindowTitle(QLatin1String(modify ? kModifyTitle : kCreateTitle));
  if (modify) {
    ui_->insertSelected->setText(QLatin1String(kModifyButton));
    ui_->insertEnd->hide();
  }
  for (int mainframe = 1; mainframe <= Destination::kMainframes; ++mainframe)
    ui_->destination->addItem(QStringLiteral("MFrame-%1").arg(mainframe));
  ui_->destination->setCurrentIndex(destination.index());
  (context_.frameRate == kFrameRate50Hz ? ui_->standard50 : ui_->standard60)->setChecked(true);
  keepSpaceWhenHidden({ui_->actionHint, ui_->functionHint});
  openedCommand_ = builder_.command();
  openedDestination_ = this->destination();
  connectLists();
  connectButtons();
  refresh();
  ui_->mainGroups->setFocus();
}

void ClassicEditorDialog::connectLists() {
  const auto follow = [this](ListBox* list, bool (ClassicBuilder::*choose)(std::size_t)) {
    connect(list, &ListBox::chosen, this, [this, choose](int row) {
      // A refused choice changes nothing; the list then shows the earlier one again.
      if (row >= 0) static_cast<void>((builder_.*choose)(static_cast<std::size_t>(row)));
      refresh();
    });
  };
  follow(ui_->mainGroups, &ClassicBuilder::chooseGroup);
  follow(ui_->subgroups, &ClassicBuilder::chooseSubgroup);
  follow(ui_->functions, &ClassicBuilder::chooseFunction);
  follow(ui_->actions, &ClassicBuilder::chooseAction);
  // A parameter is entered by a click or by Enter; the arrows only lead from one to the next.
  connect(ui_->parameters, &QListView::clicked, this,
          [this](const QModelIndex& index) { enterParameter(static_cast<std::size_t>(index.row())); });
  ui_->parameters->installEventFilter(this);
}

bool ClassicEditorDialog::eventFilter(QObject* watched, QEvent* event) {
  if (watched == ui_->parameters && event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    const QModelIndex current = ui_->parameters->currentIndex();
    if (current.isValid() && (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space)) {
      enterParameter(static_cast<std::size_t>(current.row()));
      return true;
    }
  }
  return QDialog::eventFilter(watched, event);
}

void ClassicEditorDialog::connectButtons() {
  connect(ui_->fromScratch, &QPushButton::clicked, this, [this] {
    builder_.startFromScratch();
    refresh();
    ui_->mainGroups->setFocus();
  });
  connect(ui_->insertStart, &QPushButton::clicked, this, [this] { end(Outcome::kAtStart); });
  connect(ui_->insertSelected, &QPushButton::clicked, this, [this] { end(Outcome::kAtSelected); });
  connect(ui_->insertEnd, &QPushButton::clicked, this, [this] { end(Outcome::kAtEnd); });
  connect(ui_->cancel, &QPushButton::clicked, this, &ClassicEditorDialog::reject);
  // Rather than `clicked`, which a screen reader's hands do not make; one of the two is always on.
  connect(ui_->standard50, &QRadioButton::toggled, this,
          [this](bool on) { context_.frameRate = on ? kFrameRate50Hz : kFrameRate60Hz; });
}

void ClassicEditorDialog::showRows(ListBox& list, const std::vector<ClassicBuilder::Row>& rows,
                                   std::optional<std::size_t> chosen, const std::string& of) {
  std::vector<ListRow> shownRows;
  shownRows.reserve(rows.size());
  for (const ClassicBuilder::Row& row : rows)
    shownRows.push_back({row.text, static_cast<int>(shownRows.size()), !row.separator});
  list.rows().setRows(std::move(shownRows), true, of);
  list.selectRow(chosen ? static_cast<int>(*chosen) : -1);
}

void ClassicEditorDialog::refresh(std::optional<std::size_t> parameter) {
  showRows(*ui_->mainGroups, builder_.groupRows(), builder_.chosenGroup());
  showRows(*ui_->subgroups, builder_.subgroupRows(), builder_.chosenSubgroup());
  showRows(*ui_->functions, builder_.functionRows(), builder_.chosenFunction());
  std::vector<ClassicBuilder::Row> actions;
  for (const std::string& text : builder_.actionTexts()) actions.push_back({text, text.empty()});
  showRows(*ui_->actions, actions, builder_.chosenAction());
  ui_->actions->setAllowed(!builder_.complete());
  std::vector<ClassicBuilder::Row> parameters;
  for (const std::string& text : builder_.parameterRows()) parameters.push_back({text});
  showRows(*ui_->parameters, parameters, parameter, builder_.path());
  refreshTexts();
  tellEmptyLists();
}

// Why a list has no rows.
void ClassicEditorDialog::tellEmptyLists() {
  const QString left = tr("choose on the left");
  const QString missing = shown(builder_.missingList()).section(QLatin1Char('\\'), -1);
  ui_->subgroups->setPlaceholder(left);
  ui_->functions->setPlaceholder(
      missing.isEmpty()
          ? left
          : tr("No function is known here: there is no decoding list \"%1\" that can be read.").arg(missing));
  ui_->actions->setPlaceholder(missing.isEmpty() ? left : QString());
  ui_->parameters->setPlaceholder(builder_.chosenAction() ? tr("This function takes no parameters.")
                                                          : QString());
}

void ClassicEditorDialog::refreshTexts() {
  using List = ClassicBuilder::List;
  ui_->mainGroupsHeading->setText(shown(builder_.heading(List::kMainGroup)));
  ui_->subgroupsHeading->setText(shown(builder_.heading(List::kSubgroup)));
  ui_->functionsHeading->setText(shown(builder_.heading(List::kFunction)));
  ui_->actionsHeading->setText(shown(builder_.heading(List::kActionType)));
  ui_->parametersHeading->setText(shown(builder_.heading(List::kParameters)));
  nameListsByLabels(*this);
  ui_->path->setText(shown(builder_.path()));
  ui_->stateLine->setText(shown(builder_.stateLine()));
  const ClassicCommand& command = builder_.command();
  ui_->description->setText(shown(builder_.description()));
  ui_->debugText->setText(command.valid() ? shown(command.debugText()) : QString());
  ui_->byteText->setText(shown(command.text()));
  const bool complete = builder_.complete();
  ui_->insertStart->setEnabled(complete);
  ui_->insertEnd->setEnabled(complete);
  ui_->insertSelected->setEnabled(builder_.canInsertAtSelected());
  ui_->actionHint->setVisible(complete);
  ui_->functionHint->setVisible(complete);
}

void ClassicEditorDialog::enterParameter(std::size_t row) {
  if (!builder_.chooseParameter(row)) return refresh(row);
  refreshTexts();
  const ParameterRange range = builder_.range(row);
  switch (range.entry) {
    case ParameterEntry::kNothing:
      break;
    case ParameterEntry::kNumber:
      enterNumber(row, range);
      break;
    case ParameterEntry::kTimecode:
      enterTimecode(row);
      break;
    case ParameterEntry::kInput:
      enterInput(row);
      break;
    case ParameterEntry::kClip:
      enterClip(row);
      break;
    case ParameterEntry::kText:
      enterText(row);
      break;
  }
  refresh(row);
}

void ClassicEditorDialog::enterNumber(std::size_t row, const ParameterRange& range) {
  // A value that no number stands for leaves the field empty; where there is none yet, one is proposed.
  auto number = builder_.currentNumber(row);
  if (!builder_.hasValue(row)) number = startNumber(range);
  EnterValueDialog dialog(number, shown(range.hint), range.minimum, range.maximum, this);
  std::vector<std::string> rows;
  for (const EnumerationRow& known : builder_.enumeration(row))
    rows.push_back(format("%zu\t", rows.size()) + known.longName + format("\t%u", known.value));
  if (!rows.empty()) dialog.offerRows(rows);
  if (dialog.exec() == QDialog::Accepted) beepUnless(builder_.setNumber(row, dialog.value()));
}

void ClassicEditorDialog::enterTimecode(std::size_t row) {
  EnterTimecodeDialog dialog(builder_.currentTimecode(row), this);
  if (dialog.exec() == QDialog::Accepted) beepUnless(builder_.setTimecode(row, dialog.timecode()));
}

void ClassicEditorDialog::enterInput(std::size_t row) {
  const auto current = builder_.currentInput(row);
  std::vector<ClassicSource> sources = classicInputs(context_.inputSources);
  const auto stands = [current](const ClassicSource& source) { return source.number == current; };
  // A number without a name is kept, and its source hold can be set.
  if (current && std::none_of(sources.begin(), sources.end(), stands))
    sources.push_back({*current, inputName(*current)});
  SelectInputDialog dialog(QLatin1String(kSelectInput), sources, current, builder_.currentHold(row), this);
  if (dialog.exec() != QDialog::Accepted) return;
  const ClassicSource& chosen = sources[static_cast<std::size_t>(dialog.selectedRow())];
  beepUnless(builder_.setInput(row, chosen.number, dialog.hold()));
}

void ClassicEditorDialog::enterClip(std::size_t row) {
  LoadClipDialog dialog(clipNames(context_.site.root), this, builder_.currentText(row));
  if (dialog.exec() == QDialog::Accepted) beepUnless(builder_.setText(row, dialog.clip()));
}

void ClassicEditorDialog::enterText(std::size_t row) {
  EnterTextDialog dialog(builder_.currentText(row), shown(builder_.parameterRows()[row]),
                         builder_.textRoom(row), this);
  if (dialog.exec() == QDialog::Accepted) beepUnless(builder_.setText(row, dialog.text()));
}

Destination ClassicEditorDialog::destination() const {
  return Destination::at(ui_->destination->currentIndex());
}

bool ClassicEditorDialog::changed() const {
  return builder_.command() != openedCommand_ || destination() != openedDestination_;
}

void ClassicEditorDialog::end(Outcome outcome) {
  outcome_ = outcome;
  if (context_.taken()) accept();
}

}  // namespace tessaly
