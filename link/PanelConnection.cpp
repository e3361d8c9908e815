#include "link/PanelConnection.h"

#include <optional>
#include <string_view>
#include <system_error>
#include <thread>

#include "platform/Text.h"
#include "platform/Workplace.h"

namespace tessaly {
namespace {

// The number after "WP", when it names a workplace.
std::optional<int> workplaceOf(std::string_view name) {
  constexpr std::string_view kWorkplace = "WP";
  const std::size_t start = name.find(kWorkplace);
  if (start == std::string_view::npos) return std::nullopt;
  const int number = parseInt(name.substr(start + kWorkplace.size()));
  return Workplace::of(number) ? std::optional(number) : std::nullopt;
}

}  // namespace

PanelConnection::PanelConnection(PanelClient& client, PanelSubscriptions& subscriptions, Messages& messages,
                                 PanelConnectionView& view)
    : client_(client),
      subscriptions_(subscriptions),
      messages_(messages),
      view_(view),
      states_(std::make_shared<PaneStates>([&view](Pane pane) { view.postConnected(pane); })) {
  subscriptions_.onWorkplaceCount(
      [this](const auto& name, const auto& value) { workplaceCountReceived(name, value); });
}

PanelConnection::~PanelConnection() { states_->retire(); }

void PanelConnection::setTexts(Pane pane, const std::string& storedPath, const HostAddress& address) {
  texts_[index(pane)] = {storedPath, address, {}};
}

std::string PanelConnection::path(Pane pane) const {
  std::string path = storedPath(pane);
  if (!path.empty() && path.back() != '\\') path += '\\';
  return path;
}

void PanelConnection::refresh(Pane pane) {
  PaneConnectionDisplay& display = displays_[index(pane)];
  if (source(pane) == PaneSource::kPanel) {
    const bool joined = connected(pane);
    const bool waiting = !joined && states_->connecting(pane);
    display.sourceLabel = "Corvane XL Control Panel";
    display.editLabel = "IP-Address:";
    display.editText = address(pane).text();
    display.editEnabled = !joined && !waiting;
    display.buttonText = joined ? "disconnect" : waiting ? "connecting" : "connect";
    display.buttonVisible = true;
    display.buttonEnabled = !waiting && addressAccepted(address(pane).text());
  } else {
    display.sourceLabel = "Applications";
    display.editLabel = "Path:";
    display.editText = storedPath(pane);
    display.buttonText = "browse";
    display.buttonVisible = false;
  }
  view_.showConnection(pane, display);
  if (source(pane) == PaneSource::kHarddisk) texts_[index(pane)].listedPath = storedPath(pane);
  view_.rebuildLists(pane);
}

void PanelConnection::connectButton(Pane pane) {
  if (source(pane) != PaneSource::kPanel) return;
  if (connected(pane)) {
    if (!connected(other(pane))) {
      client_.disconnect();
      subscriptions_.dropAll();
    }
    states_->disconnect(pane);
    refresh(pane);
  } else if (connected(other(pane)) && !gone()) {
    join(pane);
  } else if (demo_) {
    startDemo();
  } else if (!states_->connecting(pane)) {
    start(pane);
  }
}

void PanelConnection::connectAgain(Pane pane) {
  if (line(pane) != PaneLine::kLost) return;
  connectButton(pane);
  if (displays_[index(pane)].buttonEnabled) connectButton(pane);
}

// The connection stays where it is, whatever address this pane shows.
void PanelConnection::join(Pane pane) {
  // An attempt of the pane's own that still goes on must neither take the connection away nor report a
  // failure.
  static_cast<void>(giveUp(pane));
  states_->join(pane);
  refresh(pane);
  view_.rebuildWorkplaces(pane);
}

void PanelConnection::start(Pane pane) {
  PaneConnectionDisplay& display = displays_[index(pane)];
  display.buttonText = "connecting";
  display.buttonEnabled = false;
  display.editEnabled = false;
  view_.showConnection(pane, display);
  view_.startTimer(pane, connectTimeOut_);
  const auto work = [&client = client_, states = states_, attempt = states_->begin(pane, address(pane)),
                     pane] {
    const auto wanted = [&] { return states->wanted(*attempt); };
    const auto keep = [&] { return states->keep(pane, *attempt); };
    // A failure is noticed by the time-out only.
    static_cast<void>(client.connect(states->takeAddress(*attempt).text(), wanted, keep));
  };
  try {
    // Nobody can end a thread that is blocked in the library without harm to the process, and the window does
    // not wait for it: it owns what it touches and ends when the library gives up.
    std::thread(work).detach();
  } catch (const std::system_error&) {
    // No thread to be had: the time-out reports the failure.
  }
}

void PanelConnection::startDemo() {
  states_->setAllWorkplaces({true, true});
  view_.showDemoListing();
}

void PanelConnection::chooseHarddisk(Pane pane) {
  states_->setSource(pane, PaneSource::kHarddisk);
  // Deliberately unlike the button: the subscriptions stay. The library's status 1 drops them.
  if (connected(pane) && !connected(other(pane))) client_.disconnect();
  states_->disconnect(pane);
  displays_[index(pane)].editEnabled = true;
  refresh(pane);
}

void PanelConnection::choosePanel(Pane pane) {
  const bool changed = states_->setSource(pane, PaneSource::kPanel);
  // A pane whose attempt succeeded while it showed the hard disk is connected already; the button would
  // leave.
  const bool joins = changed && connected(other(pane)) && !connected(pane);
  if (!joins || gone()) refresh(pane);
  if (joins && (!gone() || addressAccepted(address(pane).text()))) connectButton(pane);
}

void PanelConnection::editText(Pane pane, const std::string& text) {
  PaneConnectionDisplay& display = displays_[index(pane)];
  display.editText = text;
  if (source(pane) == PaneSource::kHarddisk) {
    texts_[index(pane)].storedPath = text;
    return;
  }
  texts_[index(pane)].address = text;
  display.buttonEnabled = addressAccepted(text);
  view_.showConnection(pane, display);
}

void PanelConnection::editFinished(Pane pane, bool confirmed) {
  if (source(pane) != PaneSource::kHarddisk) return;
  std::string& listed = texts_[index(pane)].listedPath;
  if (!confirmed && listed == storedPath(pane)) return;
  listed = storedPath(pane);
  view_.rebuildLists(pane);
}

void PanelConnection::connectedMessage(Pane pane) {
  view_.killTimer(pane);
  if (!states_->takeSuccess(pane)) return;
  displays_[index(pane)].buttonEnabled = true;
  subscriptions_.subscribeWorkplaceCounts();
  refresh(pane);
  // What the other pane lists came over a line that this one has taken the place of.
  if (source(other(pane)) == PaneSource::kPanel && connected(other(pane))) refresh(other(pane));
}

// False when there is no attempt, or its success is on its way.
bool PanelConnection::giveUp(Pane pane) {
  view_.killTimer(pane);
  if (!states_->abandon(pane)) return false;
  client_.endUnwantedAttempt();
  return true;
}

void PanelConnection::timeOut(Pane pane) {
  // Given up before the box is shown, so that no success arrives behind it.
  if (!giveUp(pane)) return;
  messages_.show(kConnectionFailed, MessageIcon::kExclamation);
  refresh(pane);
}

void PanelConnection::close() {
  for (const Pane pane : kPanes) view_.killTimer(pane);
  const bool inUse = states_->retire();
  client_.endUnwantedAttempt();
  if (!inUse) return;
  subscriptions_.dropAll();
  client_.disconnect();
}

PaneLine PanelConnection::line(Pane pane) const {
  if (source(pane) != PaneSource::kPanel || !connected(pane)) return PaneLine::kNone;
  return gone() ? PaneLine::kLost : PaneLine::kStands;
}

bool PanelConnection::renewLine(const std::function<bool()>& wanted) {
  if (!gone()) return true;
  const auto needed = [&] { return wanted() && anyConnected(); };
  if (!client_.connect(states_->lineAddress().text(), needed, needed)) return false;
  renewed_ = true;
  return true;
}

void PanelConnection::lineRenewed() {
  if (!renewed_.exchange(false)) return;
  subscriptions_.subscribeWorkplaceCounts();
  for (const Pane pane : kPanes) {
    if (source(pane) == PaneSource::kPanel && connected(pane)) refresh(pane);
  }
}

std::optional<unsigned> PanelConnection::loss() const {
  if (!anyConnected() || !gone()) return std::nullopt;
  return client_.connectionNumber();
}

std::optional<HostAddress> PanelConnection::otherAddress(Pane pane) const {
  if (line(pane) != PaneLine::kStands || client_.leadsTo(address(pane))) return std::nullopt;
  return client_.host();
}

std::set<HostAddress> PanelConnection::wholePanels() const {
  std::set<HostAddress> addresses;
  for (const Pane pane : kPanes)
    if (line(pane) == PaneLine::kStands && !otherAddress(pane)) addresses.insert(address(pane));
  return addresses;
}

void PanelConnection::workplaceCountReceived(const std::string& name, const ParameterValue& value) {
  int count = 0;
  if (!value.getIntValue(count)) count = parseInt(value.getAsString());
  const auto workplace = workplaceOf(name);
  if (!workplace) return;
  states_->setWorkplace(*workplace, count != 0);
  for (const Pane pane : kPanes) {
    if (connected(pane)) view_.rebuildWorkplaces(pane);
  }
}

}  // namespace tessaly
