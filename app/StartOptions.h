#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include <QStringList>

#include "link/PanelMacros.h"

namespace tessaly {

struct StartOptions {
  std::string root;  // empty: from the environment
  bool demo = false;
  bool verbose = false;  // the panel client writes its calls and values to the standard output
  std::uint16_t ftpPort = kFtpPort;
  std::string palette{};   // "desktop", "light" or "dark"; empty: as it was chosen last
  std::string language{};  // "de" or "en"; empty: the desktop's, if it is one of them
};

// The text of --help.
[[nodiscard]] std::string startHelp();

// Reads the command line, which begins with the program's name, before there is a toolkit, which needs a
// display; options that the toolkit will take (such as -platform) are left to it. Nothing, with the reason,
// when it is wrong.
[[nodiscard]] std::optional<StartOptions> readStartOptions(const QStringList& arguments, std::string& reason);

}  // namespace tessaly
