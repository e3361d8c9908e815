#pragma once

#include <QObject>
#include <QWidget>

#include "app/PaneState.h"
#include "app/Preferences.h"

namespace tessaly {

// How the program's windows and dialogs were left: their places and sizes, the borders between their parts,
// the widths of their columns. Each comes back as its kind was closed last, also after the next start. The
// main window keeps its own. Works while it lives; GUI thread.
class WindowPlaces : public QObject {
 public:
  explicit WindowPlaces(Preferences& preferences);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void restore(QWidget& window) const;
  void keep(QWidget& window);

  Preferences& preferences_;
};

// What a pane shows of the disk, by what is chosen in its lists, or that it shows the panel.
void keepPane(Preferences& preferences, MacroPane& pane, PaneSource source);
// Chooses it again, as far as it is there; a panel is not connected.
void restorePane(const Preferences& preferences, MacroPane& pane);

}  // namespace tessaly
