// A large macro in the window: from the click until its lines are painted.
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <numeric>
#include <tinyxml.h>

#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QTableView>

#include "app/WorkingCopy.h"
#include "bench/Table.h"
#include "bench/window/Desk.h"
#include "bench/window/WindowSite.h"
#include "model/CommandLine.h"
#include "model/MacroFile.h"
#include "tests/editors/DialogDriver.h"
#include "tests/support/LoadCommands.h"
#include "windows/CompareWindow.h"

namespace tessaly::bench::macro_window_rows {
namespace {

constexpr double kFrameBound = 0.05;  // seconds that the GUI thread may work without painting
constexpr int kMiddle = kCommands / 2;
constexpr int kRun = 1000;  // commands that are moved or pasted at once

Desk& desk() {
  static auto* desk = new Desk(windowSite());
  return *desk;
}

const PaneDescriptor::ControlIds& ids() { return Desk::ids(Pane::kA); }

int commandsShown() { return desk().user().list(ids().commands).rows().rowCount(); }

void openLarge() {
  desk().act([] { desk().user().clickRow(ids().macros, 0); }, ids().commands,
             [] { return commandsShown() == kCommands; });
}

void chooseWorkplace(int row) {
  desk().act([row] { desk().user().clickRow(ids().workplaces, row); }, ids().macros, [] { return true; });
}

std::string hostPath(const char* folder) {
  return desk().root().resolve(std::string(folder) + "macro000.mac");
}

void bareLoad() {
  TiXmlDocument document;
  if (!document.LoadFile(hostPath(kLargeMacros).c_str())) std::abort();
  keep(&document);
}

void loadAndSave() {
  TiXmlDocument document;
  if (!document.LoadFile(hostPath(kLargeMacros).c_str())) std::abort();
  if (!document.SaveFile((scratchFolder() / "saved.mac").c_str())) std::abort();
}

// The large macro as it is on disk, with a command in its middle selected.
void showLarge() {
  const WindowDriver& user = desk().user();
  if (user.list(ids().workplaces).rows().rowCount() == 0)
    desk().act([&user] { user.choose(ids().applications, kApplication); }, ids().macros,
               [&user] { return user.list(ids().macros).rows().rowCount() == kMacros; });
  if (user.control<QAbstractButton>(ids().discardChanges).isVisible())
    desk().act([&user] { user.press(ids().discardChanges); }, ids().commands,
               [] { return commandsShown() == kCommands; });
  if (user.list(ids().workplaces).selectedRow() != 1) chooseWorkplace(1);
  if (commandsShown() != kCommands) openLarge();
  desk().act([&user] { user.clickRow(ids().commands, kMiddle); }, ids().commands, [] { return true; });
}

void deleteCommand() {
  desk().act([] { desk().user().press(ids().deleteCommand); }, ids().commands,
             [] { return commandsShown() == kCommands - 1; });
}

// The dialogs are filled in first; the time counts from their last button on.
void insertCommand() {
  desk().act(
      [] {
        desk().user().press(ids().newCorvane, [](QDialog& dialog) {
          const DialogDriver user(dialog);
          user.click("me");
          user.choose("subgroup1", "ME 1");
          user.type("search1", "KEY2");
          user.choose("results1", "KEY2");
          user.choose("found", "ME 1 Key 2 Clip Set");
          user.type("value", "48");
          timeFromHere();
          user.click("insertSelected");
        });
      },
      ids().commands, [] { return commandsShown() == kCommands + 1; });
}

void modifyCommand() {
  desk().act(
      [] {
        desk().user().press(ids().modifyCommand, [](QDialog& dialog) {
          const DialogDriver user(dialog);
          timeFromHere();
          user.click("modify");
        });
      },
      ids().commands, [] { return desk().user().control<QAbstractButton>(ids().saveChanges).isVisible(); });
}

// The macro with a command deleted, and another one selected.
void showDeleted() {
  showLarge();
  deleteCommand();
}

void deleteAnother() {
  desk().act([] { desk().user().press(ids().deleteCommand); }, ids().commands,
             [] { return commandsShown() == kCommands - 2; });
}

void undoDelete() {
  desk().act(
      [] {
        for (QAction* action : desk().window().findChildren<QAction*>())
          if (action->shortcut() == QKeySequence(Qt::CTRL | Qt::Key_Z)) action->trigger();
      },
      ids().commands, [] { return commandsShown() == kCommands; });
}

RowsView& commandList() { return desk().user().list(ids().commands); }

void press(Qt::Key key, Qt::KeyboardModifier modifier) {
  QApplication::setActiveWindow(&desk().window());
  commandList().setFocus();
  QTest::keyClick(&commandList(), key, modifier);
}

// The large macro with a thousand commands from its middle on selected.
void selectThousand() {
  showLarge();
  std::vector<int> rows(kRun);
  std::iota(rows.begin(), rows.end(), kMiddle);
  commandList().selectRows(rows);
}

void copyThousand() {
  selectThousand();
  press(Qt::Key_C, Qt::ControlModifier);
}

void moveCommands() {
  desk().act([] { press(Qt::Key_Up, Qt::AltModifier); }, ids().commands,
             [] { return commandList().selectedRow() == kMiddle - 1; });
}

void pasteCommands() {
  desk().act([] { press(Qt::Key_V, Qt::ControlModifier); }, ids().commands,
             [] { return commandsShown() == kCommands + kRun; });
}

CompareWindow* comparing() { return desk().window().findChild<CompareWindow*>(); }

// The large macro with its second half deleted, and no window beside it.
void showHalf() {
  delete comparing();
  showLarge();
  std::vector<int> rows(kCommands - kMiddle);
  std::iota(rows.begin(), rows.end(), kMiddle);
  commandList().selectRows(rows);
  desk().act([] { desk().user().press(ids().deleteCommand); }, ids().commands,
             [] { return commandsShown() == kMiddle; });
}

// Until the window beside the working copy has painted what the action brings.
void compareUntil(const std::function<void()>& action, const std::function<bool()>& done) {
  desk().act(
      action,
      []() -> QAbstractItemView* {
        return comparing() ? comparing()->findChild<QTableView*>(QStringLiteral("table")) : nullptr;
      },
      done);
}

void compareWithFile() {
  compareUntil([] { desk().window().findChild<QAction*>(QStringLiteral("whatChanged"))->trigger(); },
               [] { return comparing()->findChild<QTableView*>()->model()->rowCount() == kCommands; });
}

void showCompared() {
  showHalf();
  compareWithFile();
}

void takeAll() {
  compareUntil([] { comparing()->findChild<QPushButton*>(QStringLiteral("takeAllA"))->click(); },
               [] { return commandsShown() == kCommands; });
}

void toggleRaw() {
  desk().act([] { desk().user().control<QCheckBox>(ids().showRaw).click(); }, ids().commands,
             [] { return true; });
}

void buildLines() {
  static const MacroCommands commands = [] {
    MacroCommands loaded;
    if (!loadCommands(desk().access(), std::string(kLargeMacros) + "macro000.mac", loaded)) std::abort();
    return loaded;
  }();
  std::string buffer;
  for (const MacroCommand& command : commands)
    buffer += commandLine(command, {.raw = true}, {desk().dictionary(), desk().lists()});
  keep(buffer.data());
}

void listFolder() { chooseWorkplace(0); }

void readFiles() {
  for (const auto& entry : std::filesystem::directory_iterator(desk().root().resolve(kSmallMacros))) {
    std::ifstream file(entry.path(), std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    keep(bytes.data());
  }
}

// Less what the action has to read or write of a working copy in one piece.
Figure stretch(const char* name, std::function<void()> ready, std::function<void()> action,
               std::function<void()> required) {
  return {.name = name, .unit = kSeconds, .take = [=] {
            ready();
            desk().takeLongestStretch();
            action();
            const double longest = desk().takeLongestStretch();
            return Figures{std::max(0.0, longest - (required ? secondsOf(required) : 0)), kFrameBound};
          }};
}

constexpr double kInsertBound = 1;  // seconds for as many commands as a person selects at once

// Until `count` commands are in the working copy of a macro that has `present`, as a run of the creation of
// many commands puts them there.
double secondsOfInserting(std::size_t count, std::size_t present) {
  const std::string command =
      "<cmd fid=\"QMF1.ME1.KEY1.ON.SET\" workplace=\"1\" group=\"0\" module=\"0\" "
      "widget=\"0\"><param name=\"STATE\" value=\"1\"/></cmd>";
  std::string text = "<macro name=\"Many\"><data>";
  for (std::size_t i = 0; i < present; ++i) text += command;
  WorkingCopy copy(desk().access(), "c:\\bench\\many.mac", RecoveryFile(desk().root(), 'M'));
  std::filesystem::create_directories(desk().root().resolve("c:\\bench"));
  std::ofstream(desk().root().resolve(copy.path())) << text << "</data></macro>";
  auto loan = copy.lend();
  if (!loan || !loan->show({PaneSource::kHarddisk, "c:\\bench\\", {}, 0, "001", "Many"}, true)) std::abort();
  CommandDraft draft;
  draft.fid = "QMF1.ME1.KEY1.ON.SET";
  draft.parameters.emplace_back().name = "STATE";
  draft.parameters.back().value = "1";
  const auto begun = std::chrono::steady_clock::now();
  if (!copy.apply(InsertCommands{std::vector(count, draft), 1, 0, InsertMode::kAtStart})) std::abort();
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begun;
  if (copy.commands().size() != present + count) std::abort();
  copy.leaveEditState();
  return taken.count();
}

Figure insertion(const char* name, std::size_t count, std::size_t present) {
  return {.name = name, .unit = kSeconds, .take = [=] {
            return Figures{secondsOfInserting(count, present), kInsertBound};
          }};
}

const bool kRegistered[] = {
    addFigure(insertion("insert 924 commands into an empty macro", 924, 0)),
    addFigure(insertion("insert 122 commands into a macro of 5,000", 122, 5000)),
    addPair({.name = "open a macro of 10,000 commands until painted, beside LoadFile",
             .measured = openLarge,
             .limit = bareLoad,
             .goal = 2,
             .prepare = showLarge}),
    addPair({.name = "delete a command of it until painted, beside LoadFile + SaveFile",
             .measured = deleteCommand,
             .limit = loadAndSave,
             .goal = 1.5,
             .prepare = showLarge,
             .reset = showLarge}),
    addPair({.name = "insert a command into it until painted, beside LoadFile + SaveFile",
             .measured = insertCommand,
             .limit = loadAndSave,
             .goal = 1.5,
             .prepare = showLarge,
             .reset = showLarge}),
    addPair({.name = "modify a command of it until painted, beside LoadFile + SaveFile",
             .measured = modifyCommand,
             .limit = loadAndSave,
             .goal = 1.5,
             .prepare = showLarge,
             .reset = showLarge}),
    addPair({.name = "undo its deletion until painted, beside deleting one more",
             .measured = undoDelete,
             .limit = deleteAnother,
             .goal = 1.3,
             .prepare = showLarge,
             .reset = showDeleted}),
    addPair({.name = "move 1,000 commands of it until painted, beside LoadFile + SaveFile",
             .measured = moveCommands,
             .limit = loadAndSave,
             .goal = 2,
             .prepare = showLarge,
             .reset = selectThousand}),
    addPair({.name = "paste 1,000 commands into it until painted, beside LoadFile + SaveFile",
             .measured = pasteCommands,
             .limit = loadAndSave,
             .goal = 2,
             .prepare = showLarge,
             .reset = copyThousand}),
    addPair({.name = "toggle raw commands, 10,000 lines, beside building their bytes",
             .measured = toggleRaw,
             .limit = buildLines,
             .goal = 3,
             .prepare = showLarge}),
    addPair({.name = "list 1,000 macros of a folder until painted, beside reading them",
             .measured = listFolder,
             .limit = readFiles,
             .goal = 3,
             .prepare = showLarge,
             .reset = [] { chooseWorkplace(1); }}),
    addFigure(
        stretch("longest stretch of the GUI thread: open it, less LoadFile", showLarge, openLarge, bareLoad)),
    addFigure(stretch("the same: delete a command, less LoadFile + SaveFile", showLarge, deleteCommand,
                      loadAndSave)),
    addFigure(stretch("the same: toggle raw commands", showLarge, toggleRaw, {})),
    addFigure(stretch("the same: compare it with what it was", showHalf, compareWithFile, {})),
    addFigure(stretch("the same: take 5,000 commands from there, less LoadFile + SaveFile", showCompared,
                      takeAll, loadAndSave)),
    addFigure(stretch("the same: list 1,000 macros",
                      [] {
                        showLarge();
                        desk().takeLongestStretch();
                      },
                      listFolder, {})),
};

}  // namespace
}  // namespace tessaly::bench::macro_window_rows
