#pragma once

#include <map>

#include <QPointer>
#include <QThreadPool>

#include "app/ComparedPlace.h"
#include "model/CommandLine.h"
#include "model/KeptMacro.h"
#include "windows/CompareSide.h"

namespace tessaly {

class CompareWindow;
class HistoryOperations;
class OpenMacros;

// Opens the windows that compare what the panes hold, and keeps them up to date. The column of a pane's
// letter is that pane's. One window stands for one pair: asked for again, it comes to the front. GUI thread.
class Comparisons : public QObject {
  Q_OBJECT

 public:
  Comparisons(const PaneAccesses& panes, SiteAccess site, MacroTransfers& transfers, EventGate& gate,
              const LineContext& lines, QWidget* window);
  ~Comparisons() override;

  // Compares what they ask for.
  void connectTo(const OpenMacros& open, const HistoryOperations& history);

  void comparePanes();
  // With what stands now where the pane's macro belongs; what is known of it already is taken as it is.
  void compareWithTarget(Pane pane, std::optional<MacroTransfers::Present> known = std::nullopt);
  // The same of another place.
  void compareWithPlace(Pane pane, const MacroTarget& place, const MacroTransfers::Present& known);
  void compareWithVersion(Pane pane, const KeptMacro& version);

  // What a pane holds now, for whoever takes something over into it.
  [[nodiscard]] static CompareSide sideOf(const PaneState& here);

 private:
  struct Opened {
    QPointer<CompareWindow> window;
    QPointer<ComparedPlace> place;  // none beside the other pane or a version
  };

  [[nodiscard]] PaneState& state(Pane pane) const { return *panes_[index(pane)].state; }
  [[nodiscard]] static QString refusalOf(const PaneState& here);
  [[nodiscard]] QString take(Pane pane, const CompareTake& take);
  void compareBesidePlace(Pane pane, const std::string& key, std::optional<MacroTarget> place,
                          std::optional<MacroTransfers::Present> known);
  // A window for the pane beside another side.
  CompareWindow* open(const std::string& key, Pane pane, std::function<CompareSide()> beside,
                      std::function<void()> readAgain = {});
  CompareWindow* open(const std::string& key, Pane pane, CompareWays ways);

  PaneAccesses panes_;
  SiteAccess site_;
  MacroTransfers& transfers_;
  EventGate& gate_;
  LineContext lines_;
  QWidget* window_;
  std::map<std::string, Opened> opened_;  // by what they compare
  QThreadPool pool_;
};

}  // namespace tessaly
