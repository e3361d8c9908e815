#pragma once

#include <functional>
#include <optional>
#include <string>

#include <QObject>
#include <QWidget>

#include "app/Overwriting.h"
#include "app/PaneState.h"
#include "app/Sendable.h"
#include "widgets/Message.h"

namespace tessaly {

class MacroHistory;
class MacroTransfers;
class MacroUndo;
class OpenMacros;

// What the macro buttons of the panes do to macro files. A missing selection ends an operation silently; what
// was done, or why not, is told in one line by `said`. What a macro held before goes to the history first,
// and every pane that shows it follows. GUI thread.
class MacroOperations : public QObject {
  Q_OBJECT

 public:
  MacroOperations(const PaneAccesses& panes, SiteAccess site, MacroHistory& history,
                  const PanelConnection& connection, MacroTransfers& transfers, OpenMacros& open,
                  MacroUndo& undo, QWidget* window);

  void createMacro(Pane pane);
  void copyMacro(Pane pane);  // from the other pane into this one
  void renameMacro(Pane pane);
  void deleteMacro(Pane pane);

 signals:
  void said(const tessaly::Message& message);

 private:
  // Where an operation puts a macro.
  [[nodiscard]] MacroTarget placeIn(Pane pane, int number, const std::string& name) const;
  [[nodiscard]] PaneState& state(Pane pane) const { return *panes_[index(pane)].state; }
  [[nodiscard]] Browser& browser(Pane pane) const { return *panes_[index(pane)].browser; }
  [[nodiscard]] bool onPanel(Pane pane) const { return connection_.source(pane) == PaneSource::kPanel; }
  // What was done, with a word when the old content could not be kept.
  void tellDone(const MacroTarget& target, const QString& text, bool kept, Grade grade = Grade::kDone);
  void tellNotDone(const MacroTarget& target, const QString& text);
  // One of the two; what may not survive a power cut is done.
  void tellOnDisk(const MacroTarget& target, const Outcome& outcome, const QString& done,
                  const QString& notDone);
  // Asks where what stands there cannot be kept.
  [[nodiscard]] bool sends(const MacroTarget& target, const Sendable& macro, MacroChange how);
  // What was not done leaves what the pane holds, as a save that is owed.
  void listAnew(Pane pane, const MacroTarget& changed, bool done);
  // After a change in the pane's folder on disk: its list anew, with the keyboard at a number.
  void finishOnDisk(Pane pane, const MacroTarget& changed, bool done);
  // Changes a file of the disk after what it holds is kept.
  Outcome change(const MacroTarget& target, MacroChange how,
                 const std::function<Outcome(const SiteAccess& site)>& work);
  // A disk that hangs is given up before it is written.
  [[nodiscard]] bool reads(const MacroTarget& target);
  void createOnDisk(Pane pane, const MacroTarget& target);
  void createOnPanel(Pane pane, const MacroTarget& target);
  void copyFromDisk(Pane to, const MacroRow& source, const MacroTarget& target);
  void copyFromPanel(Pane to, const MacroRow& source, const MacroTarget& target);
  // What is to be sent, or why there is nothing; of what is there, what else a person is to know.
  struct Source {
    std::optional<std::string> bytes = {};
    QString reason = {};
    std::optional<Pane> shownIn = {};
  };
  void copyToPanel(Pane to, const MacroRow& source, const MacroTarget& target);
  [[nodiscard]] Source readStored(Pane from, const MacroRow& source);
  [[nodiscard]] Source fetch(Pane from, const MacroRow& source, const MacroTarget& target);
  // Where the source's macro is on disk; a key file is converted first. Empty, with a reason, when there is
  // none.
  [[nodiscard]] std::string sourceFile(Pane from, const MacroRow& source, QString& reason);
  void tellCopied(Pane from, const MacroRow& source, const MacroTarget& target, const QString& reason,
                  bool kept, Grade grade = Grade::kDone);
  void tellNotCopied(const MacroRow& source, const MacroTarget& target, const QString& reason);
  void renameOnDisk(Pane pane, const MacroTarget& target, const std::string& name);
  void renameOnPanel(const MacroTarget& target, const std::string& name);
  void deleteOnDisk(Pane pane, const MacroTarget& target);
  void deleteOnPanel(const MacroTarget& target);
  [[nodiscard]] MacroTarget selectedToAsk(Pane pane) const;

  PaneAccesses panes_;
  SiteAccess site_;
  MacroHistory& history_;
  const PanelConnection& connection_;
  MacroTransfers& transfers_;
  OpenMacros& open_;
  MacroUndo& undo_;
  Overwriting overwriting_;
  QWidget* window_;
};

}  // namespace tessaly
