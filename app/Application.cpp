#include "app/Application.h"

#include <mutex>
#include <thread>

#include <QApplication>
#include <QDir>
#include <QFile>

#include "app/Appearance.h"
#include "app/PaneDescriptor.h"
#include "dictionary/InterfaceFile.h"
#include "platform/Files.h"
#include "platform/Memory.h"

namespace tessaly {

namespace {

constexpr std::string_view kDataFolder = "c:\\Programme\\RV48\\bin\\MacroFid\\";
constexpr const char* kLockName = ".tessaly.lock";
constexpr const char* kRaiseName = ".tessaly.raise";  // written by a second start

QString rootFile(const SiteRoot& root, const char* name) {
  return QString::fromStdString((root.path() / name).string());
}

}  // namespace

// What the loader thread may reach of the program; emptied when the program ends before it.
struct Application::LoaderLink {
  std::mutex mutex;
  MainWindow* window = nullptr;
  MessageBoxes* messages = nullptr;
};

Application::Application(const StartOptions& options, Preferences* preferences)
    : options_(options),
      preferences_(preferences),
      root_(SiteRoot::fromEnvironment(options.root)),
      dictionary_(*new FunctionDictionary),
      decodingLists_(root_),
      history_(root_),
      loader_(std::make_shared<LoaderLink>()) {
  dressToolkit();
  for (const int message : {kDictionaryLoadedMessage, kConnectedMessageA, kConnectedMessageB})
    QEvent::registerEventType(message);
}

Application::~Application() {
  {
    const std::lock_guard guard(loader_->mutex);
    loader_->window = nullptr;
    loader_->messages = nullptr;
  }
  window_.reset();
}

bool Application::claimRoot() {
  QDir().mkpath(QString::fromStdString(root_.path().string()));
  lock_ = std::make_unique<QLockFile>(rootFile(root_, kLockName));
  lock_->setStaleLockTime(0);
  const bool held = lock_->tryLock() || lock_->error() != QLockFile::LockFailedError;
  QFile request(rootFile(root_, kRaiseName));
  if (!held) {
    if (request.open(QIODevice::WriteOnly))
      request.write(QByteArray::number(QCoreApplication::applicationPid()));
    return false;
  }
  if (request.open(QIODevice::WriteOnly)) {
    raiseRequests_.addPath(request.fileName());
    connect(&raiseRequests_, &QFileSystemWatcher::fileChanged, this, &Application::raiseWindow);
  }
  return true;
}

void Application::raiseWindow() {
  if (!window_) return;
  window_->setWindowState(window_->windowState() & ~Qt::WindowMinimized);
  window_->raise();
  window_->activateWindow();
}

void Application::prepareRoot() {
  if (!makeFolder(root_, kDataFolder) || isRegularFile(root_, kEmptyMacro)) return;
  QFile shipped(QStringLiteral(":/emptyMacro.mac"));
  if (shipped.open(QIODevice::ReadOnly) && !writeFile(root_, kEmptyMacro, shipped.readAll().toStdString()))
    messages_.show("Cannot create Macro: emptyMacro.mac", MessageIcon::kExclamation);
}

void Application::start() {
  prepareRoot();
  initPanelClient();
  PanelClient& client = *panelClient();
  client.setVerbose(options_.verbose);
  panelMacros_ = std::make_unique<PanelMacros>(client, root_, ftpTransfers(options_.ftpPort), options_.demo);
  panelMacros_->keepIn(history_);
  window_ = std::make_unique<MainWindow>(WindowContext{{root_, messages_},
                                                       dictionary_,
                                                       decodingLists_,
                                                       client,
                                                       *panelMacros_,
                                                       history_,
                                                       options_.demo,
                                                       preferences_});
  messages_.setWindow(window_.get());
  messages_.setGate(&window_->gate());
  loader_->window = window_.get();
  loader_->messages = &messages_;
  startLoader();
  window_->show();
}

void Application::startLoader() {
  std::thread([link = loader_, root = root_, &dictionary = dictionary_] {
    loadFunctionDictionary(root, dictionary, [&link](const std::string& text) {
      const std::lock_guard guard(link->mutex);
      if (link->messages != nullptr) link->messages->show(text, MessageIcon::kExclamation);
    });
    {
      const std::lock_guard guard(link->mutex);
      if (link->window != nullptr)
        QCoreApplication::postEvent(link->window,
                                    new QEvent(static_cast<QEvent::Type>(kDictionaryLoadedMessage)));
    }
    releaseFreedMemory();  // both parsed files
  }).detach();
}

}  // namespace tessaly
