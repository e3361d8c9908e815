#pragma once

#include <functional>
#include <memory>
#include <string>

#include <QAbstractItemView>
#include <QApplication>

#include "app/MainWindow.h"
#include "app/PaneDescriptor.h"
#include "bench/window/StallWatch.h"
#include "tests/support/WindowDriver.h"

namespace tessaly::bench {

// The toolkit, started at the first call; windows are drawn into memory.
QApplication& toolkit();

// Answers every box with yes.
class Agreeing : public Messages {
 public:
  void show(const std::string&, MessageIcon) override {}
  bool ask(const std::string&, MessageIcon) override { return true; }
};

// The main window on a site of its own, worked by posted clicks, so that the GUI thread does only what it
// does for a person. Lives as long as the program: rows share it.
class Desk {
 public:
  explicit Desk(SiteRoot root, std::uint16_t ftpPort = kFtpPort);
  ~Desk();

  // Posts the action and runs the event loop until `done` holds and the list has been painted after that.
  void act(const std::function<void()>& action, int paintedList, const std::function<bool()>& done);
  // The same of a list that the action may make; null until then.
  void act(const std::function<void()>& action, const std::function<QAbstractItemView*()>& painted,
           const std::function<bool()>& done);
  // The longest stretch of the GUI thread in all actions since the last call; seconds.
  double takeLongestStretch();

  [[nodiscard]] const SiteRoot& root() const { return root_; }
  [[nodiscard]] const FunctionDictionary& dictionary() const { return *dictionary_; }
  [[nodiscard]] SiteAccess access() { return {root_, messages_}; }
  [[nodiscard]] DecodingLists& lists() { return lists_; }
  [[nodiscard]] PanelClient& client() { return client_; }
  [[nodiscard]] MainWindow& window() { return *window_; }
  [[nodiscard]] const WindowDriver& user() const { return *user_; }
  [[nodiscard]] static const PaneDescriptor::ControlIds& ids(Pane pane) {
    return kPaneDescriptors[index(pane)].ids;
  }

 private:
  SiteRoot root_;
  Agreeing messages_;
  std::unique_ptr<FunctionDictionary> dictionary_;
  DecodingLists lists_;
  MacroHistory history_;
  PanelClient client_;
  PanelMacros macros_;
  std::unique_ptr<MainWindow> window_;
  std::unique_ptr<WindowDriver> user_;
  std::unique_ptr<StallWatch> stalls_;
};

}  // namespace tessaly::bench
