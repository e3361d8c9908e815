#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "dictionary/FunctionDictionary.h"
#include "panelsim/CommandRun.h"
#include "panelsim/ControlService.h"
#include "panelsim/CurrentValues.h"
#include "panelsim/FtpService.h"
#include "panelsim/Log.h"
#include "panelsim/MacroRuns.h"
#include "panelsim/PanelTree.h"

namespace tessaly {

inline constexpr std::uint16_t kControlPort = 56662;
inline constexpr std::uint16_t kUnprivilegedFtpPort = 2121;  // a panel's own is 21, which needs rights

struct PanelFaults {
  ControlFaults control = {};
  FtpFaults ftp = {};
  bool loseReload = false;  // the call to read the macros is answered and not carried out
};

struct PanelOptions {
  std::string address =
      "127.0.0.1";  // any address of this machine; panels with addresses of their own share a port
  std::uint16_t controlPort = kControlPort;  // 0: any free one
  std::uint16_t ftpPort = kUnprivilegedFtpPort;
  std::string root;   // folder of the panel's tree, made when missing
  std::string site;   // root of the site whose dictionary gives the current values; empty: none
  bool seed = false;  // fill an empty tree with macros of the site
  std::array<int, Workplace::kCount> modules = {4, 4, 2, 1, 0, 0, 0, 0};  // counts of the workplaces 1 to 8
  PanelFaults faults;
  MacroRuns::Pace pace = MacroRuns::kUsualPace;  // from command to command of a macro that runs
};

// A panel to work against: the control service and the FTP service over one tree of macro files. One thread
// starts, stops and restarts it; the other operations may be called from any thread meanwhile.
class PanelSimulator : private ControlledPanel {
 public:
  PanelSimulator(PanelOptions options, Log log);
  ~PanelSimulator() override { stop(); }
  PanelSimulator(const PanelSimulator&) = delete;
  PanelSimulator& operator=(const PanelSimulator&) = delete;

  // Both services listen when it returns true. False, with the reason, otherwise; nothing listens then.
  [[nodiscard]] bool start(std::string& reason);
  void stop();
  // Goes away and comes back on the same ports after `pause`.
  [[nodiscard]] bool restart(std::chrono::milliseconds pause, std::string& reason);

  [[nodiscard]] const std::string& address() const { return options_.address; }
  [[nodiscard]] std::string root() const { return tree_.root(); }
  [[nodiscard]] std::uint16_t controlPort() const { return control_.port(); }
  [[nodiscard]] std::uint16_t ftpPort() const { return ftp_.port(); }

  [[nodiscard]] std::optional<std::string> value(const std::string& name) { return currentValue(name); }
  // Makes it the current value and sends it to those that subscribed it. A macro's name is set on the panel
  // only; its file is left alone, until the tree is read again.
  void set(const std::string& name, const std::string& value);
  void trigger(const std::string& name, const std::string& value) { control_.trigger(name, value); }

  // What the functions of the panel do. False when there is no such macro.
  void reload() { readTree(false); }
  bool removeMacro(int workplace, int number);
  bool renameMacro(int workplace, int number, const std::string& name);
  [[nodiscard]] std::vector<std::pair<int, std::string>> macros(int workplace);

  // Begins to carry out a macro, which the log tells of; PANEL.MACRO1.RUNNING holds its number meanwhile.
  [[nodiscard]] Outcome run(int workplace, int number);
  void stopRun(int workplace) { runs_.stop(workplace); }
  void setPace(MacroRuns::Pace pace) { runs_.setPace(pace); }
  [[nodiscard]] bool waitForRuns(std::chrono::milliseconds patience) { return runs_.waitForEnd(patience); }

  // Values whose changes are logged, from now on.
  void watch(const std::vector<std::string>& names);
  void watchNothing();
  [[nodiscard]] std::vector<std::string> watched();
  // What a name and a value typed for it may be; without a site whatever is typed. Done, or why not.
  [[nodiscard]] Outcome knows(const std::string& name);
  [[nodiscard]] Outcome canSet(const std::string& name, const std::string& value);

  [[nodiscard]] PanelFaults faults();
  [[nodiscard]] bool setFaults(const PanelFaults& faults);  // false when the FTP server is gone
  void dropConnections() { control_.dropConnections(); }
  [[nodiscard]] std::size_t connections() const { return control_.connections(); }
  [[nodiscard]] std::size_t accepted() const { return control_.accepted(); }

 private:
  std::optional<std::string> currentValue(const std::string& name) override;
  bool call(const std::string& function, const ParameterList& parameters) override;

  [[nodiscard]] bool prepare(std::string& reason);
  [[nodiscard]] bool startServices(std::string& reason);
  [[nodiscard]] static std::string runningName(int workplace);
  void carryOut(int workplace, int number, std::size_t command, const MacroCommand& what);
  void tellRun(int workplace, std::optional<int> number);
  void publish(const std::string& name, const std::string& value);
  void readTree(bool first);
  void setMacroName(int workplace, int number, const std::string& name);
  [[nodiscard]] std::string* macroName(const std::string& name);

  PanelOptions options_;
  const Log log_;
  const SiteRoot site_;
  FunctionDictionary dictionary_;
  DecodingLists lists_;
  bool prepared_ = false;

  std::mutex mutex_;  // guards what follows; never held while a service or the log is called
  PanelTree tree_;
  CurrentValues values_;
  CommandRun commands_;
  std::set<std::string> watched_;
  std::array<std::vector<std::string>, Workplace::kCount> names_;  // as published; empty without macro
  PanelFaults faults_;

  ControlService control_;
  std::mutex ftpMutex_;  // held while the FTP service is used
  FtpService ftp_;
  MacroRuns runs_;  // ends before what it changes
};

}  // namespace tessaly
