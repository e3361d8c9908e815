#include "bench/window/StallWatch.h"

#include <algorithm>

#include <QCoreApplication>
#include <QEvent>
#include <QThread>

namespace tessaly::bench {

namespace {

constexpr double kNanosecond = 1e-9;
constexpr unsigned long kRest = 50;  // microseconds between two turns

}  // namespace

StallWatch::StallWatch() { QCoreApplication::instance()->installEventFilter(this); }

void StallWatch::turn() {
  stretch_.start();
  QCoreApplication::processEvents();
  endStretch();
  QThread::usleep(kRest);
}

void StallWatch::endStretch() {
  longest_ = std::max(longest_, static_cast<double>(stretch_.nsecsElapsed()) * kNanosecond);
  stretch_.start();
}

bool StallWatch::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::UpdateRequest) endStretch();
  return QObject::eventFilter(watched, event);
}

}  // namespace tessaly::bench
