#pragma once

#include <QAction>
#include <QList>
#include <QObject>
#include <QWidget>

#include "app/PaneControls.h"

namespace tessaly {

// What can be done to the commands of a pane beside its buttons.
enum class CommandAct { kCut, kCopy, kPaste, kDuplicate, kMoveUp, kMoveDown, kSelectAll };

// Their actions, for menus. The keys act while the keyboard is in the pane, but for a field for text. GUI
// thread.
class CommandActions : public QObject {
  Q_OBJECT

 public:
  explicit CommandActions(QWidget& pane);

  void show(const PaneControls& controls);
  // In the order of a menu, with its lines between them.
  [[nodiscard]] const QList<QAction*>& all() const { return all_; }

 signals:
  void chosen(tessaly::CommandAct act);

 protected:
  bool eventFilter(QObject* pane, QEvent* event) override;

 private:
  QList<QAction*> all_;
};

}  // namespace tessaly
