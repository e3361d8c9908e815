#pragma once

#include <array>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "link/Pane.h"
#include "link/PanelClient.h"
#include "link/PanelSubscriptions.h"

namespace tessaly {

inline constexpr int kNoWorkplace = -1;

// The value that holds a macro's name: "PANEL.MACRO1.REG7.NAME", both numbers without padding.
[[nodiscard]] std::string macroNameValue(int workplace, int number);

// The macro number in the name of such a value, or -1: the number after "REG" in the third field; 0 when no
// digits follow.
[[nodiscard]] int macroNumberOf(std::string_view valueName);

// What a name that has arrived changes outside the tables. Called on any thread; must not block and must not
// call the panel client.
class MacroNamesView {
 public:
  virtual ~MacroNamesView() = default;
  // Whether the pane's source is the panel.
  [[nodiscard]] virtual bool showsPanel(Pane pane) const = 0;
  // The pane's application is not of the older family: a panel has none such.
  virtual void markCurrentFamily(Pane pane) = 0;
  // Rows only: this is no selection by the user.
  virtual void rebuildMacros(Pane pane) = 0;
};

// The macro names on the panel: per pane the current and the previous name of each number, and the one
// workplace whose names are subscribed, for both panes. An empty name means no macro. The tables may be read
// on any thread.
class MacroNames {
 public:
  using Names = std::vector<std::string>;  // kPanelMacroNumbers entries

  // Takes the macro names of `subscriptions`. Observes all three.
  MacroNames(PanelClient& client, PanelSubscriptions& subscriptions, MacroNamesView& view);

  // Ends the subscription of another workplace, empties all tables and, while connected, subscribes the names
  // of this one; names that are already known arrive before it returns. GUI thread.
  void subscribe(int workplace);

  // The subscribed workplace, 1 to 8, or kNoWorkplace.
  [[nodiscard]] int workplace() const;

  [[nodiscard]] Names names(Pane pane) const;
  [[nodiscard]] std::string name(Pane pane, int number) const;

  // Replaces both panes' tables by the macros of the demonstration.
  void showDemo();

 private:
  struct Tables {
    Names current = Names(kPanelMacroNumbers);
    Names previous = Names(kPanelMacroNumbers);
  };

  void received(const std::string& valueName, const ParameterValue& value);
  // True when the pane's list has to be built again.
  [[nodiscard]] bool store(Pane pane, int number, const std::string& name);

  PanelClient& client_;
  PanelSubscriptions& subscriptions_;
  MacroNamesView& view_;
  mutable std::mutex mutex_;  // never held while calling out
  std::array<Tables, kPanes.size()> tables_;
  int workplace_ = kNoWorkplace;
};

}  // namespace tessaly
