#include "app/Recovery.h"

#include <algorithm>

#include <QDateTime>
#include <QLocale>

#include "app/Browser.h"
#include "app/FailureText.h"
#include "app/OpenMacros.h"
#include "link/PanelAddress.h"
#include "model/MacroHistory.h"
#include "platform/Files.h"
#include "platform/SitePlace.h"
#include "widgets/DialogText.h"

namespace tessaly {

namespace {

QString timeText(std::int64_t milliseconds) {
  return QLocale().toString(QDateTime::fromMSecsSinceEpoch(milliseconds), QLocale::ShortFormat);
}

QString macroText(const MacroTarget& target) {
  return shown(target.numberText.empty() ? target.name : target.numberText + " - " + target.name);
}

}  // namespace

Recovery::Recovery(const PaneAccesses& panes, SiteAccess site, MacroHistory& history,
                   PanelConnection& connection, QWidget* window)
    : panes_(panes), site_(site), history_(history), connection_(connection), window_(window) {}

void Recovery::note(Pane pane, Grade grade, const QString& text) {
  grade_ = std::max(grade_, grade);
  notes_ << QLatin1String(state(pane).descriptor.title) + QStringLiteral(": ") + text;
}

void Recovery::tell() {
  if (!notes_.isEmpty()) emit said({grade_, notes_.join(QStringLiteral("; "))});
  notes_.clear();
  grade_ = {};
}

void Recovery::offer() {
  for (const Pane pane : kPanes) look(pane);
  tell();
  if (std::none_of(found_.begin(), found_.end(), [](const auto& found) { return found.has_value(); })) return;
  auto* dialog = new RecoveryDialog(window_);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  for (const Pane pane : kPanes)
    if (found_[index(pane)]) dialog->offer(state(pane).descriptor, describe(pane));
  connect(dialog, &QDialog::finished, this,
          [this, dialog](int result) { answered(*dialog, result == QDialog::Accepted); });
  dialog->open();
}

void Recovery::look(Pane pane) {
  const WorkingCopy& copy = state(pane).copy;
  const RecoveryFile& file = copy.recovery();
  if (copy.edited()) return;
  auto record = file.read();
  if (!record) {
    noteUnknown(pane, record.failure());
    return;
  }
  auto bytes = readFile(site_.root, fileOf(pane, *record));
  if (!bytes) {
    const bool gone = isNothing(bytes.failure());
    if (gone) file.remove();
    note(pane, Grade::kFailure,
         gone ? tr("the unsaved changes of %1 are gone: the working copy cannot be read")
                    .arg(macroInStrip(record->target))
              : tr("the unsaved changes of %1 cannot be read now (%2)")
                    .arg(macroInStrip(record->target), failureText(bytes.failure())));
    return;
  }
  const RecoveredBytes how = judgeRecovered(site_.root, file, *record, *bytes);
  if (how == RecoveredBytes::kSaved)
    file.remove();
  else
    found_[index(pane)] = Found{std::move(*record), std::move(*bytes), how};
}

// Nobody knows whose the changes are, but they are there.
void Recovery::noteUnknown(Pane pane, const Failure& failure) {
  if (isNothing(failure)) return;
  const WorkingCopy& copy = state(pane).copy;
  const bool damaged = failure.kind == Failure::Kind::kChanged;
  const bool kept = history_.keepFile(copy.path(), MacroChange::kUnsaved).done() &&
                    history_.keepFile(copy.recovery().besidePath(), MacroChange::kUnsaved).done();
  if (kept && damaged) copy.recovery().remove();
  QString text = damaged ? tr("the record of unsaved changes is damaged")
                         : tr("the record of unsaved changes cannot be read (%1)").arg(failureText(failure));
  if (kept) text += tr("; the history keeps the working copy");
  note(pane, kept ? Grade::kWarning : Grade::kFailure, text);
}

std::string Recovery::fileOf(Pane pane, const RecoveryRecord& record) const {
  const WorkingCopy& copy = state(pane).copy;
  return record.setAside ? copy.recovery().besidePath() : copy.path();
}

RecoveryOffer Recovery::describe(Pane pane) const {
  const Found& found = *found_[index(pane)];
  const MacroTarget& target = found.record.target;
  RecoveryOffer offer;
  offer.macro = macroText(target);
  offer.place =
      target.source == PaneSource::kHarddisk
          ? shown(placeOf(found.record).file)
          : tr("panel %1, workplace %2").arg(shown(target.address.text()), QString::number(target.workplace));
  const auto macro = Macro::read(found.bytes);
  offer.readable = macro && macro->hasData();
  const int count = macro ? static_cast<int>(macro->commands().size()) : 0;
  offer.changes = tr("%n commands; changed from %1 to %2", nullptr, count)
                      .arg(timeText(found.record.since), timeText(found.record.edited));
  if (!offer.readable)
    offer.warning = tr("The file cannot be read as a macro. It can only be left to the history.");
  else if (found.how == RecoveredBytes::kForeign)
    offer.warning = tr("The file is not as it was left: something else has changed it since.");
  return offer;
}

void Recovery::answered(const RecoveryDialog& dialog, bool accepted) {
  for (const Pane pane : kPanes) {
    std::optional<Found> found;
    found.swap(found_[index(pane)]);
    if (!found) continue;
    const bool wanted = accepted && dialog.takenUp(state(pane).descriptor);
    if (wanted && takeUp(pane, *found)) continue;
    // New changes in the pane take the place of what is not taken up, so the history is to hold it first.
    const bool kept = keep(pane, *found);
    if (!kept && !wanted && takeUp(pane, *found)) continue;
    if (kept && accepted && !wanted)
      leave(pane, *found);
    else
      setAside(pane, std::move(*found));
  }
  tell();
}

bool Recovery::takeUp(Pane pane, const Found& found) {
  PaneState& here = state(pane);
  Browser& browser = *panes_[index(pane)].browser;
  const MacroTarget& target = found.record.target;
  if (target.source == PaneSource::kPanel)
    goToPanel(pane, target);
  else if (found.record.loose.empty())
    browser.reveal(target);
  const Outcome taken = here.copy.takeUp(found.record, found.bytes);
  note(pane, taken ? Grade::kDone : Grade::kFailure,
       taken ? tr("changes taken up again: %1").arg(macroInStrip(target))
             : tr("NOT taken up: %1 (%2)").arg(macroInStrip(target), failureText(taken.failure())));
  return taken.done();
}

// Saving needs no more than the panel's files, but the panel reads them when it is told to over the
// connection.
void Recovery::goToPanel(Pane pane, const MacroTarget& target) {
  connection_.setTexts(pane, connection_.storedPath(pane), target.address);
  connection_.choosePanel(pane);
  if (!connection_.connected(pane) && addressAccepted(target.address.text())) connection_.connectButton(pane);
}

bool Recovery::keep(Pane pane, const Found& found) {
  const Outcome kept = history_.keep(found.bytes, placeOf(found.record), MacroChange::kUnsaved);
  if (kept.written()) return true;
  static_cast<void>(history_.takeFailure());  // told here
  note(pane, Grade::kFailure,
       tr("the history cannot keep the changes (%1)").arg(failureText(kept.failure())));
  return false;
}

void Recovery::leave(Pane pane, const Found& found) {
  const RecoveryFile& file = state(pane).copy.recovery();
  file.remove();
  if (!found.record.setAside) static_cast<void>(removeFile(site_.root, file.stepsPath()));
  note(pane, Grade::kDone, tr("the changes stay in the history: %1").arg(macroInStrip(found.record.target)));
}

void Recovery::setAside(Pane pane, Found found) {
  const RecoveryFile& file = state(pane).copy.recovery();
  if (!found.record.setAside) {
    found.record.setAside = true;
    if (!writeFile(site_.root, file.besidePath(), found.bytes) || !file.write(found.record)) {
      note(pane, Grade::kFailure,
           tr("the unsaved changes could NOT be set aside: %1").arg(macroInStrip(found.record.target)));
      return;
    }
    file.setStepsAside();
  }
  note(pane, Grade::kNote,
       tr("you will be asked again at the next start: %1").arg(macroInStrip(found.record.target)));
}

}  // namespace tessaly
