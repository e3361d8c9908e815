#include "app/MacroUndo.h"

#include "app/BatchUndo.h"
#include "app/FailureText.h"
#include "app/MacroTransfers.h"
#include "app/OpenMacros.h"
#include "app/PlaceText.h"
#include "app/StatusStrip.h"
#include "link/MacroNames.h"
#include "model/Macro.h"
#include "model/MacroHistory.h"
#include "platform/Files.h"
#include "widgets/DialogText.h"

namespace tessaly {

namespace {

bool onPanel(const MacroPlace& place) { return place.file.empty(); }

Grade gradeOf(const Outcome& written) { return written ? Grade::kDone : Grade::kWarning; }

}  // namespace

MacroUndo::MacroUndo(SiteAccess site, MacroHistory& history, MacroTransfers& transfers, OpenMacros& open)
    : site_(site), history_(history), transfers_(transfers), open_(open) {}

void MacroUndo::begin(const QString& name, const MacroPlace& place) {
  pending_ = {name, place};
  static_cast<void>(history_.takeKept());
  static_cast<void>(history_.takeFailure());
}

bool MacroUndo::finish(const std::optional<std::string>& left) {
  if (history_.takeFailure()) return false;
  pending_.kept = history_.takeKept();
  if (left) pending_.left = contentCheck(*left);
  if (pending_.kept || pending_.left) add(pending_);
  return true;
}

bool MacroUndo::finishOnDisk() {
  const auto bytes = transfers_.read(pending_.place.file);
  return finish(bytes ? std::optional(*bytes) : std::nullopt);
}

void MacroUndo::noteRename(const QString& name, const MacroTarget& target, const std::string& newName) {
  // A longer name is not known whole.
  if (target.name.size() < kLongestMacroName) add({name, placeOf(target), {}, {}, target.name, newName});
}

void MacroUndo::noteBatch(const QString& name, std::vector<BatchTrace> traces) {
  Entry entry;
  entry.name = name;
  entry.batch = std::move(traces);
  add(std::move(entry));
}

void MacroUndo::add(Entry entry) {
  row_.push_back(std::move(entry));
  if (row_.size() > kMostUndoableOperations) row_.pop_front();
  emit changed();
}

void MacroUndo::undo() {
  if (row_.empty()) return;
  const Entry entry = row_.back();
  static_cast<void>(history_.takeFailure());
  Result result;
  if (entry.batch.empty()) {
    result = run(entry);
  } else {
    BatchUndo::Result undone = batches_->undo(entry.name, entry.batch);
    result = {undone.message, undone.left.empty()};
    row_.back().batch = std::move(undone.left);
  }
  if (result.over) row_.pop_back();
  emit changed();
  emit said(result.message);
}

MacroUndo::Result MacroUndo::notDone(const Entry& entry, const QString& reason, bool over) {
  return {{Grade::kFailure, tr("NOT undone: %1 (%2)").arg(entry.name, reason), placeInWindow(entry.place)},
          over};
}

MacroUndo::Result MacroUndo::done(const QString& text, Grade grade) {
  if (!history_.takeFailure()) return {{grade, text}, true};
  return {{Grade::kWarning, tr("%1; the history could not keep what was there before").arg(text)}, true};
}

bool MacroUndo::confirmed(const Entry& entry, bool altered, bool missing) {
  QStringList losses = open_.unsavedAt(entry.place);
  if (altered)
    losses.prepend(missing
                       ? tr("The macro there has been deleted since.")
                       : tr("The macro there has been changed since. The history keeps what it holds now."));
  if (losses.isEmpty()) return true;
  losses.prepend(tr("Undo \"%1\"?").arg(entry.name));
  return site_.messages.ask(losses.join(QStringLiteral("\n\n")).toStdString(), MessageIcon::kQuestion);
}

MacroUndo::Result MacroUndo::run(const Entry& entry) {
  if (onPanel(entry.place) && !open_.reaches(entry.place.address))
    return notDone(entry, tr("no pane is connected to the panel %1").arg(shown(entry.place.address.text())));
  std::string before;
  if (entry.kept) {
    auto bytes = transfers_.beside().block<Expected<std::string>>(
        tr("Reading the history"),
        [&history = history_, &root = site_.root, id = *entry.kept]() -> Expected<std::string> {
          const auto macro = history.find(id);
          return macro ? readOwnFile(root, macro->file) : macro.failure();
        });
    if (!bytes) return notDone(entry, tr("nothing has been changed"));
    if (!*bytes) {
      const Failure& why = bytes->failure();
      const bool gone = why.kind == Failure::Kind::kMissing;
      return notDone(entry, gone ? tr("the history no longer has what was there before") : failureText(why),
                     gone);
    }
    before = **std::move(bytes);
  }
  const MacroTransfers::Present looked = transfers_.look(entry.place);
  if (!looked.trouble.isEmpty()) return notDone(entry, looked.trouble);
  const std::optional<std::string>& present = looked.bytes;
  if (!entry.newName.empty())
    return present ? renameBack(entry, *present)
                   : notDone(entry, tr("there is no such macro any more"), true);
  if (!entry.kept && !present) return notDone(entry, tr("there is no such macro any more"), true);
  const bool same =
      present ? entry.left == contentCheck(*present) || (entry.kept && *present == before) : !entry.left;
  if (!confirmed(entry, !same, !present)) return notDone(entry, tr("nothing has been changed"));
  return entry.kept ? putBack(entry, before) : remove(entry);
}

Outcome MacroUndo::change(const Entry& entry, MacroChange how, const Work& work) {
  return transfers_.beside().write(tr("Undoing %1").arg(entry.name), [&history = history_, &root = site_.root,
                                                                      how, work, file = entry.place.file] {
    return history.change(file, how, [&] { return work(root, file); });
  });
}

MacroUndo::Result MacroUndo::putBack(const Entry& entry, const std::string& bytes) {
  const MacroPlace& place = entry.place;
  if (!onPanel(place)) {
    const Outcome written =
        change(entry, MacroChange::kPutBack,
               [bytes](const SiteRoot& root, const auto& file) { return writeFile(root, file, bytes); });
    if (!written.written()) return notDone(entry, failureText(written.failure()));
    open_.follow(place);
    const QString text = tr("undone: %1; what was there before is back in %2");
    return done(text.arg(entry.name, shown(place.file)) + inBrackets(written), gradeOf(written));
  }
  static_cast<void>(transfers_.send(place, Sendable::again(bytes), MacroChange::kPutBack));
  const QString outcome = transfers_.outcomeText();
  const Grade grade = transfers_.sentGrade();
  if (!transfers_.sent()) return notDone(entry, outcome);
  open_.follow(place);
  return done(tr("undone: %1; what was there before is back in macro %2 of workplace %3 on the panel %4 (%5)")
                  .arg(entry.name, shown(place.number), QString::number(place.workplace),
                       shown(place.address.text()), outcome),
              grade);
}

MacroUndo::Result MacroUndo::remove(const Entry& entry) {
  const MacroPlace& place = entry.place;
  if (!onPanel(place)) {
    const Outcome removed = change(entry, MacroChange::kDelete, &removeFile);
    if (!removed.written()) return notDone(entry, failureText(removed.failure()));
    open_.follow(place);
    const QString text = tr("undone: %1; %2 is deleted, as there was none before");
    return done(text.arg(entry.name, shown(place.file)) + inBrackets(removed), gradeOf(removed));
  }
  const PanelMacros::Deletion deletion = transfers_.remove(place, PanelMacros::OldContent::kKept);
  if (!deletion.kept) return notDone(entry, failureText(deletion.kept.failure()));
  if (!deletion.asked) return notDone(entry, tr("the panel cannot be told to delete it"));
  open_.forget(place);
  return {
      {Grade::kDone,
       tr("asked, to undo %1: the panel %2 is to delete macro %3 of workplace %4, as there was none before")
           .arg(entry.name, shown(place.address.text()), shown(place.number),
                QString::number(place.workplace))},
      true};
}

MacroUndo::Result MacroUndo::renameBack(const Entry& entry, const std::string& present) {
  const auto macro = Macro::read(present);
  const std::string name = macro ? displayUtf8(macro->name().value_or("")) : std::string();
  const bool same = name == displayUtf8(entry.newName) || name == displayUtf8(entry.oldName);
  if (!confirmed(entry, !same, false)) return notDone(entry, tr("nothing has been changed"));
  if (!transfers_.rename(entry.place, entry.oldName))
    return notDone(entry, tr("the panel cannot be told to rename it"));
  // A working copy with the other name would undo this one at its next save.
  open_.forget(entry.place);
  return {{Grade::kDone, tr("asked, to undo %1: the panel %2 is to rename macro %3 of workplace %4 to %5")
                             .arg(entry.name, shown(entry.place.address.text()), shown(entry.place.number),
                                  QString::number(entry.place.workplace), nameInStrip(entry.oldName))},
          true};
}

}  // namespace tessaly
