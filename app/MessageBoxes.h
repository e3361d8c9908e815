#pragma once

#include <QPointer>
#include <QWidget>

#include "app/EventGate.h"
#include "platform/Messages.h"
#include "widgets/PostTo.h"

namespace tessaly {

inline constexpr const char* kProgramName = "Tessaly";  // caption of boxes

// Modal message boxes with the program's name as caption. `ask`, `choose` and `show` may be called from any
// thread: from the GUI thread they return when the box is closed; `show` from another thread queues the box
// and returns at once.
class MessageBoxes : public QObject, public Messages {
  Q_OBJECT

 public:
  explicit MessageBoxes(QObject* parent = nullptr) : QObject(parent) {}

  // Boxes are modal to this window.
  void setWindow(QWidget* window) { window_ = window; }
  // Observed: held while a box is open, and waited for by boxes of other threads.
  void setGate(EventGate* gate) { gate_ = gate; }

  void show(const std::string& text, MessageIcon icon) override;
  [[nodiscard]] bool ask(const std::string& text, MessageIcon icon) override;
  [[nodiscard]] MessageChoice choose(const std::string& text, const std::string& other) override;

 private:
  MessageChoice run(const QString& text, MessageIcon icon, MessageButtons buttons, const QString& other = {});
  [[nodiscard]] MessageChoice askAnywhere(const std::string& text, MessageIcon icon, const QString& other);

  const Post post_ = postTo(this);
  QPointer<QWidget> window_;
  QPointer<EventGate> gate_;
  int waiting_ = 0;  // boxes of other threads so far
};

}  // namespace tessaly
