#pragma once

#include <QObject>
#include <QWidget>

#include "app/PaneState.h"
#include "editors/EditorContext.h"
#include "widgets/Message.h"

namespace tessaly {

class ClassicEditorDialog;

// Opens the command editors on a pane's macro and applies what they return to its working copy. A missing
// selection ends an operation silently. GUI thread.
class CommandEditing : public QObject {
  Q_OBJECT

 public:
  CommandEditing(const PaneAccesses& panes, EditorContext context, QWidget* window);

  // Until then the dialogs offer no search.
  void setWhereUsed(decltype(EditorContext::addWhereUsed) add) { context_.addWhereUsed = std::move(add); }
  void newCorvane(Pane pane);
  void newMultiple(Pane pane);
  void newClassic(Pane pane);
  void modify(Pane pane);

 signals:
  void said(const tessaly::Message& message);

 private:
  [[nodiscard]] PaneState& state(Pane pane) const { return *panes_[index(pane)].state; }
  [[nodiscard]] Browser& browser(Pane pane) const { return *panes_[index(pane)].browser; }
  [[nodiscard]] int position(Pane pane) const { return state(pane).view.commands().selectedRow(); }
  [[nodiscard]] int workplace(Pane pane) const;
  // The editors' context for the macro that is open in the pane now, which `take` puts what was built into,
  // or returns why not; `row` is the command that is to be replaced, -1 for none.
  [[nodiscard]] EditorContext contextFor(Pane pane, std::function<QString()> take, int row = -1) const;
  void modifyPanelStyle(Pane pane, int row);
  void modifyClassic(Pane pane, int row);
  // What each of these returns is why nothing was changed, which was told, too; empty when it was.
  // `inPlace`: the command takes the place of that at `row`.
  [[nodiscard]] QString takeClassic(Pane pane, int row, const ClassicEditorDialog& dialog, bool inPlace);
  [[nodiscard]] QString replace(Pane pane, int row, const CommandDraft& draft, int workplace);
  [[nodiscard]] QString tell(Pane pane, const Outcome& done, const QString& what);
  // As one block and one step, which is brought into sight and, if wanted, selected; each run's place is that
  // with the ones before it in.
  [[nodiscard]] QString insert(Pane pane, const std::vector<InsertCommands>& runs, bool selects,
                               const QString& what);

  PaneAccesses panes_;
  EditorContext context_;
  QWidget* window_;
};

}  // namespace tessaly
