#include "fuzz/soak/SoakModel.h"

#include <algorithm>

#include "platform/Text.h"

namespace tessaly {
namespace {

constexpr const char* kAppli = "c:\\programme\\rv48\\appli\\";
constexpr int kWorkplacesOnDisk = 2;

std::string firstWord(const std::string& entry) { return entry.substr(0, entry.find('-')); }

std::string chosen(const std::vector<std::string>& rows, int row) {
  return row >= 0 && row < static_cast<int>(rows.size()) ? rows[static_cast<std::size_t>(row)]
                                                         : std::string();
}

std::string countValue(int workplace) { return format("PANEL.WP%d.MFDCOUNT", workplace); }

std::string nameOf(const std::string& bytes) {
  const auto macro = seeMacro(bytes);
  return macro && !macro->name.empty() ? macro->name : "???";
}

bool lists(const PaneModel& pane, int number) {
  return std::any_of(pane.macros.begin(), pane.macros.end(),
                     [number](const auto& row) { return row.first == number; });
}

}  // namespace

std::string modelNameValue(int workplace, int number) {
  return format("PANEL.MACRO%d.REG%d.NAME", workplace, number);
}

int SoakModel::panelAt(const std::string& address) const {
  const auto found = std::find(world_.addresses.begin(), world_.addresses.end(), address);
  return found == world_.addresses.end() ? -1 : static_cast<int>(found - world_.addresses.begin());
}

std::string SoakModel::macroFolder(const PaneModel& pane) const {
  if (pane.panel || pane.workplace <= 0 || pane.application < 0 || pane.controlPanel < 0) return {};
  return kAppli + chosen(pane.applications, pane.application) + "\\" +
         firstWord(chosen(pane.controlPanels, pane.controlPanel)) + format("\\macroWP%d\\", pane.workplace);
}

std::string SoakModel::keyFolder(const PaneModel& pane) const {
  return kAppli + chosen(pane.applications, pane.application) + "\\" +
         firstWord(chosen(pane.controlPanels, pane.controlPanel)) + "\\upk\\";
}

void SoakModel::reset(Pane pane) {
  PaneModel& here = of(pane);
  here.shown = PaneModel::Shown::kNothing;
  here.commands.clear();
  here.command = -1;
  here.target.reset();
  here.edited = false;
}

void SoakModel::show(Pane pane) {
  PaneModel& here = of(pane);
  const auto macro = seeMacro(here.copy);
  here.shown = macro ? PaneModel::Shown::kMacro : PaneModel::Shown::kNothing;
  here.commands = macro ? macro->commands : std::vector<SeenCommand>();
  here.command = -1;
}

void SoakModel::clearFromMacros(Pane pane) {
  PaneModel& here = of(pane);
  here.macros.clear();
  here.macroNotice = false;
  here.macro = -1;
  reset(pane);
}

// All lists anew, as after every change of the connection.
void SoakModel::refresh(Pane pane) {
  PaneModel& here = of(pane);
  if (here.edited) return;
  clearFromMacros(pane);
  here.controlPanels.clear();
  here.application = here.controlPanel = -1;
  here.workplaces.clear();
  here.workplaceNotice = false;
  here.workplace = 0;
  here.older = false;
  here.applications = !here.panel       ? applications
                      : !here.connected ? std::vector<std::string>{"not connected"}
                                        : std::vector<std::string>{"connected to " + here.address};
  if (here.panel && here.connected) fillWorkplaces(pane);
}

void SoakModel::fillWorkplaces(Pane pane) {
  PaneModel& here = of(pane);
  here.workplaces.clear();
  for (int number = 1; number <= Workplace::kCount; ++number)
    if (here.flags[static_cast<std::size_t>(number - 1)] || (here.edited && number == here.workplace))
      here.workplaces.push_back(number);
}

void SoakModel::join(Pane pane) {
  of(pane).flags = of(other(pane)).flags;
  of(pane).connected = true;
  refresh(pane);
}

void SoakModel::leave(Pane pane) {
  if (!of(other(pane)).connected) lineDown();
  of(pane).connected = false;
  of(pane).flags = {};
  refresh(pane);
}

// A click on the source that is shown already is none.
void SoakModel::chooseHarddisk(Pane pane) {
  if (!of(pane).panel) return;
  if (of(pane).connected && !of(other(pane)).connected) lineDown();
  of(pane).panel = false;
  of(pane).connected = false;
  of(pane).flags = {};
  refresh(pane);
}

void SoakModel::choosePanel(Pane pane) {
  if (std::exchange(of(pane).panel, true)) return;
  const bool joins = of(other(pane)).connected;
  if (!joins || line.panel < 0) refresh(pane);
  if (joins) connect(pane);
}

bool SoakModel::connects(Pane pane) const {
  const int panel = panelAt(panes[index(pane)].address);
  return panel >= 0 && panels[static_cast<std::size_t>(panel)].running &&
         !panels[static_cast<std::size_t>(panel)].silent();
}

void SoakModel::connect(Pane pane) {
  const Pane there = other(pane);
  if (of(there).connected && line.panel >= 0) {
    join(pane);
    return;
  }
  lineDown();
  if (!connects(pane)) {
    refresh(pane);
    return;
  }
  line.panel = panelAt(of(pane).address);
  of(pane).connected = true;
  of(pane).flags = of(there).flags = {};
  refresh(pane);
  // A pane that was on a lost line is on this one, too.
  if (of(there).connected) of(there).edited ? refreshWorkplaces(there) : refresh(there);
  std::vector<std::string> counts;
  for (int number = 1; number <= Workplace::kCount; ++number) counts.push_back(countValue(number));
  const auto answers = ask(counts);
  for (const Pane one : kPanes) {
    if (!of(one).connected) continue;
    for (const auto& [name, value] : answers)
      of(one).flags[static_cast<std::size_t>(parseInt(name.substr(8)) - 1)] = value != "0";
    refreshWorkplaces(one);
  }
}

void SoakModel::refreshWorkplaces(Pane pane) {
  PaneModel& here = of(pane);
  if (!here.panel) return;
  fillWorkplaces(pane);
  const bool kept =
      std::find(here.workplaces.begin(), here.workplaces.end(), here.workplace) != here.workplaces.end();
  if (here.workplace == 0 || kept) return;
  here.workplace = 0;
  clearFromMacros(pane);
}

void SoakModel::chooseApplication(Pane pane, int row) {
  PaneModel& here = of(pane);
  refresh(pane);
  here.application = row;
  here.controlPanels = world_.controlPanels(chosen(here.applications, row));
  chooseControlPanel(pane, 0);
}

void SoakModel::chooseControlPanel(Pane pane, int row) {
  PaneModel& here = of(pane);
  here.controlPanel = row;
  here.workplaces.clear();
  here.workplace = 0;
  const std::string entry = chosen(here.controlPanels, row);
  here.older = entry.find("TarrowCP") != std::string::npos;
  here.workplaceNotice = here.older;
  clearFromMacros(pane);
  if (here.older) {
    here.macros = world_.keyRows(keyFolder(here));
    here.macroNotice = here.macros.empty();
    return;
  }
  for (int number = 1; number <= kWorkplacesOnDisk; ++number) here.workplaces.push_back(number);
  chooseWorkplace(pane, 1);
}

void SoakModel::chooseWorkplace(Pane pane, int number) {
  PaneModel& here = of(pane);
  here.workplace = number;
  if (here.panel && number > 0) {
    followNames(number);
    if (of(other(pane)).panel && !of(other(pane)).edited) follow(other(pane), number);
  }
  listMacros(pane);
}

void SoakModel::follow(Pane pane, int number) {
  PaneModel& here = of(pane);
  const bool has = std::find(here.workplaces.begin(), here.workplaces.end(), number) != here.workplaces.end();
  here.workplace = has ? number : 0;
  listMacros(pane);
}

bool SoakModel::held(const PaneModel& pane) const {
  return pane.panel && pane.workplace > 0 && followed > 0 && pane.workplace != followed;
}

void SoakModel::catchUp(Pane pane) {
  if (held(of(pane))) follow(pane, followed);
}

void SoakModel::listMacros(Pane pane) {
  PaneModel& here = of(pane);
  clearFromMacros(pane);
  if (here.panel)
    refreshMacros(pane);
  else
    listFiles(pane);
}

void SoakModel::listFiles(Pane pane) {
  PaneModel& here = of(pane);
  const std::string folder = macroFolder(here);
  here.macros.clear();
  if (folder.empty()) return;
  for (const auto& [number, bytes] : disk[folder])
    here.macros.emplace_back(number, format("%03d - ", number) + displayUtf8(nameOf(bytes)));
  here.macroNotice = here.macros.empty();
}

void SoakModel::listAgain(Pane pane) {
  listFiles(pane);
  if (!lists(of(pane), of(pane).macro)) of(pane).macro = -1;
}

void SoakModel::hearOf(Pane pane, const ModelTarget& written) {
  PaneModel& here = of(pane);
  if (!written.panel && !here.panel && !here.older && macroFolder(here) == written.place) listAgain(pane);
  if (!here.edited && here.target == written && here.panel == written.panel && here.macro == written.number)
    openMacro(pane, written.number);
  else
    forget(pane, written);
}

void SoakModel::forget(Pane pane, const ModelTarget& changed) {
  PaneModel& here = of(pane);
  if (here.edited || here.target != changed) return;
  here.macro = -1;
  reset(pane);
}

void SoakModel::refreshMacros(Pane pane) {
  PaneModel& here = of(pane);
  if (held(here)) return;
  here.macros.clear();
  here.macroNotice = false;
  if (here.workplace > 0) {
    for (int number = 0; number < MacroNumber::kCount; ++number)
      if (const std::string& name = here.names[static_cast<std::size_t>(number)]; !name.empty())
        here.macros.emplace_back(number, format("%03d - ", number) + name);
    here.macroNotice = here.macros.empty();
  }
  if (here.macro < 0) chooseHeld(pane);
  if (here.macro < 0 || lists(here, here.macro)) return;
  here.macro = -1;
  if (!here.edited) reset(pane);
}

void SoakModel::chooseHeld(Pane pane) {
  PaneModel& here = of(pane);
  if (!here.panel || !here.target || !here.target->panel || here.target->place != here.address ||
      here.target->workplace != here.workplace)
    return;
  const int number = here.target->number;
  if (lists(here, number) && here.names[static_cast<std::size_t>(number)] == displayUtf8(nameOf(here.copy)))
    here.macro = number;
}

void SoakModel::followNames(int workplace) {
  for (PaneModel& pane : panes) pane.names = pane.previous = std::vector<std::string>(MacroNumber::kCount);
  followed = line.workplace = line.panel < 0 ? 0 : workplace;
  if (line.workplace == 0) return;
  std::vector<std::string> names;
  for (int number = 0; number < MacroNumber::kCount; ++number)
    names.push_back(modelNameValue(workplace, number));
  std::array<bool, 2> changed{};
  for (const auto& [name, value] : ask(names)) {
    const auto now = take(name, value);
    for (std::size_t i = 0; i < now.size(); ++i) changed[i] = changed[i] || now[i];
  }
  for (const Pane pane : kPanes)
    if (changed[index(pane)]) refreshMacros(pane);
}

// A name goes into the tables of the panes that show the panel; tells whose list is built again.
std::array<bool, 2> SoakModel::take(const std::string& name, const std::string& value) {
  std::array<bool, 2> rebuild{};
  const auto number = static_cast<std::size_t>(parseInt(name.substr(name.find("REG") + 3)));
  for (const Pane pane : kPanes) {
    PaneModel& here = of(pane);
    if (!here.panel) continue;
    here.names[number] = value;
    rebuild[index(pane)] = number == 0 || !value.empty() || !here.previous[number].empty();
    here.previous[number] = value;
  }
  return rebuild;
}

std::vector<std::pair<std::string, std::string>> SoakModel::ask(const std::vector<std::string>& names) {
  std::vector<std::pair<std::string, std::string>> answers, later;
  if (line.panel < 0) return answers;
  const PanelModel& panel = panels[static_cast<std::size_t>(line.panel)];
  for (const std::string& name : names) {
    if (const auto known = line.known.find(name); known != line.known.end()) {
      answers.emplace_back(name, known->second);
      continue;
    }
    line.asked.insert(name);
    if (panel.silent()) continue;
    std::optional<std::string> value;
    int workplace = 0, number = 0;
    if (std::sscanf(name.c_str(), "PANEL.MACRO%d.REG%d.NAME", &workplace, &number) == 2) {
      const auto& published = panel.names[static_cast<std::size_t>(workplace - 1)];
      const auto found = published.find(number);
      value = found == published.end() ? "" : found->second;
    } else {
      value = world_.value(line.panel, name);
    }
    if (!value) continue;
    line.known[name] = *value;
    later.emplace_back(name, *value);
  }
  answers.insert(answers.end(), later.begin(), later.end());
  return answers;
}

void SoakModel::publish(int panel, const std::string& name, const std::string& value) {
  int workplace = 0, number = 0;
  const bool macro = std::sscanf(name.c_str(), "PANEL.MACRO%d.REG%d.NAME", &workplace, &number) == 2;
  PanelModel& from = panels[static_cast<std::size_t>(panel)];
  if (macro) from.names[static_cast<std::size_t>(workplace - 1)][number] = value;
  if (line.panel != panel || from.silent() || line.asked.count(name) == 0) return;
  line.known[name] = value;
  if (!macro && name.find("MFDCOUNT") != std::string::npos) {
    for (const Pane pane : kPanes) {
      if (!of(pane).connected) continue;
      of(pane).flags[static_cast<std::size_t>(parseInt(name.substr(8)) - 1)] = value != "0";
      refreshWorkplaces(pane);
    }
  }
  if (!macro || workplace != line.workplace) return;
  const auto changed = take(name, value);
  for (const Pane pane : kPanes)
    if (changed[index(pane)]) refreshMacros(pane);
}

void SoakModel::readAgain(int panel) {
  PanelModel& from = panels[static_cast<std::size_t>(panel)];
  for (int workplace = 1; workplace <= Workplace::kCount; ++workplace) {
    const auto at = static_cast<std::size_t>(workplace - 1);
    for (int number = 0; number < MacroNumber::kCount; ++number) {
      const auto file = from.files[at].find(number);
      // On the connection all texts are UTF-8.
      const std::string name = file == from.files[at].end() ? "" : displayUtf8(nameOf(file->second));
      if (from.names[at][number] != name) publish(panel, modelNameValue(workplace, number), name);
    }
  }
}

std::optional<std::string> SoakModel::fetch(const std::string& address, int workplace, int number) const {
  const int at = panelAt(address);
  if (at < 0 || workplace < 1) return std::nullopt;
  const PanelModel& panel = panels[static_cast<std::size_t>(at)];
  const ModelFiles& files = panel.files[static_cast<std::size_t>(workplace - 1)];
  const auto file = files.find(number);
  if (file == files.end() || !panel.moves(file->second.size())) return std::nullopt;
  return file->second;
}

bool SoakModel::stalls(const std::string& address, int workplace, int number) const {
  const int at = panelAt(address);
  if (at < 0) return false;
  const PanelModel& panel = panels[static_cast<std::size_t>(at)];
  const FtpFaults& faults = panel.faults.ftp;
  return panel.running && faults.stallTransfer && !faults.refuseLogin &&
         panel.files[static_cast<std::size_t>(workplace - 1)].count(number) > 0;
}

bool SoakModel::send(const std::string& address, int workplace, int number, const std::string& bytes) {
  const int at = panelAt(address);
  if (at < 0 || !panels[static_cast<std::size_t>(at)].running) return false;
  PanelModel& panel = panels[static_cast<std::size_t>(at)];
  if (panel.faults.ftp.refuseLogin) return false;
  ModelFiles& files = panel.files[static_cast<std::size_t>(workplace - 1)];
  // A cut at its very end breaks an upload, too: the panel does not see that it was the end.
  if (panel.moves(bytes.size() + 1) && !panel.faults.ftp.diskFull) {
    files[number] = bytes;
    // It is the panel of the connection that is told.
    if (line.panel >= 0) readAgain(line.panel);
    return true;
  }
  const auto old = files.find(number);
  broken = BrokenUpload{at, workplace, number, old == files.end() ? std::nullopt : std::optional(old->second),
                        bytes};
  return false;
}

void SoakModel::openMacro(Pane pane, int number) {
  PaneModel& here = of(pane);
  updateOpen = false;
  here.macro = number;
  if (number < 0) {
    reset(pane);
    return;
  }
  if (here.older && !here.panel) {
    reset(pane);
    here.shown = PaneModel::Shown::kKeys;
    return;
  }
  const ModelTarget target{here.panel, here.panel ? here.address : macroFolder(here), here.workplace, number};
  here.target = target;
  discard(pane);
}

// Opens what is noted as the target.
void SoakModel::discard(Pane pane) {
  PaneModel& here = of(pane);
  updateOpen = false;
  here.edited = false;
  if (!here.target && here.macro >= 0)
    here.target =
        ModelTarget{here.panel, here.panel ? here.address : macroFolder(here), here.workplace, here.macro};
  if (!here.target) {
    reset(pane);
    catchUp(pane);
    return;
  }
  std::optional<std::string> bytes;
  if (here.target->panel) {
    bytes = fetch(here.target->place, here.target->workplace, here.target->number);
  } else if (const auto file = disk[here.target->place].find(here.target->number);
             file != disk[here.target->place].end()) {
    bytes = file->second;
  }
  if (bytes) {
    here.copy = *bytes;
  } else {
    here.target.reset();
    here.macro = -1;
  }
  show(pane);
  catchUp(pane);
}

void SoakModel::closeAndOpen() {
  lineDown();
  updateOpen = false;
  followed = 0;
  for (const Pane pane : kPanes) {
    PaneModel fresh;
    fresh.address = of(pane).address;
    fresh.copy = of(pane).copy;
    fresh.names = fresh.previous = std::vector<std::string>(MacroNumber::kCount);
    of(pane) = fresh;
    refresh(pane);
  }
}

}  // namespace tessaly
