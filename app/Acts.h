#pragma once

#include <array>
#include <vector>

#include <QAction>
#include <QMenuBar>
#include <QObject>

#include "app/Act.h"

namespace tessaly {

// The menus of the window, made of the table of acts. An act that is not possible now is grey, and its tool
// tip says what is missing. GUI thread.
class Acts : public QObject {
 public:
  // Fills the bar, which owns the menus; what the hands hold outlives this object.
  Acts(const ActHands& hands, QMenuBar& bar);

  // The pane that was worked in last, and how things stand there.
  void show(Pane pane, const ActSituation& now);

 private:
  struct Entry {
    const Act* act;
    QAction* action;
    std::array<QObject*, kPanes.size()> controls;  // of the panes that are worked; null where the act runs
    QString text;                                  // where it is called nothing else
    QString shown;  // as it is called now; its letter in the menu may be another one
  };

  void add(const Act& act, QMenu& menu);
  void run(const Entry& entry);
  void showChecked();
  std::size_t showTexts(std::size_t first, const ActSituation& now);
  void showEntry(const Entry& entry, const ActSituation& now);

  ActHands hands_;
  Pane pane_ = Pane::kA;
  std::vector<Entry> entries_;
};

// What is missing for an action of these menus; empty when nothing is.
[[nodiscard]] QString obstacleOf(const QAction& action);

}  // namespace tessaly
