#pragma once

#include <functional>
#include <optional>

#include <QObject>
#include <QPointer>

#include "app/EventGate.h"
#include "app/MacroTransfers.h"
#include "app/PaneState.h"
#include "windows/CompareSide.h"

namespace tessaly {

// The place that a pane is compared with: that of the macro which the pane shows, whichever that is, or
// another one. It is looked at again when the pane's changes have been saved or discarded, or the pane shows
// another macro. A file is read whenever it is compared; of a panel the last look counts. GUI thread.
class ComparedPlace : public QObject {
  Q_OBJECT

 public:
  // Observes all.
  ComparedPlace(const WorkingCopy& copy, std::optional<MacroTarget> place, SiteAccess site,
                MacroTransfers& transfers, EventGate& gate);

  // Blocks in a transfer for a place on a panel. What was found out already is taken as it is.
  void look();
  void take(MacroTransfers::Present present);
  [[nodiscard]] CompareSide side() const;

 signals:
  void changed();

 private:
  [[nodiscard]] std::optional<MacroTarget> place() const { return fixed_ ? fixed_ : copy_.target(); }
  void followCopy();

  const WorkingCopy& copy_;
  std::optional<MacroTarget> fixed_;
  SiteAccess site_;
  MacroTransfers& transfers_;
  EventGate& gate_;
  std::optional<MacroTarget> seen_;  // that `present_` is of
  MacroTransfers::Present present_;  // on a panel
  bool edited_;                      // as last seen
};

}  // namespace tessaly
