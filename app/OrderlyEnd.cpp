#include "app/OrderlyEnd.h"

#include <QGuiApplication>
#include <QSessionManager>
#include <QTimer>

namespace tessaly {

namespace {
constexpr int kAgainMilliseconds = 50;
}

OrderlyEnd::OrderlyEnd(Steps steps)
    : steps_(std::move(steps)), notifier_(signals_.descriptor(), QSocketNotifier::Read) {
  notifier_.setEnabled(signals_.descriptor() >= 0);
  connect(&notifier_, &QSocketNotifier::activated, this, [this] {
    notifier_.setEnabled(false);
    end();
  });
  connect(
      qGuiApp, &QGuiApplication::commitDataRequest, this, [this](QSessionManager&) { steps_.keep(); },
      Qt::DirectConnection);
  qGuiApp->installEventFilter(this);
}

bool OrderlyEnd::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::Quit || watched != qGuiApp) return false;
  end();
  return true;
}

// Whatever box or dialog is open: leaving the event loop closes it as Escape would.
void OrderlyEnd::end() {
  if (ending_) return;
  ending_ = steps_.end();
  if (ending_)
    QCoreApplication::exit(0);
  else
    QTimer::singleShot(kAgainMilliseconds, this, &OrderlyEnd::end);
}

}  // namespace tessaly
