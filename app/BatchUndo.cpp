#include "app/BatchUndo.h"

#include <algorithm>

#include "app/FailureText.h"
#include "app/OpenMacros.h"
#include "app/PlaceText.h"
#include "widgets/DialogText.h"

namespace tessaly {

namespace {

// A batch that is made and run on another thread, within reach of a cancel.
class RunningBatch {
 public:
  RunningBatch(const Shelves& shelves, const std::set<HostAddress>& connected) : room_(shelves, connected) {}

  void run(const std::string& name, const std::vector<BatchTrace>& traces) {
    auto items = undoing(traces, room_.places().root(), room_.places().history(), lost_);
    if (!items) {
      outcome_ = items.failure();
      return;
    }
    {
      const std::scoped_lock guard(mutex_);
      batch_ = std::make_unique<MacroBatch>(room_.places(), name, MacroChange::kPutBack,
                                            MacroBatch::Mode::kAsManyAsGo, *std::move(items));
      if (cancelled_) batch_->cancel();
    }
    outcome_ = batch_->run();
  }
  void cancel() {
    const std::scoped_lock guard(mutex_);
    cancelled_ = true;
    if (batch_) batch_->cancel();
  }

  // Afterwards; there is a batch when it was run.
  [[nodiscard]] const Outcome& outcome() const { return outcome_; }
  [[nodiscard]] const MacroBatch& batch() const { return *batch_; }
  [[nodiscard]] std::size_t lost() const { return lost_; }

 private:
  BatchRoom room_;
  Outcome outcome_;
  std::size_t lost_ = 0;
  std::mutex mutex_;  // over what follows
  std::unique_ptr<MacroBatch> batch_;
  bool cancelled_ = false;
};

// It may go another time.
bool mayGoYet(const MacroBatch::Row& row) {
  using Kind = Failure::Kind;
  return row.state == MacroBatch::Row::State::kAsBefore &&
         (row.why.kind == Kind::kPanel || row.why.kind == Kind::kCancelled || row.why.kind == Kind::kInUse);
}

}  // namespace

BatchUndo::BatchUndo(Shelves shelves, Connected connected, PanelTransfer& transfer, Messages& messages,
                     OpenMacros& open)
    : shelves_(std::move(shelves)),
      connected_(std::move(connected)),
      transfer_(transfer),
      messages_(messages),
      open_(open) {}

bool BatchUndo::confirmed(const QString& name, const std::vector<BatchTrace>& traces) const {
  QStringList losses;
  for (const BatchTrace& trace : traces) losses << open_.unsavedAt(trace.place);
  if (losses.isEmpty()) return true;
  losses.removeDuplicates();
  losses.prepend(tr("Undo \"%1\"?").arg(name));
  return messages_.ask(losses.join(QStringLiteral("\n\n")).toStdString(), MessageIcon::kQuestion);
}

BatchUndo::Result BatchUndo::undo(const QString& name, const std::vector<BatchTrace>& traces) {
  const auto notDone = [&](const QString& why) {
    return Result{{Grade::kFailure, tr("NOT undone: %1 (%2)").arg(name, why)}, traces};
  };
  if (!confirmed(name, traces)) return notDone(tr("nothing has been changed"));
  RunningBatch running(shelves_, connected_());
  const std::string title = tr("undo of %1").arg(name).toStdString();
  if (!transfer_.runLong(
          tr("Undoing %1").arg(name), [&](const PanelTransfer::Tell&) { running.run(title, traces); },
          [&] { running.cancel(); }))
    return notDone(tr("there is not enough memory"));
  if (!running.outcome()) return notDone(failureText(running.outcome().failure()));
  const MacroBatch& batch = running.batch();
  Result result;
  for (std::size_t i = 0; i < batch.rows().size(); ++i) {
    const MacroPlace& place = batch.items()[i].place;
    if (batch.rows()[i].state != MacroBatch::Row::State::kAsBefore) open_.follow(place);
    if (!mayGoYet(batch.rows()[i])) continue;
    const auto trace =
        std::ranges::find_if(traces, [&](const BatchTrace& each) { return each.place == place; });
    if (trace != traces.end()) result.left.push_back(*trace);
  }
  const std::size_t done = batch.doneCount(), missed = batch.rows().size() - done + running.lost();
  if (!traces.empty()) result.message.where = placeInWindow(traces.front().place);
  QString& text = result.message.text;
  text = done == 0 && missed > 0 ? tr("NOT undone: %1").arg(name) : tr("undone: %1").arg(name);
  result.message.grade = missed > 0 ? Grade::kFailure : Grade::kDone;
  if (missed > 0) {
    const auto failed =
        std::ranges::find_if(batch.rows(), [](const MacroBatch::Row& row) { return !row.done(); });
    text = tr("%1; %2 of %3 macros are not as they were before (%4)")
               .arg(text, QString::number(missed), QString::number(traces.size()),
                    failed == batch.rows().end() ? tr("the history no longer has what was there before")
                                                 : failureText(failed->why));
  }
  return result;
}

}  // namespace tessaly
