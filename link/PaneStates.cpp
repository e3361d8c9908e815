#include "link/PaneStates.h"

#include <algorithm>

namespace tessaly {

using AttemptState = ConnectAttempt::State;

PaneSource PaneStates::source(Pane pane) const {
  const MutexLock guard(mutex_);
  return panes_[index(pane)].source;
}

bool PaneStates::connected(Pane pane) const {
  const MutexLock guard(mutex_);
  return panes_[index(pane)].connected;
}

bool PaneStates::anyConnected() const {
  const MutexLock guard(mutex_);
  return std::any_of(panes_.begin(), panes_.end(), [](const State& pane) { return pane.connected; });
}

bool PaneStates::connecting(Pane pane) const {
  const MutexLock guard(mutex_);
  return panes_[index(pane)].attempt != nullptr;
}

WorkplaceFlags PaneStates::workplaces(Pane pane) const {
  const MutexLock guard(mutex_);
  return panes_[index(pane)].workplaces;
}

bool PaneStates::setSource(Pane pane, PaneSource source) {
  const MutexLock guard(mutex_);
  return std::exchange(panes_[index(pane)].source, source) != source;
}

void PaneStates::disconnect(Pane pane) {
  const MutexLock guard(mutex_);
  State& state = panes_[index(pane)];
  state.connected = state.lost = false;
  state.workplaces = {};
}

void PaneStates::join(Pane pane) {
  const MutexLock guard(mutex_);
  panes_[index(pane)].workplaces = panes_[index(other(pane))].workplaces;
  panes_[index(pane)].connected = true;
}

void PaneStates::setAllWorkplaces(const WorkplaceFlags& flags) {
  const MutexLock guard(mutex_);
  for (State& pane : panes_) pane.workplaces = flags;
}

void PaneStates::setWorkplace(int workplace, bool present) {
  const MutexLock guard(mutex_);
  for (State& pane : panes_) {
    if (pane.connected) pane.workplaces[static_cast<std::size_t>(workplace - 1)] = present;
  }
}

std::shared_ptr<ConnectAttempt> PaneStates::begin(Pane pane, const HostAddress& address) {
  auto attempt = std::make_shared<ConnectAttempt>();
  const MutexLock guard(mutex_);
  addressSlot_ = address;
  for (State& state : panes_) state.lost = state.connected;
  panes_[index(pane)].attempt = attempt;
  return attempt;
}

bool PaneStates::takeSuccess(Pane pane) {
  const MutexLock guard(mutex_);
  State& state = panes_[index(pane)];
  if (!state.attempt || state.attempt->state != AttemptState::kSucceeded) return false;
  lineAddress_ = state.attempt->address;
  state.attempt = nullptr;
  state.connected = true;
  for (State& one : panes_) {
    one.lost = false;
    one.workplaces = {};
  }
  return true;
}

bool PaneStates::abandon(Pane pane) {
  const MutexLock guard(mutex_);
  State& state = panes_[index(pane)];
  if (!state.attempt || state.attempt->state == AttemptState::kSucceeded) return false;
  state.attempt->state = AttemptState::kAbandoned;
  state.attempt = nullptr;
  return true;
}

bool PaneStates::retire() {
  const MutexLock guard(mutex_);
  bool inUse = false;
  for (State& pane : panes_) {
    inUse = inUse || pane.connected || (pane.attempt && pane.attempt->state == AttemptState::kSucceeded);
    if (pane.attempt) pane.attempt->state = AttemptState::kAbandoned;
    pane.attempt = nullptr;
    pane.connected = false;
  }
  return inUse;
}

HostAddress PaneStates::lineAddress() const {
  const MutexLock guard(mutex_);
  return lineAddress_;
}

HostAddress PaneStates::takeAddress(ConnectAttempt& attempt) const {
  const MutexLock guard(mutex_);
  return attempt.address = addressSlot_;
}

bool PaneStates::wanted(const ConnectAttempt& attempt) const {
  const MutexLock guard(mutex_);
  return attempt.state == AttemptState::kPending;
}

bool PaneStates::keep(Pane pane, ConnectAttempt& attempt) {
  const MutexLock guard(mutex_);
  if (attempt.state == AttemptState::kPending) {
    attempt.state = AttemptState::kSucceeded;
    post_(pane);  // under the mutex: retire waits for it, so the window is still there
    return true;
  }
  // A connected pane needs the line that it takes itself to be on, and no other; a line has a port, too.
  const bool same = decimalAddress(attempt.address.text()) == decimalAddress(lineAddress_.text());
  return std::any_of(panes_.begin(), panes_.end(), [same](const State& state) {
    return (same && state.connected && !state.lost) || state.attempt != nullptr;
  });
}

}  // namespace tessaly
