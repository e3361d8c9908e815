#include "widgets/PostTo.h"

#include <atomic>
#include <utility>

#include <QCoreApplication>
#include <QEvent>

namespace tessaly {

namespace {

const auto kStep = static_cast<QEvent::Type>(QEvent::registerEventType());

class StepEvent : public QEvent {
 public:
  explicit StepEvent(std::function<void()> step) : QEvent(kStep), step_(std::move(step)) {}
  void run() const { step_(); }

 private:
  const std::function<void()> step_;
};

// Goes with the object that it belongs to, and what is posted with it.
class StepInbox : public QObject {
 public:
  using QObject::QObject;

  void post(std::function<void()> step) {
    auto* posted = new StepEvent(std::move(step));
    posted_.fetch_add(1, std::memory_order_release);
    QCoreApplication::postEvent(this, posted);
  }

 protected:
  bool event(QEvent* event) override {
    // The toolkit's queue orders the two threads, but the sanitizer of threads does not see into it.
    static_cast<void>(posted_.load(std::memory_order_acquire));
    if (event->type() != kStep) return QObject::event(event);
    static_cast<const StepEvent*>(event)->run();
    return true;
  }

 private:
  std::atomic<unsigned> posted_{0};
};

}  // namespace

Post postTo(QObject* object) {
  return [inbox = new StepInbox(object)](std::function<void()> step) { inbox->post(std::move(step)); };
}

}  // namespace tessaly
