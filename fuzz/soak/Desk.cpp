#include "fuzz/soak/Desk.h"

#include <filesystem>
#include <fstream>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>

#include "app/PaneDescriptor.h"
#include "dictionary/InterfaceFile.h"
#include "model/MacroFile.h"
#include "platform/Text.h"
#include "tests/support/BuildPaths.h"
#include "tests/support/SampleSite.h"

namespace tessaly {
namespace {

const std::string kSampleSite = sourcePath("site");

PanelOptions panelOptions(const std::string& address, std::uint16_t controlPort, std::uint16_t ftpPort,
                          const std::string& root) {
  PanelOptions options;
  options.address = address;
  options.controlPort = controlPort;
  options.ftpPort = ftpPort;
  options.root = root;
  options.site = kSampleSite;
  return options;
}

}  // namespace

const FunctionDictionary& deskDictionary() {
  static const FunctionDictionary& dictionary = []() -> const FunctionDictionary& {
    auto* read = new FunctionDictionary;
    loadFunctionDictionary(SiteRoot(kSampleSite), *read, [](const std::string&) {});
    return *read;
  }();
  return dictionary;
}

DeskPanel::DeskPanel(const std::string& address, std::uint16_t controlPort, std::uint16_t ftpPort)
    : simulator(panelOptions(address, controlPort, ftpPort, tree.root.path().string()),
                [](const std::string&) {}) {
  begin();
}

std::string DeskPanel::file(int workplace, int number) {
  return format("flash/data/PANEL/macro/workplace%d/macro%03d.mac", workplace, number);
}

std::string DeskPanel::addressText() const {
  return simulator.address() + ":" + std::to_string(simulator.controlPort());
}

void DeskPanel::setFaults(const PanelFaults& faults) {
  if (!simulator.setFaults(faults)) throw std::runtime_error("the simulated panel takes no faults");
}

void DeskPanel::begin() {
  constexpr int kAttempts = 3;  // its FTP server is a process of its own, which a busy machine may starve
  std::string reason;
  for (int i = 0; i < kAttempts; ++i)
    if (simulator.start(reason)) return;
  throw std::runtime_error("no simulated panel: " + reason);
}

Desk::Desk(std::chrono::milliseconds connectTimeOut)
    : first("127.0.0.1", 0, 0),
      second("127.0.0.2", first.simulator.controlPort(), first.simulator.ftpPort()),
      history_(site.root),
      lists_(site.root),
      macros_(client(), site.root, ftpTransfers(first.simulator.ftpPort()), &readsAsMacro),
      context_{{site.root, messages_}, deskDictionary(), lists_, client(), macros_, history_} {
  macros_.keepIn(history_);
  macros_.waitFor({std::chrono::seconds(2), std::chrono::seconds(1), std::chrono::milliseconds(100)});
  context_.connectTimeOut = connectTimeOut;
  copySampleSite(site.root);
  openWindow();
}

Desk::~Desk() {
  window.reset();  // without a question about unsaved work
  client().unsubscribeOwner(this);
  client().disconnect();
}

void Desk::openWindow() {
  window.reset();
  window = std::make_unique<MainWindow>(context_);
  messages_.setWindow(window.get());
  window->show();
  QCoreApplication::postEvent(window.get(), new QEvent(static_cast<QEvent::Type>(kDictionaryLoadedMessage)));
  driver = std::make_unique<WindowDriver>(*window);
  driver->waitUntilLoaded();
}

std::string Desk::strip() const {
  return window->findChild<QLabel*>(QStringLiteral("statusStrip"))->text().toStdString();
}

std::string Desk::caption(int button) const {
  return driver->control<QAbstractButton>(button).text().toStdString();
}

bool Desk::hasRow(int list, const std::string& text) const {
  const auto rows = driver->texts(list);
  return std::find(rows.begin(), rows.end(), text) != rows.end();
}

void Desk::activate() const {
  if (window->isActiveWindow()) return;
  window->activateWindow();
  WindowDriver::waitFor([this] { return window->isActiveWindow(); }, "the window in front");
}

void Desk::press(int button, const DialogAnswers::Answer& answer) {
  dialogs.answer = answer;
  driver->press(button);
  dialogs.answer = {};
  if (const std::string problem = dialogs.takeProblem(); !problem.empty())
    throw std::runtime_error("in a dialog: " + problem);
}

void Desk::choose(Pane pane, const char* entry, const DialogAnswers::Answer& answer) {
  activate();
  driver->list(ids(pane).macros).setFocus();
  QAction* chosen = nullptr;
  for (const QAction* menu : window->menuBar()->actions())
    for (QAction* action : menu->menu()->actions())
      if (action->text() == QLatin1String(entry) && action->isEnabled()) chosen = action;
  if (chosen == nullptr) throw std::runtime_error(std::string("no entry ") + entry);
  dialogs.answer = answer;
  chosen->trigger();
  dialogs.answer = {};
  if (const std::string problem = dialogs.takeProblem(); !problem.empty())
    throw std::runtime_error("in a dialog: " + problem);
}

void Desk::typeAddress(Pane pane, const std::string& text) {
  auto& edit = driver->control<QLineEdit>(ids(pane).address);
  if (!edit.isEnabled() || edit.text().toStdString() == text) return;
  edit.setFocus();
  edit.selectAll();
  QTest::keyClicks(&edit, QString::fromStdString(text));
}

void Desk::settle(std::chrono::milliseconds time) const {
  QElapsedTimer timer;
  timer.start();
  do {
    QApplication::sendPostedEvents();
    QApplication::processEvents(QEventLoop::AllEvents, 5);
  } while (timer.elapsed() < time.count());
}

// Never freed: attempts to connect that were given up may end after everything else.
PanelClient& Desk::client() {
  static auto* lasting = new PanelClient;
  return *lasting;
}

void Desk::passed(const std::string& name, const ParameterValue&) {
  passed_ = parseInt(name.substr(name.find('.') + 1));
}

bool Desk::passValues(DeskPanel& panel) {
  // A name that was never asked is answered behind everything that is under way.
  const std::string name = "PASSED." + std::to_string(++passes_);
  panel.simulator.set(name, "1");
  client().subscribe(name, this, &Desk::passed);
  QElapsedTimer timer;
  timer.start();
  constexpr int kLongest = 5000;  // milliseconds
  while (passed_ != passes_ && timer.elapsed() < kLongest) settle(std::chrono::milliseconds(1));
  return passed_ == passes_;
}

std::size_t Desk::threads() {
  return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator("/proc/self/task"), {}));
}

std::size_t Desk::memory() {
  std::ifstream file("/proc/self/statm");
  std::size_t total = 0, resident = 0;
  file >> total >> resident;
  constexpr std::size_t kPage = 4096;
  return resident * kPage;
}

}  // namespace tessaly
