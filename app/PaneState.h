#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "app/MacroPane.h"
#include "app/PaneDescriptor.h"
#include "app/ShownSnapshot.h"
#include "app/WorkingCopy.h"
#include "link/PanelMacros.h"
#include "model/SiteBrowser.h"

namespace tessaly {

class Browser;

// What the program holds for one pane beside its controls and its connection. GUI thread.
struct PaneState {
  PaneState(const PaneDescriptor& paneDescriptor, MacroPane& paneView, SiteAccess site)
      : descriptor(paneDescriptor),
        view(paneView),
        copy(site, workingCopyPath(paneDescriptor.pane), RecoveryFile(site.root, paneDescriptor.letter)) {
    copy.setSelection([&paneView] { return paneView.commands().selectedRows(); });
  }

  const PaneDescriptor& descriptor;
  MacroPane& view;

  bool olderFamily = false;  // kind of the selected control panel
  std::optional<ShownSnapshot> snapshot;
  std::vector<MacroRow> macroRows;  // of the shown macros list, row by row; empty under a notice row

  WorkingCopy copy;

  [[nodiscard]] const MacroRow* selectedMacro() const {
    const int row = view.macros().selectedRow();
    return row >= 0 && row < static_cast<int>(macroRows.size()) ? &macroRows[static_cast<std::size_t>(row)]
                                                                : nullptr;
  }
  // The one command of a macro that is selected; null for none, for several, and for one of a key file.
  [[nodiscard]] const MacroCommand* selectedCommand() const {
    const std::vector<int> rows = view.commands().selectedRows();
    const auto& macro = copy.macro();
    if (rows.size() != 1 || !macro || rows.front() >= copy.commandCount()) return nullptr;
    return &macro->commands()[static_cast<std::size_t>(rows.front())];
  }
  // There are commands that editors may change.
  [[nodiscard]] bool editable() const {
    return hasMacro() && copy.content() == WorkingCopy::Content::kMacro && (!snapshot || copy.loose());
  }
  // Nothing can be written where the macros of the list are.
  [[nodiscard]] bool viewOnly() const { return olderFamily || snapshot; }
  // A macro is chosen in the list, or is being edited whatever the list shows by now, or is in none.
  [[nodiscard]] bool hasMacro() const {
    return selectedMacro() != nullptr || (copy.edited() && copy.target()) || copy.loose();
  }
};

// One pane as the operations see it.
struct PaneAccess {
  PaneState* state;
  Browser* browser;
};
using PaneAccesses = std::array<PaneAccess, kPanes.size()>;

}  // namespace tessaly
