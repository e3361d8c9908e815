#include "fuzz/soak/SoakCheck.h"

#include <filesystem>

#include <QElapsedTimer>
#include <QRadioButton>

#include "app/PaneDescriptor.h"
#include "fuzz/soak/ControlRules.h"
#include "platform/Text.h"
#include "platform/Workplace.h"

namespace tessaly {
namespace {

constexpr qint64 kLongest = 4000;                // milliseconds until the window has come to rest
constexpr std::size_t kPrefix = 5, kDigits = 3;  // of "macro007.mac"

template <class Value>
std::string differs(const std::string& what, const Value& seen, const Value& expected) {
  if (seen == expected) return {};
  if constexpr (std::is_same_v<Value, std::string>)
    return what + ": seen \"" + seen + "\", expected \"" + expected + "\"";
  else if constexpr (std::is_same_v<Value, std::vector<std::string>>) {
    std::string text = what + ": seen";
    for (const std::string& row : seen) text += " [" + row + "]";
    text += ", expected";
    for (const std::string& row : expected) text += " [" + row + "]";
    return text;
  } else
    return what + ": seen " + std::to_string(seen) + ", expected " + std::to_string(expected);
}

// The first difference counts.
class Differences {
 public:
  template <class Value>
  void compare(const std::string& what, const Value& seen, const Value& expected) {
    if (first_.empty()) first_ = differs(what, seen, expected);
  }
  [[nodiscard]] const std::string& first() const { return first_; }

 private:
  std::string first_;
};

}  // namespace

std::string panelFolder(int workplace) { return format("flash/data/PANEL/macro/workplace%d/", workplace); }

ModelFiles readMacroFiles(const TestSite& site, const std::string& folder) {
  ModelFiles files;
  std::error_code none;
  for (const auto& entry : std::filesystem::directory_iterator(site.root.resolve(folder), none)) {
    const std::string name = entry.path().filename().string();
    // What the panel is just storing stands beside the file, hidden, until it is whole.
    if (name.size() > kPrefix + kDigits && name.front() != '.')
      files[parseInt(name.substr(kPrefix, kDigits))] = site.read(folder + name);
  }
  return files;
}

std::string SoakCheck::difference() {
  QElapsedTimer timer;
  timer.start();
  std::string found;
  do {
    desk_.settle({});
    found = lineDifference();
    if (!found.empty()) continue;
    const int panel = model_.line.panel;
    if (panel >= 0 && !model_.panels[static_cast<std::size_t>(panel)].silent() &&
        !desk_.passValues(panel == 0 ? desk_.first : desk_.second))
      return "the panel's values do not come";
    desk_.settle({});
    takeBrokenUpload();
    found = controlProblems(desk_);
    for (const Pane pane : kPanes)
      if (found.empty()) found = paneDifference(pane);
    if (found.empty()) found = fileDifference();
  } while (!found.empty() && timer.elapsed() < kLongest);
  return found;
}

std::string SoakCheck::lineDifference() const {
  return differs<int>("connection", desk_.lineUp() ? 1 : 0, model_.line.panel >= 0 ? 1 : 0);
}

std::string SoakCheck::listsDifference(Pane pane) {
  PaneModel& model = model_.of(pane);
  const PaneDescriptor::ControlIds& ids = Desk::ids(pane);
  const auto chosen = [this](int list) { return desk_.driver->list(list).selectedRow(); };
  const auto chosenNumber = [this](int list) {
    const ListRow* row = desk_.driver->list(list).selected();
    return row == nullptr ? -1 : row->number;
  };
  std::vector<std::string> workplaces, macros;
  for (const int number : model.workplaces) workplaces.push_back(format("Workplace %d", number));
  if (model.workplaceNotice) workplaces = {"TarrowCP - no workplaces supported"};
  for (const auto& [number, text] : model.macros) macros.push_back(text);
  if (model.macroNotice) macros = {"no macros found"};
  Differences found;
  found.compare("applications", desk_.driver->texts(ids.applications), model.applications);
  found.compare("chosen application", chosen(ids.applications), model.application);
  found.compare("control panels", desk_.driver->texts(ids.controlPanels), model.controlPanels);
  found.compare("chosen control panel", chosen(ids.controlPanels), model.controlPanel);
  found.compare("workplaces", desk_.driver->texts(ids.workplaces), workplaces);
  found.compare("chosen workplace", std::max(0, chosenNumber(ids.workplaces)), model.workplace);
  found.compare("macros", desk_.driver->texts(ids.macros), macros);
  found.compare("chosen macro", chosenNumber(ids.macros), model.macro);
  return found.first();
}

std::string SoakCheck::paneDifference(Pane pane) {
  PaneModel& model = model_.of(pane);
  const PaneDescriptor::ControlIds& ids = Desk::ids(pane);
  const std::string name = pane == Pane::kA ? "pane A, " : "pane B, ";
  const bool panel = desk_.driver->control<QRadioButton>(ids.panel).isChecked();
  Differences found;
  found.compare<int>("source", panel, model.panel);
  found.compare<int>("connected", panel && desk_.caption(ids.connectButton) == "disconnect", model.connected);
  found.compare<int>("edit state", desk_.edited(pane), model.edited);
  found.compare("", listsDifference(pane), std::string());
  if (!found.first().empty()) return name + found.first();
  const bool empty = desk_.driver->texts(ids.commands) == std::vector<std::string>{"empty macro"};
  const auto rows = static_cast<int>(desk_.driver->texts(ids.commands).size()) - (empty ? 1 : 0);
  if (model.shown != PaneModel::Shown::kKeys)
    found.compare("count of commands", rows, static_cast<int>(model.commands.size()));
  if (model.shown != PaneModel::Shown::kMacro) found.compare<int>("an empty macro", empty && !model.older, 0);
  found.compare("chosen command", desk_.driver->list(ids.commands).selectedRow(), model.command);
  found.compare("working copy", desk_.site.read(workingCopyPath(pane)), model.copy);
  return found.first().empty() ? "" : name + found.first();
}

std::string SoakCheck::fileDifference() {
  for (const auto& [folder, files] : model_.disk)
    if (readMacroFiles(desk_.site, folder) != files) return "the files of " + folder;
  for (std::size_t i = 0; i < model_.panels.size(); ++i) {
    const DeskPanel& panel = i == 0 ? desk_.first : desk_.second;
    for (int workplace = 1; workplace <= Workplace::kCount; ++workplace)
      if (readMacroFiles(panel.tree, panelFolder(workplace)) !=
          model_.panels[i].files[static_cast<std::size_t>(workplace - 1)])
        return format("the files of panel %d, workplace %d", static_cast<int>(i) + 1, workplace);
  }
  return {};
}

// As much as came before it broke, or nothing if it broke before the panel's file was opened.
void SoakCheck::takeBrokenUpload() {
  if (!model_.broken) return;
  const auto [panel, workplace, number, old, sent] = *model_.broken;
  ModelFiles& files =
      model_.panels[static_cast<std::size_t>(panel)].files[static_cast<std::size_t>(workplace - 1)];
  const std::string now =
      (panel == 0 ? desk_.first : desk_.second).tree.read(DeskPanel::file(workplace, number));
  if (now == "<missing>" && !old)
    files.erase(number);
  else if (sent.rfind(now, 0) == 0 || (old && now == *old))
    files[number] = now;
  // What is put back is followed by the call to load, and the names are those of all files then.
  if (model_.line.panel >= 0 && desk_.strip().find("holds again") != std::string::npos)
    model_.readAgain(model_.line.panel);
}

}  // namespace tessaly
