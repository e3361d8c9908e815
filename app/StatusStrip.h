#pragma once

#include <array>

#include <QFrame>
#include <QLabel>
#include <QPushButton>

#include "link/Pane.h"

namespace tessaly {

// One line that ends in dots where it is too long, with the whole text as its tool tip.
class ElidedLabel : public QLabel {
  Q_OBJECT

 public:
  using QLabel::QLabel;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

// The line at the foot of the window. What was done, or why not, begins with its verdict, is told to screen
// readers, and wraps where the window is narrow. A save that is still owed has a line of its own above it,
// with a button, until it is settled; so has work that can be cancelled.
class StatusStrip : public QFrame {
  Q_OBJECT

 public:
  explicit StatusStrip(QWidget* parent = nullptr);

  void say(const QString& text);
  // What a failed save of the pane was told as; empty when nothing is owed any more.
  void showOwed(Pane pane, const QString& text);
  [[nodiscard]] QString owed(Pane pane) const;
  // What a check has found of what is selected; its line is always there, so that nothing moves.
  void showFinding(const QString& text);
  // What is being waited for; empty when nothing is.
  void showWaiting(const QString& text);

 signals:
  void saveAgainPressed(Pane pane);
  void cancelPressed();

 private:
  // A text with a button, hidden while the text is empty.
  struct Row {
    QWidget* widget;
    QLabel* text;
    QPushButton* button;
    void show(const QString& what) const;
  };
  [[nodiscard]] Row addRow(const QString& name, const QString& caption);

  std::array<Row, kPanes.size()> owed_;
  Row waiting_;
  ElidedLabel* finding_;
  QLabel* said_;
};

// The name of a macro, or of anything else that somebody typed, for a text of the strip: a long one loses its
// middle.
[[nodiscard]] QString nameInStrip(const std::string& bytes);

}  // namespace tessaly
