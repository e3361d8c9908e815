#pragma once

#include <array>

#include <QObject>
#include <QPointer>

#include "app/PaneState.h"
#include "link/PanelConnection.h"
#include "model/CommandLine.h"
#include "widgets/Message.h"

namespace tessaly {

class CaptureWindow;
struct CaptureTake;

// Opens the windows that set the panel's values beside those of the panes' macros, one a pane, and keeps them
// up to date. GUI thread.
class Captures : public QObject {
  Q_OBJECT

 public:
  // Observes what surrounds it.
  Captures(const PaneAccesses& panes, const PanelConnection& connection, PanelClient& client,
           const LineContext& lines, QWidget* window);
  ~Captures() override;

  // There is a macro in the pane, and a panel behind it.
  [[nodiscard]] bool possible(Pane pane) const;
  // Brought before the others when it is open already; says why when it is not possible.
  void open(Pane pane);
  // The connection may have changed.
  void look();

 signals:
  void said(const tessaly::Message& message);

 private:
  [[nodiscard]] PaneState& state(Pane pane) const { return *panes_[index(pane)].state; }
  [[nodiscard]] QString lineTrouble(Pane pane) const;
  [[nodiscard]] QString take(Pane pane, const CaptureTake& take);
  [[nodiscard]] CaptureWindow* make(Pane pane);

  PaneAccesses panes_;
  const PanelConnection& connection_;
  PanelClient& client_;
  LineContext lines_;
  QWidget* owner_;
  std::array<QPointer<CaptureWindow>, kPanes.size()> windows_;
};

}  // namespace tessaly
