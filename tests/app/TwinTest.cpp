// What the window can do, and what the command-line twin has for it.
#include <algorithm>
#include <set>

#include <QAbstractButton>
#include <QMenuBar>

#include "cli/Commands.h"
#include "tests/app/WindowFixture.h"

namespace tessaly {
namespace {

// Acts, each a menu and its entry, or a button of a pane.
struct Acts {
  const char* twin;  // the command for them, with the verb of one that has verbs; or why there is none
  std::vector<const char*> acts;
};

const Acts kCommands[] = {
    {"create", {"Macro/New...", "createMacro"}},
    {"show",
     {"Macro/Open File...", "View/Destinations of the Commands", "View/Commands as Stored",
      "View/Names and Values in Columns", "showDestination", "showRaw", "useTabs"}},
    {"copy-macro", {"Macro/Save As...", "Macro/Copy from the Other Pane...", "copyMacro"}},
    {"rename", {"Macro/Rename...", "renameMacro"}},
    {"delete-macro", {"Macro/Delete...", "deleteMacro"}},
    {"history restore", {"Macro/Undo", "Edit/Undo", "Edit/Redo"}},
    {"history show", {"Macro/History..."}},
    {"effect", {"Macro/Rehearse..."}},
    {"panel update", {"Macro/Capture...", "Panel/Update Values", "updateData"}},
    {"sheet", {"Macro/Print...", "Macro/Export..."}},
    {"history", {"Edit/Steps..."}},
    {"remove", {"Edit/Cut", "Edit/Delete Commands", "deleteCommand"}},
    {"copy", {"Edit/Copy"}},
    {"paste", {"Edit/Paste", "Edit/Duplicate"}},
    {"move", {"Edit/Move Up", "Edit/Move Down"}},
    {"insert", {"Edit/New Command...", "Edit/New Multiple Commands...", "newCorvane", "newMultiple"}},
    {"insert-classic", {"Edit/New Classic Command...", "newClassic"}},
    {"set", {"Edit/Modify Command...", "modifyCommand"}},
    {"diff",
     {"Compare/What Have I Changed?", "Compare/Both Panes", "Compare/With a Version of the History..."}},
    {"compare", {"Compare/Workplaces..."}},
    {"check", {"Review/Check...", "Panel/Check What It Holds..."}},
    {"find", {"Review/Search...", "Review/Where Used..."}},
    {"replace", {"Review/Replace in Macros..."}},
    {"panel list", {"Panel/Show the Panel", "panel"}},
    {"list", {"Panel/Show the Disk", "harddisk"}},
    {"snapshot", {"Panel/Save Folder As...", "Panel/Open Snapshot..."}},
    {"panel restore", {"Panel/Restore Snapshot..."}},
    {"help", {"Help/User Guide", "Help/What's This?", "Help/Find an Act...", "Help/About Tessaly..."}}};

const Acts kWithout[] = {
    {"a command changes the file itself, so nothing is left to be saved or discarded",
     {"Macro/Save", "Macro/Discard Changes", "saveChanges", "discardChanges"}},
    {"a selection and what is seen is the window's; a command names what it takes",
     {"Edit/Select All", "Edit/Find in the List...", "Panel/Close Snapshot", "View/Other Pane",
      "View/Stripes by Destination", "View/Headings over the Commands", "View/Colours of the Desktop",
      "View/Light", "View/Dark, for the Night", "View/Larger Text", "View/Smaller Text",
      "View/Usual Text Size"}},
    {"each panel command connects, and leaves again",
     {"Panel/Address or Path", "Panel/Connect", "connectButton", "connectAgain"}},
    {"its lines are for scripts, in one language",
     {"View/Language of the Desktop", "View/Deutsch", "View/English"}},
    {"a site is a folder, which --root names and cp makes",
     {"Site/Open...", "Site/Choose...", "Site/Open the Sample Site"}},
    {"the twin has none but those of the shell", {"Help/Keys"}}};

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
      if (!button->objectName().startsWith("qt_")) acts.insert(button->objectName().toStdString());
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
  const auto strike = [&acts](const Acts& row) {
    for (const char* act : row.acts) EXPECT_TRUE(acts.erase(act) > 0) << act << " is no act of the window";
  };
  for (const Acts& row : kCommands) {
    EXPECT_TRUE(hasTwin(row.twin)) << "there is no command " << row.twin;
    strike(row);
  }
  for (const Acts& row : kWithout) strike(row);
  for (const std::string& act : acts)
    ADD_FAILURE() << act << " has no row: which command is its twin, or why none?";
}

}  // namespace
}  // namespace tessaly
