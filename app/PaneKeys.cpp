#include "app/PaneKeys.h"

#include <QCoreApplication>
#include <QShortcut>

namespace tessaly {

namespace {

const QString kPaneKey = QStringLiteral("paneKey");

QShortcut* paneShortcut(QWidget& pane, const QKeySequence& keys) {
  auto* shortcut = new QShortcut(keys, &pane);
  shortcut->setObjectName(kPaneKey);
  shortcut->setAutoRepeat(false);
  return shortcut;
}

}  // namespace

void addPaneKeys(QWidget& pane, const std::vector<PaneKey>& table, const std::function<void()>& before) {
  for (const PaneKey& entry : table) {
    QStringList names;
    for (const QKeySequence& keys : entry.keys) {
      QObject::connect(paneShortcut(pane, keys), &QShortcut::activated, entry.button,
                       [button = entry.button, before, otherwise = entry.otherwise] {
                         if (!button->isVisible() || !button->isEnabled()) {
                           if (otherwise) otherwise();
                           return;
                         }
                         before();
                         button->click();
                       });
      names.append(keys.toString(QKeySequence::NativeText));
    }
    entry.button->setToolTip(
        QCoreApplication::translate("PaneKeys", "%1 (%2)").arg(entry.does, names.join(QStringLiteral(", "))));
  }
}

void addListKeys(QWidget& pane, const std::vector<QWidget*>& lists) {
  int key = Qt::Key_1;
  for (QWidget* list : lists)
    QObject::connect(paneShortcut(pane, QKeySequence(Qt::CTRL | static_cast<Qt::Key>(key++))),
                     &QShortcut::activated, list, [list] { list->setFocus(Qt::ShortcutFocusReason); });
}

void setPaneKeysLive(QWidget& pane, bool live) {
  for (QShortcut* shortcut : pane.findChildren<QShortcut*>(kPaneKey, Qt::FindDirectChildrenOnly))
    shortcut->setEnabled(live);
}

}  // namespace tessaly
