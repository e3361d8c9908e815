#include "app/MessageBoxes.h"

#include <future>
#include <memory>
#include <utility>

#include <QMessageBox>
#include <QPushButton>
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

MessageChoice MessageBoxes::run(const QString& text, MessageIcon icon, MessageButtons buttons,
                                const QString& other) {
  const EventGate::Hold hold(gate_);
  QMessageBox box(boxIcon(icon), QLatin1String(kProgramName), text,
                  buttons == MessageButtons::kOk ? QMessageBox::Ok : QMessageBox::Ok | QMessageBox::Cancel,
                  window_);
  const QPushButton* third = other.isEmpty() ? nullptr : box.addButton(other, QMessageBox::ActionRole);
  box.setTextFormat(Qt::PlainText);
  box.setDefaultButton(QMessageBox::Ok);
  if (box.exec() == QMessageBox::Ok) return MessageChoice::kOk;
  return third != nullptr && box.clickedButton() == third ? MessageChoice::kOther : MessageChoice::kCancel;
}

void MessageBoxes::show(const std::string& text, MessageIcon icon) {
  const QString shownText = shownLines(text);
  if (QThread::currentThread() == thread()) {
    run(shownText, icon, MessageButtons::kOk);
    return;
  }
  post_([this, shownText, icon] {
    const auto box = [this, shownText, icon] { run(shownText, icon, MessageButtons::kOk); };
    if (gate_)
      gate_->whenFree("box " + std::to_string(++waiting_), box);
    else
      box();
  });
}

MessageChoice MessageBoxes::askAnywhere(const std::string& text, MessageIcon icon, const QString& other) {
  const QString shownText = shownLines(text);
  if (QThread::currentThread() == thread()) return run(shownText, icon, MessageButtons::kOkCancel, other);
  auto answer = std::make_shared<std::promise<MessageChoice>>();
  std::future<MessageChoice> chosen = answer->get_future();
  post_([&, answer = std::move(answer)] {
    answer->set_value(run(shownText, icon, MessageButtons::kOkCancel, other));
  });
  try {
    return chosen.get();
  } catch (const std::future_error&) {  // there are no boxes any more
    return MessageChoice::kCancel;
  }
}

bool MessageBoxes::ask(const std::string& text, MessageIcon icon) {
  return askAnywhere(text, icon, {}) == MessageChoice::kOk;
}

MessageChoice MessageBoxes::choose(const std::string& text, const std::string& other) {
  return askAnywhere(text, MessageIcon::kQuestion, QString::fromStdString(other));
}

}  // namespace tessaly
