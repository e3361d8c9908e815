#pragma once

#include <initializer_list>
#include <utility>

#include <QAbstractButton>

namespace tessaly {

// What stands beside captions; in the order of resources/icons/buttons.svg. All buttons of a kind have one:
// what a pane does with macros and with commands, what moves, what reads again. Those that end a dialog have
// none.
enum class ButtonIcon {
  kNewMacro,
  kCopy,
  kRename,
  kDelete,
  kNewCommand,
  kNewCommands,
  kModify,
  kReadAgain,
  kSave,
  kDiscard,
  kLeft,
  kRight,
  kUp,
  kDown,
  kContents,
  kKeys
};

using ButtonIcons = std::initializer_list<std::pair<QAbstractButton*, ButtonIcon>>;
void setIcons(ButtonIcons icons);
// All of them or none: where the area, whose layout has the most of the buttons, is too narrow, the captions
// alone stay whole.
void setIconsWhereTheyFit(QWidget& area, ButtonIcons icons);

}  // namespace tessaly
