#pragma once

#include <initializer_list>

#include <QString>

#include "app/PaneControls.h"
#include "model/EditHistory.h"

namespace tessaly {

// What an act can need before it is possible.
enum class ActNeed {
  kLoaded,      // the function dictionary is there
  kUnchanged,   // the pane has no unsaved changes
  kWritable,    // nor a key file or a snapshot
  kFolder,      // application, panel and workplace
  kMacro,       // one is chosen, or open
  kOtherMacro,  // one is chosen in the other pane
  kLines,       // commands are listed
  kCommands,    // at least one is selected
  kOneCommand,  // and no other
  kKeepable,    // what is open can be saved without a loss
  kChanges,     // there is something to save
  kUndo,        // there is a step to go back to
  kRedo,        // or to go on to
  kSteps,       // any
  kMacroUndo,   // an operation on a whole macro
  kSnapshot,    // is shown
  kNoSnapshot,  // is shown
  kPanel,       // is chosen as the source
  kConnected,   // to a panel
  kCapture      // a macro, and a panel behind it
};

// A set of them.
struct ActNeeds {
  unsigned bits = 0;
  constexpr ActNeeds() = default;
  constexpr ActNeeds(std::initializer_list<ActNeed> needs) {
    for (const ActNeed need : needs) bits |= 1U << static_cast<unsigned>(need);
  }
  [[nodiscard]] constexpr bool has(ActNeed need) const {
    return (bits & 1U << static_cast<unsigned>(need)) != 0;
  }
};

// What it depends on, of the pane that was worked in last.
struct ActSituation {
  PaneSituation pane;
  bool changes = false;                // to be saved, also owed ones
  const EditHistory* steps = nullptr;  // of its macro
  QString undone;                      // the operation on a macro that would be undone; empty for none
  bool capture = false;                // the values of the pane can be captured
};

// The first thing that is missing, in the language of the program; empty when nothing is.
[[nodiscard]] QString obstacleTo(ActNeeds needs, const ActSituation& now);

}  // namespace tessaly
