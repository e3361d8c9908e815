#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <string>

#include <QObject>
#include <QWidget>

#include "app/PaneState.h"
#include "app/PanelTransfer.h"
#include "link/PanelConnection.h"
#include "review/SnapshotRestore.h"
#include "review/SnapshotTaking.h"
#include "widgets/Message.h"

namespace tessaly {

class Checking;
class MacroHistory;
class MacroUndo;
class OpenMacros;

// Stores the macros of a panel, or of the folder that a pane shows, in one file, and shows such a file in a
// pane, to be viewed and copied from. What was done, or why not, is told in one line by `said`. GUI thread;
// the files are made and read on a thread beside it.
class Snapshots : public QObject {
  Q_OBJECT

 public:
  // Observes all.
  Snapshots(const PaneAccesses& panes, SiteAccess site, MacroHistory& history, PanelConnection& connection,
            PanelTransfer& transfer, OpenMacros& open, MacroUndo& undo, const Checking& checking,
            PanelClient& client, QWidget* window);

  // All workplaces of the panel that the pane shows, or its folder, into a file that the user names.
  void save(Pane pane);
  // A file that the user names, in place of what the pane shows of the disk.
  void open(Pane pane);
  // What the pane shows, into what the other pane shows: all workplaces of a panel's snapshot to the panel
  // that it is connected to, or the one that is chosen to its folder. The user ticks what, and sees what
  // became of it; each time is undone as one. A line that is lost is made anew.
  void restore(Pane pane);
  // The pane goes back to its path of before.
  void close(Pane pane);

 signals:
  void said(const tessaly::Message& message);

 private:
  [[nodiscard]] PaneState& state(Pane pane) const { return *panes_[index(pane)].state; }
  [[nodiscard]] Browser& browser(Pane pane) const { return *panes_[index(pane)].browser; }
  void savePanel(Pane pane);
  void saveFolder(const std::string& folder);
  void save(SnapshotTaking& taking, const QString& label, const QString& suggested);
  void restoreToPanel(Pane pane, Pane to);
  void restoreToFolder(Pane pane, Pane to);
  void restore(SnapshotRestore& rows, const QString& title);
  // Asks before macros with errors go to a panel.
  [[nodiscard]] bool maySend(const SnapshotRestore& rows, const std::vector<std::size_t>& ticked);
  void noteRestored(const SnapshotRestore& rows, const std::vector<MacroPlace>& written);
  void follow(const std::vector<MacroPlace>& written);
  // A line that the work has made anew is the panes'.
  void runBeside(const QString& label, const std::function<void(const PanelTransfer::Tell& tell)>& work,
                 const std::function<void()>& cancel);
  // On the thread of the work: whether the panel can be asked, on a new line if need be.
  [[nodiscard]] bool reached();
  void setPath(Pane pane, const std::string& path);

  PaneAccesses panes_;
  SiteAccess site_;
  MacroHistory& history_;
  PanelConnection& connection_;
  PanelTransfer& transfer_;
  OpenMacros& open_;
  MacroUndo& undo_;
  const Checking& checking_;
  PanelClient& client_;
  QWidget* window_;
  std::atomic<bool> wanted_{true};  // what runs beside
};

}  // namespace tessaly
