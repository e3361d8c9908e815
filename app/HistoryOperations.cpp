#include "app/HistoryOperations.h"

#include <algorithm>
#include <atomic>
#include <cerrno>

#include <QMenu>

#include "app/Browser.h"
#include "app/CopyMacroDialog.h"
#include "app/FailureText.h"
#include "app/MacroTransfers.h"
#include "app/MacroUndo.h"
#include "app/OpenMacros.h"
#include "app/PlaceText.h"
#include "app/SavePlaces.h"
#include "app/StatusStrip.h"
#include "model/MacroFile.h"
#include "model/MacroHistory.h"
#include "model/MacroNameScan.h"
#include "platform/LocalTime.h"
#include "platform/MacroNumber.h"
#include "platform/SystemFailure.h"
#include "platform/Text.h"
#include "widgets/DialogText.h"

namespace tessaly {

namespace {

constexpr const char* kNoCommands = "empty macro";

const std::string& titleBytes(const KeptMacro& macro) { return macro.name.empty() ? macro.id : macro.name; }

// The three digits of "macro007.mac" or of a panel's macro; empty for any other file.
std::string numberOf(const KeptMacro& macro) {
  if (!macro.place) return {};
  if (macro.place->file.empty()) return macro.place->number;
  const auto number = MacroNumber::ofFile(fileNameOf(macro.place->file));
  return number ? number->text() : std::string();
}

QString puttingBack(const KeptMacro& macro) {
  const std::string number = numberOf(macro);
  return HistoryOperations::tr("put back %1")
      .arg(nameInStrip(number.empty() ? titleBytes(macro) : number + " - " + titleBytes(macro)));
}

}  // namespace

HistoryOperations::HistoryOperations(const PaneAccesses& panes, SiteAccess site, MacroHistory& history,
                                     MacroTransfers& transfers, OpenMacros& open, MacroUndo& undo,
                                     const LineContext& lines, QWidget* window)
    : panes_(panes),
      site_(site),
      history_(history),
      transfers_(transfers),
      open_(open),
      undo_(undo),
      overwriting_(site, transfers),
      lines_(lines),
      window_(window) {}

void HistoryOperations::open() {
  HistoryDialog dialog([this](const KeptMacro& macro) { return preview(macro); }, window_);
  list(dialog);
  connect(&dialog, &HistoryDialog::putBackPressed, this,
          [this, &dialog](const KeptMacro& macro) { putBack(dialog, macro); });
  connect(&dialog, &HistoryDialog::saveAsPressed, this,
          [this, &dialog](const KeptMacro& macro) { saveAs(dialog, macro); });
  connect(&dialog, &HistoryDialog::comparePressed, this,
          [this, &dialog](const KeptMacro& macro) { compare(dialog, macro); });
  dialog.exec();
}

// Who cancels sees the newest ones.
void HistoryOperations::list(HistoryDialog& dialog) {
  std::vector<KeptMacro> macros;
  Outcome whole;
  std::atomic<bool> stop = false;
  const bool ran = transfers_.beside().runLong(
      tr("Reading the history"), [&](const auto&) { macros = history_.list(&stop, &whole); },
      [&] { stop = true; });
  if (!ran) whole = systemFailure(ENOMEM, "read");
  if (stop) whole = cancelledFailure();
  const QString shortfall =
      whole ? QString() : tr("the history is not listed whole: %1").arg(failureText(whole.failure()));
  if (!whole) emit said({Grade::kWarning, shortfall, {}});
  dialog.setMacros(std::move(macros), shortfall);
}

void HistoryOperations::compare(HistoryDialog& dialog, const KeptMacro& macro) {
  QMenu menu(&dialog);
  for (const Pane pane : kPanes) {
    const PaneState& state = *panes_[index(pane)].state;
    QAction* const with = menu.addAction(tr("With %1").arg(QLatin1String(state.descriptor.title)));
    with->setEnabled(state.copy.content() != WorkingCopy::Content::kNothing);
    connect(with, &QAction::triggered, &dialog, [this, &dialog, pane, macro] {
      dialog.accept();
      emit compareWanted(pane, macro);
    });
  }
  menu.exec(dialog.compareMenuPlace());
}

HistoryPreview HistoryOperations::preview(const KeptMacro& macro) const {
  auto bytes = transfers_.read(macro.file);
  if (!bytes) return {false, {failureText(bytes.failure()).toStdString()}};
  const auto content = Macro::read(*std::move(bytes));
  if (!content || !content->hasData())
    return {false,
            {tr("It cannot be read as a macro: it can be saved as a file, but not put back.").toStdString()}};
  HistoryPreview preview{true, {}};
  for (const MacroCommand& command : content->commands())
    preview.rows.push_back(commandLine(command, {}, lines_));
  if (preview.rows.empty()) preview.rows.emplace_back(kNoCommands);
  return preview;
}

void HistoryOperations::tell(HistoryDialog& dialog, Message message, bool kept) {
  if (!kept) {
    message.text = tr("%1; the history could not keep what was there before").arg(message.text);
    message.grade = std::max(message.grade, Grade::kWarning);
  }
  list(dialog);
  dialog.showOutcome(message.text);
  emit said(message);
}

void HistoryOperations::putBack(HistoryDialog& dialog, const KeptMacro& macro) {
  if (!macro.place) return;
  if (macro.place->file.empty())
    putBackOnPanel(dialog, macro);
  else
    putBackOnDisk(dialog, macro);
}

bool HistoryOperations::confirmed(const KeptMacro& macro, QStringList losses) const {
  losses << open_.unsavedAt(*macro.place);
  if (losses.isEmpty()) return true;
  losses.prepend(
      tr("Put back \"%1\" of %2?").arg(shown(titleBytes(macro)), shown(localTimeText(macro.when))));
  return site_.messages.ask(losses.join(QStringLiteral("\n\n")).toStdString(), MessageIcon::kQuestion);
}

void HistoryOperations::putBackOnDisk(HistoryDialog& dialog, const KeptMacro& macro) {
  const std::string& file = macro.place->file;
  QStringList losses;
  const MacroTransfers::Present present = transfers_.look(*macro.place);
  if (present.cancelled) {
    tell(dialog,
         {Grade::kFailure, tr("NOT written: %1 to %2 (%3)")
                               .arg(nameInStrip(titleBytes(macro)), shown(file), transfers_.outcomeText())},
         true);
    return;
  }
  if (!present.missing) {
    const std::string name = macroNameIn(present.bytes.value_or(std::string()));
    losses << tr("It overwrites \"%1\" in\n%2").arg(shown(name.empty() ? kUnknownName : name), shown(file));
  } else if (!history_.isOfSite(macro)) {
    losses << tr("It came from outside the site and is written to\n%1").arg(shown(file));
  }
  if (confirmed(macro, losses)) write(dialog, macro, file);
}

void HistoryOperations::write(HistoryDialog& dialog, const KeptMacro& macro, const std::string& path) {
  const MacroPlace place{path, {}, 0, {}};
  undo_.begin(puttingBack(macro), place);
  const Outcome done = overwriting_.write(
      shown(path), [&history = history_, macro, path](const SiteAccess&, const auto& mayLose) {
        return history.putBack(macro, path, mayLose);
      });
  const bool unflushed = !done && done.failure().kind == Failure::Kind::kUnflushed;
  if (done.written()) follow(place);
  const bool kept = done.written() ? undo_.finishOnDisk() : !history_.takeFailure();
  const QString text = done        ? tr("written: %1 to %2")
                       : unflushed ? tr("written, but it may not survive a power cut: %1 to %2")
                                   : tr("NOT written: %1 to %2 (%3)");
  const QString name = nameInStrip(titleBytes(macro));
  const Grade grade = done ? Grade::kDone : unflushed ? Grade::kWarning : Grade::kFailure;
  tell(dialog,
       {grade, done.written() ? text.arg(name, shown(path))
                              : text.arg(name, shown(path), failureText(done.failure()))},
       kept);
}

void HistoryOperations::putBackOnPanel(HistoryDialog& dialog, const KeptMacro& macro) {
  const MacroPlace& place = *macro.place;
  if (!open_.reaches(place.address)) {
    dialog.showOutcome(tr("NOT put back: %1 (no pane is connected to the panel %2 that it came from)")
                           .arg(nameInStrip(titleBytes(macro)), shown(place.address.text())));
    return;
  }
  if (!confirmed(macro, {tr("It overwrites macro %1 of workplace %2 on the panel %3.")
                             .arg(shown(place.number), QString::number(place.workplace),
                                  shown(place.address.text()))}))
    return;
  const QString name = nameInStrip(titleBytes(macro));
  const auto bytes = transfers_.read(macro.file);
  if (!bytes) {
    tell(dialog,
         {Grade::kFailure, tr("NOT put back on the panel: %1 (%2)").arg(name, failureText(bytes.failure())),
          placeInWindow(place)},
         true);
    return;
  }
  const auto toPanel = open_.sendable(*bytes, name, std::nullopt);
  if (!toPanel) {
    tell(dialog, {Grade::kFailure, tr("NOT sent: %1").arg(name), placeInWindow(place)}, true);
    return;
  }
  undo_.begin(puttingBack(macro), place);
  const bool done =
      transfers_.send(place, *toPanel, MacroChange::kPutBack, overwriting_.asking(placeInWindow(place)));
  const QString outcome = transfers_.outcomeText();
  const bool sent = transfers_.sent();
  const Grade grade = done ? transfers_.sentGrade() : Grade::kFailure;
  if (sent) follow(place);
  tell(dialog,
       {grade,
        (done ? tr("put back on the panel: %1 (%2)") : tr("NOT put back on the panel: %1 (%2)"))
            .arg(name, outcome),
        placeInWindow(place)},
       sent ? undo_.finish(*bytes) : !history_.takeFailure());
}

void HistoryOperations::follow(const MacroPlace& place) {
  open_.follow(place);
  emit changed();
}

void HistoryOperations::saveAs(HistoryDialog& dialog, const KeptMacro& macro) {
  QMenu menu(&dialog);
  offerSavePlaces(
      menu, panes_, preview(macro).readable,
      [this, &dialog, macro](Pane pane) { saveInPane(dialog, macro, pane); },
      [this, &dialog, macro] { saveInFile(dialog, macro); });
  menu.exec(dialog.menuPlace());
}

void HistoryOperations::saveInPane(HistoryDialog& dialog, const KeptMacro& macro, Pane pane) {
  const std::string folder = browser(pane).macroFolder();
  const MacroNameTable names = browser(pane).names();
  const std::string number = numberOf(macro);
  CopyMacroDialog position(number, macro.name, freeNumber(names, parseInt(number)), names, &dialog);
  const auto placeAt = [&](int at) {
    return MacroTarget{PaneSource::kHarddisk, folder, {}, 0, MacroNumber::textOf(at), macro.name};
  };
  position.setAbout([&](int at) { return overwriting_.about(*panes_[index(pane)].state, placeAt(at)); });
  if (position.exec() != QDialog::Accepted) return;
  const MacroTarget target = placeAt(position.number());
  if (open_.mayPutAt(pane, target, std::nullopt)) write(dialog, macro, target.file());
}

void HistoryOperations::saveInFile(HistoryDialog& dialog, const KeptMacro& macro) {
  const std::string file = askForMacroFile(site_.root, &dialog);
  if (!file.empty() && open_.mayPutUnder({file, {}, 0, {}}, std::nullopt)) write(dialog, macro, file);
}

}  // namespace tessaly
