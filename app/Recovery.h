#pragma once

#include <array>
#include <optional>

#include <QObject>
#include <QStringList>
#include <QWidget>

#include "app/PaneState.h"
#include "app/RecoveredBytes.h"
#include "app/RecoveryDialog.h"
#include "widgets/Message.h"

namespace tessaly {

class MacroHistory;

// Offers the unsaved changes that a program which died has left, once the dictionary is there. Nothing is
// lost whatever the answer: what is left goes to the history, and what is to be asked again is set aside so
// that the pane is free. What the history cannot keep is taken up all the same. GUI thread.
class Recovery : public QObject {
  Q_OBJECT

 public:
  Recovery(const PaneAccesses& panes, SiteAccess site, MacroHistory& history, PanelConnection& connection,
           QWidget* window);

  // Opens the dialog when there is something to offer, and returns at once.
  void offer();
  // The offer is still to be answered.
  [[nodiscard]] bool offering() const { return found_[0] || found_[1]; }

 signals:
  void said(const tessaly::Message& message);

 private:
  // What was found for a pane.
  struct Found {
    RecoveryRecord record;
    std::string bytes;
    RecoveredBytes how;
  };

  [[nodiscard]] PaneState& state(Pane pane) const { return *panes_[index(pane)].state; }
  void look(Pane pane);
  [[nodiscard]] RecoveryOffer describe(Pane pane) const;
  [[nodiscard]] std::string fileOf(Pane pane, const RecoveryRecord& record) const;
  void answered(const RecoveryDialog& dialog, bool accepted);
  [[nodiscard]] bool takeUp(Pane pane, const Found& found);
  void goToPanel(Pane pane, const MacroTarget& target);
  [[nodiscard]] bool keep(Pane pane, const Found& found);
  void leave(Pane pane, const Found& found);
  void setAside(Pane pane, Found found);
  void note(Pane pane, Grade grade, const QString& text);
  void noteUnknown(Pane pane, const Failure& failure);
  void tell();

  PaneAccesses panes_;
  SiteAccess site_;
  MacroHistory& history_;
  PanelConnection& connection_;
  QWidget* window_;
  std::array<std::optional<Found>, kPanes.size()> found_;
  QStringList notes_;  // for the strip, in one line
  Grade grade_{};      // the heaviest of theirs
};

}  // namespace tessaly
