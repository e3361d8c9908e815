#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "panelsim/ControlClient.h"
#include "panelsim/Log.h"
#include "xctl/Socket.h"

namespace tessaly {

// The control service of a panel: any number of editors on one port, served by one thread. Operations may be
// called from any thread, but for `start` and `stop`.
class ControlService {
 public:
  // `panel` answers on the service's thread and outlives it.
  ControlService(ControlledPanel& panel, Log log) : panel_(panel), log_(std::move(log)) {}
  ~ControlService() { stop(); }

  // Port 0 takes any free one. False, with the reason, when the port cannot be had.
  [[nodiscard]] bool start(const std::string& address, std::uint16_t port, std::string& reason);
  void stop();  // ends all connections
  [[nodiscard]] std::uint16_t port() const { return port_; }

  // Sends the value to those that subscribed the name.
  void publish(const std::string& name, const std::string& value) { request({kValueMethod, name, value}); }
  void trigger(const std::string& name, const std::string& value) { request({kTriggerMethod, name, value}); }
  void dropConnections();
  void setFaults(const ControlFaults& faults);

  [[nodiscard]] std::size_t connections() const { return connections_; }  // open now
  [[nodiscard]] std::size_t accepted() const { return accepted_; }        // since the start of the program

 private:
  struct Publication {
    std::string_view method;
    std::string name, value;
  };

  void request(Publication publication);
  void serve();
  void takeRequests();
  void acceptClient();
  void closeEnded();

  ControlledPanel& panel_;
  const Log log_;
  const WakeUp wakeUp_;
  std::atomic<std::uint16_t> port_{0};
  std::thread thread_;
  std::atomic<bool> stopping_{false};
  std::atomic<std::size_t> connections_{0}, accepted_{0};

  // Of the service's thread.
  Socket listener_;
  std::vector<std::unique_ptr<ControlClient>> clients_;
  ControlFaults active_;
  // While nobody can be let in, for lack of descriptors, the listener would wake the thread without end.
  std::optional<ControlClient::Clock::time_point> listensAgain_;

  std::mutex mutex_;  // guards what follows
  std::vector<Publication> publications_;
  ControlFaults faults_;
  bool drop_ = false;
};

}  // namespace tessaly
