#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "platform/ThreadAnnotations.h"
#include "xctl/JsonLine.h"
#include "xctl/Socket.h"
#include "xctl/XctlLib.h"

namespace tessaly {

// What the values of one connection may take; a panel that sends more is none of ours.
inline constexpr std::size_t kLongestValue = std::size_t{64} * 1024;       // bytes of one text
inline constexpr std::size_t kMostValues = std::size_t{64} * 1024 * 1024;  // bytes of the latest of each name

// One connection from its first step to its end. `run` is the body of its thread, which alone uses the socket
// and calls the client; the other operations may be called from any thread.
class Session {
 public:
  explicit Session(IXCTLClient* client) : client_(client) {}

  // Connects, reports status 0, delivers the values of subscribed names until the end, reports status 1.
  // Never throws.
  void run(const std::string& host, std::uint16_t port);

  [[nodiscard]] bool waitOpen();  // true once status 0 has been reported, false when the session has ended
  [[nodiscard]] bool send(const std::string& line);
  [[nodiscard]] bool subscribe(const std::string& name);
  void end();
  // The session has ended and makes no more calls, but for one that it may be in, which ended it.
  [[nodiscard]] bool endReported();
  [[nodiscard]] bool done();        // the thread has nothing left to do
  void waitEnd(bool reportedOnly);  // until `endReported`, or else until `done`
  // Why the connection ended by itself, as the end of a sentence; empty when it did not.
  [[nodiscard]] std::string endReason();

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
  [[nodiscard]] bool deliver(const WireMessage& message);
  // The name as it was subscribed, or nothing when it was not, or when the values take too much.
  [[nodiscard]] std::optional<std::string> accept(const std::string& name, std::size_t size);
  bool endFor(const char* reason);  // always false
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

  // A name that was subscribed: its bytes as given, where they are not those on the wire, and the size of its
  // latest value.
  struct Asked {
    std::optional<std::string> given;
    std::size_t size = 0;
  };

  Mutex mutex_;  // never held while the client is called
  std::condition_variable_any changed_;
  enum class Phase { kOpening, kOpen, kEnded, kDone };
  Phase phase_ GUARDED_BY(mutex_) = Phase::kOpening;
  bool opened_ GUARDED_BY(mutex_) = false;       // the report of status 0 has returned
  bool reporting_ GUARDED_BY(mutex_) = false;    // the report of status 1 has begun, or is not needed
  bool endReported_ GUARDED_BY(mutex_) = false;  // and has returned
  std::string pending_ GUARDED_BY(mutex_);
  std::size_t unsent_ GUARDED_BY(mutex_) =
      0;  // bytes of pending_, and of outgoing_ that are not on their way
  std::unordered_map<std::string, Asked> asked_ GUARDED_BY(mutex_);  // by the name on the wire
  std::size_t valueBytes_ GUARDED_BY(mutex_) = 0;                    // of the latest values together
  const char* endReason_ GUARDED_BY(mutex_) = "";
};

}  // namespace tessaly
