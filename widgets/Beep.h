#pragma once

#include <functional>

#include <QApplication>

namespace tessaly {

// The exclamation sound: once for each refused character and each replaced or invalid value. Called on the
// GUI thread.
using Beep = std::function<void()>;

[[nodiscard]] inline Beep systemBeep() { return &QApplication::beep; }

}  // namespace tessaly
