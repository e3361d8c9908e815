#include "app/PanelTransfer.h"

#include <system_error>
#include <thread>

#include <QApplication>
#include <QCloseEvent>
#include <QEventLoop>
#include <QProgressDialog>
#include <QShortcut>
#include <QTimer>
#include <QWindow>

#include "app/MessageBoxes.h"
#include "platform/SystemFailure.h"
#include "platform/WayBack.h"
#include "widgets/PostTo.h"

namespace tessaly {

namespace {

constexpr std::chrono::milliseconds kWriteCancel{
    2000};  // a slow disk is not cancelled by a key meant for the window

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
      : QProgressDialog(label, {}, 0, 0, ownerIn(window)) {
    setWindowModality(Qt::NonModal);  // see InputGuard
    setWindowTitle(QLatin1String(kProgramName));
    setMinimumDuration(INT_MAX);  // shown by our own timer
    setAutoClose(false);
    setAutoReset(false);
    if (withCancel) offerCancel();
  }

  void offerCancel() {
    offered_ = true;
    setCancelButtonText(PanelTransfer::tr("Cancel"));
  }
  [[nodiscard]] bool offered() const { return offered_; }
  // Pressing Cancel hides it.
  void go(const QString& label) {
    reset();
    setLabelText(label);
    show();
  }
  void reject() override {}  // what is waited for stays in sight

 protected:
  void closeEvent(QCloseEvent* event) override {
    event->ignore();
    if (offered_) emit canceled();
  }

 private:
  bool offered_ = false;
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

Outcome PanelTransfer::write(const QString& label, std::function<Outcome()> work) {
  struct CountedOut {
    ~CountedOut() { --writing_; }
  };
  const auto way = std::make_shared<WayBack>();
  ++writing_;
  const auto task = std::make_shared<std::packaged_task<Outcome()>>(
      [way, turn = turn_, work = std::move(work)]() -> Outcome {
        const CountedOut counted;  // also when the work throws
        const std::scoped_lock guard(*turn);
        const WayBack::Walk walk(*way);
        return WayBack::givenUp() ? cancelledFailure() : work();
      });
  std::future<Outcome> result = task->get_future();
  WayBack::Left left{};
  const auto leave = [&] {
    left = way->giveUp();
    return true;
  };
  if (await({label, [task] { (*task)(); }, isOver(result), leave, kWriteCancel, true})) return result.get();
  switch (left) {
    case WayBack::Left::kAsBefore:
      return cancelledFailure();
    case WayBack::Left::kUnknown:
      return Failure{Failure::Kind::kCancelled, kMayBeDoneYet};
    case WayBack::Left::kChanged:
      return Failure{Failure::Kind::kUnflushed, "is there, but may not survive a power cut"};
  }
  return {};
}

bool PanelTransfer::finish(const QString& label, const std::function<void()>& work) {
  const auto task = std::make_shared<std::packaged_task<void()>>(work);
  const std::future<void> done = task->get_future();
  bool wanted = true;
  const auto leave = [&wanted] { return wanted = false; };
  static_cast<void>(await({label, [task] { (*task)(); }, isOver(done), leave, kWriteCancel, true}));
  return wanted;
}

// The result is looked for, not told: who is given up tells nobody.
bool PanelTransfer::await(const Waiting& waiting) {
  try {
    std::thread(waiting.task).detach();
  } catch (const std::system_error&) {
    waiting.task();  // no thread to be had
  }
  return waiting.over(kQuiet) || showWaiting(waiting);
}

bool PanelTransfer::showWaiting(const Waiting& waiting) {
  const EventGate::Hold hold(&gate_);
  QEventLoop loop;
  bool left = false, done = false;
  Progress progress(waiting.label, waiting.offered <= kQuiet, window_);
  const auto lookWhether = [&] {
    done = waiting.over(std::chrono::milliseconds(0));
    if (done) loop.quit();
  };
  const auto cancelled = [&] {
    if (progress.offered()) lookWhether();
    if (!progress.offered() || done) return;
    left = waiting.leave();
    if (left)
      loop.quit();
    else
      progress.go(tr("Cancelling as soon as the disk answers: %1").arg(waiting.label));
  };
  const Work work{{}, cancelled, {}, waiting.writes};
  const Work* const before = std::exchange(running_, &work);
  QObject::connect(&progress, &QProgressDialog::canceled, &loop, cancelled);
  QTimer look, offer;
  QObject::connect(&look, &QTimer::timeout, &loop, lookWhether);
  look.start(kLookMilliseconds);
  QObject::connect(&offer, &QTimer::timeout, &progress, &Progress::offerCancel);
  offer.setSingleShot(true);
  if (!progress.offered()) offer.start(waiting.offered - kQuiet);
  const InputGuard guard(progress);
  progress.show();
  while (!done && !left) loop.exec();
  running_ = before;
  return done;
}

void PanelTransfer::cancel(End end) {
  if (running_ == nullptr || !running_->cancel) return;
  if (!running_->writes || end == End::kWriting) running_->cancel();
}

bool PanelTransfer::runBeside(const QString& label, const Work& work) {
  const EventGate::Hold hold(&gate_);
  Progress progress(label, work.cancel != nullptr, window_);
  QEventLoop loop;
  bool finished = false;  // GUI thread
  const auto post = postTo(&loop);
  const Tell tell = [&progress, &post](int thousandths) {
    post([&progress, thousandths] {
      progress.setMaximum(kThousandths);
      progress.setValue(thousandths);
    });
  };
  std::thread worker;
  try {
    worker = std::thread([&] {
      work.run(tell);
      post([&] {
        finished = true;
        loop.quit();
      });
    });
  } catch (const std::system_error&) {
    return false;  // no thread to be had
  }
  running_ = &work;

  QObject::connect(&progress, &QProgressDialog::canceled, &loop, [&] {
    cancel();
    QTimer::singleShot(kQuiet, &progress, [&] {
      if (finished || work.cancelling.isEmpty()) return;
      progress.go(work.cancelling);
    });
  });
  QTimer late;
  late.setSingleShot(true);
  QObject::connect(&late, &QTimer::timeout, &loop, &QEventLoop::quit);
  late.start(kQuiet);

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
