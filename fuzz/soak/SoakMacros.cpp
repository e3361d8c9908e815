// What a soaking user does with macros and their commands.
#include <algorithm>

#include <QLineEdit>
#include <QPushButton>

#include "app/PaneDescriptor.h"
#include "fuzz/soak/SoakCheck.h"
#include "fuzz/soak/SoakUser.h"
#include "link/PanelMacros.h"
#include "platform/Text.h"
#include "tests/editors/DialogDriver.h"

namespace tessaly {
namespace {

constexpr const char* kClipFunction = "ME2.KEY1.CLIP.SET";

void finish(QDialog& dialog, bool accept) {
  WindowDriver::click(dialog, accept ? QStringLiteral("OK") : QStringLiteral("Cancel"));
}

void require(bool holds, const std::string& what) {
  if (!holds) throw std::runtime_error(what);
}

}  // namespace

void SoakUser::takeCopy(const std::vector<SeenCommand>& commands, int selected) {
  const std::string bytes = copyBytes(pane_);
  const auto macro = seeMacro(bytes);
  require(macro.has_value(), "the working copy is broken: " + bytes);
  require(macro->commands.size() == commands.size(),
          format("the working copy holds %d commands, expected %d", static_cast<int>(macro->commands.size()),
                 static_cast<int>(commands.size())));
  for (std::size_t i = 0; i < commands.size(); ++i) {
    const SeenCommand &seen = macro->commands[i], &expected = commands[i];
    require(seen == expected, "command " + std::to_string(i) + " is " + seen.fid + " = \"" + seen.value +
                                  "\", expected " + expected.fid + " = \"" + expected.value + "\"");
  }
  here().copy = bytes;
  model_.show(pane_);
  here().command = selected;
  here().edited = true;
}

// A macro of the disk was written by the program: its folder's lists are built again.
void SoakUser::diskChanged(int number) {
  const std::string folder = model_.macroFolder(here());
  model_.disk[folder][number] = desk_.site.read(folder + format("macro%03d.mac", number));
  model_.listMacros(pane_);
  model_.hearOf(other(pane_), {false, folder, here().workplace, number});
}

std::string SoakUser::create() {
  if (!usable(ids().createMacro)) return {};
  const bool accept = number(4) != 0;
  const int place = someNumber();
  const std::string name = someName();
  desk_.press(ids().createMacro, [&](QDialog& dialog) {
    WindowDriver::type(dialog, "position", QString::number(place));
    WindowDriver::type(dialog, "name", QString::fromStdString(name));
    finish(dialog, accept);
  });
  if (!accept) return "cancels creating";
  if (here().panel) {
    createdOnPanel(place, name);
  } else {
    diskChanged(place);
    const auto macro = seeMacro(model_.disk[model_.macroFolder(here())][place]);
    require(macro && macro->name == name && macro->commands.empty(), "another macro was created");
    model_.openMacro(pane_, place);
  }
  return "creates " + std::to_string(place) + " " + name;
}

void SoakUser::createdOnPanel(int number, const std::string& name) {
  here().copy = copyBytes(pane_);
  const auto macro = seeMacro(here().copy);
  require(macro && macro->name == name && macro->commands.empty(), "another macro was created");
  here().macro = -1;
  model_.reset(pane_);
  const ModelTarget target{true, here().address, here().workplace, number};
  if (!model_.send(target.place, target.workplace, number, here().copy)) return;
  here().target = target;
  model_.show(pane_);
  model_.chooseHeld(pane_);
  model_.hearOf(other(pane_), target);
}

std::string SoakUser::copy() {
  if (!usable(ids().copyMacro)) return {};
  const bool accept = number(5) != 0;
  const int place = someNumber();
  desk_.press(ids().copyMacro, [&](QDialog& dialog) {
    WindowDriver::type(dialog, "position", QString::number(place));
    finish(dialog, accept);
  });
  if (!accept) return "cancels copying";
  const std::string done = "copies " + std::to_string(there().macro) + " to " + std::to_string(place);
  copied(place);
  return done;
}

void SoakUser::copied(int number) {
  std::optional<std::string> bytes;
  if (there().panel) {
    // Within one panel it is the target's workplace and address that count.
    const PaneModel& at = here().panel ? here() : there();
    bytes = model_.fetch(at.address, at.workplace, there().macro);
    if (here().panel && bytes) there().copy = *bytes;
    if (here().panel) {
      // Two panes can show one connection under two addresses, and the files come from the target's.
      const bool held =
          there().target && there().target->place == at.address && there().target->workplace == at.workplace;
      if (held) model_.show(other(pane_));
      if (!held || there().shown == PaneModel::Shown::kNothing) {
        there().macro = -1;
        model_.reset(other(pane_));
      }
    }
  } else if (there().older) {
    bytes = desk_.site.read(kClassicWorkingCopy);
    require(seeMacro(*bytes).has_value(), "the converted key is no macro");
  } else {
    const ModelFiles& files = model_.disk[model_.macroFolder(there())];
    if (const auto file = files.find(there().macro); file != files.end()) bytes = file->second;
  }
  if (here().panel) {
    const ModelTarget target{true, here().address, here().workplace, number};
    if (bytes && model_.send(target.place, target.workplace, number, *bytes))
      for (const Pane pane : kPanes) model_.hearOf(pane, target);
    return;
  }
  const std::string folder = model_.macroFolder(here());
  if (!bytes) {
    model_.listAgain(pane_);
    return;
  }
  model_.disk[folder][number] = *bytes;
  model_.listMacros(pane_);
  model_.hearOf(other(pane_), {false, folder, here().workplace, number});
  model_.openMacro(pane_, number);
}

std::string SoakUser::rename() {
  if (!usable(ids().renameMacro)) return {};
  const bool accept = number(5) != 0;
  const int place = here().macro;
  const std::string name = someName();
  desk_.press(ids().renameMacro, [&](QDialog& dialog) {
    WindowDriver::type(dialog, "newName", QString::fromStdString(name));
    finish(dialog, accept);
  });
  if (!accept) return "cancels renaming";
  renamed(place, name);
  return "renames " + std::to_string(place) + " to " + name;
}

void SoakUser::renamed(int number, const std::string& name) {
  const auto check = [&](const std::string& before, const std::string& after) {
    const auto old = seeMacro(before), now = seeMacro(after);
    require(old && now && now->name == name && now->commands == old->commands, "renaming made another macro");
  };
  if (!here().panel) {
    const std::string folder = model_.macroFolder(here());
    ModelFiles& files = model_.disk[folder];
    const auto file = files.find(number);
    const bool done = file != files.end() && seeMacro(file->second);
    if (done) {
      const std::string now = desk_.site.read(folder + format("macro%03d.mac", number));
      check(file->second, now);
      file->second = now;
    }
    if (!done) {
      model_.listAgain(pane_);
      return;
    }
    model_.listMacros(pane_);
    model_.hearOf(other(pane_), {false, folder, here().workplace, number});
    model_.openMacro(pane_, number);
    return;
  }
  if (model_.line.panel < 0) return;
  const int workplace = here().workplace;
  const ModelTarget target{true, here().address, workplace, number};
  for (const Pane pane : kPanes) model_.forget(pane, target);
  ModelFiles& files = model_.panels[static_cast<std::size_t>(model_.line.panel)]
                          .files[static_cast<std::size_t>(workplace - 1)];
  const auto file = files.find(number);
  if (file == files.end() || !seeMacro(file->second)) return;
  const DeskPanel& panel = model_.line.panel == 0 ? desk_.first : desk_.second;
  std::string now;
  WindowDriver::waitFor(
      [&] {
        now = panel.tree.read(DeskPanel::file(workplace, number));
        return now != file->second || seeMacro(now)->name == name;
      },
      "the new name on the panel");
  check(file->second, now);
  file->second = now;
  model_.publish(model_.line.panel, modelNameValue(workplace, number), name);
}

std::string SoakUser::remove() {
  if (!usable(ids().deleteMacro)) return {};
  const bool accept = perhaps();
  const int place = here().macro;
  desk_.dialogs.boxButtons = {accept ? QStringLiteral("OK") : QStringLiteral("Cancel")};
  if (perhaps()) {
    desk_.driver->list(ids().macros).setFocus();
    QTest::keyClick(&desk_.driver->list(ids().macros), Qt::Key_Delete);
  } else {
    desk_.press(ids().deleteMacro);
  }
  desk_.dialogs.boxButtons = {QStringLiteral("OK")};
  if (accept) removed(place);
  return (accept ? "deletes " : "does not delete ") + std::to_string(place);
}

void SoakUser::removed(int number) {
  if (!here().panel) {
    const std::string folder = model_.macroFolder(here());
    model_.disk[folder].erase(number);
    model_.listMacros(pane_);
    model_.hearOf(other(pane_), {false, folder, here().workplace, number});
    return;
  }
  const int workplace = here().workplace;
  // What is deleted is fetched first, to be kept; a person who ends that wait has not deleted.
  if (model_.stalls(here().address, workplace, number) || model_.line.panel < 0) return;
  ModelFiles& files = model_.panels[static_cast<std::size_t>(model_.line.panel)]
                          .files[static_cast<std::size_t>(workplace - 1)];
  if (files.erase(number) > 0) model_.publish(model_.line.panel, modelNameValue(workplace, number), "");
}

std::string SoakUser::deleteCommand() {
  if (!usable(ids().deleteCommand)) return {};
  const int row = here().command;
  if (perhaps()) {
    desk_.driver->list(ids().commands).setFocus();
    QTest::keyClick(&desk_.driver->list(ids().commands), Qt::Key_Delete);
  } else {
    desk_.press(ids().deleteCommand);
  }
  std::vector<SeenCommand> commands = here().commands;
  require(row >= 0 && row < static_cast<int>(commands.size()), "a command that is not there was deleted");
  commands.erase(commands.begin() + row);
  takeCopy(commands, row < static_cast<int>(commands.size()) ? row : -1);
  return "deletes command " + std::to_string(row);
}

std::string SoakUser::newCommand() {
  if (!usable(ids().newCorvane)) return {};
  const int row = here().command;
  const int place = number(row >= 0 ? 3 : 2);
  desk_.press(ids().newCorvane, [&](QDialog& dialog) {
    makeClipCommand(dialog, "10", place == 0 ? "insertStart" : place == 1 ? "insertEnd" : "insertSelected");
  });
  std::vector<SeenCommand> commands = here().commands;
  const auto at = commands.begin() + (place == 0 ? 0 : place == 1 ? static_cast<int>(commands.size()) : row);
  const auto stored = seeMacro(copyBytes(pane_));
  const auto index = static_cast<std::size_t>(at - commands.begin());
  require(stored && index < stored->commands.size(), "the new command is not there");
  const SeenCommand& made = stored->commands[index];
  require(made.fid.ends_with(kClipFunction) && made.valued, "the new command is " + made.fid);
  commands.insert(at, made);
  takeCopy(commands, -1);
  return "makes a command at " + std::to_string(index);
}

std::string SoakUser::newMany() {
  if (!usable(ids().newMultiple)) return {};
  const bool connected = here().connected || there().connected;
  // Of functions that one value makes ready.
  const std::string bus = "PGM.ME" + std::to_string(number(5));
  const FunctionDictionary& dictionary = deskDictionary();
  std::vector<std::string> made, asked;
  for (std::size_t i = 0; i < dictionary.functionCount(); ++i) {
    const FunctionRecord function = dictionary.function(i);
    if (function.group() != bus) continue;
    made.push_back("QMF1." + std::string(function.name()));
    const bool takes = !function.sid().empty() && !draftFor({}, function).parameters.empty();
    const std::string name = "QMF1." + function.sid();
    if (takes && std::find(asked.begin(), asked.end(), name) == asked.end()) asked.push_back(name);
  }
  const bool answered = connected && model_.ask(asked).size() == asked.size();
  const bool insert = answered && perhaps();
  desk_.press(ids().newMultiple, [&](QDialog& dialog) {
    const DialogDriver user(dialog);
    user.click(bus.c_str());
    if (Desk::lineUp()) user.click("updateParameters");  // else a box says that it is lost
    if (answered)
      WindowDriver::waitFor([&] { return user.enabled("insertEnd"); }, "the values of all commands");
    user.click(insert ? "insertEnd" : "cancel");
    if (insert) WindowDriver::waitFor([&] { return !dialog.isVisible(); }, "the end of the insertion");
  });
  if (!insert) return "looks at many commands";
  std::vector<SeenCommand> commands = here().commands;
  const auto stored = seeMacro(copyBytes(pane_));
  require(stored && stored->commands.size() == commands.size() + made.size(),
          "not all commands were inserted");
  for (const std::string& fid : made) {
    commands.push_back(stored->commands[commands.size()]);
    require(commands.back().fid == fid, "inserted " + commands.back().fid + " in place of " + fid);
  }
  // All of them are selected then; of the rest of the acts each has one command in hand.
  const int first = made.empty() ? -1 : static_cast<int>(commands.size() - made.size());
  if (first >= 0) desk_.driver->clickRow(ids().commands, first);
  takeCopy(commands, first);
  return "makes many commands of " + bus;
}

std::string SoakUser::modify() {
  if (!usable(ids().modifyCommand)) return {};
  const int row = here().command;
  const std::vector<SeenCommand> before = here().commands;
  bool changed = false;
  desk_.press(ids().modifyCommand, [&](QDialog& dialog) {
    auto* ok = dialog.findChild<QPushButton*>(QStringLiteral("modify"));
    changed = ok != nullptr && ok->isEnabled();
    if (changed) QTest::mouseClick(ok, Qt::LeftButton);
  });
  if (!changed) return "looks at command " + std::to_string(row);
  std::vector<SeenCommand> commands = before;
  const auto stored = seeMacro(copyBytes(pane_));
  const auto at = static_cast<std::size_t>(row);
  require(stored && stored->commands.size() == commands.size(), "modifying changed the count of commands");
  require(stored->commands[at].fid == commands[at].fid, "modifying changed the function");
  commands[at] = stored->commands[at];
  takeCopy(commands, row);
  return "modifies command " + std::to_string(row);
}

std::string SoakUser::openAndCancel() {
  const int buttons[] = {ids().newCorvane, ids().newClassic};
  const int button = buttons[number(2)];
  if (!usable(button)) return {};
  desk_.press(button, [](QDialog& dialog) { dialog.reject(); });
  return "opens an editor and cancels it";
}

std::string SoakUser::update() {
  if (!usable(ids().updateData)) return {};
  const bool accept = number(4) != 0;
  desk_.dialogs.boxButtons = {accept ? QStringLiteral("OK") : QStringLiteral("Cancel"), QStringLiteral("OK")};
  desk_.window->say({});
  desk_.press(ids().updateData);
  desk_.dialogs.boxButtons = {QStringLiteral("OK")};
  updated(accept);
  return "updates the values";
}

void SoakUser::updated(bool question) {
  if (!here().connected || model_.updateOpen) return;
  model_.updateOpen = true;
  const int only = here().command;
  if (only < 0 && !question) return;
  const FunctionDictionary& dictionary = deskDictionary();
  std::vector<std::string> names;
  for (std::size_t i = 0; i < here().commands.size(); ++i) {
    const std::string& fid = here().commands[i].fid;
    if (only >= 0 && i != static_cast<std::size_t>(only)) continue;
    if (fid.find("NCSCOMMAND") != std::string::npos) continue;
    const std::size_t dot = fid.find('.');
    if (dot == std::string::npos || dot == 0) return;
    const auto function = dictionary.find(fid.substr(dot + 1));
    if (!function || function->sid().empty()) continue;
    const std::string name = fid.substr(0, dot + 1) + function->sid();
    if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
  }
  if (!seeMacro(here().copy)) return;
  std::vector<SeenCommand> commands = here().commands;
  int count = 0;
  applyValues(model_.ask(names), commands, count);
  if (count == 0) return;
  // The pane may have been in edit state before; the strip tells the end.
  WindowDriver::waitFor(
      [this] {
        const std::string told = desk_.strip();
        return told.find("commands updated") != std::string::npos ||
               told.find("values came") != std::string::npos;
      },
      "the end of the update");
  model_.updateOpen = false;
  // Pane B's values are replaced by what the working copy held before.
  takeCopy(pane_ == Pane::kA ? commands : here().commands, -1);
}

void SoakUser::applyValues(const std::vector<std::pair<std::string, std::string>>& answers,
                           std::vector<SeenCommand>& commands, int& count) const {
  const int only = model_.panes[index(pane_)].command;
  for (const auto& [name, value] : answers) {
    const std::size_t dot = name.find('.');
    const auto function = deskDictionary().findBySid(std::string_view(name).substr(dot + 1));
    if (!function) continue;
    const std::string fid = name.substr(0, dot + 1) + std::string(function->name());
    for (std::size_t i = static_cast<std::size_t>(std::max(0, only)); i < commands.size(); ++i) {
      if (commands[i].fid != fid) continue;
      // The first command from there on that has a value takes it.
      const auto taker = std::find_if(commands.begin() + static_cast<std::ptrdiff_t>(i), commands.end(),
                                      [](const SeenCommand& command) { return command.valued; });
      if (taker != commands.end()) {
        taker->value = value;
        ++count;
      }
      if (only >= 0) break;
    }
  }
}

}  // namespace tessaly
