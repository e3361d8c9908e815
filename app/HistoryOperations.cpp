#include "app/HistoryOperations.h"

#include <QFileDialog>
#include <QMenu>

#include "app/CopyMacroDialog.h"
#include "app/SilentMessages.h"
#include "app/TransferText.h"
#include "platform/Files.h"
#include "widgets/DialogText.h"

namespace tessaly {

namespace {

// Holds a macro on its way to the panel: keeping what is there now may drive it out of the history.
constexpr const char* kOutgoingFolder = "history";
constexpr const char* kOutgoing = "history\\outgoing.mac";
constexpr const char* kNoCommands = "empty macro";

QString titleOf(const KeptMacro& macro) {
  const QString name = shown(macro.name);
  return name.isEmpty() ? shown(macro.id) : name;
}

// The three digits of "macro007.mac" or of a panel's macro; empty for any other file.
std::string numberOf(const KeptMacro& macro) {
  constexpr std::string_view kBefore = "macro";
  constexpr std::size_t kDigits = 3;
  if (!macro.place) return {};
  if (macro.place->file.empty()) return macro.place->number;
  const std::string name = macro.place->file.substr(macro.place->file.find_last_of("\\/") + 1);
  const std::string digits =
      name.rfind(kBefore, 0) == 0 ? name.substr(kBefore.size(), kDigits) : std::string();
  return macroNumberText(parseInt(digits)) == digits ? digits : std::string();
}

// The macro's own number if it is free, else the first free one from there on, and from 0 again.
int freeNumber(const MacroNameTable& names, int wanted) {
  const int count = static_cast<int>(names.size());
  for (int i = 0; i < count; ++i) {
    const int number = (std::max(0, wanted) + i) % count;
    if (names[static_cast<std::size_t>(number)].empty()) return number;
  }
  return -1;
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

std::vector<std::string> HistoryOperations::preview(const KeptMacro& macro) const {
  const auto content = readMacro(site_.root, macro.file);
  if (!content || !content->hasData()) return {tr("The macro cannot be read.").toStdString()};
  std::vector<std::string> rows;
  for (const MacroCommand& command : content->commands()) rows.push_back(commandLine(command, {}, lines_));
  if (rows.empty()) rows.emplace_back(kNoCommands);
  return rows;
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

void HistoryOperations::putBackOnDisk(HistoryDialog& dialog, const KeptMacro& macro) {
  const std::string& file = macro.place->file;
  SilentMessages silent;
  std::string present;
  if (isRegularFile(site_.root, file)) {
    static_cast<void>(readMacroName({site_.root, silent}, file, present));
    const QString question =
        tr("Put back \"%1\" of %2?\n\nIt overwrites \"%3\" in\n%4")
            .arg(titleOf(macro), shown(localTimeText(macro.when)), shown(present), shown(file));
    if (!site_.messages.ask(question.toStdString(), MessageIcon::kQuestion)) return;
  }
  write(dialog, macro, file);
}

void HistoryOperations::write(HistoryDialog& dialog, const KeptMacro& macro, const std::string& path) {
  const bool done = history_.putBack(macro, path);
  refresh(path);
  tell(dialog, done ? tr("%1: written to %2").arg(titleOf(macro), shown(path))
                    : tr("%1: could not be written to %2").arg(titleOf(macro), shown(path)));
}

void HistoryOperations::putBackOnPanel(HistoryDialog& dialog, const KeptMacro& macro) {
  const MacroPlace& place = *macro.place;
  const bool connected = std::any_of(kPanes.begin(), kPanes.end(), [&](Pane pane) {
    return connection_.connected(pane) && connection_.address(pane) == place.address;
  });
  if (!connected) {
    dialog.showOutcome(tr("%1: no pane is connected to the panel %2 that it came from")
                           .arg(titleOf(macro), shown(place.address)));
    return;
  }
  const QString question =
      tr("Put back \"%1\" of %2?\n\nIt overwrites macro %3 of workplace %4 on the panel %5.")
          .arg(titleOf(macro), shown(localTimeText(macro.when)), shown(place.number))
          .arg(place.workplace)
          .arg(shown(place.address));
  if (!site_.messages.ask(question.toStdString(), MessageIcon::kQuestion)) return;
  TransferOutcome outcome{FtpClient::Result::kLocalFile};
  if (makeFolder(site_.root, kOutgoingFolder) && copyFile(site_.root, macro.file, kOutgoing))
    outcome =
        panel_.run(tr("Sending macro %1 to the panel").arg(shown(place.number)), [&](PanelMacros& macros) {
          return macros.upload(place.address, place.workplace, place.number, kOutgoing,
                               MacroChange::kPutBack);
        });
  static_cast<void>(removeFile(site_.root, kOutgoing));
  tell(dialog,
       outcome.done()
           ? tr("%1: put back on the panel").arg(titleOf(macro))
           : tr("%1: could not be put back on the panel (%2)").arg(titleOf(macro), transferText(outcome)));
}

void HistoryOperations::saveAs(HistoryDialog& dialog, const KeptMacro& macro) {
  QMenu menu(&dialog);
  for (const Pane pane : kPanes) {
    QAction* action = menu.addAction(tr("In %1...").arg(QLatin1String(state(pane).descriptor.title)));
    action->setEnabled(!browser(pane).macroFolder().empty() && !state(pane).olderFamily);
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
  const QString file = QFileDialog::getSaveFileName(&dialog, tr("Save As"), QString(), tr("Macros (*.mac)"));
  if (!file.isEmpty()) write(dialog, macro, file.toStdString());
}

// The panes that show the folder, except where unsaved changes hold one: its list is filled when they end.
void HistoryOperations::refresh(const std::string& path) {
  for (const Pane pane : kPanes) {
    const std::string folder = browser(pane).macroFolder();
    if (folder.empty() || state(pane).copy.edited()) continue;
    if (site_.root.resolve(folder) == site_.root.resolve(path).parent_path()) browser(pane).listMacros();
  }
  emit changed();
}

}  // namespace tessaly
