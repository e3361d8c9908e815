#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "panelsim/PanelSimulator.h"

namespace tessaly {

struct ProgramOptions {
  PanelOptions panel;
  std::string script;  // file of prompt commands to begin with
  bool help = false, version = false;
};

// Reads the command line, the program's name left out. Nothing, with the reason, when it is wrong.
[[nodiscard]] std::optional<ProgramOptions> readOptions(const std::vector<std::string>& arguments,
                                                        std::string& reason);

[[nodiscard]] std::string_view optionsHelp();

// One fault by its name ("never-answer", "cut-transfer" ...): `value` is a count where the fault takes one,
// else empty, or "off". False when that is no fault.
[[nodiscard]] bool applyFault(std::string_view name, std::string_view value, PanelFaults& faults);

// Those that are switched on, as they are typed: "cut-transfer 10", "disk-full".
[[nodiscard]] std::vector<std::string> faultsInForce(const PanelFaults& faults);

}  // namespace tessaly
