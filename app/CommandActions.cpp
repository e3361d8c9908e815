#include "app/CommandActions.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>

#include "app/Act.h"

namespace tessaly {

namespace {

struct ActionEntry {
  CommandAct act;
  const char* name;  // in the table of acts
  bool PaneControls::*enabled;
  bool repeats = false;  // while the key is held down
};

constexpr ActionEntry kEntries[] = {{CommandAct::kCut, "cut", &PaneControls::moveCommands},
                                    {CommandAct::kCopy, "copy", &PaneControls::copyCommands},
                                    {CommandAct::kPaste, "paste", &PaneControls::pasteCommands},
                                    {CommandAct::kDuplicate, "duplicate", &PaneControls::moveCommands},
                                    {CommandAct::kMoveUp, "moveUp", &PaneControls::moveCommands, true},
                                    {CommandAct::kMoveDown, "moveDown", &PaneControls::moveCommands, true},
                                    {CommandAct::kSelectAll, "selectAll", &PaneControls::selectCommands}};

}  // namespace

CommandActions::CommandActions(QWidget& pane) : QObject(&pane) {
  pane.installEventFilter(this);
  for (const ActionEntry& entry : kEntries) {
    const Act& act = actNamed(entry.name);
    if (act.begins && !all_.isEmpty()) {
      all_.append(new QAction(this));
      all_.back()->setSeparator(true);
    }
    auto* action = new QAction(actText(act.text), this);
    action->setObjectName(QLatin1String(entry.name));
    action->setShortcut(act.keys);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    action->setAutoRepeat(entry.repeats);
    connect(action, &QAction::triggered, this, [this, does = entry.act] { emit chosen(does); });
    pane.addAction(action);
    all_.append(action);
  }
}

// What is typed into a field, such as that of a finder, must not change commands that nobody looks at.
bool CommandActions::eventFilter(QObject* pane, QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride &&
      qobject_cast<QLineEdit*>(QApplication::focusWidget()) != nullptr) {
    const QKeySequence keys(static_cast<QKeyEvent*>(event)->keyCombination());
    for (const QAction* action : all_)
      if (!keys.isEmpty() && action->shortcut() == keys) event->accept();
  }
  return QObject::eventFilter(pane, event);
}

void CommandActions::show(const PaneControls& controls) {
  const ActionEntry* entry = kEntries;
  for (QAction* action : all_)
    if (!action->isSeparator()) action->setEnabled(controls.*(entry++)->enabled);
}

}  // namespace tessaly
