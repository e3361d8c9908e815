#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>

#include "xctl/JsonLine.h"
#include "xctl/Socket.h"
#include "xctl/XctlLib.h"

namespace tessaly {

// One connection from its first step to its end. `run` is the body of its thread, which alone uses the socket
// and calls the client; the other operations may be called from any thread.
class Session {
 public:
  explicit Session(IXCTLClient* client) : client_(client) {}

  // Connects, reports status 0, delivers values until the end, reports status 1. Never throws.
  void run(const std::string& host, std::uint16_t port);

  [[nodiscard]] bool waitOpen();  // true once status 0 has been reported, false when the session has ended
  [[nodiscard]] bool send(const std::string& line);
  [[nodiscard]] bool subscribe(const std::string& name);
  void end();
  // The session has ended and makes no more calls, but for one that it may be in, which ended it.
  [[nodiscard]] bool endReported();
  [[nodiscard]] bool done();        // the thread has nothing left to do
  void waitEnd(bool reportedOnly);  // until `endReported`, or else until `done`

  // Closes the connection and reports status 1, if that has not begun; on the session's thread only.
  void close();

 private:
  using Clock = std::chrono::steady_clock;

  void serve(const std::string& host, std::uint16_t port);
  [[nodiscard]] bool turn();
  [[nodiscard]] int waitTime() const;
  [[nodiscard]] bool flush();
  [[nodiscard]] bool allSent() const { return sent_ == outgoing_.size(); }
  [[nodiscard]] bool receive();
  [[nodiscard]] bool handle(std::string_view line);
  void open();
  void deliver(const WireMessage& message);
  void sayGoodbye();
  void reportEnd();

  IXCTLClient* const client_;
  const WakeUp wakeUp_;
  std::atomic<bool> ending_{false};

  // Of the session's thread.
  Socket socket_;
  bool linked_ = false;   // the TCP connection stands
  bool greeted_ = false;  // the panel has said hello, and status 0 has been reported
  bool sendingFailed_ = false;
  LineBuffer lines_;
  std::string outgoing_;  // taken from pending_
  std::size_t sent_ = 0;  // bytes of outgoing_ that are on their way
  Clock::time_point deadline_;

  std::mutex mutex_;  // guards what follows; never held while the client is called
  std::condition_variable changed_;
  enum class Phase { kOpening, kOpen, kEnded, kDone } phase_ = Phase::kOpening;
  bool opened_ = false;       // the report of status 0 has returned
  bool reporting_ = false;    // the report of status 1 has begun, or is not needed
  bool endReported_ = false;  // and has returned
  std::string pending_;
  std::unordered_map<std::string, std::string>
      spellings_;  // of names that went out in other bytes than given
};

}  // namespace tessaly
