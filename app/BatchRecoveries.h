#pragma once

#include <functional>
#include <set>
#include <string>

#include <QObject>

#include "app/Shelves.h"
#include "review/BatchRecovery.h"
#include "widgets/Message.h"
#include "windows/ReviewWork.h"

namespace tessaly {

// Ends or undoes, on a thread of its own, the batches that an earlier program has not lived to end: at the
// start, and what waits for a panel once that is connected. What became of each is told in one line. GUI
// thread.
class BatchRecoveries : public QObject {
  Q_OBJECT

 public:
  using Connected = std::function<std::set<HostAddress>()>;  // addresses of panels

  BatchRecoveries(Shelves shelves, Connected connected, QObject* parent = nullptr);

  void start();
  // Something may have been connected.
  void look();
  [[nodiscard]] bool busy() const { return work_.running(); }

 signals:
  void said(const tessaly::Message& message);
  void written(const tessaly::MacroPlace& place);  // or it may have been

 private:
  void take(const std::vector<BatchRecovery>& found);

  Shelves shelves_;
  Connected connected_;
  std::set<HostAddress> tried_;  // addresses that were connected when it was last tried
  bool waiting_ = false;         // for another panel
  QStringList lines_;
  Grade grade_ = Grade::kNote;  // the heaviest of theirs
  ReviewWork<BatchRecovery> work_;
};

}  // namespace tessaly
