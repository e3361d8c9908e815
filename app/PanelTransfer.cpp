#include "app/PanelTransfer.h"

#include <system_error>
#include <thread>

#include <QApplication>
#include <QEventLoop>
#include <QProgressDialog>
#include <QShortcut>
#include <QTimer>
#include <QWindow>

#include "app/MessageBoxes.h"

namespace tessaly {

namespace {

constexpr int kQuietMilliseconds = 300;  // a transfer that is over by then shows nothing

// Takes the user's input from every window but one. A modal window would keep the window manager's close
// button from the others, too.
class InputGuard : public QObject {
 public:
  explicit InputGuard(QWidget& allowed) : allowed_(allowed) { qApp->installEventFilter(this); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    switch (event->type()) {
      case QEvent::MouseButtonPress:
      case QEvent::MouseButtonRelease:
      case QEvent::MouseButtonDblClick:
      case QEvent::Wheel:
      case QEvent::KeyPress:
      case QEvent::KeyRelease:
      case QEvent::Shortcut:
      case QEvent::ShortcutOverride:
      case QEvent::ContextMenu:
      case QEvent::TouchBegin:
      case QEvent::TouchUpdate:
      case QEvent::TouchEnd:
      case QEvent::DragEnter:
      case QEvent::Drop:
        return !isAllowed(watched);
      default:
        return false;
    }
  }

 private:
  [[nodiscard]] bool isAllowed(QObject* watched) const {
    if (const auto* widget = qobject_cast<QWidget*>(watched))
      return widget == &allowed_ || allowed_.isAncestorOf(widget);
    if (const auto* shortcut = qobject_cast<QShortcut*>(watched))
      return allowed_.isAncestorOf(static_cast<QWidget*>(shortcut->parent()));
    return watched == static_cast<QObject*>(allowed_.windowHandle());
  }

  QWidget& allowed_;
};

}  // namespace

TransferOutcome PanelTransfer::run(const QString& label, Operation operation) {
  TransferOutcome outcome;
  if (work(
          label, [&] { outcome = operation(macros_); }, [this] { macros_.cancel(); }))
    return outcome;
  return {FtpClient::Result::kFailed};
}

void PanelTransfer::cancel() {
  if (cancel_) cancel_();
}

bool PanelTransfer::work(const QString& label, const std::function<void()>& job,
                         const std::function<void()>& giveUp) {
  const EventGate::Hold hold(&gate_);
  busy_ = true;
  QEventLoop loop;
  bool finished = false;  // GUI thread
  std::thread worker;
  try {
    worker = std::thread([&] {
      job();
      QMetaObject::invokeMethod(
          &loop,
          [&] {
            finished = true;
            loop.quit();
          },
          Qt::QueuedConnection);
    });
  } catch (const std::system_error&) {
    // No thread to be had.
    busy_ = false;
    return false;
  }
  cancel_ = giveUp;

  QProgressDialog progress(label, tr("Cancel"), 0, 0, window_);
  progress.setWindowModality(Qt::NonModal);  // see InputGuard
  progress.setWindowTitle(QLatin1String(kProgramName));
  progress.setMinimumDuration(INT_MAX);  // shown by our own timer
  progress.setAutoClose(false);
  progress.setAutoReset(false);
  // What was sent in part is taken back, which may take its time and can be cancelled, too.
  QObject::connect(&progress, &QProgressDialog::canceled, &loop, [&] {
    giveUp();
    QTimer::singleShot(kQuietMilliseconds, &progress, [&] {
      if (finished) return;
      progress.reset();
      progress.setLabelText(tr("Putting back what the panel held before"));
      progress.show();
    });
  });
  QTimer late;
  late.setSingleShot(true);
  QObject::connect(&late, &QTimer::timeout, &loop, &QEventLoop::quit);
  late.start(kQuietMilliseconds);

  // Input of the first moments is not lost: it is handled once the transfer is over or the progress is shown.
  loop.exec(QEventLoop::ExcludeUserInputEvents);
  if (!finished) {
    const InputGuard guard(progress);
    progress.show();
    while (!finished) loop.exec();
  }
  worker.join();
  busy_ = false;
  cancel_ = {};
  return true;
}

}  // namespace tessaly
