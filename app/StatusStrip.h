#pragma once

#include <array>
#include <optional>

#include <QElapsedTimer>
#include <QFrame>
#include <QLabel>
#include <QPointer>
#include <QPushButton>

#include "app/MessageLog.h"
#include "link/Pane.h"
#include "widgets/Message.h"

namespace tessaly {

class ElidedLine;
class MessagesDialog;

// The line at the foot of the window. A message begins with its verdict, has the sign of its grade before it
// and the place that it is about behind it, and wraps where the window is narrow; a click, or Ctrl+Shift+M,
// opens the list of those before it. Screen readers announce warnings and failures.
//
// A failure stays until it has been seen: one that another message takes the place of goes into a line of its
// own. Seen is what was clicked, and what has stood for a moment in the active window when a key or the mouse
// is pressed in it.
//
// A save that is still owed has a line of its own, with a button, until it is settled; so has work that can
// be cancelled.
class StatusStrip : public QFrame {
  Q_OBJECT

 public:
  explicit StatusStrip(QWidget* parent = nullptr);

  void say(const Message& message);
  // What a failed save of the pane was told as; empty when nothing is owed any more.
  void showOwed(Pane pane, const QString& text);
  [[nodiscard]] QString owed(Pane pane) const;
  // What a check has found of what is selected; its line is always there, so that nothing moves.
  void showFinding(const QString& text);
  // What is being waited for; empty when nothing is.
  void showWaiting(const QString& text);
  void showMessages();

 signals:
  void saveAgainPressed(Pane pane);
  void cancelPressed();

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  // A text with a button, hidden while the text is empty.
  struct Row {
    QWidget* widget;
    QLabel* text;
    QPushButton* button;
    void show(const QString& what) const;
  };
  // A sign, a text, and where.
  struct Line {
    QWidget* widget;
    QLabel* sign;
    QLabel* text;
    ElidedLine* where;
    void show(const Message& message, const QPalette& palette, const QString& also = {}) const;
  };
  [[nodiscard]] Row addRow(const QString& name, const QString& caption);
  [[nodiscard]] Line addLine(const QString& name);
  void keepUnseen();
  void showUnseen();
  void noteSeen();

  std::array<Row, kPanes.size()> owed_;
  Row waiting_;
  Line unseen_;
  ElidedLine* finding_;
  Line said_;
  Message now_;                    // as said_ shows it
  bool nowUnseen_ = false;         // it is a failure that nobody has seen
  std::optional<Message> before_;  // as unseen_ shows it: the last of those before it that nobody has seen
  int unseenBefore_ = 0;
  QElapsedTimer stands_;  // since there is something unseen in the active window
  MessageLog log_;
  QPointer<MessagesDialog> messages_;
};

// The name of a macro, or of anything else that somebody typed, for a text of the strip: a long one loses its
// middle.
[[nodiscard]] QString nameInStrip(const std::string& bytes);

}  // namespace tessaly
