#pragma once

#include <QObject>
#include <QWidget>

#include "app/PaneState.h"
#include "widgets/Message.h"

namespace tessaly {

class ValueUpdate;

// Goes back and forth over the steps of a pane's macro, and tells in one line what was undone or redone, or
// why not. GUI thread.
class StepOperations : public QObject {
  Q_OBJECT

 public:
  StepOperations(const PaneAccesses& panes, const ValueUpdate& update, QWidget* window);

  // Each ends silently when there is no such step.
  void undo(Pane pane);
  void redo(Pane pane);
  // Lets the user choose one of the steps.
  void choose(Pane pane);

 signals:
  void said(const tessaly::Message& message);

 private:
  [[nodiscard]] WorkingCopy& copy(Pane pane) const { return panes_[index(pane)].state->copy; }
  // `done` tells what was done then.
  void go(Pane pane, std::size_t position, const QString& done);
  [[nodiscard]] QString obstacle(Pane pane) const;

  PaneAccesses panes_;
  const ValueUpdate& update_;
  QWidget* window_;
};

}  // namespace tessaly
