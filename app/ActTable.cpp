#include <algorithm>
#include <string_view>

#include <QShortcut>

#include "app/ActRows.h"
#include "app/HistoryOperations.h"
#include "app/LooseMacros.h"
#include "app/MacroUndo.h"
#include "app/ReviewDesk.h"
#include "app/StatusStrip.h"
#include "app/StepOperations.h"

namespace tessaly {

namespace {

using Hands = const ActHands&;
using Now = const ActSituation&;
using enum ActNeed;

QString named(const char* text, const QString& name) { return actText(text).arg(textInMenu(name)); }

QString undoneStep(Now now) {
  if (now.steps == nullptr || !now.steps->canUndo()) return {};
  const auto& step = now.steps->step(now.steps->position() - 1);
  return named(QT_TRANSLATE_NOOP("Acts", "&Undo \"%1\""), nameInStrip(step.name));
}

QString redoneStep(Now now) {
  if (now.steps == nullptr || !now.steps->canRedo()) return {};
  const auto& step = now.steps->step(now.steps->position());
  return named(QT_TRANSLATE_NOOP("Acts", "&Redo \"%1\""), nameInStrip(step.name));
}

QString undoneOperation(Now now) {
  return now.undone.isEmpty() ? QString() : named(QT_TRANSLATE_NOOP("Acts", "&Undo \"%1\""), now.undone);
}

QString panelSnapshot(Now now) {
  const bool panel = now.pane.source == PaneSource::kPanel;
  return panel ? actText(QT_TRANSLATE_NOOP("Acts", "Save &Panel As...")) : QString();
}

template <ReviewAct kAct>
void review(Hands hands, Pane pane) {
  hands.desk.run(kAct, pane);
}

// As by its key, in the list that had the keyboard last.
void findInList(Hands hands, Pane pane) {
  MacroPane& view = hands.view(pane);
  view.takeFocus();
  if (!view.focusWidget()) return;
  for (QShortcut* const key : view.focusWidget()->findChildren<QShortcut*>())
    if (key->key() == QKeySequence::Find) emit key->activated();
}

void goToAddress(Hands hands, Pane pane) {
  QLineEdit& address = hands.view(pane).address();
  address.setFocus(Qt::ShortcutFocusReason);
  address.selectAll();
}

QString leavePanel(Now now) {
  return now.pane.connected ? actText(QT_TRANSLATE_NOOP("Acts", "Disco&nnect")) : QString();
}

std::vector<Act> macroActs() {
  ActList list(ActMenu::kMacro);
  list.ofPane("createMacro", QT_TRANSLATE_NOOP("Acts", "&New..."), Qt::CTRL | Qt::Key_N,
              {kLoaded, kUnchanged, kWritable, kFolder}, QT_TRANSLATE_NOOP("Acts", "create"));
  list.ofWindow(
      "openFile", QT_TRANSLATE_NOOP("Acts", "&Open File..."), Qt::CTRL | Qt::Key_O, {kLoaded, kUnchanged},
      [](Hands hands, Pane pane) { hands.loose.choose(pane); },
      QT_TRANSLATE_NOOP("Acts", "load macro from anywhere"));
  list.ofWindow(
          "save", QT_TRANSLATE_NOOP("Acts", "&Save"), Qt::CTRL | Qt::Key_S, {kLoaded, kChanges},
          [](Hands hands, Pane pane) { emit hands.view(pane).savePressed(); },
          QT_TRANSLATE_NOOP("Acts", "save changes send to the panel"))
      .keysOf = ActKeys::kPane;
  list.ofWindow("saveAs", QT_TRANSLATE_NOOP("Acts", "Save &As..."), Qt::CTRL | Qt::SHIFT | Qt::Key_S,
                {kLoaded}, [](Hands hands, Pane pane) { hands.loose.saveAs(pane); });
  list.ofPane("discardChanges", QT_TRANSLATE_NOOP("Acts", "&Discard Changes"), Qt::ALT | Qt::Key_D,
              {kLoaded, kChanges}, QT_TRANSLATE_NOOP("Acts", "revert throw away"));
  list.beginPart();
  list.ofPane("copyMacro", QT_TRANSLATE_NOOP("Acts", "Cop&y from the Other Pane..."), Qt::ALT | Qt::Key_Y,
              {kLoaded, kUnchanged, kWritable, kFolder, kOtherMacro},
              QT_TRANSLATE_NOOP("Acts", "send to the panel transfer"));
  list.ofPane("renameMacro", QT_TRANSLATE_NOOP("Acts", "Rena&me..."), Qt::Key_F2,
              {kLoaded, kUnchanged, kWritable, kMacro});
  list.ofPane("deleteMacro", QT_TRANSLATE_NOOP("Acts", "De&lete..."), Qt::ALT | Qt::Key_T,
              {kLoaded, kUnchanged, kWritable, kMacro}, QT_TRANSLATE_NOOP("Acts", "remove"));
  list.beginPart();
  list.ofWindow(
          "undoMacro", QT_TRANSLATE_NOOP("Acts", "&Undo"), Qt::CTRL | Qt::ALT | Qt::Key_U, {kMacroUndo},
          [](Hands hands, Pane) { hands.undo.undo(); }, QT_TRANSLATE_NOOP("Acts", "take back whole macro"))
      .called = undoneOperation;
  list.ofWindow(
      "history", QT_TRANSLATE_NOOP("Acts", "&History..."), {}, {kLoaded},
      [](Hands hands, Pane) { hands.history.open(); },
      QT_TRANSLATE_NOOP("Acts", "get back earlier version overwritten deleted"));
  list.beginPart();
  list.ofWindow("rehearse", QT_TRANSLATE_NOOP("Acts", "R&ehearse..."), Qt::CTRL | Qt::SHIFT | Qt::Key_R,
                {kLoaded}, review<ReviewAct::kRehearse>,
                QT_TRANSLATE_NOOP("Acts", "try effect after this macro"));
  list.ofWindow("capture", QT_TRANSLATE_NOOP("Acts", "Ca&pture..."), Qt::SHIFT | Qt::Key_F5,
                {kLoaded, kCapture}, review<ReviewAct::kCapture>,
                QT_TRANSLATE_NOOP("Acts", "values of the panel preview"));
  list.beginPart();
  list.ofWindow("print", QT_TRANSLATE_NOOP("Acts", "Pr&int..."), QKeySequence::Print, {kLoaded},
                review<ReviewAct::kPrint>, QT_TRANSLATE_NOOP("Acts", "paper sheet"));
  list.ofWindow("export", QT_TRANSLATE_NOOP("Acts", "&Export..."), {}, {kLoaded}, review<ReviewAct::kExport>,
                QT_TRANSLATE_NOOP("Acts", "PDF HTML CSV sheet file"));
  return list.take();
}

std::vector<Act> editActs() {
  constexpr ActNeeds kBuild = {kLoaded, kWritable, kMacro, kKeepable};
  constexpr ActNeeds kMove = {kLoaded, kWritable, kMacro, kKeepable, kCommands};
  ActList list(ActMenu::kEdit);
  list.ofWindow(
          "undo", QT_TRANSLATE_NOOP("Acts", "&Undo"), Qt::CTRL | Qt::Key_Z, {kLoaded, kUndo},
          [](Hands hands, Pane pane) { hands.steps.undo(pane); }, QT_TRANSLATE_NOOP("Acts", "take back step"))
      .called = undoneStep;
  list.ofWindow(
          "redo", QT_TRANSLATE_NOOP("Acts", "&Redo"), Qt::CTRL | Qt::SHIFT | Qt::Key_Z, {kLoaded, kRedo},
          [](Hands hands, Pane pane) { hands.steps.redo(pane); }, QT_TRANSLATE_NOOP("Acts", "again step"))
      .called = redoneStep;
  list.ofWindow(
      "steps", QT_TRANSLATE_NOOP("Acts", "&Steps..."), Qt::CTRL | Qt::ALT | Qt::Key_Z, {kLoaded, kSteps},
      [](Hands hands, Pane pane) { hands.steps.choose(pane); }, QT_TRANSLATE_NOOP("Acts", "undo list"));
  list.beginPart();
  list.ofPane("cut", QT_TRANSLATE_NOOP("Acts", "C&ut"), Qt::CTRL | Qt::Key_X, kMove);
  list.ofPane("copy", QT_TRANSLATE_NOOP("Acts", "&Copy"), Qt::CTRL | Qt::Key_C, {kLoaded, kLines, kCommands});
  list.ofPane("paste", QT_TRANSLATE_NOOP("Acts", "&Paste"), Qt::CTRL | Qt::Key_V, kBuild,
              QT_TRANSLATE_NOOP("Acts", "insert clipboard"));
  list.ofPane("duplicate", QT_TRANSLATE_NOOP("Acts", "&Duplicate"), Qt::CTRL | Qt::Key_D, kMove);
  list.beginPart();
  list.ofPane("moveUp", QT_TRANSLATE_NOOP("Acts", "Move &Up"), Qt::ALT | Qt::Key_Up, kMove,
              QT_TRANSLATE_NOOP("Acts", "order"));
  list.ofPane("moveDown", QT_TRANSLATE_NOOP("Acts", "Move Do&wn"), Qt::ALT | Qt::Key_Down, kMove,
              QT_TRANSLATE_NOOP("Acts", "order"));
  list.beginPart();
  list.ofPane("selectAll", QT_TRANSLATE_NOOP("Acts", "Select &All"), Qt::CTRL | Qt::Key_A, {kLoaded, kLines});
  list.ofWindow("find", QT_TRANSLATE_NOOP("Acts", "&Find in the List..."), QKeySequence::Find, {kLoaded},
                findInList)
      .keysOf = ActKeys::kPane;
  list.beginPart();
  list.ofPane("newCorvane", QT_TRANSLATE_NOOP("Acts", "&New Command..."), Qt::ALT | Qt::Key_O, kBuild,
              QT_TRANSLATE_NOOP("Acts", "insert add build panel style function"));
  list.ofPane("newMultiple", QT_TRANSLATE_NOOP("Acts", "New &Multiple Commands..."), Qt::ALT | Qt::Key_U,
              kBuild, QT_TRANSLATE_NOOP("Acts", "insert add build many record"));
  list.ofPane("newClassic", QT_TRANSLATE_NOOP("Acts", "New C&lassic Command..."), Qt::ALT | Qt::Key_L, kBuild,
              QT_TRANSLATE_NOOP("Acts", "insert add build"));
  list.ofPane("modifyCommand", QT_TRANSLATE_NOOP("Acts", "Modif&y Command..."), Qt::ALT | Qt::Key_M,
              {kLoaded, kWritable, kMacro, kOneCommand, kKeepable},
              QT_TRANSLATE_NOOP("Acts", "change edit value"));
  list.ofPane("deleteCommand", QT_TRANSLATE_NOOP("Acts", "D&elete Commands"), Qt::ALT | Qt::Key_E,
              {kLoaded, kWritable, kMacro, kCommands}, QT_TRANSLATE_NOOP("Acts", "remove"));
  return list.take();
}

std::vector<Act> compareActs() {
  ActList list(ActMenu::kCompare);
  list.ofWindow("whatChanged", QT_TRANSLATE_NOOP("Acts", "&What Have I Changed?"),
                Qt::CTRL | Qt::SHIFT | Qt::Key_D, {kLoaded}, review<ReviewAct::kWhatChanged>,
                QT_TRANSLATE_NOOP("Acts", "difference target saved"));
  list.ofWindow("bothPanes", QT_TRANSLATE_NOOP("Acts", "&Both Panes"), Qt::CTRL | Qt::SHIFT | Qt::Key_B,
                {kLoaded}, review<ReviewAct::kBothPanes>, QT_TRANSLATE_NOOP("Acts", "difference macros"));
  list.ofWindow(
      "withVersion", QT_TRANSLATE_NOOP("Acts", "With a &Version of the History..."), {}, {kLoaded},
      [](Hands hands, Pane) { hands.history.open(); }, QT_TRANSLATE_NOOP("Acts", "difference earlier"));
  list.ofWindow("workplacesBeside", QT_TRANSLATE_NOOP("Acts", "Work&places..."),
                Qt::CTRL | Qt::SHIFT | Qt::Key_W, {kLoaded}, review<ReviewAct::kWorkplaces>,
                QT_TRANSLATE_NOOP("Acts", "difference folders copy many"));
  return list.take();
}

std::vector<Act> reviewActs() {
  ActList list(ActMenu::kReview);
  list.ofWindow("check", QT_TRANSLATE_NOOP("Acts", "&Check..."), Qt::Key_F7, {kLoaded},
                review<ReviewAct::kCheck>, QT_TRANSLATE_NOOP("Acts", "errors warnings what is wrong"));
  list.ofWindow("search", QT_TRANSLATE_NOOP("Acts", "&Search..."), Qt::CTRL | Qt::SHIFT | Qt::Key_F,
                {kLoaded}, review<ReviewAct::kSearch>, QT_TRANSLATE_NOOP("Acts", "find in all macros"));
  list.ofWindow("whereUsed", QT_TRANSLATE_NOOP("Acts", "&Where Used..."), Qt::CTRL | Qt::SHIFT | Qt::Key_U,
                {kLoaded}, review<ReviewAct::kWhereUsed>, QT_TRANSLATE_NOOP("Acts", "find function source"));
  list.ofWindow("replace", QT_TRANSLATE_NOOP("Acts", "&Replace in Macros..."),
                Qt::CTRL | Qt::SHIFT | Qt::Key_H, {kLoaded}, review<ReviewAct::kReplace>,
                QT_TRANSLATE_NOOP("Acts", "change many retarget all macros"));
  return list.take();
}

std::vector<Act> panelActs() {
  ActList list(ActMenu::kPanel);
  list.ofPane("panel", QT_TRANSLATE_NOOP("Acts", "Show the &Panel"), {}, {kLoaded, kUnchanged},
              QT_TRANSLATE_NOOP("Acts", "source"));
  list.ofPane("harddisk", QT_TRANSLATE_NOOP("Acts", "Show the &Disk"), {}, {kLoaded, kUnchanged},
              QT_TRANSLATE_NOOP("Acts", "source harddisk path"));
  list.ofWindow("address", QT_TRANSLATE_NOOP("Acts", "&Address or Path"), {}, {kLoaded, kUnchanged},
                goToAddress, QT_TRANSLATE_NOOP("Acts", "IP type go"));
  list.beginPart();
  list.ofPane("connectButton", QT_TRANSLATE_NOOP("Acts", "Co&nnect"), Qt::ALT | Qt::Key_K, {kLoaded, kPanel},
              QT_TRANSLATE_NOOP("Acts", "line address leave"))
      .called = leavePanel;
  list.ofPane("updateData", QT_TRANSLATE_NOOP("Acts", "&Update Values"), Qt::Key_F5,
              {kLoaded, kWritable, kMacro}, QT_TRANSLATE_NOOP("Acts", "fetch current data"));
  list.ofWindow("checkPanel", QT_TRANSLATE_NOOP("Acts", "Chec&k What It Holds..."), {}, {kLoaded, kConnected},
                review<ReviewAct::kCheckPanel>, QT_TRANSLATE_NOOP("Acts", "errors warnings workplace"));
  list.beginPart();
  list.ofWindow("saveSnapshot", QT_TRANSLATE_NOOP("Acts", "Save &Folder As..."), {}, {kLoaded, kNoSnapshot},
                review<ReviewAct::kSaveSnapshot>, QT_TRANSLATE_NOOP("Acts", "snapshot backup panel"))
      .called = panelSnapshot;
  list.ofWindow("openSnapshot", QT_TRANSLATE_NOOP("Acts", "&Open Snapshot..."), {}, {kLoaded},
                review<ReviewAct::kOpenSnapshot>, QT_TRANSLATE_NOOP("Acts", "backup show"));
  list.ofWindow("restoreSnapshot", QT_TRANSLATE_NOOP("Acts", "&Restore Snapshot..."), {}, {kSnapshot},
                review<ReviewAct::kRestoreSnapshot>, QT_TRANSLATE_NOOP("Acts", "backup put back panel"));
  list.ofWindow("closeSnapshot", QT_TRANSLATE_NOOP("Acts", "&Close Snapshot"), {}, {kSnapshot},
                review<ReviewAct::kCloseSnapshot>);
  return list.take();
}

}  // namespace

const std::vector<Act>& acts() {
  static const std::vector<Act> all = [] {
    std::vector<Act> rows;
    for (const auto part :
         {macroActs, editActs, compareActs, reviewActs, panelActs, viewActs, siteActs, helpActs})
      for (Act& act : part()) rows.push_back(std::move(act));
    return rows;
  }();
  return all;
}

const Act& actNamed(const char* name) {
  return *std::find_if(acts().begin(), acts().end(),
                       [&](const Act& act) { return std::string_view(act.name) == name; });
}

}  // namespace tessaly
