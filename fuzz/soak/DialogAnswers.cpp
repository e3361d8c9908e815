#include "fuzz/soak/DialogAnswers.h"

#include <algorithm>
#include <utility>

#include <QApplication>
#include <QMessageBox>
#include <QProgressDialog>
#include <QPushButton>
#include <QTest>

#include "tests/editors/DialogDriver.h"

namespace tessaly {
namespace {

constexpr int kLookMilliseconds = 2;
constexpr const char* kPressed = "pressed";

void pressIn(QMessageBox& box, const std::vector<QString>& captions) {
  for (const QString& caption : captions) {
    for (QAbstractButton* button : box.buttons()) {
      if (button->text().remove(QLatin1Char('&')) != caption) continue;
      QTest::mouseClick(button, Qt::LeftButton);
      return;
    }
  }
  throw std::runtime_error("no button to press in: " + box.text().toStdString());
}

// Each once. It is no modal window.
void pressCancel() {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    auto* const progress = qobject_cast<QProgressDialog*>(window);
    auto* const button = progress != nullptr ? progress->findChild<QPushButton*>() : nullptr;
    if (button == nullptr || !button->isVisible() || progress->property(kPressed).toBool()) continue;
    progress->setProperty(kPressed, true);
    QTest::mouseClick(button, Qt::LeftButton);
  }
}

}  // namespace

DialogAnswers::DialogAnswers() {
  connect(&timer_, &QTimer::timeout, this, &DialogAnswers::look);
  timer_.start(kLookMilliseconds);
}

std::vector<std::string> DialogAnswers::takeTexts() { return std::exchange(texts_, {}); }

std::string DialogAnswers::takeProblem() { return std::exchange(problem_, {}); }

void DialogAnswers::look() {
  timer_.start(
      kLookMilliseconds);  // anew: one that is being handled does not ring for a box within an answer
  if (cancelProgress) pressCancel();
  auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
  if (dialog == nullptr || !dialog->isVisible()) return;
  if (std::find(answering_.begin(), answering_.end(), dialog) != answering_.end()) return;
  answering_.push_back(dialog);
  // An exception must not cross the event loop.
  try {
    answerOne(*dialog);
  } catch (const std::exception& problem) {
    if (problem_.empty()) problem_ = problem.what();
    dialog->reject();
  }
  std::erase(answering_, dialog);
}

void makeClipCommand(QDialog& dialog, const char* value, const char* button) {
  const DialogDriver user(dialog);
  user.type("search1", "ME2");
  user.choose("results1", "ME2");
  user.type("search2", "CLIP");
  user.choose("results2", "CLIP");
  user.choose("found", "ME 2 Key 1 Clip Set");
  user.type("value", value);
  user.click(button);
}

void DialogAnswers::answerOne(QDialog& dialog) {
  if (qobject_cast<QProgressDialog*>(&dialog) != nullptr) return;
  if (auto* box = qobject_cast<QMessageBox*>(&dialog)) {
    texts_.push_back(box->text().toStdString());
    pressIn(*box, boxButtons);
    return;
  }
  if (answer) answer(dialog);
  if (dialog.isVisible()) dialog.reject();
}

}  // namespace tessaly
