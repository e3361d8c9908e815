#pragma once

#include <functional>
#include <map>
#include <string>

#include <QObject>

namespace tessaly {

// The one place that knows what may run while a handler waits in an event loop of its own. A message box,
// a transfer and a wait for the disk run such a loop in the middle of a handler, which still holds what it
// looked up before: whatever would change a pane (names and workplaces that a panel publishes, the end of a
// value update, the end of an attempt to connect, the loaded dictionary, boxes of other threads) goes through
// `whenFree` and waits until the handler has returned. Painting, the box's own input and the collecting of
// values go on. The dialogs that build commands hold nothing back: their handlers look everything up again
// when the dialog ends. GUI thread.
class EventGate : public QObject {
  Q_OBJECT

 public:
  using QObject::QObject;

  class Hold {
   public:
    explicit Hold(EventGate* gate) : gate_(gate) {
      if (gate_ != nullptr) ++gate_->holds_;
    }
    ~Hold() {
      if (gate_ != nullptr) gate_->leave();
    }
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;

   private:
    EventGate* gate_;
  };

  [[nodiscard]] bool held() const { return holds_ > 0; }

  // At once, or from the event loop once nothing holds any more. What waits under a name is replaced by what
  // comes later under it.
  void whenFree(const std::string& name, std::function<void()> action);

 private:
  void leave();
  void release();

  int holds_ = 0;
  std::map<std::string, std::function<void()>> waiting_;
};

}  // namespace tessaly
