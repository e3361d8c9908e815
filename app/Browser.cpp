#include "app/Browser.h"

#include <algorithm>

#include "app/FailureText.h"
#include "app/NextSteps.h"
#include "app/PaneState.h"
#include "app/PlaceText.h"
#include "app/StatusStrip.h"
#include "platform/MacroNumber.h"
#include "platform/Text.h"
#include "platform/Workplace.h"

namespace tessaly {

namespace {

constexpr const char* kConnectedTo = "connected to %s";
constexpr const char* kSnapshotOf = "%s, %s";  // where it is from, and when
constexpr const char* kSnapshotFolder = "Folder";
constexpr const char* kNotConnected = "not connected";
constexpr const char* kNoApplications = "no applications found";
constexpr const char* kNoDevicesFile = "- - - - - - -";
constexpr const char* kNoControlPanels = "no control panel data included";
constexpr const char* kNoWorkplaces = "TarrowCP - no workplaces supported";
constexpr const char* kWorkplace = "Workplace %d";
constexpr const char* kNoMacros = "no macros found";
constexpr const char* kEmptyMacroRow = "empty macro";
constexpr const char* kOneCommand = "1 command";
constexpr const char* kManyCommands = "%d commands";

constexpr int kDemoWorkplaces = 2;

enum List { kControlPanelList, kWorkplaceList, kMacroList, kCommandList };

// Of the panel's macro that the working copy holds, as of one that was created before the panel listed it; -1
// while the list has none of its number and name.
int heldRow(const PaneState& pane, const HostAddress& address, int workplace) {
  const std::optional<MacroTarget>& held = pane.copy.target();
  if (!held || held->address != address || held->workplace != workplace) return -1;
  const auto& rows = pane.macroRows;
  const auto row = std::find_if(rows.begin(), rows.end(), [&](const MacroRow& here) {
    return here.numberText == held->numberText && here.name == held->name;
  });
  return row == rows.end() ? -1 : static_cast<int>(row - rows.begin());
}

}  // namespace

Browser::Browser(PaneState& pane, SiteAccess site, const LineContext& lines,
                 const PanelConnection& connection, MacroNames& panelNames, PanelTransfer& beside)
    : pane_(pane),
      site_(site),
      lines_(lines),
      connection_(connection),
      panelNames_(panelNames),
      beside_(beside) {
  connect(&pane_.copy, &WorkingCopy::changed, this, &Browser::followCopy);
  connect(this, &Browser::changed, this, [this] { showNextSteps(pane_, connection_); });
}

void Browser::followCopy() {
  if (pane_.copy.revision() != shownRevision_)
    showCommands(pane_.copy.selectedAfterChange());
  else
    emit changed();  // edit state alone changes no line
}

std::string Browser::path() const { return connection_.path(pane_.descriptor.pane); }

bool Browser::onPanel() const { return connection_.source(pane_.descriptor.pane) == PaneSource::kPanel; }

void Browser::clearFrom(int list) {
  MacroPane& view = pane_.view;
  if (list <= kControlPanelList) view.controlPanels().rows().clear();
  if (list <= kWorkplaceList) view.workplaces().rows().clear();
  if (list <= kMacroList) {
    pane_.macroRows.clear();
    view.macros().rows().clear();
  }
  static_cast<void>(pane_.copy.clear());  // it refuses while unsaved changes hang on the lists
}

void Browser::showConnectedPanel() {
  const Pane pane = pane_.descriptor.pane;
  const bool connected = connection_.connected(pane);
  pane_.view.applications().rows().setRows(
      {{connected ? format(kConnectedTo, connection_.address(pane).text().c_str()) : kNotConnected}}, false);
}

void Browser::setSnapshot(ShownSnapshot snapshot) {
  pathBefore_ = pathWithoutSnapshot();
  snapshot_ = std::move(snapshot);
}

std::string Browser::pathWithoutSnapshot() const {
  const std::string& stored = connection_.storedPath(pane_.descriptor.pane);
  return snapshot_ && snapshot_->file == stored ? pathBefore_ : stored;
}

// Another path that was typed is the end of the snapshot, another source is not.
void Browser::findSnapshot() {
  if (snapshot_ && snapshot_->file != connection_.storedPath(pane_.descriptor.pane)) snapshot_.reset();
  pane_.snapshot = onPanel() ? std::nullopt : snapshot_;
}

void Browser::tellNotListed(const std::string& place, const Failure& why) {
  const Grade grade = why.kind == Failure::Kind::kCancelled ? Grade::kWarning : Grade::kFailure;
  emit said({grade, tr("NOT listed: %1 (%2)").arg(shown(place), failureText(why)), {}});
}

void Browser::fillApplications() {
  clearFrom(kControlPanelList);
  findSnapshot();
  ListBoxModel& rows = pane_.view.applications().rows();
  pane_.view.applications().selectRow(-1);
  pane_.olderFamily = false;
  if (onPanel()) {
    const bool connected = connection_.connected(pane_.descriptor.pane);
    showConnectedPanel();
    pane_.view.controlPanels().rows().clear(false);
    if (connected)
      fillWorkplaces();
    else
      pane_.view.workplaces().rows().clear(false);
  } else if (pane_.snapshot) {
    const Snapshot& snapshot = *pane_.snapshot->snapshot;
    const std::string origin = snapshot.origin.address + snapshot.origin.folder;
    rows.setRows({{format(kSnapshotOf, origin.c_str(), utcText(snapshot.time).c_str())}}, false);
    pane_.view.controlPanels().rows().clear(false);
    fillWorkplaces();
  } else {
    const auto names = read<std::vector<std::string>>(
        path(), [path = path()](const SiteRoot& root) { return applications(root, path); });
    std::vector<ListRow> found;
    for (const std::string& name : names.value_or(std::vector<std::string>())) found.push_back({name});
    const bool any = !found.empty();
    if (names && !any) found.push_back({kNoApplications});
    rows.setRows(std::move(found), any, path());
  }
  emit changed();
}

void Browser::chooseApplication() {
  clearFrom(kControlPanelList);
  const std::string application = selectedText(pane_.view.applications());
  if (onPanel() || application.empty()) {
    pane_.olderFamily = false;
    emit changed();
    return;
  }
  ListBox& list = pane_.view.controlPanels();
  struct Devices {
    bool file = false;
    std::vector<PanelEntry> panels = {};
  };
  const auto devices = read<Devices>(tessaly::applicationFolder(path(), application),
                                     [path = path(), application](const SiteRoot& root) -> Expected<Devices> {
                                       const std::string folder =
                                           tessaly::applicationFolder(path, application);
                                       if (!hasDevicesFile(root, folder)) return Devices();
                                       auto panels = controlPanels(root, path, application);
                                       if (!panels) return panels.failure();
                                       return Devices{true, *std::move(panels)};
                                     });
  if (!devices) {
    pane_.olderFamily = false;
    emit changed();
    return;
  }
  if (!devices->file) {
    pane_.olderFamily = false;
    list.rows().setRows({ListRow{kNoDevicesFile}}, false);
    emit changed();
    return;
  }
  std::vector<ListRow> rows;
  for (const PanelEntry& entry : devices->panels) rows.push_back({entry.text});
  if (rows.empty()) {
    pane_.olderFamily = false;
    list.rows().setRows({ListRow{kNoControlPanels}}, false);
    emit changed();
    return;
  }
  list.rows().setRows(std::move(rows), true);
  list.selectRow(0);
  chooseControlPanel();
}

void Browser::chooseControlPanel() {
  clearFrom(kWorkplaceList);
  const std::string entry = selectedText(pane_.view.controlPanels());
  if (!onPanel()) {
    const std::string panel = beforeHyphen(entry);
    const std::string application = selectedText(pane_.view.applications());
    pane_.olderFamily =
        !panel.empty() && read<bool>(panelFolder(path(), application, panel), [path = path(), application,
                                                                               panel](const SiteRoot& root) {
                            return isOlderFamily(root, path, application, panel);
                          }).value_or(false);
  }
  fillWorkplaces();
  emit changed();
}

void Browser::fillWorkplaces() {
  ListBox& list = pane_.view.workplaces();
  std::vector<ListRow> rows;
  if (onPanel()) {
    const WorkplaceFlags flags = connection_.workplaces(pane_.descriptor.pane);
    // Unsaved changes belong to theirs, which a new line may not have told of yet.
    const int held = pane_.copy.unsaved() ? workplace() : 0;
    for (int number = 1; number <= Workplace::kCount; ++number)
      if (flags[static_cast<std::size_t>(number - 1)] || number == held)
        rows.push_back({format(kWorkplace, number), number});
    list.rows().setRows(std::move(rows), true, connection_.address(pane_.descriptor.pane).key());
    return;
  }
  if (pane_.snapshot) {
    for (const int number : pane_.snapshot->snapshot->workplaces)
      rows.push_back(number == Snapshot::kFolder ? ListRow{kSnapshotFolder, 1}
                                                 : ListRow{format(kWorkplace, number), number});
    const bool one = rows.size() == 1;
    list.rows().setRows(std::move(rows), true, pane_.snapshot->file);
    list.selectRow(one ? 0 : -1);
    if (one) chooseWorkplace();
    return;
  }
  const std::string entry = selectedText(pane_.view.controlPanels());
  if (entry.empty()) return;
  if (!hasWorkplaces(entry)) {
    list.rows().setRows({ListRow{kNoWorkplaces}}, false);
    if (pane_.olderFamily) listMacros();
    return;
  }
  for (int number = 1; number <= kDiskWorkplaces; ++number)
    rows.push_back({format(kWorkplace, number), number});
  list.rows().setRows(std::move(rows), true);
  list.selectRow(0);
  chooseWorkplace();
}

void Browser::chooseWorkplace() {
  // The demonstration's names come from no panel.
  if (onPanel() && workplace() > 0 && !demo_) takeNames();
  listMacros();
}

void Browser::takeNames() {
  panelNames_.subscribe(workplace());
  emit panelWorkplaceChosen(workplace());
}

void Browser::keepWorkplace() {
  if (!showsPanelNames()) takeNames();
}

void Browser::followWorkplace(int number) {
  if (!onPanel() || pane_.copy.unsaved()) return;
  ListBox& list = pane_.view.workplaces();
  list.selectRow(list.rows().rowOfNumber(number));
  listMacros();
}

void Browser::catchUp() {
  if (!showsPanelNames()) followWorkplace(panelNames_.workplace());
}

// The names of one workplace are known at a time. Beside another workplace they would be taken for its own.
bool Browser::showsPanelNames() const {
  const int known = panelNames_.workplace();
  return !onPanel() || demo_ || workplace() <= 0 || known == kNoWorkplace || workplace() == known;
}

void Browser::listMacros() {
  clearFrom(kCommandList);
  pane_.macroRows.clear();
  pane_.view.macros().selectRow(-1);
  if (onPanel())
    listPanelMacros();
  else if (pane_.snapshot)
    listSnapshotMacros();
  else if (pane_.olderFamily)
    listKeyFiles();
  else
    listDiskMacros();
  emit changed();
}

void Browser::showMacroRows() {
  std::vector<ListRow> rows;
  rows.reserve(pane_.macroRows.size());
  for (const MacroRow& row : pane_.macroRows) rows.push_back({row.text(), row.number});
  const bool any = !rows.empty();
  if (!any) rows.push_back({kNoMacros});
  pane_.view.macros().rows().setRows(std::move(rows), any, macrosOf());
}

std::string Browser::macrosOf() const {
  if (onPanel())
    return keyOf({PaneSource::kPanel, {}, connection_.address(pane_.descriptor.pane), workplace(), {}, {}});
  return pane_.olderFamily ? keyFolder() : sourceFolder();
}

std::string Browser::commandsOf() const {
  const std::optional<MacroTarget>& target = pane_.copy.target();
  if (target) return keyOf(*target);
  const MacroRow* row = pane_.selectedMacro();
  return row == nullptr ? std::string() : macrosOf() + '\n' + row->numberText;
}

void Browser::listDiskMacros() {
  const std::string folder = macroFolder();
  if (folder.empty()) {
    pane_.view.macros().rows().clear();
    return;
  }
  auto listing = read<MacroListing>(
      folder, [folder](const SiteRoot& root) { return tessaly::listMacros(root, folder); });
  if (!listing) return pane_.view.macros().rows().clear();
  pane_.macroRows = std::move(listing->rows);
  showMacroRows();
  for (const std::string& report : listing->reports) site_.messages.show(report, MessageIcon::kExclamation);
}

void Browser::listKeyFiles() {
  const std::string folder = keyFolder();
  if (folder.empty()) {
    pane_.view.macros().rows().clear();
    return;
  }
  auto keys = read<std::vector<MacroRow>>(
      folder, [folder](const SiteRoot& root) { return tessaly::listKeyFiles(root, folder); });
  if (!keys) return pane_.view.macros().rows().clear();
  pane_.macroRows = *std::move(keys);
  showMacroRows();
}

void Browser::listPanelMacros() {
  pane_.macroRows.clear();
  if (workplace() == 0 && !demo_) {
    pane_.view.macros().rows().clear(false);
    return;
  }
  const MacroNameTable names = panelNames_.names(pane_.descriptor.pane);
  int number = 0;
  for (const std::string& name : names) {
    if (!name.empty()) pane_.macroRows.push_back({MacroNumber::textOf(number), number, name});
    ++number;
  }
  showMacroRows();
}

void Browser::listSnapshotMacros() {
  const auto workplace = snapshotWorkplace();
  if (!workplace) {
    pane_.view.macros().rows().clear();
    return;
  }
  for (const Snapshot::Macro& macro : pane_.snapshot->snapshot->of(*workplace))
    pane_.macroRows.push_back({macro.number.text(), macro.number.value(), macro.name});
  showMacroRows();
}

std::optional<int> Browser::snapshotWorkplace() const {
  if (!pane_.snapshot || workplace() <= 0) return std::nullopt;
  return pane_.snapshot->snapshot->workplaces.front() == Snapshot::kFolder ? Snapshot::kFolder : workplace();
}

void Browser::showCommands(const std::vector<int>& selected) {
  shownRevision_ = pane_.copy.revision();
  CommandList& list = pane_.view.commands();
  const WorkingCopy& copy = pane_.copy;
  const int count = copy.commandCount();
  if (copy.content() == WorkingCopy::Content::kNothing)
    list.rows().clear();
  else if (count == 0)
    list.rows().showNotice(commandsOf(), kEmptyMacroRow);
  else
    showLines();
  list.selectRows(count > 0 ? selected : std::vector<int>());
  showCount();
  emit changed();
}

void Browser::showLinesAgain() {
  if (pane_.copy.commandCount() > 0) showLines();
}

void Browser::showLines() {
  CommandListModel& rows = pane_.view.commands().rows();
  const WorkingCopy& copy = pane_.copy;
  const LineOptions options = pane_.view.lineOptions();
  if (copy.content() == WorkingCopy::Content::kMacro) {
    rows.showMacro(commandsOf(),
                   {copy.sharedCommands(), copy.updatedMarks(), options,
                    [lines = lines_](const MacroCommand& command, const LineOptions& how, bool updated) {
                      return commandLine(command, how, lines, updated);
                    }});
    return;
  }
  std::vector<std::string> keys;
  for (const ClassicCommand& command : copy.keyFile().commands())
    keys.push_back(keyCommandLine(command, options, lines_));
  rows.showLines(commandsOf(), std::move(keys));
}

void Browser::showCount() {
  const int count = pane_.copy.commandCount();
  pane_.view.showProgress(count == 0   ? QString()
                          : count == 1 ? QString::fromLatin1(kOneCommand)
                                       : QString::fromStdString(format(kManyCommands, count)));
}

void Browser::showDemoListing() {
  demo_ = true;
  clearFrom(kWorkplaceList);
  std::vector<ListRow> rows;
  for (int number = 1; number <= kDemoWorkplaces; ++number)
    rows.push_back({format(kWorkplace, number), number});
  pane_.view.workplaces().rows().setRows(std::move(rows), true);
  listPanelMacros();
  emit changed();
}

void Browser::refreshWorkplaces() {
  if (!onPanel()) return;
  ListBox& list = pane_.view.workplaces();
  const int chosen = workplace();
  fillWorkplaces();
  list.selectRow(chosen > 0 ? list.rows().rowOfNumber(chosen) : -1);
  if (chosen > 0 && list.selectedRow() < 0) clearFrom(kMacroList);
  emit changed();
}

void Browser::refreshMacroNames() {
  if (!onPanel() || !showsPanelNames()) return;
  const MacroRow* chosen = pane_.selectedMacro();
  const std::optional<MacroRow> before = chosen != nullptr ? std::optional(*chosen) : std::nullopt;
  listPanelMacros();
  chooseAgain(before);
  const int held = heldRow(pane_, connection_.address(pane_.descriptor.pane), workplace());
  if (ListBox& list = pane_.view.macros(); held >= 0 && list.selectedRow() < 0) {
    list.selectRow(held);
    list.bringIntoSight({held});
  }
  emit changed();
}

// The macro that was chosen before its list was filled anew. Under another name it is another macro: what the
// pane holds would give it its old name back.
void Browser::chooseAgain(const std::optional<MacroRow>& before) {
  if (!before) return;
  ListBox& list = pane_.view.macros();
  const int row = list.rows().rowOfNumber(before->number);
  const bool same = row >= 0 && pane_.macroRows[static_cast<std::size_t>(row)].name == before->name;
  list.selectRow(same || (row >= 0 && pane_.copy.unsaved()) ? row : -1);
  if (same || pane_.copy.unsaved()) return;
  clearFrom(kCommandList);
  const QString text = row < 0 ? tr("gone: %1 is no longer on the panel")
                               : tr("renamed: %1 has another name on the panel now");
  emit said({Grade::kWarning, text.arg(nameInStrip(before->text())),
             placeInWindow(MacroPlace{{}, connection_.address(pane_.descriptor.pane), workplace(), {}})});
}

void Browser::refreshFolder(const std::string& folder) {
  const std::string here = macroFolder();
  if (here.empty() || pane_.olderFamily || !site_.root.same(here, folder)) return;
  const MacroRow* chosen = pane_.selectedMacro();
  const int number = chosen != nullptr ? chosen->number : -1;
  auto listing =
      read<MacroListing>(here, [here](const SiteRoot& root) { return tessaly::listMacros(root, here); });
  if (!listing) return;
  pane_.macroRows = std::move(listing->rows);
  showMacroRows();
  ListBox& list = pane_.view.macros();
  list.selectRow(number >= 0 ? list.rows().rowOfNumber(number) : -1);
  emit changed();
}

void Browser::refreshPanel() {
  if (!onPanel()) return;
  showConnectedPanel();
  refreshWorkplaces();
  if (workplace() > 0) panelNames_.renew(workplace());
}

}  // namespace tessaly
