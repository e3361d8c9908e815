// A large macro in the window: from the click until its lines are painted.
#include <filesystem>
#include <fstream>
#include <iterator>
#include <numeric>
#include <tinyxml.h>

#include <QCheckBox>

#include "bench/Table.h"
#include "bench/window/Desk.h"
#include "bench/window/WindowSite.h"
#include "model/CommandLine.h"
#include "model/MacroFile.h"
#include "tests/editors/DialogDriver.h"
#include "tests/support/LoadCommands.h"

namespace tessaly::bench {
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

const bool kRegistered[] = {
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
    addFigure(stretch("the same: list 1,000 macros",
                      [] {
                        showLarge();
                        desk().takeLongestStretch();
                      },
                      listFolder, {})),
};

}  // namespace
}  // namespace tessaly::bench
