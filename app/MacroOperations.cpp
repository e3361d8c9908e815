#include "app/MacroOperations.h"

#include "app/CopyMacroDialog.h"
#include "app/CreateMacroDialog.h"
#include "app/RenameMacroDialog.h"
#include "app/TransferText.h"
#include "platform/Files.h"
#include "widgets/DialogText.h"

namespace tessaly {

namespace {

constexpr const char* kDeleteQuestion = "Delete macro: %s ?   ";

}  // namespace

MacroOperations::MacroOperations(std::array<PaneAccess, kPanes.size()> panes, SiteAccess site,
                                 MacroHistory& history, const PanelConnection& connection,
                                 PanelTransfer& panel, bool demo, QWidget* window)
    : panes_(panes),
      site_(site),
      history_(history),
      connection_(connection),
      panel_(panel),
      window_(window),
      demo_(demo) {}

bool MacroOperations::transfer(const QString& label, const PanelTransfer::Operation& operation) {
  outcome_ = panel_.run(label, operation);
  return outcome_.done();
}

QString MacroOperations::reason() const { return QStringLiteral(" (%1)").arg(transferText(outcome_)); }

bool MacroOperations::download(const std::string& address, int workplace, const std::string& number,
                               const std::string& file) {
  return transfer(tr("Fetching macro %1 from the panel").arg(shown(number)),
                  [&](PanelMacros& macros) { return macros.download(address, workplace, number, file); });
}

bool MacroOperations::upload(const std::string& address, int workplace, const std::string& number,
                             const std::string& file, MacroChange change) {
  return transfer(tr("Sending macro %1 to the panel").arg(shown(number)), [&](PanelMacros& macros) {
    return macros.upload(address, workplace, number, file, change);
  });
}

void MacroOperations::tellDone(const QString& text) {
  const bool unkept = history_.takeFailure();
  emit said(unkept ? tr("%1; the history could not keep what was there before").arg(text) : text);
}

MacroTarget MacroOperations::selectedTarget(Pane pane) const {
  const MacroRow* row = state(pane).selectedMacro();
  if (row == nullptr) return {};
  return {connection_.source(pane),  browser(pane).macroFolder(),
          connection_.address(pane), browser(pane).workplace(),
          row->numberText,           row->name};
}

void MacroOperations::startOpening(Pane pane) {
  state(pane).commandPosition = 0;
  state(pane).updatedMarks.clear();
  emit macroChosen();
}

void MacroOperations::openMacro(Pane pane) {
  PaneState& here = state(pane);
  startOpening(pane);
  const MacroRow* row = here.selectedMacro();
  if (row == nullptr) {
    here.copy.reset();
    browser(pane).showCommands();
    return;
  }
  here.macroPosition = here.view.macros().selectedRow();
  if (here.olderFamily && !onPanel(pane))
    showKeyFile(pane, row->numberText);
  else
    static_cast<void>(openTarget(pane, selectedTarget(pane)));
  emit changed();
}

void MacroOperations::showKeyFile(Pane pane, const std::string& numberText) {
  const std::string folder = browser(pane).keyFolder();
  if (folder.empty()) return;
  const std::string path = keyFile(folder, numberText);
  KeyFile file;
  file.load(site_.root, path, keyFileIndex(path));
  state(pane).copy.showKeyFile(std::move(file));
  browser(pane).showCommands();
}

bool MacroOperations::openTarget(Pane pane, const MacroTarget& target) {
  PaneState& here = state(pane);
  const bool panel = target.source == PaneSource::kPanel;
  if (panel ? target.workplace <= 0 : target.folder.empty()) return false;
  const bool filled = panel ? download(target.address, target.workplace, target.numberText, here.copy.path())
                            : copyFile(site_.root, target.file(), here.copy.path()).done();
  const bool loaded = here.copy.open(target, filled);
  browser(pane).showCommands();
  here.view.commands().scrollToTop();
  const QString macro = shown(target.numberText + " - " + target.name);
  if (!filled)
    emit said(tr("%1: could not be fetched%2; the working copy still holds what was open before")
                  .arg(macro, panel ? reason() : QString()));
  else if (!loaded)
    emit said(tr("%1: cannot be read").arg(macro));
  else
    emit said(tr("%1: opened").arg(macro));
  return filled && loaded;
}

void MacroOperations::rebuild(Pane pane, int reveal) {
  browser(pane).listMacros();
  ListBox& list = state(pane).view.macros();
  const int row = list.rows().rowOfNumber(reveal);
  if (reveal >= 0) list.makeCurrent(row);
  emit changed();
}

void MacroOperations::createMacro(Pane pane) {
  PaneState& here = state(pane);
  const MacroRow* row = here.selectedMacro();
  CreateMacroDialog dialog(row != nullptr ? parseInt(row->numberText) : -1, browser(pane).names(), window_);
  if (here.olderFamily || dialog.exec() != QDialog::Accepted) return;
  if (onPanel(pane)) {
    createOnPanel(pane, dialog.number(), dialog.name());
    return;
  }
  const std::string folder = browser(pane).macroFolder();
  if (folder.empty()) return;
  const std::string file = macroFile(folder, dialog.number());
  history_.keepFile(file, MacroChange::kCreate);
  const bool done = tessaly::createMacro(site_, dialog.name(), file);
  rebuild(pane, dialog.number());
  const QString macro = shown(macroNumberText(dialog.number()) + " - " + dialog.name());
  tellDone(done ? tr("%1: created").arg(macro) : tr("%1: could not be created").arg(macro));
}

void MacroOperations::createOnPanel(Pane pane, int number, const std::string& name) {
  PaneState& here = state(pane);
  const int workplace = browser(pane).workplace();
  if (workplace <= 0) return;
  outcome_ = {FtpClient::Result::kLocalFile};
  const bool done = tessaly::createMacro(site_, name, here.copy.path()) &&
                    upload(connection_.address(pane), workplace, macroNumberText(number), here.copy.path(),
                           MacroChange::kCreate);
  // The new macro went through this pane's working copy, which no longer holds what was shown.
  here.view.macros().selectRow(-1);
  here.copy.reset();
  browser(pane).showCommands();
  emit changed();
  const QString macro = shown(macroNumberText(number) + " - " + name);
  const bool there = outcome_.transfer == FtpClient::Result::kDone;
  tellDone(there ? tr("%1: created on the panel%2").arg(macro, done ? QString() : reason())
                 : tr("%1: could not be created on the panel%2").arg(macro, reason()));
}

void MacroOperations::copyMacro(Pane pane) {
  const Pane from = other(pane);
  const MacroRow* selected = state(from).selectedMacro();
  if (selected == nullptr || state(pane).olderFamily) return;
  const MacroRow source = *selected;
  const MacroRow* target = state(pane).selectedMacro();
  CopyMacroDialog dialog(source.numberText, source.shownName(),
                         target != nullptr ? parseInt(target->numberText) : -1, browser(pane).names(),
                         window_);
  if (dialog.exec() != QDialog::Accepted) return;
  if (onPanel(from))
    copyFromPanel(pane, source, dialog.number());
  else
    copyFromDisk(pane, source, dialog.number());
}

std::string MacroOperations::sourceFile(Pane from, const MacroRow& source) {
  if (!state(from).olderFamily) {
    const std::string folder = browser(from).macroFolder();
    return folder.empty() ? std::string() : macroFile(folder, source.numberText);
  }
  const std::string folder = browser(from).keyFolder();
  if (folder.empty()) return {};
  const bool converted = convertKeyFile(site_, displayUtf8(source.shownName()), kClassicWorkingCopy,
                                        keyFile(folder, source.numberText));
  return converted ? std::string(kClassicWorkingCopy) : std::string();
}

void MacroOperations::copyFromDisk(Pane to, const MacroRow& source, int number) {
  const bool panel = onPanel(to);
  const int workplace = browser(to).workplace();
  const std::string folder = panel ? std::string() : browser(to).macroFolder();
  if (panel ? workplace <= 0 : folder.empty()) return;
  const std::string file = sourceFile(other(to), source);
  const MacroChange change = state(other(to)).olderFamily ? MacroChange::kConvert : MacroChange::kCopy;
  if (!panel && !file.empty()) history_.keepFile(macroFile(folder, number), change);
  const bool done = !file.empty() &&
                    (panel ? upload(connection_.address(to), workplace, macroNumberText(number), file, change)
                           : copyFile(site_.root, file, macroFile(folder, number)).done());
  if (!panel) rebuild(to, number);
  sayCopied(source, number, done, panel && !file.empty());
}

void MacroOperations::sayCopied(const MacroRow& source, int number, bool done, bool transferred) {
  const QString macro = shown(source.text());
  const QString why = transferred && !done ? reason() : QString();
  // A macro that was sent is there, whether or not the panel could be told so.
  const bool there = done || (transferred && outcome_.transfer == FtpClient::Result::kDone);
  tellDone(there ? tr("%1: copied to %2%3").arg(macro, shown(macroNumberText(number)), why)
                 : tr("%1: could not be copied%2").arg(macro, why));
}

void MacroOperations::copyFromPanel(Pane to, const MacroRow& source, int number) {
  const Pane from = other(to);
  const int sourceWorkplace = browser(from).workplace();
  if (sourceWorkplace <= 0) return;
  bool done = false;
  if (onPanel(to)) {
    const int workplace = browser(to).workplace();
    if (workplace <= 0) return;
    const std::string address = connection_.address(to);
    done =
        transfer(tr("Copying macro %1 on the panel").arg(shown(source.numberText)), [&](PanelMacros& macros) {
          return macros.copyOnPanel(address, workplace, source.numberText, macroNumberText(number),
                                    workingCopyPath(from));
        });
    // Went through the other pane's working copy, which now holds the macro that is shown there.
    PaneState& there = state(from);
    const std::optional<MacroTarget> target = there.copy.target();
    const bool held = target && target->address == address && target->workplace == workplace &&
                      target->numberText == source.numberText && there.copy.open(*target, true);
    if (!held) {
      there.view.macros().selectRow(-1);
      there.copy.reset();
    }
    browser(from).showCommands();
  } else {
    const std::string folder = browser(to).macroFolder();
    if (folder.empty()) return;
    history_.keepFile(macroFile(folder, number), MacroChange::kCopy);
    done = download(connection_.address(from), sourceWorkplace, source.numberText, macroFile(folder, number));
    rebuild(to, number);
  }
  emit changed();
  sayCopied(source, number, done, true);
}

void MacroOperations::renameMacro(Pane pane) {
  const MacroTarget target = selectedTarget(pane);
  const bool panel = target.source == PaneSource::kPanel;
  if (target.numberText.empty() || state(pane).olderFamily) return;
  if (panel ? target.workplace <= 0 : target.folder.empty()) return;
  RenameMacroDialog dialog(target.name, window_);
  if (dialog.exec() != QDialog::Accepted) return;
  std::string name = dialog.newName();
  if (panel) {
    const bool asked = panel_.macros().rename(target.workplace, target.numberText, name);
    emit said(asked ? tr("%1: the panel was asked to rename it").arg(shown(target.numberText))
                    : tr("%1: the panel could not be asked to rename it").arg(shown(target.numberText)));
    return;
  }
  history_.keepFile(target.file(), MacroChange::kRename);
  const bool done = tessaly::renameMacro(site_, target.file(), name);
  rebuild(pane, parseInt(target.numberText));
  if (done) clearOther(pane, target.file());
  tellDone(done ? tr("%1: renamed to %2").arg(shown(target.numberText), shown(name))
                : tr("%1: could not be renamed").arg(shown(target.numberText)));
}

void MacroOperations::clearOther(Pane pane, const std::string& file) {
  const Pane there = other(pane);
  WorkingCopy& copy = state(there).copy;
  const auto& target = copy.target();
  if (!target || target->source != PaneSource::kHarddisk || copy.edited()) return;
  if (!site_.root.same(target->file(), file)) return;
  state(there).view.macros().selectRow(-1);
  copy.reset();
  browser(there).showCommands();
}

void MacroOperations::deleteMacro(Pane pane) {
  const MacroTarget target = selectedTarget(pane);
  const bool panel = target.source == PaneSource::kPanel;
  if (target.numberText.empty() || state(pane).olderFamily) return;
  if (panel ? target.workplace <= 0 : target.folder.empty()) return;
  const std::string entry = target.numberText + " - " + target.name;
  if (!site_.messages.ask(format(kDeleteQuestion, entry.c_str()), MessageIcon::kQuestion)) return;
  if (panel) {
    deleteOnPanel(target);
    return;
  }
  const int row = state(pane).view.macros().selectedRow();
  history_.keepFile(target.file(), MacroChange::kDelete);
  const bool done = removeFile(site_.root, target.file()).done();
  rebuild(pane);
  state(pane).view.macros().makeCurrent(row);
  tellDone(done ? tr("%1: deleted").arg(shown(entry)) : tr("%1: could not be deleted").arg(shown(entry)));
}

void MacroOperations::deleteOnPanel(const MacroTarget& target) {
  bool asked = false;
  static_cast<void>(
      transfer(tr("Deleting macro %1 on the panel").arg(shown(target.numberText)), [&](PanelMacros& macros) {
        asked = macros.remove(target.address, target.workplace, target.numberText);
        return TransferOutcome{};
      }));
  const QString macro = shown(target.numberText + " - " + target.name);
  tellDone(asked ? tr("%1: the panel was asked to delete it").arg(macro)
                 : tr("%1: the panel could not be asked to delete it").arg(macro));
}

void MacroOperations::deleteCommand(Pane pane) {
  PaneState& here = state(pane);
  const int row = here.view.commands().selectedRow();
  if (row < 0 || !here.hasMacro() || here.copy.content() != WorkingCopy::Content::kMacro) return;
  here.updatedMarks.clear();  // they count lines that now move
  const bool done = here.copy.remove(row);
  browser(pane).showCommands(row);
  emit changed();
  emit said(done ? tr("command %1 deleted").arg(row + 1)
                 : tr("command %1 could not be deleted").arg(row + 1));
}

bool MacroOperations::keepUnsaved(const WorkingCopy& copy) {
  const auto bytes = readFile(site_.root, copy.path());
  return bytes && history_.keep(*bytes, placeOf(*copy.target()), MacroChange::kUnsaved);
}

MacroOperations::Saved MacroOperations::save(Pane pane) {
  PaneState& here = state(pane);
  const std::optional<MacroTarget> target = here.copy.target();
  if (!here.copy.edited()) return Saved::kNothing;
  const bool panel = target && target->source == PaneSource::kPanel;
  if (!target || (panel && target->workplace <= 0)) {
    emit said(tr("NOT saved: this macro has not come from a place that it could go back to"));
    return Saved::kNothing;
  }
  if (panel && demo_) {
    here.copy.leaveEditState();
    emit changed();
    emit said(tr("the demonstration sends nothing"));
    return Saved::kDone;
  }
  const bool overwrites = here.copy.targetChanged();
  if (!panel) history_.keepFile(target->file(), MacroChange::kSave);
  const bool done = panel ? upload(target->address, target->workplace, target->numberText, here.copy.path(),
                                   MacroChange::kSave)
                          : here.copy.saveToDisk();
  // A macro that was sent is there, whether or not the panel could be told so.
  const bool saved = done || (panel && outcome_.transfer == FtpClient::Result::kDone);
  // Edit state ends all the same, and the next macro that is opened takes the working copy's place.
  const bool kept = !saved && keepUnsaved(here.copy);
  here.copy.leaveEditState();
  if (saved || kept) browser(pane).catchUp();
  emit changed();
  const QString macro = shown(target->numberText + " - " + target->name);
  tellDone(done && overwrites ? tr("%1: saved over what another program had written there").arg(macro)
           : done             ? tr("%1: saved").arg(macro)
           : saved            ? tr("%1: saved%2").arg(macro, reason())
           : kept
               ? tr("%1: NOT saved%2; the history keeps the changes").arg(macro, panel ? reason() : QString())
               : tr("%1: NOT saved%2; only this pane still holds the changes")
                     .arg(macro, panel ? reason() : QString()));
  return saved ? Saved::kDone : Saved::kFailed;
}

void MacroOperations::discard(Pane pane) {
  startOpening(pane);
  const std::optional<MacroTarget> noted = state(pane).copy.target();
  const MacroTarget target = noted ? *noted : selectedTarget(pane);
  const bool opened = !target.numberText.empty() && openTarget(pane, target);
  state(pane).copy.leaveEditState();
  browser(pane).catchUp();
  emit changed();
  if (opened) emit said(tr("%1: changes discarded").arg(shown(target.numberText + " - " + target.name)));
}

}  // namespace tessaly
