#pragma once

#include <QCoreApplication>
#include <QString>

#include "app/MacroTarget.h"
#include "platform/SiteAccess.h"

namespace tessaly {

class MacroHistory;
class MacroTransfers;
struct PaneState;

// What is asked and told of a macro before another one is put in its place. GUI thread.
class Overwriting {
  Q_DECLARE_TR_FUNCTIONS(Overwriting)

 public:
  // Observes both.
  Overwriting(SiteAccess site, MacroHistory& history) : site_(site), history_(history) {}

  // Where a macro of the pane's list stands and, as far as that is known without asking a panel, how large it
  // is.
  [[nodiscard]] QString about(const PaneState& pane, const MacroTarget& macro) const;
  // What nothing could bring back is overwritten only when the user says so once more. On a panel what stands
  // there is fetched for it.
  [[nodiscard]] bool mayLose(const MacroTarget& macro, MacroChange change, MacroTransfers& transfers) const;

 private:
  SiteAccess site_;
  MacroHistory& history_;
};

}  // namespace tessaly
