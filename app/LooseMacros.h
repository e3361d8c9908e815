#pragma once

#include <QObject>
#include <QWidget>

#include "app/OpenMacros.h"
#include "app/Overwriting.h"
#include "widgets/Message.h"

namespace tessaly {

// Opens a macro file from anywhere in a pane, where it has no place of its own, and saves the macro of a pane
// to a place that the user chooses, which is its own from then on. GUI thread.
class LooseMacros : public QObject {
  Q_OBJECT

 public:
  LooseMacros(const PaneAccesses& panes, SiteAccess site, MacroHistory& history, MacroTransfers& transfers,
              OpenMacros& open, QWidget* window);

  // Under a number of the folder that a pane shows, or, with a macro file of any name, without a place.
  void saveAs(Pane pane);
  // A file that the user names.
  void choose(Pane pane);
  // Not while the pane has unsaved changes.
  void open(Pane pane, const QString& file);

 signals:
  void said(const tessaly::Message& message);
  void changed();

 private:
  [[nodiscard]] PaneState& state(Pane pane) const { return *panes_[index(pane)].state; }
  [[nodiscard]] Browser& browser(Pane pane) const { return *panes_[index(pane)].browser; }
  // Whether the pane shows another macro than at that opening, after saying so.
  [[nodiscard]] bool isAnother(Pane pane, int opening);
  void saveInFolder(Pane pane, Pane folderOf);
  void saveInFile(Pane pane);
  [[nodiscard]] Outcome write(Pane pane, const std::string& path);

  PaneAccesses panes_;
  SiteAccess site_;
  MacroHistory& history_;
  MacroTransfers& transfers_;
  Overwriting overwriting_;
  OpenMacros& open_;
  QWidget* window_;
};

}  // namespace tessaly
