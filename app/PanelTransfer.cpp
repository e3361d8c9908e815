#include "app/PanelTransfer.h"

#include <system_error>
#include <thread>

#include <QEventLoop>
#include <QProgressDialog>
#include <QTimer>

#include "app/MessageBoxes.h"

namespace tessaly {

namespace {
constexpr int kQuietMilliseconds = 300;  // a transfer that is over by then shows nothing
}

TransferOutcome PanelTransfer::run(const QString& label, Operation operation) {
  busy_ = true;
  TransferOutcome outcome;
  QEventLoop loop;
  bool finished = false;  // GUI thread
  std::thread worker;
  try {
    worker = std::thread([&] {
      outcome = operation(macros_);
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
    return {FtpClient::Result::kFailed};
  }

  QProgressDialog progress(label, tr("Cancel"), 0, 0, window_);
  progress.setWindowModality(Qt::ApplicationModal);
  progress.setWindowTitle(QLatin1String(kProgramName));
  progress.setMinimumDuration(INT_MAX);  // shown by our own timer
  progress.setAutoClose(false);
  progress.setAutoReset(false);
  QObject::connect(&progress, &QProgressDialog::canceled, &loop, [this] { macros_.cancel(); });
  QTimer late;
  late.setSingleShot(true);
  QObject::connect(&late, &QTimer::timeout, &loop, &QEventLoop::quit);
  late.start(kQuietMilliseconds);

  // Input of the first moments is not lost: it is handled once the transfer is over or the progress is shown.
  loop.exec(QEventLoop::ExcludeUserInputEvents);
  if (!finished) {
    progress.show();
    while (!finished) loop.exec();
  }
  worker.join();
  busy_ = false;
  return outcome;
}

}  // namespace tessaly
