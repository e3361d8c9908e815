#pragma once

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "link/Pane.h"
#include "platform/HostAddress.h"
#include "platform/ThreadAnnotations.h"
#include "platform/Workplace.h"

namespace tessaly {

enum class PaneSource { kHarddisk = 0, kPanel = 1 };

// Whether the panel reports macros for workplaces 1 to 8, by workplace - 1.
using WorkplaceFlags = std::array<bool, Workplace::kCount>;

// One attempt to connect. Its worker and its pane's time-out race for it; the first to claim it wins.
struct ConnectAttempt {
  enum class State { kPending, kSucceeded, kAbandoned };
  State state = State::kPending;  // under the mutex of PaneStates
  HostAddress address;            // that the worker took from the slot; under the same
};

// What the panes' connection rules share with their workers and with the library's thread. Owned together by
// all that use it, so that a worker outlives the window safely. Any thread; no operation calls out but
// `post`.
class PaneStates {
 public:
  // `post` queues a pane's "connected" message; it must not block. Never called after retire.
  explicit PaneStates(std::function<void(Pane)> post) : post_(std::move(post)) {}

  [[nodiscard]] PaneSource source(Pane pane) const;
  [[nodiscard]] bool connected(Pane pane) const;
  [[nodiscard]] bool anyConnected() const;
  [[nodiscard]] bool connecting(Pane pane) const;
  [[nodiscard]] WorkplaceFlags workplaces(Pane pane) const;

  // True when it was another source before.
  bool setSource(Pane pane, PaneSource source);
  // The flags go, too: a later connection may be to another panel.
  void disconnect(Pane pane);
  // Takes over the connection and the flags of the other pane.
  void join(Pane pane);
  void setAllWorkplaces(const WorkplaceFlags& flags);
  // Sets the flag of a workplace, 1 to 8, in the connected panes.
  void setWorkplace(int workplace, bool present);

  // Puts the address into the one slot and gives the pane a new attempt. A pane that takes itself for
  // connected now is on a line that was lost: it is on the new one when the attempt succeeds, and needs none
  // otherwise.
  [[nodiscard]] std::shared_ptr<ConnectAttempt> begin(Pane pane, const HostAddress& address);
  // The pane's success has been posted: it becomes connected, and no connected pane has any workplace. False
  // when nothing was posted.
  [[nodiscard]] bool takeSuccess(Pane pane);
  // Gives the pane's attempt up. False when there is none or its success has been posted.
  [[nodiscard]] bool abandon(Pane pane);
  // Gives all up. True when a connection had been made or was about to be shown.
  bool retire();

  // The address of the line that a connected pane is on.
  [[nodiscard]] HostAddress lineAddress() const;

  // For the worker: what the slot holds now, noted in its attempt; whether its attempt still stands; and,
  // once connected, its claim of the success, which posts it. A claim that comes too late says whether
  // somebody else needs the connection.
  [[nodiscard]] HostAddress takeAddress(ConnectAttempt& attempt) const;
  [[nodiscard]] bool wanted(const ConnectAttempt& attempt) const;
  [[nodiscard]] bool keep(Pane pane, ConnectAttempt& attempt);

 private:
  struct State {
    PaneSource source = PaneSource::kHarddisk;
    bool connected = false;
    bool lost = false;  // on a line that was gone when the other pane began to connect anew
    WorkplaceFlags workplaces{};
    std::shared_ptr<ConnectAttempt> attempt;  // from its start until its message or its time-out
  };

  mutable Mutex mutex_;
  const std::function<void(Pane)> post_;
  HostAddress addressSlot_ GUARDED_BY(mutex_);
  HostAddress lineAddress_ GUARDED_BY(mutex_);
  std::array<State, kPanes.size()> panes_ GUARDED_BY(mutex_);
};

}  // namespace tessaly
