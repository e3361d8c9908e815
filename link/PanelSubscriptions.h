#pragma once

#include <functional>
#include <string>
#include <utility>

#include "link/PanelClient.h"

namespace tessaly {

// All that the main window has registered with the panel client, under one owner, so that one call drops it
// all.
//
// The handlers are set before the first subscription and run wherever PanelClient calls its observers: on the
// library's thread, or at once on the subscribing thread for a value that is already known. The operations
// are for the GUI thread. Observes the client.
class PanelSubscriptions {
 public:
  using Handler = std::function<void(const std::string& name, const ParameterValue& value)>;

  explicit PanelSubscriptions(PanelClient& client) : client_(client) {}
  ~PanelSubscriptions();
  PanelSubscriptions(const PanelSubscriptions&) = delete;
  PanelSubscriptions& operator=(const PanelSubscriptions&) = delete;

  void onWorkplaceCount(Handler handler) { workplaceCount_ = std::move(handler); }
  void onMacroName(Handler handler) { macroName_ = std::move(handler); }

  // "PANEL.WP1.MFDCOUNT" to "PANEL.WP8.MFDCOUNT", in this order.
  void subscribeWorkplaceCounts();

  // The names of macros 0 to 999 of a workplace.
  void subscribeMacroNames(int workplace);
  void unsubscribeMacroNames(int workplace);

  // Removes everything, of both kinds. Afterwards no handler runs any more.
  void dropAll();

 private:
  void workplaceCountReceived(const std::string& name, const ParameterValue& value);
  void macroNameReceived(const std::string& name, const ParameterValue& value);

  PanelClient& client_;
  Handler workplaceCount_ = [](const auto&, const auto&) {};
  Handler macroName_ = [](const auto&, const auto&) {};
};

}  // namespace tessaly
