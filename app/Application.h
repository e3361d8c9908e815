#pragma once

#include <memory>
#include <optional>

#include <QObject>
#include <QSocketNotifier>

#include "app/MessageBoxes.h"
#include "app/OrderlyEnd.h"
#include "app/RootClaim.h"
#include "app/StartOptions.h"
#include "classic/DecodingList.h"
#include "dictionary/InterfaceFile.h"
#include "model/MacroHistory.h"
#include "platform/RaiseSocket.h"

namespace tessaly {

class MainWindow;
enum class SiteWish;
class PanelMacros;
class Preferences;

// Owns everything that lives as long as the program, and starts it: one program a root, the loader thread,
// the main window.
class Application : public QObject {
  Q_OBJECT

 public:
  // The preferences outlive the program; without them nothing of the window is kept.
  explicit Application(const StartOptions& options, Preferences* preferences = nullptr);
  ~Application() override;

  // Makes the root's folder and sees that this is the one program on it.
  [[nodiscard]] RootClaim claimRoot();
  // Creates and shows the window and starts the loader thread.
  void start();
  // The host path of the site that the user chose in the window, which has then closed: the program is to
  // start anew there, once this object is gone. Empty for the usual end.
  [[nodiscard]] const std::string& nextRoot() const { return nextRoot_; }

  [[nodiscard]] MainWindow* window() { return window_.get(); }
  [[nodiscard]] const SiteRoot& root() const { return root_; }

 private:
  struct LoaderLink;

  void prepareRoot();
  void startLoader(bool reports);
  void raiseWindow();
  void leaveForSite(SiteWish wish);
  // Where the wish leads; nothing when the user stays.
  [[nodiscard]] std::optional<SiteRoot> siteFor(SiteWish wish);

  StartOptions options_;
  Preferences* preferences_;
  SiteRoot root_;
  MessageBoxes messages_;
  FunctionDictionary& dictionary_;  // never freed: the loader thread may outlive the window
  DecodingLists decodingLists_;
  MacroHistory history_;
  std::unique_ptr<PanelMacros> panelMacros_;
  SiteLock lock_;
  std::unique_ptr<RaiseSocket> raiseSocket_;
  std::unique_ptr<QSocketNotifier> raiseRequests_;
  std::string nextRoot_;
  std::shared_ptr<LoaderLink> loader_;
  std::unique_ptr<MainWindow> window_;
  std::unique_ptr<OrderlyEnd> orderlyEnd_;
};

}  // namespace tessaly
