#include "panelsim/Options.h"

#include <algorithm>
#include <iterator>
#include <limits>

#include "platform/SiteRoot.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

constexpr std::string_view kHelp =
    R"(usage: tessaly-panelsim [OPTION ...]

A panel to work against. Type "help" at its prompt.

  --address A        address to listen on, such as 127.0.0.2 (127.0.0.1)
  --control-port N   port of the control service, 0 for any (56662)
  --ftp-port N       port of the FTP service, 0 for any (2121; a panel's own is 21)
  --root DIR         folder of the panel's tree (panel-ADDRESS in the site's root)
  --site DIR         root of the site that gives values and first macros (as for tessaly)
  --seed             fill an empty tree with macros of the site (so with --site)
  --mfd N,N,...      modules of the workplaces 1 to 8 (4,4,2,1,0,0,0,0)
  --pace MS          from command to command of a macro that runs (40)
  --script FILE      prompt commands to begin with
  --help             this text
  --version          the program's version

Faults to begin with:
  --never-answer     connections are taken and stay silent
  --answer-after MS  everything comes MS milliseconds late
  --drop-after N     a connection is closed after N values
  --refuse-login     of the FTP service
  --cut-transfer N   the line of a transfer breaks after N bytes
  --stall-transfer   transfers begin and move no byte
  --disk-full        uploads are refused
  --refuse-download  files are taken and not given back
  --flip-byte N      byte N of an upload, from 0, is stored wrong
  --cut-silent N     N bytes of an upload are stored, and all is said to be well
  --swap-after-upload  another editor's macro takes the place of an upload
  --slow-transfer B  transfers move B bytes a second
  --dead-line        nothing is answered any more, and no line ends
  --garble N         nonsense comes after N values, or N bytes of a download
  --lose-reload      the call to read the macros is answered and not carried out

Exit code: 0 done, 1 failed, 2 wrong usage.
)";

constexpr int kMost = std::numeric_limits<int>::max();
constexpr int kMostModules = 1000;
constexpr std::string_view kOff = "off";
constexpr std::string_view kSlowTransfer = "slow-transfer";  // at 0 it would be a stall

bool readModules(std::string_view text, std::array<int, Workplace::kCount>& modules) {
  modules.fill(0);
  for (int& count : modules) {
    const std::size_t comma = text.find(',');
    const auto number = wholeNumber(text.substr(0, comma), 0, kMostModules);
    if (!number) return false;
    count = *number;
    if (comma == std::string_view::npos) return true;
    text.remove_prefix(comma + 1);
  }
  return false;
}

bool setPort(std::string_view text, std::uint16_t& port) {
  const auto number = wholeNumber(text, 0, std::numeric_limits<std::uint16_t>::max());
  if (number) port = static_cast<std::uint16_t>(*number);
  return number.has_value();
}

using Count = FtpFaults::Count;

struct CountedFault {
  std::string_view name;
  void (*set)(PanelFaults& faults, Count count);
  Count (*get)(const PanelFaults& faults);
};

constexpr CountedFault kCounted[] = {
    {"answer-after",
     [](PanelFaults& faults, Count count) {
       faults.control.delay = std::chrono::milliseconds(count.value_or(0));
     },
     [](const PanelFaults& faults) {
       const auto delay = static_cast<std::size_t>(faults.control.delay.count());
       return delay == 0 ? Count() : Count(delay);
     }},
    {"drop-after", [](PanelFaults& faults, Count count) { faults.control.dropAfter = count; },
     [](const PanelFaults& faults) { return faults.control.dropAfter; }},
    {"cut-transfer", [](PanelFaults& faults, Count count) { faults.ftp.cutAfter = count; },
     [](const PanelFaults& faults) { return faults.ftp.cutAfter; }},
    {"flip-byte", [](PanelFaults& faults, Count count) { faults.ftp.flipByte = count; },
     [](const PanelFaults& faults) { return faults.ftp.flipByte; }},
    {"cut-silent", [](PanelFaults& faults, Count count) { faults.ftp.cutSilent = count; },
     [](const PanelFaults& faults) { return faults.ftp.cutSilent; }},
    {kSlowTransfer, [](PanelFaults& faults, Count count) { faults.ftp.bytesPerSecond = count; },
     [](const PanelFaults& faults) { return faults.ftp.bytesPerSecond; }},
    {"garble",
     [](PanelFaults& faults, Count count) { faults.control.garbleAfter = faults.ftp.garbleAfter = count; },
     [](const PanelFaults& faults) { return faults.control.garbleAfter; }}};

struct SwitchedFault {
  std::string_view name;
  bool& (*of)(PanelFaults& faults);
  bool FtpFaults::*alsoOfFtp = nullptr;
};

constexpr SwitchedFault kSwitched[] = {
    {"never-answer", [](PanelFaults& faults) -> bool& { return faults.control.neverAnswer; }},
    {"refuse-login", [](PanelFaults& faults) -> bool& { return faults.ftp.refuseLogin; }},
    {"stall-transfer", [](PanelFaults& faults) -> bool& { return faults.ftp.stallTransfer; }},
    {"disk-full", [](PanelFaults& faults) -> bool& { return faults.ftp.diskFull; }},
    {"refuse-download", [](PanelFaults& faults) -> bool& { return faults.ftp.refuseDownload; }},
    {"swap-after-upload", [](PanelFaults& faults) -> bool& { return faults.ftp.swapAfterUpload; }},
    {"dead-line", [](PanelFaults& faults) -> bool& { return faults.control.deadLine; }, &FtpFaults::deadLine},
    {"lose-reload", [](PanelFaults& faults) -> bool& { return faults.loseReload; }}};

template <typename Fault, std::size_t N>
const Fault* named(const Fault (&faults)[N], std::string_view name) {
  const auto* const found = std::find_if(std::begin(faults), std::end(faults),
                                         [&](const Fault& fault) { return fault.name == name; });
  return found == std::end(faults) ? nullptr : found;
}

// An option with a value; false when there is no such option or the value is wrong.
bool setValue(std::string_view name, const std::string& value, ProgramOptions& options) {
  PanelOptions& panel = options.panel;
  if (name == "control-port") return setPort(value, panel.controlPort);
  if (name == "ftp-port") return setPort(value, panel.ftpPort);
  if (name == "pace") {
    const auto pace = wholeNumber(value, 0, kLongestPaceMs);
    panel.pace = MacroRuns::Pace(pace.value_or(0));
    return pace.has_value();
  }
  if (name == "mfd") return readModules(value, panel.modules);
  if (named(kCounted, name)) return value != kOff && applyFault(name, value, panel.faults);
  std::string* text = name == "address"  ? &panel.address
                      : name == "root"   ? &panel.root
                      : name == "site"   ? &panel.site
                      : name == "script" ? &options.script
                                         : nullptr;
  if (text == nullptr || value.empty()) return false;
  *text = value;
  return true;
}

}  // namespace

std::string_view optionsHelp() { return kHelp; }

bool applyFault(std::string_view name, std::string_view value, PanelFaults& faults) {
  const bool off = value == kOff;
  if (const CountedFault* const fault = named(kCounted, name)) {
    const auto count = wholeNumber(value, name == kSlowTransfer ? 1 : 0, kMost);
    if (!off && !count) return false;
    fault->set(faults, off ? Count() : Count(static_cast<std::size_t>(*count)));
    return true;
  }
  const SwitchedFault* const fault = named(kSwitched, name);
  if (!fault || !(off || value.empty())) return false;
  fault->of(faults) = !off;
  if (fault->alsoOfFtp) faults.ftp.*fault->alsoOfFtp = !off;
  return true;
}

std::vector<std::string> faultsInForce(const PanelFaults& faults) {
  std::vector<std::string> names;
  for (const CountedFault& fault : kCounted)
    if (const Count count = fault.get(faults))
      names.push_back(std::string(fault.name) + ' ' + std::to_string(*count));
  PanelFaults copy = faults;
  for (const SwitchedFault& fault : kSwitched)
    if (fault.of(copy)) names.emplace_back(fault.name);
  return names;
}

std::optional<ProgramOptions> readOptions(const std::vector<std::string>& arguments, std::string& reason) {
  ProgramOptions options;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    const std::string name = argument.starts_with("--") ? argument.substr(2) : "";
    if (name == "help") {
      options.help = true;
    } else if (name == "version") {
      options.version = true;
    } else if (name == "seed") {
      options.panel.seed = true;
    } else if (named(kSwitched, name)) {
      if (!applyFault(name, "", options.panel.faults)) return std::nullopt;
    } else if (i + 1 == arguments.size()) {
      reason = "wrong option, or one without its value: " + argument;
      return std::nullopt;
    } else if (!setValue(name, arguments[++i], options)) {
      reason = "wrong option or value: " + argument + " " + arguments[i];
      return std::nullopt;
    }
  }
  PanelOptions& panel = options.panel;
  panel.seed = panel.seed || !panel.site.empty();
  const SiteRoot site = SiteRoot::fromEnvironment(panel.site);
  panel.site = site.path().string();
  if (panel.root.empty()) panel.root = (site.path() / ("panel-" + panel.address)).string();
  return options;
}

}  // namespace tessaly
