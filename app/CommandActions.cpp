#include "app/CommandActions.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>

namespace tessaly {

namespace {

struct ActionEntry {
  CommandAct act;
  const char* text;
  QKeySequence keys;
  bool PaneControls::*enabled;
  bool repeats = false;  // while the key is held down
  bool begins = false;   // a part of the menu
};

const ActionEntry kEntries[] = {{CommandAct::kCut, QT_TRANSLATE_NOOP("CommandActions", "C&ut"),
                                 Qt::CTRL | Qt::Key_X, &PaneControls::moveCommands},
                                {CommandAct::kCopy, QT_TRANSLATE_NOOP("CommandActions", "&Copy"),
                                 Qt::CTRL | Qt::Key_C, &PaneControls::copyCommands},
                                {CommandAct::kPaste, QT_TRANSLATE_NOOP("CommandActions", "&Paste"),
                                 Qt::CTRL | Qt::Key_V, &PaneControls::pasteCommands},
                                {CommandAct::kDuplicate, QT_TRANSLATE_NOOP("CommandActions", "&Duplicate"),
                                 Qt::CTRL | Qt::Key_D, &PaneControls::moveCommands},
                                {CommandAct::kMoveUp, QT_TRANSLATE_NOOP("CommandActions", "Move &Up"),
                                 Qt::ALT | Qt::Key_Up, &PaneControls::moveCommands, true, true},
                                {CommandAct::kMoveDown, QT_TRANSLATE_NOOP("CommandActions", "Move Do&wn"),
                                 Qt::ALT | Qt::Key_Down, &PaneControls::moveCommands, true},
                                {CommandAct::kSelectAll, QT_TRANSLATE_NOOP("CommandActions", "Select &All"),
                                 Qt::CTRL | Qt::Key_A, &PaneControls::selectCommands, false, true}};

}  // namespace

CommandActions::CommandActions(QWidget& pane) : QObject(&pane) {
  pane.installEventFilter(this);
  for (const ActionEntry& entry : kEntries) {
    if (entry.begins) {
      all_.append(new QAction(this));
      all_.back()->setSeparator(true);
    }
    auto* action = new QAction(QCoreApplication::translate("CommandActions", entry.text), this);
    action->setShortcut(entry.keys);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    action->setAutoRepeat(entry.repeats);
    connect(action, &QAction::triggered, this, [this, act = entry.act] { emit chosen(act); });
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
