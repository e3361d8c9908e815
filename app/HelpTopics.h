#pragma once

#include <span>

#include <QObject>
#include <QString>
#include <QWidget>

namespace tessaly {

// What is told of a window, or of a control of it.
struct HelpTopic {
  const char* about;  // a class without its namespace, or the name of a control
  const char* place;  // of the guide
};

[[nodiscard]] std::span<const HelpTopic> helpTopics();

// Where the guide tells of a control: of its window, in the main one of itself or what it lies in; else the
// beginning.
[[nodiscard]] QString helpFor(const QWidget* control);

// In all windows, while it lives: F1 opens the guide at what has the keyboard, Shift+F1 asks for a control,
// which is then told by its tool tip.
class HelpKeys : public QObject {
 public:
  explicit HelpKeys(QWidget& window);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QWidget& window_;
};

}  // namespace tessaly
