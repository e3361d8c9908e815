#pragma once

#include <array>
#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>

#include "link/Pane.h"
#include "link/PaneStates.h"
#include "link/PanelAddress.h"
#include "link/PanelClient.h"
#include "link/PanelSubscriptions.h"
#include "platform/Messages.h"

namespace tessaly {

inline constexpr std::chrono::milliseconds kConnectTimeOut{2000};
inline constexpr const char* kConnectionFailed = "Connection failed.....";

// What a pane's connection controls show.
struct PaneConnectionDisplay {
  std::string sourceLabel;
  std::string editLabel;
  std::string editText;  // the address or the path
  bool editEnabled = true;
  std::string buttonText;
  bool buttonVisible = true;
  bool buttonEnabled = true;
};

// What is behind a pane that shows the panel.
enum class PaneLine {
  kNone,    // it is not connected
  kStands,  // the line that it is connected to, or has joined, stands
  kLost     // it takes itself for connected ("disconnect"), but the panel is gone
};

// What the connection rules ask of the window.
class PanelConnectionView {
 public:
  virtual ~PanelConnectionView() = default;

  // On the GUI thread. A started timer calls PanelConnection::timeOut, once or until it is killed.
  virtual void startTimer(Pane pane, std::chrono::milliseconds period) = 0;
  virtual void killTimer(Pane pane) = 0;
  virtual void showConnection(Pane pane, const PaneConnectionDisplay& display) = 0;
  // All lists of the pane from the start: the applications, and the workplaces by their flags when the pane
  // shows a connected panel.
  virtual void rebuildLists(Pane pane) = 0;
  // Both panes' workplaces from their flags, and macros from the demonstration.
  virtual void showDemoListing() = 0;

  // On any thread; must neither block nor call PanelConnection or the panel client.
  // Only the rows of the workplace list: this is no selection by the user.
  virtual void rebuildWorkplaces(Pane pane) = 0;
  // Queues a call of PanelConnection::connectedMessage on the GUI thread.
  virtual void postConnected(Pane pane) = 0;
};

// How the two panes take up, share and leave the one connection. A pane is not connected, connecting (a
// worker thread, a timer) or connected, with an attempt of its own or by joining the other pane's connection.
// A connection that was lost is not joined: the pane connects anew, and the other one is on the new line,
// too.
//
// Operations are for the GUI thread, except those that say "any thread". Observes client, subscriptions,
// messages and view; the client must live until the process ends, because an attempt that was given up ends
// by itself later. Its worker touches nothing else of this object, so destruction never waits.
class PanelConnection {
 public:
  PanelConnection(PanelClient& client, PanelSubscriptions& subscriptions, Messages& messages,
                  PanelConnectionView& view);
  ~PanelConnection();
  PanelConnection(const PanelConnection&) = delete;
  PanelConnection& operator=(const PanelConnection&) = delete;

  // In place of connecting, the demonstration is shown.
  void setDemo(bool on) { demo_ = on; }
  // How long an attempt may take; kConnectTimeOut at first.
  void setConnectTimeOut(std::chrono::milliseconds time) { connectTimeOut_ = time; }

  // Both as in the settings. Shown by the next refresh.
  void setTexts(Pane pane, const std::string& storedPath, const HostAddress& address);
  [[nodiscard]] const HostAddress& address(Pane pane) const { return texts_[index(pane)].address; }
  [[nodiscard]] const std::string& storedPath(Pane pane) const { return texts_[index(pane)].storedPath; }
  // The stored path with a "\" at its end, unless it is empty.
  [[nodiscard]] std::string path(Pane pane) const;

  void refresh(Pane pane);
  [[nodiscard]] const PaneConnectionDisplay& display(Pane pane) const { return displays_[index(pane)]; }

  // What the user does.
  void connectButton(Pane pane);
  // The button twice, when the line was lost: to leave it, and to connect anew.
  void connectAgain(Pane pane);
  void chooseHarddisk(Pane pane);
  void choosePanel(Pane pane);
  void editText(Pane pane, const std::string& text);  // at every change by the user
  // Enter confirms. Going elsewhere with the path as it was leaves the lists and what is chosen in them.
  void editFinished(Pane pane, bool confirmed);

  // What the window hands on.
  void connectedMessage(Pane pane);
  void timeOut(Pane pane);

  // The connected panes are on the line that renewLine has made, if it has: all of them list anew.
  void lineRenewed();

  // When the window closes: drops the subscriptions and the connection if a pane is connected, and gives up
  // attempts.
  void close();

  // Any thread.
  // The value of a "PANEL.WP1.MFDCOUNT" and its like: sets the workplace's flag in every connected pane.
  void workplaceCountReceived(const std::string& name, const ParameterValue& value);
  [[nodiscard]] PaneSource source(Pane pane) const { return states_->source(pane); }
  [[nodiscard]] bool connected(Pane pane) const { return states_->connected(pane); }
  [[nodiscard]] bool anyConnected() const { return states_->anyConnected(); }
  [[nodiscard]] WorkplaceFlags workplaces(Pane pane) const { return states_->workplaces(pane); }
  [[nodiscard]] PaneLine line(Pane pane) const;
  [[nodiscard]] bool lost() const { return loss().has_value(); }
  // Work that goes on when the line is lost in its middle makes it anew, to the panel that it was to; true at
  // once while it stands. Blocks until connected, failed, or no longer `wanted` (endUnwantedAttempt). The GUI
  // thread calls `lineRenewed` after such work.
  [[nodiscard]] bool renewLine(const std::function<bool()>& wanted);
  // While a pane takes itself for connected but the panel has gone: which loss that is, another number for
  // each.
  [[nodiscard]] std::optional<unsigned> loss() const;
  // Of the line that stands, or stood last.
  [[nodiscard]] HostAddress lineAddress() const { return states_->lineAddress(); }
  // Why, as the end of a sentence ("the panel is gone"); empty when that is not known.
  [[nodiscard]] std::string lossReason() const { return client_.lossReason(); }
  // The address of the line, when the pane has joined one that was made to another address than its own. What
  // it asks the panel to do goes over that line, its files go to its own address. GUI thread.
  [[nodiscard]] std::optional<HostAddress> otherAddress(Pane pane) const;
  // Where what the pane asks for goes, as far as it goes anywhere.
  [[nodiscard]] HostAddress askedAddress(Pane pane) const {
    return otherAddress(pane).value_or(address(pane));
  }
  // The panels that the line and the files of a pane lead to alike, while the line stands: only there can
  // macros be listed, deleted or put back as those of one panel.
  [[nodiscard]] std::set<HostAddress> wholePanels() const;

 private:
  struct Texts {
    std::string storedPath;
    HostAddress address;
    std::string listedPath;  // what the applications list was last built from
  };

  // The library has told that there is no line.
  [[nodiscard]] bool gone() const { return client_.state() == kPanelNotConnected; }
  void join(Pane pane);
  void start(Pane pane);
  [[nodiscard]] bool giveUp(Pane pane);
  void startDemo();

  PanelClient& client_;
  PanelSubscriptions& subscriptions_;
  Messages& messages_;
  PanelConnectionView& view_;
  bool demo_ = false;
  std::atomic<bool> renewed_{false};
  std::chrono::milliseconds connectTimeOut_ = kConnectTimeOut;
  std::array<Texts, kPanes.size()> texts_;
  std::array<PaneConnectionDisplay, kPanes.size()> displays_;
  std::shared_ptr<PaneStates> states_;
};

}  // namespace tessaly
