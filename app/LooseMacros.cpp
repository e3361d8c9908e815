#include "app/LooseMacros.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>

#include "app/Browser.h"
#include "app/CopyMacroDialog.h"
#include "app/FailureText.h"
#include "app/MacroTransfers.h"
#include "app/PlaceText.h"
#include "app/SavePlaces.h"
#include "app/StatusStrip.h"
#include "platform/ChosenPath.h"
#include "platform/Files.h"
#include "widgets/DialogText.h"

namespace tessaly {

namespace {

Message saved(const QString& macro, const Outcome& written, const QString& where = {}) {
  return {written ? Grade::kDone : Grade::kWarning,
          LooseMacros::tr("saved: %1").arg(macro) + inBrackets(written), where};
}

}  // namespace

LooseMacros::LooseMacros(const PaneAccesses& panes, SiteAccess site, MacroHistory& history,
                         MacroTransfers& transfers, OpenMacros& open, QWidget* window)
    : panes_(panes),
      site_(site),
      history_(history),
      transfers_(transfers),
      overwriting_(site, transfers),
      open_(open),
      window_(window) {
  for (const Pane pane : kPanes)
    connect(&state(pane).view, &MacroPane::fileDropped, this,
            [this, pane](const QString& file) { LooseMacros::open(pane, file); });
}

void LooseMacros::choose(Pane pane) {
  const QString file = QFileDialog::getOpenFileName(window_, tr("Open a Macro File"), {},
                                                    tr("Macro files") + QStringLiteral(" (*.mac *.MAC)"));
  if (!file.isEmpty()) open(pane, file);
}

void LooseMacros::open(Pane pane, const QString& file) {
  WorkingCopy& copy = state(pane).copy;
  const QString name = nameInStrip(QFileInfo(file).fileName().toStdString());
  if (copy.edited()) {
    emit said({Grade::kFailure, tr("NOT opened: %1 (the pane has unsaved changes)").arg(name),
               placeInWindow(state(pane))});
    return;
  }
  const std::string path = chosenPath(site_.root, hostPath(file.toStdString()));
  auto bytes = transfers_.read(path);
  const Outcome shown = bytes ? copy.showLoose(*std::move(bytes), path) : Outcome(bytes.failure());
  if (shown) state(pane).view.macros().selectRow(-1);
  emit said({shown ? Grade::kDone : Grade::kFailure,
             shown ? tr("opened: %1; \"Save As...\" gives it a place").arg(name)
                   : tr("NOT opened: %1 (%2)").arg(name, failureText(shown.failure())),
             placeInWindow(state(pane))});
  emit changed();
}

void LooseMacros::saveAs(Pane pane) {
  if (!state(pane).copy.macro() || !state(pane).hasMacro()) {
    emit said({Grade::kNote, tr("there is no macro to be saved"), placeInWindow(state(pane))});
    return;
  }
  auto* menu = new QMenu(window_);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  offerSavePlaces(
      *menu, panes_, true, [this, pane](Pane folderOf) { saveInFolder(pane, folderOf); },
      [this, pane] { saveInFile(pane); });
  menu->popup(state(pane).view.mapToGlobal(state(pane).view.rect().topLeft()));
}

Outcome LooseMacros::write(Pane pane, const std::string& path) {
  const std::string bytes = state(pane).copy.bytes();
  Outcome written = overwriting_.write(
      shown(path), [&history = history_, path, bytes](const SiteAccess& site, const auto& mayLose) {
        return history.change(
            path, MacroChange::kSave, [&] { return writeFile(site.root, path, bytes); }, mayLose);
      });
  if (!written.written())
    emit said({Grade::kFailure, tr("NOT saved: %1 (%2)").arg(shown(path), failureText(written.failure()))});
  return written;
}

bool LooseMacros::isAnother(Pane pane, int opening) {
  const bool another = state(pane).copy.opening() != opening;
  if (another)
    emit said({Grade::kFailure, tr("NOT saved: the pane shows another macro meanwhile"),
               placeInWindow(state(pane))});
  return another;
}

void LooseMacros::saveInFolder(Pane pane, Pane folderOf) {
  WorkingCopy& copy = state(pane).copy;
  const std::string folder = browser(folderOf).macroFolder();
  const MacroNameTable names = browser(folderOf).names();
  const std::string name = copy.macro()->name().value_or("");
  const std::string number = copy.target() ? copy.target()->numberText : std::string();
  const int opening = copy.opening();
  CopyMacroDialog position(number, name, freeNumber(names, 0), names, window_);
  const auto placeAt = [&](int at) {
    return MacroTarget{PaneSource::kHarddisk,   folder, {}, browser(folderOf).workplace(),
                       MacroNumber::textOf(at), name};
  };
  position.setAbout([&](int at) { return overwriting_.about(state(folderOf), placeAt(at)); });
  if (position.exec() != QDialog::Accepted || isAnother(pane, opening)) return;
  const MacroTarget target = placeAt(position.number());
  if (!open_.mayPutAt(folderOf, target, pane)) return;
  const Outcome written = write(pane, target.file());
  if (!written.written()) return;
  copy.noteSavedAs(target);
  open_.follow(target, pane);
  browser(pane).refreshFolder(folder);
  ListBox& list = state(pane).view.macros();
  list.selectRow(browser(pane).macroFolder() == folder ? list.rows().rowOfNumber(position.number()) : -1);
  emit said(saved(macroInStrip(target), written, placeInWindow(target)));
  emit changed();
}

void LooseMacros::saveInFile(Pane pane) {
  const int opening = state(pane).copy.opening();
  const std::string file = askForMacroFile(site_.root, window_);
  if (file.empty() || isAnother(pane, opening)) return;
  if (!open_.mayPutUnder({file, {}, 0, {}}, pane)) return;
  const Outcome written = write(pane, file);
  if (!written.written()) return;
  if (state(pane).copy.loose()) state(pane).copy.noteSavedAs(std::nullopt);
  open_.follow(MacroPlace{file, {}, 0, {}}, pane);
  emit said(saved(shown(file), written));
  emit changed();
}

}  // namespace tessaly
