#pragma once

#include <functional>
#include <string>
#include <vector>

#include <QDialog>
#include <QTimer>

namespace tessaly {

// Stands in for the person before the modal dialogs: looks for the one on top again and again, also inside
// the loops that the program runs for them, and answers it. GUI thread.
class DialogAnswers : public QObject {
  Q_OBJECT

 public:
  using Answer = std::function<void(QDialog& dialog)>;

  DialogAnswers();

  // For every dialog that is neither a message box nor a progress. It is cancelled when the answer leaves it
  // open.
  Answer answer;
  // Captions of the button to press in message boxes, tried in this order.
  std::vector<QString> boxButtons{QStringLiteral("OK")};
  // A progress is left alone unless nothing would ever end it.
  bool cancelProgress = false;

  // Texts of the boxes since the last call.
  [[nodiscard]] std::vector<std::string> takeTexts();
  // The first problem that an answer had since the last call; empty without one.
  [[nodiscard]] std::string takeProblem();

 private:
  void look();
  void answerOne(QDialog& dialog);

  QTimer timer_;
  std::vector<QDialog*> answering_;
  std::vector<std::string> texts_;
  std::string problem_;
};

// Makes "ME 2 Key 1 Clip Set" with that value in "Create new command", and presses one of its buttons.
void makeClipCommand(QDialog& dialog, const char* value, const char* button);

}  // namespace tessaly
