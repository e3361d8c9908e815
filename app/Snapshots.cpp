#include "app/Snapshots.h"

#include <algorithm>
#include <map>
#include <numeric>

#include <QDate>
#include <QFileDialog>

#include "app/Browser.h"
#include "app/Checking.h"
#include "app/FailureText.h"
#include "app/MacroUndo.h"
#include "app/OpenMacros.h"
#include "app/PlaceText.h"
#include "app/StatusStrip.h"
#include "platform/ChosenPath.h"
#include "platform/Text.h"
#include "review/DiskShelf.h"
#include "review/MacroCheck.h"
#include "review/PanelShelf.h"
#include "widgets/DialogText.h"
#include "windows/SnapshotRestoreDialog.h"

namespace tessaly {

namespace {

constexpr const char* kSuffix = "zip";
constexpr int kThousandths = 1000;

int thousandthsOf(const SnapshotTaking::Progress& now, std::size_t workplaces) {
  const double part = now.all == 0 ? 1.0 : static_cast<double>(now.done) / static_cast<double>(now.all);
  return static_cast<int>((static_cast<double>(now.place) + part) * kThousandths /
                          static_cast<double>(workplaces));
}

QString nameOf(const std::string& file) { return nameInStrip(std::string(fileNameOf(file))); }

QString filesToChoose() { return Snapshots::tr("Snapshots (*.zip)"); }

}  // namespace

Snapshots::Snapshots(const PaneAccesses& panes, SiteAccess site, MacroHistory& history,
                     PanelConnection& connection, PanelTransfer& transfer, OpenMacros& open, MacroUndo& undo,
                     const Checking& checking, PanelClient& client, QWidget* window)
    : panes_(panes),
      site_(site),
      history_(history),
      connection_(connection),
      transfer_(transfer),
      open_(open),
      undo_(undo),
      checking_(checking),
      client_(client),
      window_(window) {}

void Snapshots::save(Pane pane) {
  if (connection_.source(pane) == PaneSource::kPanel) {
    savePanel(pane);
    return;
  }
  const std::string folder = browser(pane).macroFolder();
  if (folder.empty() || state(pane).olderFamily)
    emit said(
        {Grade::kFailure, tr("NOT saved: the pane shows no folder with macros"), placeInWindow(state(pane))});
  else
    saveFolder(folder);
}

void Snapshots::savePanel(Pane pane) {
  if (!connection_.connected(pane)) {
    emit said(
        {Grade::kFailure, tr("NOT saved: the pane is not connected to a panel"), placeInWindow(state(pane))});
    return;
  }
  if (const HostAddress line = connection_.lineAddress(); line != connection_.address(pane)) {
    emit said({Grade::kFailure, tr("NOT saved: the line leads to another panel, %1").arg(shown(line.text())),
               placeInWindow(state(pane))});
    return;
  }
  const HostAddress address = connection_.address(pane);
  std::vector<int> workplaces(Workplace::kCount);
  std::iota(workplaces.begin(), workplaces.end(), 1);
  const std::unique_ptr<PanelMacros> macros = transfer_.macros().forMany();
  SnapshotTaking taking({address.text(), {}}, workplaces,
                        [&](int workplace) -> std::unique_ptr<MacroShelf> {
                          if (!reached()) return nullptr;
                          return std::make_unique<PanelShelf>(*macros, client_, history_, address, workplace);
                        },
                        {.onlyMacros = true});
  save(taking, tr("Saving the panel"), shown(address.text()));
}

void Snapshots::saveFolder(const std::string& folder) {
  SnapshotTaking taking({{}, folder}, {Snapshot::kFolder},
                        [&](int) { return std::make_unique<DiskShelf>(site_.root, history_, folder); }, {});
  save(taking, tr("Saving the folder"), tr("macros"));
}

void Snapshots::save(SnapshotTaking& taking, const QString& label, const QString& suggested) {
  QFileDialog choice(window_, tr("Save As"), QString(), filesToChoose());
  choice.setAcceptMode(QFileDialog::AcceptSave);
  choice.setDefaultSuffix(QLatin1String(kSuffix));
  QString name = suggested;
  name.replace(QLatin1Char(':'), QLatin1Char('-'));
  choice.selectFile(QStringLiteral("%1 %2.zip").arg(name, QDate::currentDate().toString(Qt::ISODate)));
  if (choice.exec() != QDialog::Accepted || choice.selectedFiles().isEmpty()) return;
  const std::string file =
      chosenPath(site_.root, hostPath(choice.selectedFiles().constFirst().toStdString()));
  std::size_t count = 0;
  Outcome saved = Failure{Failure::Kind::kNoMemory, {}};
  runBeside(
      label,
      [&](const PanelTransfer::Tell& tell) {
        const auto now = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
        const auto snapshot = taking.take(now, [&](const SnapshotTaking::Progress& progress) {
          tell(thousandthsOf(progress, taking.workplaces()));
        });
        saved = snapshot ? saveSnapshot(site_.root, file, *snapshot) : Outcome(snapshot.failure());
        if (snapshot) count = snapshot->macros.size();
      },
      [&] { taking.cancel(); });
  const QString text =
      saved.written()
          ? tr("saved and verified: %n macros in %1", nullptr, static_cast<int>(count)).arg(nameOf(file))
          : tr("NOT saved: %1 (%2)").arg(nameOf(file), failureText(saved.failure()));
  emit said({saved.written() ? Grade::kDone : Grade::kFailure, text, shown(file)});
}

void Snapshots::open(Pane pane) {
  if (state(pane).copy.edited()) {
    emit said({Grade::kFailure, tr("NOT opened: the pane has unsaved changes"), placeInWindow(state(pane))});
    return;
  }
  QFileDialog choice(window_, tr("Open Snapshot"), QString(), filesToChoose());
  choice.setFileMode(QFileDialog::ExistingFile);
  if (choice.exec() != QDialog::Accepted || choice.selectedFiles().isEmpty()) return;
  const std::string file =
      chosenPath(site_.root, hostPath(choice.selectedFiles().constFirst().toStdString()));
  Expected<Snapshot> read = Failure{Failure::Kind::kNoMemory, {}};
  wanted_ = true;
  static_cast<void>(transfer_.runLong(
      tr("Reading the snapshot"),
      [&](const PanelTransfer::Tell&) {
        read = openSnapshot(site_.root, file, [this] { return wanted_.load(); });
      },
      [this] { wanted_ = false; }));
  if (!read) {
    emit said({Grade::kFailure, tr("NOT opened: %1 (%2)").arg(nameOf(file), failureText(read.failure())),
               shown(file)});
    return;
  }
  browser(pane).setSnapshot({std::make_shared<const Snapshot>(*std::move(read)), file});
  setPath(pane, file);
  emit said({Grade::kDone, tr("opened: %1; its macros can be viewed and copied from").arg(nameOf(file)),
             shown(file)});
}

void Snapshots::restore(Pane pane) {
  if (!state(pane).snapshot) return;
  const Pane to = other(pane);
  if (connection_.source(to) == PaneSource::kPanel)
    restoreToPanel(pane, to);
  else
    restoreToFolder(pane, to);
}

void Snapshots::restoreToPanel(Pane pane, Pane to) {
  if (!connection_.connected(to)) {
    emit said({Grade::kFailure, tr("NOT restored: the other pane is not connected to a panel"),
               placeInWindow(state(to))});
    return;
  }
  const HostAddress address = connection_.address(to);
  if (const HostAddress line = connection_.lineAddress(); line != address) {
    emit said({Grade::kFailure,
               tr("NOT restored: the line leads to another panel, %1").arg(shown(line.text())),
               placeInWindow(state(to))});
    return;
  }
  const std::shared_ptr<const Snapshot> snapshot = state(pane).snapshot->snapshot;
  const std::unique_ptr<PanelMacros> macros = transfer_.macros().forMany();
  macros->keepIn(history_);
  std::map<int, std::unique_ptr<PanelShelf>> shelves;
  SnapshotRestore rows(snapshot, site_.root, history_,
                       [&](int workplace) -> MacroShelf* {
                         if (!reached()) return nullptr;
                         auto& shelf = shelves[workplace];
                         if (!shelf)
                           shelf =
                               std::make_unique<PanelShelf>(*macros, client_, history_, address, workplace);
                         return shelf.get();
                       },
                       {});
  for (const int from : snapshot->workplaces) {
    const int workplace = from == Snapshot::kFolder ? browser(to).workplace() : from;
    if (workplace > 0) static_cast<void>(rows.add(from, workplace));
  }
  restore(rows, tr("To the panel %1").arg(shown(address.text())));
}

void Snapshots::restoreToFolder(Pane pane, Pane to) {
  const std::string folder = browser(to).macroFolder();
  if (folder.empty() || state(to).viewOnly()) {
    emit said({Grade::kFailure, tr("NOT restored: the other pane shows no folder for macros"),
               placeInWindow(state(to))});
    return;
  }
  DiskShelf shelf(site_.root, history_, folder);
  SnapshotRestore rows(state(pane).snapshot->snapshot, site_.root, history_, [&](int) { return &shelf; },
                       {.anyBytes = true});
  if (const auto from = browser(pane).snapshotWorkplace())
    static_cast<void>(rows.add(*from, Snapshot::kFolder));
  restore(rows, tr("To the folder %1").arg(shown(folder)));
}

void Snapshots::restore(SnapshotRestore& rows, const QString& title) {
  if (rows.rows().empty()) {
    emit said({Grade::kFailure, tr("NOT restored: no workplace with macros is chosen"), title});
    return;
  }
  const auto run = [&](const QString& label, const SnapshotRestoreDialog::Work& work) {
    runBeside(label, work, [&] { rows.cancel(); });
  };
  Outcome looked = Failure{Failure::Kind::kNoMemory, {}};
  run(tr("Comparing macros"), [&](const PanelTransfer::Tell& tell) {
    looked = rows.look(
        [&](std::size_t row) { tell(static_cast<int>((row + 1) * kThousandths / rows.rows().size())); });
  });
  if (!looked) {
    emit said({Grade::kFailure, tr("NOT restored: %1").arg(failureText(looked.failure())), title});
    return;
  }
  SnapshotRestoreDialog dialog(
      title, rows, run, [&](const std::vector<std::size_t>& ticked) { return maySend(rows, ticked); },
      &failureText, window_);
  connect(&dialog, &SnapshotRestoreDialog::written, this,
          [&](const std::vector<MacroPlace>& written) { noteRestored(rows, written); });
  connect(&dialog, &SnapshotRestoreDialog::said, this, &Snapshots::said);
  dialog.exec();
}

bool Snapshots::maySend(const SnapshotRestore& rows, const std::vector<std::size_t>& ticked) {
  std::vector<FaultyMacro> faulty;
  std::size_t sent = 0;
  runBeside(
      tr("Checking macros"),
      [&, context = checking_.knowledge()](const PanelTransfer::Tell&) {
        MacroCheck check(context);
        for (const std::size_t i : ticked) {
          const RestoreRow& row = rows.rows()[i];
          if (!wanted_) return;
          if (row.workplace == Snapshot::kFolder) continue;
          ++sent;
          if (auto found = check.faults(row.macro->number.text(), row.macro->bytes))
            faulty.push_back(*std::move(found));
        }
      },
      [] {});
  return wanted_ && (faulty.empty() || checking_.maySend(faulty, sent));
}

bool Snapshots::reached() {
  return connection_.renewLine([this] { return wanted_.load(); });
}

void Snapshots::runBeside(const QString& label,
                          const std::function<void(const PanelTransfer::Tell& tell)>& work,
                          const std::function<void()>& cancel) {
  wanted_ = true;
  static_cast<void>(transfer_.runLong(label, work, [&] {
    wanted_ = false;
    cancel();
    client_.endUnwantedAttempt();
  }));
  connection_.lineRenewed();
}

void Snapshots::noteRestored(const SnapshotRestore& rows, const std::vector<MacroPlace>& written) {
  const auto& traces = rows.traces();
  if (!traces.empty())
    undo_.noteBatch(tr("restore of %n macros", nullptr, static_cast<int>(traces.size())), traces);
  follow(written);
}

// The panes that show one of these macros, or the folder that they lie in.
void Snapshots::follow(const std::vector<MacroPlace>& written) {
  if (written.empty()) return;
  const std::string& file = written.front().file;
  for (const Pane pane : kPanes) {
    if (!file.empty()) browser(pane).refreshFolder(file.substr(0, file.size() - fileNameOf(file).size()));
    const auto target = state(pane).copy.target();
    const auto isIt = [&](const MacroPlace& place) { return samePlace(site_.root, place, placeOf(*target)); };
    if (target && std::ranges::any_of(written, isIt)) open_.follow(*target);
  }
}

void Snapshots::close(Pane pane) {
  if (state(pane).snapshot) setPath(pane, browser(pane).pathWithoutSnapshot());
}

void Snapshots::setPath(Pane pane, const std::string& path) {
  connection_.setTexts(pane, path, connection_.address(pane));
  if (connection_.source(pane) == PaneSource::kPanel)
    connection_.chooseHarddisk(pane);
  else
    connection_.refresh(pane);
}

}  // namespace tessaly
