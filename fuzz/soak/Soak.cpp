#include "fuzz/soak/Soak.h"

#include <cstdio>
#include <deque>
#include <map>

#include "app/PaneDescriptor.h"
#include "fuzz/soak/SoakCheck.h"
#include "fuzz/soak/SoakUser.h"
#include "model/SiteBrowser.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

constexpr std::chrono::milliseconds kConnectTime{500}, kDelay{15};
constexpr std::size_t kToldActions = 20;
constexpr std::string_view kAppli = "c:\\programme\\rv48\\appli\\";

// The panels in their bad moods.
class FlakyPanels {
 public:
  FlakyPanels(Desk& desk, SoakModel& model, std::mt19937& chance)
      : desk_(desk), model_(model), chance_(chance) {}

  std::string act() {
    at_ = number(3) == 0 ? 1 : 0;
    switch (number(7)) {
      case 0:
      case 1:
        return heal();
      case 2:
        return spoil();
      case 3:
        return dropLine();
      case 4:
        return goOrCome();
      case 5:
        return setName();
      default:
        return setValue();
    }
  }

 private:
  [[nodiscard]] int number(int below) { return static_cast<int>(chance_() % static_cast<unsigned>(below)); }
  [[nodiscard]] PanelModel& model() { return model_.panels[static_cast<std::size_t>(at_)]; }
  [[nodiscard]] PanelSimulator& simulator() { return (at_ == 0 ? desk_.first : desk_.second).simulator; }
  [[nodiscard]] std::string text(const std::string& what) const {
    return "panel " + std::to_string(at_ + 1) + " " + what;
  }

  std::string heal() {
    model().faults = {};
    apply();
    if (!model().running) (at_ == 0 ? desk_.first : desk_.second).begin();
    if (!std::exchange(model().running, true)) model_.readAgain(at_);
    return text("is well");
  }

  std::string spoil() {
    PanelFaults faults;
    if (number(5) == 0) faults.control.neverAnswer = true;
    if (number(4) == 0) faults.control.delay = kDelay;
    if (number(4) == 0) faults.ftp.refuseLogin = true;
    if (number(3) == 0) faults.ftp.cutAfter = static_cast<std::size_t>(number(400));
    if (number(4) == 0) faults.ftp.diskFull = true;
    faults.ftp.stallTransfer = !faults.ftp.cutAfter && number(6) == 0;
    model().faults = faults;
    apply();
    return text(format("has faults: silent %d, late %d, refuses %d, cuts %d, full %d, stalls %d",
                       faults.control.neverAnswer, faults.control.delay.count() > 0, faults.ftp.refuseLogin,
                       faults.ftp.cutAfter ? static_cast<int>(*faults.ftp.cutAfter) : -1, faults.ftp.diskFull,
                       faults.ftp.stallTransfer));
  }

  void apply() {
    // Those of a panel that is away count when it comes back.
    const bool taken = simulator().setFaults(model().faults);
    if (!taken && model().running) throw std::runtime_error("the simulated panel takes no faults");
    bool stalls = false;
    for (const PanelModel& panel : model_.panels) stalls = stalls || panel.faults.ftp.stallTransfer;
    desk_.dialogs.cancelProgress = stalls;
  }

  std::string dropLine() {
    simulator().dropConnections();
    if (model_.line.panel == at_) model_.lineDown();
    return text("drops its connections");
  }

  std::string goOrCome() {
    if (!model().running) return heal();
    simulator().stop();
    model().running = false;
    if (model_.line.panel == at_) model_.lineDown();
    return text("is gone");
  }

  std::string setName() {
    const int workplace = 1 + number(3), macro = number(12);
    const std::string name = number(3) == 0 ? "" : "Name " + std::to_string(number(100));
    simulator().set(modelNameValue(workplace, macro), name);
    model_.publish(at_, modelNameValue(workplace, macro), name);
    return text(format("names macro %d of workplace %d ", macro, workplace) + name);
  }

  std::string setValue() {
    if (model_.updateOpen) return dropLine();
    const auto& commands = model_.panes[0].commands;
    const FunctionDictionary& dictionary = deskDictionary();
    if (commands.empty()) return setName();
    const std::string& fid =
        commands[static_cast<std::size_t>(number(static_cast<int>(commands.size())))].fid;
    const std::size_t dot = fid.find('.');
    const auto function = dot == std::string::npos ? std::nullopt : dictionary.find(fid.substr(dot + 1));
    if (!function || function->sid().empty()) return setName();
    const std::string name = fid.substr(0, dot + 1) + function->sid(), value = std::to_string(number(9));
    simulator().set(name, value);
    model_.publish(at_, name, value);
    return text("sets " + name + " to " + value);
  }

  Desk& desk_;
  SoakModel& model_;
  std::mt19937& chance_;
  int at_ = 0;
};

SoakModel::World worldOf(Desk& desk) {
  SoakModel::World world;
  world.controlPanels = [&desk](const std::string& application) {
    std::vector<std::string> rows;
    for (const PanelEntry& entry : controlPanels(desk.site.root, kAppli, application).value_or({}))
      rows.push_back(entry.text);
    return rows;
  };
  world.keyRows = [&desk](const std::string& folder) {
    std::vector<std::pair<int, std::string>> rows;
    for (const MacroRow& row : listKeyFiles(desk.site.root, folder).value_or({}))
      rows.emplace_back(row.number, row.text());
    return rows;
  };
  world.value = [&desk](int panel, const std::string& name) {
    return (panel == 0 ? desk.first : desk.second).simulator.value(name);
  };
  world.addresses = {desk.first.addressText(), desk.second.addressText()};
  return world;
}

// Some macros on the panels, and the model in the state of the window at its start.
void begin(Desk& desk, SoakModel& model) {
  const std::string source = std::string(kAppli) + "Evening News\\CP1\\macroWP";
  for (int panel = 0; panel < 2; ++panel) {
    DeskPanel& desked = panel == 0 ? desk.first : desk.second;
    for (int workplace = 1; workplace <= 2; ++workplace)
      for (const auto& [number, bytes] : readMacroFiles(desk.site, source + std::to_string(workplace) + "\\"))
        if (number % 2 == panel) desked.tree.write(DeskPanel::file(workplace, number), bytes);
    desked.simulator.reload();
    for (int workplace = 1; workplace <= Workplace::kCount; ++workplace)
      model.panels[static_cast<std::size_t>(panel)].files[static_cast<std::size_t>(workplace - 1)] =
          readMacroFiles(desked.tree, panelFolder(workplace));
    model.readAgain(panel);
  }
  for (const std::string& application : applications(desk.site.root, kAppli).value_or({})) {
    model.applications.push_back(application);
    for (const PanelEntry& entry : controlPanels(desk.site.root, kAppli, application).value_or({}))
      for (int workplace = 1; workplace <= 2 && !entry.olderFamily; ++workplace) {
        const std::string folder = macroFolder(kAppli, application, entry.name, workplace);
        if (const ModelFiles files = readMacroFiles(desk.site, folder); !files.empty())
          model.disk[folder] = files;
      }
  }
  for (const Pane pane : kPanes) {
    desk.press(Desk::ids(pane).panel);
    desk.typeAddress(pane, desk.first.addressText());
    desk.press(Desk::ids(pane).harddisk);
    model.of(pane).address = desk.first.addressText();
    model.of(pane).copy = desk.site.read(workingCopyPath(pane));
  }
  model.closeAndOpen();
}

}  // namespace

bool runSoak(int actions, unsigned seed) {
  std::mt19937 chance(seed);
  Desk desk(kConnectTime);
  SoakModel model(worldOf(desk));
  begin(desk, model);
  SoakUser user(desk, model, chance);
  FlakyPanels panels(desk, model, chance);
  SoakCheck check(desk, model);
  std::deque<std::string> told;
  for (int done = 0; done < actions; ++done) {
    std::string problem;
    try {
      model.broken.reset();
      desk.activate();
      told.push_back(chance() % 5 == 0 ? panels.act() : user.act());
      if (told.size() > kToldActions) told.pop_front();
      problem = check.difference();
      if (problem.empty()) problem = desk.dialogs.takeProblem();
    } catch (const std::exception& error) {
      problem = error.what();
    }
    static_cast<void>(desk.dialogs.takeTexts());
    if (problem.empty()) continue;
    std::printf("seed %u, action %d of %d, the last ones:\n", seed, done + 1, actions);
    for (const std::string& text : told) std::printf("  %s\n", text.c_str());
    std::printf("difference: %s\nstrip: %s\n", problem.c_str(), desk.strip().c_str());
    return false;
  }
  std::printf("%d actions with seed %u, no difference\n", actions, seed);
  return true;
}

}  // namespace tessaly
