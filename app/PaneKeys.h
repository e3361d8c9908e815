#pragma once

#include <functional>
#include <vector>

#include <QAbstractButton>
#include <QKeySequence>
#include <QString>

namespace tessaly {

// A button of a pane, what it does and the keys that press it, the one to be told first.
struct PaneKey {
  QAbstractButton* button;
  QString does;
  std::vector<QKeySequence> keys;
  std::function<void()> otherwise = {};  // what the keys do while the button cannot be pressed
};

// The keys press a button, once however long they are held, wherever the keyboard is in the window; `before`
// is run first. Each button gets a tool tip that tells
// what it does and its keys.
void addPaneKeys(QWidget& pane, const std::vector<PaneKey>& table, const std::function<void()>& before);

// Ctrl+1 and following lead to the lists in their order.
void addListKeys(QWidget& pane, const std::vector<QWidget*>& lists);

// One key serves the same button of both panes: those of one pane are live at a time.
void setPaneKeysLive(QWidget& pane, bool live);

}  // namespace tessaly
