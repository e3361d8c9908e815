#include "app/Application.h"

#include <functional>
#include <mutex>
#include <thread>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include "app/Appearance.h"
#include "app/FirstStart.h"
#include "app/MainWindow.h"
#include "app/PaneDescriptor.h"
#include "dictionary/InterfaceFile.h"
#include "model/MacroFile.h"
#include "platform/Files.h"
#include "platform/Installation.h"
#include "platform/Memory.h"
#include "platform/Processors.h"
#include "platform/SitePlace.h"
#include "widgets/FontsAhead.h"
#include "widgets/PostTo.h"

namespace tessaly {

namespace {

constexpr std::uint64_t kManyBytes = 2'000'000;
constexpr std::string_view kDataFolder = "c:\\Programme\\RV48\\bin\\MacroFid\\";

// The loader thread may outlive the window, so the dictionary is never freed. It stays within reach, as
// whoever looks for lost memory expects of what lives until the end.
FunctionDictionary& lastingDictionary() {
  static auto* const dictionary = new FunctionDictionary;
  return *dictionary;
}

// A window on this computer's own site, or on the one in the user's folder, has the plain title; any other
// root stands behind it.
QString titleOn(const SiteRoot& root, const QString& title) {
  if (root.option().empty()) return title;
  const QString folder = QDir::cleanPath(QString::fromStdString(root.path().string()));
  const QString own = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
  if (folder == own + QStringLiteral("/tessaly")) return title;
  return QStringLiteral("%1 - %2").arg(title, QDir::toNativeSeparators(folder));
}

}  // namespace

// What the loader thread may reach of the program; emptied when the program ends before it.
struct Application::LoaderLink {
  std::mutex mutex;
  std::function<void()> tellLoaded;  // none without a window
  MessageBoxes* messages = nullptr;
};

Application::Application(const StartOptions& options, Preferences* preferences)
    : options_(options),
      preferences_(preferences),
      root_(SiteRoot::fromEnvironment(options.root)),
      dictionary_(lastingDictionary()),
      decodingLists_(root_),
      history_(root_),
      lock_(root_),
      loader_(std::make_shared<LoaderLink>()) {
  dressToolkit();
  for (const int message : {kDictionaryLoadedMessage, kConnectedMessageA, kConnectedMessageB})
    QEvent::registerEventType(message);
}

Application::~Application() {
  {
    const std::lock_guard guard(loader_->mutex);
    loader_->tellLoaded = nullptr;
    loader_->messages = nullptr;
  }
  window_.reset();
}

RootClaim Application::claimRoot() {
  QDir().mkpath(QString::fromStdString(root_.path().string()));
  const RootClaim claim = claimSite(lock_, root_);
  if (claim != RootClaim::kOurs) return claim;
  raiseSocket_ = std::make_unique<RaiseSocket>(root_);
  if (raiseSocket_->descriptor() >= 0) {
    raiseRequests_ = std::make_unique<QSocketNotifier>(raiseSocket_->descriptor(), QSocketNotifier::Read);
    connect(raiseRequests_.get(), &QSocketNotifier::activated, this, [this] {
      if (raiseSocket_->answer()) raiseWindow();
    });
  }
  return claim;
}

void Application::raiseWindow() {
  if (!window_) return;
  window_->setWindowState(window_->windowState() & ~Qt::WindowMinimized);
  window_->raise();
  window_->activateWindow();
}

void Application::leaveForSite(SiteWish wish) {
  const auto chosen = siteFor(wish);
  // Unsaved changes may keep the window, and the site with it.
  if (chosen && window_->close()) nextRoot_ = chosen->path().string();
}

std::optional<SiteRoot> Application::siteFor(SiteWish wish) {
  if (preferences_ == nullptr) return std::nullopt;
  switch (wish) {
    case SiteWish::kOpen:
      return openSite(*preferences_, *window_);
    case SiteWish::kSample: {
      auto sample = sampleToWorkOn(installedSiteFolder());
      if (!sample)
        window_->say(
            {Grade::kFailure, tr("NOT opened: the sample site (there is none, or no room for a copy)")});
      return sample;
    }
    case SiteWish::kChoose:
      break;
  }
  return chooseOtherRoot(root_, installedSiteFolder(), *preferences_, *window_);
}

void Application::prepareRoot() {
  const auto present = readFile(root_, kEmptyMacro);
  if (!makeFolder(root_, kDataFolder) || present || !isNothing(present.failure())) return;
  QFile shipped(QStringLiteral(":/emptyMacro.mac"));
  if (shipped.open(QIODevice::ReadOnly) && !writeFile(root_, kEmptyMacro, shipped.readAll().toStdString()))
    messages_.show("Cannot create Macro: emptyMacro.mac", MessageIcon::kExclamation);
}

void Application::start() {
  prepareRoot();
  // The functions are read while the window is made, which is then there for what is said of them.
  std::unique_lock untilHeard(loader_->mutex);
  const bool described = describesFunctions(root_);
  startLoader(described);
  initPanelClient();
  PanelClient& client = *panelClient();
  client.setVerbose(options_.verbose);
  panelMacros_ = std::make_unique<PanelMacros>(client, root_, ftpTransfers(options_.ftpPort), &readsAsMacro,
                                               options_.demo);
  panelMacros_->keepIn(history_);
  panelMacros_->takeForMany(ftpTransfers(options_.ftpPort, FtpClient::Connections::kKept));
  awaitFonts();
  window_ = std::make_unique<MainWindow>(WindowContext{{root_, messages_},
                                                       dictionary_,
                                                       decodingLists_,
                                                       client,
                                                       *panelMacros_,
                                                       history_,
                                                       options_.demo,
                                                       preferences_});
  window_->setWindowTitle(titleOn(root_, window_->windowTitle()));
  connect(window_.get(), &MainWindow::siteWanted, this, &Application::leaveForSite);
  orderlyEnd_ = std::make_unique<OrderlyEnd>(OrderlyEnd::Steps{
      [this] { window_->keepState(); }, [this] { return !window_->isVisible() || window_->end(); }});
  messages_.setWindow(window_.get());
  messages_.setGate(&window_->gate());
  loader_->tellLoaded = [post = postTo(window_.get()), window = window_.get()] {
    post([window] {
      QEvent loaded(static_cast<QEvent::Type>(kDictionaryLoadedMessage));
      QCoreApplication::sendEvent(window, &loaded);
    });
  };
  loader_->messages = &messages_;
  untilHeard.unlock();  // before it is painted, or it would be twice where the loader has been done for long
  if (!described)
    window_->say(
        {Grade::kWarning,
         tr("this site describes no functions of a panel: \"Choose...\" in the menu \"Site\" sets one up")});
  window_->show();
}

// Whoever began with a site that describes no functions knows it, and is not to be stopped by a box for each
// file at every start.
void Application::startLoader(bool reports) {
  const bool large = interfaceBytes(root_) >= kManyBytes;
  std::thread([link = loader_, root = root_, &dictionary = dictionary_, reports, large,
               windows = processorNow()] {
    leaveProcessor(windows);
    awaitFonts();  // which have the processor that is left
    if (large) takeMemoryInLargeSteps();
    loadFunctionDictionary(root, dictionary, [&link, reports](const std::string& text) {
      const std::lock_guard guard(link->mutex);
      if (reports && link->messages != nullptr) link->messages->show(text, MessageIcon::kExclamation);
    });
    {
      const std::lock_guard guard(link->mutex);
      if (link->tellLoaded) link->tellLoaded();
    }
    dictionary.prepareFind();
    // Both parsed files, once the window has been painted, which takes memory that has been freed until then.
    std::this_thread::sleep_for(kUntilPainted);
    releaseFreedMemory();
  }).detach();
}

}  // namespace tessaly
