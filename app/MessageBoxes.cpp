#include "app/MessageBoxes.h"

#include <QMessageBox>
#include <QThread>

#include "widgets/DialogText.h"

namespace tessaly {

namespace {

QMessageBox::Icon boxIcon(MessageIcon icon) {
  switch (icon) {
    case MessageIcon::kNone:
      return QMessageBox::NoIcon;
    case MessageIcon::kExclamation:
      return QMessageBox::Warning;
    case MessageIcon::kQuestion:
      return QMessageBox::Question;
  }
  return QMessageBox::NoIcon;
}

}  // namespace

bool MessageBoxes::run(const QString& text, MessageIcon icon, MessageButtons buttons) {
  const EventGate::Hold hold(gate_);
  QMessageBox box(boxIcon(icon), QLatin1String(kProgramName), text,
                  buttons == MessageButtons::kOk ? QMessageBox::Ok : QMessageBox::Ok | QMessageBox::Cancel,
                  window_);
  box.setTextFormat(Qt::PlainText);
  box.setDefaultButton(QMessageBox::Ok);
  return box.exec() == QMessageBox::Ok;
}

void MessageBoxes::show(const std::string& text, MessageIcon icon) {
  const QString shownText = shownLines(text);
  if (QThread::currentThread() == thread()) {
    run(shownText, icon, MessageButtons::kOk);
    return;
  }
  QMetaObject::invokeMethod(
      this,
      [this, shownText, icon] {
        const auto box = [this, shownText, icon] { run(shownText, icon, MessageButtons::kOk); };
        if (gate_)
          gate_->whenFree("box " + std::to_string(++waiting_), box);
        else
          box();
      },
      Qt::QueuedConnection);
}

bool MessageBoxes::ask(const std::string& text, MessageIcon icon) {
  const QString shownText = shownLines(text);
  if (QThread::currentThread() == thread()) return run(shownText, icon, MessageButtons::kOkCancel);
  bool answer = false;
  QMetaObject::invokeMethod(
      this, [&] { answer = run(shownText, icon, MessageButtons::kOkCancel); }, Qt::BlockingQueuedConnection);
  return answer;
}

}  // namespace tessaly
