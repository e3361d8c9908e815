#pragma once

#include <functional>

#include <QObject>
#include <QWidget>

#include "app/EventGate.h"
#include "link/PanelMacros.h"

namespace tessaly {

// Runs an operation on the panel's files beside the event loop: the call returns when it is over, while the
// window stays alive. The user's input waits, save for closing the window, which cancels; after 300 ms a
// progress with Cancel appears. What would change a pane waits until the call has returned. GUI thread.
class PanelTransfer : public QObject {
  Q_OBJECT

 public:
  using Operation = std::function<TransferOutcome(PanelMacros& macros)>;

  PanelTransfer(PanelMacros& macros, EventGate& gate, QWidget* window)
      : macros_(macros), gate_(gate), window_(window) {}

  // The same for any work beside the event loop; `giveUp` is called on the GUI thread, and the work then ends
  // soon. False when it could not be begun.
  [[nodiscard]] bool work(const QString& label, const std::function<void()>& job,
                          const std::function<void()>& giveUp);
  // `operation` runs on a thread of its own and touches nothing of the window.
  [[nodiscard]] TransferOutcome run(const QString& label, Operation operation);

  // The same for other long work. `work` runs on a thread of its own, and may tell from there how far it is,
  // in thousandths; `cancel` is called here, and empty where there is no way back. False when there was no
  // thread to be had.
  using Tell = std::function<void(int thousandths)>;
  [[nodiscard]] bool runLong(const QString& label, const std::function<void(const Tell& tell)>& work,
                             const std::function<void()>& cancel);
  // Ends what runs, as the user does who presses Cancel.
  void cancel();

  [[nodiscard]] PanelMacros& macros() { return macros_; }
  // Something is under way: the window must not be closed.
  [[nodiscard]] bool busy() const { return running_ != nullptr; }

 private:
  struct Work {
    std::function<void(const Tell& tell)> run;
    std::function<void()> cancel;
    QString cancelling;  // shown while a cancel takes its time; empty: nothing is
  };
  [[nodiscard]] bool runBeside(const QString& label, const Work& work);

  PanelMacros& macros_;
  EventGate& gate_;
  QWidget* window_;
  const Work* running_ = nullptr;
};

}  // namespace tessaly
