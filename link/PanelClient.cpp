#include "link/PanelClient.h"

#include <algorithm>
#include <iostream>
#include <new>
#include <utility>

namespace tessaly {
namespace {

PanelClient* theClient = nullptr;

// In one piece, so that lines of two threads do not mix.
void writeLine(const std::string& line, const ParameterList* parameters = nullptr) {
  static std::mutex output;
  const std::scoped_lock guard(output);
  std::cout << line;
  if (parameters != nullptr) parameters->print();
  std::cout << std::endl;
}

// Held while observers are called, and given back whatever they throw.
class Passage {
 public:
  explicit Passage(std::binary_semaphore& gate) : gate_(gate) { gate_.acquire(); }
  ~Passage() { gate_.release(); }
  Passage(const Passage&) = delete;
  Passage& operator=(const Passage&) = delete;

 private:
  std::binary_semaphore& gate_;
};

}  // namespace

PanelClient::PanelClient(std::unique_ptr<PanelTransport> connection) : connection_(std::move(connection)) {}

PanelClient::~PanelClient() {
  connection_.reset();  // first: its last callbacks still find the tables
}

void PanelClient::triggerValueReceived(const std::string& name, const ParameterValue& value) {
  if (verbose_) writeLine("trigger: " + name + " value: " + value.getAsString());
  const Passage passage(gate_);
  for (const auto& observer : observersOf(&PanelClient::triggers_, name)) observer->deliver(name, value);
}

void PanelClient::subscribedValueReceived(const std::string& name, const ParameterValue& value) {
  if (verbose_) writeLine("SID: " + name + " value: " + value.getAsString());
  const Passage passage(gate_);
  {
    const MutexLock guard(tables_);
    values_[name] = value.getAsString();
  }
  for (const auto& observer : observersOf(&PanelClient::subscribers_, name)) observer->deliver(name, value);
}

void PanelClient::connectionStatusChanged(int status) {
  std::vector<StatusListener*> listeners;
  ObserverTable subscribers;
  ObserverTable triggers;
  {
    // Neither lock_ nor gate_: a status must get through while an observer is still busy.
    const MutexLock guard(tables_);
    state_ = status;
    if (status == kPanelConnected) {
      ++connectionNumber_;
      host_ = attemptedHost_;
    }
    listeners = statusListeners_;
    if (status == kPanelNotConnected) {
      values_.clear();
      subscribers.swap(subscribers_);
      triggers.swap(triggers_);
    }
  }
  for (StatusListener* listener : listeners) listener->connectionStatusChanged(status);
}

bool PanelClient::callFunction(const std::string& functionId, const ParameterList& parameters) {
  if (verbose_) writeLine("FID: " + functionId + ' ', &parameters);
  return connection_->callFunctionId(functionId, parameters);
}

HostAddress PanelClient::host() const {
  const MutexLock guard(tables_);
  return host_;
}

bool PanelClient::connect(const std::string& host) {
  const auto yes = [] { return true; };
  return connect(host, yes, yes);
}

bool PanelClient::connect(const std::string& host, const std::function<bool()>& wanted,
                          const std::function<bool()>& keep) {
  const MutexLock turn(connecting_);
  if (!wanted()) return false;
  disconnect();
  {
    const MutexLock guard(tables_);
    attemptedHost_ = host;
  }
  setAttempt(&wanted);
  const bool connected = connection_->connect(host, kPanelPort, this);
  setAttempt(nullptr);
  if (!connected) return false;
  if (keep()) return true;
  // Still in our turn, so that this cannot end the connection of the next attempt.
  disconnect();
  return false;
}

void PanelClient::setAttempt(const std::function<bool()>* wanted) {
  const MutexLock guard(attempt_);
  attempted_ = wanted;
}

void PanelClient::endUnwantedAttempt() {
  const MutexLock guard(attempt_);
  if (attempted_ != nullptr && !(*attempted_)()) connection_->disconnect();
}

bool PanelClient::disconnect() {
  if (state_ == kPanelConnected) connection_->disconnect();
  return true;
}

bool PanelClient::subscribe(const std::string& name, std::shared_ptr<ValueObserver> observer) {
  if (state_ == kPanelNotConnected) return false;
  const std::scoped_lock guard(lock_);
  bool added = false;
  bool known = true;
  std::string text;
  {
    const MutexLock tables(tables_);
    // The line may have gone since it was asked first.
    if (state() == kPanelNotConnected) return false;
    Observers& observers = subscribers_[name];
    added = std::none_of(observers.begin(), observers.end(),
                         [&observer](const auto& other) { return other->same(*observer); });
    if (added) {
      observers.push_back(observer);
      const auto value = values_.find(name);
      known = value != values_.end();
      if (known) text = value->second;
    } else {
      // Deliberately leaves an empty entry, which from then on counts as a known value.
      text = values_[name];
    }
  }
  // The library's thread may deliver a newer value at the same time: gate_ is not taken here.
  if (known) {
    observer->deliver(name, ParameterValue(text));
    return added;
  }
  // The observer stays when the library refuses.
  return connection_->subscribe(name);
}

void PanelClient::unsubscribeOwner(const void* object) {
  lock_.lock();
  gate_.acquire();
  {
    const MutexLock guard(tables_);
    for (auto& [name, observers] : subscribers_) {
      std::erase_if(observers, [object](const auto& observer) { return observer->object() == object; });
    }
  }
  lock_.unlock();  // in the order of taking
  gate_.release();
}

void PanelClient::removeFrom(const std::vector<std::string>& names, const ValueObserver& observer) {
  lock_.lock();
  gate_.acquire();
  {
    const MutexLock guard(tables_);
    for (const std::string& name : names) {
      const auto entry = subscribers_.find(name);
      if (entry == subscribers_.end()) continue;
      std::erase_if(entry->second, [&observer](const auto& other) { return other->same(observer); });
    }
  }
  lock_.unlock();
  gate_.release();
}

void PanelClient::addTrigger(const std::string& name, std::shared_ptr<ValueObserver> observer) {
  const MutexLock guard(tables_);
  triggers_[name].push_back(std::move(observer));
}

void PanelClient::addStatusListener(StatusListener& listener) {
  const MutexLock guard(tables_);
  statusListeners_.push_back(&listener);
}

PanelClient::Observers PanelClient::observersOf(ObserverTable PanelClient::*table,
                                                const std::string& name) const {
  const MutexLock guard(tables_);
  const auto entry = (this->*table).find(name);
  return entry == (this->*table).end() ? Observers{} : entry->second;
}

void initPanelClient() {
  xctlInit();
  if (theClient == nullptr) theClient = new (std::nothrow) PanelClient;
}

PanelClient* panelClient() { return theClient; }

}  // namespace tessaly
