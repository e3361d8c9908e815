#pragma once

#include <functional>
#include <memory>
#include <string>

#include <QWidget>

#include "app/MainWindow.h"
#include "model/MacroHistory.h"
#include "panelsim/PanelSimulator.h"
#include "tests/support/TestSite.h"
#include "tests/support/WindowDriver.h"

namespace tessaly {

// Takes the main window beside a simulated panel: key files, a connected pane, values from the panel, the
// history, and the offer of a start after a crash. Works on a copy of the site.
class WindowPictures {
 public:
  using Save = std::function<void(QWidget&, const char*)>;

  WindowPictures(const SiteRoot& root, const FunctionDictionary& dictionary, DecodingLists& lists, QSize size,
                 Save save);

  enum class Take { kForDocuments, kAll };
  void take(Take what);

 private:
  static PanelOptions panelOptions(const SiteRoot& root);
  void open();
  void awaitRow(int listId, const std::string& beginning) const;
  void chooseOnDisk(Pane pane, const std::string& panel, const std::string& macro) const;
  void chooseOnPanel(Pane pane, const std::string& macro) const;
  void takeKeyFiles() const;
  void takeConnected() const;
  void takeUpdated() const;
  void takeReviews() const;
  void takeHistory() const;
  void takeUnsavedChanges();

  TestSite site_;
  QSize size_;  // of the window
  Save save_;
  PanelSimulator panel_;
  PanelClient client_;
  MacroHistory history_;
  std::unique_ptr<PanelMacros> macros_;
  std::unique_ptr<WindowContext> context_;
  std::unique_ptr<MainWindow> window_;
  std::unique_ptr<WindowDriver> user_;
};

}  // namespace tessaly
