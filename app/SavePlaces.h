#pragma once

#include <functional>
#include <string>

#include "app/PaneState.h"

class QMenu;
class QWidget;

namespace tessaly {

// The places that a macro can be saved in: a number in the folder that a pane shows, offered when there is
// one and `inPanes`, or a file.
void offerSavePlaces(QMenu& menu, const PaneAccesses& panes, bool inPanes,
                     const std::function<void(Pane)>& inPane, const std::function<void()>& inFile);

// The host path of a macro file that the user names; empty without one.
[[nodiscard]] std::string askForMacroFile(const SiteRoot& root, QWidget* parent);

}  // namespace tessaly
