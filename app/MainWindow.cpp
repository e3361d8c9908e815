#include "app/MainWindow.h"

#include <algorithm>

#include <QKeyEvent>
#include <QMenuBar>
#include <QPushButton>
#include <QScreen>

#include "app/FailureText.h"
#include "app/GuideWindow.h"
#include "app/HelpTopics.h"
#include "app/PaneKeys.h"
#include "app/PlaceText.h"
#include "app/SettingsText.h"
#include "app/StepNames.h"
#include "app/WindowPlaces.h"
#include "platform/MacroNumber.h"
#include "platform/SitePlace.h"
#include "ui_MainWindow.h"
#include "widgets/DialogText.h"

namespace tessaly {

namespace {

constexpr const char* kLoadingNotice = "L O A D I N G   D A T A ,       please wait.....";
constexpr int kConnectionWatchMilliseconds = 1000;
constexpr QSize kStartSize{1180, 820};  // pixels
const QString kWindowPlace = QStringLiteral("window");
const QString kPanesPlace = QStringLiteral("panes");

// Buttons of the window that have no action; they are known by their numbers only.
struct SilentButton {
  int id;
  const char* text;
};
constexpr SilentButton kSilentButtons[] = {{1054, "copy from B"}, {1070, "copy from A"}, {1073, "copy/swap"},
                                           {1077, "copy/swap"},   {1082, "copy/swap"},   {1086, "copy/swap"},
                                           {1078, "modify"},      {1079, "modify"}};

}  // namespace

MainWindow::MainWindow(const WindowContext& context, QWidget* parent)
    : QMainWindow(parent),
      context_(context),
      lines_{context.dictionary, context.decodingLists},
      ui_(std::make_unique<Ui::MainWindow>()),
      bridge_(this),
      subscriptions_(context.client),
      connection_(context.client, subscriptions_, context.site.messages, bridge_),
      panelNames_(context.client, subscriptions_, bridge_),
      transfer_(context.panelMacros, gate_, this),
      transfers_(transfer_, context.site, panelNames_) {
  layOut();
  bridge_.setSource([this](Pane pane) { return connection_.source(pane) == PaneSource::kPanel; });
  connection_.setDemo(context.demo);
  connection_.setConnectTimeOut(context.connectTimeOut);
  for (const Pane pane : kPanes) {
    PaneRoom& here = room(pane);
    here.state = std::make_unique<PaneState>(kPaneDescriptors[index(pane)], *here.view, context.site);
    here.state->copy.setBeside([this](const std::function<void()>& work) {
      return transfer_.finish(tr("Writing the working copy"), work);
    });
    here.browser =
        std::make_unique<Browser>(*here.state, context.site, lines_, connection_, panelNames_, transfer_);
  }
  const PaneAccesses rooms{PaneAccess{room(Pane::kA).state.get(), room(Pane::kA).browser.get()},
                           PaneAccess{room(Pane::kB).state.get(), room(Pane::kB).browser.get()}};
  open_ = std::make_unique<OpenMacros>(rooms, context.site, context.history, connection_, transfers_,
                                       context.demo);
  macroUndo_ = std::make_unique<MacroUndo>(context.site, context.history, transfers_, *open_);
  operations_ = std::make_unique<MacroOperations>(rooms, context.site, context.history, connection_,
                                                  transfers_, *open_, *macroUndo_, this);
  update_ = std::make_unique<ValueUpdate>(rooms, context.dictionary, connection_, context.client,
                                          context.site.messages, gate_);
  steps_ = std::make_unique<StepOperations>(rooms, *update_, this);
  readSettingsFile();
  editing_ = std::make_unique<CommandEditing>(rooms,
                                              EditorContext{context.site,
                                                            context.dictionary,
                                                            context.decodingLists,
                                                            inputSources_,
                                                            context.client,
                                                            [this] { return connection_.anyConnected(); },
                                                            settings_.frameRate,
                                                            {}},
                                              this);
  runs_ = std::make_unique<CommandRuns>(rooms);
  loose_ = std::make_unique<LooseMacros>(rooms, context.site, context.history, transfers_, *open_, this);
  recovery_ = std::make_unique<Recovery>(rooms, context.site, context.history, connection_, this);
  historyOperations_ = std::make_unique<HistoryOperations>(rooms, context.site, context.history, transfers_,
                                                           *open_, *macroUndo_, lines_, this);
  desk_ = std::make_unique<ReviewDesk>(
      ReviewDesk::Surroundings{context_, rooms, lines_, settings_.frameRate, connection_, transfer_,
                               transfers_, gate_, *open_, *loose_, *macroUndo_, *historyOperations_},
      this);
  editing_->setWhereUsed([this](QMenu& menu, const MacroCommand& command, QDialog& dialog) {
    desk_->addWhereUsed(menu, command, dialog);
  });
  connectPanel();
  for (const Pane pane : kPanes) {
    connectPane(pane);
    connectOperations(pane);
    connection_.refresh(pane);
  }
  connect(loose_.get(), &LooseMacros::changed, this, &MainWindow::updateControls);
  connect(open_.get(), &OpenMacros::macroChosen, update_.get(), &ValueUpdate::endBusy);
  connect(desk_.get(), &ReviewDesk::changed, this, &MainWindow::updateControls);
  connect(desk_.get(), &ReviewDesk::findingsChanged, this, &MainWindow::showFinding);
  connect(historyOperations_.get(), &HistoryOperations::changed, this, &MainWindow::updateControls);
  connect(macroUndo_.get(), &MacroUndo::changed, this, &MainWindow::updateControls);
  connectStrip();
  connect(&connectionWatch_, &QTimer::timeout, this, &MainWindow::watchConnection);
  connectionWatch_.start(kConnectionWatchMilliseconds);
  addActs(rooms);  // until now the controls, which change with each list, are left as they are
  updateControls();
}

MainWindow::~MainWindow() {
  // Nothing may arrive while the parts that take it go, one after the other.
  subscriptions_.dropAll();
  disconnect(qApp, nullptr, this, nullptr);
  // A path that has the keyboard tells that it was left when its field goes, which is after all of them.
  for (const Pane pane : kPanes) room(pane).view->disconnect();
}

void MainWindow::layOut() {
  ui_->setupUi(this);
  resize(kStartSize.boundedTo(screen()->availableSize()));
  for (const Pane pane : kPanes) {
    auto* view =
        new MacroPane(kPaneDescriptors[index(pane)], ui_->panes);  // which takes it while it is empty
    view->setEnabled(false);
    room(pane).view = view;
  }
  ui_->panes->setSizes({1, 1});
  restorePlaces();
  ui_->closeButton->setProperty("controlId", kCloseId);
  connect(ui_->closeButton, &QPushButton::clicked, this, &MainWindow::close);
  for (const SilentButton& silent : kSilentButtons) {
    auto* button = new QPushButton(QLatin1String(silent.text), this);
    button->setProperty("controlId", silent.id);
    button->setEnabled(false);
    button->hide();
  }
  loadingNotice_ = new QLabel(QLatin1String(kLoadingNotice), this);
  loadingNotice_->setObjectName(QStringLiteral("loadingNotice"));
  loadingNotice_->setProperty("controlId", kLoadingNoticeId);
  loadingNotice_->setAlignment(Qt::AlignCenter);
  loadingNotice_->setAutoFillBackground(true);
  loadingNotice_->raise();
}

void MainWindow::restorePlaces() {
  if (context_.preferences == nullptr) return;
  restoreGeometry(context_.preferences->place(kWindowPlace));
  ui_->panes->restoreState(context_.preferences->place(kPanesPlace));
  for (const Pane pane : kPanes) room(pane).view->restorePlaces(*context_.preferences);
}

void MainWindow::keepPlaces() {
  if (context_.preferences == nullptr) return;
  context_.preferences->setPlace(kWindowPlace, saveGeometry());
  context_.preferences->setPlace(kPanesPlace, ui_->panes->saveState());
  for (const Pane pane : kPanes) {
    room(pane).view->keepPlaces(*context_.preferences);
    keepPane(*context_.preferences, *room(pane).view, connection_.source(pane));
  }
}

void MainWindow::showGuide(const QString& place) {
  openGuide(*this, place.isEmpty() ? helpFor(focusWidget()) : place);
}

void MainWindow::switchPane() {
  const bool inA = room(Pane::kA).view->isAncestorOf(focusWidget());
  room(inA ? Pane::kB : Pane::kA).view->takeFocus();
}

void MainWindow::followKeyboard(const QWidget* to) {
  for (const Pane pane : kPanes)
    if (room(pane).view->isAncestorOf(to)) keyboardPane_ = pane;
  for (const Pane pane : kPanes) setPaneKeysLive(*room(pane).view, pane == keyboardPane_);
  desk_->setActive(keyboardPane_);
  showActs();
  showFinding();
}

void MainWindow::showFinding() { ui_->strip->showFinding(desk_->findingText()); }

void MainWindow::showActs() {
  const WorkingCopy& copy = room(keyboardPane_).state->copy;
  acts_->show(keyboardPane_, {situation(keyboardPane_), copy.unsaved(), &copy.steps(), macroUndo_->next(),
                              desk_->mayCapture()});
}

void MainWindow::addActs(const PaneAccesses& rooms) {
  acts_ = std::make_unique<Acts>(ActHands{*this, rooms, *macroUndo_, *steps_, *loose_, *historyOperations_,
                                          *desk_, context_.preferences},
                                 *menuBar());
  findChild<QAction*>(QStringLiteral("about"))->setData(kAboutCommandId);
  new HelpKeys(*this);
  connect(qApp, &QApplication::focusChanged, this,
          [this](QWidget*, const QWidget* now) { followKeyboard(now); });
}

void MainWindow::connectPane(Pane pane) {
  MacroPane& view = *room(pane).view;
  Browser& browser = *room(pane).browser;
  connect(&view.applications(), &ListBox::chosen, &browser, &Browser::chooseApplication);
  connect(&view.controlPanels(), &ListBox::chosen, &browser, &Browser::chooseControlPanel);
  connect(&view.workplaces(), &ListBox::chosen, &browser, &Browser::chooseWorkplace);
  connect(&view.commands(), &ListBox::chosen, this, &MainWindow::updateControls);
  connect(&view, &MacroPane::optionsChanged, &browser,
          [&view, &browser] { browser.showCommands(view.commands().selectedRows()); });
  connect(&browser, &Browser::changed, this, &MainWindow::updateControls);
  connect(&browser, &Browser::said, this, &MainWindow::say);
  connect(&browser, &Browser::panelWorkplaceChosen, this,
          [this, pane](int number) { room(other(pane)).browser->followWorkplace(number); });
  connect(&view, &MacroPane::sourceChosen, this, [this, pane](PaneSource source) {
    if (source == PaneSource::kPanel)
      connection_.choosePanel(pane);
    else
      connection_.chooseHarddisk(pane);
    updateControls();
  });
  connect(&view, &MacroPane::addressEdited, this,
          [this, pane](const QString& text) { connection_.editText(pane, text.toStdString()); });
  keepToSettingsText(view.address());
  connect(&view.address(), &QLineEdit::inputRejected, this, [this, pane] {
    say({Grade::kWarning, settingsTextRefused(), placeInWindow(*room(pane).state)});
  });
  connect(&view, &MacroPane::addressFinished, this,
          [this, pane](bool confirmed) { connection_.editFinished(pane, confirmed); });
  connect(&view, &MacroPane::connectPressed, this, [this, pane] { connection_.connectButton(pane); });
  connect(&view, &MacroPane::connectAgainPressed, this, [this, pane] { connection_.connectAgain(pane); });
  view.heading().follow(*room(pane).state, browser, connection_, bridge_, context_.history);
}

void MainWindow::connectOperations(Pane pane) {
  MacroPane& view = *room(pane).view;
  MacroOperations* operations = operations_.get();
  OpenMacros* open = open_.get();
  connect(&view.macros(), &ListBox::chosen, open, [open, pane] { open->open(pane); });
  connect(&view, &MacroPane::createPressed, operations,
          [operations, pane] { operations->createMacro(pane); });
  connect(&view, &MacroPane::copyPressed, operations, [operations, pane] { operations->copyMacro(pane); });
  connect(&view, &MacroPane::renamePressed, operations,
          [operations, pane] { operations->renameMacro(pane); });
  connect(&view, &MacroPane::deletePressed, operations,
          [operations, pane] { operations->deleteMacro(pane); });
  connect(&view, &MacroPane::updatePressed, update_.get(), [this, pane] { update_->start(pane); });
  connect(&view, &MacroPane::newCorvanePressed, editing_.get(), [this, pane] { editing_->newCorvane(pane); });
  connect(&view, &MacroPane::newMultiplePressed, editing_.get(),
          [this, pane] { editing_->newMultiple(pane); });
  connect(&view, &MacroPane::newClassicPressed, editing_.get(), [this, pane] { editing_->newClassic(pane); });
  connect(&view, &MacroPane::modifyPressed, editing_.get(), [this, pane] { editing_->modify(pane); });
  connect(&view, &MacroPane::savePressed, open, [this, pane] { save(pane); });
  connect(&view, &MacroPane::discardPressed, open, [open, pane] { open->discard(pane); });
}

// A macro without a place is asked for one.
void MainWindow::save(Pane pane) {
  if (room(pane).state->copy.loose())
    loose_->saveAs(pane);
  else
    open_->save(pane);
}

// Whoever has something to say, and what the strip can be told to do.
void MainWindow::connectStrip() {
  connect(open_.get(), &OpenMacros::said, this, &MainWindow::say);
  connect(operations_.get(), &MacroOperations::said, this, &MainWindow::say);
  connect(macroUndo_.get(), &MacroUndo::said, this, &MainWindow::say);
  connect(editing_.get(), &CommandEditing::said, this, &MainWindow::say);
  connect(runs_.get(), &CommandRuns::said, this, &MainWindow::say);
  connect(loose_.get(), &LooseMacros::said, this, &MainWindow::say);
  connect(historyOperations_.get(), &HistoryOperations::said, this, &MainWindow::say);
  connect(desk_.get(), &ReviewDesk::said, this, &MainWindow::say);
  connect(recovery_.get(), &Recovery::said, this, &MainWindow::say);
  connect(steps_.get(), &StepOperations::said, this, &MainWindow::say);
  connect(update_.get(), &ValueUpdate::said, this, &MainWindow::say);
  connect(update_.get(), &ValueUpdate::waiting, ui_->strip, &StatusStrip::showWaiting);
  connect(ui_->strip, &StatusStrip::cancelPressed, update_.get(), &ValueUpdate::cancel);
  connect(open_.get(), &OpenMacros::saveFailed, ui_->strip, &StatusStrip::showOwed);
  connect(ui_->strip, &StatusStrip::saveAgainPressed, open_.get(), [this](Pane pane) { open_->save(pane); });
}

// A save that is owed holds those of its own panel; whoever turns to another place leaves it.
bool MainWindow::holdsLists(Pane pane) const {
  const WorkingCopy& copy = room(pane).state->copy;
  if (copy.edited()) return true;
  return copy.saveOwed() && connection_.source(pane) == PaneSource::kPanel &&
         copy.target()->source == PaneSource::kPanel && copy.target()->address == connection_.address(pane);
}

void MainWindow::connectPanel() {
  connect(&bridge_, &PanelBridge::connectionShown, this,
          [this](Pane pane, const PaneConnectionDisplay& display) {
            room(pane).view->showSource(connection_.source(pane));
            room(pane).view->showConnection(display);
            watchConnection();  // a loss is told again when a pane has connected anew in between
          });
  connect(&bridge_, &PanelBridge::listsWanted, this, [this](Pane pane) {
    // Whatever asks for it: the lists stay while unsaved work hangs on them.
    if (holdsLists(pane))
      room(pane).browser->refreshPanel();
    else
      room(pane).browser->fillApplications();
  });
  connect(&bridge_, &PanelBridge::demoWanted, this, &MainWindow::showDemo);
  connect(&bridge_, &PanelBridge::workplacesChanged, this, [this](Pane pane) {
    whenFree("workplaces", pane, [this, pane] { room(pane).browser->refreshWorkplaces(); });
  });
  connect(&bridge_, &PanelBridge::macroNamesChanged, this, [this](Pane pane) {
    whenFree("names", pane, [this, pane] { room(pane).browser->refreshMacroNames(); });
  });
  connect(&bridge_, &PanelBridge::timedOut, this,
          [this](Pane pane) { whenFree("time-out", pane, [this, pane] { connection_.timeOut(pane); }); });
}

void MainWindow::readSettingsFile() {
  const Outcome read = readSettings(context_.site.root, settings_);
  if (!read && !isNothing(read.failure())) settingsUnread_ = read.failure();
  connection_.setTexts(Pane::kA, windows1252ToUtf8(settings_.pathA), windows1252ToUtf8(settings_.addressA));
  connection_.setTexts(Pane::kB, windows1252ToUtf8(settings_.pathB), windows1252ToUtf8(settings_.addressB));
}

const Settings& MainWindow::settingsNow() {
  settings_.pathA = utf8ToWindows1252(room(Pane::kA).browser->pathWithoutSnapshot());
  settings_.pathB = utf8ToWindows1252(room(Pane::kB).browser->pathWithoutSnapshot());
  settings_.addressA = utf8ToWindows1252(connection_.address(Pane::kA).text());
  settings_.addressB = utf8ToWindows1252(connection_.address(Pane::kB).text());
  return settings_;
}

bool MainWindow::event(QEvent* event) {
  switch (static_cast<int>(event->type())) {
    case kDictionaryLoadedMessage:
      gate_.whenFree("dictionary", [this] { dictionaryLoaded(); });
      return true;
    case kConnectedMessageA:
    case kConnectedMessageB: {
      const Pane pane = static_cast<int>(event->type()) == kConnectedMessageA ? Pane::kA : Pane::kB;
      whenFree("connected", pane, [this, pane] { connection_.connectedMessage(pane); });
      return true;
    }
    default:
      return QMainWindow::event(event);
  }
}

void MainWindow::whenFree(const char* what, Pane pane, const std::function<void()>& action) {
  gate_.whenFree(std::string(what) + ' ' + kPaneDescriptors[index(pane)].letter, action);
}

void MainWindow::dictionaryLoaded() {
  inputSources_ = inputSources(context_.dictionary);
  loaded_ = true;
  loadingNotice_->hide();
  for (const Pane pane : kPanes) {
    room(pane).view->setEnabled(true);
    if (room(pane).state->copy.content() != WorkingCopy::Content::kNothing)
      room(pane).browser->showCommands();
  }
  room(Pane::kA).view->revealHarddiskButton();
  desk_->begin();
  updateControls();
  room(Pane::kA).view->applications().setFocus();
  if (settingsUnread_)
    say({Grade::kFailure,
         tr("the settings cannot be read (%1): they are left as they are").arg(failureText(*settingsUnread_)),
         {}});
  recovery_->offer();
  if (context_.preferences != nullptr && !recovery_->offering())
    for (const Pane pane : kPanes) restorePane(*context_.preferences, *room(pane).view);
  desk_->endUnfinished();
}

PaneSituation MainWindow::situation(Pane pane) const {
  const PaneState& here = *room(pane).state;
  const PaneState& there = *room(other(pane)).state;
  PaneSituation now;
  now.loaded = loaded_;
  now.source = connection_.source(pane);
  now.connected = connection_.connected(pane);
  now.olderFamily = here.olderFamily;
  now.snapshot = here.snapshot.has_value();
  now.edited = here.copy.edited();
  now.otherUnsaved = there.copy.unsaved();
  now.otherIsPanel = connection_.source(other(pane)) == PaneSource::kPanel;
  now.folderChosen = now.source == PaneSource::kPanel ? room(pane).browser->workplace() > 0
                                                      : !room(pane).browser->macroFolder().empty();
  now.macroSelected = here.hasMacro();
  now.otherMacroSelected = there.selectedMacro() != nullptr;
  now.keepable = here.copy.macro() && here.copy.macro()->kept().done();
  now.commandCount = here.copy.commandCount();
  if (now.commandCount > 0)
    now.commandsSelected = static_cast<int>(here.view.commands().selectedRows().size());
  return now;
}

void MainWindow::updateControls() {
  if (acts_ == nullptr) return;
  for (const Pane pane : kPanes) {
    room(pane).view->showControls(paneControls(situation(pane)));
    if (!room(pane).state->copy.saveOwed()) ui_->strip->showOwed(pane, {});
  }
  showActs();
  showFinding();
}

void MainWindow::showDemo() {
  panelNames_.showDemo();
  for (const Pane pane : kPanes)
    if (!room(pane).state->copy.unsaved()) room(pane).browser->showDemoListing();
}

// The panes keep "disconnect" until the user presses it.
void MainWindow::watchConnection() {
  const std::optional<unsigned> loss = connection_.loss();
  if (loss && loss != toldLoss_) {
    toldLoss_ = loss;
    const QString reason = shown(connection_.lossReason());
    say({Grade::kWarning,
         update_->lineLost()
             ? tr("the connection to the panel was lost, and the values of the update with it")
         : reason.isEmpty() ? tr("the connection to the panel was lost")
                            : tr("the connection to the panel was lost: %1").arg(reason),
         shown(connection_.lineAddress().text())});
  } else if (toldLoss_ && !loss && connection_.anyConnected()) {
    toldLoss_.reset();  // or else the strip goes on telling of it
    say({Grade::kDone, tr("connected to the panel again"), shown(connection_.lineAddress().text())});
  }
  desk_->look();
  for (const Pane pane : kPanes)
    room(pane).view->showLine(connection_.line(pane),
                              shown(connection_.otherAddress(pane).value_or("").text()));
  for (const MacroNames::Request& request : panelNames_.takeUnconfirmed(MacroNames::Clock::now())) {
    const QString number = shown(MacroNumber::textOf(request.number));
    say({Grade::kFailure,
         request.name.empty()
             ? tr("NOT confirmed: the panel has not said that macro %1 is deleted").arg(number)
             : tr("NOT confirmed: the panel has not said that macro %1 is renamed to %2")
                   .arg(number, nameInStrip(request.name)),
         shown(connection_.lineAddress().text())});
  }
}

void MainWindow::say(const Message& message) {
  Message whole = message;
  for (const PaneRoom& here : rooms_) {
    if (!here.state) continue;
    const auto steps = here.state->copy.takeStepsTrouble();
    const auto record = here.state->copy.takeRecordTrouble();
    if (steps) whole.text = withTrouble(whole.text, *steps);
    if (record)
      whole.text = tr("%1; what is unsaved would be lost if the program died now (%2)")
                       .arg(whole.text, failureText(*record));
    if (steps || record) whole.grade = std::max(whole.grade, Grade::kWarning);
  }
  ui_->strip->say(whole);
}

void MainWindow::resizeEvent(QResizeEvent* event) {
  QMainWindow::resizeEvent(event);
  loadingNotice_->setGeometry(rect());
}

void MainWindow::keyPressEvent(QKeyEvent* event) {
  // Escape never closes the window: unsaved work is behind it.
  if (event->key() == Qt::Key_Escape)
    event->accept();
  else
    QMainWindow::keyPressEvent(event);
}

}  // namespace tessaly
