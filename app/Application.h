#pragma once

#include <memory>

#include <QFileSystemWatcher>
#include <QLockFile>
#include <QObject>

#include "app/MainWindow.h"
#include "app/MessageBoxes.h"
#include "app/StartOptions.h"

namespace tessaly {

// Owns everything that lives as long as the program, and starts it: one program a root, the loader thread,
// the main window.
class Application : public QObject {
  Q_OBJECT

 public:
  // The preferences outlive the program; without them nothing of the window is kept.
  explicit Application(const StartOptions& options, Preferences* preferences = nullptr);
  ~Application() override;

  // False when another program runs on this root; it has been asked to come to the front.
  [[nodiscard]] bool claimRoot();
  // Creates and shows the window and starts the loader thread.
  void start();

  [[nodiscard]] MainWindow* window() { return window_.get(); }
  [[nodiscard]] const SiteRoot& root() const { return root_; }

 private:
  struct LoaderLink;

  void prepareRoot();
  void startLoader();
  void raiseWindow();

  StartOptions options_;
  Preferences* preferences_;
  SiteRoot root_;
  MessageBoxes messages_;
  FunctionDictionary& dictionary_;  // never freed: the loader thread may outlive the window
  DecodingLists decodingLists_;
  MacroHistory history_;
  std::unique_ptr<PanelMacros> panelMacros_;
  std::unique_ptr<QLockFile> lock_;
  QFileSystemWatcher raiseRequests_;
  std::shared_ptr<LoaderLink> loader_;
  std::unique_ptr<MainWindow> window_;
};

}  // namespace tessaly
