#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <semaphore>
#include <string>
#include <vector>

#include "link/PanelTransport.h"
#include "link/ValueObserver.h"
#include "platform/HostAddress.h"
#include "platform/ThreadAnnotations.h"
#include "xctl/XctlLib.h"

namespace tessaly {

inline constexpr std::uint16_t kPanelPort = 56662;  // the panel's control service
inline constexpr int kPanelConnected = 0;           // status numbers of the library; it may report others
inline constexpr int kPanelNotConnected = 1;

// Told of every change of the connection's status, on the library's thread.
class StatusListener {
 public:
  virtual ~StatusListener() = default;
  virtual void connectionStatusChanged(int status) = 0;
};

// The one connection to the panel: subscriptions with a value cache, function calls, and the library's
// callbacks.
//
// Threads: `connect` blocks and belongs on a worker thread. All else may be called from any thread, except
// that unsubscribe and unsubscribeOwner may not be called from an observer on the library's thread, which
// holds `gate`. Observers are called on the library's thread under `gate`, or, for a value that is already
// known, under `lock` on the subscribing thread; they must never wait for a thread that uses this object.
// Once unsubscribe or unsubscribeOwner has returned, no delivery to what it removed is under way.
class PanelClient : public IXCTLClient {
 public:
  template <class Owner>
  using Operation = typename MemberObserver<Owner>::Operation;

  explicit PanelClient(std::unique_ptr<PanelTransport> connection = makeLibraryTransport());

  // The library's callbacks.
  void triggerValueReceived(const std::string& name, const ParameterValue& value) override;
  void subscribedValueReceived(const std::string& name, const ParameterValue& value) override;
  // Status 1 forgets all values, subscriptions and triggers: after a reconnection everyone subscribes again.
  void connectionStatusChanged(int status) override;

  ~PanelClient() override;

  // The library's answer; false without a connection.
  virtual bool callFunction(const std::string& functionId, const ParameterList& parameters);

  // Whether what is called goes to the panel at this address, as far as it goes anywhere.
  [[nodiscard]] bool leadsTo(const HostAddress& address) const { return host() == address; }
  // The host of the connection that stands, or stood last, as it was given; empty before the first.
  [[nodiscard]] HostAddress host() const;

  // Blocks until connected (true) or failed. An existing connection is ended first. Calls queue up behind
  // each other. `host` is an address, with ":port" when the panel listens elsewhere than on kPanelPort.
  [[nodiscard]] bool connect(const std::string& host);

  // For an attempt that its user may give up meanwhile: `wanted` is asked when its turn has come, and `keep`
  // once the library has connected. When either says no, no connection is left behind and the result is
  // false.
  [[nodiscard]] bool connect(const std::string& host, const std::function<bool()>& wanted,
                             const std::function<bool()>& keep);

  // Ends an attempt that blocks in the library although `wanted` says no by now: the next one need not wait
  // for it. Not from an observer, nor while holding what `wanted` takes.
  void endUnwantedAttempt();

  // Does nothing unless connected. Always true.
  bool disconnect();

  // Calls the operation for every value of `name` from now on, and at once when a value is known. True when
  // the observer was added and the library did not refuse; false and nothing registered while the status
  // is 1, also when it becomes 1 before the observer is in the table: nobody would ask for it on the next
  // connection. A second subscription of the same observer delivers the known value, or an empty one, and
  // returns false. When the library refuses, the result is false and the observer stays.
  template <class Owner>
  bool subscribe(const std::string& name, Owner* object, Operation<Owner> operation) {
    return subscribe(name, std::make_shared<MemberObserver<Owner>>(object, operation));
  }

  // Removes every observer of `object`. Nothing is sent to the library, which goes on sending: the values of
  // the names stay known.
  void unsubscribeOwner(const void* object);

  // Removes this one observer from one name, or from many names with the locks taken once.
  template <class Owner>
  void unsubscribe(const std::string& name, Owner* object, Operation<Owner> operation) {
    unsubscribe(std::vector<std::string>{name}, object, operation);
  }
  template <class Owner>
  void unsubscribe(const std::vector<std::string>& names, Owner* object, Operation<Owner> operation) {
    removeFrom(names, MemberObserver<Owner>(object, operation));
  }

  // Triggers are values without a memory. The observer stays until the status becomes 1; `object` outlives
  // that.
  template <class Owner>
  void observeTrigger(const std::string& name, Owner* object, Operation<Owner> operation) {
    addTrigger(name, std::make_shared<MemberObserver<Owner>>(object, operation));
  }

  // `listener` outlives this object.
  void addStatusListener(StatusListener& listener);

  // The last status that the library reported; 1 at first.
  [[nodiscard]] int state() const { return state_; }

  // How often the status has become 0: tells one connection from the next.
  [[nodiscard]] unsigned connectionNumber() const { return connectionNumber_; }

  // Why the last connection ended by itself, as the end of a sentence; empty when that is not known.
  [[nodiscard]] std::string lossReason() const { return connection_->endReason(); }

  // Writes calls and values to the standard output, a line each.
  void setVerbose(bool verbose) { verbose_ = verbose; }

 private:
  using Observers = std::vector<std::shared_ptr<ValueObserver>>;
  using ObserverTable = std::map<std::string, Observers>;

  bool subscribe(const std::string& name, std::shared_ptr<ValueObserver> observer);
  void removeFrom(const std::vector<std::string>& names, const ValueObserver& observer);
  void addTrigger(const std::string& name, std::shared_ptr<ValueObserver> observer);
  void setAttempt(const std::function<bool()>* wanted);
  [[nodiscard]] Observers observersOf(ObserverTable PanelClient::*table, const std::string& name) const;

  std::string text_;               // unused; part of the object's fixed layout
  std::recursive_mutex lock_;      // serialises subscribers; an observer may subscribe from its delivery
  std::binary_semaphore gate_{1};  // serialises the value callbacks; taken after lock_ where both are taken
  // Subscribers hold lock_, callbacks gate_, the status callback neither: the tables need a guard of their
  // own. Held for the few lines that touch one, never while an observer or the library is called. The status
  // changes under it, too, so that whoever looks into a table there knows of which connection it is.
  mutable Mutex tables_;
  std::map<std::string, std::string> values_ GUARDED_BY(tables_);
  std::vector<StatusListener*> statusListeners_ GUARDED_BY(tables_);
  ObserverTable subscribers_ GUARDED_BY(tables_);
  ObserverTable triggers_ GUARDED_BY(tables_);
  HostAddress attemptedHost_ GUARDED_BY(tables_);
  HostAddress host_ GUARDED_BY(tables_);
  std::unique_ptr<PanelTransport> connection_;
  std::atomic<int> state_{kPanelNotConnected};
  std::atomic<unsigned> connectionNumber_{0};
  std::atomic<bool> verbose_{false};

  Mutex connecting_;  // one connect at a time; taken by worker threads only
  // The attempt that is in the library. Held while an unwanted one is ended, so that this never hits the
  // next.
  Mutex attempt_;
  const std::function<bool()>* attempted_ GUARDED_BY(attempt_) = nullptr;  // whether it is wanted
};

// Initialises the library and creates the one client unless it exists. Called by the start-up, before any
// other thread uses the client. The client is never freed.
void initPanelClient();

// The one client, or null before initPanelClient.
[[nodiscard]] PanelClient* panelClient();

}  // namespace tessaly
