#pragma once

#include <memory>

#include <QMenu>
#include <QObject>

#include "app/PaneState.h"
#include "app/WindowContext.h"
#include "model/CommandLine.h"
#include "widgets/Message.h"

namespace tessaly {

class Captures;
class Checking;
class Comparisons;
class EventGate;
class HistoryOperations;
class LooseMacros;
class MacroTransfers;
class MacroUndo;
class OpenMacros;
class PanelTransfer;
class Rehearsals;
class Replacements;
class ReviewPlaces;
class Searching;
class Sheets;
class Snapshots;
class Workplaces;

// What it does for the window, for the pane that is worked in.
enum class ReviewAct {
  kRehearse,
  kCapture,
  kPrint,
  kExport,
  kWhatChanged,
  kBothPanes,
  kWorkplaces,
  kCheck,
  kCheckPanel,
  kSearch,
  kWhereUsed,
  kReplace,
  kSaveSnapshot,
  kOpenSnapshot,
  kRestoreSnapshot,
  kCloseSnapshot
};

// Everything that looks at macros from above, as one part of the window: comparison, workplaces beside each
// other, snapshots, check, search, replacement, rehearsal, capture and sheets. GUI thread.
class ReviewDesk : public QObject {
  Q_OBJECT

 public:
  struct Surroundings {
    const WindowContext& context;
    PaneAccesses panes;
    LineContext lines;
    const int& frameRate;  // frames a second
    PanelConnection& connection;
    PanelTransfer& transfer;
    MacroTransfers& transfers;
    EventGate& gate;
    OpenMacros& open;
    LooseMacros& loose;
    MacroUndo& undo;
    HistoryOperations& history;
  };

  // Observes what surrounds it.
  ReviewDesk(const Surroundings& surroundings, QWidget* window);
  ~ReviewDesk() override;

  // For the menu of a dialog that builds a command.
  void addWhereUsed(QMenu& menu, const MacroCommand& command, QDialog& dialog);
  void run(ReviewAct act, Pane pane);
  // The dictionary is there; before, nothing of it can be run.
  void begin();
  // The panes can be used: what an earlier program has not ended is ended.
  void endUnfinished();
  // The connection may have changed, or the frame rate.
  void look();
  // Gives up what is under way; false while that goes on.
  [[nodiscard]] bool end();

  // That has the keyboard, or had it last.
  void setActive(Pane pane);
  // The values of that pane can be captured.
  [[nodiscard]] bool mayCapture() const;
  // What was found of the command that is selected there, or how much of its macro.
  [[nodiscard]] QString findingText() const;

 signals:
  void said(const tessaly::Message& message);
  void changed();
  void findingsChanged();

 private:
  [[nodiscard]] PaneState& state(Pane pane) const { return *panes_[index(pane)].state; }
  void connectParts(const Surroundings& around);
  void openWhereUsed();

  PaneAccesses panes_;
  QWidget* window_;
  Pane active_ = Pane::kA;
  std::unique_ptr<ReviewPlaces> places_;
  std::unique_ptr<Snapshots> snapshots_;
  std::unique_ptr<Comparisons> comparisons_;
  std::unique_ptr<Captures> captures_;
  std::unique_ptr<Checking> checking_;
  std::unique_ptr<Searching> searching_;
  std::unique_ptr<Sheets> sheets_;
  std::unique_ptr<Replacements> replacements_;
  std::unique_ptr<Workplaces> workplaces_;
  std::unique_ptr<Rehearsals> rehearsals_;
};

}  // namespace tessaly
