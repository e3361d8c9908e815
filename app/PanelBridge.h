#pragma once

#include <array>
#include <atomic>
#include <functional>

#include <QObject>
#include <QTimer>

#include "link/MacroNames.h"
#include "link/PanelConnection.h"
#include "widgets/PostTo.h"

namespace tessaly {

// Between the connection rules, which also run on the library's thread, and the window: turns what they ask
// for into signals on the GUI thread. What comes in a burst is said once a turn of the event loop. Nothing
// here waits for the GUI thread, and nothing is said any more once this object is gone.
class PanelBridge : public QObject, public PanelConnectionView, public MacroNamesView {
  Q_OBJECT

 public:
  explicit PanelBridge(QObject* parent = nullptr);
  // Before anything is subscribed: `isPanel` may be asked on any thread.
  void setSource(std::function<bool(Pane)> isPanel) { isPanel_ = std::move(isPanel); }

  void startTimer(Pane pane, std::chrono::milliseconds period) override;
  void killTimer(Pane pane) override;
  void showConnection(Pane pane, const PaneConnectionDisplay& display) override;
  void rebuildLists(Pane pane) override;
  void showDemoListing() override;
  void rebuildWorkplaces(Pane pane) override;
  void postConnected(Pane pane) override;

  [[nodiscard]] bool showsPanel(Pane pane) const override { return isPanel_ && isPanel_(pane); }
  void rebuildMacros(Pane pane) override;

 signals:
  void connectionShown(Pane pane, const tessaly::PaneConnectionDisplay& display);
  void listsWanted(Pane pane);
  void demoWanted();
  void workplacesChanged(Pane pane);
  void macroNamesChanged(Pane pane);
  void timedOut(Pane pane);

 private:
  // One queued step takes all that is marked by then.
  struct Marks {
    std::atomic<bool> workplaces{false};
    std::atomic<bool> macros{false};
  };
  void mark(std::atomic<bool>& flag);
  void deliver();

  const Post post_ = postTo(this);
  std::function<bool(Pane)> isPanel_;
  std::array<QTimer, kPanes.size()> timers_;
  std::array<Marks, kPanes.size()> marks_;
  std::atomic<bool> queued_{false};
};

}  // namespace tessaly
