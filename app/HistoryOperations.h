#pragma once

#include <vector>

#include <QObject>
#include <QStringList>
#include <QWidget>

#include "app/HistoryDialog.h"
#include "app/Overwriting.h"
#include "app/PaneState.h"
#include "widgets/Message.h"

namespace tessaly {

class MacroHistory;
class MacroTransfers;
class MacroUndo;
class OpenMacros;

// Opens the history and puts macros back from it. What a macro held before that is kept, too. GUI thread.
class HistoryOperations : public QObject {
  Q_OBJECT

 public:
  HistoryOperations(const PaneAccesses& panes, SiteAccess site, MacroHistory& history,
                    MacroTransfers& transfers, OpenMacros& open, MacroUndo& undo, const LineContext& lines,
                    QWidget* window);

  // Runs the dialog.
  void open();

 signals:
  void changed();
  void said(const tessaly::Message& message);
  // The dialog, which would be in front, is closed then.
  void compareWanted(Pane pane, const tessaly::KeptMacro& version);

 private:
  [[nodiscard]] Browser& browser(Pane pane) const { return *panes_[index(pane)].browser; }
  void list(HistoryDialog& dialog);
  [[nodiscard]] HistoryPreview preview(const KeptMacro& macro) const;
  // Asks unless nothing is lost by it; `loss` says what is overwritten.
  [[nodiscard]] bool confirmed(const KeptMacro& macro, QStringList losses) const;
  void putBack(HistoryDialog& dialog, const KeptMacro& macro);
  void putBackOnDisk(HistoryDialog& dialog, const KeptMacro& macro);
  void putBackOnPanel(HistoryDialog& dialog, const KeptMacro& macro);
  void saveAs(HistoryDialog& dialog, const KeptMacro& macro);
  void compare(HistoryDialog& dialog, const KeptMacro& macro);
  void saveInPane(HistoryDialog& dialog, const KeptMacro& macro, Pane pane);
  void saveInFile(HistoryDialog& dialog, const KeptMacro& macro);
  void write(HistoryDialog& dialog, const KeptMacro& macro, const std::string& path);
  void follow(const MacroPlace& place);
  // `kept`: what was there before.
  void tell(HistoryDialog& dialog, Message message, bool kept);

  PaneAccesses panes_;
  SiteAccess site_;
  MacroHistory& history_;
  MacroTransfers& transfers_;
  OpenMacros& open_;
  MacroUndo& undo_;
  Overwriting overwriting_;
  const LineContext& lines_;
  QWidget* window_;
};

}  // namespace tessaly
