#pragma once

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "xctl/JsonLine.h"
#include "xctl/Socket.h"
#include "xctl/XctlLib.h"

namespace tessaly {

// What a connection reported, in order; `after` runs in the callback, once the event is recorded.
class Recorder : public IXCTLClient {
 public:
  void triggerValueReceived(const std::string& name, const ParameterValue& value) override {
    add("trigger " + name + "=" + value.getAsString());
  }
  void subscribedValueReceived(const std::string& name, const ParameterValue& value) override {
    add("value " + name + "=" + value.getAsString());
  }
  void connectionStatusChanged(int status) override { add("status " + std::to_string(status)); }

  std::vector<std::string> events() {
    const std::scoped_lock guard(mutex_);
    return events_;
  }
  // False when the event does not come within 10 s.
  bool waitFor(const std::string& event) {
    std::unique_lock guard(mutex_);
    return changed_.wait_for(guard, std::chrono::seconds(10), [&] {
      return std::find(events_.begin(), events_.end(), event) != events_.end();
    });
  }
  std::thread::id lastThread() {
    const std::scoped_lock guard(mutex_);
    return thread_;
  }
  std::function<void(const std::string& event)> after;

 private:
  void add(const std::string& event) {
    {
      const std::scoped_lock guard(mutex_);
      events_.push_back(event);
      thread_ = std::this_thread::get_id();
    }
    changed_.notify_all();
    if (after) after(event);
  }

  std::mutex mutex_;
  std::condition_variable changed_;
  std::vector<std::string> events_;
  std::thread::id thread_;
};

// A listener on the loopback address that serves one connection after another with a script, on its own
// thread.
class ScriptedPeer {
 public:
  using Script = std::function<void(ScriptedPeer&, const Socket&)>;

  explicit ScriptedPeer(Script script) : script_(std::move(script)), listener_(onLoopback()) {
    thread_ = std::thread([this] { serve(); });
  }
  ~ScriptedPeer() {
    stopping_ = true;
    wakeUp_.wake();
    thread_.join();
  }

  [[nodiscard]] std::uint16_t port() const { return listener_.port(); }

  // False once the other end is gone or the peer is to stop.
  bool send(const Socket& socket, std::string_view bytes) {
    while (!bytes.empty() && wait(socket, true)) {
      std::size_t count = 0;
      if (socket.send(bytes, count) == Socket::Transfer::kClosed) return false;
      bytes.remove_prefix(count);
    }
    return bytes.empty();
  }
  // The next line, or what came before the other end closed.
  std::string readLine(const Socket& socket) {
    std::string line;
    std::array<char, 1> byte;
    std::size_t count = 0;
    while (wait(socket, false) && socket.receive(byte, count) != Socket::Transfer::kClosed) {
      if (count == 1 && byte[0] == '\n') break;
      line.append(byte.data(), count);
    }
    return line;
  }
  // Reads and drops until the other end closes.
  void drain(const Socket& socket) {
    std::array<char, 4096> bytes;
    std::size_t count = 0;
    while (wait(socket, false) && socket.receive(bytes, count) != Socket::Transfer::kClosed) {
    }
  }

 private:
  static Socket onLoopback() {
    std::string reason;
    return Socket::listen("127.0.0.1", 0, reason);
  }

  bool wait(const Socket& socket, bool forWrite) {
    std::array<Watch, 2> watches{Watch{.socket = &socket, .forRead = !forWrite, .forWrite = forWrite},
                                 Watch{.socket = &wakeUp_.socket()}};
    return waitFor(watches, -1) && !stopping_;
  }
  void serve() {
    while (wait(listener_, false)) {
      const Socket socket = listener_.accept();
      if (socket.valid()) script_(*this, socket);
    }
  }

  Script script_;
  Socket listener_;
  WakeUp wakeUp_;
  std::atomic<bool> stopping_{false};
  std::thread thread_;
};

}  // namespace tessaly
