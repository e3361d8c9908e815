#include "fuzz/soak/ControlRules.h"

#include <QApplication>
#include <QLineEdit>
#include <QRadioButton>

#include "app/PaneDescriptor.h"

namespace tessaly {
namespace {

// What one pane shows.
struct Sight {
  bool panel, edited, older, folder, macro, command, connecting, connected;
};

Sight look(const Desk& desk, Pane pane) {
  const PaneDescriptor::ControlIds& ids = Desk::ids(pane);
  const auto chosen = [&desk](int list) { return desk.driver->list(list).selectedRow() >= 0; };
  Sight sight{};
  sight.panel = desk.driver->control<QRadioButton>(ids.panel).isChecked();
  sight.edited = desk.edited(pane);
  sight.older = desk.visible(ids.notice);
  sight.folder =
      chosen(ids.workplaces) && (sight.panel || (chosen(ids.applications) && chosen(ids.controlPanels)));
  sight.macro = chosen(ids.macros);
  sight.command = chosen(ids.commands);
  const std::string caption = desk.caption(ids.connectButton);
  sight.connecting = sight.panel && caption == "connecting";
  sight.connected = sight.panel && caption == "disconnect";
  return sight;
}

class Judge {
 public:
  Judge(const Desk& desk, Pane pane) : desk_(desk), pane_(pane) {}

  void expect(bool holds, const char* what) {
    if (!holds) problems += std::string(pane_ == Pane::kA ? " A: " : " B: ") + what + ";";
  }
  void enabled(int control, bool wanted, const char* what) { expect(desk_.enabled(control) == wanted, what); }
  void visible(int control, bool wanted, const char* what) { expect(desk_.visible(control) == wanted, what); }

  std::string problems;

 private:
  const Desk& desk_;
  Pane pane_;
};

std::string paneProblems(const Desk& desk, Pane pane) {
  const PaneDescriptor::ControlIds& ids = Desk::ids(pane);
  const Sight here = look(desk, pane), there = look(desk, other(pane));
  Judge judge(desk, pane);
  judge.visible(ids.discardChanges, here.edited, "save without discard");
  for (const int button : {ids.createMacro, ids.copyMacro, ids.renameMacro, ids.deleteMacro})
    judge.visible(button, !here.edited, "macro buttons shown while editing or hidden otherwise");
  for (const int radio : {ids.harddisk, ids.panel}) judge.enabled(radio, !here.edited, "source radios");
  if (here.edited)
    for (const int list : {ids.applications, ids.controlPanels, ids.workplaces, ids.macros})
      judge.enabled(list, false, "a list is free while editing");
  // Changes that were taken up again need the panel before they can be saved.
  judge.visible(ids.connectButton, here.panel && (!here.edited || !here.connected), "connect button shown");
  if (here.panel && !here.edited) {
    judge.enabled(ids.connectButton, !here.connecting, "connect button enabled");
    judge.enabled(ids.address, !here.connecting && !here.connected, "address field enabled");
    judge.expect(here.connecting || here.connected || desk.caption(ids.connectButton) == "connect",
                 "caption of the connect button");
  }
  judge.enabled(ids.createMacro, here.folder && !here.older, "create");
  const bool buffer = !(here.panel && there.panel && there.edited);
  judge.enabled(ids.copyMacro, there.macro && here.folder && !here.older && buffer, "copy");
  const bool macro = here.macro && !here.older;
  judge.enabled(ids.renameMacro, macro || (here.edited && desk.enabled(ids.renameMacro)), "rename");
  if (!here.edited)
    for (const int button :
         {ids.deleteMacro, ids.newCorvane, ids.newMultiple, ids.newClassic, ids.updateData})
      judge.enabled(button, macro, "buttons of a chosen macro");
  for (const int button : {ids.modifyCommand, ids.deleteCommand})
    judge.expect(!desk.enabled(button) || here.command, "buttons of a chosen command");
  return judge.problems;
}

}  // namespace

std::string controlProblems(const Desk& desk) {
  if (QApplication::activeModalWidget() != nullptr) return " a dialog is open;";
  if (!desk.window->isVisible() || !desk.window->isEnabled()) return " the window is not usable;";
  return paneProblems(desk, Pane::kA) + paneProblems(desk, Pane::kB);
}

}  // namespace tessaly
