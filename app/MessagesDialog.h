#pragma once

#include <memory>

#include <QDialog>

namespace Ui {
class MessagesDialog;
}

namespace tessaly {

class MessageLog;

// The list behind the strip; stands beside the window and goes on with it. Ctrl+C copies the selected rows.
class MessagesDialog : public QDialog {
  Q_OBJECT

 public:
  // Observes the log.
  explicit MessagesDialog(MessageLog& log, QWidget* parent = nullptr);
  ~MessagesDialog() override;

  void present();

 private:
  void copy() const;

  std::unique_ptr<Ui::MessagesDialog> ui_;
  MessageLog& log_;
};

}  // namespace tessaly
