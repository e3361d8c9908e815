#pragma once

#include <QObject>

#include "app/CommandActions.h"
#include "app/OpenMacros.h"
#include "widgets/Message.h"

namespace tessaly {

// Deletes, moves and copies the selected commands of the panes, as their views ask for it. Each is one step
// of the working copy, or is refused before anything changes, with the reason in one line. What has come or
// moved is selected afterwards and in sight. What comes goes in front of the first selected command, or
// behind the last one when none is selected. GUI thread.
class CommandRuns : public QObject {
  Q_OBJECT

 public:
  explicit CommandRuns(const PaneAccesses& panes);

 signals:
  void said(const tessaly::Message& message);

 private:
  // Who gives away what is under the hand.
  struct Carried {
    Pane pane = Pane::kA;
    int revision = -1;
    std::vector<int> numbers;
  };

  [[nodiscard]] PaneState& state(Pane pane) const { return *panes_[index(pane)].state; }
  [[nodiscard]] CommandList& list(Pane pane) const { return state(pane).view.commands(); }
  [[nodiscard]] std::vector<int> selected(Pane pane) const;
  // What is copied from: the pane's macro, or its key file's commands as one.
  [[nodiscard]] Expected<Macro> source(Pane pane) const;
  [[nodiscard]] Expected<CommandFragment> fragment(Pane pane, std::vector<int> numbers) const;
  // Takes the commands away from the pane; false after telling why not with `refused`.
  bool take(Pane pane, const std::vector<int>& numbers, const std::string& step, const QString& refused);
  void act(Pane pane, CommandAct act);
  void remove(Pane pane);
  // What a drag out of the pane carries; null when nothing is selected.
  [[nodiscard]] std::unique_ptr<QMimeData> carry(Pane pane);
  // Whether it could be dropped on the pane.
  [[nodiscard]] bool takes(Pane pane, const QMimeData& data) const;
  // Whether commands can come and go: not in a key file, or a macro that cannot be saved whole.
  [[nodiscard]] bool changeable(Pane pane) const;
  void drop(Pane pane, const CommandDrop& drop);
  bool insert(Pane pane, const Expected<CommandFragment>& commands, int before, const std::string& step,
              const QString& refused);
  void copy(Pane pane);
  void cut(Pane pane);
  void paste(Pane pane);
  void duplicate(Pane pane);
  void moveBy(Pane pane, int step);
  void move(Pane pane, const std::vector<int>& numbers, int before);
  void dropFrom(Pane from, Pane pane, const CommandDrop& drop);
  void tell(Pane pane, const QString& done);
  void refuse(Pane pane, const QString& refused, const QString& reason);
  [[nodiscard]] QString reasonOf(Pane pane, const Failure& failure) const;

  PaneAccesses panes_;
  Carried carried_;
};

}  // namespace tessaly
