#pragma once

#include <functional>
#include <memory>

#include <QDialog>

#include "app/AboutDialog.h"
#include "app/ActFinder.h"
#include "app/CopyMacroDialog.h"
#include "app/CreateMacroDialog.h"
#include "app/FirstStartDialog.h"
#include "app/HistoryDialog.h"
#include "app/MessageLog.h"
#include "app/MessagesDialog.h"
#include "app/RecoveryDialog.h"
#include "app/RenameMacroDialog.h"
#include "app/StepsDialog.h"
#include "editors/ClassicEditorDialog.h"
#include "editors/CreateCommandDialog.h"
#include "editors/EnterTextDialog.h"
#include "editors/EnterTimecodeDialog.h"
#include "editors/EnterValueDialog.h"
#include "editors/LoadClipDialog.h"
#include "editors/ModifyCommandDialog.h"
#include "editors/MultipleCommandsDialog.h"
#include "editors/SelectInputDialog.h"
#include "tests/app/WindowFixture.h"
#include "windows/CheckRulesDialog.h"
#include "windows/CheckWindow.h"
#include "windows/CompareWindow.h"
#include "windows/RehearseWindow.h"
#include "windows/ReplaceWindow.h"
#include "windows/SearchWindow.h"
#include "windows/SnapshotRestoreDialog.h"

namespace tessaly {

// The program's dialogs over a main window whose pane A has unsaved changes.
class EveryDialog {
 public:
  EveryDialog() : lists_(fixture.site.root) {
    const auto& a = WindowFixture::ids(Pane::kA);
    fixture.driver->choose(a.applications, "Evening News");
    fixture.driver->choose(a.macros, "001");
    fixture.driver->clickRow(a.commands, 0);
    fixture.driver->press(a.deleteCommand);
    command_.fid = "QMF2.ME1.KEY1.CLIP.SET";
    command_.workplace = "1";
    command_.parameters.push_back({"VALUE", "0.48"});
    names_[7] = "Clock and logo on";
    static_cast<void>(restore_.add(2, 2));
    row_.add({"delete 3 commands", {}, {}, {}, {}});
    const QDateTime night(QDate(2026, 11, 25), QTime(23, 30));
    for (const Grade grade : {Grade::kDone, Grade::kNote, Grade::kWarning, Grade::kFailure})
      log_.add({grade, QStringLiteral("saved: 001 - Titles"), QStringLiteral("CP1, workplace 1")}, night);
  }

  // One after the other, made anew.
  void visit(const std::function<void(QDialog& dialog, const char* name)>& look) {
    const std::pair<const char*, std::function<Made()>> makers[] = {
        {"first start",
         [] {
           return std::make_unique<FirstStartDialog>("/home/operator/.local/share/tessaly",
                                                     "/usr/share/tessaly/site");
         }},
        {"first start without sample", [] { return std::make_unique<FirstStartDialog>("/nowhere", ""); }},
        {"act finder", [this] { return std::make_unique<ActFinder>(*fixture.window); }},
        {"about", [] { return std::make_unique<AboutDialog>(); }},
        {"history",
         [] { return std::make_unique<HistoryDialog>([](const KeptMacro&) { return HistoryPreview{}; }); }},
        {"recovery", [] { return recovery(); }},
        {"messages", [this] { return std::make_unique<MessagesDialog>(log_); }},
        {"steps", [this] { return std::make_unique<StepsDialog>(row_); }},
        {"copy",
         [this] {
           auto dialog = std::make_unique<CopyMacroDialog>("001", "Opening titles", 7, names_);
           dialog->setAbout([](int) { return "007 in Evening News, CP1, Workplace 1: 3 commands"; });
           return dialog;
         }},
        {"create", [this] { return std::make_unique<CreateMacroDialog>(8, names_); }},
        {"rename", [] { return std::make_unique<RenameMacroDialog>("Opening titles"); }},
        {"create command", [this] { return std::make_unique<CreateCommandDialog>(context_, 1, true); }},
        {"modify command", [this] { return std::make_unique<ModifyCommandDialog>(context_, command_); }},
        {"multiple commands", [this] { return std::make_unique<MultipleCommandsDialog>(context_, 1, 0); }},
        {"classic", [this] { return std::make_unique<ClassicEditorDialog>(context_, true, Destination()); }},
        {"value",
         [] { return std::make_unique<EnterValueDialog>(48, QStringLiteral("Range: 0% / 100%"), 0, 100); }},
        {"text", [] { return std::make_unique<EnterTextDialog>("Opener", QStringLiteral("Text"), 27); }},
        {"timecode",
         [] {
           return std::make_unique<EnterTimecodeDialog>(Timecode{10, 20, 30, 5});
         }},
        {"input",
         [this] { return std::make_unique<SelectInputDialog>(QStringLiteral("Select Input"), sources_); }},
        {"compare", [this] { return comparison(); }},
        {"rehearse",
         [this] {
           const RehearseWays ways{[] {
                                     return RehearseSource{"A", "none"};
                                   },
                                   [] { return QString(); }, &noText};
           return std::make_unique<RehearseWindow>(ways, offlineClient(),
                                                   LineContext{siteDictionary(), lists_}, LineOptions());
         }},
        {"check",
         [this] {
           return std::make_unique<CheckWindow>(
               CheckSurroundings{fixture.site.root, siteDictionary(), lists_, rate_, &noScopes, {}});
         }},
        {"check rules", [] { return std::make_unique<CheckRulesDialog>(RulesOff()); }},
        {"search",
         [this] {
           return std::make_unique<SearchWindow>(
               SearchSurroundings{fixture.site.root, {siteDictionary(), lists_}, &noScopes, {}});
         }},
        {"replace",
         [this] {
           const auto checkContext = [this] { return CheckContext{siteDictionary(), lists_}; };
           return std::make_unique<ReplaceWindow>(
               ReplaceSurroundings{fixture.site.root, checkContext, &noScopes, {}, {}, {}, {}, {}});
         }},
        {"restore",
         [this] {
           return std::make_unique<SnapshotRestoreDialog>(
               QStringLiteral("To the panel"), restore_, [](const QString&, const auto&) {},
               [](const auto&) { return true; }, &noText);
         }},
        {"clip", [] { return std::make_unique<LoadClipDialog>(Rows{"intro"}); }},
    };
    for (const auto& [name, make] : makers) look(*make(), name);
  }

  WindowFixture fixture{offlineClient()};

 private:
  using Made = std::unique_ptr<QDialog>;
  using Rows = std::vector<std::string>;

  static std::vector<ReviewScope> noScopes() { return {}; }
  static QString noText(const Failure& /*failure*/) { return {}; }
  static std::unique_ptr<QDialog> recovery() {
    auto dialog = std::make_unique<RecoveryDialog>();
    for (const PaneDescriptor& pane : kPaneDescriptors)
      dialog->offer(pane, {"001 - Titles", "a place", "3 of 4", "a warning"});
    return dialog;
  }

  DecodingLists lists_;
  std::vector<PanelSource> sources_ = inputSources(siteDictionary());
  int rate_ = 25;
  EditorContext context_{fixture.site.access(), siteDictionary(),     lists_, sources_,
                         offlineClient(),       [] { return false; }, rate_,  {}};
  // Of a macro with itself.
  Made comparison() {
    const auto side = [this](Side) {
      return CompareSide{QStringLiteral("A"),
                         QStringLiteral("a place"),
                         {},
                         {},
                         [held = fixture.site.read(workingCopyPath(Pane::kA))] { return Macro::read(held); }};
    };
    auto window = std::make_unique<CompareWindow>(
        CompareWays{side, {}, [] {}, {}}, LineContext{siteDictionary(), lists_}, LineOptions(), pool_);
    pool_.waitForDone();
    return window;
  }

  QThreadPool pool_;
  MacroCommand command_;
  EditHistory row_;
  MessageLog log_;
  MacroNameTable names_ = MacroNameTable(MacroNumber::kCount);
  SnapshotRestore restore_{std::make_shared<const Snapshot>(Snapshot{
                               {"10.0.0.5", {}}, {}, {2}, {{2, *MacroNumber::of(7), "Titles", "x"}}}),
                           fixture.site.root,
                           fixture.history,
                           [](int) { return nullptr; },
                           {}};
};

}  // namespace tessaly
