#include "editors/ModifyCommandDialog.h"

#include <algorithm>

#include "ui_ModifyCommandDialog.h"
#include "values/Destination.h"
#include "widgets/DialogText.h"

namespace tessaly {

namespace {

constexpr const char* kNotFound = "FID not found!!!";
constexpr const char* kMainframeLabel = "Command Destination";
constexpr const char* kPanelLabel = "Panel";
constexpr const char* kMainframeRow = "Mainframe-%d";
constexpr const char* kWorkplaceRow = "Workplace-%d";

// A workplace without a row of its own shows as none.
int workplaceRow(const std::string& workplace) {
  const int number = parseInt(workplace);
  return number <= Destination::kMainframes ? std::max(number, 0) - 1 : -1;
}

}  // namespace

ModifyCommandDialog::ModifyCommandDialog(const EditorContext& context, const MacroCommand& command,
                                         QWidget* parent, Beep beep)
    : QDialog(parent),
      context_(context),
      command_(command),
      onPanel_(command.destination() == Destination::panel().name()),
      ui_(std::make_unique<Ui::ModifyCommandDialog>()),
      parameters_(new ParameterPanel(context.inputSources, context.frameRate, std::move(beep))),
      segments_(context.dictionary, command.functionName()) {
  layOut();
  startOver();
  connectControls();
  // The value is what is changed most; without one the first level that offers a choice.
  if (parameters_->selectedParameter() >= 0) {
    parameters_->focusEntry();
    return;
  }
  for (ListBox* list : lists_) {
    if (list->rows().rowCount() < 2) continue;
    list->setFocus();
    break;
  }
}

ModifyCommandDialog::~ModifyCommandDialog() = default;

void ModifyCommandDialog::layOut() {
  ui_->setupUi(this);
  lists_ = {ui_->segment1, ui_->segment2, ui_->segment3, ui_->segment4, ui_->segment5};
  ui_->parameterRoom->addWidget(parameters_);
  parameters_->tabAfter(ui_->segment5);
  keepSpaceWhenHidden({ui_->fromScratch});
  ui_->destinationLabel->setText(QLatin1String(onPanel_ ? kPanelLabel : kMainframeLabel));
  for (int number = 1; number <= Destination::kMainframes; ++number)
    ui_->destination->addItem(shown(format(onPanel_ ? kWorkplaceRow : kMainframeRow, number)));
}

void ModifyCommandDialog::connectControls() {
  for (std::size_t level = 0; level < lists_.size(); ++level) {
    connect(lists_[level], &ListBox::chosen, this, [this, level](int row) {
      if (row == segments_.levels()[level].selected) return;
      segments_.choose(level, row);
      lookUp();
      changed();
    });
  }
  connect(ui_->destination, &QComboBox::activated, this, [this] {
    destinationChosen_ = true;
    changed();
  });
  connect(ui_->showRaw, &QCheckBox::toggled, parameters_, &ParameterPanel::setRaw);
  connect(parameters_, &ParameterPanel::changed, this, &ModifyCommandDialog::changed);
  connect(parameters_, &ParameterPanel::finished, this, &ModifyCommandDialog::accept);
  connect(ui_->fromScratch, &QPushButton::clicked, this, &ModifyCommandDialog::startOver);
  connect(ui_->modify, &QPushButton::clicked, this, &ModifyCommandDialog::accept);
  connect(ui_->cancel, &QPushButton::clicked, this, &ModifyCommandDialog::reject);
}

// The command as it was given.
void ModifyCommandDialog::startOver() {
  segments_ = FunctionSegments(context_.dictionary, command_.functionName());
  values_.clear();
  otherForm_.clear();
  for (const MacroParameter& parameter : command_.parameters)
    values_.emplace(parameter.name, parameter.value);
  function_.reset();
  destinationChosen_ = false;
  ui_->destination->setCurrentIndex(onPanel_ ? workplaceRow(command_.workplace)
                                             : Destination::mainframeOf(command_.destination()).index());
  showLevels();
  lookUp();
  ui_->fromScratch->hide();
}

void ModifyCommandDialog::showLevels() {
  for (std::size_t level = 0; level < lists_.size(); ++level) {
    std::vector<ListRow> rows;
    for (const SegmentAlternative& alternative : segments_.levels()[level].alternatives)
      rows.push_back({alternative.displayText, static_cast<int>(rows.size())});
    lists_[level]->rows().setRows(std::move(rows));
    lists_[level]->selectRow(segments_.levels()[level].selected);
  }
}

void ModifyCommandDialog::lookUp() {
  const auto found = context_.dictionary.find(segments_.name());
  found_ = found.has_value();
  ui_->functionText->setText(found ? shown(found->description()) : QLatin1String(kNotFound));
  if (found) {
    rememberValues();
    if (function_ && function_->incremental() != found->incremental()) values_.swap(otherForm_);
    function_ = found;
    CommandDraft draft = draftFor(destinationPrefix(), *found);
    for (CommandDraft::Parameter& parameter : draft.parameters) {
      const auto value = values_.find(parameter.name);
      if (value != values_.end()) parameter.value = value->second;
    }
    parameters_->begin(*found, std::move(draft));
  } else if (!function_) {
    parameters_->clear();
  }
  checkReady();
}

// Values live on while functions without their parameter are passed on the way to another one.
void ModifyCommandDialog::rememberValues() {
  if (!function_) return;
  for (const CommandDraft::Parameter& parameter : parameters_->draft().parameters)
    values_[parameter.name] = parameter.value;
}

// A mainframe command keeps a destination of its own until another one is chosen.
std::string ModifyCommandDialog::destinationPrefix() const {
  const std::string_view own = command_.destination();
  if (!onPanel_ && (destinationChosen_ || own.empty()))
    return std::string(Destination::at(ui_->destination->currentIndex()).prefix());
  return std::string(own) + '.';
}

int ModifyCommandDialog::workplace() const {
  const bool chosen = onPanel_ && ui_->destination->currentIndex() >= 0;
  return chosen ? ui_->destination->currentIndex() + 1 : parseInt(command_.workplace);
}

void ModifyCommandDialog::changed() {
  ui_->fromScratch->show();
  checkReady();
}

void ModifyCommandDialog::checkReady() { ui_->modify->setEnabled(found_ && parameters_->complete()); }

void ModifyCommandDialog::accept() {
  if (!found_ || !parameters_->complete()) return;
  draft_ = parameters_->draft();
  draft_.fid = destinationPrefix().append(function_->name());
  if (context_.taken()) QDialog::accept();
}

}  // namespace tessaly
