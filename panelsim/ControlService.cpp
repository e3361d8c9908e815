#include "panelsim/ControlService.h"

#include <algorithm>
#include <exception>

namespace tessaly {
namespace {

constexpr std::size_t kMostClients = 64;
constexpr std::size_t kFirstClient = 2;                 // of the watches: after the wake-up and the listener
constexpr std::chrono::milliseconds kNoRoomPause{100};  // when no descriptor is left for a new connection

using Clock = ControlClient::Clock;

int waitTime(const std::vector<std::unique_ptr<ControlClient>>& clients,
             std::optional<Clock::time_point> due) {
  for (const auto& client : clients) {
    if (const auto next = client->due(); next && (!due || *next < *due)) due = next;
  }
  if (!due) return -1;
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(*due - Clock::now());
  return static_cast<int>(std::clamp<std::chrono::milliseconds::rep>(left.count(), 0, 60000));
}

}  // namespace

bool ControlService::start(const std::string& address, std::uint16_t port, std::string& reason) {
  stop();
  listener_ = Socket::listen(address, port, reason);
  if (!listener_.valid()) return false;
  if (!wakeUp_.valid()) {
    reason = "no descriptors left";
    return false;
  }
  port_ = listener_.port();
  stopping_ = false;
  thread_ = std::thread([this] {
    try {
      serve();
    } catch (const std::exception& error) {
      log_(std::string("control service ended: ") + error.what());
    }
    clients_.clear();
    connections_ = 0;
    listener_.close();
  });
  return true;
}

void ControlService::stop() {
  stopping_ = true;
  wakeUp_.wake();
  if (thread_.joinable()) thread_.join();
}

void ControlService::request(Publication publication) {
  {
    const std::scoped_lock guard(mutex_);
    publications_.push_back(std::move(publication));
  }
  wakeUp_.wake();
}

void ControlService::dropConnections() {
  {
    const std::scoped_lock guard(mutex_);
    drop_ = true;
  }
  wakeUp_.wake();
}

void ControlService::setFaults(const ControlFaults& faults) {
  {
    const std::scoped_lock guard(mutex_);
    faults_ = faults;
  }
  wakeUp_.wake();
}

void ControlService::serve() {
  std::vector<Watch> watches;
  while (!stopping_) {
    watches.assign(kFirstClient, {});
    watches[0].socket = &wakeUp_.socket();
    watches[1].socket = &listener_;
    if (listensAgain_ && *listensAgain_ <= Clock::now()) listensAgain_.reset();
    watches[1].forRead = !listensAgain_;
    for (const auto& client : clients_) {
      watches.push_back({.socket = &client->socket(), .forWrite = client->wantsToSend()});
    }
    if (!waitFor(watches, waitTime(clients_, listensAgain_))) return;
    if (watches[0].readable) wakeUp_.clear();
    takeRequests();
    for (std::size_t i = 0; i < clients_.size(); ++i) {
      if (watches[kFirstClient + i].readable) clients_[i]->receive(active_);
    }
    if (watches[1].readable) acceptClient();
    for (const auto& client : clients_) {
      client->send();
      client->endWhenDropIsDue(active_);
    }
    closeEnded();
  }
}

void ControlService::takeRequests() {
  std::vector<Publication> publications;
  bool drop = false;
  {
    const std::scoped_lock guard(mutex_);
    publications.swap(publications_);
    drop = std::exchange(drop_, false);
    active_ = faults_;
  }
  for (const auto& client : clients_) {
    client->heed(active_);
    for (const Publication& publication : publications) {
      client->publish(publication.method, publication.name, publication.value, active_);
    }
    if (drop) client->end("dropped");
  }
}

void ControlService::acceptClient() {
  Socket socket = listener_.accept();
  if (!socket.valid()) {
    listensAgain_ = Clock::now() + kNoRoomPause;
    return;
  }
  if (clients_.size() >= kMostClients) return;
  clients_.push_back(std::make_unique<ControlClient>(std::move(socket), ++accepted_, panel_, log_));
  clients_.back()->heed(active_);
  clients_.back()->greet(active_);
}

void ControlService::closeEnded() {
  std::erase_if(clients_, [](const auto& client) { return client->ended(); });
  connections_ = clients_.size();
}

}  // namespace tessaly
