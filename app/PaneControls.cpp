#include "app/PaneControls.h"

namespace tessaly {

PaneControls paneControls(const PaneSituation& now) {
  PaneControls controls;
  controls.macroButtonsShown = !now.edited;
  // Changes to a macro of a panel that were taken up again need the panel before they can be saved.
  controls.connectAllowed = !now.edited || (now.source == PaneSource::kPanel && !now.connected);
  controls.saveShown = now.edited;
  controls.noticeShown = now.olderFamily && now.source == PaneSource::kHarddisk;
  controls.snapshotShown = now.snapshot;
  if (!now.loaded) return controls;

  const bool current = !now.olderFamily && !now.snapshot;
  const bool macro = now.macroSelected && current;
  // A copy between two panel panes goes through the other pane's working copy, which must not hold changes.
  const bool bufferFree = !(now.source == PaneSource::kPanel && now.otherIsPanel && now.otherUnsaved);
  controls.selectionEnabled = !now.edited;
  controls.create = now.folderChosen && current;
  controls.copy = now.otherMacroSelected && now.folderChosen && current && bufferFree;
  controls.rename = macro;
  controls.remove = macro;
  controls.newCommand = macro && now.keepable;
  controls.modify = controls.newCommand && now.commandsSelected == 1;
  controls.removeCommand = macro && now.commandsSelected > 0;
  controls.update = macro;
  controls.optionsEnabled = now.commandCount > 0;
  // A key file and a macro that cannot be saved whole are there to be copied from.
  controls.selectCommands = now.commandCount > 0;
  controls.copyCommands = now.commandsSelected > 0;
  controls.pasteCommands = controls.newCommand;
  controls.moveCommands = controls.pasteCommands && now.commandsSelected > 0;
  return controls;
}

}  // namespace tessaly
