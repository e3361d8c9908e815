#pragma once

#include <functional>
#include <utility>

#include <QMetaObject>
#include <QObject>

namespace tessaly {

// Runs a step on the object's thread, at the next turn of its event loop. Called on any thread; steps of an
// object that is gone do not run.
[[nodiscard]] inline std::function<void(std::function<void()>)> postTo(QObject* object) {
  return [object](std::function<void()> step) {
    QMetaObject::invokeMethod(object, std::move(step), Qt::QueuedConnection);
  };
}

}  // namespace tessaly
