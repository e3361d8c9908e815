#include "app/MacroPane.h"

#include <algorithm>

#include <QDropEvent>
#include <QEvent>
#include <QFileInfo>
#include <QMenu>
#include <QShortcut>

#include "app/PaneKeys.h"
#include "ui_MacroPane.h"
#include "widgets/AtEach.h"
#include "widgets/ButtonIcon.h"
#include "widgets/DialogText.h"
#include "widgets/EditedText.h"

namespace tessaly {

namespace {

constexpr const char* kNotice =
    "\n\n\n\n\nMacros from Tarrow Control Panels can only be viewed\nor copied to Corvane XL Control Panels\n"
    "or to Corvane XL Applications";

// Starting heights of the two parts of a pane in pixels; the user moves the border.
constexpr int kBrowseHeight = 270;
constexpr int kCommandsHeight = 400;
constexpr int kHalf = 1000;  // both halves of the browse area are alike at the start

// Tab stops of the command list in dialog units, without and with the destination in front.
constexpr std::array kPlainTabStops{230, 310};
constexpr std::array kDestinationTabStops{255, 335};

// The macro file that is carried; empty for anything else.
QString macroFile(const QMimeData& data) {
  const QList<QUrl> urls = data.urls();
  const QString file = urls.size() == 1 ? urls.constFirst().toLocalFile() : QString();
  return QFileInfo(file).suffix().compare(QLatin1String("mac"), Qt::CaseInsensitive) == 0 ? file : QString();
}

}  // namespace

MacroPane::MacroPane(const PaneDescriptor& descriptor, QWidget* parent)
    : WideGroup(parent),
      descriptor_(descriptor),
      ui_(std::make_unique<Ui::MacroPane>()),
      actions_(new CommandActions(*this)) {
  ui_->setupUi(this);
  setTitle(QLatin1String(descriptor.title));
  ui_->copyMacro->setText(QLatin1String(descriptor.copyText));
  ui_->newClassic->setText(QLatin1String(descriptor.newClassicText));
  ui_->connectButton->setVisible(false);
  ui_->harddisk->setVisible(!descriptor.harddiskHiddenAtStart);
  ui_->paneSplitter->setStretchFactor(0, kBrowseHeight);
  ui_->paneSplitter->setStretchFactor(1, kCommandsHeight);
  ui_->paneSplitter->setSizes({kBrowseHeight, kCommandsHeight});
  ui_->browseSplitter->setSizes({kHalf, kHalf});
  keepSpaceWhenHidden({ui_->saveChanges, ui_->discardChanges, ui_->createMacro, ui_->copyMacro,
                       ui_->renameMacro, ui_->deleteMacro});
  for (ListBox* list : {ui_->applications, ui_->controlPanels, ui_->workplaces, ui_->macros})
    list->setTextElideMode(Qt::ElideRight);
  // One row at least, for a pane as high as a small screen.
  for (ListBox* list : {ui_->controlPanels, ui_->workplaces})
    nowAndAtEach(QEvent::FontChange, *list, [list] {
      list->setMinimumHeight(list->minimumSizeHint().height() - list->fontMetrics().height());
    });
  ui_->macros->setAccessibleName(ui_->macrosFrame->title());
  ui_->commands->setAccessibleName(ui_->commandsFrame->title());
  setTabOrder(ui_->deleteMacro, &ui_->heading->connectAgain());
  setTabOrder(&ui_->heading->connectAgain(), ui_->showDestination);
  setIconsWhereTheyFit(*ui_->commandButtons, {{ui_->createMacro, ButtonIcon::kNewMacro},
                                              {ui_->copyMacro, ButtonIcon::kCopy},
                                              {ui_->renameMacro, ButtonIcon::kRename},
                                              {ui_->deleteMacro, ButtonIcon::kDelete},
                                              {ui_->newClassic, ButtonIcon::kNewCommand},
                                              {ui_->newCorvane, ButtonIcon::kNewCommand},
                                              {ui_->newMultiple, ButtonIcon::kNewCommands},
                                              {ui_->modifyCommand, ButtonIcon::kModify},
                                              {ui_->deleteCommand, ButtonIcon::kDelete},
                                              {ui_->updateData, ButtonIcon::kReadAgain},
                                              {ui_->saveChanges, ButtonIcon::kSave},
                                              {ui_->discardChanges, ButtonIcon::kDiscard}});
  placeNotice();
  numberControls();
  connectControls();
  addShortcuts();
  setAcceptDrops(true);
  addDeleteKey(ui_->macros, ui_->deleteMacro);
  addDeleteKey(ui_->commands, ui_->deleteCommand);
  applyTabStops();
}

MacroPane::~MacroPane() = default;

void MacroPane::placeNotice() {
  // Lies over the command buttons; its last three lines are what there is room for.
  notice_ = new QLabel(QLatin1String(kNotice), ui_->commandButtons);
  notice_->setObjectName(QStringLiteral("notice"));
  notice_->setAlignment(Qt::AlignHCenter | Qt::AlignBottom);
  notice_->setAutoFillBackground(true);
  notice_->raise();
  ui_->commandButtons->installEventFilter(this);
  notice_->hide();
}

// As high as its whole text, or a label would show the first lines of it, which are empty.
void MacroPane::layNotice() {
  if (notice_->isHidden()) return;
  const QSize area = ui_->commandButtons->size();
  const int height = std::max(area.height(), notice_->sizeHint().height());
  notice_->setGeometry(0, area.height() - height, area.width(), height);
}

bool MacroPane::eventFilter(QObject* watched, QEvent* event) {
  if (watched == ui_->commandButtons && event->type() == QEvent::Resize) layNotice();
  return WideGroup::eventFilter(watched, event);
}

void MacroPane::numberControls() {
  const PaneDescriptor::ControlIds& ids = descriptor_.ids;
  const std::pair<QWidget*, int> controls[] = {{ui_->harddisk, ids.harddisk},
                                               {ui_->panel, ids.panel},
                                               {ui_->sourceLabel, ids.sourceLabel},
                                               {ui_->addressLabel, ids.addressLabel},
                                               {ui_->address, ids.address},
                                               {ui_->connectButton, ids.connectButton},
                                               {ui_->applications, ids.applications},
                                               {ui_->controlPanels, ids.controlPanels},
                                               {ui_->workplaces, ids.workplaces},
                                               {ui_->macros, ids.macros},
                                               {ui_->commands, ids.commands},
                                               {ui_->createMacro, ids.createMacro},
                                               {ui_->deleteMacro, ids.deleteMacro},
                                               {ui_->renameMacro, ids.renameMacro},
                                               {ui_->copyMacro, ids.copyMacro},
                                               {ui_->newClassic, ids.newClassic},
                                               {ui_->newCorvane, ids.newCorvane},
                                               {ui_->newMultiple, ids.newMultiple},
                                               {ui_->modifyCommand, ids.modifyCommand},
                                               {ui_->deleteCommand, ids.deleteCommand},
                                               {ui_->updateData, ids.updateData},
                                               {ui_->showDestination, ids.showDestination},
                                               {ui_->showRaw, ids.showRaw},
                                               {ui_->useTabs, ids.useTabs},
                                               {ui_->saveChanges, ids.saveChanges},
                                               {ui_->discardChanges, ids.discardChanges},
                                               {ui_->progress, ids.progress},
                                               {notice_, ids.notice}};
  for (const auto& [control, id] : controls) control->setProperty("controlId", id);
}

void MacroPane::connectControls() {
  const auto pressed = [this](QPushButton* button, void (MacroPane::*signal)()) {
    connect(button, &QPushButton::clicked, this, signal);
  };
  pressed(ui_->connectButton, &MacroPane::connectPressed);
  connect(ui_->heading, &PaneHeading::connectAgainPressed, this, [this] {
    // The button that has the keyboard goes; the one that tells of the attempt stays, if it is there.
    (connectAllowed_ ? static_cast<QWidget*>(ui_->connectButton) : ui_->commands)->setFocus();
    emit connectAgainPressed();
  });
  pressed(ui_->createMacro, &MacroPane::createPressed);
  pressed(ui_->copyMacro, &MacroPane::copyPressed);
  pressed(ui_->renameMacro, &MacroPane::renamePressed);
  pressed(ui_->deleteMacro, &MacroPane::deletePressed);
  pressed(ui_->newClassic, &MacroPane::newClassicPressed);
  pressed(ui_->newCorvane, &MacroPane::newCorvanePressed);
  pressed(ui_->newMultiple, &MacroPane::newMultiplePressed);
  pressed(ui_->modifyCommand, &MacroPane::modifyPressed);
  pressed(ui_->deleteCommand, &MacroPane::deleteCommandPressed);
  pressed(ui_->updateData, &MacroPane::updatePressed);
  pressed(ui_->saveChanges, &MacroPane::savePressed);
  pressed(ui_->discardChanges, &MacroPane::discardPressed);
  // Rather than `clicked` here and below: a screen reader's hands toggle. The source that is shown already is
  // no choice.
  const auto chooses = [this](QRadioButton* button, PaneSource source) {
    connect(button, &QRadioButton::toggled, this, [this, source](bool on) {
      if (on && source_ != source) emit sourceChosen(source);
    });
  };
  chooses(ui_->harddisk, PaneSource::kHarddisk);
  chooses(ui_->panel, PaneSource::kPanel);
  connect(ui_->commands, &CommandList::opened, ui_->modifyCommand, &QPushButton::click);
  ui_->commands->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(ui_->commands, &QWidget::customContextMenuRequested, this, &MacroPane::openCommandMenu);
  connect(actions_, &CommandActions::chosen, this, [this](CommandAct act) {
    leaveAddress();
    emit commandActChosen(act);
  });
  whenEdited(*ui_->address, this, [this](const QString& text) { emit addressEdited(text); });
  connect(ui_->address, &QLineEdit::returnPressed, this, [this] { emit addressFinished(true); });
  connect(ui_->address, &QLineEdit::editingFinished, this, [this] { emit addressFinished(false); });
  connect(ui_->showRaw, &QCheckBox::toggled, this, &MacroPane::optionsChanged);
  connect(ui_->useTabs, &QCheckBox::toggled, this, &MacroPane::optionsChanged);
  connect(ui_->showDestination, &QCheckBox::toggled, this, [this] {
    applyTabStops();
    emit optionsChanged();
  });
}

void MacroPane::addShortcuts() {
  const auto alt = [](Qt::Key key) { return QKeySequence(Qt::ALT | key); };
  const QKeySequence create = Qt::CTRL | Qt::Key_N;
  const QKeySequence save = Qt::CTRL | Qt::Key_S;
  const std::vector<PaneKey> table{
      {ui_->createMacro, tr("Create a macro"), {create, alt(Qt::Key_N)}},
      {ui_->copyMacro, tr("Copy the macro of the other pane into this one"), {alt(Qt::Key_Y)}},
      {ui_->renameMacro, tr("Rename the macro"), {QKeySequence(Qt::Key_F2), alt(Qt::Key_R)}},
      {ui_->deleteMacro, tr("Delete the macro, after a question; in the list: Del"), {alt(Qt::Key_T)}},
      {ui_->newClassic, tr("new [classic]: build a classic command"), {alt(Qt::Key_L)}},
      {ui_->newCorvane, tr("Build a panel-style command from the function dictionary"), {alt(Qt::Key_O)}},
      {ui_->newMultiple, tr("Build many panel-style commands at once"), {alt(Qt::Key_U)}},
      {ui_->modifyCommand, tr("Change the selected command; in the list: Enter"), {alt(Qt::Key_M)}},
      {ui_->deleteCommand, tr("Delete the selected commands; in the list: Del"), {alt(Qt::Key_E)}},
      {ui_->updateData,
       tr("Fetch the current values of the commands from the panel"),
       {QKeySequence(Qt::Key_F5), alt(Qt::Key_P)}},
      {ui_->saveChanges,
       tr("Put the changes where the macro came from"),
       {save, alt(Qt::Key_S)},
       [this] { emit savePressed(); }},  // a save that failed is owed
      {ui_->discardChanges, tr("Open the macro again as it was"), {alt(Qt::Key_D)}},
      {ui_->showDestination, tr("Show where each command goes to"), {alt(Qt::Key_I)}},
      {ui_->showRaw, tr("Show the commands as they are stored"), {alt(Qt::Key_W)}},
      {ui_->useTabs, tr("Show names and values in columns"), {alt(Qt::Key_B)}},
      {ui_->connectButton, tr("Connect to the panel, or leave it"), {alt(Qt::Key_K)}}};
  addPaneKeys(*this, table, [this] { leaveAddress(); });
  addListKeys(*this, {ui_->applications, ui_->controlPanels, ui_->workplaces, ui_->macros, ui_->commands});
}

void MacroPane::addDeleteKey(QWidget* list, QPushButton* button) {
  auto* shortcut = new QShortcut(QKeySequence(Qt::Key_Delete), list);
  shortcut->setContext(Qt::WidgetShortcut);
  shortcut->setAutoRepeat(false);
  connect(shortcut, &QShortcut::activated, button, &QPushButton::click);
}

// Leaving the path first commits it: what is done must not act on lists of another path.
void MacroPane::leaveAddress() {
  if (ui_->address->hasFocus()) ui_->commands->setFocus();
}

// The list of an empty macro takes no input, and so no drop.
bool MacroPane::takesIntoEmptyList(const QMimeData& carried) const {
  return !ui_->commands->isEnabled() && ui_->commands->takes(carried);
}

void MacroPane::dragEnterEvent(QDragEnterEvent* event) {
  const QMimeData& carried = *event->mimeData();
  if (macroFile(carried).isEmpty() && !takesIntoEmptyList(carried)) return;
  event->setDropAction(Qt::CopyAction);
  event->accept();
}

void MacroPane::dropEvent(QDropEvent* event) {
  event->setDropAction(Qt::CopyAction);
  event->accept();
  const QMimeData& carried = *event->mimeData();
  if (const QString file = macroFile(carried); !file.isEmpty())
    emit fileDropped(file);
  else if (takesIntoEmptyList(carried))
    emit ui_->commands->dropped({carried, 0, nullptr, false});
}

// What the buttons do to the selection, with the keys that do the same in the list, and all else.
void MacroPane::openCommandMenu(const QPoint& at) {
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  const std::pair<QPushButton*, Qt::Key> entries[] = {{ui_->modifyCommand, Qt::Key_Return},
                                                      {ui_->deleteCommand, Qt::Key_Delete},
                                                      {ui_->updateData, Qt::Key_F5}};
  for (const auto& [button, key] : entries) {
    QAction* action = menu->addAction(button->text(), button, &QPushButton::click);
    action->setShortcut(key);
    action->setEnabled(button->isEnabled());
  }
  menu->addSeparator();
  menu->addActions(actions_->all());
  menu->addSeparator();
  emit commandMenuOpens(menu);
  menu->popup(ui_->commands->viewport()->mapToGlobal(at));
}

QPoint MacroPane::placeOfSelected() {
  const QModelIndex row = ui_->commands->rows().index(ui_->commands->selectedRow());
  return ui_->commands->viewport()->mapToGlobal(ui_->commands->visualRect(row).bottomLeft());
}

ListBox& MacroPane::applications() { return *ui_->applications; }
ListBox& MacroPane::controlPanels() { return *ui_->controlPanels; }
ListBox& MacroPane::workplaces() { return *ui_->workplaces; }
ListBox& MacroPane::macros() { return *ui_->macros; }
CommandList& MacroPane::commands() { return *ui_->commands; }
PaneHeading& MacroPane::heading() { return *ui_->heading; }

LineOptions MacroPane::lineOptions() const {
  return {ui_->showDestination->isChecked(), ui_->showRaw->isChecked(), ui_->useTabs->isChecked()};
}

QLineEdit& MacroPane::address() { return *ui_->address; }

void MacroPane::showSource(PaneSource source) {
  source_ = source;
  (source == PaneSource::kPanel ? ui_->panel : ui_->harddisk)->setChecked(true);
  // Tab goes to the chosen one; the toolkit sees to that only once one of them has had the keyboard.
  for (QRadioButton* button : {ui_->harddisk, ui_->panel})
    button->setFocusPolicy(button->isChecked() ? Qt::StrongFocus : Qt::ClickFocus);
}

void MacroPane::takeFocus() {
  QWidget* last = focusWidget();
  if (last == nullptr || !last->isEnabled() || !last->isVisibleTo(this))
    last = ui_->applications->isEnabled() ? static_cast<QWidget*>(ui_->applications) : ui_->commands;
  last->setFocus(Qt::OtherFocusReason);
}

void MacroPane::showConnection(const PaneConnectionDisplay& display) {
  sourceText_ = shown(display.sourceLabel);
  showSourceLabel();
  ui_->addressLabel->setText(shown(display.editLabel));
  putText(*ui_->address, editable(display.editText));
  ui_->address->setEnabled(display.editEnabled);
  ui_->connectButton->setText(shown(display.buttonText));
  connectShown_ = display.buttonVisible;
  ui_->connectButton->setVisible(connectShown_ && connectAllowed_);
  // The keyboard comes back to the button that it had to leave while the panel was being connected, unless it
  // has been led elsewhere by then.
  const bool left = window()->focusWidget() == ui_->connectButton && !display.buttonEnabled;
  ui_->connectButton->setEnabled(display.buttonEnabled);
  if (left) focusAfterConnect_ = window()->focusWidget();
  if (!display.buttonEnabled || focusAfterConnect_ == nullptr) return;
  if (focusAfterConnect_ == window()->focusWidget()) ui_->connectButton->setFocus();
  focusAfterConnect_ = nullptr;
}

void MacroPane::showSourceLabel() {
  const QString notice = lineNotice_.isEmpty() ? QString() : QStringLiteral(" \u2013 ") + lineNotice_;
  ui_->sourceLabel->setText(sourceText_ + notice);
  nameListsByLabels(*this);
}

// The buttons stay as they are told: "disconnect" leaves a lost line, too.
void MacroPane::showLine(PaneLine line, const QString& elsewhere) {
  const bool lost = line == PaneLine::kLost;
  const QString notice = lost                  ? tr("line lost")
                         : elsewhere.isEmpty() ? QString()
                                               : tr("functions go to %1").arg(elsewhere);
  if (notice == lineNotice_) return;
  lineNotice_ = notice;
  showSourceLabel();
  const QString why = lost ? tr("The line to this panel is lost: nothing is behind the pane.")
                      : elsewhere.isEmpty()
                          ? QString()
                          : tr("This pane has joined the line to %1: what the panel is asked to do "
                               "goes there, macros go to the address here.")
                                .arg(elsewhere);
  QFont font = ui_->address->font();
  font.setStrikeOut(lost);
  ui_->address->setFont(font);
  ui_->address->setToolTip(why.toHtmlEscaped());
  ui_->address->setAccessibleDescription(why);
  emit lineChanged();
}

void MacroPane::showControls(const PaneControls& controls) {
  // A control that goes while it has the keyboard would hand it to the next one, perhaps of the other pane.
  QWidget* focus = window()->focusWidget();
  const bool here = focus != nullptr && isAncestorOf(focus);
  ui_->harddisk->setEnabled(controls.selectionEnabled);
  ui_->panel->setEnabled(controls.selectionEnabled);
  for (ListBox* list : {ui_->applications, ui_->controlPanels, ui_->workplaces, ui_->macros})
    list->setAllowed(controls.selectionEnabled);
  ui_->address->setReadOnly(!controls.selectionEnabled);
  for (QPushButton* button : {ui_->createMacro, ui_->copyMacro, ui_->renameMacro, ui_->deleteMacro})
    button->setVisible(controls.macroButtonsShown);
  ui_->createMacro->setEnabled(controls.create);
  ui_->copyMacro->setEnabled(controls.copy);
  ui_->renameMacro->setEnabled(controls.rename);
  ui_->deleteMacro->setEnabled(controls.remove);
  for (QPushButton* button : {ui_->newClassic, ui_->newCorvane, ui_->newMultiple})
    button->setEnabled(controls.newCommand);
  ui_->modifyCommand->setEnabled(controls.modify);
  ui_->deleteCommand->setEnabled(controls.removeCommand);
  ui_->updateData->setEnabled(controls.update);
  actions_->show(controls);
  for (QCheckBox* box : {ui_->showDestination, ui_->showRaw, ui_->useTabs})
    box->setEnabled(controls.optionsEnabled);
  ui_->useTabs->setVisible(!ui_->showRaw->isChecked());  // the raw form has no separators
  connectAllowed_ = controls.connectAllowed;
  ui_->connectButton->setVisible(connectShown_ && connectAllowed_);
  ui_->saveChanges->setVisible(controls.saveShown);
  ui_->discardChanges->setVisible(controls.saveShown);
  notice_->setText(controls.snapshotShown ? QStringLiteral("\n\n\n\n\n\n") +
                                                tr("Macros in a snapshot can only be viewed\nor copied from")
                                          : QLatin1String(kNotice));
  notice_->setVisible(controls.noticeShown || controls.snapshotShown);
  layNotice();
  if (here && (!focus->isEnabled() || !focus->isVisibleTo(this)))
    (ui_->commands->isEnabled() ? static_cast<QWidget*>(ui_->commands) : ui_->macros)->setFocus();
}

void MacroPane::showProgress(const QString& text) { ui_->progress->setText(text); }

void MacroPane::applyTabStops() {
  const auto& stops = ui_->showDestination->isChecked() ? kDestinationTabStops : kPlainTabStops;
  ui_->commands->setTabStops({stops.begin(), stops.end()});
}

void MacroPane::restorePlaces(const Preferences& preferences) {
  ui_->paneSplitter->restoreState(preferences.place(placeName("commands")));
  ui_->browseSplitter->restoreState(preferences.place(placeName("macros")));
  ui_->commands->rows().showDestinations(preferences.destinationStripes());
  ui_->heading->showBand(preferences.headings());
}

void MacroPane::keepPlaces(Preferences& preferences) const {
  preferences.setPlace(placeName("commands"), ui_->paneSplitter->saveState());
  preferences.setPlace(placeName("macros"), ui_->browseSplitter->saveState());
}

QString MacroPane::placeName(const char* splitter) const {
  return QString(QLatin1Char(descriptor_.letter)) + QLatin1Char('-') + QLatin1String(splitter);
}

void MacroPane::revealHarddiskButton() { ui_->harddisk->setVisible(true); }

}  // namespace tessaly
