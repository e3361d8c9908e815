#pragma once

#include <array>

#include <QObject>
#include <QStringList>
#include <QWidget>

#include "app/HistoryDialog.h"
#include "app/PaneState.h"

namespace tessaly {

class MacroHistory;
class PanelTransfer;

// Opens the history and puts macros back from it. What a macro held before that is kept, too. GUI thread.
class HistoryOperations : public QObject {
  Q_OBJECT

 public:
  HistoryOperations(const PaneAccesses& panes, SiteAccess site, MacroHistory& history,
                    const PanelConnection& connection, PanelTransfer& panel, const LineContext& lines,
                    QWidget* window);

  // Runs the dialog.
  void open();

 signals:
  void changed();
  void said(const QString& text);
  // The pane shows a macro that was put back, and has to open it anew.
  void reopened(tessaly::Pane pane);

 private:
  [[nodiscard]] PaneState& state(Pane pane) const { return *panes_[index(pane)].state; }
  [[nodiscard]] Browser& browser(Pane pane) const { return *panes_[index(pane)].browser; }
  [[nodiscard]] HistoryPreview preview(const KeptMacro& macro) const;
  [[nodiscard]] bool shows(Pane pane, const MacroPlace& place) const;
  // Asks unless nothing is lost by it; `loss` says what is overwritten.
  [[nodiscard]] bool confirmed(const KeptMacro& macro, QStringList losses) const;
  void putBack(HistoryDialog& dialog, const KeptMacro& macro);
  void putBackOnDisk(HistoryDialog& dialog, const KeptMacro& macro);
  void putBackOnPanel(HistoryDialog& dialog, const KeptMacro& macro);
  [[nodiscard]] TransferOutcome send(const KeptMacro& macro);
  void saveAs(HistoryDialog& dialog, const KeptMacro& macro);
  void saveInPane(HistoryDialog& dialog, const KeptMacro& macro, Pane pane);
  void saveInFile(HistoryDialog& dialog, const KeptMacro& macro);
  void write(HistoryDialog& dialog, const KeptMacro& macro, const std::string& path);
  // The panes that list or show what was written, except where unsaved changes hold one.
  void refresh(const MacroPlace& place);
  void tell(HistoryDialog& dialog, const QString& text);

  PaneAccesses panes_;
  SiteAccess site_;
  MacroHistory& history_;
  const PanelConnection& connection_;
  PanelTransfer& panel_;
  const LineContext& lines_;
  QWidget* window_;
};

}  // namespace tessaly
