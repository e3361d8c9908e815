#pragma once

#include <functional>

#include <QObject>

namespace tessaly {

// The one way from another thread to that of the windows: what runs a step on the object's thread, at the
// next turn of its event loop. Asked for on that thread; what it gives may be called on any. Steps of an
// object that is gone do not run.
using Post = std::function<void(std::function<void()> step)>;
[[nodiscard]] Post postTo(QObject* object);

}  // namespace tessaly
