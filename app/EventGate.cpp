#include "app/EventGate.h"

#include <utility>

namespace tessaly {

void EventGate::whenFree(const std::string& name, std::function<void()> action) {
  if (!held() && waiting_.empty())
    action();
  else
    waiting_[name] = std::move(action);
}

void EventGate::leave() {
  if (--holds_ == 0 && !waiting_.empty())
    QMetaObject::invokeMethod(this, &EventGate::release, Qt::QueuedConnection);
}

void EventGate::release() {
  // What runs may hold again; the rest then waits for that.
  while (!held() && !waiting_.empty()) {
    auto next = waiting_.extract(waiting_.begin());
    next.mapped()();
  }
}

}  // namespace tessaly
