#pragma once

#include <array>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "fuzz/soak/MacroText.h"
#include "link/Pane.h"
#include "panelsim/PanelSimulator.h"
#include "platform/MacroNumber.h"
#include "platform/Workplace.h"

namespace tessaly {

// What a person who knows the rules expects of the two panes, the disk and the panels. Plain data and the
// rules that change it; knows nothing of the window and nothing of how the program does it.

// Macro files by number, with their bytes.
using ModelFiles = std::map<int, std::string>;

struct ModelTarget {
  bool panel = false;
  std::string place;  // folder or address
  int workplace = 0;
  int number = 0;

  friend bool operator==(const ModelTarget&, const ModelTarget&) = default;
};

struct PaneModel {
  enum class Shown { kNothing, kMacro, kKeys };

  bool panel = false, connected = false, edited = false;
  std::string address;
  std::array<bool, Workplace::kCount> flags{};

  std::vector<std::string> applications, controlPanels;  // rows
  int application = -1, controlPanel = -1;               // chosen rows
  bool older = false;
  std::vector<int> workplaces;
  bool workplaceNotice = false;
  int workplace = 0;  // chosen number
  std::vector<std::pair<int, std::string>> macros;
  bool macroNotice = false;
  int macro = -1;  // chosen number

  std::string copy = "<missing>";  // bytes of the working copy
  Shown shown = Shown::kNothing;
  std::vector<SeenCommand> commands;  // that are shown
  int command = -1;                   // chosen row
  std::optional<ModelTarget> target;

  std::vector<std::string> names, previous;  // on the panel, by number
};

struct PanelModel {
  bool running = true;
  PanelFaults faults;
  std::array<ModelFiles, Workplace::kCount> files;
  std::array<std::map<int, std::string>, Workplace::kCount> names;  // as published

  [[nodiscard]] bool silent() const { return faults.control.neverAnswer; }
  [[nodiscard]] bool moves(std::size_t bytes) const {
    return running && !faults.ftp.refuseLogin && !faults.ftp.stallTransfer &&
           (!faults.ftp.cutAfter || bytes <= *faults.ftp.cutAfter);
  }
};

class SoakModel {
 public:
  // The one connection.
  struct Line {
    int panel = -1;  // index of the panel; -1 without a connection
    std::map<std::string, std::string> known;
    std::set<std::string> asked;
    int workplace = 0;  // whose macro names are followed
  };

  // The rules need to be told what lies outside of them: rows that a folder gives, and values of the panels.
  struct World {
    std::function<std::vector<std::string>(const std::string& application)> controlPanels;
    std::function<std::vector<std::pair<int, std::string>>(const std::string& keyFolder)> keyRows;
    std::function<std::optional<std::string>(int panel, const std::string& name)> value;
    std::array<std::string, 2> addresses;
  };

  explicit SoakModel(World world) : world_(std::move(world)) {
    for (PaneModel& pane : panes) pane.names = pane.previous = std::vector<std::string>(MacroNumber::kCount);
  }

  // What the user does. Preconditions are those of the buttons.
  void chooseHarddisk(Pane pane);
  void choosePanel(Pane pane);
  void leave(Pane pane);                         // "disconnect"
  [[nodiscard]] bool connects(Pane pane) const;  // what pressing "connect" leads to
  void connect(Pane pane);
  void chooseApplication(Pane pane, int row);
  void chooseControlPanel(Pane pane, int row);
  void chooseWorkplace(Pane pane, int number);  // 0: none
  void openMacro(Pane pane, int number);        // -1: none
  void discard(Pane pane);
  // Unsaved changes have held the pane at its workplace; now it goes along with the other pane.
  void catchUp(Pane pane);
  void closeAndOpen();

  // What panels do.
  void lineDown() { line = {}; }
  void publish(int panel, const std::string& name, const std::string& value);
  void readAgain(int panel);

  // Parts of operations.
  void reset(Pane pane);
  void show(Pane pane);  // what the working copy holds
  void listMacros(Pane pane);
  void listAgain(Pane pane);  // of the disk; what is open stays
  // A macro was written or removed, and the pane may list or show it.
  void hearOf(Pane pane, const ModelTarget& written);
  // The macro that the working copy holds is chosen once the panel lists it.
  void chooseHeld(Pane pane);
  // The pane does not go on showing what the macro was.
  void forget(Pane pane, const ModelTarget& changed);
  // Bytes at a panel address; nothing when they do not come.
  [[nodiscard]] std::optional<std::string> fetch(const std::string& address, int workplace, int number) const;
  // The panel has the macro, but none of its bytes come.
  [[nodiscard]] bool stalls(const std::string& address, int workplace, int number) const;
  // True when the whole macro came to the panel, which is then told.
  bool send(const std::string& address, int workplace, int number, const std::string& bytes);
  // The answers to questions, in the order in which they come.
  std::vector<std::pair<std::string, std::string>> ask(const std::vector<std::string>& names);

  [[nodiscard]] PaneModel& of(Pane pane) { return panes[index(pane)]; }
  [[nodiscard]] std::string macroFolder(const PaneModel& pane) const;  // empty unless all is chosen
  [[nodiscard]] std::string keyFolder(const PaneModel& pane) const;
  [[nodiscard]] int panelAt(const std::string& address) const;  // -1 for none

  std::array<PaneModel, kPanes.size()> panes;
  std::array<PanelModel, 2> panels;
  Line line;
  std::map<std::string, ModelFiles> disk;  // by folder
  std::vector<std::string> applications;
  // The last upload, when it broke off on the panel: what was there and what was sent. How much of it came is
  // the panel's affair.
  struct BrokenUpload {
    int panel, workplace, number;
    std::optional<std::string> old;
    std::string sent;
  };
  std::optional<BrokenUpload> broken;
  int followed = 0;         // the workplace whose names are in the panes' tables
  bool updateOpen = false;  // an update has not ended and no macro was chosen since

 private:
  void refresh(Pane pane);
  void join(Pane pane);
  void fillWorkplaces(Pane pane);
  void clearFromMacros(Pane pane);
  void refreshMacros(Pane pane);
  void listFiles(Pane pane);
  void refreshWorkplaces(Pane pane);
  void followNames(int workplace);
  void follow(Pane pane, int number);
  [[nodiscard]] bool held(const PaneModel& pane) const;  // at a workplace whose names are not known
  [[nodiscard]] std::array<bool, 2> take(const std::string& name, const std::string& value);

  World world_;
};

// "PANEL.MACRO1.REG7.NAME".
[[nodiscard]] std::string modelNameValue(int workplace, int number);

}  // namespace tessaly
