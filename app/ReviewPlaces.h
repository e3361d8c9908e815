#pragma once

#include <functional>
#include <optional>
#include <vector>

#include <QObject>
#include <QTimer>

#include "app/EventGate.h"
#include "app/LooseMacros.h"
#include "app/OpenMacros.h"
#include "app/PaneState.h"
#include "widgets/Message.h"
#include "windows/ReviewScope.h"

namespace tessaly {

class MacroHistory;
class PanelClient;

// A workplace of a panel to be read beside what the panes do there, by a connection of its own. Observes all.
[[nodiscard]] ShelfContent readingShelf(const PanelMacros& macros, PanelClient& client, MacroHistory& history,
                                        const HostAddress& address, int workplace);

// Between the panes and the windows that look at macros from above: what can be looked at just now, as seen
// from the pane that has the keyboard, and the way from there to a command in a pane. GUI thread.
class ReviewPlaces : public QObject {
  Q_OBJECT

 public:
  using Then = std::function<void(Pane pane)>;
  // A workplace of a panel, to be read on another thread.
  using PanelReader = std::function<ShelfContent(const HostAddress& address, int workplace)>;

  ReviewPlaces(const PaneAccesses& panes, SiteAccess site, const PanelConnection& connection,
               OpenMacros& open, LooseMacros& loose, EventGate& gate, QWidget* window);

  void setPanelReader(PanelReader reader) { panelReader_ = std::move(reader); }
  // That has the keyboard, or had it last.
  void setActive(Pane pane) { active_ = pane; }
  [[nodiscard]] Pane active() const { return active_; }

  [[nodiscard]] std::vector<ReviewScope> scopes() const;
  // Nothing while the pane shows nothing.
  [[nodiscard]] std::optional<OpenContent> shownIn(Pane pane) const;

  // Shows what lies there in a pane, the active one if it can, selects the command (-1 for none), and calls
  // `then`. Why not, as for unsaved changes that hold the pane, is told by `said`. Returns at once: a panel
  // is asked afterwards.
  void show(const ReviewedPlace& place, int command, const Then& then = {});

 signals:
  void said(const tessaly::Message& message);
  void changed();

 private:
  struct Wanted {
    ReviewedPlace place;
    int command;
    Then then;
  };

  [[nodiscard]] PaneState& state(Pane pane) const { return *panes_[index(pane)].state; }
  [[nodiscard]] Browser& browser(Pane pane) const { return *panes_[index(pane)].browser; }
  [[nodiscard]] bool onPanel(Pane pane) const;
  void addDiskScopes(Pane pane, std::vector<ReviewScope>& scopes) const;
  [[nodiscard]] std::optional<Pane> paneShowing(const ReviewedPlace& place) const;
  [[nodiscard]] std::optional<Pane> paneFor(const ReviewedPlace& place) const;
  void open(const Wanted& wanted);
  void openFromDisk(Pane pane, const Wanted& wanted);
  void openFromPanel();
  void finish(Pane pane, const Wanted& wanted);
  void refuse(const ReviewedPlace& place, const QString& reason);

  PaneAccesses panes_;
  SiteAccess site_;
  const PanelConnection& connection_;
  OpenMacros& open_;
  LooseMacros& loose_;
  EventGate& gate_;
  QWidget* window_;
  PanelReader panelReader_;
  Pane active_ = Pane::kA;
  std::optional<Wanted> awaited_;  // of a panel whose names are still to come
  Pane awaiting_ = Pane::kA;       // the pane that it is to be shown in
  QTimer patience_;
};

}  // namespace tessaly
