#pragma once

#include <array>

#include <QObject>
#include <QWidget>

#include "app/MacroOperations.h"
#include "editors/EditorContext.h"

namespace tessaly {

class ClassicEditorDialog;

// Opens the command editors on a pane's macro and writes what they return into its working copy. A missing
// selection ends an operation silently. GUI thread.
class CommandEditing : public QObject {
  Q_OBJECT

 public:
  CommandEditing(std::array<PaneAccess, kPanes.size()> panes, EditorContext context, QWidget* window);

  void newCorvane(Pane pane);
  void newMultiple(Pane pane);
  void newClassic(Pane pane);
  void modify(Pane pane);

 signals:
  void changed();
  void said(const QString& text);

 private:
  [[nodiscard]] PaneState& state(Pane pane) const { return *panes_[index(pane)].state; }
  [[nodiscard]] Browser& browser(Pane pane) const { return *panes_[index(pane)].browser; }
  [[nodiscard]] bool editable(Pane pane) const;
  [[nodiscard]] int position(Pane pane) const { return state(pane).view.commands().selectedRow(); }
  [[nodiscard]] int workplace(Pane pane) const;
  void modifyPanelStyle(Pane pane, int row);
  void modifyClassic(Pane pane, int row);
  // Writes what the editor returned; `inPlace` takes the place of the command at `row`.
  void takeClassic(Pane pane, int row, const ClassicEditorDialog& dialog, bool inPlace);
  void finish(Pane pane, bool done, const QString& what, int selected = -1);

  std::array<PaneAccess, kPanes.size()> panes_;
  EditorContext context_;
  QWidget* window_;
};

}  // namespace tessaly
