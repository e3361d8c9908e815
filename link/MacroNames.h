#pragma once

#include <array>
#include <chrono>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "link/Pane.h"
#include "link/PanelClient.h"
#include "link/PanelSubscriptions.h"
#include "platform/MacroNumber.h"
#include "platform/ThreadAnnotations.h"

namespace tessaly {

inline constexpr int kNoWorkplace = -1;
inline constexpr std::size_t kLongestMacroName = 250;  // bytes that are kept; a longer name ends in "…" there

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
  // Rows only: this is no selection by the user.
  virtual void rebuildMacros(Pane pane) = 0;
};

// The macro names on the panel, per pane, and the one workplace whose names are subscribed, for both panes.
// An empty name means no macro. The tables may be read on any thread.
class MacroNames {
 public:
  using Names = std::vector<std::string>;  // MacroNumber::kCount entries
  using Clock = std::chrono::steady_clock;

  // A panel that has not published the name by then has not done what it was asked.
  static constexpr std::chrono::seconds kConfirmation{5};

  struct Request {
    int workplace = kNoWorkplace;
    int number = 0;
    std::string name;  // that the macro was to have; empty: it was to be deleted
  };

  // Takes the macro names of `subscriptions`. Observes all three.
  MacroNames(PanelClient& client, PanelSubscriptions& subscriptions, MacroNamesView& view);

  // Ends the subscription of another workplace, empties all tables and, while connected, subscribes the names
  // of this one; names that are already known arrive before it returns. GUI thread.
  void subscribe(int workplace);
  // The same for who stays at a workplace, when another line has taken the place of the one that the names
  // came over. GUI thread.
  void renew(int workplace);

  // The subscribed workplace, 1 to 8, or kNoWorkplace.
  [[nodiscard]] int workplace() const;

  [[nodiscard]] Names names(Pane pane) const;
  [[nodiscard]] std::string name(Pane pane, int number) const;

  // Notes what the panel is about to be asked for a macro of the subscribed workplace: that its name becomes
  // `name`, or, when that is empty, that it goes. The name that the panel publishes then confirms it; one
  // that it has already needs no confirmation. Of two requests for a macro the later one counts; another
  // workplace's names tell nothing of it, so with the next `subscribe` it is forgotten.
  void expect(int number, const std::string& name, Clock::time_point now);
  void forget(int number);  // it could not be asked
  // Each request once: that has not been confirmed in time, or never will be since the line is gone.
  [[nodiscard]] std::vector<Request> takeUnconfirmed(Clock::time_point now);

  // Replaces both panes' tables by the macros of the demonstration.
  void showDemo();

 private:
  struct Expected {
    std::string name;  // as it is on the wire
    Clock::time_point until;
  };

  void received(const std::string& valueName, const ParameterValue& value);
  // True when the pane's list has to be built again.
  [[nodiscard]] bool store(Pane pane, MacroNumber number, const std::string& name) REQUIRES(mutex_);

  PanelClient& client_;
  PanelSubscriptions& subscriptions_;
  MacroNamesView& view_;
  mutable Mutex mutex_;                                         // never held while calling out
  std::array<Names, kPanes.size()> tables_ GUARDED_BY(mutex_);  // without an entry until a name has come
  int workplace_ GUARDED_BY(mutex_) = kNoWorkplace;
  unsigned connection_ = 0;                              // that it was subscribed on
  std::map<int, Expected> requests_ GUARDED_BY(mutex_);  // by number
};

}  // namespace tessaly
