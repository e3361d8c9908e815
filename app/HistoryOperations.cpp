#include "app/HistoryOperations.h"

#include <QFileDialog>
#include <QMenu>

#include "app/Browser.h"
#include "app/CopyMacroDialog.h"
#include "app/FailureText.h"
#include "app/PanelTransfer.h"
#include "app/StatusStrip.h"
#include "app/TransferText.h"
#include "model/MacroHistory.h"
#include "platform/Files.h"
#include "widgets/DialogText.h"

namespace tessaly {

namespace {

constexpr const char* kMacroSuffix = "mac";
constexpr const char* kNoCommands = "empty macro";

const std::string& titleBytes(const KeptMacro& macro) { return macro.name.empty() ? macro.id : macro.name; }

// The three digits of "macro007.mac" or of a panel's macro; empty for any other file.
std::string numberOf(const KeptMacro& macro) {
  if (!macro.place) return {};
  if (macro.place->file.empty()) return macro.place->number;
  const std::string& file = macro.place->file;
  const auto number = MacroNumber::ofFile(std::string_view(file).substr(file.find_last_of("\\/") + 1));
  return number ? number->text() : std::string();
}

}  // namespace

HistoryOperations::HistoryOperations(const PaneAccesses& panes, SiteAccess site, MacroHistory& history,
                                     const PanelConnection& connection, PanelTransfer& panel,
                                     const LineContext& lines, QWidget* window)
    : panes_(panes),
      site_(site),
      history_(history),
      connection_(connection),
      panel_(panel),
      lines_(lines),
      window_(window) {}

void HistoryOperations::open() {
  HistoryDialog dialog([this](const KeptMacro& macro) { return preview(macro); }, window_);
  dialog.setMacros(history_.list());
  connect(&dialog, &HistoryDialog::putBackPressed, this,
          [this, &dialog](const KeptMacro& macro) { putBack(dialog, macro); });
  connect(&dialog, &HistoryDialog::saveAsPressed, this,
          [this, &dialog](const KeptMacro& macro) { saveAs(dialog, macro); });
  dialog.exec();
}

HistoryPreview HistoryOperations::preview(const KeptMacro& macro) const {
  const auto content = readMacro(site_.root, macro.file);
  if (!content || !content->hasData())
    return {false,
            {tr("It cannot be read as a macro: it can be saved as a file, but not put back.").toStdString()}};
  HistoryPreview preview{true, {}};
  for (const MacroCommand& command : content->commands())
    preview.rows.push_back(commandLine(command, {}, lines_));
  if (preview.rows.empty()) preview.rows.emplace_back(kNoCommands);
  return preview;
}

void HistoryOperations::tell(HistoryDialog& dialog, const QString& text) {
  const QString whole =
      history_.takeFailure() ? tr("%1; the history could not keep what was there before").arg(text) : text;
  dialog.setMacros(history_.list());
  dialog.showOutcome(whole);
  emit said(whole);
}

void HistoryOperations::putBack(HistoryDialog& dialog, const KeptMacro& macro) {
  if (!macro.place) return;
  if (macro.place->file.empty())
    putBackOnPanel(dialog, macro);
  else
    putBackOnDisk(dialog, macro);
}

bool HistoryOperations::shows(Pane pane, const MacroPlace& place) const {
  const std::optional<MacroTarget>& target = state(pane).copy.target();
  if (!target) return false;
  const MacroPlace shown = placeOf(*target);
  if (place.file.empty() || shown.file.empty()) return shown == place;
  return site_.root.same(shown.file, place.file);
}

bool HistoryOperations::confirmed(const KeptMacro& macro, QStringList losses) const {
  for (const Pane pane : kPanes) {
    if (!shows(pane, *macro.place) || !state(pane).copy.edited()) continue;
    losses
        << tr("%1 shows this macro with unsaved changes. They stay there, and saving them overwrites what is "
              "put back.")
               .arg(QLatin1String(state(pane).descriptor.title));
  }
  if (losses.isEmpty()) return true;
  losses.prepend(
      tr("Put back \"%1\" of %2?").arg(shown(titleBytes(macro)), shown(localTimeText(macro.when))));
  return site_.messages.ask(losses.join(QStringLiteral("\n\n")).toStdString(), MessageIcon::kQuestion);
}

void HistoryOperations::putBackOnDisk(HistoryDialog& dialog, const KeptMacro& macro) {
  const std::string& file = macro.place->file;
  QStringList losses;
  if (isRegularFile(site_.root, file)) {
    SilentMessages silent;
    std::string present;
    static_cast<void>(readMacroName({site_.root, silent}, file, present));
    losses << tr("It overwrites \"%1\" in\n%2").arg(shown(present), shown(file));
  } else if (!history_.isOfSite(macro)) {
    losses << tr("It came from outside the site and is written to\n%1").arg(shown(file));
  }
  if (confirmed(macro, losses)) write(dialog, macro, file);
}

void HistoryOperations::write(HistoryDialog& dialog, const KeptMacro& macro, const std::string& path) {
  const Outcome done = history_.putBack(macro, path);
  const bool unflushed = !done && done.failure().kind == Failure::Kind::kUnflushed;
  if (done || unflushed) refresh({path, {}, 0, {}});
  const QString text = done        ? tr("written: %1 to %2")
                       : unflushed ? tr("written, but it may not survive a power cut: %1 to %2")
                                   : tr("NOT written: %1 to %2 (%3)");
  const QString name = nameInStrip(titleBytes(macro));
  tell(dialog, done || unflushed ? text.arg(name, shown(path))
                                 : text.arg(name, shown(path), failureText(done.failure())));
}

void HistoryOperations::putBackOnPanel(HistoryDialog& dialog, const KeptMacro& macro) {
  const MacroPlace& place = *macro.place;
  const bool connected = std::any_of(kPanes.begin(), kPanes.end(), [&](Pane pane) {
    return connection_.connected(pane) && connection_.address(pane) == place.address;
  });
  if (!connected) {
    dialog.showOutcome(tr("NOT put back: %1 (no pane is connected to the panel %2 that it came from)")
                           .arg(nameInStrip(titleBytes(macro)), shown(place.address)));
    return;
  }
  if (!confirmed(macro,
                 {tr("It overwrites macro %1 of workplace %2 on the panel %3.")
                      .arg(shown(place.number), QString::number(place.workplace), shown(place.address))}))
    return;
  const TransferOutcome outcome = send(macro);
  if (outcome.sent()) refresh(place);
  const QString name = nameInStrip(titleBytes(macro));
  tell(dialog,
       (outcome.done() ? tr("put back on the panel: %1 (%2)") : tr("NOT put back on the panel: %1 (%2)"))
           .arg(name, transferText(outcome)));
}

TransferOutcome HistoryOperations::send(const KeptMacro& macro) {
  const MacroPlace& place = *macro.place;
  const auto bytes = readFile(site_.root, macro.file);
  if (!bytes) return {FtpClient::Result::kLocalFile, true};
  return panel_.run(tr("Sending macro %1 to the panel").arg(shown(place.number)), [&](PanelMacros& macros) {
    return macros.uploadBytes(place.address, place.workplace, place.number, *bytes, MacroChange::kPutBack);
  });
}

void HistoryOperations::saveAs(HistoryDialog& dialog, const KeptMacro& macro) {
  QMenu menu(&dialog);
  const bool readable = preview(macro).readable;
  for (const Pane pane : kPanes) {
    QAction* action = menu.addAction(tr("In %1...").arg(QLatin1String(state(pane).descriptor.title)));
    action->setEnabled(readable && !browser(pane).macroFolder().empty() && !state(pane).olderFamily);
    connect(action, &QAction::triggered, &dialog,
            [this, &dialog, macro, pane] { saveInPane(dialog, macro, pane); });
  }
  connect(menu.addAction(tr("In a File...")), &QAction::triggered, &dialog,
          [this, &dialog, macro] { saveInFile(dialog, macro); });
  menu.exec(dialog.menuPlace());
}

void HistoryOperations::saveInPane(HistoryDialog& dialog, const KeptMacro& macro, Pane pane) {
  const std::string folder = browser(pane).macroFolder();
  const MacroNameTable names = browser(pane).names();
  const std::string number = numberOf(macro);
  CopyMacroDialog position(number, macro.name, freeNumber(names, parseInt(number)), names, &dialog);
  if (position.exec() == QDialog::Accepted) write(dialog, macro, macroFile(folder, position.number()));
}

void HistoryOperations::saveInFile(HistoryDialog& dialog, const KeptMacro& macro) {
  QFileDialog choice(&dialog, tr("Save As"), QString(), tr("Macros (*.mac)"));
  choice.setAcceptMode(QFileDialog::AcceptSave);
  choice.setDefaultSuffix(QLatin1String(kMacroSuffix));
  if (choice.exec() != QDialog::Accepted || choice.selectedFiles().isEmpty()) return;
  write(dialog, macro, choice.selectedFiles().constFirst().toStdString());
}

void HistoryOperations::refresh(const MacroPlace& place) {
  for (const Pane pane : kPanes) {
    if (state(pane).copy.edited()) continue;  // its list is filled when they end
    const std::string number = shows(pane, place) ? state(pane).copy.target()->numberText : std::string();
    const std::string folder = browser(pane).macroFolder();
    if (!place.file.empty() && !folder.empty() &&
        site_.root.resolve(folder) == site_.root.resolve(place.file).parent_path())
      browser(pane).listMacros();
    if (number.empty()) continue;
    ListBox& list = state(pane).view.macros();
    list.selectRow(list.rows().rowOfNumber(parseInt(number)));
    emit reopened(pane);
  }
  emit changed();
}

}  // namespace tessaly
