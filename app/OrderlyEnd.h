#pragma once

#include <functional>

#include <QObject>
#include <QSocketNotifier>

#include "platform/EndSignals.h"

namespace tessaly {

// Ends the program as closing its window does, without a question, when the system wants it to: SIGTERM,
// SIGHUP, Ctrl+C in its terminal, and the end of the desktop's session. What is unsaved stays in the working
// copies and is offered at the next start. One object, on the GUI thread.
class OrderlyEnd : public QObject {
  Q_OBJECT

 public:
  struct Steps {
    std::function<void()> keep;  // writes what is to be kept; the program goes on, the session may too
    std::function<bool()> end;   // the same for the last time; false when it has to be asked again soon
  };
  explicit OrderlyEnd(Steps steps);

 protected:
  // The session's end comes as a wish to quit, which would close the windows with their questions.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void end();

  Steps steps_;
  EndSignals signals_;
  QSocketNotifier notifier_;
  bool ending_ = false;
};

}  // namespace tessaly
