#pragma once

#include "link/PaneStates.h"

namespace tessaly {

// What the enabled states of a pane's controls depend on.
struct PaneSituation {
  bool loaded = false;  // the function dictionary is there
  PaneSource source = PaneSource::kHarddisk;
  bool connected = false;
  bool olderFamily = false;
  bool snapshot = false;      // shown in place of the disk
  bool edited = false;        // this pane
  bool otherUnsaved = false;  // the other pane: edited, or a save of it is owed
  bool otherIsPanel = false;
  bool folderChosen = false;  // application, panel and workplace, or a workplace of the panel
  bool macroSelected = false;
  bool otherMacroSelected = false;
  bool keepable = false;     // saving the shown macro loses nothing of it
  int commandsSelected = 0;  // of a macro or a key file
  int commandCount = 0;      // of the shown macro
};

// Enabled and shown states, decided in one place; the handlers behind the buttons check again and end
// silently.
struct PaneControls {
  bool selectionEnabled = false;  // both radios and the four selection lists
  bool macroButtonsShown = true;
  bool connectAllowed = true;  // the connect button, where the source has one
  bool create = false, copy = false, rename = false, remove = false;
  bool newCommand = false, modify = false, removeCommand = false, update = false;
  bool selectCommands = false, copyCommands = false, pasteCommands = false;
  bool moveCommands = false;  // and to cut or duplicate them
  bool optionsEnabled = false;
  bool saveShown = false;
  bool noticeShown = false;    // "Macros from Tarrow Control Panels can only be viewed"
  bool snapshotShown = false;  // the same of the macros in a snapshot
};

[[nodiscard]] PaneControls paneControls(const PaneSituation& situation);

}  // namespace tessaly
