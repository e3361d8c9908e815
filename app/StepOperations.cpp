#include "app/StepOperations.h"

#include "app/Browser.h"
#include "app/FailureText.h"
#include "app/PlaceText.h"
#include "app/StatusStrip.h"
#include "app/StepsDialog.h"
#include "app/ValueUpdate.h"

namespace tessaly {

StepOperations::StepOperations(const PaneAccesses& panes, const ValueUpdate& update, QWidget* window)
    : panes_(panes), update_(update), window_(window) {}

void StepOperations::undo(Pane pane) {
  const EditHistory& row = copy(pane).steps();
  if (!row.canUndo()) return;
  const std::size_t before = row.position() - 1;
  go(pane, before, tr("undone: %1").arg(nameInStrip(row.step(before).name)));
}

void StepOperations::redo(Pane pane) {
  const EditHistory& row = copy(pane).steps();
  if (!row.canRedo()) return;
  const std::size_t next = row.position();
  go(pane, next + 1, tr("redone: %1").arg(nameInStrip(row.step(next).name)));
}

void StepOperations::choose(Pane pane) {
  const EditHistory& row = copy(pane).steps();
  if (row.size() == 0) return;
  const int revision = copy(pane).revision();
  StepsDialog dialog(row, window_);
  if (dialog.exec() != QDialog::Accepted) return;
  if (copy(pane).revision() != revision) {
    emit said({Grade::kFailure, tr("NOT gone to another step: the macro was changed meanwhile"),
               placeInWindow(*panes_[index(pane)].state)});
    return;
  }
  const int by = static_cast<int>(dialog.position()) - static_cast<int>(row.position());
  if (by != 0)
    go(pane, dialog.position(),
       by < 0 ? tr("%n steps undone", nullptr, -by) : tr("%n steps redone", nullptr, by));
}

QString StepOperations::obstacle(Pane pane) const {
  if (update_.holds(pane))
    return tr("values are still coming from the panel; wait for them, or cancel the update");
  if (copy(pane).lent()) return tr("a transfer is using the macro");
  return {};
}

void StepOperations::go(Pane pane, std::size_t position, const QString& done) {
  const bool edited = copy(pane).edited();
  const QString where = placeInWindow(*panes_[index(pane)].state);
  QString reason = obstacle(pane);
  if (reason.isEmpty()) {
    if (const Outcome gone = copy(pane).jumpTo(position); !gone) reason = failureText(gone.failure());
  }
  if (!reason.isEmpty()) {
    const QString text = position < copy(pane).steps().position() ? tr("NOT undone: %1").arg(reason)
                                                                  : tr("NOT redone: %1").arg(reason);
    emit said({Grade::kFailure, text, where});
    return;
  }
  const bool settled = edited && !copy(pane).edited();
  emit said({Grade::kDone, settled ? tr("%1; nothing is unsaved any more").arg(done) : done, where});
  if (settled) panes_[index(pane)].browser->catchUp();
}

}  // namespace tessaly
