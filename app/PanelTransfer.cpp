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

constexpr int kThousandths = 1000;
constexpr int kLookMilliseconds = 20;  // between two looks whether what blocks is over

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

// In front of a dialog that keeps the window from being used.
QWidget* ownerIn(QWidget* window) {
  QWidget* const modal = QApplication::activeModalWidget();
  return modal != nullptr ? modal : window;
}

class Progress : public QProgressDialog {
 public:
  Progress(const QString& label, bool withCancel, QWidget* window)
      : QProgressDialog(label, PanelTransfer::tr("Cancel"), 0, 0, ownerIn(window)) {
    setWindowModality(Qt::NonModal);  // see InputGuard
    setWindowTitle(QLatin1String(kProgramName));
    setMinimumDuration(INT_MAX);  // shown by our own timer
    setAutoClose(false);
    setAutoReset(false);
    if (!withCancel) setCancelButton(nullptr);
  }
};

}  // namespace

TransferOutcome PanelTransfer::run(const QString& label, Operation operation) {
  TransferOutcome outcome;
  // What was sent in part is taken back, which may take its time and can be cancelled, too.
  const bool ran =
      runBeside(label, {[&](const Tell&) { outcome = operation(macros_); }, [this] { macros_.cancel(); },
                        tr("Putting back what the panel held before")});
  return ran ? outcome : TransferOutcome{FtpClient::Result::kFailed};
}

bool PanelTransfer::runLong(const QString& label, const std::function<void(const Tell& tell)>& work,
                            const std::function<void()>& cancel) {
  return runBeside(label, {work, cancel, {}});
}

// The result is looked for, not told: who is given up tells nobody.
bool PanelTransfer::await(Kind kind, const QString& label, const std::function<void()>& task,
                          const Over& over) {
  try {
    std::thread(task).detach();
  } catch (const std::system_error&) {
    task();  // no thread to be had
  }
  if (over(std::chrono::milliseconds(kQuietMilliseconds))) return true;
  const EventGate::Hold hold(&gate_);
  QEventLoop loop;
  bool given = false, done = false;
  const Work waiting{
      {}, kind == Kind::kReads ? std::function<void()>([&] { given = true, loop.quit(); }) : nullptr, {}};
  const Work* const before = std::exchange(running_, &waiting);
  Progress progress(label, waiting.cancel != nullptr, window_);
  QObject::connect(&progress, &QProgressDialog::canceled, &loop, [this] { cancel(); });
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, &loop, [&] {
    done = over(std::chrono::milliseconds(0));
    if (done) loop.quit();
  });
  look.start(kLookMilliseconds);
  const InputGuard guard(progress);
  progress.show();
  while (!done && !given) loop.exec();
  running_ = before;
  return done;
}

void PanelTransfer::cancel() {
  if (running_ != nullptr && running_->cancel) running_->cancel();
}

bool PanelTransfer::runBeside(const QString& label, const Work& work) {
  const EventGate::Hold hold(&gate_);
  QEventLoop loop;
  bool finished = false;  // GUI thread
  Progress progress(label, work.cancel != nullptr, window_);
  const Tell tell = [&progress](int thousandths) {
    QMetaObject::invokeMethod(
        &progress,
        [&progress, thousandths] {
          progress.setMaximum(kThousandths);
          progress.setValue(thousandths);
        },
        Qt::QueuedConnection);
  };
  std::thread worker;
  try {
    worker = std::thread([&] {
      work.run(tell);
      QMetaObject::invokeMethod(
          &loop,
          [&] {
            finished = true;
            loop.quit();
          },
          Qt::QueuedConnection);
    });
  } catch (const std::system_error&) {
    return false;  // no thread to be had
  }
  running_ = &work;

  QObject::connect(&progress, &QProgressDialog::canceled, &loop, [&] {
    cancel();
    QTimer::singleShot(kQuietMilliseconds, &progress, [&] {
      if (finished || work.cancelling.isEmpty()) return;
      progress.reset();
      progress.setLabelText(work.cancelling);
      progress.show();
    });
  });
  QTimer late;
  late.setSingleShot(true);
  QObject::connect(&late, &QTimer::timeout, &loop, &QEventLoop::quit);
  late.start(kQuietMilliseconds);

  // Input of the first moments is not lost: it is handled once the work is over or the progress is shown.
  loop.exec(QEventLoop::ExcludeUserInputEvents);
  if (!finished) {
    const InputGuard guard(progress);
    progress.show();
    while (!finished) loop.exec();
  }
  worker.join();
  running_ = nullptr;
  return true;
}

}  // namespace tessaly
