#include "xctl/Session.h"

#include <algorithm>
#include <array>
#include <utility>

#include "xctl/WireText.h"

namespace tessaly {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kOpenTime{5000};    // for the TCP connection and the greeting together
constexpr milliseconds kGoodbyeTime{200};  // for sending what waits and for the panel to close its side
constexpr std::size_t kMostUnsent = std::size_t{8} * 1024 * 1024;  // bytes of lines that wait to be sent
constexpr std::size_t kReadSize = std::size_t{64} * 1024;

int millisecondsUntil(std::chrono::steady_clock::time_point deadline) {
  const auto left = std::chrono::ceil<milliseconds>(deadline - std::chrono::steady_clock::now());
  return static_cast<int>(std::max<milliseconds::rep>(left.count(), 0));
}

}  // namespace

void Session::run(const std::string& host, std::uint16_t port) {
  // Whatever goes wrong here, memory or a client that throws, ends this connection and nothing else.
  try {
    serve(host, port);
  } catch (...) {
  }
  close();
  {
    const MutexLock guard(mutex_);
    phase_ = Phase::kDone;
  }
  changed_.notify_all();
}

void Session::close() {
  {
    const MutexLock guard(mutex_);
    phase_ = Phase::kEnded;
    ending_ = true;
  }
  changed_.notify_all();
  try {
    sayGoodbye();
  } catch (...) {
  }
  // What was called and has not arrived is dropped with the line: nothing happens on a panel later on.
  if (linked_ && (!allSent() || socket_.hasUnconfirmed())) socket_.closeAndForget();
  socket_.close();
  linked_ = false;
  reportEnd();
}

bool Session::waitOpen() {
  const MutexLock guard(mutex_);
  while (!opened_ && phase_ <= Phase::kOpen) changed_.wait(mutex_);
  return phase_ == Phase::kOpen && !ending_;
}

bool Session::endReported() {
  const MutexLock guard(mutex_);
  return endReported_;
}

void Session::waitEnd(bool reportedOnly) {
  const MutexLock guard(mutex_);
  while (phase_ != Phase::kDone && !(reportedOnly && endReported_)) changed_.wait(mutex_);
}

std::string Session::endReason() {
  const MutexLock guard(mutex_);
  return endReason_;
}

bool Session::done() {
  const MutexLock guard(mutex_);
  return phase_ == Phase::kDone;
}

void Session::end() {
  ending_ = true;
  wakeUp_.wake();
}

void Session::reportEnd() {
  {
    const MutexLock guard(mutex_);
    if (std::exchange(reporting_, true)) return;
  }
  try {
    if (greeted_) client_->connectionStatusChanged(1);
  } catch (...) {
  }
  {
    const MutexLock guard(mutex_);
    endReported_ = true;
  }
  changed_.notify_all();
}

bool Session::send(const std::string& line) {
  bool first = false;
  {
    const MutexLock guard(mutex_);
    if (phase_ != Phase::kOpen || ending_ || line.size() > kLongestLine ||
        unsent_ + line.size() > kMostUnsent) {
      return false;
    }
    first = pending_.empty();
    pending_ += line;
    unsent_ += line.size();
  }
  if (first) wakeUp_.wake();
  return true;
}

bool Session::subscribe(const std::string& name) {
  std::string sent = wireText(name);
  {
    const MutexLock guard(mutex_);
    Asked& asked = asked_[sent];
    if (sent != name) asked.given = name;
  }
  return send(subscribeLine(sent));
}

void Session::serve(const std::string& host, std::uint16_t port) {
  deadline_ = Clock::now() + kOpenTime;
  socket_ = Socket::beginConnect(host, port);
  if (!socket_.valid() || !wakeUp_.valid()) return;
  while (!ending_ && turn()) {
  }
}

// One wait and what it found; false ends the connection. When sending fails the peer is gone, but what it
// sent before is still read to its end.
bool Session::turn() {
  const bool lastLook = sendingFailed_;
  const int wait = lastLook ? 0 : waitTime();
  if (wait == 0 && !lastLook) return false;
  std::array<Watch, 2> watches{
      Watch{.socket = &socket_, .forRead = linked_, .forWrite = !linked_ || (!lastLook && !allSent())},
      Watch{.socket = &wakeUp_.socket()}};
  if (!waitFor(watches, wait)) return false;
  if (watches[1].readable) wakeUp_.clear();
  if (!linked_) {
    if (!watches[0].writable) return true;
    linked_ = socket_.connected();
    return linked_;
  }
  if (!sendingFailed_) sendingFailed_ = !flush();
  if (watches[0].readable) return receive();
  return !lastLook || endFor("the panel is gone");
}

int Session::waitTime() const { return greeted_ ? -1 : millisecondsUntil(deadline_); }

bool Session::flush() {
  while (true) {
    if (allSent()) {
      outgoing_.clear();
      sent_ = 0;
      const MutexLock guard(mutex_);
      outgoing_.swap(pending_);
    }
    if (outgoing_.empty()) return true;
    std::size_t count = 0;
    const Socket::Transfer result = socket_.send(std::string_view(outgoing_).substr(sent_), count);
    if (result != Socket::Transfer::kDone) return result == Socket::Transfer::kAgain;
    sent_ += count;
    const MutexLock guard(mutex_);
    unsent_ -= count;
  }
}

bool Session::receive() {
  std::array<char, kReadSize> bytes;
  std::size_t count = 0;
  const Socket::Transfer result = socket_.receive(bytes, count);
  if (result == Socket::Transfer::kClosed) return endFor("the panel is gone");
  if (result == Socket::Transfer::kAgain) return true;
  lines_.append({bytes.data(), count});
  while (const auto line = lines_.next()) {
    if (ending_ || !handle(*line)) return false;
  }
  return !lines_.overflown() || endFor("the panel sent a line without end");
}

bool Session::handle(std::string_view line) {
  WireMessage message;
  switch (parseLine(line, message)) {
    case LineKind::kBroken:
      return endFor("the panel does not speak the protocol");
    case LineKind::kOther:
      return true;
    case LineKind::kMessage:
      break;
  }
  if (greeted_) {
    return deliver(message);
  } else if (message.method == kHelloMethod) {
    open();
  }
  return true;
}

void Session::open() {
  {
    const MutexLock guard(mutex_);
    phase_ = Phase::kOpen;
  }
  greeted_ = true;
  client_->connectionStatusChanged(0);
  {
    const MutexLock guard(mutex_);
    opened_ = true;
  }
  changed_.notify_all();
}

bool Session::deliver(const WireMessage& message) {
  if (!message.name || !message.value) return true;
  if (message.value->size() > kLongestValue) return endFor("the panel sent a value of more than 64 kB");
  if (message.method == kTriggerMethod)
    client_->triggerValueReceived(*message.name, ParameterValue(*message.value));
  if (message.method != kValueMethod) return true;
  const auto name = accept(*message.name, message.value->size());
  if (name) client_->subscribedValueReceived(*name, ParameterValue(*message.value));
  return !ending_;
}

std::optional<std::string> Session::accept(const std::string& name, std::size_t size) {
  {
    const MutexLock guard(mutex_);
    const auto asked = asked_.find(name);
    if (asked == asked_.end()) return std::nullopt;
    valueBytes_ += size;
    valueBytes_ -= std::exchange(asked->second.size, size);
    if (valueBytes_ <= kMostValues) return asked->second.given.value_or(name);
  }
  ending_ = true;
  endFor("the panel sent more than 64 MB of values");
  return std::nullopt;
}

bool Session::endFor(const char* reason) {
  const MutexLock guard(mutex_);
  endReason_ = reason;
  return false;
}

// A call made just before the end still reaches the panel: what waits is sent, and reading goes on until the
// panel closes, since closing with unread bytes would throw away what it has not read yet.
void Session::sayGoodbye() {
  const Clock::time_point deadline = Clock::now() + kGoodbyeTime;
  if (!linked_ || !flush()) return;
  bool finished = false;
  while (const int wait = millisecondsUntil(deadline)) {
    if (allSent() && !std::exchange(finished, true)) socket_.finishSending();
    std::array<Watch, 1> watches{Watch{.socket = &socket_, .forRead = true, .forWrite = !finished}};
    if (!waitFor(watches, wait)) return;
    if (watches[0].writable && !flush()) return;
    std::array<char, kReadSize> bytes;
    std::size_t count = 0;
    if (watches[0].readable && socket_.receive(bytes, count) == Socket::Transfer::kClosed) return;
  }
}

}  // namespace tessaly
