#include "editors/ClassicEditorDialog.h"

#include <QInputDialog>

#include "classic/ClipList.h"
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
constexpr int kMainframes = 4;
constexpr int kLargestInput = 255;
constexpr std::size_t kNamesInHint = 12;  // of an enumeration, beside its range
constexpr QSize kStartSize{980, 620};     // pixels

// A value that a command has no room for is not taken.
void beepUnless(bool taken) {
  if (!taken) systemBeep()();
}

}  // namespace

ClassicEditorDialog::ClassicEditorDialog(const EditorContext& context, bool commandSelected, int destination,
                                         QWidget* parent)
    : QDialog(parent),
      context_(context),
      builder_(context.decodingLists, commandSelected),
      ui_(std::make_unique<Ui::ClassicEditorDialog>()) {
  setUp(destination);
}

ClassicEditorDialog::ClassicEditorDialog(const EditorContext& context, const ClassicCommand& command,
                                         int destination, QWidget* parent)
    : QDialog(parent),
      context_(context),
      builder_(context.decodingLists, command),
      ui_(std::make_unique<Ui::ClassicEditorDialog>()) {
  setUp(destination);
}

ClassicEditorDialog::~ClassicEditorDialog() = default;

void ClassicEditorDialog::setUp(int destination) {
  ui_->setupUi(this);
  resize(kStartSize);
  const bool modify = builder_.mode() == ClassicBuilder::Mode::kModify;
  setWindowTitle(QLatin1String(modify ? kModifyTitle : kCreateTitle));
  if (modify) {
    ui_->insertSelected->setText(QLatin1String(kModifyButton));
    ui_->insertEnd->hide();
  }
  for (int mainframe = 1; mainframe <= kMainframes; ++mainframe)
    ui_->destination->addItem(QStringLiteral("MFrame-%1").arg(mainframe));
  ui_->destination->setCurrentIndex(destination >= 1 && destination <= kMainframes ? destination - 1 : 0);
  (context_.frameRate == kFrameRate50Hz ? ui_->standard50 : ui_->standard60)->setChecked(true);
  keepSpaceWhenHidden({ui_->actionHint, ui_->functionHint});
  for (ListBox* list : {ui_->subgroups, ui_->functions, ui_->actions})
    list->setPlaceholder(tr("choose on the left"));
  connectLists();
  connectButtons();
  refresh();
  ui_->mainGroups->setFocus();
}

void ClassicEditorDialog::connectLists() {
  const auto follow = [this](ListBox* list, bool (ClassicBuilder::*choose)(std::size_t)) {
    connect(list, &ListBox::chosen, this, [this, choose](int row) {
      if (row < 0) return;
      // A refused choice changes nothing; the list then shows the earlier one again.
      static_cast<void>((builder_.*choose)(static_cast<std::size_t>(row)));
      refresh();
    });
  };
  follow(ui_->mainGroups, &ClassicBuilder::chooseGroup);
  follow(ui_->subgroups, &ClassicBuilder::chooseSubgroup);
  follow(ui_->functions, &ClassicBuilder::chooseFunction);
  follow(ui_->actions, &ClassicBuilder::chooseAction);
  connect(ui_->parameters, &ListBox::chosen, this, [this](int row) {
    if (row >= 0) enterParameter(static_cast<std::size_t>(row));
  });
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
  connect(ui_->standard50, &QRadioButton::clicked, this, [this] { context_.frameRate = kFrameRate50Hz; });
  connect(ui_->standard60, &QRadioButton::clicked, this, [this] { context_.frameRate = kFrameRate60Hz; });
}

void ClassicEditorDialog::showRows(ListBox& list, const std::vector<ClassicBuilder::Row>& rows,
                                   std::optional<std::size_t> chosen, const std::string& of) {
  std::vector<ListRow> shownRows;
  shownRows.reserve(rows.size());
  for (const ClassicBuilder::Row& row : rows)
    shownRows.push_back({row.text, static_cast<int>(shownRows.size()), !row.separator && !row.text.empty()});
  list.rows().setRows(std::move(shownRows), true, of);
  list.selectRow(chosen ? static_cast<int>(*chosen) : -1);
}

void ClassicEditorDialog::refresh() {
  showRows(*ui_->mainGroups, builder_.groupRows(), builder_.chosenGroup());
  showRows(*ui_->subgroups, builder_.subgroupRows(), builder_.chosenSubgroup());
  showRows(*ui_->functions, builder_.functionRows(), builder_.chosenFunction());
  std::vector<ClassicBuilder::Row> actions;
  for (const std::string& text : builder_.actionTexts()) actions.push_back({text});
  showRows(*ui_->actions, actions, builder_.chosenAction());
  ui_->actions->setAllowed(!builder_.complete());
  std::vector<ClassicBuilder::Row> parameters;
  for (const std::string& text : builder_.parameterRows()) parameters.push_back({text});
  showRows(*ui_->parameters, parameters, std::nullopt, builder_.path());
  refreshTexts();
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
  if (!builder_.chooseParameter(row)) {
    refresh();
    return;
  }
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
  refresh();
}

void ClassicEditorDialog::enterNumber(std::size_t row, const ParameterRange& range) {
  QStringList hint{shown(range.hint)};
  const std::vector<std::string> names = builder_.valueNames(row);
  for (std::size_t i = 0; i < names.size() && i < kNamesInHint; ++i)
    hint.append(QStringLiteral("%1: %2").arg(i).arg(shown(names[i])));
  if (names.size() > kNamesInHint) hint.append(QStringLiteral(". . ."));
  EnterValueDialog dialog(builder_.currentNumber(row), hint.join(QLatin1Char('\n')), range.minimum,
                          range.maximum, this);
  if (dialog.exec() == QDialog::Accepted) static_cast<void>(builder_.setNumber(row, dialog.value()));
}

void ClassicEditorDialog::enterTimecode(std::size_t row) {
  EnterTimecodeDialog dialog(builder_.currentTimecode(row), this);
  if (dialog.exec() == QDialog::Accepted) static_cast<void>(builder_.setTimecode(row, dialog.timecode()));
}

void ClassicEditorDialog::enterInput(std::size_t row) {
  SelectInputDialog dialog(QLatin1String(kSelectInput), context_.inputSources, this);
  if (dialog.exec() != QDialog::Accepted || dialog.selectedRow() < 0) return;
  const auto chosen = static_cast<std::size_t>(dialog.selectedRow());
  const std::string number = inputNumberText(context_.inputSources[chosen].panelName);
  // A classic command holds the source in one byte; others cannot be named in it.
  const int source = parseInt(number);
  beepUnless(!number.empty() && source >= 0 && source <= kLargestInput && builder_.setInput(row, source));
}

void ClassicEditorDialog::enterClip(std::size_t row) {
  LoadClipDialog dialog(clipNames(context_.site.root), this);
  if (dialog.exec() == QDialog::Accepted) beepUnless(builder_.setText(row, dialog.clip()));
}

void ClassicEditorDialog::enterText(std::size_t row) {
  bool accepted = false;
  const QString text =
      QInputDialog::getText(this, tr("Enter Text"), shown(builder_.parameterRows()[row]), QLineEdit::Normal,
                            editable(builder_.currentText(row)), &accepted);
  if (accepted) beepUnless(builder_.setText(row, utf8ToWindows1252(text.toStdString())));
}

int ClassicEditorDialog::destination() const { return ui_->destination->currentIndex() + 1; }

void ClassicEditorDialog::end(Outcome outcome) {
  outcome_ = outcome;
  accept();
}

}  // namespace tessaly
