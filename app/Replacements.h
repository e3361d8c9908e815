#pragma once

#include <set>
#include <string>
#include <utility>
#include <vector>

#include <QObject>
#include <QPointer>

#include "app/EventGate.h"
#include "app/Shelves.h"
#include "link/PanelConnection.h"
#include "platform/SiteRoot.h"
#include "windows/ReplaceWindow.h"

namespace tessaly {

class Checking;
class MacroUndo;
class OpenMacros;
class ReviewPlaces;

// Replaces in many macros in the window: what the panes show follows, and macros that they show with unsaved
// changes are left out. GUI thread.
class Replacements : public QObject {
  Q_OBJECT

 public:
  struct Surroundings {
    const SiteRoot& root;
    const Checking& checking;
    const PanelConnection& connection;
    ReviewPlaces& places;
    OpenMacros& open;
    MacroUndo& undo;
    EventGate& gate;
  };

  // Observes what surrounds it.
  Replacements(const Surroundings& surroundings, Shelves shelves, QWidget* window);
  ~Replacements() override;

  // Brought before the others when it is open already.
  void open();
  // Gives up what is under way; false while that goes on.
  [[nodiscard]] bool end();

 private:
  [[nodiscard]] QString leftOut(const MacroPlace& place) const;
  [[nodiscard]] ReplaceJob job(const std::string& title) const;
  void follow();

  Surroundings around_;
  Shelves shelves_;
  QWidget* owner_;
  QPointer<ReplaceWindow> window_;
  // What the panes have not followed yet.
  std::vector<std::pair<QString, std::vector<BatchTrace>>> done_;
  std::vector<MacroPlace> written_;
};

}  // namespace tessaly
