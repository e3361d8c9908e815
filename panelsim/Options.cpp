#include "panelsim/Options.h"

#include <algorithm>
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

Exit code: 0 done, 1 failed, 2 wrong usage.
)";

constexpr int kMost = std::numeric_limits<int>::max();
constexpr int kMostModules = 1000;

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

bool takesCount(std::string_view fault) {
  return fault == "answer-after" || fault == "drop-after" || fault == "cut-transfer";
}

bool isSwitch(std::string_view fault) {
  return fault == "never-answer" || fault == "refuse-login" || fault == "stall-transfer" ||
         fault == "disk-full";
}

// An option with a value; false when there is no such option or the value is wrong.
bool setValue(std::string_view name, const std::string& value, ProgramOptions& options) {
  PanelOptions& panel = options.panel;
  if (name == "control-port") return setPort(value, panel.controlPort);
  if (name == "ftp-port") return setPort(value, panel.ftpPort);
  if (name == "mfd") return readModules(value, panel.modules);
  if (takesCount(name)) return wholeNumber(value, 0, kMost) && applyFault(name, value, panel.faults);
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
  const bool off = value == "off";
  if (takesCount(name)) {
    const auto count = wholeNumber(value, 0, kMost);
    if (!off && !count) return false;
    const std::optional<std::size_t> limit =
        off ? std::nullopt : std::optional<std::size_t>(static_cast<std::size_t>(*count));
    if (name == "answer-after") faults.control.delay = std::chrono::milliseconds(off ? 0 : *count);
    if (name == "drop-after") faults.control.dropAfter = limit;
    if (name == "cut-transfer") faults.ftp.cutAfter = limit;
    return true;
  }
  if (!isSwitch(name) || !(off || value.empty())) return false;
  if (name == "never-answer") faults.control.neverAnswer = !off;
  if (name == "refuse-login") faults.ftp.refuseLogin = !off;
  if (name == "stall-transfer") faults.ftp.stallTransfer = !off;
  if (name == "disk-full") faults.ftp.diskFull = !off;
  return true;
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
    } else if (isSwitch(name)) {
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
