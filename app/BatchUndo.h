#pragma once

#include <functional>
#include <set>
#include <string>
#include <vector>

#include <QCoreApplication>
#include <QString>

#include "app/PanelTransfer.h"
#include "app/Shelves.h"
#include "platform/Messages.h"
#include "review/MacroBatch.h"
#include "widgets/Message.h"

namespace tessaly {

class OpenMacros;

// Undoes what a batch has written, as a batch: each place gets back what it held, unless somebody has changed
// it since. GUI thread; blocks in PanelTransfer's loop.
class BatchUndo {
  Q_DECLARE_TR_FUNCTIONS(BatchUndo)

 public:
  using Connected = std::function<std::set<HostAddress>()>;  // addresses of panels

  // Observes the last three.
  BatchUndo(Shelves shelves, Connected connected, PanelTransfer& transfer, Messages& messages,
            OpenMacros& open);

  struct Result {
    Message message;
    std::vector<BatchTrace> left;  // what could not be tried, and may be again
  };
  [[nodiscard]] Result undo(const QString& name, const std::vector<BatchTrace>& traces);

 private:
  [[nodiscard]] bool confirmed(const QString& name, const std::vector<BatchTrace>& traces) const;

  Shelves shelves_;
  Connected connected_;
  PanelTransfer& transfer_;
  Messages& messages_;
  OpenMacros& open_;
};

}  // namespace tessaly
