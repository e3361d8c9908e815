#pragma once

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <QMenu>
#include <QPointer>
#include <QThreadPool>

#include "app/BatchRecoveries.h"
#include "app/BatchUndo.h"
#include "app/PaneState.h"
#include "app/Shelves.h"
#include "link/PanelConnection.h"
#include "model/CommandLine.h"
#include "widgets/Message.h"
#include "windows/WorkplacesWindow.h"

namespace tessaly {

class Checking;
class CompareWindow;
class MacroUndo;
class OpenMacros;

// The window that sets workplaces beside each other, what it copies, and what batches need beside it: their
// undo and their end after a crash. What a batch has written is shown by the panes at once, when nothing
// holds them. GUI thread.
class Workplaces : public QObject {
  Q_OBJECT

 public:
  struct Surroundings {
    PaneAccesses panes;
    SiteAccess site;
    const PanelConnection& connection;
    PanelTransfer& transfer;
    EventGate& gate;
    OpenMacros& open;
    MacroUndo& undo;
    Checking& checking;
    LineContext lines;
  };

  // Observes what surrounds it.
  Workplaces(const Surroundings& surroundings, Shelves shelves, QWidget* window);
  ~Workplaces() override;

  void openWindow();
  // The panes can be used: what an earlier program has not ended is ended.
  void start() { recoveries_.start(); }
  // The connection may have changed.
  void look() { recoveries_.look(); }
  // Gives up what is under way; false while that goes on.
  [[nodiscard]] bool end();

 signals:
  void said(const tessaly::Message& message);

 private:
  [[nodiscard]] std::vector<WorkplaceChoice> choices() const;
  struct Choices {
    std::vector<WorkplaceChoice> all;
    std::set<std::pair<HostAddress, int>> workplaces;  // of panels, each once
  };
  void addShown(Pane pane, Choices& choices) const;
  void addPanel(Pane pane, Choices& choices) const;
  void addWorkplace(Pane pane, int workplace, Choices& choices) const;
  [[nodiscard]] std::optional<WorkplaceChoice> askForFolder(QWidget* owner) const;
  [[nodiscard]] std::optional<WorkplaceChoice> askForSnapshot(QWidget* owner) const;
  [[nodiscard]] bool mayWrite(const std::vector<MacroPlace>& places) const;
  void compare(const WorkplaceChoice& left, const WorkplaceChoice& right, MacroNumber number);
  void settle();  // once nothing holds the panes

  Surroundings around_;
  Shelves shelves_;
  QWidget* owner_;
  BatchRecoveries recoveries_;
  BatchUndo batchUndo_;
  QPointer<WorkplacesWindow> window_;
  struct Copied {
    QString name;
    std::vector<BatchTrace> traces;
  };
  std::vector<MacroPlace> written_;  // that the panes have not followed yet
  std::vector<Copied> copied_;       // that cannot be undone yet
  QThreadPool pool_;                 // of the comparisons
  QList<QPointer<CompareWindow>> comparisons_;
};

}  // namespace tessaly
