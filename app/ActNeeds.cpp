#include "app/ActNeeds.h"

#include <QCoreApplication>

namespace tessaly {

namespace {

struct NeedRow {
  ActNeed need;
  bool (*met)(const ActSituation& now);
  const char* missing;
};

// In the order in which a person would see to them.
constexpr NeedRow kNeedRows[] = {
    {ActNeed::kLoaded, [](const ActSituation& now) { return now.pane.loaded; },
     QT_TRANSLATE_NOOP("Acts", "the functions are still being read")},
    {ActNeed::kPanel, [](const ActSituation& now) { return now.pane.source == PaneSource::kPanel; },
     QT_TRANSLATE_NOOP("Acts", "the pane shows the disk: let it show the panel first")},
    {ActNeed::kConnected, [](const ActSituation& now) { return now.pane.connected; },
     QT_TRANSLATE_NOOP("Acts", "the pane is not connected to a panel")},
    {ActNeed::kUnchanged, [](const ActSituation& now) { return !now.pane.edited; },
     QT_TRANSLATE_NOOP("Acts", "the pane has unsaved changes: save or discard them first")},
    {ActNeed::kNoSnapshot, [](const ActSituation& now) { return !now.pane.snapshot; },
     QT_TRANSLATE_NOOP("Acts", "the pane shows a snapshot: close it first")},
    {ActNeed::kWritable, [](const ActSituation& now) { return !now.pane.olderFamily && !now.pane.snapshot; },
     QT_TRANSLATE_NOOP("Acts", "what the pane shows can only be viewed or copied from")},
    {ActNeed::kFolder, [](const ActSituation& now) { return now.pane.folderChosen; },
     QT_TRANSLATE_NOOP("Acts", "no workplace is chosen")},
    {ActNeed::kOtherMacro, [](const ActSituation& now) { return now.pane.otherMacroSelected; },
     QT_TRANSLATE_NOOP("Acts", "no macro is chosen in the other pane")},
    {ActNeed::kMacro, [](const ActSituation& now) { return now.pane.macroSelected; },
     QT_TRANSLATE_NOOP("Acts", "no macro is chosen")},
    {ActNeed::kLines, [](const ActSituation& now) { return now.pane.commandCount > 0; },
     QT_TRANSLATE_NOOP("Acts", "no commands are shown")},
    {ActNeed::kCommands, [](const ActSituation& now) { return now.pane.commandsSelected > 0; },
     QT_TRANSLATE_NOOP("Acts", "no command is selected")},
    {ActNeed::kOneCommand, [](const ActSituation& now) { return now.pane.commandsSelected == 1; },
     QT_TRANSLATE_NOOP("Acts", "select one command, and no other")},
    {ActNeed::kKeepable, [](const ActSituation& now) { return now.pane.keepable; },
     QT_TRANSLATE_NOOP("Acts", "the macro cannot be saved without a loss")},
    {ActNeed::kChanges, [](const ActSituation& now) { return now.changes; },
     QT_TRANSLATE_NOOP("Acts", "there are no unsaved changes")},
    {ActNeed::kUndo, [](const ActSituation& now) { return now.steps != nullptr && now.steps->canUndo(); },
     QT_TRANSLATE_NOOP("Acts", "there is no step to undo")},
    {ActNeed::kRedo, [](const ActSituation& now) { return now.steps != nullptr && now.steps->canRedo(); },
     QT_TRANSLATE_NOOP("Acts", "there is no step to make again")},
    {ActNeed::kSteps, [](const ActSituation& now) { return now.steps != nullptr && now.steps->size() > 0; },
     QT_TRANSLATE_NOOP("Acts", "the macro has no steps")},
    {ActNeed::kMacroUndo, [](const ActSituation& now) { return !now.undone.isEmpty(); },
     QT_TRANSLATE_NOOP("Acts", "nothing was done to a whole macro since the start")},
    {ActNeed::kSnapshot, [](const ActSituation& now) { return now.pane.snapshot; },
     QT_TRANSLATE_NOOP("Acts", "the pane shows no snapshot")},
    {ActNeed::kCapture, [](const ActSituation& now) { return now.capture; },
     QT_TRANSLATE_NOOP("Acts", "it needs a macro, and a connected panel behind the pane")}};

}  // namespace

QString obstacleTo(ActNeeds needs, const ActSituation& now) {
  for (const NeedRow& row : kNeedRows)
    if (needs.has(row.need) && !row.met(now)) return QCoreApplication::translate("Acts", row.missing);
  return {};
}

}  // namespace tessaly
