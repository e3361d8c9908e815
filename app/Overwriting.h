#pragma once

#include <functional>

#include <QCoreApplication>
#include <QString>

#include "app/MacroTarget.h"
#include "model/MacroHistory.h"
#include "platform/SiteAccess.h"

namespace tessaly {

class MacroTransfers;
struct PaneState;

// What is asked and told of a macro before another one is put in its place. GUI thread.
class Overwriting {
  Q_DECLARE_TR_FUNCTIONS(Overwriting)

 public:
  // Observes all.
  Overwriting(SiteAccess site, MacroTransfers& transfers) : site_(site), transfers_(transfers) {}

  // Where a macro of the pane's list stands and, as far as that is known without asking a panel, how large it
  // is.
  [[nodiscard]] QString about(const PaneState& pane, const MacroTarget& macro) const;
  // What the history could not keep, so that nothing could bring it back, is overwritten only when the user
  // says so once more. `what` tells people which macro.
  [[nodiscard]] MacroHistory::MayLose asking(const QString& what) const;
  // Writes a file of the site beside the window, asks by the same, and shows then what there is to be shown.
  // `writing` owns what it touches (PanelTransfer::write).
  using Writing = std::function<Outcome(const SiteAccess& site, const MacroHistory::MayLose& mayLose)>;
  Outcome write(const QString& what, const Writing& writing) const;

 private:
  SiteAccess site_;
  MacroTransfers& transfers_;
};

}  // namespace tessaly
