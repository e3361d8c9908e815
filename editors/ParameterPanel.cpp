#include "editors/ParameterPanel.h"

#include <algorithm>

#include <QKeyEvent>
#include <QShortcut>
#include <QSignalBlocker>

#include "ui_ParameterPanel.h"
#include "widgets/DialogText.h"
#include "widgets/KeyboardWay.h"

namespace tessaly {

namespace {

constexpr int kFrameRate50Hz = 25;
constexpr int kFrameRate60Hz = 30;

bool isEnter(int key) { return key == Qt::Key_Return || key == Qt::Key_Enter; }

}  // namespace

ParameterPanel::ParameterPanel(const std::vector<PanelSource>& sources, int& frameRate, Beep beep,
                               QWidget* parent)
    : QWidget(parent),
      ui_(std::make_unique<Ui::ParameterPanel>()),
      parameters_(sources),
      frameRate_(frameRate),
      beep_(std::move(beep)) {
  ui_->setupUi(this);
  nameListsByLabels(*this);
  ui_->choices->setPlaceholder(tr("type the value above"));
  keepSpaceWhenHidden(
      {ui_->parametersLabel, ui_->parameters, ui_->valueLabel, ui_->value, ui_->range, ui_->choices});
  (frameRate_ == kFrameRate50Hz ? ui_->standard50 : ui_->standard60)->setChecked(true);
  connectControls();
  addKeys();
  clear();
}

ParameterPanel::~ParameterPanel() = default;

void ParameterPanel::connectControls() {
  for (QWidget* widget : {static_cast<QWidget*>(ui_->parameters), static_cast<QWidget*>(ui_->value),
                          static_cast<QWidget*>(ui_->choices)})
    widget->installEventFilter(this);
  connect(ui_->parameters, &ListBox::chosen, this, [this] {
    finishEntry();
    showSelected();
  });
  connect(ui_->choices, &ListBox::chosen, this, &ParameterPanel::choose);
  // Rather than `textEdited`: a screen reader's hands put the text in whole.
  connect(ui_->value, &QLineEdit::textChanged, this, &ParameterPanel::edit);
  connect(ui_->value, &QLineEdit::editingFinished, this, &ParameterPanel::finishEntry);
  const auto setRate = [this](int rate) {
    frameRate_ = rate;
    showTimecodeHelp();
  };
  // Rather than `clicked`, as above; one of the two is always on.
  connect(ui_->standard50, &QRadioButton::toggled, this,
          [setRate](bool on) { setRate(on ? kFrameRate50Hz : kFrameRate60Hz); });
}

void ParameterPanel::addKeys() {
  const auto lead = [this](Qt::Key key, QWidget& to, void (ParameterPanel::*way)()) {
    const QKeySequence keys(Qt::ALT | key);
    connect(new QShortcut(keys, this), &QShortcut::activated, this, way);
    KeyboardWay::note(to, keys);
  };
  lead(Qt::Key_P, *ui_->parameters, &ParameterPanel::focusList);
  lead(Qt::Key_V, *ui_->value, &ParameterPanel::focusEntry);
}

void ParameterPanel::tabAfter(QWidget* before) {
  for (QWidget* next : std::initializer_list<QWidget*>{ui_->parameters, ui_->value, ui_->choices,
                                                       ui_->standard50, ui_->standard60}) {
    setTabOrder(before, next);
    before = next;
  }
}

void ParameterPanel::begin(const FunctionRecord& function, CommandDraft draft) {
  parameters_.begin(function, std::move(draft));
  setVisibleControls(true);
  showParameters();
  selectParameter(0);
}

void ParameterPanel::clear() {
  setVisibleControls(false);
  ui_->timecodeHelp->hide();
}

void ParameterPanel::setVisibleControls(bool visible) {
  for (QWidget* widget : std::initializer_list<QWidget*>{
           ui_->parametersLabel, ui_->parameters, ui_->valueLabel, ui_->value, ui_->range, ui_->choices})
    widget->setVisible(visible);
}

void ParameterPanel::setRaw(bool raw) {
  finishEntry();
  parameters_.setMode(raw ? ValueMode::kRaw : ValueMode::kDisplay);
  showParameters();
  showSelected();
}

CommandDraft ParameterPanel::draft() const {
  DraftParameters finished = parameters_;
  finished.finishEntry();
  return finished.draft();
}

int ParameterPanel::selectedParameter() const { return ui_->parameters->selectedRow(); }

void ParameterPanel::selectParameter(int row) {
  ui_->parameters->selectRow(row);
  showSelected();
}

void ParameterPanel::setValue(int row, std::string value) {
  if (row < 0 || row >= static_cast<int>(parameters_.count())) return;
  parameters_.setValue(static_cast<std::size_t>(row), std::move(value));
  showParameters();
  showSelected();
  emit changed();
}

void ParameterPanel::focusList() { ui_->parameters->setFocus(); }

void ParameterPanel::focusEntry() {
  const int row = selectedParameter();
  if (row < 0) return focusList();
  if (!parameters_.typed(static_cast<std::size_t>(row))) return ui_->choices->setFocus();
  ui_->value->setFocus();
  ui_->value->selectAll();
}

void ParameterPanel::showParameters() {
  const int selected = selectedParameter();
  std::vector<ListRow> rows;
  for (std::size_t row = 0; row < parameters_.count(); ++row)
    rows.push_back({parameters_.label(row) + '\t' + parameters_.shownValue(row), static_cast<int>(row)});
  ui_->parameters->rows().setRows(std::move(rows), true, parameters_.draft().fid);
  ui_->parameters->selectRow(selected);
}

void ParameterPanel::showSelected() {
  const int selected = selectedParameter();
  choices_.clear();
  std::string value;
  std::string range;
  int chosen = -1;
  bool typed = false;
  if (selected >= 0) {
    const auto row = static_cast<std::size_t>(selected);
    value = parameters_.shownValue(row);
    range = parameters_.range(row);
    typed = parameters_.typed(row);
    choices_ = parameters_.choices(row);
    const auto isValue = [&](const auto& choice) {
      return choice.value == parameters_.draft().parameters[row].value;
    };
    const auto found = std::find_if(choices_.begin(), choices_.end(), isValue);
    if (found != choices_.end()) chosen = static_cast<int>(found - choices_.begin());
  }
  std::vector<ListRow> rows;
  for (const auto& choice : choices_) rows.push_back({choice.text, static_cast<int>(rows.size())});
  ui_->choices->rows().setRows(std::move(rows), selected >= 0 && !typed);
  ui_->choices->selectRow(chosen);
  fill(editable(value));
  openedText_ = ui_->value->text();
  openedValue_ =
      selected >= 0 ? parameters_.draft().parameters[static_cast<std::size_t>(selected)].value : "";
  ui_->value->setReadOnly(!typed);
  ui_->value->setFocusPolicy(typed ? Qt::StrongFocus : Qt::NoFocus);
  ui_->value->setEnabled(selected >= 0);
  ui_->range->setText(shown(range));
  showOptional();
  showTimecodeHelp();
}

// While nothing is stored: an emptied field stores a number.
void ParameterPanel::showOptional() {
  const int selected = selectedParameter();
  const auto row = static_cast<std::size_t>(std::max(selected, 0));
  const bool optional =
      selected >= 0 && parameters_.draft().parameters[row].value.empty() && parameters_.mayBeEmpty(row);
  const QString why = optional ? tr("This parameter may stay empty.") : QString();
  ui_->value->setPlaceholderText(optional ? tr("(optional)") : QString());
  ui_->value->setToolTip(why);
  for (QWidget* widget : std::initializer_list<QWidget*>{ui_->value, ui_->choices})
    widget->setAccessibleDescription(why);
}

// By program: the entry filter is for what the user types only.
void ParameterPanel::fill(const QString& text) {
  const QSignalBlocker quiet(ui_->value);
  ui_->value->setText(text);
  standing_ = ui_->value->text();
}

void ParameterPanel::showTimecodeHelp() {
  const int selected = selectedParameter();
  ui_->timecodeHelp->setText(tr("Timecode: hours:minutes:seconds:frames\n"
                                "\".\" before the frames for drop frame\n"
                                "Frames from 0 to %1")
                                 .arg(frameRate_ - 1));
  ui_->timecodeHelp->setVisible(selected >= 0 && ui_->parameters->isVisibleTo(this) &&
                                parameters_.timecode(static_cast<std::size_t>(selected)));
}

// A click on the value that is chosen already takes it away where none is needed.
void ParameterPanel::choose(int row) {
  const int selected = selectedParameter();
  if (selected < 0 || row < 0 || row >= static_cast<int>(choices_.size())) return;
  const auto parameter = static_cast<std::size_t>(selected);
  const DraftParameters::Choice& chosen = choices_[static_cast<std::size_t>(row)];
  const bool again = parameters_.draft().parameters[parameter].value == chosen.value;
  const bool away = again && parameters_.mayBeEmpty(parameter);
  parameters_.setValue(parameter, away ? std::string() : chosen.value);
  if (away) ui_->choices->selectRow(-1);
  showParameters();
  fill(away ? QString() : editable(chosen.text));
  showOptional();
  emit changed();
}

void ParameterPanel::edit(const QString& text) {
  const int selected = selectedParameter();
  if (selected < 0) return;
  const auto row = static_cast<std::size_t>(selected);
  if (undoing_ && text == openedText_) {
    parameters_.setValue(row, openedValue_);  // rather than what the shown digits come to
  } else {
    const FilteredEntry entry =
        parameters_.enter(row, standing_.toStdString(), text.toStdString(), frameRate_);
    correct(editable(entry.text));
    for (int i = 0; i < entry.beeps; ++i) beep_();
  }
  standing_ = ui_->value->text();
  showOptional();
  ui_->value->end(false);
  showParameters();
  emit changed();
}

// In place of what the user did last, so that the field's undo leads behind it.
void ParameterPanel::correct(const QString& text) {
  if (ui_->value->text() == text) return;
  const QSignalBlocker quiet(ui_->value);
  ui_->value->undo();
  if (ui_->value->text() == text) return;
  ui_->value->selectAll();
  ui_->value->insert(text);
}

void ParameterPanel::finishEntry() {
  if (!parameters_.finishEntry()) return;
  showParameters();
  showSelected();
  emit changed();
}

void ParameterPanel::goOn() {
  finishEntry();
  const auto& values = parameters_.draft().parameters;
  const auto count = static_cast<int>(values.size());
  for (int step = 1; step <= count; ++step) {
    const int row = (selectedParameter() + step) % count;
    if (!missing(values[static_cast<std::size_t>(row)])) continue;
    selectParameter(row);
    focusEntry();
    return;
  }
  emit finished();
}

void ParameterPanel::step(int rows) {
  if (parameters_.count() == 0) return;
  finishEntry();
  selectParameter(std::clamp(selectedParameter() + rows, 0, static_cast<int>(parameters_.count()) - 1));
  focusEntry();
}

bool ParameterPanel::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    undoing_ = static_cast<QKeyEvent*>(event)->matches(QKeySequence::Undo);
    if (isEnter(key)) {
      if (watched == ui_->parameters && selectedParameter() >= 0)
        focusEntry();
      else
        goOn();
      return true;
    }
    if (watched == ui_->value && (key == Qt::Key_Up || key == Qt::Key_Down)) {
      step(key == Qt::Key_Up ? -1 : 1);
      return true;
    }
  }
  return QWidget::eventFilter(watched, event);
}

}  // namespace tessaly
