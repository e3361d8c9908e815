// What the window can do, and what the command-line twin has for it.
#include <algorithm>
#include <set>

#include <QAbstractButton>
#include <QMenuBar>

#include "cli/Commands.h"
#include "tests/app/WindowFixture.h"

namespace tessaly {
namespace {

struct TwinRow {
  const char* act;      // a menu and its entry, or a button of a pane
  const char* command;  // of the twin, with the verb of one that has verbs; empty where there is none
  const char* why;      // then
};

constexpr const char* kSelection =
    "a selection and what is seen is the window's; a command names what it takes";
constexpr const char* kWhole =
    "a command changes the file itself, so nothing is left to be saved or discarded";

constexpr const char* kSite = "a site is a folder, which --root names and cp makes";
constexpr const char* kLine = "each panel command connects, and leaves again";
constexpr const char* kEnglish = "its lines are for scripts, in one language";

constexpr TwinRow kRows[] = {
    {"Macro/New...", "create", ""},
    {"Macro/Open File...", "show", ""},
    {"Macro/Save", "", kWhole},
    {"Macro/Save As...", "copy-macro", ""},
    {"Macro/Discard Changes", "", kWhole},
    {"Macro/Copy from the Other Pane...", "copy-macro", ""},
    {"Macro/Rename...", "rename", ""},
    {"Macro/Delete...", "delete-macro", ""},
    {"Macro/Undo", "history restore", ""},
    {"Macro/History...", "history show", ""},
    {"Macro/Rehearse...", "effect", ""},
    {"Macro/Capture...", "panel update", ""},
    {"Macro/Print...", "sheet", ""},
    {"Macro/Export...", "sheet", ""},
    {"Edit/Undo", "history restore", ""},
    {"Edit/Redo", "history restore", ""},
    {"Edit/Steps...", "history", ""},
    {"Edit/Cut", "remove", ""},
    {"Edit/Copy", "copy", ""},
    {"Edit/Paste", "paste", ""},
    {"Edit/Duplicate", "paste", ""},
    {"Edit/Move Up", "move", ""},
    {"Edit/Move Down", "move", ""},
    {"Edit/Select All", "", kSelection},
    {"Edit/Find in the List...", "", kSelection},
    {"Edit/New Command...", "insert", ""},
    {"Edit/New Multiple Commands...", "insert", ""},
    {"Edit/New Classic Command...", "insert-classic", ""},
    {"Edit/Modify Command...", "set", ""},
    {"Edit/Delete Commands", "remove", ""},
    {"Compare/What Have I Changed?", "diff", ""},
    {"Compare/Both Panes", "diff", ""},
    {"Compare/With a Version of the History...", "diff", ""},
    {"Compare/Workplaces...", "compare", ""},
    {"Review/Check...", "check", ""},
    {"Review/Search...", "find", ""},
    {"Review/Where Used...", "find", ""},
    {"Review/Replace in Macros...", "replace", ""},
    {"Panel/Show the Panel", "panel list", ""},
    {"Panel/Show the Disk", "list", ""},
    {"Panel/Address or Path", "", kLine},
    {"Panel/Connect", "", kLine},
    {"Panel/Update Values", "panel update", ""},
    {"Panel/Check What It Holds...", "check", ""},
    {"Panel/Save Folder As...", "snapshot", ""},
    {"Panel/Open Snapshot...", "snapshot", ""},
    {"Panel/Restore Snapshot...", "panel restore", ""},
    {"Panel/Close Snapshot", "", kSelection},
    {"View/Other Pane", "", kSelection},
    {"View/Destinations of the Commands", "show", ""},
    {"View/Commands as Stored", "show", ""},
    {"View/Names and Values in Columns", "show", ""},
    {"View/Stripes by Destination", "", kSelection},
    {"View/Headings over the Commands", "", kSelection},
    {"View/Colours of the Desktop", "", kSelection},
    {"View/Light", "", kSelection},
    {"View/Dark, for the Night", "", kSelection},
    {"View/Larger Text", "", kSelection},
    {"View/Smaller Text", "", kSelection},
    {"View/Usual Text Size", "", kSelection},
    {"View/Language of the Desktop", "", kEnglish},
    {"View/Deutsch", "", kEnglish},
    {"View/English", "", kEnglish},
    {"Site/Open...", "", kSite},
    {"Site/Choose...", "", kSite},
    {"Site/Open the Sample Site", "", kSite},
    {"Help/User Guide", "help", ""},
    {"Help/Keys", "", "the twin has none but those of the shell"},
    {"Help/What's This?", "help", ""},
    {"Help/Find an Act...", "help", ""},
    {"Help/About Tessaly...", "help", ""},
    {"harddisk", "list", ""},
    {"panel", "panel list", ""},
    {"connectButton", "", kLine},
    {"connectAgain", "", kLine},
    {"createMacro", "create", ""},
    {"copyMacro", "copy-macro", ""},
    {"renameMacro", "rename", ""},
    {"deleteMacro", "delete-macro", ""},
    {"newClassic", "insert-classic", ""},
    {"newCorvane", "insert", ""},
    {"newMultiple", "insert", ""},
    {"modifyCommand", "set", ""},
    {"deleteCommand", "remove", ""},
    {"updateData", "panel update", ""},
    {"showDestination", "show", ""},
    {"showRaw", "show", ""},
    {"useTabs", "show", ""},
    {"saveChanges", "", kWhole},
    {"discardChanges", "", kWhole},
};

void collect(const QMenu& menu, const QString& place, std::set<std::string>& acts) {
  for (const QAction* action : menu.actions()) {
    const QString act = place + QLatin1Char('/') + action->text().remove(QLatin1Char('&'));
    if (action->menu() != nullptr)
      collect(*action->menu(), act, acts);
    else if (!action->isSeparator())
      acts.insert(act.toStdString());
  }
}

// Every entry of the menus and every button of a pane, as they stand in the window that runs.
std::set<std::string> actsOf(const MainWindow& window) {
  std::set<std::string> acts;
  for (const QAction* title : window.menuBar()->actions())
    collect(*title->menu(), title->text().remove(QLatin1Char('&')), acts);
  for (const auto* pane : window.findChildren<MacroPane*>())
    for (const auto* button : pane->findChildren<QAbstractButton*>())
      if (!button->objectName().startsWith(QLatin1String("qt_")))
        acts.insert(button->objectName().toStdString());
  return acts;
}

// "panel update": the command, and the verb in its usage.
bool hasTwin(const std::string& words) {
  const std::size_t blank = words.find(' ');
  const Command* const command = commandNamed(words.substr(0, blank));
  if (command == nullptr || blank == std::string::npos) return command != nullptr;
  const std::string usage = " " + std::string(command->usage), verb = words.substr(blank + 1) + ' ';
  return usage.find(' ' + verb) != std::string::npos || usage.find('(' + verb) != std::string::npos;
}

// Catches an act that is added to the window and forgotten in the twin, and a command that is renamed away.
TEST(TwinTest, EveryActHasACommandOrAReason) {
  WindowFixture fixture(offlineClient());
  std::set<std::string> acts = actsOf(*fixture.window);
  for (const auto& [act, command, why] : kRows) {
    EXPECT_TRUE(acts.erase(act) > 0) << act << " is no act of the window";
    EXPECT_NE(*command == '\0', *why == '\0') << act << ": a command or a reason";
    EXPECT_TRUE(*command == '\0' || hasTwin(command)) << act << ": there is no command " << command;
  }
  for (const std::string& act : acts)
    ADD_FAILURE() << act << " has no row: which command is its twin, or why none?";
}

}  // namespace
}  // namespace tessaly
