#include "panelsim/PanelSimulator.h"

#include <cstdio>
#include <random>
#include <thread>

#include "dictionary/InterfaceFile.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

// Below those that programs get for their own connections, so that a panel that goes and comes back finds its
// own still free.
constexpr std::uint16_t kLowestFreePort = 20'000, kHighestFreePort = 32'700;
constexpr int kPortsTried = 20;
constexpr std::string_view kReload = "PANEL.APPLICATION.LOAD.FINISH";
constexpr const char* kModuleCount = "PANEL.WP%d.MFDCOUNT";
constexpr const char* kMacroName = "PANEL.MACRO%d.REG%d.NAME";
constexpr const char* kDelete = "PANEL.MACRO%d.DELETE";
constexpr const char* kRun = "PANEL.MACRO%d.RUN";
constexpr const char* kStop = "PANEL.MACRO%d.STOP";
constexpr const char* kRename = "PANEL.MACRO%d.NAME.SET";

std::string macroValueName(int workplace, int number) { return format(kMacroName, workplace, number); }

const std::string* parameter(const ParameterList& parameters, std::string_view name) {
  for (const auto& [known, value] : parameters.items()) {
    if (known == name) return &value;
  }
  return nullptr;
}

// Starts on a port, or on any free one when it is 0.
template <typename Start>
bool startOn(std::uint16_t port, const Start& start) {
  if (port != 0) return start(port);
  std::random_device random;
  std::uniform_int_distribution<int> ports(kLowestFreePort, kHighestFreePort);
  for (int tried = 0; tried < kPortsTried; ++tried)
    if (start(static_cast<std::uint16_t>(ports(random)))) return true;
  return false;
}

// The macro number of the parameter REG; -1 unless it is one to three digits.
int macroNumber(const ParameterList& parameters) {
  const std::string* text = parameter(parameters, "REG");
  if (text == nullptr || text->size() > MacroNumber::kDigits) return -1;
  const auto number = exactNumber<std::uint16_t>(*text);
  return number ? *number : -1;
}

}  // namespace

PanelSimulator::PanelSimulator(PanelOptions options, Log log)
    : options_(std::move(options)),
      log_(std::move(log)),
      site_(options_.site.empty() ? options_.root : options_.site),
      lists_(site_),
      tree_(options_.root),
      values_(dictionary_),
      commands_(dictionary_, lists_, values_),
      faults_(options_.faults),
      control_(*this, log_),
      ftp_(log_),
      runs_({[this](int workplace, int number, std::size_t command, const MacroCommand& what) {
               carryOut(workplace, number, command, what);
             },
             [this](int workplace, std::optional<int> number) { tellRun(workplace, number); }}) {
  runs_.setPace(options_.pace);
  for (auto& names : names_) names.resize(MacroNumber::kCount);
  for (int i = 0; i < Workplace::kCount; ++i) {
    values_.set(format(kModuleCount, i + 1), std::to_string(options_.modules[static_cast<std::size_t>(i)]));
    values_.set(runningName(i + 1), "");
  }
}

bool PanelSimulator::start(std::string& reason) {
  if (!prepared_ && !prepare(reason)) return false;
  readTree(!prepared_);
  prepared_ = true;
  return startServices(reason);
}

bool PanelSimulator::prepare(std::string& reason) {
  if (!tree_.prepare()) {
    reason = "cannot make the panel's folders under " + tree_.root();
    return false;
  }
  if (options_.site.empty()) return true;
  loadFunctionDictionary(site_, dictionary_, log_);
  log_("values for " + dictionary_.summary());
  bool empty = true;
  for (int workplace = 1; workplace <= Workplace::kCount; ++workplace) {
    empty = empty && tree_.names(workplace).empty();
  }
  if (options_.seed && empty)
    log_(format("filled the empty tree with %d macros of the site", tree_.seed(site_)));
  return true;
}

bool PanelSimulator::startServices(std::string& reason) {
  control_.setFaults(faults().control);
  std::string why;
  if (!startOn(options_.controlPort,
               [&](std::uint16_t port) { return control_.start(options_.address, port, why); })) {
    reason = format("cannot listen on %s port %d: %s", options_.address.c_str(), options_.controlPort,
                    why.c_str());
    if (options_.controlPort == kControlPort) {
      reason +=
          " (the port lies among those that programs get for their own connections: try another --address)";
    }
    return false;
  }
  const std::scoped_lock guard(ftpMutex_);
  const FtpFaults faultsOfTransfers = faults().ftp;
  if (!startOn(options_.ftpPort, [&](std::uint16_t port) {
        return ftp_.start(options_.address, port, tree_.root(), faultsOfTransfers, why);
      })) {
    reason =
        format("no FTP service on %s port %d: %s", options_.address.c_str(), options_.ftpPort, why.c_str());
    control_.stop();
    return false;
  }
  options_.controlPort = control_.port();
  options_.ftpPort = ftp_.port();
  return true;
}

void PanelSimulator::stop() {
  runs_.stopAll();
  control_.stop();
  const std::scoped_lock guard(ftpMutex_);
  ftp_.stop();
}

bool PanelSimulator::restart(std::chrono::milliseconds pause, std::string& reason) {
  stop();
  log_("gone");
  std::this_thread::sleep_for(pause);
  if (!start(reason)) return false;
  log_("back");
  return true;
}

std::string* PanelSimulator::macroName(const std::string& name) {
  int place = 0, macro = 0;
  if (std::sscanf(name.c_str(), kMacroName, &place, &macro) != 2) return nullptr;
  const auto workplace = Workplace::of(place);
  const auto number = MacroNumber::of(macro);
  if (!workplace || !number || macroValueName(place, macro) != name) return nullptr;
  return &names_[workplace->index()][number->index()];
}

std::optional<std::string> PanelSimulator::currentValue(const std::string& name) {
  const std::scoped_lock guard(mutex_);
  if (const std::string* macro = macroName(name)) return *macro;
  return values_.of(name);
}

void PanelSimulator::set(const std::string& name, const std::string& value) {
  {
    const std::scoped_lock guard(mutex_);
    if (std::string* macro = macroName(name)) {
      *macro = value;
    } else {
      values_.set(name, value);
    }
  }
  publish(name, value);
}

void PanelSimulator::publish(const std::string& name, const std::string& value) {
  control_.publish(name, value);
  bool tells = false;
  {
    const std::scoped_lock guard(mutex_);
    tells = watched_.contains(name);
  }
  if (tells) log_(name + " = " + value);
}

void PanelSimulator::setMacroName(int workplace, int number, const std::string& name) {
  log_(format("workplace %d, macro ", workplace) + MacroNumber::textOf(number) + ": " +
       (name.empty() ? "no macro" : name));
  set(macroValueName(workplace, number), name);
}

void PanelSimulator::readTree(bool first) {
  struct Change {
    int workplace, number;
    std::string name;
  };
  std::vector<Change> changes;
  int count = 0;
  {
    const std::scoped_lock guard(mutex_);
    for (int workplace = 1; workplace <= Workplace::kCount; ++workplace) {
      std::map<int, std::string> found = tree_.names(workplace);
      count += static_cast<int>(found.size());
      const auto& published = names_[static_cast<std::size_t>(workplace - 1)];
      for (int number = 0; number < MacroNumber::kCount; ++number) {
        std::string& name = found[number];
        if (name != published[static_cast<std::size_t>(number)]) changes.push_back({workplace, number, name});
      }
    }
  }
  log_(format("read the macros: %d, %d changed", count, static_cast<int>(changes.size())));
  for (const Change& change : changes) {
    if (first) {
      set(macroValueName(change.workplace, change.number), change.name);
    } else {
      setMacroName(change.workplace, change.number, change.name);
    }
  }
}

bool PanelSimulator::removeMacro(int workplace, int number) {
  {
    const std::scoped_lock guard(mutex_);
    if (!tree_.remove(workplace, number)) return false;
  }
  setMacroName(workplace, number, "");
  return true;
}

bool PanelSimulator::renameMacro(int workplace, int number, const std::string& name) {
  std::string stored;
  {
    const std::scoped_lock guard(mutex_);
    if (!tree_.rename(workplace, number, name)) return false;
    stored = tree_.name(workplace, number);
  }
  setMacroName(workplace, number, stored);
  return true;
}

std::vector<std::pair<int, std::string>> PanelSimulator::macros(int workplace) {
  std::vector<std::pair<int, std::string>> rows;
  const auto known = Workplace::of(workplace);
  if (!known) return rows;
  const std::scoped_lock guard(mutex_);
  const auto& names = names_[known->index()];
  for (int number = 0; number < MacroNumber::kCount; ++number) {
    const std::string& name = names[static_cast<std::size_t>(number)];
    if (!name.empty()) rows.emplace_back(number, name);
  }
  return rows;
}

bool PanelSimulator::call(const std::string& function, const ParameterList& parameters) {
  if (function == kReload) {
    if (faults().loseReload)
      log_("the call to read the macros is lost");
    else
      reload();
    return true;
  }
  for (int workplace = 1; workplace <= Workplace::kCount; ++workplace) {
    if (function != format(kStop, workplace)) continue;
    stopRun(workplace);
    return true;
  }
  const int number = macroNumber(parameters);
  const std::string* name = parameter(parameters, "NAME");
  bool done = false;
  for (int workplace = 1; workplace <= Workplace::kCount && number >= 0; ++workplace) {
    if (function == format(kRun, workplace)) done = run(workplace, number).done();
    if (function == format(kDelete, workplace)) done = removeMacro(workplace, number);
    if (function == format(kRename, workplace) && name != nullptr)
      done = renameMacro(workplace, number, *name);
  }
  if (!done) log_("nothing done: no such function or macro");
  return done;
}

PanelFaults PanelSimulator::faults() {
  const std::scoped_lock guard(mutex_);
  return faults_;
}

bool PanelSimulator::setFaults(const PanelFaults& faults) {
  {
    const std::scoped_lock guard(mutex_);
    faults_ = faults;
  }
  control_.setFaults(faults.control);
  const std::scoped_lock guard(ftpMutex_);
  return ftp_.setFaults(faults.ftp);
}

}  // namespace tessaly
