#pragma once

#include <chrono>
#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "panelsim/Log.h"
#include "xctl/JsonLine.h"
#include "xctl/Socket.h"

namespace tessaly {

// What the control service asks of its panel.
class ControlledPanel {
 public:
  virtual ~ControlledPanel() = default;
  [[nodiscard]] virtual std::optional<std::string> currentValue(const std::string& name) = 0;
  // False for a function that the panel does not have.
  [[nodiscard]] virtual bool call(const std::string& function, const ParameterList& parameters) = 0;
};

struct ControlFaults {
  bool neverAnswer = false;                               // connections are taken and stay silent
  std::chrono::milliseconds delay{0};                     // of everything that is sent
  std::optional<std::size_t> dropAfter = std::nullopt;    // values sent, after which a connection is closed
  std::optional<std::size_t> garbleAfter = std::nullopt;  // values sent, after which nonsense comes
  bool deadLine = false;  // nothing is read or sent, and no connection ends until the fault does
};

// One editor's connection, on the service's thread.
class ControlClient {
 public:
  using Clock = std::chrono::steady_clock;

  ControlClient(Socket socket, std::size_t number, ControlledPanel& panel, const Log& log);

  [[nodiscard]] const Socket& socket() const { return socket_; }
  [[nodiscard]] bool ended() const { return ended_; }
  [[nodiscard]] bool wantsToSend() const { return sent_ < outgoing_.size(); }
  [[nodiscard]] std::optional<Clock::time_point> due() const;  // when a line that is held back is to go

  // What changed faults do to the connection; before anything else that is done under them.
  void heed(const ControlFaults& faults);
  void greet(const ControlFaults& faults);
  void receive(const ControlFaults& faults);
  void send();  // what is due
  void publish(std::string_view method, const std::string& name, const std::string& value,
               const ControlFaults& faults);
  void endWhenDropIsDue(const ControlFaults& faults);
  void end(const std::string& why);

 private:
  struct Delayed {
    Clock::time_point due;
    std::string line;
  };

  void handle(std::string_view line, const ControlFaults& faults);
  void subscribe(const std::string& name, const ControlFaults& faults);
  void answer(const WireMessage& message, int error, std::string_view text, const ControlFaults& faults);
  void queue(std::string line, const ControlFaults& faults);
  void queueValue(std::string_view method, const std::string& name, const std::string& value,
                  const ControlFaults& faults);
  void tellSubscriptions();
  void tell(const std::string& text) const;

  Socket socket_;
  const std::size_t number_;
  ControlledPanel& panel_;
  const Log& log_;
  bool ended_ = false;
  bool dead_ = false;  // the line is gone, though nobody has been told
  LineBuffer lines_;
  std::unordered_map<std::string, std::optional<std::string>>
      subscribed_;  // the value last told of each name
  std::size_t subscribedBytes_ = 0;
  std::size_t values_ = 0;  // sent on this connection
  std::string outgoing_;
  std::size_t sent_ = 0;  // bytes of outgoing_ that are on their way
  std::deque<Delayed> delayed_;
  std::size_t delayedBytes_ = 0;

  // Subscriptions that came together are told in one line.
  std::string firstTold_, lastTold_;
  std::size_t untold_ = 0;
};

}  // namespace tessaly
