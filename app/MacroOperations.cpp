#include "app/MacroOperations.h"

#include <algorithm>

#include "app/Browser.h"
#include "app/CopyMacroDialog.h"
#include "app/CreateMacroDialog.h"
#include "app/FailureText.h"
#include "app/MacroTransfers.h"
#include "app/MacroUndo.h"
#include "app/OpenMacros.h"
#include "app/PlaceText.h"
#include "app/RenameMacroDialog.h"
#include "app/StatusStrip.h"
#include "model/KeyFile.h"
#include "model/MacroHistory.h"
#include "platform/Files.h"
#include "platform/MacroNumber.h"
#include "platform/SystemFailure.h"
#include "platform/Text.h"

namespace tessaly {

namespace {

constexpr const char* kDeleteQuestion = "Delete macro: %s ?   ";

QString renaming(const MacroTarget& target, const std::string& name) {
  return MacroOperations::tr("rename %1 to %2").arg(macroInStrip(target), nameInStrip(name));
}

}  // namespace

MacroOperations::MacroOperations(const PaneAccesses& panes, SiteAccess site, MacroHistory& history,
                                 const PanelConnection& connection, MacroTransfers& transfers,
                                 OpenMacros& open, MacroUndo& undo, QWidget* window)
    : panes_(panes),
      site_(site),
      history_(history),
      connection_(connection),
      transfers_(transfers),
      open_(open),
      undo_(undo),
      overwriting_(site, transfers),
      window_(window) {}

void MacroOperations::tellDone(const MacroTarget& target, const QString& text, bool kept, Grade grade) {
  emit said({kept ? grade : std::max(grade, Grade::kWarning),
             kept ? text : tr("%1; the history could not keep what was there before").arg(text),
             placeInWindow(target)});
}

void MacroOperations::tellNotDone(const MacroTarget& target, const QString& text) {
  tellDone(target, text, !history_.takeFailure(), Grade::kFailure);
}

void MacroOperations::tellOnDisk(const MacroTarget& target, const Outcome& outcome, const QString& done,
                                 const QString& notDone) {
  if (outcome.written())
    tellDone(target, done + inBrackets(outcome), undo_.finishOnDisk(),
             outcome ? Grade::kDone : Grade::kWarning);
  else
    tellNotDone(target, notDone + inBrackets(outcome));
}

// Without a folder or a workplace when the pane has none chosen.
MacroTarget MacroOperations::placeIn(Pane pane, int number, const std::string& name) const {
  return {connection_.source(pane),  browser(pane).macroFolder(), connection_.address(pane),
          browser(pane).workplace(), MacroNumber::textOf(number), name};
}

void MacroOperations::listAnew(Pane pane, const MacroTarget& changed, bool done) {
  if (done)
    browser(pane).listMacros();
  else
    browser(pane).refreshFolder(changed.folder);
}

void MacroOperations::finishOnDisk(Pane pane, const MacroTarget& changed, bool done) {
  listAnew(pane, changed, done);
  ListBox& list = state(pane).view.macros();
  const int row = list.rows().rowOfNumber(parseInt(changed.numberText));
  list.makeCurrent(row);
  if (!done) return;
  open_.follow(changed, pane);
  list.selectRow(row);
  open_.open(pane);
}

void MacroOperations::createMacro(Pane pane) {
  const MacroRow* row = state(pane).selectedMacro();
  CreateMacroDialog dialog(row != nullptr ? parseInt(row->numberText) : -1, browser(pane).names(), window_);
  dialog.setAbout([&](int number) { return overwriting_.about(state(pane), placeIn(pane, number, {})); });
  if (state(pane).viewOnly() || dialog.exec() != QDialog::Accepted) return;
  const MacroTarget target = placeIn(pane, dialog.number(), dialog.name());
  if (!target.complete() || !open_.mayPutAt(pane, target, std::nullopt)) return;
  undo_.begin(tr("create %1").arg(macroInStrip(target)), placeOf(target));
  if (onPanel(pane))
    createOnPanel(pane, target);
  else
    createOnDisk(pane, target);
}

Outcome MacroOperations::change(const MacroTarget& target, MacroChange how,
                                const std::function<Outcome(const SiteAccess& site)>& work) {
  return overwriting_.write(macroInStrip(target), [&history = history_, file = target.file(), how, work](
                                                      const SiteAccess& site, const auto& mayLose) {
    return history.change(
        file, how, [&] { return work(site); }, mayLose);
  });
}

bool MacroOperations::reads(const MacroTarget& target) { return !transfers_.look(placeOf(target)).cancelled; }

void MacroOperations::createOnDisk(Pane pane, const MacroTarget& target) {
  const Outcome done = change(target, MacroChange::kCreate, [target](const SiteAccess& site) {
    return tessaly::createMacro(site, target.name, target.file());
  });
  finishOnDisk(pane, target, done.written());
  const QString macro = macroInStrip(target);
  tellOnDisk(target, done, tr("created: %1").arg(macro), tr("NOT created: %1%2").arg(macro, QString()));
}

// The new macro goes through this pane's working copy, which holds it from then on; its row is chosen once
// the panel lists it.
void MacroOperations::createOnPanel(Pane pane, const MacroTarget& target) {
  auto loan = state(pane).copy.lend();
  if (!loan) return;
  Expected<std::string> made = cancelledFailure();
  const bool wanted =
      transfers_.beside().finish(tr("Writing %1").arg(macroInStrip(target)), [&, path = loan->path()] {
        const Outcome created = tessaly::createMacro(site_, target.name, path);
        made = created ? readFile(site_.root, path) : created.failure();
      });
  if (!wanted) made = cancelledFailure();
  const auto toPanel =
      made ? open_.sendable(*made, macroInStrip(target), std::nullopt) : std::optional<Sendable>();
  const bool there = toPanel && sends(target, *toPanel, MacroChange::kCreate);
  if (there || !state(pane).copy.unsaved()) state(pane).view.macros().selectRow(-1);
  const Grade grade = transfers_.sentGrade();
  if (there) {
    static_cast<void>(loan->show(target, true));
    browser(pane).refreshMacroNames();
    open_.follow(target, pane);
  }
  loan.reset();
  const QString reason = !made ? inBrackets(made.failure()) : toPanel ? transfers_.reason() : QString();
  if (there)
    tellDone(target, tr("created on the panel: %1%2").arg(macroInStrip(target), reason), undo_.finish(*made),
             grade);
  else
    tellNotDone(target, tr("NOT created on the panel: %1%2").arg(macroInStrip(target), reason));
}

bool MacroOperations::sends(const MacroTarget& target, const Sendable& macro, MacroChange how) {
  static_cast<void>(transfers_.send(placeOf(target), macro, how, overwriting_.asking(macroInStrip(target))));
  return transfers_.sent();
}

void MacroOperations::copyMacro(Pane pane) {
  const Pane from = other(pane);
  const MacroRow* selected = state(from).selectedMacro();
  if (selected == nullptr || state(pane).viewOnly()) return;
  const MacroRow source = *selected;
  const MacroRow* chosen = state(pane).selectedMacro();
  CopyMacroDialog dialog(source.numberText, source.shownName(),
                         chosen != nullptr ? parseInt(chosen->numberText) : -1, browser(pane).names(),
                         window_);
  dialog.setAbout([&](int number) { return overwriting_.about(state(pane), placeIn(pane, number, {})); });
  if (dialog.exec() != QDialog::Accepted) return;
  const MacroTarget target = placeIn(pane, dialog.number(), source.shownName());
  if (!target.complete()) return;
  if (onPanel(from) && browser(from).workplace() <= 0) return;
  undo_.begin(tr("copy %1 to %2").arg(nameInStrip(source.text()), QString::fromStdString(target.numberText)),
              placeOf(target));
  if (onPanel(pane))
    copyToPanel(pane, source, target);
  else if (!open_.mayPutAt(pane, target, from))
    return;
  else if (onPanel(from))
    copyFromPanel(pane, source, target);
  else
    copyFromDisk(pane, source, target);
}

// What is sent is read first, and asked about as it is then; what stands there is looked at last, or it could
// change behind the question.
void MacroOperations::copyToPanel(Pane to, const MacroRow& source, const MacroTarget& target) {
  const Pane from = other(to);
  const Source read = onPanel(from) ? fetch(from, source, target) : readStored(from, source);
  if (!read.bytes) {
    tellNotCopied(source, target, read.reason);
    return;
  }
  const auto toPanel = open_.sendable(*read.bytes, nameInStrip(source.text()), read.shownIn);
  if (!toPanel) {
    emit said({Grade::kFailure, tr("NOT sent: %1").arg(nameInStrip(source.text())), placeInWindow(target)});
    return;
  }
  if (!open_.mayPutAt(to, target, read.shownIn)) return;
  const MacroChange how = state(from).olderFamily ? MacroChange::kConvert : MacroChange::kCopy;
  if (!sends(target, *toPanel, how)) {
    tellNotCopied(source, target, transfers_.reason());
    return;
  }
  const QString reason = transfers_.reason() + read.reason;
  const Grade grade =
      std::max(read.reason.isEmpty() ? Grade::kDone : Grade::kWarning, transfers_.sentGrade());
  open_.follow(target);
  tellCopied(from, source, target, reason, undo_.finish(read.bytes), grade);
}

MacroOperations::Source MacroOperations::readStored(Pane from, const MacroRow& source) {
  Source read{.shownIn = from};
  const std::string file = sourceFile(from, source, read.reason);
  if (file.empty()) return read;
  auto bytes = transfers_.read(file);
  if (bytes)
    read.bytes = *std::move(bytes);
  else
    read.reason = inBrackets(bytes.failure());
  return read;
}

// Within the target's workplace, and through the other pane's working copy: deliberate.
MacroOperations::Source MacroOperations::fetch(Pane from, const MacroRow& source, const MacroTarget& target) {
  Source read;
  WorkingCopy& buffer = state(from).copy;
  auto loan = buffer.lend();
  if (!loan) return read;
  if (!transfers_.download(target.address, target.workplace, source.numberText, loan->path()))
    read.reason = transfers_.reason();
  else if (auto bytes = readFile(site_.root, loan->path()))
    read.bytes = *std::move(bytes);
  else
    read.reason = inBrackets(bytes.failure());
  // The buffer may hold just the macro that was shown from it.
  const std::optional<MacroTarget> shownThere = buffer.target();
  const bool held = shownThere && shownThere->address == target.address &&
                    shownThere->workplace == target.workplace && shownThere->numberText == source.numberText;
  if (held && loan->show(*shownThere, true)) read.shownIn = from;
  if (!held) state(from).view.macros().selectRow(-1);
  return read;
}

std::string MacroOperations::sourceFile(Pane from, const MacroRow& source, QString& reason) {
  const std::string folder =
      state(from).olderFamily ? browser(from).keyFolder() : browser(from).macroFolder();
  if (!state(from).snapshot && folder.empty()) return {};
  if (!state(from).snapshot && !state(from).olderFamily) return macroFile(folder, source.numberText);
  const auto held =
      state(from).snapshot ? browser(from).snapshotBytes(source.numberText) : std::optional<std::string>();
  int lost = 0;
  Outcome made = Failure{Failure::Kind::kMissing, {}};
  const auto make = [&] {
    if (state(from).snapshot) {
      if (held) made = writeFile(site_.root, kClassicWorkingCopy, *held);
      return;
    }
    const std::string file = keyFile(folder, source.numberText);
    made = convertKeyFile(site_, displayUtf8(source.shownName()), kClassicWorkingCopy, file);
    KeyFile key;
    if (made) key.load(site_.root, file, keyFileIndex(file));
    lost = static_cast<int>(key.unreadable().size());
  };
  if (!transfers_.beside().finish(tr("Reading %1").arg(nameInStrip(source.text())), make))
    made = cancelledFailure();
  reason = made && lost > 0 ? tr(" (%n commands of the key cannot be read in a macro)", nullptr, lost)
                            : inBrackets(made);
  return made ? std::string(kClassicWorkingCopy) : std::string();
}

void MacroOperations::copyFromDisk(Pane to, const MacroRow& source, const MacroTarget& target) {
  const Pane from = other(to);
  QString reason;
  const std::string file = sourceFile(from, source, reason);
  if (file.empty()) {
    tellNotCopied(source, target, reason);
    return;
  }
  const Grade grade = reason.isEmpty() ? Grade::kDone : Grade::kWarning;
  const MacroChange how = state(from).olderFamily ? MacroChange::kConvert : MacroChange::kCopy;
  const Outcome copied = change(target, how, [file, target](const SiteAccess& site) {
    return copyFile(site.root, file, target.file());
  });
  finishOnDisk(to, target, copied.written());
  if (copied.written())
    tellCopied(from, source, target, reason + inBrackets(copied), undo_.finishOnDisk(),
               copied ? grade : Grade::kWarning);
  else
    tellNotCopied(source, target, inBrackets(copied));
}

void MacroOperations::copyFromPanel(Pane to, const MacroRow& source, const MacroTarget& target) {
  const Pane from = other(to);
  Outcome tried;
  std::optional<Failure> lost;
  const auto attempt = [&](const MacroHistory::MayLose& mayLose) {
    return transfers_.download(connection_.address(from), browser(from).workplace(), source.numberText,
                               target.file(), [&](const MacroHistory::Work& fetch) {
                                 tried = history_.change(target.file(), MacroChange::kCopy, fetch, mayLose);
                               });
  };
  // Asked between two tries, as whenever a macro is overwritten.
  bool came = attempt([&lost](const Failure& why) {
    lost = why;
    return false;
  });
  if (lost && overwriting_.asking(macroInStrip(target))(*lost)) came = attempt({});
  finishOnDisk(to, target, came);
  if (came)
    tellCopied(from, source, target, inBrackets(tried), undo_.finishOnDisk(),
               tried ? Grade::kDone : Grade::kWarning);
  else
    tellNotCopied(source, target, tried ? transfers_.reason() : inBrackets(tried));
}

// What is copied is what was saved last, which the pane beside it may not show.
void MacroOperations::tellCopied(Pane from, const MacroRow& source, const MacroTarget& target,
                                 const QString& reason, bool kept, Grade grade) {
  const QString number = QString::fromStdString(target.numberText);
  QString text = tr("copied: %1 to %2%3").arg(nameInStrip(source.text()), number, reason);
  if (state(from).copy.unsaved()) {
    text = tr("%1; without the unsaved changes that are shown there").arg(text);
    grade = std::max(grade, Grade::kWarning);
  }
  tellDone(target, text, kept, grade);
}

void MacroOperations::tellNotCopied(const MacroRow& source, const MacroTarget& target,
                                    const QString& reason) {
  const QString number = QString::fromStdString(target.numberText);
  tellNotDone(target, tr("NOT copied: %1 to %2%3").arg(nameInStrip(source.text()), number, reason));
}

// What a panel is asked to do strikes the one that the line leads to, which the list tells of.
MacroTarget MacroOperations::selectedToAsk(Pane pane) const {
  MacroTarget target = open_.selectedTarget(pane);
  if (target.source == PaneSource::kPanel) target.address = connection_.askedAddress(pane);
  return target;
}

void MacroOperations::renameMacro(Pane pane) {
  const MacroTarget target = selectedToAsk(pane);
  if (!target.complete() || state(pane).viewOnly()) return;
  RenameMacroDialog dialog(target.name, window_);
  if (dialog.exec() != QDialog::Accepted) return;
  undo_.begin(renaming(target, dialog.newName()), placeOf(target));
  if (target.source == PaneSource::kPanel)
    renameOnPanel(target, dialog.newName());
  else
    renameOnDisk(pane, target, dialog.newName());
}

void MacroOperations::renameOnPanel(const MacroTarget& target, const std::string& name) {
  const bool asked = transfers_.rename(placeOf(target), name);
  if (asked) undo_.noteRename(renaming(target, name), target, name);
  // A working copy with the old name would undo the new one at its next save.
  if (asked) open_.forget(placeOf(target));
  const QString text =
      asked ? tr("asked: the panel is to rename %1") : tr("NOT asked: the panel cannot be told to rename %1");
  emit said({asked ? Grade::kDone : Grade::kFailure, text.arg(macroInStrip(target)), placeInWindow(target)});
}

void MacroOperations::renameOnDisk(Pane pane, const MacroTarget& target, const std::string& name) {
  if (!reads(target)) {
    tellNotDone(target, tr("NOT renamed: %1%2").arg(macroInStrip(target), transfers_.reason()));
    return;
  }
  const Outcome done = change(target, MacroChange::kRename, [target, name](const SiteAccess& site) {
    std::string given = name;
    return tessaly::renameMacro(site, target.file(), given);
  });
  finishOnDisk(pane, target, done.written());
  tellOnDisk(target, done, tr("renamed: %1 to %2").arg(nameInStrip(target.numberText), nameInStrip(name)),
             tr("NOT renamed: %1%2").arg(macroInStrip(target), QString()));
}

void MacroOperations::deleteMacro(Pane pane) {
  const MacroTarget target = selectedToAsk(pane);
  if (!target.complete() || state(pane).viewOnly()) return;
  const std::string entry = target.numberText + " - " + target.name;
  if (!site_.messages.ask(format(kDeleteQuestion, visibleUtf8(entry).c_str()), MessageIcon::kQuestion))
    return;
  undo_.begin(tr("delete %1").arg(macroInStrip(target)), placeOf(target));
  if (target.source == PaneSource::kPanel)
    deleteOnPanel(target);
  else
    deleteOnDisk(pane, target);
}

void MacroOperations::deleteOnDisk(Pane pane, const MacroTarget& target) {
  const int row = state(pane).view.macros().selectedRow();
  if (!reads(target)) {
    tellNotDone(target, tr("NOT deleted: %1%2").arg(macroInStrip(target), transfers_.reason()));
    return;
  }
  const Outcome done = change(target, MacroChange::kDelete, [target](const SiteAccess& site) {
    return removeFile(site.root, target.file());
  });
  listAnew(pane, target, done.written());
  state(pane).view.macros().makeCurrent(row);
  if (done.written()) open_.follow(target, pane);
  const QString macro = macroInStrip(target);
  tellOnDisk(target, done, tr("deleted: %1").arg(macro), tr("NOT deleted: %1%2").arg(macro, QString()));
}

void MacroOperations::deleteOnPanel(const MacroTarget& target) {
  PanelMacros::Deletion deletion = transfers_.remove(placeOf(target), PanelMacros::OldContent::kKept);
  const QString macro = macroInStrip(target);
  if (!deletion.kept) {
    const QString question =
        tr("The history could not keep %1, so that it cannot be put back:\n%2.\n\nDelete it all the same?")
            .arg(macro, failureText(deletion.kept.failure()));
    if (site_.messages.ask(question.toStdString(), MessageIcon::kQuestion))
      deletion = transfers_.remove(placeOf(target), PanelMacros::OldContent::kLost);
  }
  if (deletion.asked)
    tellDone(target, tr("asked: the panel is to delete %1").arg(macro), undo_.finish(std::nullopt));
  else
    tellNotDone(target, deletion.kept ? tr("NOT asked: the panel cannot be told to delete %1").arg(macro)
                                      : tr("NOT deleted: %1").arg(macro));
}

}  // namespace tessaly
