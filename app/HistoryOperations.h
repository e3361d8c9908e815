#pragma once

#include <array>

#include <QObject>
#include <QWidget>

#include "app/HistoryDialog.h"
#include "app/OpenMacros.h"

namespace tessaly {

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

 private:
  [[nodiscard]] PaneState& state(Pane pane) const { return *panes_[index(pane)].state; }
  [[nodiscard]] Browser& browser(Pane pane) const { return *panes_[index(pane)].browser; }
  [[nodiscard]] std::vector<std::string> preview(const KeptMacro& macro) const;
  void putBack(HistoryDialog& dialog, const KeptMacro& macro);
  void putBackOnDisk(HistoryDialog& dialog, const KeptMacro& macro);
  void putBackOnPanel(HistoryDialog& dialog, const KeptMacro& macro);
  void saveAs(HistoryDialog& dialog, const KeptMacro& macro);
  void saveInPane(HistoryDialog& dialog, const KeptMacro& macro, Pane pane);
  void saveInFile(HistoryDialog& dialog, const KeptMacro& macro);
  void write(HistoryDialog& dialog, const KeptMacro& macro, const std::string& path);
  void refresh(const std::string& path);
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
