#include "app/MacroOperations.h"

#include "app/Browser.h"
#include "app/CopyMacroDialog.h"
#include "app/CreateMacroDialog.h"
#include "app/FailureText.h"
#include "app/MacroTransfers.h"
#include "app/OpenMacros.h"
#include "app/RenameMacroDialog.h"
#include "app/StatusStrip.h"
#include "model/KeyFile.h"
#include "model/MacroHistory.h"
#include "platform/Files.h"
#include "platform/MacroNumber.h"
#include "platform/Text.h"

namespace tessaly {

namespace {

constexpr const char* kDeleteQuestion = "Delete macro: %s ?   ";

QString inBrackets(const Outcome& outcome) {
  return outcome ? QString() : QStringLiteral(" (%1)").arg(failureText(outcome.failure()));
}

}  // namespace

MacroOperations::MacroOperations(const PaneAccesses& panes, SiteAccess site, MacroHistory& history,
                                 const PanelConnection& connection, MacroTransfers& transfers,
                                 OpenMacros& open, MacroNames& names, QWidget* window)
    : panes_(panes),
      site_(site),
      history_(history),
      connection_(connection),
      transfers_(transfers),
      open_(open),
      names_(names),
      window_(window) {}

void MacroOperations::tellDone(const QString& text) {
  const bool unkept = history_.takeFailure().has_value();
  emit said(unkept ? tr("%1; the history could not keep what was there before").arg(text) : text);
}

// Without a folder or a workplace when the pane has none chosen.
MacroTarget MacroOperations::placeIn(Pane pane, int number, const std::string& name) const {
  return {connection_.source(pane),  browser(pane).macroFolder(), connection_.address(pane),
          browser(pane).workplace(), MacroNumber::textOf(number), name};
}

void MacroOperations::finishOnDisk(Pane pane, const MacroTarget& changed, bool done) {
  browser(pane).listMacros();
  ListBox& list = state(pane).view.macros();
  list.makeCurrent(list.rows().rowOfNumber(parseInt(changed.numberText)));
  if (done) open_.follow(changed, pane);
}

void MacroOperations::createMacro(Pane pane) {
  const MacroRow* row = state(pane).selectedMacro();
  CreateMacroDialog dialog(row != nullptr ? parseInt(row->numberText) : -1, browser(pane).names(), window_);
  if (state(pane).olderFamily || dialog.exec() != QDialog::Accepted) return;
  const MacroTarget target = placeIn(pane, dialog.number(), dialog.name());
  if (!target.complete()) return;
  if (onPanel(pane))
    createOnPanel(pane, target);
  else
    createOnDisk(pane, target);
}

void MacroOperations::createOnDisk(Pane pane, const MacroTarget& target) {
  const Outcome done = history_.change(target.file(), MacroChange::kCreate, [&] {
    return tessaly::createMacro(site_, target.name, target.file());
  });
  finishOnDisk(pane, target, done.done());
  tellDone(done ? tr("created: %1").arg(macroInStrip(target))
                : tr("NOT created: %1%2").arg(macroInStrip(target), inBrackets(done)));
}

// The new macro goes through this pane's working copy, which then no longer holds what was shown.
void MacroOperations::createOnPanel(Pane pane, const MacroTarget& target) {
  auto loan = state(pane).copy.lend();
  if (!loan) return;
  const Outcome made = tessaly::createMacro(site_, target.name, loan->path());
  if (made)
    static_cast<void>(transfers_.upload(target.address, target.workplace, target.numberText, loan->path(),
                                        MacroChange::kCreate));
  state(pane).view.macros().selectRow(-1);
  loan.reset();
  const bool there = made && transfers_.sent();
  if (there) open_.follow(target, pane);
  const QString reason = made ? transfers_.reason() : inBrackets(made);
  tellDone(there ? tr("created on the panel: %1%2").arg(macroInStrip(target), reason)
                 : tr("NOT created on the panel: %1%2").arg(macroInStrip(target), reason));
}

void MacroOperations::copyMacro(Pane pane) {
  const Pane from = other(pane);
  const MacroRow* selected = state(from).selectedMacro();
  if (selected == nullptr || state(pane).olderFamily) return;
  const MacroRow source = *selected;
  const MacroRow* chosen = state(pane).selectedMacro();
  CopyMacroDialog dialog(source.numberText, source.shownName(),
                         chosen != nullptr ? parseInt(chosen->numberText) : -1, browser(pane).names(),
                         window_);
  if (dialog.exec() != QDialog::Accepted) return;
  const MacroTarget target = placeIn(pane, dialog.number(), source.shownName());
  if (!target.complete()) return;
  if (!onPanel(from))
    copyFromDisk(pane, source, target);
  else if (onPanel(pane))
    copyOnPanel(pane, source, target);
  else
    copyFromPanel(pane, source, target);
}

std::string MacroOperations::sourceFile(Pane from, const MacroRow& source, QString& reason) {
  if (!state(from).olderFamily) {
    const std::string folder = browser(from).macroFolder();
    return folder.empty() ? std::string() : macroFile(folder, source.numberText);
  }
  const std::string folder = browser(from).keyFolder();
  if (folder.empty()) return {};
  const Outcome converted = convertKeyFile(site_, displayUtf8(source.shownName()), kClassicWorkingCopy,
                                           keyFile(folder, source.numberText));
  reason = inBrackets(converted);
  if (converted) {
    KeyFile key;
    key.load(site_.root, keyFile(folder, source.numberText),
             keyFileIndex(keyFile(folder, source.numberText)));
    const auto lost = static_cast<int>(key.unreadable().size());
    if (lost > 0) reason = tr(" (%n commands of the key cannot be read in a macro)", nullptr, lost);
  }
  return converted ? std::string(kClassicWorkingCopy) : std::string();
}

void MacroOperations::copyFromDisk(Pane to, const MacroRow& source, const MacroTarget& target) {
  const Pane from = other(to);
  QString reason;
  const std::string file = sourceFile(from, source, reason);
  if (file.empty()) {
    tellCopied(source, target, false, reason);
    return;
  }
  const MacroChange change = state(from).olderFamily ? MacroChange::kConvert : MacroChange::kCopy;
  if (target.source == PaneSource::kPanel) {
    static_cast<void>(transfers_.upload(target.address, target.workplace, target.numberText, file, change));
    reason = transfers_.reason() + (transfers_.sent() ? reason : QString());
    if (transfers_.sent()) open_.follow(target);
    tellCopied(source, target, transfers_.sent(), reason);
    return;
  }
  const Outcome copied =
      history_.change(target.file(), change, [&] { return copyFile(site_.root, file, target.file()); });
  finishOnDisk(to, target, copied.done());
  tellCopied(source, target, copied.done(), copied ? reason : inBrackets(copied));
}

void MacroOperations::copyFromPanel(Pane to, const MacroRow& source, const MacroTarget& target) {
  const Pane from = other(to);
  if (browser(from).workplace() <= 0) return;
  bool came = false;
  const Outcome tried = history_.change(target.file(), MacroChange::kCopy, [&]() -> Outcome {
    came = transfers_.download(connection_.address(from), browser(from).workplace(), source.numberText,
                               target.file());
    return {};
  });
  finishOnDisk(to, target, came);
  tellCopied(source, target, came, !tried ? inBrackets(tried) : came ? QString() : transfers_.reason());
}

// Within the target's workplace, and through the other pane's working copy: deliberate.
void MacroOperations::copyOnPanel(Pane to, const MacroRow& source, const MacroTarget& target) {
  const Pane from = other(to);
  if (browser(from).workplace() <= 0) return;
  WorkingCopy& buffer = state(from).copy;
  auto loan = buffer.lend();
  if (!loan) return;  // it holds unsaved changes
  static_cast<void>(
      transfers_.copy(target.address, target.workplace, source.numberText, target.numberText, loan->path()));
  const QString reason = transfers_.reason();
  const bool there = transfers_.sent();
  // The buffer may hold just the macro that was shown from it.
  const std::optional<MacroTarget> shownThere = buffer.target();
  const bool held = shownThere && shownThere->address == target.address &&
                    shownThere->workplace == target.workplace && shownThere->numberText == source.numberText;
  if (!held) state(from).view.macros().selectRow(-1);
  if (held) static_cast<void>(loan->show(*shownThere, true));
  loan.reset();
  if (there) open_.follow(target);
  tellCopied(source, target, there, reason);
}

void MacroOperations::tellCopied(const MacroRow& source, const MacroTarget& target, bool done,
                                 const QString& reason) {
  const QString macro = nameInStrip(source.text());
  const QString number = QString::fromStdString(target.numberText);
  tellDone(done ? tr("copied: %1 to %2%3").arg(macro, number, reason)
                : tr("NOT copied: %1 to %2%3").arg(macro, number, reason));
}

void MacroOperations::renameMacro(Pane pane) {
  const MacroTarget target = open_.selectedTarget(pane);
  if (!target.complete() || state(pane).olderFamily) return;
  RenameMacroDialog dialog(target.name, window_);
  if (dialog.exec() != QDialog::Accepted) return;
  if (target.source == PaneSource::kPanel)
    renameOnPanel(target, dialog.newName());
  else
    renameOnDisk(pane, target, dialog.newName());
}

void MacroOperations::renameOnPanel(const MacroTarget& target, const std::string& name) {
  const int number = parseInt(target.numberText);
  names_.expect(number, name, MacroNames::Clock::now());
  const bool asked = transfers_.rename(target, name);
  if (!asked) names_.forget(number);
  // A working copy with the old name would undo the new one at its next save.
  if (asked) open_.forget(target);
  emit said(asked ? tr("asked: the panel is to rename %1").arg(macroInStrip(target))
                  : tr("NOT asked: the panel cannot be told to rename %1").arg(macroInStrip(target)));
}

void MacroOperations::renameOnDisk(Pane pane, const MacroTarget& target, const std::string& name) {
  std::string given = name;
  const Outcome done = history_.change(target.file(), MacroChange::kRename,
                                       [&] { return tessaly::renameMacro(site_, target.file(), given); });
  finishOnDisk(pane, target, done.done());
  tellDone(done ? tr("renamed: %1 to %2").arg(nameInStrip(target.numberText), nameInStrip(name))
                : tr("NOT renamed: %1%2").arg(macroInStrip(target), inBrackets(done)));
}

void MacroOperations::deleteMacro(Pane pane) {
  const MacroTarget target = open_.selectedTarget(pane);
  if (!target.complete() || state(pane).olderFamily) return;
  const std::string entry = target.numberText + " - " + target.name;
  if (!site_.messages.ask(format(kDeleteQuestion, visibleUtf8(entry).c_str()), MessageIcon::kQuestion))
    return;
  if (target.source == PaneSource::kPanel)
    deleteOnPanel(target);
  else
    deleteOnDisk(pane, target);
}

void MacroOperations::deleteOnDisk(Pane pane, const MacroTarget& target) {
  const int row = state(pane).view.macros().selectedRow();
  const Outcome done = history_.change(target.file(), MacroChange::kDelete,
                                       [&] { return removeFile(site_.root, target.file()); });
  browser(pane).listMacros();
  state(pane).view.macros().makeCurrent(row);
  if (done) open_.follow(target, pane);
  tellDone(done ? tr("deleted: %1").arg(macroInStrip(target))
                : tr("NOT deleted: %1%2").arg(macroInStrip(target), inBrackets(done)));
}

void MacroOperations::deleteOnPanel(const MacroTarget& target) {
  const int number = parseInt(target.numberText);
  const auto remove = [&](PanelMacros::OldContent old) {
    // What comes of it is the panel's to say, by the name that it publishes.
    names_.expect(number, {}, MacroNames::Clock::now());
    PanelMacros::Deletion deletion = transfers_.remove(target, old);
    if (!deletion.asked) names_.forget(number);
    return deletion;
  };
  PanelMacros::Deletion deletion = remove(PanelMacros::OldContent::kKept);
  const QString macro = macroInStrip(target);
  if (!deletion.kept) {
    const QString question =
        tr("The history could not keep %1, so that it cannot be put back:\n%2.\n\nDelete it all the same?")
            .arg(macro, failureText(deletion.kept.failure()));
    if (site_.messages.ask(question.toStdString(), MessageIcon::kQuestion))
      deletion = remove(PanelMacros::OldContent::kLost);
  }
  tellDone(deletion.asked  ? tr("asked: the panel is to delete %1").arg(macro)
           : deletion.kept ? tr("NOT asked: the panel cannot be told to delete %1").arg(macro)
                           : tr("NOT deleted: %1").arg(macro));
}

}  // namespace tessaly
