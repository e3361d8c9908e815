#include <algorithm>

#include "app/Browser.h"
#include "app/PaneState.h"
#include "platform/MacroNumber.h"
#include "platform/Text.h"
#include "review/SnapshotShelf.h"

// Where a pane stands, and how it is led to another place.
namespace tessaly {

std::string Browser::selectedText(const ListBox& list) {
  const ListRow* row = list.selected();
  return row != nullptr ? row->text : std::string();
}

void Browser::reveal(const MacroTarget& target) {
  std::string panel;
  const auto inPanel = [&](int workplace) {
    return site_.root.same(
        tessaly::macroFolder(path(), selectedText(pane_.view.applications()), panel, workplace),
        target.folder);
  };
  if (onPanel() || pane_.snapshot || !chooseApplicationOf(target.folder) ||
      !chooseRow(pane_.view.controlPanels(), [&](const ListRow& row) {
        panel = beforeHyphen(row.text);
        return inPanel(1) || inPanel(kDiskWorkplaces);
      }))
    return;
  chooseControlPanel();
  if (!chooseRow(pane_.view.workplaces(), [&](const ListRow& row) { return inPanel(row.number); })) return;
  chooseWorkplace();
  static_cast<void>(chooseMacro(target.numberText));
}

void Browser::revealKey(const std::string& folder, const std::string& numberText) {
  const auto holds = [&](const ListRow& row) {
    return site_.root.same(
        tessaly::keyFolder(path(), selectedText(pane_.view.applications()), beforeHyphen(row.text)), folder);
  };
  if (onPanel() || pane_.snapshot || !chooseApplicationOf(folder) ||
      !chooseRow(pane_.view.controlPanels(), holds))
    return;
  chooseControlPanel();
  if (pane_.olderFamily) static_cast<void>(chooseMacro(numberText));
}

bool Browser::revealOnPanel(int number, const std::string& numberText) {
  if (!onPanel()) return false;
  if (workplace() != number) {
    if (!chooseRow(pane_.view.workplaces(), [&](const ListRow& row) { return row.number == number; }))
      return false;
    chooseWorkplace();
  }
  return showsPanelNames() && chooseMacro(numberText);
}

// As by a click, but that nothing follows from it.
bool Browser::chooseRow(ListBox& list, const std::function<bool(const ListRow& row)>& wanted) {
  const std::vector<ListRow> rows = list.rows().rows();
  const auto row = std::find_if(rows.begin(), rows.end(), wanted);
  if (row == rows.end() || !list.rows().enabled()) return false;
  list.selectRow(static_cast<int>(row - rows.begin()));
  return true;
}

bool Browser::chooseApplicationOf(const std::string& folder) {
  const auto holds = [&](const ListRow& row) {
    const std::string own = tessaly::applicationFolder(path(), row.text);
    return !own.empty() && equalNoCase(std::string_view(folder).substr(0, own.size()), own);
  };
  if (!chooseRow(pane_.view.applications(), holds)) return false;
  chooseApplication();
  return true;
}

bool Browser::chooseMacro(const std::string& numberText) {
  const auto macro = std::find_if(pane_.macroRows.begin(), pane_.macroRows.end(),
                                  [&](const MacroRow& row) { return row.numberText == numberText; });
  if (macro == pane_.macroRows.end()) return false;
  pane_.view.macros().selectRow(static_cast<int>(macro - pane_.macroRows.begin()));
  emit changed();
  return true;
}

std::string Browser::applicationFolder() const {
  const std::string application = selectedText(pane_.view.applications());
  return onPanel() || application.empty() ? std::string() : tessaly::applicationFolder(path(), application);
}

std::string Browser::macroFolder() const {
  if (onPanel() || pane_.snapshot || workplace() <= 0) return {};
  const std::string application = selectedText(pane_.view.applications());
  const std::string panel = beforeHyphen(selectedText(pane_.view.controlPanels()));
  if (application.empty() || panel.empty()) return {};
  return tessaly::macroFolder(path(), application, panel, workplace());
}

std::string Browser::sourceFolder() const {
  const auto workplace = snapshotWorkplace();
  return workplace ? pane_.snapshot->file + '/' + snapshotFolderOf(*workplace) : macroFolder();
}

std::optional<std::string> Browser::snapshotBytes(std::string_view numberText) const {
  const auto workplace = snapshotWorkplace();
  const auto number = MacroNumber::parse(numberText);
  if (!workplace || !number) return std::nullopt;
  SnapshotShelf shelf(pane_.snapshot->snapshot, *workplace, pane_.snapshot->file);
  auto bytes = shelf.read(*number);
  return bytes ? std::optional(*std::move(bytes)) : std::nullopt;
}

std::string Browser::keyFolder() const {
  const std::string application = selectedText(pane_.view.applications());
  const std::string panel = beforeHyphen(selectedText(pane_.view.controlPanels()));
  if (application.empty() || panel.empty()) return {};
  return tessaly::keyFolder(path(), application, panel);
}

int Browser::workplace() const {
  const ListRow* row = pane_.view.workplaces().selected();
  return row != nullptr ? std::max(0, row->number) : 0;
}

MacroNameTable Browser::names() const {
  return onPanel() ? panelNames_.names(pane_.descriptor.pane) : tessaly::macroNames(pane_.macroRows);
}

}  // namespace tessaly
