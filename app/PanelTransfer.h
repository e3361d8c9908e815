#pragma once

#include <functional>

#include <QObject>
#include <QWidget>

#include "link/PanelMacros.h"

namespace tessaly {

// Runs an operation on the panel's files beside the event loop: the call returns when it is over, while the
// window stays alive. The user's input waits; after 300 ms a modal progress with Cancel appears. GUI thread.
class PanelTransfer : public QObject {
  Q_OBJECT

 public:
  using Operation = std::function<TransferOutcome(PanelMacros& macros)>;

  PanelTransfer(PanelMacros& macros, QWidget* window) : macros_(macros), window_(window) {}

  // `operation` runs on a thread of its own and touches nothing of the window.
  [[nodiscard]] TransferOutcome run(const QString& label, Operation operation);

  [[nodiscard]] PanelMacros& macros() { return macros_; }
  // A transfer is under way: the window must not be closed.
  [[nodiscard]] bool busy() const { return busy_; }

 private:
  PanelMacros& macros_;
  QWidget* window_;
  bool busy_ = false;
};

}  // namespace tessaly
