#pragma once

#include <array>

#include <QObject>
#include <QPointer>

#include "app/PaneState.h"
#include "app/WindowContext.h"
#include "windows/RehearseWindow.h"

namespace tessaly {

// Rehearses what the panes hold, in a window a pane, which follows the pane and the connection. Asked for
// again it comes to the front. GUI thread.
class Rehearsals : public QObject {
  Q_OBJECT

 public:
  // Observes all.
  Rehearsals(const PaneAccesses& panes, const WindowContext& context, const PanelConnection& connection,
             const LineContext& lines, QWidget* window);
  ~Rehearsals() override;

  void open(Pane pane);
  // The connection may have changed.
  void look();

 private:
  [[nodiscard]] PaneState& state(Pane pane) const { return *panes_[index(pane)].state; }
  [[nodiscard]] RehearseSource sourceOf(Pane pane) const;
  [[nodiscard]] QString panelFor(Pane pane) const;

  PaneAccesses panes_;
  const WindowContext& context_;
  const PanelConnection& connection_;
  LineContext lines_;
  QWidget* owner_;
  std::array<QPointer<RehearseWindow>, kPanes.size()> windows_;
};

}  // namespace tessaly
