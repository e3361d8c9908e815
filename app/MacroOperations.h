#pragma once

#include <array>
#include <string>

#include <QObject>
#include <QWidget>

#include "app/Browser.h"
#include "app/PaneState.h"
#include "app/PanelTransfer.h"
#include "model/MacroHistory.h"

namespace tessaly {

// One pane as the operations see it.
struct PaneAccess {
  PaneState* state;
  Browser* browser;
};

// What the macro buttons of the panes do to macro files. A missing selection ends an operation silently; what
// was done, or why not, is told in one line by `said`. What a macro held before goes to the history first.
// GUI thread.
class MacroOperations : public QObject {
  Q_OBJECT

 public:
  MacroOperations(std::array<PaneAccess, kPanes.size()> panes, SiteAccess site, MacroHistory& history,
                  const PanelConnection& connection, PanelTransfer& panel, bool demo, QWidget* window);

  void openMacro(Pane pane);
  void createMacro(Pane pane);
  void copyMacro(Pane pane);  // from the other pane into this one
  void renameMacro(Pane pane);
  void deleteMacro(Pane pane);
  void deleteCommand(Pane pane);
  enum class Saved { kNothing, kFailed, kDone };
  // kNothing when there is nothing to save or nowhere to save it to; edit state then stays.
  Saved save(Pane pane);
  void discard(Pane pane);

 signals:
  void changed();
  void macroChosen();  // in either pane: a value update is no longer busy
  void said(const QString& text);

 private:
  [[nodiscard]] PaneState& state(Pane pane) const { return *panes_[index(pane)].state; }
  [[nodiscard]] Browser& browser(Pane pane) const { return *panes_[index(pane)].browser; }
  [[nodiscard]] bool onPanel(Pane pane) const { return connection_.source(pane) == PaneSource::kPanel; }
  [[nodiscard]] MacroTarget selectedTarget(Pane pane) const;
  [[nodiscard]] bool transfer(const QString& label, const PanelTransfer::Operation& operation);
  [[nodiscard]] QString reason() const;  // of a failed transfer, for the strip
  [[nodiscard]] bool download(const std::string& address, int workplace, const std::string& number,
                              const std::string& file);
  [[nodiscard]] bool upload(const std::string& address, int workplace, const std::string& number,
                            const std::string& file, MacroChange change);
  // What was done, with a word when the old content could not be kept.
  void tellDone(const QString& text);
  bool keepUnsaved(const WorkingCopy& copy);  // which has a target
  void startOpening(Pane pane);
  [[nodiscard]] bool openTarget(Pane pane,
                                const MacroTarget& target);  // false: not what the target holds is shown
  void showKeyFile(Pane pane, const std::string& numberText);
  void rebuild(Pane pane, int reveal = -1);
  void copyFromDisk(Pane to, const MacroRow& source, int number);
  void copyFromPanel(Pane to, const MacroRow& source, int number);
  void sayCopied(const MacroRow& source, int number, bool done, bool transferred);
  [[nodiscard]] std::string sourceFile(Pane from, const MacroRow& source);
  void clearOther(Pane pane, const std::string& file);
  void deleteOnPanel(const MacroTarget& target);
  void createOnPanel(Pane pane, int number, const std::string& name);

  std::array<PaneAccess, kPanes.size()> panes_;
  SiteAccess site_;
  MacroHistory& history_;
  const PanelConnection& connection_;
  PanelTransfer& panel_;
  QWidget* window_;
  bool demo_;
  TransferOutcome outcome_;  // of the last transfer
};

}  // namespace tessaly
