#include "panelsim/ControlClient.h"

#include <array>
#include <utility>

namespace tessaly {
namespace {

constexpr std::size_t kReadSize = std::size_t{64} * 1024;
constexpr std::size_t kMostHeld =
    std::size_t{64} * 1024 * 1024;  // bytes for one editor: unsent, or of its names
constexpr std::string_view kNonsense = "\x7F{\xFF\"}[ nonsense\n";

}  // namespace

ControlClient::ControlClient(Socket socket, std::size_t number, ControlledPanel& panel, const Log& log)
    : socket_(std::move(socket)), number_(number), panel_(panel), log_(log) {}

std::optional<ControlClient::Clock::time_point> ControlClient::due() const {
  if (delayed_.empty()) return std::nullopt;
  return delayed_.front().due;
}

void ControlClient::heed(const ControlFaults& faults) {
  if (dead_ && !faults.deadLine) end("ended: its line was dead");
  dead_ = faults.deadLine;
  if (!dead_) return;
  outgoing_.clear();
  delayed_.clear();
}

void ControlClient::greet(const ControlFaults& faults) {
  tell("connected");
  queue(helloLine("panelsim"), faults);
}

void ControlClient::receive(const ControlFaults& faults) {
  std::array<char, kReadSize> bytes;
  std::size_t count = 0;
  switch (socket_.receive(bytes, count)) {
    case Socket::Transfer::kAgain:
      return;
    case Socket::Transfer::kClosed:
      end("closed by the editor");
      return;
    case Socket::Transfer::kDone:
      break;
  }
  if (dead_) return;
  lines_.append({bytes.data(), count});
  while (const auto line = lines_.next()) {
    if (!ended_) handle(*line, faults);
  }
  if (lines_.overflown()) end("ended: line without end");
  tellSubscriptions();
}

void ControlClient::handle(std::string_view line, const ControlFaults& faults) {
  WireMessage message;
  switch (parseLine(line, message)) {
    case LineKind::kBroken:
      queue(errorLine("null", kErrorNoJson, "no JSON"), faults);
      send();
      end("ended: sent no JSON");
      return;
    case LineKind::kOther:
      queue(errorLine("null", kErrorNoRequest, "no request"), faults);
      return;
    case LineKind::kMessage:
      break;
  }
  if (message.method == kSubscribeMethod) {
    answer(message, message.name ? 0 : kErrorBadParameters, "\"name\" is no text", faults);
    if (message.name) subscribe(*message.name, faults);
  } else if (message.method == kCallMethod) {
    if (!message.function || !message.parameters) {
      answer(message, kErrorBadParameters, "\"function\" is no text or \"parameters\" no list", faults);
      return;
    }
    tellSubscriptions();
    tell("calls " + *message.function + " " + message.parameters->toString());
    const bool done = panel_.call(*message.function, *message.parameters);
    answer(message, done ? 0 : kErrorBadParameters, "no such function, or not with these parameters", faults);
  } else {
    answer(message, kErrorNoMethod, "no such method", faults);
  }
}

void ControlClient::subscribe(const std::string& name, const ControlFaults& faults) {
  const auto [told, isNew] = subscribed_.try_emplace(name);
  if (isNew) subscribedBytes_ += name.size();
  if (subscribedBytes_ > kMostHeld) {
    end("ended: subscribed too much");
    return;
  }
  if (untold_++ == 0) firstTold_ = name;
  lastTold_ = name;
  told->second = panel_.currentValue(name);
  if (told->second) queueValue(kValueMethod, name, *told->second, faults);
}

void ControlClient::publish(std::string_view method, const std::string& name, const std::string& value,
                            const ControlFaults& faults) {
  if (method != kTriggerMethod) {
    // A change that came while its name was subscribed is in the answer to that.
    const auto told = subscribed_.find(name);
    if (told == subscribed_.end() || told->second == value) return;
    told->second = value;
  }
  queueValue(method, name, value, faults);
}

void ControlClient::queueValue(std::string_view method, const std::string& name, const std::string& value,
                               const ControlFaults& faults) {
  if (faults.dropAfter && values_ >= *faults.dropAfter) return;
  const bool garbled = faults.garbleAfter && values_ >= *faults.garbleAfter;
  ++values_;
  queue(garbled ? std::string(kNonsense) : valueLine(method, name, value), faults);
}

void ControlClient::answer(const WireMessage& message, int error, std::string_view text,
                           const ControlFaults& faults) {
  if (!message.id) return;
  queue(error == 0 ? answerLine(*message.id) : errorLine(*message.id, error, text), faults);
}

void ControlClient::queue(std::string line, const ControlFaults& faults) {
  if (faults.neverAnswer || dead_) return;
  delayedBytes_ += line.size();
  delayed_.push_back({Clock::now() + faults.delay, std::move(line)});
  if (outgoing_.size() - sent_ + delayedBytes_ > kMostHeld) end("ended: does not read");
}

void ControlClient::send() {
  const Clock::time_point now = Clock::now();
  while (!delayed_.empty() && delayed_.front().due <= now) {
    outgoing_ += delayed_.front().line;
    delayedBytes_ -= delayed_.front().line.size();
    delayed_.pop_front();
  }
  while (!ended_ && wantsToSend()) {
    std::size_t count = 0;
    const Socket::Transfer result = socket_.send(std::string_view(outgoing_).substr(sent_), count);
    if (result == Socket::Transfer::kClosed) end("lost");
    if (result != Socket::Transfer::kDone) return;
    sent_ += count;
  }
  outgoing_.clear();
  sent_ = 0;
}

void ControlClient::endWhenDropIsDue(const ControlFaults& faults) {
  if (!faults.dropAfter || values_ < *faults.dropAfter || wantsToSend() || !delayed_.empty()) return;
  end("dropped after " + std::to_string(values_) + " values");
}

void ControlClient::end(const std::string& why) {
  if (!std::exchange(ended_, true)) tell(why);
}

void ControlClient::tellSubscriptions() {
  if (untold_ == 0) return;
  const std::string range = untold_ == 1 ? firstTold_ : firstTold_ + " to " + lastTold_;
  tell("subscribes " + std::to_string(untold_) + (untold_ == 1 ? " value: " : " values: ") + range);
  untold_ = 0;
}

void ControlClient::tell(const std::string& text) const {
  log_("editor " + std::to_string(number_) + ": " + text);
}

}  // namespace tessaly
